// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

#include <functional>

namespace Trivex {

/// Where saved requests are: "CertificateRequest/" in the home directory, with the separator at
/// its end. Found out once a process.
TRIVEX_QCA_EXPORT const QString &requestDirectory();

/// "csr": the extension of saved requests, and QCA's name of the feature that makes them.
TRIVEX_QCA_EXPORT const QString &requestExtension();

/// The name under which a request for `commonName` is saved when it is free.
TRIVEX_QCA_EXPORT QString requestFileName(const QString &commonName);

/// `path` (absolute) when `isTaken` says that it is free, else the first free one of its numbered
/// names: "Ivanov.csr", "Ivanov (1).csr", "Ivanov (2).csr". A number in brackets at the end of the
/// name is counted on from.
TRIVEX_QCA_EXPORT QString freePath(const QString &path,
                                   const std::function<bool(const QString &)> &isTaken);

} // namespace Trivex
