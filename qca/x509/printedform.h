// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

enum class Printable { Certificate, Request, RevocationList, PublicKey };

/// Everything in the structure as libcrypto prints it, extensions that nobody knows by their OID
/// and bytes included; empty when libcrypto can't read it. More than `most` characters are cut off
/// at the end of a line, with "…" in their place.
TRIVEX_QCA_EXPORT QString printedForm(Printable kind, const QByteArray &der, int most = 64 * 1024);

} // namespace Trivex
