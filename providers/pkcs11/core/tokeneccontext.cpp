// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/tokeneccontext.h"

#include "qca/adapter/keys.h"

namespace Trivex {

namespace {

struct Curve {
    const char *name;
    const char *parameters; ///< DER object identifier (RFC 5480, 2.1.1.1)
    int size;
};

constexpr Curve Curves[] = {
    {"ec-secp256r1", "\x06\x08\x2a\x86\x48\xce\x3d\x03\x01\x07", 10},
    {"ec-secp384r1", "\x06\x05\x2b\x81\x04\x00\x22", 7},
    {"ec-secp521r1", "\x06\x05\x2b\x81\x04\x00\x23", 7},
};

/// Empty for a curve that is not known.
QByteArray parametersOf(const QString &name)
{
    for (const Curve &curve : Curves) {
        if (name == QLatin1String(curve.name))
            return QByteArray(curve.parameters, curve.size);
    }
    return {};
}

} // namespace

TokenEcContext::TokenEcContext(QCA::Provider *provider)
    : EcKeyContext(provider)
{
}

TokenEcContext::TokenEcContext(QCA::Provider *provider, const TokenKeyReference &reference)
    : EcKeyContext(provider)
{
    m_material = m_held.take(reference);
}

TokenEcContext::TokenEcContext(const TokenEcContext &other)
    : EcKeyContext(other)
    , m_held(other.m_held)
{
}

TokenEcContext::~TokenEcContext() = default;

QCA::Provider::Context *TokenEcContext::clone() const
{
    return new TokenEcContext(*this);
}

void TokenEcContext::generate(const GenerationRequest &request, bool block)
{
    m_material = m_held.take({});
    m_held.generate(request, block, [this, block](const TokenKeyReference &made) {
        m_material = m_held.take(made);
        if (!block)
            Q_EMIT finished();
    });
}

void TokenEcContext::createPrivate(const QString &curve, bool block)
{
    GenerationRequest request;
    request.type = CKK_EC;
    request.curve = parametersOf(curve);
    generate(request, block);
}

bool TokenEcContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    if (!isPrivate())
        return false;
    // A copy: this object may go while the token works, and nothing of it is touched afterwards.
    const TokenKeyReference reference = m_held.reference();
    // FIPS 186-4, 6.4: the leftmost bytes of a digest that is longer than the order.
    const bool isDigest = keyType() == EllipticCurveKey;
    const QByteArray input = isDigest ? block.left((bits() + 7) / 8) : block;
    return signOnToken(reference, input, signature);
}

} // namespace Trivex
