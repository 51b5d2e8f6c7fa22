// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"

#include "qca/keys/extendedkey.h"
#include "qca/keys/gostpublickey.h"

namespace Trivex {

namespace {

const QCA::PKeyBase *keyContext(const QCA::PKey &key)
{
    const auto *container = dynamic_cast<const QCA::PKeyContext *>(key.context());
    return container ? container->key() : nullptr;
}

const ExtendedKey *extendedKey(const QCA::PKey &key)
{
    return dynamic_cast<const ExtendedKey *>(keyContext(key));
}

bool isSameRsa(const QCA::RSAPublicKey &a, const QCA::RSAPublicKey &b)
{
    return a.n().toArray() == b.n().toArray() && a.e().toArray() == b.e().toArray();
}

} // namespace

int keyType(const QCA::PKey &key)
{
    const QCA::PKeyBase *context = keyContext(key);
    if (!context || context->isNull())
        return UnknownKey;
    if (const auto *extended = dynamic_cast<const ExtendedKey *>(context))
        return extended->keyType();
    return int(context->type());
}

QString keyTypeName(int type)
{
    static const QStringList names = {QStringLiteral("RSA"), QStringLiteral("DSA"),
                                      QStringLiteral("DH"), QStringLiteral("Elliptic Curve")};
    return names.value(type);
}

QByteArray encodedPublicKey(const QCA::PKey &key)
{
    const QCA::PKeyBase *context = keyContext(key);
    if (!context || context->isNull())
        return {};
    if (const ExtendedKey *extended = extendedKey(key))
        return extended->subjectPublicKeyInfo();
    // Stock QCA encodes its own three kinds and crashes on some of the others.
    if (int(context->type()) > DhKey)
        return {};
    return key.toPublicKey().toDER();
}

bool isSamePublicKey(const QCA::PublicKey &a, const QCA::PublicKey &b)
{
    const int type = keyType(a);
    if (type == UnknownKey || type != keyType(b))
        return false;
    switch (type) {
    case RsaKey:
        return isSameRsa(a.toRSA(), b.toRSA());
    case DsaKey:
        return a.toDSA().y().toArray() == b.toDSA().y().toArray();
    case DhKey:
        return a.toDH().y().toArray() == b.toDH().y().toArray();
    default: {
        const QByteArray encoded = encodedPublicKey(a);
        return !encoded.isEmpty()
            && comparablePublicInfo(encoded) == comparablePublicInfo(encodedPublicKey(b));
    }
    }
}

QCA::PublicKey publicKeyOf(const QCA::PrivateKey &key)
{
    return keyContext(key) ? key.toPublicKey() : QCA::PublicKey();
}

bool isPrivateKey(const QCA::PKey &key)
{
    const QCA::PKeyBase *context = keyContext(key);
    return context && context->isPrivate();
}

QString keyStoreIdOf(const QCA::PKey &key)
{
    const ExtendedKey *extended = extendedKey(key);
    return extended ? extended->keyStoreId() : QString();
}

} // namespace Trivex
