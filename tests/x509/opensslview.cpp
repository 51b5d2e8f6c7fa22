// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/opensslview.h"

#include "tests/x509/corpus.h"
#include "tests/x509/opensslcertificate.h"

#include <QHostAddress>
#include <QtTest>

#include <algorithm>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// The distinguished name, without the alternative names that QCA puts into the same list.
OpensslCertificate::Name nameOf(const QCA::CertificateInfoOrdered &info)
{
    OpensslCertificate::Name name;
    for (const QCA::CertificateInfoPair &pair : info) {
        if (pair.type().section() == QCA::CertificateInfoType::DN)
            name.append({pair.type().id(), pair.value()});
    }
    return name;
}

// The kinds of alternative names that QCA knows, as openssl writes them.
const QHash<int, const char *> prefixes = {
    {QCA::Email, "email:"},
    {QCA::DNS, "DNS:"},
    {QCA::URI, "URI:"},
    {QCA::IPAddress, "IP Address:"},
    {QCA::XMPP, "othername: XmppAddr:"},
};

QStringList alternativeNamesOf(const QCA::CertificateInfoOrdered &info)
{
    QStringList names;
    for (const QCA::CertificateInfoPair &pair : info) {
        if (pair.type().section() == QCA::CertificateInfoType::AlternativeName)
            names += text(prefixes.value(pair.type().known(), "?")) + pair.value();
    }
    return names;
}

// openssl writes IPv6 addresses in eight numbers.
QStringList shortAddresses(QStringList names)
{
    const QString prefix = text("IP Address:");
    for (QString &name : names) {
        if (name.startsWith(prefix))
            name = prefix + QHostAddress(name.mid(prefix.size())).toString();
    }
    return names;
}

QStringList listIn(const OpensslCertificate &certificate, const char *title)
{
    return certificate.extension(text(title)).split(text(", "), Qt::SkipEmptyParts);
}

// The names that openssl prints; none where it can't decode the extension and dumps its octets.
QStringList alternativeNamesIn(const OpensslCertificate &certificate, const char *title)
{
    QStringList names;
    QStringList all = listIn(certificate, title);
    // Older ones print one colon more.
    all.replaceInStrings(text("XmppAddr::"), text("XmppAddr:"));
    for (const QString &name : qAsConst(all)) {
        const auto hasPrefix = [&name](const char *prefix) {
            return name.startsWith(text(prefix));
        };
        if (std::any_of(prefixes.begin(), prefixes.end(), hasPrefix))
            names += name;
    }
    return names;
}

// What openssl calls each constraint.
QString constraintName(const QCA::ConstraintType &constraint)
{
    static const QHash<int, const char *> names = {
        {QCA::DigitalSignature, "Digital Signature"},
        {QCA::NonRepudiation, "Non Repudiation"},
        {QCA::KeyEncipherment, "Key Encipherment"},
        {QCA::DataEncipherment, "Data Encipherment"},
        {QCA::KeyAgreement, "Key Agreement"},
        {QCA::KeyCertificateSign, "Certificate Sign"},
        {QCA::CRLSign, "CRL Sign"},
        {QCA::EncipherOnly, "Encipher Only"},
        {QCA::DecipherOnly, "Decipher Only"},
        {QCA::ServerAuth, "TLS Web Server Authentication"},
        {QCA::ClientAuth, "TLS Web Client Authentication"},
        {QCA::CodeSigning, "Code Signing"},
        {QCA::EmailProtection, "E-mail Protection"},
        {QCA::TimeStamping, "Time Stamping"},
        {QCA::OCSPSigning, "OCSP Signing"},
    };
    if (const char *name = names.value(constraint.known()))
        return text(name);
    if (constraint.id() == text("2.5.29.37.0"))
        return text("Any Extended Key Usage");
    return constraint.id();
}

QString policyName(const QString &oid)
{
    static const QHash<QString, const char *> names = {
        {text("2.5.29.32.0"), "X509v3 Any Policy"},
        {text("1.2.643.100.113.1"), "Class of Signing Tool KC1"},
        {text("1.2.643.100.113.2"), "Class of Signing Tool KC2"},
    };
    const char *name = names.value(oid);
    return name ? text(name) : oid;
}

// What stands behind `start` in the lines of an extension. Wide gaps end it: a point's last
// location and "Reasons:" share a line.
QStringList valuesBehind(const QStringList &lines, const char *start)
{
    QStringList values;
    for (const QString &line : lines) {
        if (line.startsWith(text(start)))
            values += line.mid(int(qstrlen(start))).section(text("    "), 0, 0);
    }
    return values;
}

void compareBasicConstraints(const QCA::Certificate &certificate,
                             const OpensslCertificate &expected)
{
    const QString constraints = expected.extension(text("X509v3 Basic Constraints"));
    QCOMPARE(certificate.isCA(), constraints.startsWith(text("CA:TRUE")));
    const QString limit = constraints.section(text("pathlen:"), 1, 1);
    QCOMPARE(certificate.pathLimit(), limit.toInt()); // 0 without one: QCA has no other word
}

} // namespace

void compareNames(const QCA::Certificate &certificate, const OpensslCertificate &expected,
                  const QString &file)
{
    QCOMPARE(certificate.serialNumber().toArray().toByteArray(), expected.serial);
    for (const char *type : {"t61-utf8", "printable-utf8", "ia5-utf8"}) {
        if (file.contains(text(type)))
            return; // openssl reads these types as Latin-1 always
    }
    QCOMPARE(nameOf(certificate.subjectInfoOrdered()), expected.subject);
    QCOMPARE(nameOf(certificate.issuerInfoOrdered()), expected.issuer);
    QCOMPARE(shortAddresses(alternativeNamesOf(certificate.subjectInfoOrdered())),
             shortAddresses(alternativeNamesIn(expected, "X509v3 Subject Alternative Name")));
    QCOMPARE(alternativeNamesOf(certificate.issuerInfoOrdered()),
             alternativeNamesIn(expected, "X509v3 Issuer Alternative Name"));
}

void compareDates(const QCA::Certificate &certificate, const OpensslCertificate &expected)
{
    QCOMPARE(certificate.notValidBefore(), expected.notBefore);
    QCOMPARE(certificate.notValidAfter(), expected.notAfter);
}

void compareKeys(const QCA::Certificate &certificate, const OpensslCertificate &expected,
                 const QString &file)
{
    const QByteArray key = Corpus::openssl(
        {text("x509"), text("-in"), Corpus::path(file), text("-noout"), text("-pubkey")});
    if (key.startsWith("-----"))
        QCOMPARE(certificate.subjectPublicKey().toPEM().toLatin1(), key);
    QCOMPARE(certificate.subjectKeyId(), expected.keyId(text("X509v3 Subject Key Identifier")));
    QCOMPARE(certificate.issuerKeyId(), expected.keyId(text("X509v3 Authority Key Identifier")));
}

void compareExtensions(const QCA::Certificate &certificate, const OpensslCertificate &expected)
{
    compareBasicConstraints(certificate, expected);
    QStringList constraints;
    for (const QCA::ConstraintType &constraint : certificate.constraints())
        constraints += constraintName(constraint);
    QCOMPARE(constraints,
             listIn(expected, "X509v3 Key Usage") + listIn(expected, "X509v3 Extended Key Usage"));
    QStringList policies;
    for (const QString &policy : certificate.policies())
        policies += policyName(policy);
    QCOMPARE(
        policies,
        valuesBehind(expected.extensionLines(text("X509v3 Certificate Policies")), "Policy: "));
    QCOMPARE(certificate.crlLocations(),
             valuesBehind(expected.extensionLines(text("X509v3 CRL Distribution Points")), "URI:"));
    const QStringList access = expected.extensionLines(text("Authority Information Access"));
    QCOMPARE(certificate.issuerLocations(), valuesBehind(access, "CA Issuers - URI:"));
    QCOMPARE(certificate.ocspLocations(), valuesBehind(access, "OCSP - URI:"));
}
