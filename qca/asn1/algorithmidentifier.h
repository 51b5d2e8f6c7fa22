// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace Trivex {

enum class AlgorithmParameters {
    Absent,
    Null, ///< as RSA keys and their digests have them (RFC 4055, 2.1)
};

/// DER AlgorithmIdentifier (RFC 5280, 4.1.1.2) of a dotted OID.
QByteArray algorithmIdentifier(const char *oid,
                               AlgorithmParameters parameters = AlgorithmParameters::Absent);

} // namespace Trivex
