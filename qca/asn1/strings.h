// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QDateTime>
#include <QString>

namespace Trivex {

/// Whether `tag` is that of a character string; false for the constructed form of one.
bool isString(int tag);

/// An ASN.1 string of any type as Unicode text, embedded NUL characters included. Values that are
/// no strings give "#" and their DER form in hexadecimal (RFC 4514, 2.4).
///
/// T61String, and octets above 127 in the types that allow ASCII only, are read as UTF-8 where they
/// are valid UTF-8 and as Latin-1 otherwise: nobody wrote the escape sequences of T.61, but both
/// encodings are found under its tag.
QString decodeString(const Der::Element &element);

/// UTCTime and GeneralizedTime, also without seconds, with fractions or with an offset, as UTC;
/// years of two digits lie between 1950 and 2049 (RFC 5280, 4.1.2.5.1). Invalid for anything else.
QDateTime decodeTime(const Der::Element &element);

} // namespace Trivex
