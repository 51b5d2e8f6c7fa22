// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/tokeneccontext.h"

#include "providers/pkcs11/contents/gostkeys.h"
#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/keys/keyoperation.h"
#include "qca/keys/keys.h"

#include <openssl/evp.h>

#include <utility>

namespace Trivex {

namespace {

struct Curve {
    const char *name;
    CK_KEY_TYPE type;
    const char *oid; ///< RFC 5480, 2.1.1.1; RFC 8410, 3
    const char *otherName; ///< PKCS#11 3.0, 2.3.5; null: none
};

constexpr Curve Curves[] = {
    {"ec-secp256r1", CKK_EC, Oid::Prime256v1, nullptr},
    {"ec-secp384r1", CKK_EC, Oid::Secp384r1, nullptr},
    {"ec-secp521r1", CKK_EC, Oid::Secp521r1, nullptr},
    {"ed25519", CKK_EC_EDWARDS, Oid::Ed25519, "edwards25519"},
};

/// Without a curve for a name that is not known.
GenerationRequest requestFor(const QString &name)
{
    GenerationRequest request;
    for (const Curve &curve : Curves) {
        if (name != QLatin1String(curve.name))
            continue;
        request.type = curve.type;
        request.curve = Der::writeOid(curve.oid);
        if (curve.otherName)
            request.otherCurve = Der::write(Der::PrintableString, curve.otherName);
        return request;
    }
    const GostParameters gost = gostParametersByName(name);
    request.type = gost.tokenType;
    request.curve = gost.curve;
    request.digest = gost.digest;
    return request;
}

/// The longest message that is kept for a token that accepts no digest, in bytes.
constexpr int LongestMessage = 1024 * 1024;

bool canDigest(const QByteArray &digestName)
{
    return EVP_get_digestbyname(digestName.constData()) != nullptr;
}

} // namespace

TokenEcContext::TokenEcContext(QCA::Provider *provider, TokenTable &tokens,
                               const TokenKeyReference &reference)
    : TokenKeyContext(provider, tokens, reference)
{
}

TokenEcContext::TokenEcContext(const TokenEcContext &other)
    : TokenKeyContext(other)
    , m_signsGost(other.m_signsGost)
    , m_message(other.m_message)
{
}

TokenEcContext::~TokenEcContext() = default;

QCA::Provider::Context *TokenEcContext::clone() const
{
    return new TokenEcContext(*this);
}

void TokenEcContext::createPrivate(const QString &curve, bool block)
{
    generate(requestFor(curve), block);
}

void TokenEcContext::startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format)
{
    const GostMechanisms *mechanisms = gostMechanisms(m_material.publicInfo());
    const QByteArray digest = digestOf(int(algorithm));
    m_signsGost = mechanisms && digest == mechanisms->digestName;
    m_message = QByteArray();
    if (m_signsGost)
        m_operation.start(KeyOperation::Signing, canDigest(digest) ? digest : QByteArray(), format);
    else
        EcKeyContext::startSign(algorithm, format);
}

void TokenEcContext::update(const QCA::MemoryRegion &data)
{
    EcKeyContext::update(data);
    if (!m_signsGost || m_operation.digestName().isEmpty() || !m_message)
        return;
    if (m_message->size() + data.size() > LongestMessage)
        m_message.reset();
    else
        m_message->append(data.constData(), data.size());
}

QByteArray TokenEcContext::endSign()
{
    if (!std::exchange(m_signsGost, false))
        return EcKeyContext::endSign();
    QByteArray digest;
    std::optional<QByteArray> message = std::exchange(m_message, std::nullopt);
    if (!isPrivate() || !m_operation.finish(KeyOperation::Signing, &digest))
        return {};
    if (m_operation.digestName().isEmpty())
        message = std::exchange(digest, QByteArray());
    // No member is used after the call, because this object may be destroyed while the token works.
    QByteArray signature;
    signMessageOnToken(tokens(), reference(), message, digest, &signature);
    return signature;
}

bool TokenEcContext::signMessage(const QByteArray &message, const QByteArray &digestName,
                                 QByteArray *signature)
{
    const GostMechanisms *mechanisms = gostMechanisms(m_material.publicInfo());
    if (!mechanisms || digestName != mechanisms->digestName)
        return EcKeyContext::signMessage(message, digestName, signature);
    return isPrivate()
        && signMessageOnToken(tokens(), reference(), message, digestOfMessage(digestName, message),
                              signature);
}

bool TokenEcContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    if (!isPrivate())
        return false;
    // FIPS 186-4, 6.4: the leftmost bytes of a digest that is longer than the order.
    const bool isDigest = keyType() == EllipticCurveKey;
    const QByteArray input = isDigest ? block.left((bits() + 7) / 8) : block;
    return signOnToken(tokens(), reference(), bits(), input, signature);
}

} // namespace Trivex
