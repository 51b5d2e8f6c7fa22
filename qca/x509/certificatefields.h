// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/signedfields.h"

namespace Trivex {

/// Where the fields of a certificate (RFC 5280, 4.1) lie in its DER form. Finding them is cheap
/// enough to be done again for each use.
struct CertificateFields : SignedFields {
    Der::Slice version; ///< content of the INTEGER; empty for version 1
    Der::Element serial; ///< INTEGER
    Der::Slice issuer; ///< with tag and length, as are the following
    Der::Element notBefore;
    Der::Element notAfter;
    Der::Slice subject;
    Der::Slice publicInfo;
    Der::Slice extensions; ///< content of the list; empty when there is none
    Der::Slice innerAlgorithm; ///< the one that is signed too, with tag and length
};

/// False when `der` does not begin with a certificate. Ignores the bytes behind it.
TRIVEX_QCA_EXPORT bool findCertificateFields(Der::Slice der, CertificateFields *fields);

/// Whether subject and issuer of the certificate name the same (`isSameName`), whatever type of
/// string each is; false when `der` does not begin with a certificate. Who has signed it is another
/// question.
TRIVEX_QCA_EXPORT bool isSelfIssued(Der::Slice der);

} // namespace Trivex
