// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/extensions.h"

#include "qca/asn1/extensionids.h"
#include "qca/x509/names.h"
#include "qca/x509/sharedtypes.h"

#include <cstring>

namespace Trivex {

namespace {

using Properties = QCA::CertContextProps;

constexpr int KeyUsageBits = 9;

// An extension that does not decode wholly counts as absent, as in libcrypto.

/// A copy: `view` may be of bytes that live no longer than the extension.
QByteArray ownBytes(const QByteArray &view)
{
    return QByteArray(view.constData(), view.size());
}

// The element at the beginning of an extension's value. Bytes behind it are ignored, as in
// libcrypto.
bool leading(Der::Slice value, int tag, Der::Slice *content)
{
    return Der::Reader(value).next(tag, content);
}

bool leadingList(Der::Slice value, Der::Slice *content)
{
    return Der::Reader(value).nextList(Der::Sequence, content);
}

QByteArray subjectKeyIdOf(Der::Slice value)
{
    QByteArray id;
    return Der::Reader(value).nextString(Der::OctetString, &id) ? ownBytes(id) : QByteArray();
}

QByteArray authorityKeyIdOf(Der::Slice value)
{
    Der::Slice content;
    QByteArray id;
    const bool hasId = leading(value, Der::Sequence, &content)
        && Der::Reader(content).nextString(Der::context(0, false), &id);
    return hasId ? ownBytes(id) : QByteArray();
}

struct BasicConstraints {
    bool isAuthority = false;
    int pathLimit = 0; // the same without a limit, as QCA has it
};

BasicConstraints basicConstraintsOf(Der::Slice value)
{
    Der::Slice content;
    if (!leading(value, Der::Sequence, &content))
        return {};
    Der::Reader reader(content);
    Der::Slice isCa;
    Der::Slice pathLimit;
    const bool hasKind = reader.next(Der::Boolean, &isCa);
    const bool hasLimit = reader.next(Der::Integer, &pathLimit);
    if (!reader.atEnd() || (hasKind && isCa.size != 1) || (hasLimit && !Der::isInteger(pathLimit)))
        return {};
    return {hasKind && isCa.at(0) != 0, qMax(Der::smallInteger(pathLimit), 0)};
}

void decodeSubjectKeyId(Der::Slice value, Properties *properties)
{
    properties->subjectId = subjectKeyIdOf(value);
}

void decodeAuthorityKeyId(Der::Slice value, Properties *properties)
{
    properties->issuerId = authorityKeyIdOf(value);
}

void decodeBasicConstraints(Der::Slice value, Properties *properties)
{
    const BasicConstraints constraints = basicConstraintsOf(value);
    properties->isCA = constraints.isAuthority;
    properties->pathLimit = constraints.pathLimit;
}

void decodeKeyUsage(Der::Slice value, Properties *properties)
{
    QByteArray joined;
    if (!Der::Reader(value).nextString(Der::BitString, &joined) || joined.isEmpty())
        return;
    const Der::Slice content = Der::sliceOf(joined);
    const int unused = content.at(0);
    if (unused > 7)
        return;
    const int bits = 8 * (content.size - 1) - unused;
    for (int bit = 0; bit < qMin(bits, KeyUsageBits); ++bit) {
        if (content.at(1 + bit / 8) & 0x80 >> bit % 8)
            properties->constraints += sharedKeyUsage(bit);
    }
}

void decodePurposes(Der::Slice value, Properties *properties)
{
    Der::Slice content;
    Der::Slice oid;
    QCA::Constraints purposes;
    if (!leadingList(value, &content))
        return;
    Der::Reader reader(content);
    while (reader.next(Der::ObjectIdentifier, &oid)) {
        if (!Der::isOid(oid))
            return;
        purposes += sharedPurpose(oid);
    }
    if (reader.atEnd())
        properties->constraints += purposes;
}

// PolicyInformation (RFC 5280, 4.2.1.4).
bool readPolicy(Der::Slice policy, QStringList *policies)
{
    Der::Reader parts(policy);
    Der::Slice oid;
    Der::Slice qualifiers;
    if (!parts.next(Der::ObjectIdentifier, &oid) || !Der::isOid(oid))
        return false;
    if (parts.nextList(Der::Sequence, &qualifiers)) {
        Der::Reader reader(qualifiers);
        Der::Slice qualifier;
        while (reader.next(Der::Sequence, &qualifier)) {
            if (Der::Reader(qualifier).peek() != Der::ObjectIdentifier)
                return false;
        }
        if (!reader.atEnd())
            return false;
    }
    *policies += QString::fromLatin1(Der::oidText(oid));
    return parts.atEnd();
}

// The URIs of GeneralNames; false for anything else.
bool readUris(Der::Slice generalNames, QStringList *uris)
{
    QCA::CertificateInfoOrdered names;
    if (!decodeGeneralNames(generalNames, &names))
        return false;
    for (const QCA::CertificateInfoPair &name : qAsConst(names)) {
        if (name.type().known() == QCA::URI)
            *uris += name.value();
    }
    return true;
}

// DistributionPointName (RFC 5280, 4.2.1.13).
bool readPointName(Der::Slice name, QStringList *uris)
{
    Der::Reader reader(name);
    Der::Slice content;
    if (reader.nextList(Der::context(0), &content))
        return reader.atEnd() && readUris(content, uris);
    return reader.nextList(Der::context(1), &content) && reader.atEnd();
}

bool readPoint(Der::Slice point, QStringList *uris)
{
    Der::Reader parts(point);
    Der::Slice name;
    QByteArray reasons;
    Der::Slice issuer;
    QStringList others;
    if (parts.next(Der::context(0), &name) && !readPointName(name, uris))
        return false;
    parts.nextString(Der::context(1, false), &reasons);
    if (parts.nextList(Der::context(2), &issuer) && !readUris(issuer, &others))
        return false;
    return parts.atEnd();
}

// AccessDescription (RFC 5280, 4.2.2.1).
bool readAccess(Der::Slice description, Properties *found)
{
    Der::Reader parts(description);
    Der::Slice method;
    Der::Element location;
    QStringList uris;
    if (!parts.next(Der::ObjectIdentifier, &method) || !Der::isOid(method) || !parts.next(&location)
        || !parts.atEnd() || !readUris(location.whole, &uris))
        return false;
    const QByteArray oid = Der::oidText(method);
    if (oid == Oid::CaIssuers)
        found->issuerLocations += uris;
    else if (oid == Oid::Ocsp)
        found->ocspLocations += uris;
    return true;
}

// Calls `handle` with each member of a SEQUENCE OF SEQUENCE; false when a member is no SEQUENCE.
template <class Handler> bool forEachMember(Der::Slice value, Handler handle)
{
    Der::Slice content;
    Der::Slice member;
    if (!leadingList(value, &content))
        return false;
    Der::Reader reader(content);
    while (reader.next(Der::Sequence, &member)) {
        if (!handle(member))
            return false;
    }
    return reader.atEnd();
}

void decodePolicies(Der::Slice value, Properties *properties)
{
    QStringList policies;
    if (forEachMember(value, [&](Der::Slice policy) { return readPolicy(policy, &policies); }))
        properties->policies += policies;
}

void decodeCrlPoints(Der::Slice value, Properties *properties)
{
    QStringList uris;
    if (forEachMember(value, [&](Der::Slice point) { return readPoint(point, &uris); }))
        properties->crlLocations += uris;
}

void decodeAuthorityAccess(Der::Slice value, Properties *properties)
{
    Properties found;
    if (!forEachMember(value, [&](Der::Slice access) { return readAccess(access, &found); }))
        return;
    properties->issuerLocations += found.issuerLocations;
    properties->ocspLocations += found.ocspLocations;
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
    Der::OidOctets oid;
    void (*decode)(Der::Slice value, Properties *properties);
};

constexpr Decoder NameDecoders[] = {
    {ExtensionOid::SubjectAlternativeName, &decodeSubjectNames},
    {ExtensionOid::IssuerAlternativeName, &decodeIssuerNames},
};

// Key usage before its extended form, so that constraints come in that order.
constexpr Decoder Decoders[] = {
    {ExtensionOid::SubjectKeyId, &decodeSubjectKeyId},
    {ExtensionOid::AuthorityKeyId, &decodeAuthorityKeyId},
    {ExtensionOid::BasicConstraints, &decodeBasicConstraints},
    {ExtensionOid::KeyUsage, &decodeKeyUsage},
    {ExtensionOid::ExtendedKeyUsage, &decodePurposes},
    {ExtensionOid::CertificatePolicies, &decodePolicies},
    {ExtensionOid::CrlDistributionPoints, &decodeCrlPoints},
    {ExtensionOid::AuthorityInfoAccess, &decodeAuthorityAccess},
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

QByteArray findExtension(Der::Slice extensions, const Der::OidOctets &oid)
{
    const Der::Slice wanted = oid.slice();
    Der::Reader reader(extensions);
    Der::Slice extension;
    while (reader.next(Der::Sequence, &extension)) {
        Der::Reader parts(extension);
        Der::Slice id;
        QByteArray value;
        if (!parts.next(Der::ObjectIdentifier, &id) || !(id == wanted))
            continue;
        parts.skip(Der::Boolean);
        return parts.nextString(Der::OctetString, &value) ? value : QByteArray();
    }
    return {};
}

QByteArray subjectKeyIdIn(Der::Slice extensions)
{
    return subjectKeyIdOf(Der::sliceOf(findExtension(extensions, ExtensionOid::SubjectKeyId)));
}

QByteArray authorityKeyIdIn(Der::Slice extensions)
{
    return authorityKeyIdOf(Der::sliceOf(findExtension(extensions, ExtensionOid::AuthorityKeyId)));
}

bool isAuthority(Der::Slice extensions)
{
    const QByteArray value = findExtension(extensions, ExtensionOid::BasicConstraints);
    return basicConstraintsOf(Der::sliceOf(value)).isAuthority;
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
