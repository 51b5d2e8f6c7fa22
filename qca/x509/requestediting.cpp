// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/requestediting.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/handles.h"
#include "qca/keys/keymaterial.h"
#include "qca/x509/certificatewriter.h"
#include "qca/x509/nameediting.h"

#include <algorithm>

namespace Trivex {

namespace {

constexpr char AlternativeNames[] = "2.5.29.17";
constexpr char ExtensionRequest[] = "1.2.840.113549.1.9.14";
constexpr char MicrosoftExtensionRequest[] = "1.3.6.1.4.1.311.2.1.14";

/// The elements of a list as they are, of which one may be exchanged.
class ElementList {
public:
    explicit ElementList(Der::Slice content)
    {
        Der::Reader reader(content);
        Der::Element element;
        while (reader.next(&element))
            m_elements.append(element.whole.bytes());
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
        return all;
    }

    /// In the order that DER demands of a SET OF (X.690, 11.6).
    void sort() { std::sort(m_elements.begin(), m_elements.end()); }

private:
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

bool isAlternativeNames(const QByteArray &extension)
{
    return oidOf(extension) == AlternativeNames;
}

/// `extension` (empty for a new one) with the changes; empty when no name is left.
QByteArray editAlternativeNames(const QByteArray &extension, const QList<InfoChange> &changes)
{
    QByteArray head = Der::writeOid(AlternativeNames);
    QByteArray octets;
    Der::Slice content;
    if (Der::Reader(Der::sliceOf(extension)).next(Der::Sequence, &content)) {
        Der::Reader reader(content);
        Der::Element critical;
        reader.skip(Der::ObjectIdentifier);
        if (reader.next(Der::Boolean, &critical))
            head += critical.whole.bytes();
        reader.nextString(Der::OctetString, &octets);
    }
    Der::Slice names;
    Der::Reader(Der::sliceOf(octets)).nextList(Der::Sequence, &names);
    const QByteArray edited = editGeneralNames(names, changes);
    if (edited.isEmpty())
        return {};
    const QByteArray value = Der::write(Der::OctetString, Der::write(Der::Sequence, edited));
    return Der::writeSequence({head, value});
}

/// The content of the list of extensions in the first value of `attribute`; `others` are the
/// further values.
Der::Slice extensionsOf(const QByteArray &attribute, QByteArray *others)
{
    Der::Slice content;
    Der::Slice values;
    Der::Slice extensions;
    if (!Der::Reader(Der::sliceOf(attribute)).next(Der::Sequence, &content))
        return {};
    Der::Reader reader(content);
    reader.skip(Der::ObjectIdentifier);
    if (!reader.nextList(Der::Set, &values))
        return {};
    Der::Reader list(values);
    list.nextList(Der::Sequence, &extensions);
    *others = list.rest().bytes();
    return extensions;
}

/// `attribute` (empty for a new one) with the changes in its extensions; empty when none is left.
QByteArray editExtensions(const QByteArray &attribute, const QList<InfoChange> &changes)
{
    QByteArray others;
    const QByteArray known = oidOf(attribute);
    ElementList extensions(extensionsOf(attribute, &others));
    const int place = extensions.find(&isAlternativeNames);
    extensions.put(place, editAlternativeNames(extensions.at(place), changes));
    const QByteArray content = extensions.content();
    if (content.isEmpty() && others.isEmpty())
        return {};
    return Der::writeSequence({Der::writeOid(known.isEmpty() ? ExtensionRequest : known),
                               Der::write(Der::Set, Der::write(Der::Sequence, content) + others)});
}

/// The attributes of a request (RFC 2986, 4.1), and what follows them, with the changes.
QByteArray editAttributes(Der::Slice rest, const QList<InfoChange> &changes)
{
    Der::Reader reader(rest);
    Der::Slice content;
    reader.next(Der::context(0), &content);
    ElementList attributes(content);
    const auto isExtensions = [](const QByteArray &attribute) {
        const QByteArray oid = oidOf(attribute);
        return oid == ExtensionRequest || oid == MicrosoftExtensionRequest;
    };
    int place = attributes.find([&](const QByteArray &attribute) {
        QByteArray others;
        return isExtensions(attribute)
            && ElementList(extensionsOf(attribute, &others)).find(&isAlternativeNames) >= 0;
    });
    if (place < 0)
        place = attributes.find(isExtensions);
    const QByteArray before = attributes.at(place);
    const QByteArray after = editExtensions(before, changes);
    attributes.put(place, after);
    if (after != before)
        attributes.sort();
    return Der::write(Der::context(0), attributes.content()) + reader.rest().bytes();
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

} // namespace

QByteArray editRequest(const QByteArray &original, const QCA::CertificateInfo &before,
                       const QCA::CertificateInfo &after, const QCA::PKeyContext &key)
{
    Der::Slice outer;
    Der::Slice body;
    Der::Element version;
    Der::Element subject;
    Der::Element publicInfo;
    if (!Der::Reader(Der::sliceOf(original)).next(Der::Sequence, &outer)
        || !Der::Reader(outer).next(Der::Sequence, &body))
        return {};
    Der::Reader reader(body);
    if (!reader.next(Der::Integer, &version) || !reader.nextList(Der::Sequence, &subject)
        || !reader.next(Der::Sequence, &publicInfo))
        return {};
    SigningKey signer(key);
    if (signer.publicInfo().isEmpty())
        return {};
    const QList<InfoChange> changes = infoChanges(before, after);
    const bool hasAlternatives = std::any_of(changes.cbegin(), changes.cend(), &isAlternative);
    return signer.seal(Der::writeSequence(
        {version.whole.bytes(), editName(subject.whole, changes),
         publicInfoFor(publicInfo.whole.bytes(), signer.publicInfo()),
         hasAlternatives ? editAttributes(reader.rest(), changes) : reader.rest().bytes()}));
}

} // namespace Trivex
