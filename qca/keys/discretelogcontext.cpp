// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/discretelogcontext.h"

#include "qca/keys/bignumbers.h"
#include "qca/keys/discretelog.h"
#include "qca/keys/keymaker.h"

#include <openssl/core_names.h>

namespace Trivex {

namespace {

/// As libcrypto calls them.
constexpr const char *nameOf(KeyType type)
{
    return type == DsaKey ? "DSA" : "DH";
}

} // namespace

template <class KeyContext, KeyType Type>
void DiscreteLogContext<KeyContext, Type>::createPrivate(const QCA::DLGroup &domain, bool block)
{
    this->m_material = KeyMaterial::fromNative(generateDiscreteLogKey(nameOf(Type), domain), true);
    if (block)
        return;
    bringToThisThread(this);
    QMetaObject::invokeMethod(this, &QCA::PKeyBase::finished, Qt::QueuedConnection);
}

template <class KeyContext, KeyType Type>
void DiscreteLogContext<KeyContext, Type>::createPrivate(const QCA::DLGroup &domain,
                                                         const QCA::BigInteger &y,
                                                         const QCA::BigInteger &x)
{
    this->m_material = KeyMaterial::fromNative(discreteLogKey(nameOf(Type), domain, &y, &x), true);
}

template <class KeyContext, KeyType Type>
void DiscreteLogContext<KeyContext, Type>::createPublic(const QCA::DLGroup &domain,
                                                        const QCA::BigInteger &y)
{
    this->m_material =
        KeyMaterial::fromNative(discreteLogKey(nameOf(Type), domain, &y, nullptr), false);
}

template <class KeyContext, KeyType Type>
QCA::DLGroup DiscreteLogContext<KeyContext, Type>::domain() const
{
    return discreteLogDomain(this->m_material.native());
}

template <class KeyContext, KeyType Type>
QCA::BigInteger DiscreteLogContext<KeyContext, Type>::y() const
{
    return keyNumber(this->m_material.native(), OSSL_PKEY_PARAM_PUB_KEY);
}

template <class KeyContext, KeyType Type>
QCA::BigInteger DiscreteLogContext<KeyContext, Type>::x() const
{
    return this->isPrivate() ? keyNumber(this->m_material.native(), OSSL_PKEY_PARAM_PRIV_KEY)
                             : QCA::BigInteger(0);
}

template class DiscreteLogContext<SigningKeyContext<QCA::DSAContext>, DsaKey>;
template class DiscreteLogContext<KeyBase<QCA::DHContext>, DhKey>;

} // namespace Trivex
