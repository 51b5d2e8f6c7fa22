// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/eckeycontext.h"

#include "qca/keys/keymaker.h"

#include "qca/keys/keytypes.h"

#include <array>

namespace Trivex {

namespace {

struct Curve {
    const char *name;
    const char *nativeName;
};

constexpr std::array<Curve, 3> Curves = {{
    {"ec-secp256r1", "P-256"},
    {"ec-secp384r1", "P-384"},
    {"ec-secp521r1", "P-521"},
}};

const char *nativeCurve(const QString &name)
{
    for (const Curve &curve : Curves) {
        if (name == QLatin1String(curve.name))
            return curve.nativeName;
    }
    return nullptr;
}

} // namespace

EcKeyContext::EcKeyContext(QCA::Provider *provider, KeyMaterial material)
    : SigningKeyContext(provider, std::move(material))
{
    show();
}

EcKeyContext::EcKeyContext(const EcKeyContext &other)
    : SigningKeyContext(other)
{
    show();
}

EcKeyContext::~EcKeyContext() = default;

QCA::Provider::Context *EcKeyContext::clone() const
{
    return new EcKeyContext(*this);
}

void EcKeyContext::createPrivate(const QString &curve, bool block)
{
    m_material = KeyMaterial();
    show();
    const char *native = nativeCurve(curve);
    m_maker = std::make_unique<KeyMaker>("EC", [native](EVP_PKEY_CTX *context) {
        return native && EVP_PKEY_CTX_set_group_name(context, native) == 1;
    });
    m_maker->make(this, block, [this](PKeyHandle key) {
        m_material = KeyMaterial::fromNative(std::move(key), true);
        show();
    });
}

void EcKeyContext::convertToPublic()
{
    m_material.makePublic();
    show();
}

// See `NativeFirstKey`.
void EcKeyContext::show()
{
    m_stockView = m_material.native();
}

// Edwards curves digest by themselves.
bool EcKeyContext::takesMessage() const
{
    const EVP_PKEY *key = m_material.native();
    return key && (EVP_PKEY_is_a(key, "ED25519") || EVP_PKEY_is_a(key, "ED448"));
}

int EcKeyContext::partBits() const
{
    return keyType() == EllipticCurveKey && m_operation.format() == QCA::IEEE_1363 ? bits() : 0;
}

} // namespace Trivex
