// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"
#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

// Requests that are made past QCA, whose options know neither the bytes of an earlier request nor
// the order of its names. The key signs where it lies; an event loop may run while a token works
// or asks for its PIN, so arguments are copies.

/// A request for what `options` ask for (names in their order, alternative names, usages), signed
/// by `key`. Null when that fails.
TRIVEX_QCA_EXPORT QCA::CertificateRequest madeRequest(QCA::CertificateOptions options,
                                                      QCA::PrivateKey key);

/// `original` asking for `fields`, signed anew by `key`. What they do not change keeps its bytes:
/// extensions, unknown attributes, the order of names and their string types. Null when that fails.
TRIVEX_QCA_EXPORT QCA::CertificateRequest
editedRequest(QCA::CertificateRequest original, RequestedFields fields, QCA::PrivateKey key);

/// Why `editedRequest` makes no such change, whatever the key. No event loop runs.
TRIVEX_QCA_EXPORT EditLoss lossOfEdit(const QCA::CertificateRequest &original,
                                      const RequestedFields &fields);

} // namespace Trivex
