// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/certificates/certificatefactory.h"

#include <QFile>

namespace TrivexTest {

namespace {

/// Names the identifiers that openssl does not know, for -subj.
const char configuration[] = R"(
oid_section = identifiers
[identifiers]
INNLE = 1.2.643.100.4
IdKind = 1.2.643.100.114
[req]
distinguished_name = subject
x509_extensions = authority
[subject]
[authority]
subjectKeyIdentifier = hash
basicConstraints = critical,CA:TRUE
)";

QCA::Certificate readDer(const QByteArray &der)
{
    return der.isEmpty() ? QCA::Certificate() : QCA::Certificate::fromDER(der);
}

} // namespace

CertificateFactory::CertificateFactory()
{
    QFile file(this->file(QStringLiteral("test.cnf")));
    if (file.open(QIODevice::WriteOnly))
        file.write(configuration);
}

QCA::Certificate CertificateFactory::selfSigned(const QString &subject, const QStringList &further,
                                                const QString &key)
{
    const QString keyFile = file(QStringLiteral("key%1.pem").arg(++m_count));
    QStringList arguments = {QStringLiteral("req"),
                             QStringLiteral("-config"),
                             file(QStringLiteral("test.cnf")),
                             QStringLiteral("-x509"),
                             QStringLiteral("-nodes"),
                             QStringLiteral("-newkey"),
                             key,
                             QStringLiteral("-utf8"),
                             QStringLiteral("-subj"),
                             subject,
                             QStringLiteral("-keyout"),
                             keyFile,
                             QStringLiteral("-outform"),
                             QStringLiteral("DER")};
    if (key == QLatin1String("ec"))
        arguments << QStringLiteral("-pkeyopt") << QStringLiteral("ec_paramgen_curve:P-256");
    return readDer(m_authority.openssl(arguments + further));
}

QCA::Certificate CertificateFactory::issuedByNamesake(const QString &subject)
{
    const QString issuer = file(QStringLiteral("namesake.pem"));
    const QString issuerKey = file(QStringLiteral("namesake.key"));
    m_authority.openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-nodes"),
                         QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
                         QStringLiteral("-utf8"), QStringLiteral("-subj"), subject,
                         QStringLiteral("-keyout"), issuerKey, QStringLiteral("-out"), issuer});
    const QString request = file(QStringLiteral("namesake.csr"));
    m_authority.openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-nodes"),
                         QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
                         QStringLiteral("-utf8"), QStringLiteral("-subj"), subject,
                         QStringLiteral("-keyout"), file(QStringLiteral("other.key")),
                         QStringLiteral("-out"), request});
    return readDer(
        m_authority.openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"),
                             request, QStringLiteral("-CA"), issuer, QStringLiteral("-CAkey"),
                             issuerKey, QStringLiteral("-set_serial"), QStringLiteral("7"),
                             QStringLiteral("-outform"), QStringLiteral("DER")}));
}

QCA::KeyBundle CertificateFactory::bundle(const QString &subject)
{
    const QString path =
        m_authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA"),
                            QStringLiteral("-pkeyopt"), QStringLiteral("rsa_keygen_bits:2048")},
                           subject, QStringLiteral("secret"), QStringLiteral("friend"));
    return QCA::KeyBundle::fromFile(path, QCA::SecureArray("secret"));
}

} // namespace TrivexTest
