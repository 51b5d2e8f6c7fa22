// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace TrivexTest {

/// Whether the openssl program has the engine that makes GOST keys; says SKIP when not.
bool hasGostEngine();

/// A throw-away certification authority over the openssl command line.
class TestAuthority {
public:
    explicit TestAuthority(const QString &commonName = QStringLiteral("Test Root"));

    /// False when the openssl program is missing or failed.
    bool isValid() const { return !m_certificate.isEmpty(); }
    /// The authority's own certificate, DER.
    QByteArray certificate() const { return m_certificate; }
    QString certificateFile() const { return file(QStringLiteral("ca.pem")); }

    /// A certificate for the key `publicKeyInfo` (DER SubjectPublicKeyInfo) with `subject` in the
    /// form of `openssl -subj` ("/CN=Name/O=Company"), UTF-8. DER; empty on failure.
    QByteArray issue(const QByteArray &publicKeyInfo, const QString &subject) const;
    /// The same for a PKCS#10 request file, with the request's own subject.
    QByteArray issueForRequest(const QString &requestFile) const;
    /// A key made with `openssl genpkey <keyArguments>` and its certificate as a PKCS#12 bundle
    /// with chain, protected by `password`; further arguments for `openssl pkcs12` last. The path
    /// of the file; empty on failure.
    QString bundle(const QStringList &keyArguments, const QString &subject, const QString &password,
                   const QString &friendlyName, const QStringList &further = {}) const;

    /// Runs openssl in the authority's directory; standard output, or a null array on failure.
    QByteArray openssl(const QStringList &arguments) const;
    QString file(const QString &name) const { return m_directory.filePath(name); }

private:
    QTemporaryDir m_directory;
    QByteArray m_certificate;
};

} // namespace TrivexTest
