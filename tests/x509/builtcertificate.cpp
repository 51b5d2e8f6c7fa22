// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/builtcertificate.h"

namespace TrivexTest {

namespace {

QByteArray sealed(const QByteArray &body, const QByteArray &algorithm)
{
    return derElement(
        0x30, derElement(0x30, body) + algorithm + derElement(0x03, hex("00") + "signature"));
}

QByteArray arcOctets(quint64 arc)
{
    QByteArray octets(1, char(arc & 0x7F));
    for (arc >>= 7; arc > 0; arc >>= 7)
        octets.prepend(char((arc & 0x7F) | 0x80));
    return octets;
}

} // namespace

QByteArray oidContent(const QList<quint64> &arcs)
{
    QByteArray content = arcOctets(arcs.at(0) * 40 + arcs.at(1));
    for (int i = 2; i < arcs.size(); ++i)
        content += arcOctets(arcs.at(i));
    return content;
}

QByteArray attribute(const QByteArray &oid, const QByteArray &value, int tag)
{
    return derElement(0x30, oidElement(oid) + derElement(tag, value));
}

QByteArray name(const QByteArray &attribute, int count)
{
    return derElement(0x30, derElement(0x31, attribute).repeated(count));
}

QByteArray commonName(const QByteArray &text, int tag)
{
    return name(attribute(hex("550403"), text, tag));
}

QByteArray extension(const QByteArray &oid, const QByteArray &value, bool isCritical)
{
    const QByteArray critical = isCritical ? derElement(0x01, "\xff") : QByteArray();
    return derElement(0x30, oidElement(oid) + critical + derElement(0x04, value));
}

QByteArray certificate(const Parts &parts)
{
    const QByteArray key = parts.key.isEmpty()
        ? derElement(0x30, parts.algorithm + derElement(0x03, hex("00") + "key"))
        : parts.key;
    QByteArray body = parts.version + derElement(0x02, parts.serial) + parts.algorithm
        + parts.issuer + derElement(0x30, parts.validity) + parts.subject + key;
    if (!parts.extensions.isEmpty())
        body += derElement(0xA3, derElement(0x30, parts.extensions));
    return sealed(body, parts.algorithm);
}

QByteArray revocationList(const QByteArray &issuer)
{
    const QByteArray algorithm = derElement(0x30, derElement(0x06, hex("2a864886f70d01010b")));
    return sealed(algorithm + issuer + derElement(0x17, "200101000000Z"), algorithm);
}

} // namespace TrivexTest
