// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/base/plaintext.h"

#include <QByteArray>
#include <QString>

#include <p11-kit/pkcs11.h>

namespace Trivex {

/// The text in a field of a token (PKCS#11 2.40, 3.2): UTF-8, padded to the width of the field with
/// blanks, by some tokens with zeros. Some tokens cut a text inside a letter; that letter is left
/// out.
TRIVEX_TOKENS_EXPORT QString tokenText(const QByteArray &field);

/// The same of a field in a structure, without what could change the text around it.
template <size_t size> QString paddedText(const CK_UTF8CHAR (&field)[size])
{
    return plainText(tokenText(QByteArray(reinterpret_cast<const char *>(field), int(size))));
}

} // namespace Trivex
