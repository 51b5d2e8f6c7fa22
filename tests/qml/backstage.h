// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QAbstractItemModel>
#include <QTemporaryDir>

namespace TrivexTest {

/// What a test needs beside the module: files, a token, and an authority that issues certificates.
/// In QML as "backstage".
class Backstage : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString tokenName READ tokenName CONSTANT)
    Q_PROPERTY(QString pin READ pin CONSTANT)
    Q_PROPERTY(QString directory READ directory CONSTANT)
    Q_PROPERTY(QString requestDirectory READ requestDirectory CONSTANT)
public:
    /// The token has two RSA keys with certificates for "Ivanov" and "Petrova".
    Backstage();

    const TestToken &token() const { return m_token; }
    QString tokenName() const { return m_token.label(); }
    static QString pin() { return QString::fromLatin1(TestToken::pin()); }
    QString directory() const { return m_home.path(); }
    QString requestDirectory() const;

    /// The path of a new certificate of the authority for the request in `requestFile`.
    Q_INVOKABLE QString issue(const QString &requestFile);
    /// The path of a password-protected key bundle.
    Q_INVOKABLE QString makeBundle(const QString &commonName, const QString &password);
    /// What openssl says of the request's subject after checking its signature.
    Q_INVOKABLE QString requestSubject(const QString &requestFile) const;

    /// What the row of `model` holds in the role of that name.
    Q_INVOKABLE QVariant value(QAbstractItemModel *model, int row, const QString &role) const;

    /// The path of a new file.
    Q_INVOKABLE QString writeFile(const QString &name, const QString &text) const;
    Q_INVOKABLE bool exists(const QString &path) const;
    Q_INVOKABLE int fileSize(const QString &path) const;
    Q_INVOKABLE QStringList filesIn(const QString &path) const;
    Q_INVOKABLE QString sha256(const QString &text) const;

private:
    void addKey(const QString &commonName, const QString &id);

    QTemporaryDir m_home;
    TestToken m_token;
    TestAuthority m_authority;
};

} // namespace TrivexTest
