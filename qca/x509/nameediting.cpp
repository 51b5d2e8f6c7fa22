// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/nameediting.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/elements.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/names.h"

#include <algorithm>

namespace Trivex {

namespace {

using Pairs = QCA::CertificateInfoOrdered;

bool isAlternative(const QCA::CertificateInfoType &type)
{
    return type.section() == QCA::CertificateInfoType::AlternativeName;
}

/// The content of the one element of `der`.
QByteArray contentOf(const QByteArray &der)
{
    Der::Element element;
    return Der::Reader(Der::sliceOf(der)).next(&element) ? element.content.bytes() : QByteArray();
}

Pairs onePair(const QCA::CertificateInfoType &type, const QString &value)
{
    Pairs pairs;
    pairs.append(QCA::CertificateInfoPair(type, value));
    return pairs;
}

QByteArray join(const QList<QByteArray> &parts)
{
    QByteArray all;
    for (const QByteArray &part : parts)
        all += part;
    return all;
}

/// None where the set can't be read whole: nothing in it is edited then.
QList<QByteArray> attributesOf(const QByteArray &relativeName)
{
    Der::Slice set;
    if (!Der::singleList(Der::sliceOf(relativeName), Der::Set, &set))
        return {};
    QByteArray rest;
    const QList<QByteArray> attributes = Der::elementsOf(set, &rest);
    return rest.isEmpty() ? attributes : QList<QByteArray>();
}

/// A relative distinguished name: its bytes, and its attributes while they are edited.
struct RelativeName {
    QByteArray whole;
    QList<QByteArray> attributes;
    bool isChanged = false;

    QByteArray encoded() const
    {
        if (!isChanged)
            return whole;
        if (attributes.isEmpty())
            return {};
        // A SET OF is sorted (X.690, 11.6).
        QList<QByteArray> sorted = attributes;
        std::sort(sorted.begin(), sorted.end());
        return Der::write(Der::Set, join(sorted));
    }
};

bool holds(const QByteArray &attribute, const QCA::CertificateInfoType &type, const QString &value)
{
    const QByteArray name = Der::write(Der::Sequence, Der::write(Der::Set, attribute));
    const Pairs decoded = decodeName(Der::sliceOf(name));
    return decoded.size() == 1 && decoded.first().type() == type
        && decoded.first().value() == value;
}

QByteArray encodedAttribute(const QCA::CertificateInfoType &type, const QString &value)
{
    return contentOf(contentOf(encodeName(onePair(type, value))));
}

/// Puts `after` in the place of the last such attribute: the one that look-ups find. False when
/// there is none.
bool replaceAttribute(QList<RelativeName> *names, const QCA::CertificateInfoType &type,
                      const QString &before, const QByteArray &after)
{
    for (auto name = names->rbegin(); name != names->rend(); ++name) {
        for (int i = name->attributes.size() - 1; i >= 0; --i) {
            if (!holds(name->attributes.at(i), type, before))
                continue;
            if (after.isEmpty())
                name->attributes.removeAt(i);
            else
                name->attributes[i] = after;
            name->isChanged = true;
            return true;
        }
    }
    return false;
}

/// The value is in a set that can't be read whole.
bool isInDamage(const QList<RelativeName> &names, const QCA::CertificateInfoType &type,
                const QString &value)
{
    return std::any_of(names.cbegin(), names.cend(), [&](const RelativeName &name) {
        const QByteArray alone = Der::write(Der::Sequence, name.whole);
        return !name.isChanged && name.attributes.isEmpty()
            && decodeName(Der::sliceOf(alone)).contains(QCA::CertificateInfoPair(type, value));
    });
}

/// False where the value stays, because what is beside it would be lost.
bool change(QList<RelativeName> *names, const InfoChange &change)
{
    const QCA::CertificateInfoType type =
        change.type == infoType(EmailInfo) ? infoType(EmailLegacyInfo) : change.type;
    const QByteArray after = change.after ? encodedAttribute(type, *change.after) : QByteArray();
    if (after.isEmpty() && change.after)
        return true;
    if (change.before && replaceAttribute(names, type, *change.before, after))
        return true;
    if (change.before && isInDamage(*names, type, *change.before))
        return false;
    if (!after.isEmpty() && !isAlternative(change.type))
        names->append({{}, {after}, true});
    return true;
}

int positionOf(const QList<QByteArray> &names, const QCA::CertificateInfoType &type,
               const QString &value)
{
    for (int i = names.size() - 1; i >= 0; --i) {
        Pairs decoded;
        if (decodeGeneralNames(Der::sliceOf(names.at(i)), &decoded)
            && decoded.contains(QCA::CertificateInfoPair(type, value)))
            return i;
    }
    return -1;
}

} // namespace

QList<InfoChange> infoChanges(const QCA::CertificateInfo &before, const QCA::CertificateInfo &after)
{
    QList<InfoChange> changes;
    QList<QCA::CertificateInfoType> types = before.uniqueKeys();
    for (const QCA::CertificateInfoType &type : after.uniqueKeys()) {
        if (!types.contains(type))
            types.append(type);
    }
    for (const QCA::CertificateInfoType &type : qAsConst(types)) {
        QStringList gone;
        QStringList come = after.values(type);
        for (const QString &value : before.values(type)) {
            if (!come.removeOne(value))
                gone.append(value);
        }
        // A map has the value that came last first, and what is added comes in the order in which
        // it was given.
        while (!gone.isEmpty() && !come.isEmpty())
            changes.append({type, gone.takeFirst(), come.takeFirst()});
        while (!gone.isEmpty())
            changes.append({type, gone.takeFirst(), std::nullopt});
        while (!come.isEmpty())
            changes.append({type, std::nullopt, come.takeLast()});
    }
    return changes;
}

QByteArray editName(Der::Slice name, const QList<InfoChange> &changes)
{
    Der::Slice content;
    if (!Der::Reader(name).nextList(Der::Sequence, &content))
        return name.bytes();
    QList<RelativeName> names;
    QByteArray rest;
    for (const QByteArray &relativeName : Der::elementsOf(content, &rest))
        names.append({relativeName, attributesOf(relativeName), false});
    for (const InfoChange &one : changes) {
        if (!change(&names, one))
            return {};
    }
    const bool isChanged = std::any_of(names.cbegin(), names.cend(),
                                       [](const RelativeName &one) { return one.isChanged; });
    if (!isChanged)
        return name.bytes();
    QByteArray edited;
    for (const RelativeName &one : qAsConst(names))
        edited += one.encoded();
    return Der::write(Der::Sequence, edited + rest);
}

QByteArray editGeneralNames(Der::Slice names, const QList<InfoChange> &changes)
{
    QByteArray rest;
    QList<QByteArray> elements = Der::elementsOf(names, &rest);
    for (const InfoChange &one : changes) {
        if (!isAlternative(one.type))
            continue;
        const QByteArray after = one.after
            ? contentOf(encodeAlternativeNames(onePair(one.type, *one.after)))
            : QByteArray();
        if (after.isEmpty() && one.after)
            continue;
        const int position = one.before ? positionOf(elements, one.type, *one.before) : -1;
        if (position < 0 && !one.before && !after.isEmpty())
            elements.append(after);
        else if (position >= 0 && after.isEmpty())
            elements.removeAt(position);
        else if (position >= 0)
            elements[position] = after;
    }
    return join(elements) + rest;
}

} // namespace Trivex
