// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signedfields.h"

namespace Trivex {

QByteArray SignedFields::signatureBytes() const
{
    QByteArray bits;
    // The number of unused bits comes first.
    return Der::joinString(signature, &bits) ? bits.mid(1) : QByteArray();
}

bool findSignedFields(Der::Slice der, SignedFields *fields)
{
    Der::Element outer;
    if (!Der::Reader(der).next(Der::Sequence, &outer))
        return false;
    fields->whole = outer.whole;
    Der::Reader reader(outer.content);
    return reader.next(Der::Sequence, &fields->body)
        && reader.next(Der::Sequence, &fields->algorithm) && reader.next(&fields->signature)
        && (fields->signature.tag & ~Der::ConstructedBit) == Der::BitString && reader.atEnd();
}

} // namespace Trivex
