// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Certificates with the keys that stock QCA does not know, in stock QCA's own stores: the rows show
// what our reader shows of the same files, whoever decoded them.
#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/base/providers.h"
#include "qca/keys/gostengine.h"
#include "qca/keys/keys.h"
#include "tests/support/systemlist.h"
#include "tests/x509/corpus.h"
#include "tests/x509/oddkeys.h"
#include "tests/x509/propertycomparison.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QString Stock = QStringLiteral("qca-ossl");
const QString Systems = QStringLiteral("qca-default-systemstore");
const QString Softwares = QStringLiteral("qca-softstore");

/// Those that the stock provider survives; their names say what keys they have.
QStringList certificateFiles()
{
    QStringList files = {QStringLiteral("rsa-pss.der"),     QStringLiteral("ed25519.der"),
                         QStringLiteral("dsa.der"),         QStringLiteral("ec-384.der"),
                         QStringLiteral("key-unknown.der"), QStringLiteral("identifiers.der")};
    if (Corpus::hasGost())
        files += {QStringLiteral("gost-2001.der"), QStringLiteral("gost-2012-256.der"),
                  QStringLiteral("gost-2012-512.der")};
    return files;
}

QList<QCA::KeyStoreEntry> entriesOf(const QString &storeId)
{
    QCA::KeyStoreManager manager;
    QCA::KeyStoreManager::start();
    manager.waitForBusyFinished();
    QCA::KeyStore store(storeId, &manager);
    return store.isValid() ? store.entryList() : QList<QCA::KeyStoreEntry>();
}

} // namespace

class TestStockStores : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void certificates_data();
    void certificates();
    void bundles_data() { certificates_data(); }
    void bundles();

private:
    /// Of all entries of the store, by the certificates' bytes.
    void compare(const QString &storeId, const QStringList &files, bool areKeyed);
    void rank(bool isStockFirst);

    QCA::Initializer m_initializer;
    QTemporaryDir m_directory;
    QHash<QByteArray, QVariantMap> m_expected;
    QStringList m_files;
};

void TestStockStores::initTestCase()
{
    if (!QCA::isSupported("cert", Stock))
        QSKIP("no stock provider");
    m_files = certificateFiles();
    for (const QString &file : qAsConst(m_files)) {
        const QCA::Certificate certificate = Corpus::certificate(file);
        QCOMPARE(certificate.provider()->name(), opensslProviderName());
        m_expected.insert(certificate.toDER(), propertiesOf(certificate));
    }
}

void TestStockStores::cleanup()
{
    setSystemList();
    rank(false);
}

void TestStockStores::rank(bool isStockFirst)
{
    QCA::setProviderPriority(Stock, isStockFirst ? 0 : 10);
    QCA::setProviderPriority(opensslProviderName(), isStockFirst ? 10 : 0);
}

void TestStockStores::certificates_data()
{
    QTest::addColumn<bool>("isStockFirst");
    QTest::newRow("decoded by ours") << false;
    QTest::newRow("decoded by stock") << true;
}

void TestStockStores::compare(const QString &storeId, const QStringList &files, bool areKeyed)
{
    QFETCH(bool, isStockFirst);
    // A store takes a new configuration over in a thread of QCA's, at some time.
    QList<QCA::KeyStoreEntry> entries;
    QTRY_VERIFY((entries = entriesOf(storeId)).size() == files.size());
    for (const QCA::KeyStoreEntry &one : entries) {
        const KeyStoreEntry entry(one);
        QVERIFY(!entry.name().isEmpty());
        const Certificate *shown = entry.certificate();
        const QByteArray der = shown->certificate().toDER();
        QVERIFY2(m_expected.contains(der), qUtf8Printable(entry.name()));
        QCOMPARE(shown->certificate().provider()->name(), opensslProviderName());
        if (areKeyed) {
            QCOMPARE(shown->privateKeyAvailability(),
                     QStringLiteral("trivex-p-la-private_available"));
        } else {
            QCOMPARE(entryCertificate(one).provider()->name(),
                     isStockFirst ? Stock : opensslProviderName());
        }
        QVariantMap found = propertiesOf(shown->certificate());
        const QString difference = propertyDifference(found, m_expected.value(der));
        QVERIFY2(difference.isEmpty(), qUtf8Printable(difference));
    }
}

void TestStockStores::certificates()
{
    QFETCH(bool, isStockFirst);
    rank(isStockFirst);
    const QString list = m_directory.filePath(QString::fromLatin1(QTest::currentDataTag()));
    QFile file(list);
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (const QString &one : qAsConst(m_files))
        file.write(Corpus::certificate(one).toPEM().toLatin1());
    file.close();
    setSystemList(list);
    compare(Systems, m_files, false);
}

// Stock QCA's store of software keys: a chain, and the key in a file beside it.
void TestStockStores::bundles()
{
    QFETCH(bool, isStockFirst);
    if (!QCA::findProvider(Softwares))
        QSKIP("no stock store of software keys");
    rank(isStockFirst);
    QStringList keyed = {QStringLiteral("dsa"), QStringLiteral("ec-384"), QStringLiteral("ed25519"),
                         QStringLiteral("rsa-pss")};
    // The stock provider crashes by itself on a key that libcrypto does not know.
    if (loadGostEngine())
        keyed += QStringLiteral("gost-2012-256");
    QVariantMap config = QCA::getProviderConfig(Softwares);
    for (int i = 0; i < keyed.size(); ++i) {
        const QString prefix = QStringLiteral("entry_%1_").arg(i, 2, 10, QLatin1Char('0'));
        const QByteArray der = Corpus::read(keyed.at(i) + QStringLiteral(".der"));
        config.insert(prefix + QStringLiteral("enabled"), true);
        config.insert(prefix + QStringLiteral("name"), keyed.at(i));
        config.insert(prefix + QStringLiteral("public_type"), QStringLiteral("x509chain"));
        config.insert(prefix + QStringLiteral("public"), QString::fromLatin1(der.toBase64()));
        config.insert(prefix + QStringLiteral("private_type"), QStringLiteral("pkcs8-file-pem"));
        config.insert(prefix + QStringLiteral("private"),
                      Corpus::path(keyed.at(i) + QStringLiteral(".key")));
        config.insert(prefix + QStringLiteral("no_passphrase"), true);
        config.insert(prefix + QStringLiteral("unlock_timeout"), -1);
    }
    QCA::setProviderConfig(Softwares, config);
    compare(Softwares, keyed, true);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestStockStores test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_stockstores.moc"
