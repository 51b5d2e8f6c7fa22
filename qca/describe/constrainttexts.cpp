// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensionparts.h"

#include "qca/describe/nametexts.h"
#include "qca/describe/objectnames.h"

namespace Trivex {

namespace {

/// In the order of the bits (RFC 5280, 4.2.1.3).
constexpr const char *KeyUsages[] = {
    //% "digital signature"
    QT_TRID_NOOP("trivex-app-usage-signature"),
    //% "non-repudiation"
    QT_TRID_NOOP("trivex-app-usage-commitment"),
    //% "encrypting keys"
    QT_TRID_NOOP("trivex-app-usage-key-encryption"),
    //% "encrypting data"
    QT_TRID_NOOP("trivex-app-usage-data-encryption"),
    //% "key agreement"
    QT_TRID_NOOP("trivex-app-usage-agreement"),
    //% "signing certificates"
    QT_TRID_NOOP("trivex-app-usage-certificates"),
    //% "signing lists of revoked certificates"
    QT_TRID_NOOP("trivex-app-usage-lists"),
    //% "agreement for encrypting only"
    QT_TRID_NOOP("trivex-app-usage-encipher"),
    //% "agreement for decrypting only"
    QT_TRID_NOOP("trivex-app-usage-decipher"),
};

constexpr const char *NetscapeTypes[] = {
    //% "client of a server"
    QT_TRID_NOOP("trivex-app-netscape-client"),
    //% "web server"
    QT_TRID_NOOP("trivex-app-netscape-server"),
    //% "e-mail"
    QT_TRID_NOOP("trivex-app-netscape-mail"),
    //% "signing programs"
    QT_TRID_NOOP("trivex-app-netscape-code"),
    //% "reserved"
    QT_TRID_NOOP("trivex-app-netscape-reserved"),
    //% "authority for servers and clients"
    QT_TRID_NOOP("trivex-app-netscape-server-authority"),
    //% "authority for e-mail"
    QT_TRID_NOOP("trivex-app-netscape-mail-authority"),
    //% "authority for signing programs"
    QT_TRID_NOOP("trivex-app-netscape-code-authority"),
};

template <size_t Count>
bool addBits(Der::Slice value, const char *const (&ids)[Count], Lines *lines)
{
    QByteArray content;
    QStringList words;
    if (!Der::Reader(value).nextString(Der::BitString, &content)
        || !bitWords(Der::sliceOf(content), ids, &words))
        return false;
    //% "nothing"
    lines->add(words.isEmpty() ? qtTrId("trivex-app-nothing") : words.join(QStringLiteral(", ")));
    return true;
}

bool addSubtrees(const QString &label, Der::Slice subtrees, Lines *lines)
{
    Der::Reader reader(subtrees);
    while (!reader.atEnd()) {
        Der::Slice subtree;
        Der::Element name;
        if (!reader.next(Der::Sequence, &subtree) || !Der::Reader(subtree).next(&name))
            return false;
        if (lines->isFull())
            lines->skip();
        else
            lines->add(labeledText(label, generalNameText(name)));
    }
    return true;
}

} // namespace

bool bitWords(Der::Slice content, const char *const *ids, int count, QStringList *words)
{
    if (content.isEmpty() || content.at(0) > 7 || content.size > MaxShownBytes)
        return false;
    const int bits = 8 * (content.size - 1) - content.at(0);
    for (int bit = 0; bit < bits; ++bit) {
        if (!(content.at(1 + bit / 8) & 0x80 >> bit % 8))
            continue;
        //% "bit %1"
        *words += bit < count ? qtTrId(ids[bit]) : qtTrId("trivex-app-bit-number").arg(bit);
    }
    return true;
}

bool addKeyUsage(Der::Slice value, Lines *lines)
{
    return addBits(value, KeyUsages, lines);
}

bool addNetscapeType(Der::Slice value, Lines *lines)
{
    return addBits(value, NetscapeTypes, lines);
}

bool addPurposes(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).nextList(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    while (!reader.atEnd()) {
        Der::Slice oid;
        if (!reader.next(Der::ObjectIdentifier, &oid) || !Der::isOid(oid))
            return false;
        if (lines->isFull())
            lines->skip();
        else
            lines->add(purposeName(Der::oidText(oid)));
    }
    return true;
}

bool addBasicConstraints(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    Der::Slice kind;
    Der::Slice limit;
    const bool hasKind = reader.next(Der::Boolean, &kind);
    const bool hasLimit = reader.next(Der::Integer, &limit);
    if (!reader.atEnd() || (hasKind && kind.size != 1) || (hasLimit && !Der::isInteger(limit)))
        return false;
    const bool isAuthority = hasKind && kind.at(0) != 0;
    //% "Certification authority"
    lines->add(labeledText(qtTrId("trivex-app-basic-authority"), yesText(isAuthority)));
    if (hasLimit) {
        //% "Authorities below it at most"
        lines->add(labeledText(qtTrId("trivex-app-basic-depth"), numberText(limit)));
    }
    return true;
}

bool addNameConstraints(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    Der::Slice subtrees;
    //% "Permitted"
    if (reader.nextList(Der::context(0), &subtrees)
        && !addSubtrees(qtTrId("trivex-app-names-permitted"), subtrees, lines))
        return false;
    //% "Excluded"
    if (reader.nextList(Der::context(1), &subtrees)
        && !addSubtrees(qtTrId("trivex-app-names-excluded"), subtrees, lines))
        return false;
    return reader.atEnd();
}

bool addPolicyConstraints(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    Der::Slice number;
    if (reader.next(Der::context(0, false), &number)) {
        //% "Certificates to skip before a policy is required"
        lines->add(labeledText(qtTrId("trivex-app-policy-required"), numberText(number)));
    }
    if (reader.next(Der::context(1, false), &number)) {
        //% "Certificates to skip before mappings count no more"
        lines->add(labeledText(qtTrId("trivex-app-policy-no-mappings"), numberText(number)));
    }
    return reader.atEnd();
}

bool addKeyPeriod(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    Der::Element time;
    for (const auto &part : {std::make_pair(0, "trivex-app-valid-from"),
                             std::make_pair(1, "trivex-app-valid-until")}) {
        if (!reader.next(Der::context(part.first, false), &time))
            continue;
        // Implicitly tagged.
        const Der::Element untagged{Der::GeneralizedTime, time.content, time.whole};
        lines->add(labeledText(qtTrId(part.second), timeText(untagged)));
    }
    return reader.atEnd();
}

} // namespace Trivex
