// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace Trivex {

/// The configuration of SoftHSM for all users of the machine, wherever the distribution has it.
QStringList systemSoftHsmFiles();

/// Points SoftHSM, where p11-kit knows it, at a folder of the user's own for this program: below
/// "trivex/softhsm" in the user's data directory. Nothing outside of it is read by SoftHSM then.
///
/// Not where the user has chosen otherwise, by SOFTHSM2_CONF or a configuration of SoftHSM of one's
/// own, nor where the user has tokens in one of `systemFiles` and none here. To be called before
/// there is another thread.
void usePrivateTokens(const QStringList &systemFiles = systemSoftHsmFiles());

} // namespace Trivex
