// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/names.h"

#include "qca/asn1/attributeids.h"
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
    {Oid::SerialNumber, Der::PrintableString},
    {Oid::Country, Der::PrintableString},
    {Oid::Telephone, Der::PrintableString},
    {Oid::X121Address, Der::NumericString},
    {Oid::NameQualifier, Der::PrintableString},
    {Oid::Gender, Der::PrintableString},
    {Oid::Citizenship, Der::PrintableString},
    {Oid::Residence, Der::PrintableString},
    {Oid::EmailAddress, Der::Ia5String},
    {Oid::DomainComponent, Der::Ia5String},
    {Oid::Inn, Der::NumericString},
    {Oid::Ogrn, Der::NumericString},
    {Oid::Snils, Der::NumericString},
    {Oid::Innle, Der::NumericString},
    {Oid::Ogrnip, Der::NumericString},
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
            Der::writeOid(Oid::XmppAddress)
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
