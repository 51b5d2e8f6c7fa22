// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/keystores/keystorefixture.h"

#include "qca/base/providers.h"
#include "tests/support/systemlist.h"

#include <QtTest>

namespace TrivexTest {

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

void KeyStoreFixture::prepare()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    Trivex::rankProviders();
    // The system's own list stays out of the rows.
    setSystemList();
    // Stock stores (gpg's keyring) would be locations of their own.
    const QCA::ProviderList providers = QCA::providers();
    for (QCA::Provider *provider : providers) {
        if (!provider->name().startsWith(text("qca-norvel")))
            QCA::unloadProvider(provider->name());
    }
    m_certificate = m_factory.selfSigned(QStringLiteral("/CN=Subject/O=Org"));
    m_bundle = m_factory.bundle(QStringLiteral("/CN=Keyed"));
    QVERIFY(!m_certificate.isNull());
    QVERIFY(!m_bundle.isNull());
}

void KeyStoreFixture::install()
{
    if (m_fake)
        return;
    m_fake = FakeProvider::install(text("qca-norvel-pkcs11"),
                                   {text("keystorelist"), text("pkey"), text("rsa")});
    QVERIFY(m_fake);
}

void KeyStoreFixture::configure()
{
    m_fake->setDefaultConfig({{text("formtype"), text("test")}, {text("x"), 1}});
}

void KeyStoreFixture::endQca()
{
    m_certificate = QCA::Certificate();
    m_bundle = QCA::KeyBundle();
    m_fake = nullptr; // QCA owns it
    m_qca.reset();
}

FakeEntry KeyStoreFixture::certificate(const char *id, const QCA::Certificate &value)
{
    return {QCA::KeyStoreEntry::TypeCertificate, text(id), text(id), value, {}};
}

FakeEntry KeyStoreFixture::keyed(const char *id)
{
    return {QCA::KeyStoreEntry::TypeKeyBundle, text(id), text(id), {}, m_bundle};
}

void KeyStoreFixture::addStore(const char *id, const char *name, const QList<FakeEntry> &entries,
                               QCA::KeyStore::Type type)
{
    stores().addStore({text(id), text(name), type, entries});
}

QStringList KeyStoreFixture::ids(const KeyStoreModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list << model.data(model.index(row, 0), KeyStoreModel::EntryIdRole).toString();
    return list;
}

} // namespace TrivexTest
