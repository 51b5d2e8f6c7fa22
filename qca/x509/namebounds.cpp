// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/namebounds.h"

#include "qca/base/bounds.h"
#include "qca/x509/extensions.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Octets of the smallest attribute, an e-mail address in an alternative name.
constexpr int SmallestAttribute = 2;
constexpr int Rfc822Name = Der::context(1, false);

int attributesIn(Der::Slice name)
{
    int count = 0;
    Der::Slice content;
    Der::Slice set;
    Der::Slice attribute;
    if (!Der::singleList(name, Der::Sequence, &content))
        return count;
    Der::Reader sets(content);
    while (!sets.atEnd()) {
        // Bytes that are no set don't end the reading of a name either.
        if (!sets.nextList(Der::Set, &set)) {
            Der::Element other;
            sets.next(&other);
            continue;
        }
        Der::Reader attributes(set);
        while (attributes.next(Der::Sequence, &attribute))
            ++count;
    }
    return count;
}

int addressesIn(Der::Slice extensions, const Der::OidOctets &oid)
{
    int count = 0;
    const QByteArray value = findExtension(extensions, oid);
    Der::Slice content;
    if (!Der::Reader(Der::sliceOf(value)).nextList(Der::Sequence, &content))
        return count;
    Der::Reader reader(content);
    Der::Element element;
    while (reader.next(&element))
        count += element.tag == Rfc822Name ? 1 : 0;
    return count;
}

} // namespace

bool isWithinBounds(const CertificateFields &fields)
{
    if (fields.whole.size > MaxCertificateBytes)
        return false;
    if (fields.whole.size <= SmallestAttribute * MaxNameAttributes)
        return true;
    return attributesIn(fields.subject)
            + addressesIn(fields.extensions, ExtensionOid::SubjectAlternativeName)
        <= MaxNameAttributes
        && attributesIn(fields.issuer)
            + addressesIn(fields.extensions, ExtensionOid::IssuerAlternativeName)
        <= MaxNameAttributes;
}

bool isWithinBounds(const QCA::CertificateInfoOrdered &name)
{
    const auto count =
        std::count_if(name.cbegin(), name.cend(), [](const QCA::CertificateInfoPair &pair) {
            return pair.type().section() == QCA::CertificateInfoType::DN
                || pair.type().known() == QCA::Email;
        });
    return count <= MaxNameAttributes;
}

} // namespace Trivex
