// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A private key in any form, with the right password, a wrong one and none.
#include "fuzz/target.h"
#include "qca/keys/pkeycontainer.h"

using namespace Trivex;

namespace {

void use(PKeyContainer *container)
{
    QCA::PKeyBase *key = container->key();
    if (!key)
        return;
    TrivexFuzz::check(key->bits() >= 0, "a key has a size");
    container->publicToDER();
    container->publicToPEM();
    if (key->isPrivate() && key->canExport()) {
        const QCA::SecureArray der = container->privateToDER({}, QCA::PBEDefault);
        PKeyContainer again(nullptr);
        TrivexFuzz::check(der.isEmpty() || again.privateFromDER(der, {}) == QCA::ConvertGood,
                          "a key that was written can be read");
    }
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    for (const char *password : {"secret", "wrong", ""}) {
        PKeyContainer der(nullptr);
        if (der.privateFromDER(QCA::SecureArray(input), QCA::SecureArray(password))
            == QCA::ConvertGood)
            use(&der);
        PKeyContainer pem(nullptr);
        if (pem.privateFromPEM(QString::fromLatin1(input), QCA::SecureArray(password))
            == QCA::ConvertGood)
            use(&pem);
    }
    PKeyContainer publicKey(nullptr);
    if (publicKey.publicFromDER(input) == QCA::ConvertGood)
        use(&publicKey);
}
