// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/dhkeycontext.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

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
    : DhKeyBase(provider, std::move(material))
{
}

DhKeyContext::DhKeyContext(const DhKeyContext &other) = default;

DhKeyContext::~DhKeyContext() = default;

QCA::Provider::Context *DhKeyContext::clone() const
{
    return new DhKeyContext(*this);
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
