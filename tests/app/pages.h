// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/harness.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

namespace TrivexTest {

/// A token and a USER directory with something on every page, made afresh.
class SampleData {
public:
    explicit SampleData(WindowEnvironment &environment);

    bool isValid() const { return m_problem.isEmpty(); }
    QString problem() const { return m_problem; }
    QString tokenName() const { return m_token.label(); }
    static QString pin() { return QString::fromLatin1(TestToken::pin()); }
    /// A bundle whose password is "secret".
    QString bundle() const { return m_bundle; }
    QString picture() const { return m_picture; }
    /// Puts a list of the authority among the user's files, which changes their page.
    void putRevocationList() const;

private:
    void fillToken();
    void fillFiles(WindowEnvironment &environment);
    QByteArray issue(const QByteArray &publicKey, const QString &subject) const;
    bool put(const QString &keyType, const QString &id, const QString &subject);

    TestToken m_token;
    TestAuthority m_authority;
    QString m_problem;
    QString m_bundle;
    QString m_picture;
};

/// Every page and dialog by name; `visitPage` brings the window to it, laid out,
/// and `leavePage` back. It
/// knows "locked-import" too, the import before the password, and "edit", a request's changes.
QStringList pageNames();
bool visitPage(WindowDriver &driver, const SampleData &data, const QString &page);
void leavePage(WindowDriver &driver);

/// Calls `look` for every visible item from `item` downwards.
void visitItems(QQuickItem *item, const std::function<void(QQuickItem *)> &look);
/// The class and the name of an item, or of the next named item above it.
QString describeItem(const QQuickItem *item);

} // namespace TrivexTest
