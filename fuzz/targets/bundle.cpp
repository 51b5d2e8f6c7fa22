// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A PKCS#12 file with any password, its number of rounds as it stands there.
#include "fuzz/target.h"
#include "qca/pkcs12/pkcs12context.h"

using namespace Trivex;

void TrivexFuzz::take(const QByteArray &input)
{
    for (const char *password : {"secret", ""}) {
        QString name;
        QList<QCA::CertContext *> chain;
        QCA::PKeyContext *key = nullptr;
        const QCA::ConvertResult result = Pkcs12Context(nullptr).fromPKCS12(
            input, QCA::SecureArray(password), &name, &chain, &key);
        if (result == QCA::ConvertGood)
            check(key && !chain.isEmpty(), "a bundle has a key and its certificate");
        else
            check(!key && chain.isEmpty(), "a refused bundle leaves nothing");
        qDeleteAll(chain);
        delete key;
    }
}
