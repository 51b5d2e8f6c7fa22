// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/eckeycontext.h"

#include "qca/keys/keymaker.h"
#include "qca/keys/nativeoperations.h"

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
    : KeyBase(provider, std::move(material))
{
    show();
}

EcKeyContext::EcKeyContext(const EcKeyContext &other)
    : KeyBase(other)
    , RequestSigner(other)
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
    if (block) {
        m_maker->run();
        takeGenerated();
        return;
    }
    // QCA's contexts belong to no thread at first, and get no events there.
    if (!thread())
        moveToThread(QThread::currentThread());
    connect(m_maker.get(), &QThread::finished, this, [this] {
        takeGenerated();
        Q_EMIT finished();
    });
    m_maker->start();
}

void EcKeyContext::takeGenerated()
{
    m_material = KeyMaterial::fromNative(m_maker->take(), true);
    show();
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

void EcKeyContext::startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format)
{
    start(KeyOperation::Signing, algorithm, format);
}

void EcKeyContext::startVerify(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format)
{
    start(KeyOperation::Verifying, algorithm, format);
}

void EcKeyContext::start(KeyOperation::Mode mode, QCA::SignatureAlgorithm algorithm,
                         QCA::SignatureFormat format)
{
    const QByteArray digest = takesMessage() ? QByteArray() : digestOf(int(algorithm));
    m_operation.start(mode, digest, format);
    if (digest.isEmpty() && algorithm != QCA::EMSA3_Raw && !takesMessage())
        m_operation.fail();
}

QByteArray EcKeyContext::endSign()
{
    QByteArray block;
    QByteArray signature;
    if (!isPrivate() || !m_operation.finish(KeyOperation::Signing, &block)
        || !signBlock(block, &signature))
        return {};
    if (keyType() == EllipticCurveKey && m_operation.format() == QCA::IEEE_1363)
        return sideBySide(signature, bits());
    return signature;
}

bool EcKeyContext::endVerify(const QByteArray &signature)
{
    QByteArray block;
    if (!m_operation.finish(KeyOperation::Verifying, &block))
        return false;
    if (takesMessage())
        return verifyMessageNative(m_material.native(), block, signature);
    const bool converted = keyType() == EllipticCurveKey && m_operation.format() == QCA::IEEE_1363;
    return verifyNative(m_material.native(), block,
                        converted ? derSignature(signature) : signature);
}

bool EcKeyContext::signMessage(const QByteArray &message, const QByteArray &digestName,
                               QByteArray *signature)
{
    if (!isPrivate())
        return false;
    if (takesMessage())
        return signBlock(message, signature);
    const QByteArray digest = digestOfMessage(digestName, message);
    return !digest.isEmpty() && signBlock(digest, signature);
}

bool EcKeyContext::signBlock(const QByteArray &block, QByteArray *signature)
{
    if (!m_material.isPrivate())
        return false;
    return takesMessage() ? signMessageNative(m_material.native(), block, signature)
                          : signNative(m_material.native(), block, signature);
}

} // namespace Trivex
