// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/publickeyfields.h"

#include <QCryptographicHash>

namespace Trivex {

bool findPublicKeyFields(Der::Slice publicInfo, PublicKeyFields *fields)
{
    Der::Slice content;
    Der::Slice identifier;
    if (!Der::Reader(publicInfo).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    if (!reader.next(Der::Sequence, &identifier) || reader.peek() != Der::BitString)
        return false;
    // A key whose bits are damaged still has an algorithm to show.
    reader.next(Der::BitString, &fields->bitString);
    Der::Reader parts(identifier);
    if (!parts.next(Der::ObjectIdentifier, &fields->algorithm))
        return false;
    fields->parameters = parts.rest();
    return true;
}

QByteArray keyIdentifierOf(const QByteArray &publicInfo)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields) || fields.bitString.isEmpty())
        return {};
    return QCryptographicHash::hash(fields.key().view(), QCryptographicHash::Sha1);
}

} // namespace Trivex
