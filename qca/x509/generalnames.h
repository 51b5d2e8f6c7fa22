// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// Types of GeneralName (RFC 5280, 4.2.1.6) as their context tags.
enum GeneralName {
    OtherName = Der::context(0),
    Rfc822Name = Der::context(1, false),
    DnsName = Der::context(2, false),
    X400Address = Der::context(3),
    DirectoryName = Der::context(4),
    EdiPartyName = Der::context(5),
    UriName = Der::context(6, false),
    IpName = Der::context(7, false),
    RegisteredId = Der::context(8, false),
};

} // namespace Trivex
