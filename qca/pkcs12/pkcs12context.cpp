// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/pkcs12context.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/x509/certificatecontext.h"

namespace Trivex {

namespace {

X509Handle nativeOf(const QCA::CertContext *context)
{
    const auto data = CertificateData::fromDer(context->toDER());
    return data ? data->native() : nullptr;
}

// All but the first.
CertificateStack issuersOf(const QList<const QCA::CertContext *> &chain)
{
    CertificateStack stack(sk_X509_new_null());
    for (int i = 1; i < chain.size(); ++i) {
        X509Handle certificate = nativeOf(chain.at(i));
        if (stack && certificate && sk_X509_push(stack.get(), certificate.get()) > 0)
            static_cast<void>(certificate.release());
    }
    return stack;
}

/// With question marks for characters beyond 16 bits, such as an emoji: libcrypto refuses them.
QByteArray writableName(const QString &name)
{
    QString text;
    for (const uint character : name.toUcs4())
        text += character > 0xFFFF ? QChar(u'?') : QChar(ushort(character));
    return text.toUtf8();
}

} // namespace

void makeContexts(Bundle bundle, QCA::Provider *provider, QList<QCA::CertContext *> *chain,
                  QCA::PKeyContext **key)
{
    *key = new PKeyContainer(softwareKeyProvider(provider), provider,
                             makeKeyContext(std::move(bundle.key), provider));
    for (const QByteArray &der : qAsConst(bundle.chain)) {
        auto certificate = std::make_unique<CertificateContext>(provider);
        // After a gap the certificates would not belong to the chain.
        if (certificate->fromDER(der) != QCA::ConvertGood)
            break;
        chain->append(certificate.release());
    }
}

Pkcs12Context::Pkcs12Context(QCA::Provider *provider)
    : QCA::PKCS12Context(provider)
{
}

QCA::Provider::Context *Pkcs12Context::clone() const
{
    return new Pkcs12Context(provider());
}

QByteArray Pkcs12Context::toPKCS12(const QString &name,
                                   const QList<const QCA::CertContext *> &chain,
                                   const QCA::PKeyContext &priv,
                                   const QCA::SecureArray &passphrase) const
{
    const KeyMaterial key = materialOf(priv.key());
    if (chain.isEmpty() || !key.isPrivate() || !key.native())
        return {};
    const X509Handle certificate = nativeOf(chain.first());
    const CertificateStack issuers = issuersOf(chain);
    // An empty password must not be written as "no password": everybody could read the key.
    const char *password = passphrase.isEmpty() ? "" : passphrase.constData();
    const Pkcs12Handle bundle(PKCS12_create(password, writableName(name).constData(), key.native(),
                                            certificate.get(), issuers.get(), 0, 0, 0, 0, 0));
    return encodeNative(bundle.get(), i2d_PKCS12);
}

QCA::ConvertResult Pkcs12Context::fromPKCS12(const QByteArray &in,
                                             const QCA::SecureArray &passphrase, QString *name,
                                             QList<QCA::CertContext *> *chain,
                                             QCA::PKeyContext **priv) const
{
    Bundle bundle;
    const QCA::ConvertResult result = readBundle(in, Secret(passphrase), &bundle);
    if (result != QCA::ConvertGood)
        return result;
    *name = bundle.name;
    makeContexts(std::move(bundle), provider(), chain, priv);
    return QCA::ConvertGood;
}

} // namespace Trivex
