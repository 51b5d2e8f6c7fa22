// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Names of our providers, by which the subsystems choose them.
TRIVEX_QCA_EXPORT QString opensslProviderName(); ///< "qca-norvel-openssl"
TRIVEX_QCA_EXPORT QString pkcs11ProviderName(); ///< "qca-norvel-pkcs11"
TRIVEX_QCA_EXPORT QString gostProviderName(); ///< "qca-norvel-gost"

/// Ranks our certificate provider before the stock one. Once at plugin start, after QCA's
/// initialisation; harmless when the provider is missing.
TRIVEX_QCA_EXPORT void rankProviders();

/// A provider object that its caller may delete. It forwards to `provider` as long as QCA has that
/// loaded, and gives empty answers afterwards. Null for null. QCA keeps its own object.
TRIVEX_QCA_EXPORT QCA::Provider *forwardingProvider(QCA::Provider *provider);

} // namespace Trivex
