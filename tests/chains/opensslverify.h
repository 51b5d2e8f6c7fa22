// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chain.h"

/// Whether `verifiedByOpenssl` asks for that purpose, which older versions do not know.
bool knowsPurpose(Trivex::ChainPurpose purpose);
/// What `openssl verify` says of the same files, with the same strength asked for.
QByteArray verifiedByOpenssl(const Trivex::ChainInput &input);

/// What certtool says of them, whose certificates stand in the order of the path.
QByteArray verifiedByCerttool(const Trivex::ChainInput &input);
