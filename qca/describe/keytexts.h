// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/describe/shown.h"

namespace Trivex {

/// Kind and size of the key in `publicInfo` (DER SubjectPublicKeyInfo): "RSA, 2048 bits". Empty for
/// bytes that are no public key; an unknown kind is its OID. Needs no engine. Any thread.
TRIVEX_QCA_EXPORT QString publicKeyText(const QByteArray &publicInfo);

/// Everything in a public key: kind and size, curve or parameters, the numbers of the key.
QVector<ShownRow> publicKeyRows(const QByteArray &publicInfo);

} // namespace Trivex
