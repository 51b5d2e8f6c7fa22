// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

// What is shown of a certificate or request must not depend on the provider that QCA happened to
// decode it with: stock ones lose attributes, mix up alphabets, and crash on keys that they don't
// know. These read everything with the decoder of this library, which needs no provider plugin.

/// `certificate` itself where our own decoder made it, else what that reads from its DER form. Null
/// for a null certificate and for one that our decoder refuses.
TRIVEX_QCA_EXPORT QCA::Certificate ownCertificate(const QCA::Certificate &certificate);

/// The same for a certification request (PKCS#10; SPKAC stays as it is).
TRIVEX_QCA_EXPORT QCA::CertificateRequest ownRequest(const QCA::CertificateRequest &request);

/// The first certificate in the text of a PEM file; null when there is none.
TRIVEX_QCA_EXPORT QCA::Certificate certificateFromPem(const QByteArray &pem);

/// The certification request in `der`; null when there is none.
TRIVEX_QCA_EXPORT QCA::CertificateRequest requestFromDer(const QByteArray &der);

/// The first certification request in the text of a PEM file; null when there is none.
TRIVEX_QCA_EXPORT QCA::CertificateRequest requestFromPem(const QByteArray &pem);

} // namespace Trivex
