// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What the model of key stores writes to stores and removes from them.
#include "keystores/importdesk.h"
#include "keystores/keystoremodel.h"
#include "qca/questions/storedanswers.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"
#include "tests/support/locations.h"

#include <QSignalSpy>
#include <QtTest>

#include <sys/stat.h>

using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class TestKeyStoreImport : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void pemImport();
    void bundleErrors();
    void bundlesAreNeverAskedAbout_data();
    void bundlesAreNeverAskedAbout();
    void importNeedsALocation();
    void importWrites();
    void importAfterReset();
    void resetKeepsNoKey();
    void loadsKeepTheRest();
    void operationsStoreTheirTarget();
    void removalRefusals();
    void removal();
    void removalOfTheFirstOfThatId();
    void plainQuestionsTakeTheStoredAnswers();
    void usersCertificateLeavesNoAnswers();

private:
    QString bundleFile();
};

void TestKeyStoreImport::initTestCase()
{
    prepare();
    install();
    configure();
}

void TestKeyStoreImport::cleanup()
{
    stores().reset();
}

/// A key with its certificate for "Bundle", protected by "secret".
QString TestKeyStoreImport::bundleFile()
{
    return m_factory.authority().bundle(
        {text("-algorithm"), text("RSA"), text("-pkeyopt"), text("rsa_keygen_bits:2048")},
        text("/CN=Bundle"), text("secret"), text("friend"));
}

void TestKeyStoreImport::pemImport()
{
    KeyStoreModel model;
    QVERIFY(!model.certificateFromPEMFile(text("/nowhere")));
    const QString pipe = m_factory.authority().file(text("pipe.pem"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!model.certificateFromPEMFile(pipe)); // not waited for
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

void TestKeyStoreImport::bundleErrors()
{
    const QString path = bundleFile();
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

void TestKeyStoreImport::bundlesAreNeverAskedAbout_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("error");
    const auto &authority = m_factory.authority();
    const QStringList key{text("-algorithm"), text("RSA"), text("-pkeyopt"),
                          text("rsa_keygen_bits:2048")};
    // The authority writes all of them under one name.
    const QString withoutMac = authority.file(text("nomac.p12"));
    QVERIFY(QFile::rename(
        authority.bundle(key, text("/CN=Bundle"), text("secret"), text("friend"), {text("-nomac")}),
        withoutMac));
    const QString good = bundleFile();
    const QString pipe = authority.file(text("pipe.p12"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QFile whole(good);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QString cut = authority.file(text("cut.p12"));
    QFile part(cut);
    QVERIFY(part.open(QIODevice::WriteOnly));
    part.write(whole.read(whole.size() / 2));
    part.close();
    const int unreadable = KeyStoreModel::ErrorFile;
    const int decode = KeyStoreModel::ErrorDecode;
    const int passphrase = KeyStoreModel::ErrorPassphrase;
    for (const QString &password : {QString(), text("wrong")}) {
        const char *suffix = password.isEmpty() ? ", no password" : ", wrong password";
        QTest::addRow("bundle%s", suffix) << good << password << passphrase;
        QTest::addRow("no bundle%s", suffix) << authority.certificateFile() << password << decode;
        QTest::addRow("cut%s", suffix) << cut << password << decode;
        QTest::addRow("pipe%s", suffix) << pipe << password << unreadable;
        QTest::addRow("without MAC%s", suffix) << withoutMac << password << passphrase;
    }
}

/// Whoever answered would have to do so on the thread that waits, for ever.
void TestKeyStoreImport::bundlesAreNeverAskedAbout()
{
    QFETCH(QString, path);
    QFETCH(QString, password);
    QFETCH(int, error);
    QVERIFY(!path.isEmpty());
    QCA::EventHandler handler;
    int asked = 0;
    connect(&handler, &QCA::EventHandler::eventReady, this, [&] { ++asked; });
    handler.start();
    KeyStoreModel model;
    QVERIFY(!model.keyBundleFromFile(path, password));
    QCOMPARE(int(model.error()), error);
    QTest::qWait(20); // no question must come in this time
    QCOMPARE(asked, 0);
}

void TestKeyStoreImport::importNeedsALocation()
{
    addStore("t", "Token");
    {
        KeyStoreModel earlier;
        QTRY_VERIFY(earlier.keyStoreByName(text("Token")));
    }
    // The store is known from the start, so its row's id is what is chosen first. Read as a
    // position it is past the end.
    KeyStoreModel model;
    QVERIFY(model.keyStoreByName(text("Token")));
    QCOMPARE(model.certLocationModel()->rowCount(), 1);
    QVERIFY(model.certificateFromPEMFile(m_factory.authority().certificateFile()));
    model.importCertificate();
    for (const int outside : {-1, 1, 2, 100}) {
        model.setCertLocationId(outside);
        model.importCertificate();
        model.importKeyBundle();
    }
    QTest::qWait(100); // no store must be called in this time
    QVERIFY(stores().calls().isEmpty());
    // A location whose store has gone.
    model.setCertLocationId(TrivexTest::locationOf(model, text("Token")));
    stores().removeStore(text("t"));
    QTRY_VERIFY(!model.keyStoreByName(text("Token")));
    model.importCertificate();
    model.importKeyBundle();
    QTest::qWait(50); // no store must be called in this time
    QVERIFY(stores().calls().isEmpty());
}

void TestKeyStoreImport::importWrites()
{
    addStore("t", "Token");
    KeyStoreModel model;
    QSignalSpy written(&model, &KeyStoreModel::entryWrittenChanged);
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    model.setCertLocationId(TrivexTest::locationOf(model, text("Token")));
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

void TestKeyStoreImport::importAfterReset()
{
    addStore("t", "Token");
    const QString path = bundleFile();
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    model.setCertLocationId(TrivexTest::locationOf(model, text("Token")));
    QVERIFY(model.keyBundleFromFile(path, text("secret")));
    model.resetImportedCertificate();
    model.importKeyBundle();
    QTest::qWait(100); // no store must be called in this time
    QVERIFY(stores().calls().isEmpty());
}

// Nobody can ask for it any more, and whoever reads the memory of the process must not find it.
void TestKeyStoreImport::resetKeepsNoKey()
{
    Trivex::LoadedBundle read;
    read.result = QCA::ConvertGood;
    read.bundle = m_bundle;
    ImportDesk desk;
    QVERIFY(desk.load(read));
    QVERIFY(!desk.loaded().keyBundle().isNull());
    desk.resetBundle();
    QVERIFY(desk.loaded().isNull());
    QVERIFY(desk.loaded().keyBundle().isNull());
}

void TestKeyStoreImport::loadsKeepTheRest()
{
    addStore("t", "Token");
    const QString pem = m_factory.authority().certificateFile();
    const QString bundle = bundleFile();
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    model.setCertLocationId(TrivexTest::locationOf(model, text("Token")));
    // The bundle that was loaded before a certificate is still there.
    QVERIFY(model.keyBundleFromFile(bundle, text("secret")));
    QVERIFY(model.certificateFromPEMFile(pem));
    QCOMPARE(model.importedCertificateCommonName(), text("Test Root"));
    model.importKeyBundle();
    QTRY_COMPARE(stores().calls().size(), 1);
    QCOMPARE(stores().calls().first().bundle.certificateChain().first().commonName(),
             text("Bundle"));
    // The file name is that of the certificate, whatever bundle comes after it, and survives a
    // reset.
    QVERIFY(model.keyBundleFromFile(bundle, text("secret")));
    QCOMPARE(model.importedCertificateCommonName(), text("Bundle"));
    QVERIFY(!model.importedCertificateIsRoot());
    QCOMPARE(model.importedCertificateFileName(), QFileInfo(pem).fileName());
    model.resetImportedKeyBundle();
    QCOMPARE(model.importedCertificateFileName(), QString());
    model.importKeyBundle();
    QVERIFY(model.keyBundleFromFile(bundle, text("secret")));
    QCOMPARE(model.importedCertificateFileName(), QFileInfo(pem).fileName());
    // A failed load changes nothing but the error.
    QVERIFY(!model.keyBundleFromFile(bundle, text("wrong")));
    QCOMPARE(model.importedCertificateCommonName(), text("Bundle"));
    QTest::qWait(50); // no second call must come in this time
    QCOMPARE(stores().calls().size(), 1);
    // An import leaves what was loaded as it was.
    model.importCertificate();
    QTRY_COMPARE(stores().calls().size(), 2);
    QCOMPARE(model.importedCertificateCommonName(), text("Bundle"));
}

/// The scripted provider takes no stored answers, so they can be looked at.
void TestKeyStoreImport::operationsStoreTheirTarget()
{
    TrivexTest::FakeEntry entry = certificate("id");
    entry.name = text("name");
    addStore("t", "Token", {entry});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    model.setCertLocationId(TrivexTest::locationOf(model, text("Token")));
    QVERIFY(model.keyBundleFromFile(bundleFile(), text("secret")));
    for (const auto import : {&KeyStoreModel::importCertificate, &KeyStoreModel::importKeyBundle}) {
        (model.*import)();
        const auto answers = Trivex::takeStoredAnswers(text("t"));
        QVERIFY(answers);
        QCOMPARE(answers->objectId, QString());
        QVERIFY(answers->password.isEmpty());
    }
    model.removeCertificate(text("id"));
    const auto answers = Trivex::takeStoredAnswers(text("t"));
    QVERIFY(answers);
    QCOMPARE(answers->objectId, text("name"));
    QVERIFY(answers->password.isEmpty());
    // What is refused stores nothing.
    model.removeCertificate(text("name"));
    model.setCertLocationId(7);
    model.importCertificate();
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
}

void TestKeyStoreImport::removalRefusals()
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
    QTest::qWait(100); // no store must be called in this time
    QVERIFY(stores().calls().isEmpty());
}

void TestKeyStoreImport::removal()
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

void TestKeyStoreImport::removalOfTheFirstOfThatId()
{
    addStore("a", "A", {certificate("c")});
    KeyStoreModel model;
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    QTRY_COMPARE(model.rowCount(), 1);
    addStore("b", "B", {certificate("c")});
    QTRY_COMPARE(model.rowCount(), 2);
    stores().setResults(QString(), false);
    model.removeCertificate(text("c"));
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(false));
    QTest::qWait(50); // no second call must come in this time
    QCOMPARE(stores().calls().size(), 1);
    QCOMPARE(stores().calls().first().storeId, text("a"));
}

/// What calls itself one of our providers and asks as stock ones do, is answered as they are.
void TestKeyStoreImport::plainQuestionsTakeTheStoredAnswers()
{
    addStore("t", "Token", {certificate("c")});
    stores().setAsking(true);
    KeyStoreModel model;
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    QTRY_COMPARE(model.rowCount(), 1);
    model.removeCertificate(text("c"));
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(true));
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
}

void TestKeyStoreImport::usersCertificateLeavesNoAnswers()
{
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("USER")));
    QSignalSpy written(&model, &KeyStoreModel::entryWrittenChanged);
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    model.keyStoreByName(text("USER"))->writeEntry(certificate("c").certificate);
    QTRY_COMPARE(written.count(), 1);
    QTRY_COMPARE(model.rowCount(), 1);
    const QModelIndex row = model.index(0);
    QCOMPARE(row.data(KeyStoreModel::TypeRole), QVariant(int(KeyStoreModel::User)));
    model.removeCertificate(row.data(KeyStoreModel::EntryIdRole).toString());
    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0), QVariant(true));
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
    QTRY_COMPARE(model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestKeyStoreImport)
#include "tst_keystoreimport.moc"
