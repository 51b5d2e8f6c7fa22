// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/testcertificates.h"

#include <QtCrypto>

namespace TrivexTest {

/// Certificates for the tests of models, made with the openssl program.
class CertificateFactory {
public:
    CertificateFactory();
    bool isValid() const { return m_authority.isValid(); }
    QString file(const QString &name) const { return m_authority.file(name); }

    /// Self-signed with a new EC or RSA key; `subject` as openssl's -subj. Null on failure.
    QCA::Certificate selfSigned(const QString &subject, const QStringList &further = {},
                                const QString &key = QStringLiteral("rsa:2048"));
    /// A certificate of `selfSigned()`'s form whose signature is another key's.
    QCA::Certificate issuedByNamesake(const QString &subject);
    /// An RSA key with its certificate. Null on failure.
    QCA::KeyBundle bundle(const QString &subject);

    const TestAuthority &authority() const { return m_authority; }

private:
    TestAuthority m_authority;
    int m_count = 0;
};

} // namespace TrivexTest
