// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <QtCrypto>

namespace Trivex {

/// The input of a validation: contexts of any provider, read through their DER.
struct ValidationInput {
    QList<QCA::CertContext *> trusted;
    QList<QCA::CertContext *> untrusted;
    QList<QCA::CRLContext *> crls;
    QCA::UsageMode usage = QCA::UsageAny;
};

/// Checks `certificate` up to a trusted root (RFC 5280, 6): signatures, dates, authorities, path
/// lengths, purposes, and revocation as far as `crls` cover it. With `wantedChain` the result is
/// `ErrorValidityUnknown` for any other path (a root that is not in it may follow).
QCA::Validity validateCertificate(const QCA::CertContext *certificate, const ValidationInput &input,
                                  const QList<QCA::CertContext *> *wantedChain = nullptr);

} // namespace Trivex
