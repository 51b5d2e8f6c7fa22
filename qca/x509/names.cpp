// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/names.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/strings.h"
#include "qca/x509/generalnames.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/sharedtypes.h"

#include <QCache>

#include <mutex>

#include <arpa/inet.h>

namespace Trivex {

namespace {

using Info = QCA::CertificateInfoOrdered;

// An issuer's name occurs in each certificate that it issued.
constexpr int CachedNames = 256;
constexpr int LongestCachedName = 1024;

void decodeAttribute(Der::Slice content, Info *info)
{
    Der::Reader reader(content);
    Der::Slice oid;
    Der::Element value;
    if (reader.next(Der::ObjectIdentifier, &oid) && reader.next(&value))
        info->append(QCA::CertificateInfoPair(sharedAttributeType(oid), decodeString(value)));
}

Info decodeNameAnew(Der::Slice name)
{
    Info info;
    Der::Slice content;
    if (!Der::singleList(name, Der::Sequence, &content))
        return info;
    Der::Reader names(content);
    while (!names.atEnd()) {
        Der::Slice set;
        // Bytes that are no set must not end the reading of the rest.
        if (!names.nextList(Der::Set, &set)) {
            Der::Element other;
            names.next(&other);
            continue;
        }
        Der::Reader attributes(set);
        Der::Slice attribute;
        while (attributes.next(Der::Sequence, &attribute))
            decodeAttribute(attribute, &info);
    }
    return info;
}

QString decodeAddress(Der::Slice octets)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (octets.size == 4)
        inet_ntop(AF_INET, octets.data, text, sizeof text);
    else if (octets.size == 16)
        inet_ntop(AF_INET6, octets.data, text, sizeof text);
    return QString::fromLatin1(text);
}

QString decodeXmpp(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Slice oid;
    Der::Slice wrapped;
    Der::Element value;
    if (!reader.next(Der::ObjectIdentifier, &oid) || Der::oidText(oid) != Oid::XmppAddress
        || !reader.next(Der::context(0), &wrapped) || !Der::Reader(wrapped).next(&value))
        return {};
    return decodeString(value);
}

QString decodeIa5(Der::Slice content)
{
    return decodeString({Der::Ia5String, content, content});
}

// Whether there is one element and nothing else.
bool isOne(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Element element;
    return reader.next(&element) && reader.atEnd();
}

bool isOtherName(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Slice oid;
    Der::Slice wrapped;
    return reader.next(Der::ObjectIdentifier, &oid) && reader.next(Der::context(0), &wrapped)
        && reader.atEnd() && isOne(wrapped);
}

bool isAttribute(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Slice oid;
    Der::Element value;
    return reader.next(Der::ObjectIdentifier, &oid) && reader.next(&value) && reader.atEnd();
}

bool isName(Der::Slice content)
{
    Der::Slice sets;
    if (!Der::singleList(content, Der::Sequence, &sets))
        return false;
    Der::Reader reader(sets);
    while (!reader.atEnd()) {
        Der::Slice set;
        if (!reader.nextList(Der::Set, &set))
            return false;
        Der::Reader attributes(set);
        while (!attributes.atEnd()) {
            Der::Slice attribute;
            if (!attributes.next(Der::Sequence, &attribute) || !isAttribute(attribute))
                return false;
        }
    }
    return true;
}

bool isPartyName(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Slice assigner;
    Der::Slice party;
    if (reader.next(Der::context(0), &assigner) && !isOne(assigner))
        return false;
    return reader.next(Der::context(1), &party) && reader.atEnd() && isOne(party);
}

// An element in the form of its definition, or a string in several pieces, which is joined in
// `content`.
bool openGeneralName(const Der::Element &element, int *tag, QByteArray *content)
{
    *content = element.content.view();
    *tag = element.tag;
    switch (element.tag) {
    case OtherName:
        return isOtherName(element.content);
    case DirectoryName:
        return isName(element.content);
    case EdiPartyName:
        return isPartyName(element.content);
    case X400Address:
        return true;
    default:
        break;
    }
    *tag &= ~Der::ConstructedBit;
    if (*tag == RegisteredId)
        return element.tag == RegisteredId && Der::isOid(element.content);
    const bool isString =
        *tag == Rfc822Name || *tag == DnsName || *tag == UriName || *tag == IpName;
    return isString && Der::joinString(element, content);
}

void decodeGeneralName(int tag, Der::Slice content, Info *info)
{
    const auto add = [info](int type, const QString &value) {
        if (!value.isEmpty())
            info->append(QCA::CertificateInfoPair(infoType(type), value));
    };
    switch (tag) {
    case Rfc822Name:
        return add(QCA::Email, decodeIa5(content));
    case DnsName:
        return add(QCA::DNS, decodeIa5(content));
    case UriName:
        return add(QCA::URI, decodeIa5(content));
    case IpName:
        return add(QCA::IPAddress, decodeAddress(content));
    case OtherName:
        return add(QCA::XMPP, decodeXmpp(content));
    default:
        return;
    }
}

} // namespace

QCA::CertificateInfoOrdered decodeName(Der::Slice name)
{
    if (name.size > LongestCachedName)
        return decodeNameAnew(name);
    // Never deleted: QCA's threads read certificates while the process ends.
    static auto &mutex = *new std::mutex;
    static auto &cache = *new QCache<QByteArray, Info>(CachedNames);
    const std::lock_guard lock(mutex);
    if (const Info *known = cache.object(name.view()))
        return *known;
    const Info info = decodeNameAnew(name);
    cache.insert(name.bytes(), new Info(info));
    return info;
}

// All or nothing, as in libcrypto: behind a damaged length, bytes that look like an address may be
// part of something else.
QCA::CertificateInfoOrdered decodeAlternativeNames(Der::Slice extension)
{
    Info info;
    Der::Slice content;
    if (!Der::Reader(extension).nextList(Der::Sequence, &content)
        || !decodeGeneralNames(content, &info))
        return {};
    return info;
}

bool decodeGeneralNames(Der::Slice content, QCA::CertificateInfoOrdered *info)
{
    Der::Reader reader(content);
    while (!reader.atEnd()) {
        Der::Element element;
        int tag = 0;
        QByteArray octets;
        if (!reader.next(&element) || !openGeneralName(element, &tag, &octets))
            return false;
        decodeGeneralName(tag, Der::sliceOf(octets), info);
    }
    return true;
}

} // namespace Trivex
