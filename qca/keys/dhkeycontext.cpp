// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/dhkeycontext.h"

#include "qca/keys/bignumbers.h"
#include "qca/keys/discretelog.h"

#include "qca/keys/keytypes.h"

#include <QThread>

#include <openssl/core_names.h>
#include <openssl/err.h>

namespace Trivex {

namespace {

KeyMaterial onlyDh(KeyMaterial material)
{
    return material.keyType() == DhKey ? std::move(material) : KeyMaterial();
}

/// The public half of a Diffie-Hellman key of any provider.
KeyMaterial peerMaterial(const QCA::PKeyBase &key)
{
    if (const auto *own = dynamic_cast<const DhKeyContext *>(&key))
        return own->material();
    const auto *foreign = dynamic_cast<const QCA::DHContext *>(&key);
    if (!foreign || foreign->isNull())
        return {};
    DhKeyContext copy(foreign->provider());
    copy.createPublic(foreign->domain(), foreign->y());
    return copy.material();
}

} // namespace

DhKeyContext::DhKeyContext(QCA::Provider *provider, KeyMaterial material)
    : KeyBase(provider, onlyDh(std::move(material)))
{
}

DhKeyContext::DhKeyContext(const DhKeyContext &other)
    : KeyBase(other)
    , ExtendedKey(other)
{
}

DhKeyContext::~DhKeyContext() = default;

QCA::Provider::Context *DhKeyContext::clone() const
{
    return new DhKeyContext(*this);
}

int DhKeyContext::keyType() const
{
    return isNull() ? int(UnknownKey) : int(DhKey);
}

void DhKeyContext::createPrivate(const QCA::DLGroup &domain, bool block)
{
    m_material = KeyMaterial::fromNative(generateDiscreteLogKey("DH", domain), true);
    if (block)
        return;
    // QCA's contexts belong to no thread at first, and get no events there.
    if (!thread())
        moveToThread(QThread::currentThread());
    QMetaObject::invokeMethod(this, &DhKeyContext::finished, Qt::QueuedConnection);
}

void DhKeyContext::createPrivate(const QCA::DLGroup &domain, const QCA::BigInteger &y,
                                 const QCA::BigInteger &x)
{
    m_material = KeyMaterial::fromNative(discreteLogKey("DH", domain, &y, &x), true);
}

void DhKeyContext::createPublic(const QCA::DLGroup &domain, const QCA::BigInteger &y)
{
    m_material = KeyMaterial::fromNative(discreteLogKey("DH", domain, &y, nullptr), false);
}

QCA::DLGroup DhKeyContext::domain() const
{
    return discreteLogDomain(m_material.native());
}

QCA::BigInteger DhKeyContext::y() const
{
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_PUB_KEY);
}

QCA::BigInteger DhKeyContext::x() const
{
    return isPrivate() ? keyNumber(m_material.native(), OSSL_PKEY_PARAM_PRIV_KEY)
                       : QCA::BigInteger(0);
}

QCA::SymmetricKey DhKeyContext::deriveKey(const QCA::PKeyBase &theirs)
{
    const KeyMaterial peer = peerMaterial(theirs);
    EVP_PKEY *key = m_material.isPrivate() ? m_material.native() : nullptr;
    const KeyContextHandle context(key ? EVP_PKEY_CTX_new(key, nullptr) : nullptr);
    size_t size = 0;
    QCA::SecureArray secret;
    if (context && peer.native() && EVP_PKEY_derive_init(context.get()) == 1
        && EVP_PKEY_derive_set_peer(context.get(), peer.native()) == 1
        && EVP_PKEY_derive(context.get(), nullptr, &size) == 1) {
        secret.resize(int(size));
        if (EVP_PKEY_derive(context.get(), reinterpret_cast<unsigned char *>(secret.data()), &size)
            != 1)
            size = 0;
        secret.resize(int(size));
    }
    ERR_clear_error();
    return QCA::SymmetricKey(secret);
}

} // namespace Trivex
