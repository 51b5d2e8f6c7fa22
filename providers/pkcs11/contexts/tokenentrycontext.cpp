// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contexts/tokenentrycontext.h"

#include "providers/pkcs11/contents/keyindex.h"
#include "providers/pkcs11/contexts/tokeneccontext.h"
#include "providers/pkcs11/contexts/tokenrsacontext.h"
#include "providers/pkcs11/operations/objecttemplates.h"
#include "qca/base/threadrecord.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/psskeys.h"
#include "qca/keys/publickeyfields.h"
#include "qca/x509/makecertificate.h"

#include <QUrl>

namespace Trivex {

namespace {

const QString SerialPrefix = QStringLiteral("trivex-token-entry-1");

enum SerialField {
    PrefixField,
    StoreIdField,
    StoreNameField,
    IdField,
    HasKeyField,
    LabelField,
    FirstCertificateField
};

QString packed(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString unpacked(const QString &text)
{
    return QUrl::fromPercentEncoding(text.toLatin1());
}

std::shared_ptr<TokenCertificate> certificateFrom(const QString &base64)
{
    auto certificate = std::make_shared<TokenCertificate>();
    certificate->der = QByteArray::fromBase64(base64.toLatin1());
    certificate->parts = certificateParts(certificate->der);
    return certificate->parts.isValid() ? certificate : nullptr;
}

std::shared_ptr<TokenKey> keyFrom(const TokenCertificate &certificate)
{
    auto key = std::make_shared<TokenKey>();
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    key->publicInfo = QByteArray(info.constData(), info.size());
    key->type = tokenTypeOf(key->publicInfo);
    key->id = keyIdentifierOf(key->publicInfo);
    return key;
}

QString nameOf(const TokenEntry &entry)
{
    const QString &label = entry.certificate->label;
    if (!label.isEmpty())
        return label;
    const QString commonName = commonNameOf(*entry.certificate);
    return commonName.isEmpty() ? entry.id.right(16) : commonName;
}

} // namespace

TokenEntryContext::TokenEntryContext(QCA::Provider *provider, TokenTable &tokens,
                                     TokenEntryPtr entry, const QString &storeId,
                                     const QString &storeName, const TokenContentsPtr &contents)
    : QCA::KeyStoreEntryContext(provider)
    , m_tokens(tokens)
    , m_entry(std::move(entry))
    , m_contents(contents)
    , m_storeId(storeId)
    , m_storeName(storeName)
{
    shareThreadRecord(this);
}

TokenEntryContext::TokenEntryContext(const TokenEntryContext &other)
    : TokenEntryContext(other.provider(), other.m_tokens, other.m_entry, other.m_storeId,
                        other.m_storeName, other.m_contents.lock())
{
}

TokenEntryContext::~TokenEntryContext() = default;

TokenEntryContext *TokenEntryContext::restore(QCA::Provider *provider, TokenTable &tokens,
                                              const QString &serialized)
{
    const QStringList fields = serialized.split(QLatin1Char(':'));
    if (fields.size() <= FirstCertificateField || fields.at(PrefixField) != SerialPrefix)
        return nullptr;
    const auto certificate = certificateFrom(fields.at(FirstCertificateField));
    if (!certificate)
        return nullptr;
    certificate->label = unpacked(fields.at(LabelField));
    auto entry = std::make_shared<TokenEntry>();
    entry->id = unpacked(fields.at(IdField));
    entry->certificate = certificate;
    if (fields.at(HasKeyField) == QLatin1String("1"))
        entry->key = keyFrom(*certificate);
    for (int i = FirstCertificateField + 1; i < fields.size(); ++i) {
        if (const auto issuer = certificateFrom(fields.at(i)))
            entry->issuers.push_back(issuer);
    }
    return new TokenEntryContext(provider, tokens, entry, unpacked(fields.at(StoreIdField)),
                                 unpacked(fields.at(StoreNameField)));
}

QCA::Provider::Context *TokenEntryContext::clone() const
{
    return new TokenEntryContext(*this);
}

QCA::KeyStoreEntry::Type TokenEntryContext::type() const
{
    return m_entry->key ? QCA::KeyStoreEntry::TypeKeyBundle : QCA::KeyStoreEntry::TypeCertificate;
}

TokenEntryPtr TokenEntryContext::current() const
{
    const auto store = m_tokens.store(m_storeId);
    // The search is nothing for each of thousands of entries that have just been listed.
    if (!store || store->contents == m_contents.lock())
        return m_entry;
    const TokenEntryPtr listed = store->contents->entry(m_entry->id);
    return listed ? listed : m_entry;
}

QString TokenEntryContext::name() const
{
    return nameOf(*current());
}

bool TokenEntryContext::isAvailable() const
{
    const auto store = m_tokens.store(m_storeId);
    return store && store->present && store->contents->entry(m_entry->id);
}

QString TokenEntryContext::serialize() const
{
    const TokenEntryPtr entry = current();
    const auto base64 = [](const TokenCertificate &certificate) {
        return QString::fromLatin1(certificate.der.toBase64());
    };
    QStringList fields = {SerialPrefix,
                          packed(m_storeId),
                          packed(m_storeName),
                          packed(entry->id),
                          entry->key ? QStringLiteral("1") : QStringLiteral("0"),
                          packed(entry->certificate->label),
                          base64(*entry->certificate)};
    for (const TokenCertificatePtr &issuer : entry->issuers)
        fields.append(base64(*issuer));
    return fields.join(QLatin1Char(':'));
}

QCA::PrivateKey TokenEntryContext::privateKey(const TokenKeyPtr &tokenKey) const
{
    QCA::PrivateKey key;
    if (QCA::PKeyBase *context = makeTokenKey(provider(), m_tokens, m_storeId, tokenKey))
        key.change(new PKeyContainer(provider(), context));
    return key;
}

QCA::KeyBundle TokenEntryContext::keyBundle() const
{
    QCA::KeyBundle bundle;
    const TokenEntryPtr entry = current();
    if (!entry->key)
        return bundle;
    const QCA::PrivateKey key = privateKey(entry->key);
    if (key.isNull())
        return bundle;
    QCA::CertificateChain chain;
    chain.append(makeCertificate(entry->certificate->der));
    for (const TokenCertificatePtr &issuer : entry->issuers)
        chain.append(makeCertificate(issuer->der));
    bundle.setCertificateChainAndKey(chain, key);
    bundle.setName(nameOf(*entry));
    return bundle;
}

QCA::Certificate TokenEntryContext::certificate() const
{
    return makeCertificate(m_entry->certificate->der);
}

bool TokenEntryContext::ensureAccess()
{
    // What is not listed may show itself after a login.
    const auto store = m_tokens.store(m_storeId);
    return store && store->present;
}

QCA::PKeyBase *makeTokenKey(QCA::Provider *provider, TokenTable &tokens, const QString &storeId,
                            const TokenKeyPtr &key)
{
    if (!key || key->publicInfo.isEmpty())
        return nullptr;
    std::unique_ptr<QCA::PKeyBase> context;
    if (key->type == CKK_RSA && !isPssKey(key->publicInfo))
        context =
            std::make_unique<TokenRsaContext>(provider, tokens, TokenKeyReference{storeId, key});
    else
        context =
            std::make_unique<TokenEcContext>(provider, tokens, TokenKeyReference{storeId, key});
    return context->isNull() ? nullptr : context.release();
}

} // namespace Trivex
