// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// The OtherName of an XMPP address (RFC 6120, 13.7.1.4).
constexpr char XmppAddress[] = "1.3.6.1.5.5.7.8.5";

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
