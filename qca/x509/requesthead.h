// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// What a CertificationRequestInfo (RFC 2986, 4.1) begins with. Views of the bytes that were read.
struct RequestHead {
    Der::Element version;
    Der::Element subject;
    Der::Element publicInfo; ///< SubjectPublicKeyInfo
    Der::Slice rest; ///< the attributes, which some writers leave out
};

/// False when `body`, which comes without its tag and length, begins otherwise.
bool findRequestHead(Der::Slice body, RequestHead *head);

} // namespace Trivex
