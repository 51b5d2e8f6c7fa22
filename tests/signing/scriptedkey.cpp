// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/signing/scriptedkey.h"

#include "qca/keys/extendedkey.h"

#include <utility>

namespace TrivexTest {

namespace {

/// The provider that the test's contexts claim to be from.
QCA::Provider *owner()
{
    return QCA::findProvider(QStringLiteral("qca-ossl"));
}

class ScriptedRsa : public QCA::RSAContext {
public:
    ScriptedRsa(const QCA::PrivateKey &inner, const BeforeSigning &before)
        : QCA::RSAContext(owner())
        , m_private(inner.toRSA())
        , m_public(inner.toPublicKey().toRSA())
        , m_before(before)
    {
    }

    Context *clone() const override { return new ScriptedRsa(*this); }
    bool isNull() const override { return false; }
    QCA::PKey::Type type() const override { return QCA::PKey::RSA; }
    bool isPrivate() const override { return m_isPrivate; }
    bool canExport() const override { return false; }
    void convertToPublic() override { m_isPrivate = false; }
    int bits() const override { return m_public.bitSize(); }

    void startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override
    {
        m_private.startSign(algorithm, format);
    }
    void startVerify(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override
    {
        m_public.startVerify(algorithm, format);
    }
    void update(const QCA::MemoryRegion &in) override
    {
        if (m_isPrivate)
            m_private.update(in);
        else
            m_public.update(in);
    }
    QByteArray endSign() override { return m_before() ? m_private.signature() : QByteArray(); }
    bool endVerify(const QByteArray &signature) override
    {
        return m_public.validSignature(signature);
    }

    void createPrivate(int, int, bool) override { }
    void createPrivate(const QCA::BigInteger &, const QCA::BigInteger &, const QCA::BigInteger &,
                       const QCA::BigInteger &, const QCA::BigInteger &) override
    {
    }
    void createPublic(const QCA::BigInteger &, const QCA::BigInteger &) override { }
    QCA::BigInteger n() const override { return m_public.n(); }
    QCA::BigInteger e() const override { return m_public.e(); }
    QCA::BigInteger p() const override { return {}; }
    QCA::BigInteger q() const override { return {}; }
    QCA::BigInteger d() const override { return {}; }

private:
    QCA::RSAPrivateKey m_private;
    QCA::RSAPublicKey m_public;
    BeforeSigning m_before;
    bool m_isPrivate = true;
};

class ForeignKey : public QCA::PKeyBase {
public:
    ForeignKey()
        : QCA::PKeyBase(owner(), QStringLiteral("ec"))
    {
    }
    Context *clone() const override { return new ForeignKey(*this); }
    bool isNull() const override { return false; }
    QCA::PKey::Type type() const override { return static_cast<QCA::PKey::Type>(3); }
    bool isPrivate() const override { return true; }
    bool canExport() const override { return false; }
    void convertToPublic() override { }
    int bits() const override { return 384; }
};

class KeyOnToken : public QCA::PKeyBase, public Trivex::ExtendedKey {
public:
    KeyOnToken(QString storeId, QByteArray publicInfo)
        : QCA::PKeyBase(owner(), QStringLiteral("rsa"))
        , m_storeId(std::move(storeId))
        , m_publicInfo(std::move(publicInfo))
    {
    }
    Context *clone() const override { return new KeyOnToken(*this); }
    bool isNull() const override { return false; }
    QCA::PKey::Type type() const override { return QCA::PKey::RSA; }
    bool isPrivate() const override { return true; }
    bool canExport() const override { return false; }
    void convertToPublic() override { }
    int bits() const override { return 2048; }
    int keyType() const override { return QCA::PKey::RSA; }
    QByteArray subjectPublicKeyInfo() const override { return m_publicInfo; }
    QString keyStoreId() const override { return m_storeId; }

private:
    QString m_storeId;
    QByteArray m_publicInfo;
};

class Container : public QCA::PKeyContext {
public:
    explicit Container(QCA::PKeyBase *key)
        : QCA::PKeyContext(owner())
        , m_key(key)
    {
    }
    Container(const Container &other)
        : QCA::PKeyContext(other)
        , m_key(static_cast<QCA::PKeyBase *>(other.m_key->clone()))
    {
    }

    Context *clone() const override { return new Container(*this); }
    QList<QCA::PKey::Type> supportedTypes() const override { return {QCA::PKey::RSA}; }
    QList<QCA::PKey::Type> supportedIOTypes() const override { return {}; }
    QList<QCA::PBEAlgorithm> supportedPBEAlgorithms() const override { return {}; }
    QCA::PKeyBase *key() override { return m_key.get(); }
    const QCA::PKeyBase *key() const override { return m_key.get(); }
    void setKey(QCA::PKeyBase *key) override { m_key.reset(key); }
    bool importKey(const QCA::PKeyBase *) override { return false; }

private:
    std::unique_ptr<QCA::PKeyBase> m_key;
};

class BundleEntry : public QCA::KeyStoreEntryContext {
public:
    explicit BundleEntry(const QCA::KeyBundle &bundle)
        : QCA::KeyStoreEntryContext(owner())
        , m_bundle(bundle)
    {
    }
    Context *clone() const override { return new BundleEntry(*this); }
    QCA::KeyStoreEntry::Type type() const override { return QCA::KeyStoreEntry::TypeKeyBundle; }
    QString id() const override { return QStringLiteral("entry"); }
    QString name() const override { return QStringLiteral("Entry"); }
    QString storeId() const override { return QStringLiteral("store"); }
    QString storeName() const override { return QStringLiteral("Store"); }
    QString serialize() const override { return {}; }
    QCA::KeyBundle keyBundle() const override { return m_bundle; }

private:
    QCA::KeyBundle m_bundle;
};

QCA::PrivateKey wrapped(QCA::PKeyBase *key)
{
    QCA::PrivateKey result;
    result.change(new Container(key));
    return result;
}

} // namespace

QCA::PrivateKey scriptedKey(const QCA::PrivateKey &inner, const BeforeSigning &before)
{
    return wrapped(new ScriptedRsa(inner, before));
}

QCA::PrivateKey foreignKey()
{
    return wrapped(new ForeignKey);
}

QCA::PrivateKey keyOnToken(const QString &storeId, const QByteArray &publicInfo)
{
    return wrapped(new KeyOnToken(storeId, publicInfo));
}

QCA::PrivateKey softwareKey()
{
    static const QCA::PrivateKey key =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    return key;
}

QCA::Certificate softwareCertificate(const QString &name)
{
    QCA::CertificateOptions options;
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, name);
    options.setInfo(info);
    options.setSerialNumber(QCA::BigInteger(7));
    options.setValidityPeriod(QDateTime::currentDateTimeUtc(),
                              QDateTime::currentDateTimeUtc().addDays(30));
    return QCA::Certificate(options, softwareKey(), QStringLiteral("qca-ossl"));
}

std::unique_ptr<KeyStoreEntry> bundleEntry(const QCA::PrivateKey &key,
                                           const QCA::CertificateChain &chain)
{
    QCA::KeyBundle bundle;
    bundle.setCertificateChainAndKey(chain, key);
    QCA::KeyStoreEntry entry;
    static_cast<QCA::Algorithm &>(entry).change(new BundleEntry(bundle));
    return std::make_unique<KeyStoreEntry>(entry);
}

} // namespace TrivexTest
