// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/documentkey.h"

#include "qca/keys/digests.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/requestsigner.h"

#include <memory>

namespace Trivex {

namespace {

struct ForeignAlgorithm {
    const char *digest;
    QCA::SignatureAlgorithm algorithm;
};

/// How QCA calls the signatures of RSA keys.
constexpr ForeignAlgorithm ForeignAlgorithms[] = {
    {Sha256Digest.name, QCA::EMSA3_SHA256},
    {Sha384Digest.name, QCA::EMSA3_SHA384},
    {Sha512Digest.name, QCA::EMSA3_SHA512},
};

bool signWith(QCA::PKeyBase *key, const CmsScheme &scheme, const QByteArray &message,
              QByteArray *signature)
{
    auto *signer = dynamic_cast<RequestSigner *>(key);
    return signer && signer->signMessage(message, scheme.keyDigest, signature);
}

/// By its numbers if it shows them, else by the equivalent operation of QCA.
QByteArray signByForeignKey(QCA::PrivateKey key, QCA::PKeyBase *context, const CmsScheme &scheme,
                            const QByteArray &message)
{
    QByteArray signature;
    const std::unique_ptr<QCA::PKeyBase> copy(
        makeKeyContext(materialOf(context), context->provider()));
    if (signWith(copy.get(), scheme, message, &signature))
        return signature;
    if (context->type() != QCA::PKey::RSA)
        return {};
    for (const ForeignAlgorithm &one : ForeignAlgorithms) {
        if (scheme.keyDigest == one.digest)
            return key.signMessage(message, one.algorithm, QCA::DefaultFormat);
    }
    return {};
}

} // namespace

QByteArray signForMessage(QCA::PrivateKey key, const CmsScheme &scheme, const QByteArray &message)
{
    const auto *container = dynamic_cast<const QCA::PKeyContext *>(key.context());
    const QCA::PKeyBase *held = container ? container->key() : nullptr;
    if (!held || held->isNull() || !held->isPrivate() || !scheme.isValid())
        return {};
    // The caller may let go of its key while a token works.
    const std::unique_ptr<QCA::PKeyBase> own(static_cast<QCA::PKeyBase *>(held->clone()));
    QByteArray signature;
    if (dynamic_cast<RequestSigner *>(own.get()))
        signWith(own.get(), scheme, message, &signature);
    else
        signature = signByForeignKey(std::move(key), own.get(), scheme, message);
    return signature;
}

QList<QByteArray> signingChain(const QCA::KeyBundle &bundle)
{
    QList<QByteArray> chain;
    if (bundle.isNull())
        return chain;
    const QCA::CertificateChain certificates = bundle.certificateChain();
    for (const QCA::Certificate &certificate : certificates)
        chain += certificate.toDER();
    return chain;
}

} // namespace Trivex
