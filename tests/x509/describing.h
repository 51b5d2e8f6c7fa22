// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/description.h"

#include <QString>

namespace TrivexTest {

/// The first block of a PEM file, or the file itself.
QByteArray derOf(const QByteArray &contents);

/// The rows of the group with that topic.
QVector<Trivex::ShownRow> rowsOf(const QVector<Trivex::ShownGroup> &groups,
                                 Trivex::ShownTopic topic);
/// The value of the row with this label or identifier.
QString valueIn(const QVector<Trivex::ShownRow> &rows, const QString &label);

/// The content octets of an object identifier.
QByteArray dotted(const char *text);
QByteArray certificateWith(const QByteArray &extensions);
/// What is shown of one extension with that value.
QString extensionValue(const char *oid, const QByteArray &value);

} // namespace TrivexTest
