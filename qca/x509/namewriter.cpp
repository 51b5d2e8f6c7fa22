// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/names.h"

#include "qca/asn1/derwriter.h"
#include "qca/x509/generalnames.h"

#include <arpa/inet.h>

namespace Trivex {

namespace {

// Attributes whose definition leaves out UTF8String: X.520, RFC 3739, PKCS#9, RFC 4519, and the
// Russian identifiers as RFC 9215 and the profile of GOST certificates have them.
struct ConfinedAttribute {
    const char *oid;
    int tag;
};

constexpr ConfinedAttribute Confined[] = {
    {"2.5.4.5", Der::PrintableString}, // serial number
    {"2.5.4.6", Der::PrintableString}, // country
    {"2.5.4.20", Der::PrintableString}, // telephone number
    {"2.5.4.24", Der::NumericString}, // X.121 address
    {"2.5.4.46", Der::PrintableString}, // qualifier
    {"1.3.6.1.5.5.7.9.3", Der::PrintableString}, // gender
    {"1.3.6.1.5.5.7.9.4", Der::PrintableString}, // country of citizenship
    {"1.3.6.1.5.5.7.9.5", Der::PrintableString}, // country of residence
    {"1.2.840.113549.1.9.1", Der::Ia5String}, // mail address
    {"0.9.2342.19200300.100.1.25", Der::Ia5String}, // domain component
    {"1.2.643.3.131.1.1", Der::NumericString}, // INN
    {"1.2.643.100.1", Der::NumericString}, // OGRN
    {"1.2.643.100.3", Der::NumericString}, // SNILS
    {"1.2.643.100.4", Der::NumericString}, // INNLE
    {"1.2.643.100.5", Der::NumericString}, // OGRNIP
};

bool fits(int tag, const QString &value)
{
    for (const QChar c : value) {
        const bool isDigit = c >= QLatin1Char('0') && c <= QLatin1Char('9');
        if (c.unicode() == 0 || c.unicode() > 127)
            return false;
        if (tag == Der::NumericString && !isDigit && c != QLatin1Char(' '))
            return false;
        const bool printable = c.isLetterOrNumber() || QStringLiteral(" '()+,-./:=?").contains(c);
        if (tag == Der::PrintableString && !printable)
            return false;
    }
    return true;
}

QByteArray encodeValue(const QByteArray &oid, const QString &value)
{
    for (const ConfinedAttribute &attribute : Confined) {
        if (oid == attribute.oid && fits(attribute.tag, value))
            return Der::write(attribute.tag, value.toLatin1());
    }
    return Der::write(Der::Utf8String, value.toUtf8());
}

QByteArray encodeAddress(const QString &value)
{
    char octets[16];
    if (inet_pton(AF_INET, value.toLatin1().constData(), octets) == 1)
        return QByteArray(octets, 4);
    if (inet_pton(AF_INET6, value.toLatin1().constData(), octets) == 1)
        return QByteArray(octets, 16);
    return {};
}

QByteArray encodeGeneralName(QCA::CertificateInfoTypeKnown type, const QString &value)
{
    switch (type) {
    case QCA::Email:
        return Der::write(Rfc822Name, value.toUtf8());
    case QCA::DNS:
        return Der::write(DnsName, value.toUtf8());
    case QCA::URI:
        return Der::write(UriName, value.toUtf8());
    case QCA::IPAddress: {
        const QByteArray octets = encodeAddress(value);
        return octets.isEmpty() ? QByteArray() : Der::write(IpName, octets);
    }
    case QCA::XMPP:
        return Der::write(
            OtherName,
            Der::writeOid(XmppAddress)
                + Der::write(Der::context(0), Der::write(Der::Utf8String, value.toUtf8())));
    default:
        return {};
    }
}

} // namespace

QByteArray encodeName(const QCA::CertificateInfoOrdered &info)
{
    QByteArray content;
    for (const QCA::CertificateInfoPair &pair : info) {
        const QByteArray id = pair.type().id().toLatin1();
        const QByteArray oid = Der::writeOid(id);
        if (pair.type().section() != QCA::CertificateInfoType::DN || oid.isEmpty()
            || pair.value().isEmpty())
            continue;
        content += Der::write(Der::Set, Der::writeSequence({oid, encodeValue(id, pair.value())}));
    }
    return Der::write(Der::Sequence, content);
}

QByteArray encodeAlternativeNames(const QCA::CertificateInfoOrdered &info)
{
    QByteArray content;
    for (const QCA::CertificateInfoPair &pair : info) {
        if (pair.type().section() == QCA::CertificateInfoType::AlternativeName
            && !pair.value().isEmpty())
            content += encodeGeneralName(pair.type().known(), pair.value());
    }
    return content.isEmpty() ? QByteArray() : Der::write(Der::Sequence, content);
}

} // namespace Trivex
