// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/shown.h"
#include "qca/describe/words.h"

namespace Trivex {

// Names in words. Damaged parts are shown with their bytes; nothing is left out.

/// A row for each attribute of a Name (RFC 5280, 4.1.2.4; with tag and length), in the order of its
/// encoding.
QVector<ShownRow> nameRows(Der::Slice name);

/// A Name on one line: "CN=…, O=…".
QString nameText(Der::Slice name);

/// An alternative name (RFC 5280, 4.2.1.6) of any kind, with its kind.
QString generalNameText(const Der::Element &name);

/// A line for each member of GeneralNames, given by their content.
void addGeneralNames(Der::Slice content, Lines *lines);

/// The same, every line beginning with `label`.
void addGeneralNames(const QString &label, Der::Slice content, Lines *lines);

/// An ASN.1 string as text; any other value as bytes.
QString valueText(const Der::Element &value);

} // namespace Trivex
