// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/certificatedata.h"

#include <QList>

#include <optional>

namespace Trivex {

using CertificateDataPtr = std::shared_ptr<const CertificateData>;

/// `own`, then its issuers out of `others`, one after the other. Nothing when the chain would be
/// longer than `MaxChainLength`, or when more than `MaxIssuerChecks` candidates have to be tried:
/// anybody can make many certificates that seem to have issued one another.
std::optional<QList<CertificateDataPtr>> completeChain(const CertificateDataPtr &own,
                                                       const QList<CertificateDataPtr> &others);

} // namespace Trivex
