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

/// What a change of a request would lose, so that it is not made.
enum class EditLoss {
    None,
    Name, ///< what can't be read beside the value of the subject that is changed
    Extensions, ///< what can't be read in the list of extensions or in the one that is changed
    Doubled, ///< two extensions of one kind are there, and readers differ in which one counts
};

} // namespace Trivex
