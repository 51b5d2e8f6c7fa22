// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"

#include <QHash>

#include <optional>

namespace TrivexTest {

/// What is known of the token beforehand.
struct TokenFacts {
    QString name; ///< of its store
    QByteArray pin; ///< empty: it wants none
    /// Steps that this token can't do, by their names, each with the reason.
    QHash<QString, QString> cannot;
};

/// One token, through all that a user does with it; one line a step on standard output: "ok",
/// "FAILED", or "SKIP" with the reason.
class TokenSteps {
public:
    explicit TokenSteps(const TokenFacts &facts);

    /// True when nothing failed.
    bool run();

private:
    /// As after a new start of the program: nobody is logged in.
    bool start(const QByteArray &pin);
    void stop();
    bool list();
    bool wrongPin();
    bool rightPin();
    void wholeKey(const QString &kind);
    void bundle(const QString &kind, const QStringList &keyArguments);
    void pairAnew(const QString &kind, const QString &id);
    bool removeAll();

    QCA::PrivateKey generate(const QString &kind);
    QByteArray certify(const QCA::PrivateKey &key, const QString &kind);
    bool signs(const QCA::KeyStoreEntry &entry);
    QCA::KeyStoreEntry entryWithId(const QString &id);
    bool isBundle(const QString &id);
    bool tell(const QString &step, bool isGood, const QString &why = QString());

    const TokenFacts m_facts;
    TestAuthority m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<Trivex::TokenMonitor> m_monitor;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    QCA::KeyStore *m_store = nullptr;
    std::optional<Trivex::TokenError> m_error;
    bool m_failed = false;
};

} // namespace TrivexTest
