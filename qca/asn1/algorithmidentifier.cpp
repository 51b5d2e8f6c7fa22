// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/algorithmidentifier.h"

#include "qca/asn1/derwriter.h"

namespace Trivex {

QByteArray algorithmIdentifier(const char *oid, AlgorithmParameters parameters)
{
    QList<QByteArray> parts = {Der::writeOid(oid)};
    if (parameters == AlgorithmParameters::Null)
        parts += Der::write(Der::Null, {});
    return Der::writeSequence(parts);
}

} // namespace Trivex
