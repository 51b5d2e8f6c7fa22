// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// What a request asks for and people edit. The rest of it is nobody's business here, and stays.
struct RequestedFields {
    QCA::CertificateInfo info; ///< the subject, and its other names
    QCA::Constraints usages; ///< key usages and extended ones
};

} // namespace Trivex
