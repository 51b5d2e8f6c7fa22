// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QList>
#include <QtCrypto>

namespace Trivex::Der {

TRIVEX_QCA_EXPORT QByteArray write(int tag, const QByteArray &content);
TRIVEX_QCA_EXPORT QByteArray writeSequence(const QList<QByteArray> &parts);
/// OBJECT IDENTIFIER of a dotted OID; empty for any other text.
TRIVEX_QCA_EXPORT QByteArray writeOid(const QByteArray &dotted);
QByteArray writeInteger(const QCA::BigInteger &number);
/// INTEGER of a number that is not negative. `bigEndian` may have leading zeros.
TRIVEX_QCA_EXPORT QByteArray writeUnsigned(QByteArray bigEndian);
/// BIT STRING of whole octets.
TRIVEX_QCA_EXPORT QByteArray writeBits(const QByteArray &octets);
/// Time: UTCTime to 2049, GeneralizedTime from 2050 and before 1950 (RFC 5280, 4.1.2.5).
QByteArray writeTime(const QDateTime &time);

} // namespace Trivex::Der
