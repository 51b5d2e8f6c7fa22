// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"

namespace TrivexTest {

/// What tests of a token share: a token that fails on request, somebody who issues certificates
/// for its keys, and a process that works with it. A test that makes QCA and the stores itself,
/// or in processes of its own, leaves `start` out.
class TokenFixture : public QObject {
protected:
    explicit TokenFixture(const QString &storeName);

    /// The token, empty, and the authority. False, with a warning, where a tool is missing.
    bool makeToken();
    /// A pair of keys and its certificate on the token.
    bool addKey(const QString &type, const QString &id, const QString &name);
    /// The RSA key with the id 01 and the name "signer".
    bool addSigner();
    /// QCA, somebody who knows the PIN, and the stores; waits for the token and its entries.
    bool start(int entries);

    /// Waits for the generation, which has `patience` ms to end; the key is null when it failed.
    QCA::PrivateKey generateRsa(int bits, int exponent, const QString &name, int patience = 20000);
    QCA::PrivateKey generateCurve(const QString &curve, const QString &name, int patience = 20000);
    /// Both halves of the key "made", by another program.
    void removeGenerated();

    /// An empty signature is none.
    static QByteArray signature(QCA::PrivateKey key);
    /// Whether the key of that entry signs. False when there is none.
    static bool signs(const Stores &stores, const QString &storeName,
                      const QString &entryName = QStringLiteral("signer"));
    bool signs() const { return signs(*m_stores, m_storeName); }

    /// By openssl, with the padding of PKCS#1 1.5; empty on failure.
    QByteArray encryptedTo(const QCA::PrivateKey &key, const QByteArray &plain) const;

    /// Writes a certificate of that key and waits for its entry. Its id, empty on failure.
    QString issueAndImport(const QCA::PrivateKey &key, const QString &subject);
    /// A bundle of a new key of that algorithm, of its certificate and the authority's.
    QCA::KeyBundle makeBundle(const QString &algorithm, const QString &option,
                              const QString &subject) const;
    QCA::KeyBundle makeCurveBundle(const QString &subject) const;
    QCA::Certificate root() const;
    /// Removes every entry but the signer.
    bool removeOthers();

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    QCA::KeyStore *m_store = nullptr;

private:
    const QString m_storeName;
};

} // namespace TrivexTest
