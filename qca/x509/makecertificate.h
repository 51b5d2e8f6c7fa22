// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QtCrypto>

namespace Trivex {

/// The certificate in `der`, for stores with thousands of entries: only its names are decoded at
/// once, the rest when it is read. Null when the bytes are no certificate. Owned by the certificate
/// provider; any thread.
///
/// It has no native object, so stock code that reads one by layout (TLS) finds null and reports an
/// error; hand such code `QCA::Certificate::fromDER(certificate.toDER())`.
TRIVEX_QCA_EXPORT QCA::Certificate makeCertificate(const QByteArray &der);

/// The provider that owns the certificates made here; set by it while it is loaded.
TRIVEX_QCA_EXPORT void setCertificateProvider(QCA::Provider *provider);
TRIVEX_QCA_EXPORT QCA::Provider *certificateProvider();

} // namespace Trivex
