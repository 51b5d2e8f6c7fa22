// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Numbers of the subject attributes. 0 to 14 are those of `QCA::CertificateInfoTypeKnown`; 15 to
/// 20 are the Russian identifiers, which stock QCA does not number: handing one of them to
/// `QCA::CertificateInfoType` as a known type aborts the process, so they stay plain ints and
/// reach QCA as dotted OIDs only.
enum InfoType : int {
    CommonNameInfo = 0,
    EmailInfo = 1,
    EmailLegacyInfo = 2,
    OrganizationInfo = 3,
    OrganizationalUnitInfo = 4,
    LocalityInfo = 5,
    StateInfo = 7,
    CountryInfo = 9,
    XmppInfo = 14,
    InnInfo = 15,
    OgrnInfo = 16,
    SnilsInfo = 17,
    InnleInfo = 18,
    OgrnipInfo = 19,
    IdentificationKindInfo = 20,
};

/// The QCA key of attribute `number`. A number outside 0 to 20 gives a default-constructed type,
/// which no certificate carries. Thread-safe; the returned object shares its data.
TRIVEX_QCA_EXPORT QCA::CertificateInfoType infoType(int number);

/// The dotted OID of attribute `number` if QCA has no name for it (15 to 20), else empty.
TRIVEX_QCA_EXPORT QString infoOid(int number);

/// The value of attribute `number` in `info`, empty when absent. Of several values it is the one
/// inserted last, as with a plain map look-up.
TRIVEX_QCA_EXPORT QString infoValue(const QCA::CertificateInfo &info, int number);

} // namespace Trivex
