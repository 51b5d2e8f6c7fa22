// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/cms.h>

namespace Trivex {

/// Whether the signature names its certificate by an attribute of RFC 2634, 5.4 or RFC 5035, 3.
bool namesSigningCertificate(CMS_SignerInfo *signer);

/// Whether it names `certificate`; true where it names none.
bool isSigningCertificate(CMS_SignerInfo *signer, X509 *certificate);

} // namespace Trivex
