// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/pkeycontainer.h"

#include "qca/asn1/pem.h"
#include "qca/keys/dhkeycontext.h"
#include "qca/keys/dsakeycontext.h"
#include "qca/keys/eckeycontext.h"
#include "qca/keys/privatekeyreader.h"
#include "qca/keys/rsakeycontext.h"

#include "qca/keys/keytypes.h"

namespace Trivex {

namespace {

// The type of `ECContext`; see there.
constexpr auto EcType = static_cast<QCA::PKey::Type>(EllipticCurveKey);

QList<QCA::PKey::Type> allTypes()
{
    return {QCA::PKey::RSA, QCA::PKey::DSA, QCA::PKey::DH, EcType};
}

QByteArray publicInfoOf(const QCA::PKeyBase *key)
{
    const auto *extended = dynamic_cast<const ExtendedKey *>(key);
    return extended ? extended->subjectPublicKeyInfo() : materialOf(key).publicInfo();
}

template <class Context> const KeyMaterial *ownMaterial(const QCA::PKeyBase *key)
{
    const auto *context = dynamic_cast<const Context *>(key);
    return context ? &context->material() : nullptr;
}

const KeyMaterial *ownMaterial(const QCA::PKeyBase *key)
{
    if (const KeyMaterial *material = ownMaterial<RsaKeyContext>(key))
        return material;
    if (const KeyMaterial *material = ownMaterial<EcKeyContext>(key))
        return material;
    if (const KeyMaterial *material = ownMaterial<DsaKeyContext>(key))
        return material;
    return ownMaterial<DhKeyContext>(key);
}

KeyMaterial foreignRsa(const QCA::RSAContext &key)
{
    RsaKeyContext copy(key.provider());
    if (key.isPrivate())
        copy.createPrivate(key.n(), key.e(), key.p(), key.q(), key.d());
    else
        copy.createPublic(key.n(), key.e());
    return copy.material();
}

template <class Copy, class Foreign> KeyMaterial foreignDiscreteLog(const Foreign &key)
{
    Copy copy(key.provider());
    if (key.isPrivate())
        copy.createPrivate(key.domain(), key.y(), key.x());
    else
        copy.createPublic(key.domain(), key.y());
    return copy.material();
}

} // namespace

KeyMaterial materialOf(const QCA::PKeyBase *key)
{
    if (!key || key->isNull())
        return {};
    if (const KeyMaterial *material = ownMaterial(key))
        return key->isPrivate() == material->isPrivate() ? *material : KeyMaterial();
    if (key->isPrivate() && !key->canExport())
        return {};
    // QCA's own interfaces carry the numbers of these three; nothing else does.
    if (const auto *rsa = dynamic_cast<const QCA::RSAContext *>(key))
        return foreignRsa(*rsa);
    if (const auto *dsa = dynamic_cast<const QCA::DSAContext *>(key))
        return foreignDiscreteLog<DsaKeyContext>(*dsa);
    if (const auto *dh = dynamic_cast<const QCA::DHContext *>(key))
        return foreignDiscreteLog<DhKeyContext>(*dh);
    return {};
}

KeyMaterial publicMaterialOf(const QCA::PKeyBase *key)
{
    if (!key || key->isNull())
        return {};
    const KeyMaterial *material = ownMaterial(key);
    return material && !material->isPrivate() ? *material
                                              : KeyMaterial::fromPublicInfo(publicInfoOf(key));
}

QCA::Provider *softwareKeyProvider(QCA::Provider *own)
{
    QCA::Provider *stock = QCA::findProvider(QStringLiteral("qca-ossl"));
    return stock ? stock : own;
}

QCA::PKeyBase *makeKeyContext(KeyMaterial material, QCA::Provider *provider)
{
    switch (material.keyType()) {
    case UnknownKey:
        return nullptr;
    case RsaKey:
        return new RsaKeyContext(provider, std::move(material));
    case DsaKey:
        return new DsaKeyContext(provider, std::move(material));
    case DhKey:
        return new DhKeyContext(provider, std::move(material));
    default:
        return new EcKeyContext(provider, std::move(material));
    }
}

QCA::PKeyBase *makePublicKeyContext(const QByteArray &spki, QCA::Provider *provider)
{
    return makeKeyContext(KeyMaterial::fromPublicInfo(spki), provider);
}

PKeyContainer::PKeyContainer(QCA::Provider *provider, QCA::PKeyBase *key)
    : PKeyContainer(provider, provider, key)
{
}

PKeyContainer::PKeyContainer(QCA::Provider *provider, QCA::Provider *keyProvider,
                             QCA::PKeyBase *key)
    : QCA::PKeyContext(provider)
    , m_key(key)
    , m_keyProvider(keyProvider)
{
}

PKeyContainer::PKeyContainer(const PKeyContainer &other)
    : QCA::PKeyContext(other.provider())
    , m_key(other.m_key ? static_cast<QCA::PKeyBase *>(other.m_key->clone()) : nullptr)
    , m_keyProvider(other.m_keyProvider)
{
}

PKeyContainer::~PKeyContainer()
{
    delete m_key;
}

QCA::Provider::Context *PKeyContainer::clone() const
{
    return new PKeyContainer(*this);
}

QList<QCA::PKey::Type> PKeyContainer::supportedTypes() const
{
    return allTypes();
}

QList<QCA::PKey::Type> PKeyContainer::supportedIOTypes() const
{
    return allTypes();
}

QList<QCA::PBEAlgorithm> PKeyContainer::supportedPBEAlgorithms() const
{
    return {QCA::PBES2_DES_SHA1, QCA::PBES2_TripleDES_SHA1, QCA::PBES2_AES128_SHA1,
            QCA::PBES2_AES192_SHA1, QCA::PBES2_AES256_SHA1};
}

void PKeyContainer::setKey(QCA::PKeyBase *key)
{
    if (key == m_key)
        return;
    delete m_key;
    m_key = key;
}

bool PKeyContainer::importKey(const QCA::PKeyBase *key)
{
    return adopt(materialOf(key)) == QCA::ConvertGood;
}

QCA::ConvertResult PKeyContainer::adopt(KeyMaterial material)
{
    QCA::PKeyBase *key = makeKeyContext(std::move(material), m_keyProvider);
    if (!key || key->isNull()) {
        delete key;
        return QCA::ErrorDecode;
    }
    setKey(key);
    return QCA::ConvertGood;
}

QByteArray PKeyContainer::publicToDER() const
{
    return m_key ? publicInfoOf(m_key) : QByteArray();
}

QString PKeyContainer::publicToPEM() const
{
    const QByteArray der = publicToDER();
    return der.isEmpty() ? QString() : QString::fromLatin1(writePem("PUBLIC KEY", der));
}

QCA::ConvertResult PKeyContainer::publicFromDER(const QByteArray &der)
{
    return adopt(KeyMaterial::fromPublicInfo(der));
}

QCA::ConvertResult PKeyContainer::publicFromPEM(const QString &pem)
{
    return publicFromDER(readPem(pem, {"PUBLIC KEY"}));
}

QCA::SecureArray PKeyContainer::privateToDER(const QCA::SecureArray &passphrase,
                                             QCA::PBEAlgorithm pbe) const
{
    if (!m_key || !m_key->isPrivate() || !m_key->canExport())
        return {};
    const QCA::SecureArray plain = materialOf(m_key).privateInfo().toSecureArray();
    return passphrase.isEmpty() || plain.isEmpty() ? plain
                                                   : encryptPrivateKey(plain, passphrase, pbe);
}

QString PKeyContainer::privateToPEM(const QCA::SecureArray &passphrase, QCA::PBEAlgorithm pbe) const
{
    const QCA::SecureArray der = privateToDER(passphrase, pbe);
    if (der.isEmpty())
        return {};
    const QByteArray label = passphrase.isEmpty() ? "PRIVATE KEY" : "ENCRYPTED PRIVATE KEY";
    return QString::fromLatin1(writePem(label, der.toByteArray()));
}

QCA::ConvertResult PKeyContainer::privateFromDER(const QCA::SecureArray &der,
                                                 const QCA::SecureArray &passphrase)
{
    KeyMaterial material;
    const QCA::ConvertResult result = readPrivateKey(der, passphrase, &material);
    return result == QCA::ConvertGood ? adopt(std::move(material)) : result;
}

QCA::ConvertResult PKeyContainer::privateFromPEM(const QString &pem,
                                                 const QCA::SecureArray &passphrase)
{
    KeyMaterial material;
    const QCA::ConvertResult result = readPrivateKeyPem(pem, passphrase, &material);
    return result == QCA::ConvertGood ? adopt(std::move(material)) : result;
}

} // namespace Trivex
