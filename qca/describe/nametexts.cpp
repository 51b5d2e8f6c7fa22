// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/nametexts.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/strings.h"
#include "qca/describe/objectnames.h"
#include "qca/x509/generalnames.h"

#include <algorithm>

#include <arpa/inet.h>

namespace Trivex {

namespace {

/// Calls `handle` with OID and value of each attribute of one set, `damaged` with what is none.
template <class Handler, class Damaged>
void forEachOf(Der::Slice set, Handler handle, Damaged damaged)
{
    Der::Reader attributes(set);
    while (!attributes.atEnd()) {
        const Der::Slice rest = attributes.rest();
        Der::Slice content;
        Der::Slice oid;
        Der::Element value;
        if (!attributes.next(Der::Sequence, &content))
            return damaged(rest);
        Der::Reader parts(content);
        if (parts.next(Der::ObjectIdentifier, &oid) && parts.next(&value))
            handle(oid, value);
        else
            damaged(content);
    }
}

/// The same for a whole Name.
template <class Handler, class Damaged>
void forEachAttribute(Der::Slice name, Handler handle, Damaged damaged)
{
    Der::Slice sets;
    if (!Der::Reader(name).nextList(Der::Sequence, &sets))
        return damaged(name);
    Der::Reader reader(sets);
    while (!reader.atEnd()) {
        const Der::Slice rest = reader.rest();
        Der::Slice set;
        if (!reader.nextList(Der::Set, &set))
            return damaged(rest);
        forEachOf(set, handle, damaged);
    }
}

/// Names of the types that OtherName is used with, besides what libcrypto knows of them.
struct OtherKind {
    const char *oid;
    const char *id;
};

constexpr OtherKind OtherKinds[] = {
    //% "XMPP address"
    {Oid::XmppAddress, QT_TRID_NOOP("trivex-app-name-xmpp")},
    //% "User principal name"
    {Oid::PrincipalName, QT_TRID_NOOP("trivex-app-name-principal")},
    //% "E-mail"
    {Oid::SmtpMailbox, QT_TRID_NOOP("trivex-app-name-mail")},
    //% "Service"
    {Oid::ServiceName, QT_TRID_NOOP("trivex-app-name-service")},
};

QString otherNameText(Der::Slice content)
{
    Der::Reader reader(content);
    Der::Slice oid;
    Der::Slice wrapped;
    Der::Element value;
    if (!reader.next(Der::ObjectIdentifier, &oid) || !reader.next(Der::context(0), &wrapped)
        || !Der::Reader(wrapped).next(&value))
        return damagedText(content);
    const QByteArray dotted = Der::oidText(oid);
    const auto *const known =
        std::find_if(std::begin(OtherKinds), std::end(OtherKinds),
                     [&dotted](const OtherKind &kind) { return dotted == kind.oid; });
    if (known != std::end(OtherKinds))
        return labeledText(qtTrId(known->id), valueText(value));
    //% "Other name"
    return labeledText(qtTrId("trivex-app-name-other") + QLatin1Char(' ') + objectText(oid),
                       valueText(value));
}

QString addressOf(int family, const char *octets)
{
    char text[INET6_ADDRSTRLEN] = "";
    inet_ntop(family, octets, text, sizeof text);
    return QString::fromLatin1(text);
}

/// An address, or a net of name constraints: the address and its mask.
QString addressText(Der::Slice octets)
{
    switch (octets.size) {
    case 4:
        return addressOf(AF_INET, octets.data);
    case 8:
        return addressOf(AF_INET, octets.data) + QLatin1Char('/')
            + addressOf(AF_INET, octets.data + 4);
    case 16:
        return addressOf(AF_INET6, octets.data);
    case 32:
        return addressOf(AF_INET6, octets.data) + QLatin1Char('/')
            + addressOf(AF_INET6, octets.data + 16);
    default:
        return damagedText(octets);
    }
}

QString ia5Text(Der::Slice octets)
{
    return decodeString({Der::Ia5String, octets, octets});
}

QString stringNameText(int tag, const Der::Element &name)
{
    QByteArray joined;
    if (name.tag < 0 || !Der::joinString(name, &joined))
        return damagedText(name.whole);
    const Der::Slice octets = Der::sliceOf(joined);
    switch (tag) {
    case Rfc822Name:
        return labeledText(qtTrId("trivex-app-name-mail"), ia5Text(octets));
    case DnsName:
        return labeledText(QStringLiteral("DNS"), ia5Text(octets));
    case UriName:
        return labeledText(QStringLiteral("URI"), ia5Text(octets));
    case IpName:
        //% "IP address"
        return labeledText(qtTrId("trivex-app-name-address"), addressText(octets));
    case RegisteredId:
        //% "Registered identifier"
        return labeledText(qtTrId("trivex-app-name-registered"), objectText(octets));
    default:
        return damagedText(name.whole);
    }
}

} // namespace

QVector<ShownRow> nameRows(Der::Slice name)
{
    QVector<ShownRow> rows;
    forEachAttribute(
        name,
        [&rows](Der::Slice oid, const Der::Element &value) {
            const QByteArray dotted = Der::oidText(oid);
            const QString label = dotted.isEmpty() ? damagedText(oid) : attributeName(dotted);
            const QString text =
                rows.size() <= MaxShownRows ? lineText(decodeString(value)) : QString();
            rows += {dotted, label, text, false};
        },
        [&rows](Der::Slice bytes) {
            //% "Damaged part"
            rows += {{}, qtTrId("trivex-app-damaged-part"), damagedText(bytes), true};
        });
    return rows;
}

QString nameText(Der::Slice name)
{
    QStringList parts;
    forEachAttribute(
        name,
        [&parts](Der::Slice oid, const Der::Element &value) {
            if (parts.size() < MaxShownRows)
                parts += attributeAbbreviation(Der::oidText(oid)) + QLatin1Char('=')
                    + decodeString(value);
        },
        [&parts](Der::Slice bytes) { parts += damagedText(bytes); });
    return parts.join(QStringLiteral(", "));
}

QString valueText(const Der::Element &value)
{
    return isString(value.tag & ~Der::ConstructedBit) ? decodeString(value)
                                                      : bytesText(value.whole);
}

QString generalNameText(const Der::Element &name)
{
    switch (name.tag) {
    case OtherName:
        return otherNameText(name.content);
    case DirectoryName:
        //% "Directory name"
        return labeledText(qtTrId("trivex-app-name-directory"), nameText(name.content));
    case X400Address:
        //% "X.400 address"
        return labeledText(qtTrId("trivex-app-name-x400"), bytesText(name.content));
    case EdiPartyName:
        //% "EDI party"
        return labeledText(qtTrId("trivex-app-name-edi"), bytesText(name.content));
    default:
        return stringNameText(name.tag & ~Der::ConstructedBit, name);
    }
}

void addGeneralNames(Der::Slice content, Lines *lines)
{
    addGeneralNames(QString(), content, lines);
}

void addGeneralNames(const QString &label, Der::Slice content, Lines *lines)
{
    Der::Reader reader(content);
    while (!reader.atEnd()) {
        const Der::Slice rest = reader.rest();
        Der::Element name;
        const bool isElement = reader.next(&name);
        if (lines->isFull()) {
            lines->skip();
            continue;
        }
        const QString text = isElement ? generalNameText(name) : damagedText(rest);
        lines->add(label.isEmpty() ? text : labeledText(label, text));
    }
}

} // namespace Trivex
