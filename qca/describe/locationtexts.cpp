// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensionparts.h"

#include "qca/asn1/extensionids.h"
#include "qca/describe/nametexts.h"
#include "qca/describe/objectnames.h"

namespace Trivex {

namespace {

/// In the order of the bits (RFC 5280, 4.2.1.13) and of the codes (5.3.1) where they are the same.
constexpr const char *Reasons[] = {
    //% "no reason given"
    QT_TRID_NOOP("trivex-app-reason-none"),
    //% "the key is known to others"
    QT_TRID_NOOP("trivex-app-reason-key"),
    //% "the authority's key is known to others"
    QT_TRID_NOOP("trivex-app-reason-authority"),
    //% "the holder has changed"
    QT_TRID_NOOP("trivex-app-reason-affiliation"),
    //% "replaced by another certificate"
    QT_TRID_NOOP("trivex-app-reason-superseded"),
    //% "no longer needed"
    QT_TRID_NOOP("trivex-app-reason-cessation"),
    //% "suspended"
    QT_TRID_NOOP("trivex-app-reason-hold"),
    //% "a right was withdrawn"
    QT_TRID_NOOP("trivex-app-reason-privilege"),
    //% "the attribute authority's key is known to others"
    QT_TRID_NOOP("trivex-app-reason-attribute"),
};

/// CRLReason (RFC 5280, 5.3.1) by its number; 7 is not used.
constexpr const char *ReasonCodes[] = {
    "trivex-app-reason-none",
    "trivex-app-reason-key",
    "trivex-app-reason-authority",
    "trivex-app-reason-affiliation",
    "trivex-app-reason-superseded",
    "trivex-app-reason-cessation",
    "trivex-app-reason-hold",
    nullptr,
    //% "no longer suspended"
    QT_TRID_NOOP("trivex-app-reason-unhold"),
    "trivex-app-reason-privilege",
    "trivex-app-reason-attribute",
};

/// DistributionPointName (RFC 5280, 4.2.1.13), given by the content of its tag.
bool addPointName(Der::Slice name, Lines *lines)
{
    Der::Reader reader(name);
    Der::Element element;
    if (reader.nextList(Der::context(0), &element)) {
        addGeneralNames(element.content, lines);
    } else if (reader.nextList(Der::context(1), &element)) {
        //% "Name below the issuer's"
        lines->add(labeledText(qtTrId("trivex-app-point-relative"), bytesText(element.content)));
    } else {
        return false;
    }
    return reader.atEnd();
}

bool addPoint(Der::Slice point, Lines *lines)
{
    Der::Reader parts(point);
    Der::Slice name;
    QByteArray reasons;
    Der::Slice issuer;
    if (parts.next(Der::context(0), &name) && !addPointName(name, lines))
        return false;
    if (parts.nextString(Der::context(1, false), &reasons)) {
        //% "Only for"
        lines->add(labeledText(qtTrId("trivex-app-point-reasons"),
                               reasonFlagsText(Der::sliceOf(reasons))));
    }
    if (parts.nextList(Der::context(2), &issuer)) {
        //% "Issuer of the list"
        addGeneralNames(qtTrId("trivex-app-point-issuer"), issuer, lines);
    }
    return parts.atEnd();
}

QString accessMethod(Der::Slice oid)
{
    const QByteArray dotted = Der::oidText(oid);
    if (dotted == Oid::Ocsp)
        return QStringLiteral("OCSP");
    if (dotted == Oid::CaIssuers) {
        //% "Certificate of the issuer"
        return qtTrId("trivex-app-access-issuers");
    }
    return objectText(oid);
}

} // namespace

QString reasonFlagsText(Der::Slice content)
{
    QStringList words;
    return bitWords(content, Reasons, &words) ? words.join(QStringLiteral(", "))
                                              : damagedText(content);
}

bool addReason(Der::Slice value, Lines *lines)
{
    Der::Slice code;
    if (!Der::single(value, Der::Enumerated, &code) || code.size != 1)
        return false;
    const int number = code.at(0);
    lines->add(revocationReasonText(number));
    return true;
}

QString revocationReasonText(int code)
{
    const bool isKnown = code >= 0 && code < int(std::size(ReasonCodes)) && ReasonCodes[code];
    return isKnown ? qtTrId(ReasonCodes[code]) : QString::number(code);
}

bool addSubjectKeyId(Der::Slice value, Lines *lines)
{
    QByteArray id;
    if (!Der::Reader(value).nextString(Der::OctetString, &id))
        return false;
    lines->add(bytesText(Der::sliceOf(id)));
    return true;
}

bool addAuthorityKeyId(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    QByteArray id;
    Der::Slice names;
    Der::Slice serial;
    if (reader.nextString(Der::context(0, false), &id))
        lines->add(bytesText(Der::sliceOf(id)));
    if (reader.nextList(Der::context(1), &names)) {
        //% "Its issuer"
        addGeneralNames(qtTrId("trivex-app-key-id-issuer"), names, lines);
    }
    if (reader.next(Der::context(2, false), &serial))
        lines->add(labeledText(qtTrId("trivex-app-serial"), bytesText(serial)));
    return reader.atEnd();
}

bool addNames(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).nextList(Der::Sequence, &content))
        return false;
    addGeneralNames(content, lines);
    return true;
}

bool addListPoints(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice point) { return addPoint(point, lines); });
}

bool addListScope(Der::Slice value, Lines *lines)
{
    struct Flag {
        int number;
        const char *id;
    };
    static constexpr Flag Flags[] = {
        //% "Only certificates of holders"
        {1, QT_TRID_NOOP("trivex-app-scope-holders")},
        //% "Only certificates of authorities"
        {2, QT_TRID_NOOP("trivex-app-scope-authorities")},
        //% "Entries of other issuers"
        {4, QT_TRID_NOOP("trivex-app-scope-indirect")},
        //% "Only attribute certificates"
        {5, QT_TRID_NOOP("trivex-app-scope-attributes")},
    };
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    Der::Slice part;
    QByteArray reasons;
    if (reader.next(Der::context(0), &part) && !addPointName(part, lines))
        return false;
    for (const Flag &flag : Flags) {
        if (flag.number == 4 && reader.nextString(Der::context(3, false), &reasons))
            lines->add(labeledText(qtTrId("trivex-app-point-reasons"),
                                   reasonFlagsText(Der::sliceOf(reasons))));
        if (reader.next(Der::context(flag.number, false), &part))
            lines->add(labeledText(qtTrId(flag.id), yesText(part.size == 1 && part.at(0) != 0)));
    }
    return reader.atEnd();
}

bool addAccess(Der::Slice value, Lines *lines)
{
    return addEach(value, lines, [lines](Der::Slice description) {
        Der::Reader parts(description);
        Der::Slice method;
        Der::Element location;
        if (!parts.next(Der::ObjectIdentifier, &method) || !parts.next(&location))
            return false;
        lines->add(labeledText(accessMethod(method), generalNameText(location)));
        return parts.atEnd();
    });
}

} // namespace Trivex
