// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QList>

namespace Trivex::Der {

/// The encodings of the elements in `content`. `*rest` gets the bytes from the first on that can't
/// be read.
QList<QByteArray> elementsOf(Slice content, QByteArray *rest);

} // namespace Trivex::Der
