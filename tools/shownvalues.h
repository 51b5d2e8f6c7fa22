// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/description.h"

#include <QVariantList>

namespace Trivex {

// The form in which views get the values of certificates: maps with "title" and "rows", each row a
// map with "label", "value", "fixed" (show in fixed width) and "flag" (what is wrong with it, or
// empty).

/// A row. `id` is a `ShownRow::id`: identifiers with check digits are checked.
QVariantMap valueRow(const QByteArray &id, const QString &label, const QString &value,
                     bool isFixed);
QVariantMap valueRow(const ShownRow &row);
QVariantMap valueGroup(const QString &title, const QVariantList &rows);
QVariantList valueGroups(const QVector<ShownGroup> &groups);

/// The PEM text of `der`; empty where it would be more than a text field shows at ease.
QString pemText(ShownKind kind, const QByteArray &der);

} // namespace Trivex
