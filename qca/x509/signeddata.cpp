// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signeddata.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/der.h"
#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"

namespace Trivex {

namespace {

bool openContent(const QByteArray &der, Der::Slice *content)
{
    Der::Slice info;
    Der::Slice oid;
    Der::Slice wrapped;
    if (!Der::Reader(Der::sliceOf(der)).next(Der::Sequence, &info))
        return false;
    Der::Reader reader(info);
    return reader.next(Der::ObjectIdentifier, &oid) && Der::oidText(oid) == Oid::SignedData
        && reader.next(Der::context(0), &wrapped) && Der::single(wrapped, Der::Sequence, content);
}

// Other programs also write lists with indefinite lengths.
QByteArray definiteForm(const QByteArray &ber)
{
    const auto parsed = decodeNative<Pkcs7Handle>(Der::sliceOf(ber), d2i_PKCS7);
    return encodeNative(parsed.get(), i2d_PKCS7);
}

QList<QByteArray> members(Der::Slice set)
{
    QList<QByteArray> result;
    Der::Reader reader(set);
    Der::Element member;
    while (reader.next(&member))
        result += member.whole.bytes();
    return result;
}

} // namespace

bool SignedData::read(const QByteArray &der, SignedData *data)
{
    *data = {};
    Der::Slice content;
    QByteArray converted;
    if (der.size() > MaxFileBytes)
        return false;
    if (!openContent(der, &content)) {
        converted = definiteForm(der);
        if (!openContent(converted, &content))
            return false;
    }
    Der::Reader reader(content);
    reader.skip(Der::Integer);
    reader.skip(Der::Set);
    Der::Slice encapsulated;
    if (reader.next(Der::Sequence, &encapsulated)) {
        Der::Reader inner(encapsulated);
        inner.skip(Der::ObjectIdentifier);
        data->hasContent = !inner.atEnd();
    }
    Der::Slice set;
    if (reader.next(Der::context(0), &set))
        data->certificates = members(set);
    if (reader.next(Der::context(1), &set))
        data->lists = members(set);
    if (reader.next(Der::Set, &set))
        data->signers = members(set).size();
    return true;
}

} // namespace Trivex
