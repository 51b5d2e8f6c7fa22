// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/x509/extensions.h"

#include "qca/engine/x509/derwriter.h"
#include "qca/engine/x509/names.h"
#include "qca/engine/x509/sharedtypes.h"

namespace Trivex {

namespace {

using Properties = QCA::CertContextProps;

constexpr char CaIssuers[] = "1.3.6.1.5.5.7.48.2";
constexpr char Ocsp[] = "1.3.6.1.5.5.7.48.1";
constexpr int KeyUsageBits = 9;

// What the value of an extension begins with. Bytes behind it are let be, as libcrypto does.
bool leading(Der::Slice value, int tag, Der::Slice *content)
{
    return Der::Reader(value).next(tag, content);
}

bool leadingList(Der::Slice value, Der::Slice *content)
{
    return Der::Reader(value).nextList(Der::Sequence, content);
}

void decodeSubjectKeyId(Der::Slice value, Properties *properties)
{
    QByteArray id;
    if (Der::Reader(value).nextString(Der::OctetString, &id))
        properties->subjectId = QByteArray(id.constData(), id.size());
}

void decodeIssuerKeyId(Der::Slice value, Properties *properties)
{
    properties->issuerId = decodeAuthorityKeyId(value);
}

void decodeKeyUsage(Der::Slice value, Properties *properties)
{
    QByteArray joined;
    if (!Der::Reader(value).nextString(Der::BitString, &joined) || joined.isEmpty())
        return;
    const Der::Slice content = Der::sliceOf(joined);
    for (int bit = 0; bit < KeyUsageBits; ++bit) {
        const int octet = 1 + bit / 8;
        if (octet < content.size && content.at(octet) & 0x80 >> bit % 8)
            properties->constraints += sharedKeyUsage(bit);
    }
}

void decodePurposes(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    Der::Slice oid;
    if (!leadingList(value, &content))
        return;
    Der::Reader reader(content);
    while (reader.next(Der::ObjectIdentifier, &oid))
        properties->constraints += sharedPurpose(oid);
}

void decodeBasicConstraints(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    if (!leading(value, Der::Sequence, &content))
        return;
    Der::Reader reader(content);
    Der::Slice isCa;
    Der::Slice pathLimit;
    if (reader.next(Der::Boolean, &isCa))
        properties->isCA = isCa.size == 1 && isCa.at(0) != 0;
    if (reader.next(Der::Integer, &pathLimit))
        properties->pathLimit = qMax(Der::smallInteger(pathLimit), 0);
}

void decodePolicies(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    Der::Slice policy;
    Der::Slice oid;
    if (!leadingList(value, &content))
        return;
    Der::Reader reader(content);
    while (reader.next(Der::Sequence, &policy)) {
        if (Der::Reader(policy).next(Der::ObjectIdentifier, &oid))
            properties->policies += QString::fromLatin1(Der::oidText(oid));
    }
}

QStringList urisIn(Der::Slice generalNames)
{
    QStringList uris;
    Der::Reader reader(generalNames);
    Der::Element name;
    while (reader.next(&name)) {
        if (name.tag == Der::context(6, false))
            uris += QString::fromLatin1(name.content.data, name.content.size);
    }
    return uris;
}

void decodeCrlPoints(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    Der::Slice point;
    Der::Slice name;
    Der::Slice fullName;
    if (!leadingList(value, &content))
        return;
    Der::Reader reader(content);
    while (reader.next(Der::Sequence, &point)) {
        if (Der::Reader(point).next(Der::context(0), &name)
            && Der::Reader(name).next(Der::context(0), &fullName))
            properties->crlLocations += urisIn(fullName);
    }
}

void decodeAuthorityAccess(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    Der::Slice description;
    if (!leadingList(value, &content))
        return;
    Der::Reader reader(content);
    while (reader.next(Der::Sequence, &description)) {
        Der::Reader parts(description);
        Der::Slice method;
        if (!parts.next(Der::ObjectIdentifier, &method))
            continue;
        const QByteArray oid = Der::oidText(method);
        if (oid == CaIssuers)
            properties->issuerLocations += urisIn(parts.rest());
        else if (oid == Ocsp)
            properties->ocspLocations += urisIn(parts.rest());
    }
}

void decodeSubjectNames(Der::Slice value, Properties *properties)
{
    properties->subject += decodeAlternativeNames(value);
}

void decodeIssuerNames(Der::Slice value, Properties *properties)
{
    properties->issuer += decodeAlternativeNames(value);
}

struct Decoder {
    const char *oid;
    void (*decode)(Der::Slice value, Properties *properties);
};

constexpr Decoder NameDecoders[] = {
    {"2.5.29.17", &decodeSubjectNames},
    {"2.5.29.18", &decodeIssuerNames},
};

// Key usage before its extended form, so that constraints come in that order.
constexpr Decoder Decoders[] = {
    {"2.5.29.14", &decodeSubjectKeyId},     {"2.5.29.35", &decodeIssuerKeyId},
    {"2.5.29.19", &decodeBasicConstraints}, {"2.5.29.15", &decodeKeyUsage},
    {"2.5.29.37", &decodePurposes},         {"2.5.29.32", &decodePolicies},
    {"2.5.29.31", &decodeCrlPoints},        {"1.3.6.1.5.5.7.1.1", &decodeAuthorityAccess},
};

template <size_t Count>
void decodeWith(const Decoder (&decoders)[Count], Der::Slice extensions, Properties *properties)
{
    for (const Decoder &decoder : decoders) {
        const QByteArray value = findExtension(extensions, decoder.oid);
        if (!value.isEmpty())
            decoder.decode(Der::sliceOf(value), properties);
    }
}

} // namespace

QByteArray findExtension(Der::Slice extensions, const char *oid)
{
    // Compared as octets: the text of an identifier would have to be made for each extension.
    const QByteArray wanted = Der::writeOid(oid);
    Der::Reader reader(extensions);
    Der::Slice extension;
    while (reader.next(Der::Sequence, &extension)) {
        Der::Reader parts(extension);
        Der::Element id;
        QByteArray value;
        if (!parts.next(Der::ObjectIdentifier, &id) || !(id.whole == Der::sliceOf(wanted)))
            continue;
        parts.skip(Der::Boolean);
        return parts.nextString(Der::OctetString, &value) ? value : QByteArray();
    }
    return {};
}

QByteArray decodeAuthorityKeyId(Der::Slice extension)
{
    Der::Slice content;
    QByteArray id;
    if (leading(extension, Der::Sequence, &content)
        && Der::Reader(content).nextString(Der::context(0, false), &id))
        return QByteArray(id.constData(), id.size());
    return {};
}

void decodeExtensions(Der::Slice extensions, QCA::CertContextProps *properties)
{
    decodeWith(Decoders, extensions, properties);
}

void decodeAlternativeNames(Der::Slice extensions, QCA::CertContextProps *properties)
{
    decodeWith(NameDecoders, extensions, properties);
}

} // namespace Trivex
