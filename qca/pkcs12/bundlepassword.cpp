// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/bundlepassword.h"

#include <QTextCodec>

#include <algorithm>

namespace Trivex {

namespace {

bool isAscii(const Secret &text)
{
    return std::all_of(text.constData(), text.constData() + text.size(),
                       [](char c) { return uchar(c) < 0x80; });
}

// libcrypto turns UTF-8 into UTF-16, so a text with one character for each octet gives widened
// octets.
Secret widened(const QByteArray &octets)
{
    Secret result(2 * octets.size());
    char *end = result.data();
    for (const char octet : octets) {
        const uchar c = uchar(octet);
        if (c < 0x80) {
            *end++ = octet;
        } else {
            *end++ = char(0xC0 | c >> 6);
            *end++ = char(0x80 | (c & 0x3F));
        }
    }
    result.truncate(int(end - result.data()));
    return result;
}

} // namespace

QList<BundlePassword> passwordForms(const Secret &password)
{
    QList<BundlePassword> forms = {{password, false}};
    if (password.isEmpty())
        forms += {password, true};
    if (isAscii(password))
        return forms;
    QByteArray utf8 = password.toByteArray();
    forms += {widened(utf8), false};
    if (QTextCodec *cyrillic = QTextCodec::codecForName("windows-1251")) {
        QString text = QString::fromUtf8(utf8);
        // To ask first whether it can be encoded would leave a copy behind.
        QTextCodec::ConverterState state;
        QByteArray octets = cyrillic->fromUnicode(text.constData(), text.size(), &state);
        if (state.invalidChars == 0)
            forms += {widened(octets), false};
        octets.fill(0);
        text.fill(QChar());
    }
    utf8.fill(0);
    return forms;
}

} // namespace Trivex
