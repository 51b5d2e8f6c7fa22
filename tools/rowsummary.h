// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/sectionedmodel.h"

#include <QVariantMap>

namespace Trivex {

/// What a question says of these rows, in one pass: only so many are decoded as names are told.
///
/// | key | value |
/// |---|---|
/// | "count" | how many they are |
/// | "identity" | of the first |
/// | "names" | of the first `most` |
/// | "places" | the stores that hold them |
/// | "hasKey", "isRequest" | whether that is true of one of them |
/// | "isKey" | whether all are keys without a certificate |
/// | "requests" | the names of requests that wait for certificates of the keys among them |
/// | "identities" | of those that are no keys |
/// | "keys" | of each key "isKey", "identity", "storeId" and "keyId" |
QVariantMap summaryOf(const SectionedModel &list, const QVector<int> &rows, int most);

} // namespace Trivex
