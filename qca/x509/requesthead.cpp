// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/requesthead.h"

namespace Trivex {

bool findRequestHead(Der::Slice body, RequestHead *head)
{
    Der::Reader reader(body);
    const bool isFound = reader.next(Der::Integer, &head->version)
        && reader.nextList(Der::Sequence, &head->subject)
        && reader.next(Der::Sequence, &head->publicInfo);
    head->rest = reader.rest();
    return isFound;
}

} // namespace Trivex
