// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/certificatefields.h"

#include <QtCrypto>

namespace Trivex {

/// Whether the certificate and its names are within the bounds (`MaxCertificateBytes`,
/// `MaxNameAttributes`).
bool isWithinBounds(const CertificateFields &fields);

/// The same for a name that has been decoded.
bool isWithinBounds(const QCA::CertificateInfoOrdered &name);

} // namespace Trivex
