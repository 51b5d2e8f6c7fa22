// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificatewriter.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/keys/eckeycontext.h"
#include "qca/keys/keyoperation.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/publickeyfields.h"
#include "qca/x509/extensions.h"
#include "qca/x509/names.h"
#include "qca/x509/signaturealgorithms.h"

#include <algorithm>

namespace Trivex {

namespace {

QByteArray publicInfoOf(const QCA::PKeyBase *key)
{
    if (const auto *extended = dynamic_cast<const ExtendedKey *>(key))
        return extended->subjectPublicKeyInfo();
    return materialOf(key).publicInfo();
}

QByteArray attribute(const char *oid, const QByteArray &value)
{
    return Der::writeSequence({Der::writeOid(oid), Der::write(Der::Set, value)});
}

QByteArray requestAttributes(const QCA::CertificateOptions &options)
{
    QList<QByteArray> attributes;
    const QByteArray extensions = encodeExtensions(options, {});
    if (!options.challenge().isEmpty())
        attributes += attribute(Oid::ChallengePassword,
                                Der::write(Der::Utf8String, options.challenge().toUtf8()));
    if (!extensions.isEmpty())
        attributes += attribute(Oid::ExtensionRequest, extensions);
    // The order that DER demands of a SET OF (X.690, 11.6).
    std::sort(attributes.begin(), attributes.end());
    return Der::write(Der::context(0), attributes.join());
}

QByteArray validity(const QCA::CertificateOptions &options)
{
    return Der::writeSequence(
        {Der::writeTime(options.notValidBefore()), Der::writeTime(options.notValidAfter())});
}

} // namespace

SigningKey::SigningKey(const QCA::PKeyContext &key)
    : m_key(key.key() ? static_cast<QCA::PKeyBase *>(key.key()->clone()) : nullptr)
{
    if (!m_key || m_key->isNull() || !m_key->isPrivate())
        return;
    const auto *extended = dynamic_cast<const ExtendedKey *>(m_key);
    const int keyType = extended ? extended->keyType() : int(m_key->type());
    const QByteArray publicInfo = publicInfoOf(m_key);
    const SignatureScheme scheme = signatureSchemeFor(keyType, m_key->bits(), publicInfo);
    if (scheme.algorithm.isEmpty())
        return;
    m_publicInfo = publicInfo;
    m_algorithm = scheme.algorithm;
    m_digest = scheme.digest;
}

SigningKey::~SigningKey()
{
    delete m_key;
}

bool SigningKey::sign(const QByteArray &body, QByteArray *signature)
{
    if (auto *signer = dynamic_cast<RequestSigner *>(m_key))
        return signer->signMessage(body, m_digest, signature);
    // A foreign key signs with its numbers if it shows them, else by the equivalent operation of
    // QCA.
    QCA::PKeyBase *copy = makeKeyContext(materialOf(m_key), m_key->provider());
    const PKeyContainer owner(m_key->provider(), copy);
    if (auto *signer = dynamic_cast<RequestSigner *>(copy))
        return signer->signMessage(body, m_digest, signature);
    if (m_key->type() != QCA::PKey::RSA)
        return false;
    m_key->startSign(QCA::EMSA3_SHA256, QCA::DefaultFormat);
    m_key->update(QCA::MemoryRegion(body));
    *signature = m_key->endSign();
    return !signature->isEmpty();
}

bool SigningKey::verify(const QByteArray &body, const QByteArray &signature) const
{
    KeyMaterial material = publicMaterialOf(m_key);
    if (material.publicInfo() != m_publicInfo)
        material = KeyMaterial::fromPublicInfo(m_publicInfo);
    if (!material.native())
        return !material.isNull(); // an algorithm that only the token knows
    const DigestContextHandle context(EVP_MD_CTX_new());
    const EVP_MD *digest =
        m_digest.isEmpty() ? nullptr : EVP_get_digestbyname(m_digest.constData());
    return context
        && EVP_DigestVerifyInit(context.get(), nullptr, digest, nullptr, material.native()) == 1
        && EVP_DigestVerify(
               context.get(), reinterpret_cast<const unsigned char *>(signature.constData()),
               size_t(signature.size()), reinterpret_cast<const unsigned char *>(body.constData()),
               size_t(body.size()))
        == 1;
}

QByteArray SigningKey::seal(const QByteArray &body)
{
    QByteArray signature;
    if (m_algorithm.isEmpty() || !sign(body, &signature) || !verify(body, signature))
        return {};
    return Der::writeSequence({body, m_algorithm, Der::writeBits(signature)});
}

QByteArray writeRequest(const QCA::CertificateOptions &options, const QCA::PKeyContext &key)
{
    SigningKey signer(key);
    if (signer.publicInfo().isEmpty())
        return {};
    return signer.seal(Der::writeSequence({Der::writeInteger(QCA::BigInteger(0)),
                                           encodeName(options.infoOrdered()), signer.publicInfo(),
                                           requestAttributes(options)}));
}

QByteArray writeSpkac(const QCA::CertificateOptions &options, const QCA::PKeyContext &key)
{
    SigningKey signer(key);
    if (signer.publicInfo().isEmpty())
        return {};
    const QByteArray challenge = Der::write(Der::Ia5String, options.challenge().toLatin1());
    return signer.seal(Der::writeSequence({signer.publicInfo(), challenge})).toBase64();
}

QByteArray writeSelfSigned(const QCA::CertificateOptions &options, const QCA::PKeyContext &key)
{
    SigningKey signer(key);
    if (signer.publicInfo().isEmpty() || !options.notValidBefore().isValid()
        || !options.notValidAfter().isValid())
        return {};
    const QByteArray name = encodeName(options.infoOrdered());
    const QByteArray extensions = encodeExtensions(options, keyIdentifierOf(signer.publicInfo()));
    const QByteArray version = Der::write(Der::context(0), Der::writeInteger(QCA::BigInteger(2)));
    return signer.seal(Der::writeSequence(
        {version, Der::writeInteger(options.serialNumber()), signer.algorithm(), name,
         validity(options), name, signer.publicInfo(), Der::write(Der::context(3), extensions)}));
}

} // namespace Trivex
