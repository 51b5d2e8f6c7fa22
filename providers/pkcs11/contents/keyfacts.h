// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokenentry.h"

namespace Trivex {

/// Gives each key its id and tells what is known of it. `store` begins the ids, which do not depend
/// on a login: they are made from the public half, and where that is not known from the kind, the
/// id and the label that the token has. Of several that are alike in all of that the ids hold only
/// while they are as many. Where another program has exchanged one of them, an old id may name
/// another one: those are `TokenKey::isGuessed`, and neither removed nor used by their ids.
QVector<TokenKeyFacts> describeKeys(const std::vector<std::shared_ptr<TokenKey>> &keys,
                                    const std::vector<TokenEntryPtr> &entries,
                                    const QByteArray &store);

} // namespace Trivex
