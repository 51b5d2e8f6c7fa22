// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokencontents.h"

#include <optional>

namespace Trivex {

/// Which rows a file holds: those of one token in one state.
struct RowKey {
    QString storeId; ///< names label, serial number, model and manufacturer
    QByteArray mark; ///< see `rowMark`
};

/// Ten thousand certificates, about. A larger file is neither written nor read.
constexpr qint64 MostRowBytes = qint64(16) << 20;

/// What a file says of the objects of a token: their bytes, ids and labels, and no handle, because
/// those mean nothing to another process.
TRIVEX_TOKENS_EXPORT QByteArray packRows(const RowKey &key, const TokenObjects &objects);

/// The objects that `packRows` has written for the same key. Nothing for any other bytes, damaged
/// ones and those of another token or state included.
TRIVEX_TOKENS_EXPORT std::optional<TokenObjects> unpackRows(const RowKey &key,
                                                            const QByteArray &file);

} // namespace Trivex
