// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/dsakeycontext.h"

#include "qca/keys/bignumbers.h"
#include "qca/keys/discretelog.h"
#include "qca/keys/nativeoperations.h"

#include "qca/keys/keytypes.h"

#include <QThread>

#include <openssl/core_names.h>

namespace Trivex {

namespace {

KeyMaterial onlyDsa(KeyMaterial material)
{
    return material.keyType() == DsaKey ? std::move(material) : KeyMaterial();
}

} // namespace

DsaKeyContext::DsaKeyContext(QCA::Provider *provider, KeyMaterial material)
    : KeyBase(provider, onlyDsa(std::move(material)))
{
}

DsaKeyContext::DsaKeyContext(const DsaKeyContext &other)
    : KeyBase(other)
    , ExtendedKey(other)
    , RequestSigner(other)
{
}

DsaKeyContext::~DsaKeyContext() = default;

QCA::Provider::Context *DsaKeyContext::clone() const
{
    return new DsaKeyContext(*this);
}

int DsaKeyContext::keyType() const
{
    return isNull() ? int(UnknownKey) : int(DsaKey);
}

void DsaKeyContext::createPrivate(const QCA::DLGroup &domain, bool block)
{
    m_material = KeyMaterial::fromNative(generateDiscreteLogKey("DSA", domain), true);
    if (block)
        return;
    // QCA's contexts belong to no thread at first, and get no events there.
    if (!thread())
        moveToThread(QThread::currentThread());
    QMetaObject::invokeMethod(this, &DsaKeyContext::finished, Qt::QueuedConnection);
}

void DsaKeyContext::createPrivate(const QCA::DLGroup &domain, const QCA::BigInteger &y,
                                  const QCA::BigInteger &x)
{
    m_material = KeyMaterial::fromNative(discreteLogKey("DSA", domain, &y, &x), true);
}

void DsaKeyContext::createPublic(const QCA::DLGroup &domain, const QCA::BigInteger &y)
{
    m_material = KeyMaterial::fromNative(discreteLogKey("DSA", domain, &y, nullptr), false);
}

QCA::DLGroup DsaKeyContext::domain() const
{
    return discreteLogDomain(m_material.native());
}

QCA::BigInteger DsaKeyContext::y() const
{
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_PUB_KEY);
}

QCA::BigInteger DsaKeyContext::x() const
{
    return isPrivate() ? keyNumber(m_material.native(), OSSL_PKEY_PARAM_PRIV_KEY)
                       : QCA::BigInteger(0);
}

int DsaKeyContext::orderBits() const
{
    // Whole octets; two's complement may bring one more, and orders are a multiple of 32 bits.
    return keyNumber(m_material.native(), OSSL_PKEY_PARAM_FFC_Q).toArray().size() * 8 / 32 * 32;
}

void DsaKeyContext::startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format)
{
    start(KeyOperation::Signing, algorithm, format);
}

void DsaKeyContext::startVerify(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format)
{
    start(KeyOperation::Verifying, algorithm, format);
}

void DsaKeyContext::start(KeyOperation::Mode mode, QCA::SignatureAlgorithm algorithm,
                          QCA::SignatureFormat format)
{
    const QByteArray digest = digestOf(int(algorithm));
    m_operation.start(mode, digest, format);
    if (digest.isEmpty() && algorithm != QCA::EMSA3_Raw)
        m_operation.fail();
}

QByteArray DsaKeyContext::endSign()
{
    QByteArray block;
    QByteArray signature;
    if (!isPrivate() || !m_operation.finish(KeyOperation::Signing, &block)
        || !signBlock(block, &signature))
        return {};
    return m_operation.format() == QCA::DERSequence ? signature
                                                    : sideBySide(signature, orderBits());
}

bool DsaKeyContext::endVerify(const QByteArray &signature)
{
    QByteArray block;
    return m_operation.finish(KeyOperation::Verifying, &block)
        && verifyNative(m_material.native(), block,
                        m_operation.format() == QCA::DERSequence ? signature
                                                                 : derSignature(signature));
}

bool DsaKeyContext::signMessage(const QByteArray &message, const QByteArray &digestName,
                                QByteArray *signature)
{
    const QByteArray digest = digestOfMessage(digestName, message);
    return isPrivate() && !digest.isEmpty() && signBlock(digest, signature);
}

bool DsaKeyContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    return m_material.isPrivate() && signNative(m_material.native(), block, signature);
}

} // namespace Trivex
