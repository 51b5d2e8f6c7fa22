// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QSignalSpy>
#include <QtTest>

using TrivexTest::FakeEntry;
using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

/// Import and removal, up to what the provider is told.
class tst_KeyStoreImport : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void pemImport();
    void bundleErrors();
    void importNeedsALocation();
    void importWrites();
    void importAfterReset();
    void removalRefusals();
    void removal();
};

void tst_KeyStoreImport::initTestCase()
{
    prepare();
    install();
    configure();
}

void tst_KeyStoreImport::cleanup()
{
    stores().reset();
}

void tst_KeyStoreImport::pemImport()
{
    KeyStoreModel model;
    QVERIFY(!model.certificateFromPEMFile(text("/nowhere")));
    QCOMPARE(model.importedCertificateCommonName(), QString());
    const QString path = m_factory.authority().certificateFile();
    QVERIFY(model.certificateFromPEMFile(path));
    QCOMPARE(model.importedCertificateCommonName(), text("Test Root"));
    QCOMPARE(model.importedCertificateFileName(), QFileInfo(path).fileName());
    QVERIFY(model.importedCertificateIsRoot());
    QVERIFY(!model.certificateFromPEMFile(path));
    model.resetImportedCertificate();
    QCOMPARE(model.importedCertificateCommonName(), QString());
    QVERIFY(model.certificateFromPEMFile(path));
}

void tst_KeyStoreImport::bundleErrors()
{
    const QString path = m_factory.authority().bundle(
        {text("-algorithm"), text("RSA"), text("-pkeyopt"), text("rsa_keygen_bits:2048")},
        text("/CN=Bundle"), text("secret"), text("friend"));
    QVERIFY(!path.isEmpty());
    KeyStoreModel model;
    QCOMPARE(model.error(), KeyStoreModel::ErrorUnknown);
    QVERIFY(!model.keyBundleFromFile(path, text("wrong")));
    QCOMPARE(model.error(), KeyStoreModel::ErrorPassphrase);
    QVERIFY(!model.keyBundleFromFile(path, QString()));
    QCOMPARE(model.error(), KeyStoreModel::ErrorPassphrase);
    QVERIFY(!model.keyBundleFromFile(text("/nowhere.p12"), text("secret")));
    QCOMPARE(model.error(), KeyStoreModel::ErrorFile);
    QVERIFY(!model.keyBundleFromFile(m_factory.authority().certificateFile(), text("secret")));
    QCOMPARE(model.error(), KeyStoreModel::ErrorDecode);
    QVERIFY(model.keyBundleFromFile(path, text("secret")));
    QCOMPARE(model.error(), KeyStoreModel::ErrorDecode); // the old failure stays
    QCOMPARE(model.importedCertificateCommonName(), text("Bundle"));
    model.resetImportedKeyBundle();
    QCOMPARE(model.importedCertificateCommonName(), QString());
}

void tst_KeyStoreImport::importNeedsALocation()
{
    addStore("t", "Token");
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    QVERIFY(model.certificateFromPEMFile(m_factory.authority().certificateFile()));
    model.importCertificate(); // the first id, read as a position, is past the end
    for (const int outside : {-1, 1, 2, 100}) {
        model.setCertLocationId(outside);
        model.importCertificate();
        model.importKeyBundle();
    }
    QTest::qWait(100);
    QVERIFY(stores().calls().isEmpty());
    // A location whose store has gone.
    model.setCertLocationId(0);
    stores().removeStore(text("t"));
    QTRY_VERIFY(!model.keyStoreByName(text("Token")));
    model.importCertificate();
    model.importKeyBundle();
    QTest::qWait(50);
    QVERIFY(stores().calls().isEmpty());
}

void tst_KeyStoreImport::importWrites()
{
    addStore("t", "Token");
    KeyStoreModel model;
    QSignalSpy written(&model, &KeyStoreModel::entryWrittenChanged);
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    model.setCertLocationId(0);
    model.importCertificate(); // nothing is loaded
    QVERIFY(model.certificateFromPEMFile(m_factory.authority().certificateFile()));
    model.importCertificate();
    QTRY_COMPARE(written.count(), 1);
    QCOMPARE(written.at(0).at(0), QVariant(false));
    QCOMPARE(stores().calls().size(), 1);
    QCOMPARE(stores().calls().first().function, text("writeCertificate"));
    QCOMPARE(stores().calls().first().storeId, text("t"));
    QCOMPARE(stores().calls().first().certificate.commonName(), text("Test Root"));
    stores().setResults(QString(), false);
    model.importKeyBundle(); // the certificate is tested, not the bundle
    QTRY_COMPARE(written.count(), 2);
    QCOMPARE(written.at(1).at(0), QVariant(true));
    QCOMPARE(stores().calls().last().function, text("writeBundle"));
}

void tst_KeyStoreImport::importAfterReset()
{
    addStore("t", "Token");
    const QString path = m_factory.authority().bundle(
        {text("-algorithm"), text("RSA"), text("-pkeyopt"), text("rsa_keygen_bits:2048")},
        text("/CN=Bundle"), text("secret"), text("friend"));
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    model.setCertLocationId(0);
    QVERIFY(model.keyBundleFromFile(path, text("secret")));
    model.resetImportedCertificate();
    model.importKeyBundle();
    QTest::qWait(100);
    QVERIFY(stores().calls().isEmpty());
}

void tst_KeyStoreImport::removalRefusals()
{
    KeyStoreModel model;
    QTest::ignoreMessage(QtWarningMsg, "KeyStore entry ID is empty. Certificate cannot be deleted");
    model.removeCertificate(QString());
    QTest::ignoreMessage(QtWarningMsg, "KeyStoreModel is empty. Certificate cannot be deleted");
    model.removeCertificate(text("c"));
    addStore("s", "Sys", {certificate("c")}, QCA::KeyStore::System);
    QTRY_COMPARE(model.rowCount(), 1);
    QTest::ignoreMessage(QtWarningMsg, "System certificate cannot be deleted");
    model.removeCertificate(text("c"));
    addStore("t", "Token", {certificate("c")});
    QTRY_COMPARE(model.rowCount(), 2);
    // Only the first row of that id counts.
    QTest::ignoreMessage(QtWarningMsg, "System certificate cannot be deleted");
    model.removeCertificate(text("c"));
    model.removeCertificate(text("unknown")); // silently nothing
    QTest::qWait(100);
    QVERIFY(stores().calls().isEmpty());
}

void tst_KeyStoreImport::removal()
{
    addStore("t", "Token", {certificate("c")});
    KeyStoreModel model;
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    QTRY_COMPARE(model.rowCount(), 1);
    model.removeCertificate(text("c"));
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(true));
    QCOMPARE(stores().calls().first().function, text("removeEntry"));
    QCOMPARE(stores().calls().first().argument, text("c"));
    QCOMPARE(model.rowCount(), 1); // until the store says so
    stores().setEntries(text("t"), {});
    QTRY_COMPARE(model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(tst_KeyStoreImport)
#include "tst_keystoreimport.moc"
