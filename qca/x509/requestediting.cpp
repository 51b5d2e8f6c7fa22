// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/requestediting.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/elements.h"
#include "qca/asn1/extensionids.h"
#include "qca/asn1/handles.h"
#include "qca/keys/keymaterial.h"
#include "qca/x509/certificatewriter.h"
#include "qca/x509/extensions.h"
#include "qca/x509/nameediting.h"
#include "qca/x509/requesthead.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace Trivex {

namespace {

/// The elements of a list as they are, of which one may be exchanged. What can't be read stays
/// behind them.
class ElementList {
public:
    explicit ElementList(Der::Slice content)
        : m_elements(Der::elementsOf(content, &m_rest))
    {
    }

    /// The first element that `fits`; -1 when there is none.
    template <class Fits> int find(Fits fits) const
    {
        const auto found = std::find_if(m_elements.cbegin(), m_elements.cend(), fits);
        return found == m_elements.cend() ? -1 : int(found - m_elements.cbegin());
    }
    QByteArray at(int i) const { return m_elements.value(i); }
    /// Puts `element` into place `i`, behind all others when that is -1; an empty one leaves none.
    void put(int i, const QByteArray &element)
    {
        if (i < 0)
            m_elements.append(element);
        else
            m_elements[i] = element;
    }
    QByteArray content() const
    {
        QByteArray all;
        for (const QByteArray &element : m_elements)
            all += element;
        return all + m_rest;
    }

    /// In the order that DER demands of a SET OF (X.690, 11.6).
    void sort() { std::sort(m_elements.begin(), m_elements.end()); }

private:
    QByteArray m_rest; // before the elements, which set it
    QList<QByteArray> m_elements;
};

/// The OID at the begin of a sequence.
QByteArray oidOf(const QByteArray &sequence)
{
    Der::Slice content;
    Der::Slice oid;
    return Der::Reader(Der::sliceOf(sequence)).next(Der::Sequence, &content)
            && Der::Reader(content).next(Der::ObjectIdentifier, &oid)
        ? Der::oidText(oid)
        : QByteArray();
}

/// An extension that is edited.
struct ExtensionEdit {
    const char *oid;
    bool isCritical; ///< where it is new: one that is there stays as it is
    /// Of its value; empty for none, nothing where that can't be read.
    std::function<std::optional<QByteArray>(const QByteArray &)> edit;
};

/// `extension` (empty for a new one) after the edit; empty when it is none any more. Nothing where
/// it has bytes that can't be read, which would be lost.
std::optional<QByteArray> editExtension(const QByteArray &extension, const ExtensionEdit &edit)
{
    QByteArray head = Der::writeOid(edit.oid);
    QByteArray octets;
    Der::Slice content;
    if (Der::Reader(Der::sliceOf(extension)).next(Der::Sequence, &content)) {
        Der::Reader reader(content);
        Der::Element critical;
        reader.skip(Der::ObjectIdentifier);
        if (reader.next(Der::Boolean, &critical))
            head += critical.whole.bytes();
        if (!reader.nextString(Der::OctetString, &octets) || !reader.atEnd())
            return std::nullopt;
    } else if (edit.isCritical) {
        head += Der::write(Der::Boolean, QByteArray(1, '\xFF'));
    }
    const std::optional<QByteArray> value = edit.edit(octets);
    if (!value || value->isEmpty())
        return value;
    return Der::writeSequence({head, Der::write(Der::OctetString, *value)});
}

/// Reads the content of the list of extensions in the first value of `attribute`; `others` are the
/// further values. False where anything else is in it.
bool readExtensions(const QByteArray &attribute, Der::Slice *extensions, QByteArray *others)
{
    Der::Slice content;
    Der::Slice values;
    if (!Der::Reader(Der::sliceOf(attribute)).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    reader.skip(Der::ObjectIdentifier);
    if (!reader.nextList(Der::Set, &values) || !reader.atEnd())
        return false;
    Der::Reader list(values);
    const bool isRead = list.nextList(Der::Sequence, extensions);
    *others = list.rest().bytes();
    return isRead;
}

/// How many extensions `oid` are in an attribute.
int countExtensions(const QByteArray &attribute, const char *oid)
{
    Der::Slice extensions;
    QByteArray rest;
    readExtensions(attribute, &extensions, &rest);
    const QList<QByteArray> all = Der::elementsOf(extensions, &rest);
    return int(std::count_if(all.cbegin(), all.cend(),
                             [oid](const QByteArray &one) { return oidOf(one) == oid; }));
}

/// Where the extension `oid` is in the list; -1 when it is not there.
int findExtension(const ElementList &extensions, const char *oid)
{
    return extensions.find([oid](const QByteArray &one) { return oidOf(one) == oid; });
}

/// `attribute` (empty for a new one) with the edit in its extensions; empty when none is left,
/// nothing where bytes of it would be lost.
std::optional<QByteArray> editExtensions(const QByteArray &attribute, const ExtensionEdit &edit)
{
    QByteArray others;
    Der::Slice list;
    if (!attribute.isEmpty() && !readExtensions(attribute, &list, &others))
        return std::nullopt;
    const QByteArray known = oidOf(attribute);
    ElementList extensions(list);
    const int place = findExtension(extensions, edit.oid);
    const std::optional<QByteArray> after = editExtension(extensions.at(place), edit);
    if (!after)
        return std::nullopt;
    extensions.put(place, *after);
    const QByteArray content = extensions.content();
    if (content.isEmpty() && others.isEmpty())
        return QByteArray();
    return Der::writeSequence({Der::writeOid(known.isEmpty() ? Oid::ExtensionRequest : known),
                               Der::write(Der::Set, Der::write(Der::Sequence, content) + others)});
}

/// Edits an extension where it is among the attributes of a request; a new one joins the others.
EditLoss editAttributes(ElementList *attributes, const ExtensionEdit &edit)
{
    const auto isExtensions = [](const QByteArray &attribute) {
        const QByteArray oid = oidOf(attribute);
        return oid == Oid::ExtensionRequest || oid == Oid::MicrosoftExtensionRequest;
    };
    int count = 0;
    attributes->find([&](const QByteArray &attribute) { // all of them: none fits
        count += isExtensions(attribute) ? countExtensions(attribute, edit.oid) : 0;
        return false;
    });
    if (count > 1)
        return EditLoss::Doubled;
    int place = attributes->find([&](const QByteArray &attribute) {
        return isExtensions(attribute) && countExtensions(attribute, edit.oid) > 0;
    });
    if (place < 0)
        place = attributes->find(isExtensions);
    const QByteArray before = attributes->at(place);
    const std::optional<QByteArray> after = editExtensions(before, edit);
    if (!after)
        return EditLoss::Extensions;
    attributes->put(place, *after);
    if (*after != before)
        attributes->sort();
    return EditLoss::None;
}

/// Makes the edits in the attributes of a request (RFC 2986, 4.1) and what follows them.
EditLoss editAttributes(Der::Slice rest, const QList<ExtensionEdit> &edits, QByteArray *edited)
{
    *edited = rest.bytes();
    if (edits.isEmpty())
        return EditLoss::None;
    Der::Reader reader(rest);
    Der::Slice content;
    reader.next(Der::context(0), &content);
    ElementList attributes(content);
    for (const ExtensionEdit &edit : edits) {
        const EditLoss loss = editAttributes(&attributes, edit);
        if (loss != EditLoss::None)
            return loss;
    }
    *edited = Der::write(Der::context(0), attributes.content()) + reader.rest().bytes();
    return EditLoss::None;
}

/// The bytes that stand for the key in `original` where it is the same key.
QByteArray publicInfoFor(const QByteArray &original, const QByteArray &ofKey)
{
    const KeyMaterial there = KeyMaterial::fromPublicInfo(original);
    const KeyMaterial here = KeyMaterial::fromPublicInfo(ofKey);
    const bool isSame =
        there.native() && here.native() && EVP_PKEY_eq(there.native(), here.native()) == 1;
    return isSame ? original : ofKey;
}

bool isAlternative(const InfoChange &change)
{
    return change.type.section() == QCA::CertificateInfoType::AlternativeName;
}

/// The alternative names in `value` with the changes.
std::optional<QByteArray> editAlternativeNames(const QByteArray &value,
                                               const QList<InfoChange> &changes)
{
    Der::Slice names;
    if (!value.isEmpty() && !Der::singleList(Der::sliceOf(value), Der::Sequence, &names))
        return std::nullopt;
    const QByteArray edited = editGeneralNames(names, changes);
    return edited.isEmpty() ? QByteArray() : Der::write(Der::Sequence, edited);
}

/// What leads from `before` to `after` in the extensions.
QList<ExtensionEdit> extensionEdits(const RequestedFields &before, const RequestedFields &after,
                                    const QList<InfoChange> &changes)
{
    QList<ExtensionEdit> edits;
    if (std::any_of(changes.cbegin(), changes.cend(), &isAlternative))
        edits += {Oid::SubjectAlternativeName, false, [changes](const QByteArray &value) {
                      return editAlternativeNames(value, changes);
                  }};
    const auto replace = [&edits](const char *oid, bool isCritical, const QByteArray &old,
                                  const QByteArray &value) {
        if (value != old)
            edits += {oid, isCritical, [value](const QByteArray &) { return value; }};
    };
    replace(Oid::KeyUsage, true, encodeKeyUsage(before.usages), encodeKeyUsage(after.usages));
    replace(Oid::ExtendedKeyUsage, false, encodePurposes(before.usages),
            encodePurposes(after.usages));
    return edits;
}

/// The parts of what is signed in a request.
struct Body {
    QByteArray version;
    QByteArray name;
    QByteArray publicInfo;
    QByteArray attributes;
};

/// The parts of `original` with the edits; nothing where it is no request. Where an edit would lose
/// something `loss` tells what, and the parts are of no use.
std::optional<Body> editBody(const QByteArray &original, const RequestedFields &before,
                             const RequestedFields &after, EditLoss *loss)
{
    Der::Slice outer;
    Der::Slice body;
    RequestHead head;
    if (!Der::Reader(Der::sliceOf(original)).next(Der::Sequence, &outer)
        || !Der::Reader(outer).next(Der::Sequence, &body) || !findRequestHead(body, &head))
        return std::nullopt;
    const QList<InfoChange> changes = infoChanges(before.info, after.info);
    Body edited{head.version.whole.bytes(), editName(head.subject.whole, changes),
                head.publicInfo.whole.bytes(), QByteArray()};
    *loss = edited.name.isEmpty()
        ? EditLoss::Name
        : editAttributes(head.rest, extensionEdits(before, after, changes), &edited.attributes);
    return edited;
}

} // namespace

EditLoss lossOfEdit(const QByteArray &original, const RequestedFields &before,
                    const RequestedFields &after)
{
    EditLoss loss = EditLoss::None;
    editBody(original, before, after, &loss);
    return loss;
}

QByteArray editRequest(const QByteArray &original, const RequestedFields &before,
                       const RequestedFields &after, const QCA::PKeyContext &key)
{
    EditLoss loss = EditLoss::None;
    const std::optional<Body> body = editBody(original, before, after, &loss);
    SigningKey signer(key);
    if (!body || loss != EditLoss::None || signer.publicInfo().isEmpty())
        return {};
    return signer.seal(Der::writeSequence({body->version, body->name,
                                           publicInfoFor(body->publicInfo, signer.publicInfo()),
                                           body->attributes}));
}

} // namespace Trivex
