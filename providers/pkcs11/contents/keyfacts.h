// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokenentry.h"

namespace Trivex {

/// Gives each key its id and tells what is known of it. `store` begins the ids, which do not depend
/// on a login: they are made from the public half, and where that is not known from the id and the
/// label that the token has.
QVector<TokenKeyFacts> describeKeys(const std::vector<std::shared_ptr<TokenKey>> &keys,
                                    const std::vector<TokenEntryPtr> &entries,
                                    const QByteArray &store);

} // namespace Trivex
