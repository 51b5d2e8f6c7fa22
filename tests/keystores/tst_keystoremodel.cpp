// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/providers.h"
#include "qca/qcaaskerthread.h"
#include "qca/qcahandler.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/fakes/provider/fakeprovider.h"
#include "tests/fakes/provider/privatehome.h"

#include "tests/certificates/flat.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using TrivexTest::CertificateFactory;
using TrivexTest::FakeEntry;
using TrivexTest::FakeProvider;
using TrivexTest::FakeStores;

namespace {

const TrivexTest::PrivateHome privateHome;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

using TrivexTest::Flat;

class tst_KeyStoreModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void withoutProvider();
    void providerWithoutConfig();
    void providerIsConfigured();
    void locations();
    void rowsAndRoles();
    void fallbackTexts();
    void unusableEntries();
    void oneReadPerRole();
    void removalLeavesTheSecondRow();
    void removalElsewhere();
    void newBundleIsAnnounced();
    void lostStoreWithRows();
    void lostStoreWithoutRows();
    void invalidUpdate();
    void busy();
    void results();
    void storeAccessors();
    void pemImport();
    void bundleErrors();
    void importNeedsALocation();
    void importWrites();
    void importAfterReset();
    void removalRefusals();
    void removal();
    void deletedWhileAnOperationAsks();
    void twentyTimes();
    void manyRows();

private:
    FakeStores &stores() { return *m_fake->stores; }
    FakeEntry certificate(const char *id, const QCA::Certificate &value);
    FakeEntry certificate(const char *id) { return certificate(id, m_certificate); }
    FakeEntry keyed(const char *id);
    void addStore(const char *id, const char *name, const QList<FakeEntry> &entries = {},
                  QCA::KeyStore::Type type = QCA::KeyStore::SmartCard);
    static QStringList ids(const KeyStoreModel &model);

    QCA::Initializer m_qca;
    FakeProvider *m_fake = nullptr;
    CertificateFactory m_factory;
    QCA::Certificate m_certificate;
    QCA::KeyBundle m_bundle;
};

FakeEntry tst_KeyStoreModel::certificate(const char *id, const QCA::Certificate &value)
{
    return {QCA::KeyStoreEntry::TypeCertificate, text(id), text(id), value, {}};
}

FakeEntry tst_KeyStoreModel::keyed(const char *id)
{
    return {QCA::KeyStoreEntry::TypeKeyBundle, text(id), text(id), {}, m_bundle};
}

void tst_KeyStoreModel::addStore(const char *id, const char *name, const QList<FakeEntry> &entries,
                                 QCA::KeyStore::Type type)
{
    stores().addStore({text(id), text(name), type, entries});
}

QStringList tst_KeyStoreModel::ids(const KeyStoreModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list << model.data(model.index(row, 0), KeyStoreModel::EntryIdRole).toString();
    return list;
}

void tst_KeyStoreModel::initTestCase()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    Trivex::rankProviders();
    // The system's own list stays out of the rows.
    QCA::setProviderConfig(text("default"),
                           {{text("formtype"), text("http://affinix.com/qca/forms/default#1.0")},
                            {text("use_system"), false},
                            {text("roots_file"), QString()},
                            {text("skip_plugins"), QString()},
                            {text("plugin_priorities"), QString()}});
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

void tst_KeyStoreModel::init()
{
    if (QByteArray(QTest::currentTestFunction()) == "withoutProvider")
        return;
    if (!m_fake) {
        m_fake = FakeProvider::install(text("qca-norvel-pkcs11"),
                                       {text("keystorelist"), text("pkey"), text("rsa")});
        QVERIFY(m_fake);
    }
    if (QByteArray(QTest::currentTestFunction()) != "providerWithoutConfig")
        m_fake->setDefaultConfig({{text("formtype"), text("test")}, {text("x"), 1}});
}

void tst_KeyStoreModel::cleanup()
{
    if (m_fake)
        stores().reset();
}

void tst_KeyStoreModel::withoutProvider()
{
    QTest::ignoreMessage(QtWarningMsg, "Provider qca-norvel-pkcs11 not supported!");
    QTest::ignoreMessage(QtWarningMsg, "Provider qca-norvel-pkcs11 config is empty!");
    KeyStoreModel model;
    QVERIFY(!model.isProviderReady());
    QCOMPARE(model.provider(), nullptr);
    QCOMPARE(model.error(), KeyStoreModel::ErrorUnknown);
}

void tst_KeyStoreModel::providerWithoutConfig()
{
    QTest::ignoreMessage(QtWarningMsg, "Provider qca-norvel-pkcs11 config is empty!");
    KeyStoreModel model;
    QVERIFY(!model.isProviderReady());
    QVERIFY(model.provider());
}

void tst_KeyStoreModel::providerIsConfigured()
{
    KeyStoreModel model;
    QVERIFY(model.isProviderReady());
    QVERIFY(model.provider());
    QVERIFY(model.provider() != m_fake);
    QCOMPARE(model.provider()->name(), text("qca-norvel-pkcs11"));
    QCOMPARE(model.provider()->features(), m_fake->features());
    QCOMPARE(m_fake->config().value(text("allow_load_rootca")), QVariant(true));
    QCOMPARE(m_fake->config().value(text("x")), QVariant(1));
}

void tst_KeyStoreModel::locations()
{
    int others = 0; // of stock plugins
    {
        KeyStoreModel before;
        QTest::qWait(100);
        others = before.certLocationModel()->rowCount();
    }
    addStore("id-b", "Token B");
    addStore("USER", "USER", {}, QCA::KeyStore::User);
    addStore("USERAPP", "Mine", {}, QCA::KeyStore::User);
    addStore("APP", "App", {}, QCA::KeyStore::Application);
    addStore("sys", "Sys", {}, QCA::KeyStore::System);
    addStore("nameless", "");
    addStore("id-a", "Token A");
    addStore("id-a2", "Token A");
    KeyStoreModel model;
    QSignalSpy changed(&model, &KeyStoreModel::certLocationChanged);
    ComboBoxModel *list = model.certLocationModel();
    QTRY_COMPARE(list->rowCount(), others + 2);
    addStore("id-c", "Token C");
    QTRY_COMPARE(list->rowCount(), others + 3);
    QCOMPARE(changed.count(), 1);
    QVERIFY(list->containsType(text("Token A")));
    QVERIFY(list->containsType(text("Token B")));
    QCOMPARE(list->rowAt(others + 2).id, int(KeyStoreModel::SoftHSM));
    QCOMPARE(list->rowAt(others + 2).name, text("trivex-me-softhsm"));
}

void tst_KeyStoreModel::rowsAndRoles()
{
    addStore("t", "Token", {certificate("c"), keyed("k")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(ids(model), QStringList({text("c"), text("k")}));
    const QModelIndex index = model.index(0, 0);
    QCOMPARE(index.data(257).toString(), text("Subject"));
    QCOMPARE(index.data(260).toString(), text("Subject"));
    QCOMPARE(index.data(261), QVariant(3));
    auto *entry = index.data(258).value<KeyStoreEntry *>();
    QVERIFY(entry);
    QCOMPARE(index.data(259).value<Certificate *>(), entry->certificate());
    QCOMPARE(entry->name(), text("c"));
    QVERIFY(!index.data(256).isValid());
    QVERIFY(!index.data(263).isValid());
    QVERIFY(!model.data(QModelIndex(), 257).isValid());
    auto *bundle = model.index(1, 0).data(258).value<KeyStoreEntry *>();
    QCOMPARE(bundle->certificate()->commonName(), text("Keyed"));
    QVERIFY(!bundle->certificate()->keyBundle().isNull());
    const QHash<int, QByteArray> names = {{257, "name"},        {258, "keyStoreEntry"},
                                          {259, "certificate"}, {260, "issuer"},
                                          {261, "type"},        {262, "entryId"}};
    QCOMPARE(model.roleNames(), names);
    // Both stores may have an entry of the same id.
    addStore("t2", "Token 2", {certificate("c")});
    QTRY_COMPARE(model.rowCount(), 3);
}

void tst_KeyStoreModel::fallbackTexts()
{
    const auto unit = m_factory.selfSigned(QStringLiteral("/OU=Unit"));
    const auto organization = m_factory.selfSigned(QStringLiteral("/O=Org"));
    addStore("t", "Token", {certificate("u", unit), certificate("o", organization)});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(0, 0).data(257).toString(), text("Unit"));
    QCOMPARE(model.index(0, 0).data(260).toString(), text("trivex-se-unknown_organization"));
    QCOMPARE(model.index(1, 0).data(257).toString(), text("trivex-se-unnamed"));
    QCOMPARE(model.index(1, 0).data(260).toString(), text("Org"));
}

void tst_KeyStoreModel::unusableEntries()
{
    FakeEntry nameless = certificate("nameless");
    nameless.name.clear();
    FakeEntry nullBundle = keyed("null");
    nullBundle.bundle = QCA::KeyBundle();
    FakeEntry crl = certificate("crl");
    crl.type = QCA::KeyStoreEntry::TypeCRL;
    addStore("t", "Token", {nameless, nullBundle, crl});
    KeyStoreModel model;
    QTRY_COMPARE(ids(model), QStringList({text("crl")}));
    QVERIFY(model.index(0, 0).data(259).value<Certificate *>()->isNull());
    QCOMPARE(model.index(0, 0).data(257).toString(), text("trivex-se-unnamed"));
}

void tst_KeyStoreModel::oneReadPerRole()
{
    addStore("t", "Token", {certificate("c")});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    // No certificate object comes into being for roles that don't need it.
    const auto *entry = model.index(0, 0).data(258).value<KeyStoreEntry *>();
    model.index(0, 0).data(261);
    model.index(0, 0).data(262);
    QCOMPARE(entry->certificate()->commonName(), text("Subject"));
}

void tst_KeyStoreModel::removalLeavesTheSecondRow()
{
    addStore("t", "Token", {certificate("0"), certificate("1"), certificate("2")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 3);
    stores().setEntries(text("t"), {certificate("2")});
    QTRY_COMPARE(ids(model), QStringList({text("1"), text("2")}));
    QTest::qWait(50);
    QCOMPARE(model.rowCount(), 2);
    stores().setEntries(text("t"), {certificate("2")});
    QTRY_COMPARE(ids(model), QStringList({text("2")}));
}

void tst_KeyStoreModel::removalElsewhere()
{
    addStore("a", "A", {certificate("0"), certificate("1")});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 2);
    addStore("b", "B", {certificate("0"), certificate("1"), certificate("2")});
    QTRY_COMPARE(model.rowCount(), 5);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    stores().setEntries(text("b"), {});
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(removed.count(), 3); // one by one
    QCOMPARE(removed.at(0).at(1).toInt(), 2);
}

void tst_KeyStoreModel::newBundleIsAnnounced()
{
    addStore("t", "Token", {});
    addStore("u", "User", {}, QCA::KeyStore::User);
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("User")) && model.keyStoreByName(text("Token")));
    int announced = 0;
    int rowsThen = -1;
    QByteArray key;
    connect(&model, &KeyStoreModel::keyBundleWritten, this, [&](const QCA::PublicKey &pkey) {
        ++announced;
        rowsThen = model.rowCount();
        key = pkey.toDER();
    });
    stores().setEntries(text("u"), {keyed("k")});
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(announced, 0);
    stores().setEntries(text("t"), {certificate("c"), keyed("k")});
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(announced, 1);
    QCOMPARE(rowsThen, 2); // before its row
    QCOMPARE(key, m_bundle.privateKey().toPublicKey().toDER());
    stores().setEntries(text("t"), {certificate("c"), keyed("k"), certificate("d")});
    QTRY_COMPARE(model.rowCount(), 4);
    QCOMPARE(announced, 1);
}

void tst_KeyStoreModel::lostStoreWithRows()
{
    addStore("a", "A", {certificate("0"), certificate("1")});
    addStore("b", "B", {certificate("2")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 3);
    QPointer<QCA::KeyStore> lost = model.keyStoreByName(text("A"));
    QVERIFY(lost);
    const int count = model.keyStoreCount();
    stores().removeStore(text("a"));
    QTRY_COMPARE(ids(model), QStringList({text("2")}));
    QTRY_VERIFY(!lost);
    QCOMPARE(model.keyStoreCount(), count); // its place stays
    QCOMPARE(model.keyStoreByName(text("A")), nullptr);
    addStore("a", "A", {certificate("0")});
    QTRY_COMPARE(model.rowCount(), 2);
}

void tst_KeyStoreModel::lostStoreWithoutRows()
{
    addStore("a", "A");
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("A")));
    QPointer<QCA::KeyStore> lost = model.keyStoreByName(text("A"));
    stores().removeStore(text("a"));
    QTRY_VERIFY(!lost);
    QCOMPARE(model.rowCount(), 0);
}

void tst_KeyStoreModel::invalidUpdate()
{
    KeyStoreModel model;
    QTest::ignoreMessage(QtWarningMsg, "Error: KeyStore not valid");
    QMetaObject::invokeMethod(&model, "ksUpdated", Qt::DirectConnection);
    QTest::ignoreMessage(QtWarningMsg, "Error: KeyStore not valid");
    addStore("n", "", {certificate("c")}); // nameless
    QTRY_VERIFY(model.keyStoreCount() > 0);
    QTest::qWait(100);
    QCOMPARE(model.rowCount(), 0);
}

void tst_KeyStoreModel::busy()
{
    KeyStoreModel model;
    QTRY_VERIFY(!model.isBusy());
    QSignalSpy changed(&model, &KeyStoreModel::busyChanged);
    QSignalSpy ready(&model, &KeyStoreModel::keysReady);
    QSignalSpy notReady(&model, &KeyStoreModel::keysNotReady);
    QMetaObject::invokeMethod(&model, "ksmBusyStarted");
    QVERIFY(model.isBusy());
    QMetaObject::invokeMethod(&model, "ksmBusyStarted");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(notReady.count(), 2);
    QMetaObject::invokeMethod(&model, "ksmBusyFinished");
    QVERIFY(!model.isBusy());
    QCOMPARE(changed.count(), 2);
    QCOMPARE(ready.count(), 1);
    model.setBusy(false);
    QCOMPARE(changed.count(), 2);
}

void tst_KeyStoreModel::results()
{
    KeyStoreModel model;
    QSignalSpy written(&model, &KeyStoreModel::entryWrittenChanged);
    QSignalSpy removed(&model, &KeyStoreModel::entryRemovedChanged);
    QMetaObject::invokeMethod(&model, "entryWritten", Q_ARG(QString, text("id")));
    QMetaObject::invokeMethod(&model, "entryWritten", Q_ARG(QString, QString()));
    QMetaObject::invokeMethod(&model, "entryRemoved", Q_ARG(bool, true));
    QCOMPARE(written.value(0).value(0), QVariant(false));
    QCOMPARE(written.value(1).value(0), QVariant(true));
    QCOMPARE(removed.value(0).value(0), QVariant(true));
}

void tst_KeyStoreModel::storeAccessors()
{
    addStore("t", "Token");
    KeyStoreModel model;
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    const int count = model.keyStoreCount();
    int position = 0;
    while (position < count && model.keyStoreName(position) != text("Token"))
        ++position;
    QVERIFY(position < count);
    QCOMPARE(model.keyStoreType(position), int(KeyStoreModel::SmartCard));
    QCOMPARE(model.keyStoreType(count), -1);
    QCOMPARE(model.keyStoreName(count), QString());
    QCOMPARE(model.keyStoreByName(text("token")), nullptr);
}

void tst_KeyStoreModel::pemImport()
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

void tst_KeyStoreModel::bundleErrors()
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

void tst_KeyStoreModel::importNeedsALocation()
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

void tst_KeyStoreModel::importWrites()
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

void tst_KeyStoreModel::importAfterReset()
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

void tst_KeyStoreModel::removalRefusals()
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

void tst_KeyStoreModel::removal()
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

void tst_KeyStoreModel::deletedWhileAnOperationAsks()
{
    addStore("t", "Token", {certificate("c")});
    stores().setAsking(true);
    auto model = std::make_unique<KeyStoreModel>();
    QTRY_COMPARE(model->rowCount(), 1);
    // The handler answers with what is stored: an empty array.
    model->removeCertificate(text("c"));
    QElapsedTimer timer;
    timer.start();
    model.reset();
    QVERIFY2(timer.elapsed() < 4000, "the model waits for ever");
}

void tst_KeyStoreModel::twentyTimes()
{
    addStore("t", "Token", {certificate("c")});
    for (int i = 0; i < 20; ++i) {
        KeyStoreModel model;
        QVERIFY(model.provider());
        if (i % 5 == 0)
            QTRY_COMPARE(model.rowCount(), 1);
    }
    QCOMPARE(QCA::findProvider(text("qca-norvel-pkcs11")), m_fake);
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.provider()->features(), m_fake->features());
}

void tst_KeyStoreModel::manyRows()
{
    QList<FakeEntry> entries;
    for (int i = 0; i < 5000; ++i)
        entries.append(certificate(QByteArray::number(i).constData()));
    addStore("t", "Token");
    KeyStoreModel model;
    CertificateModel system;
    system.setSourceModel(&model);
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    QTest::qWait(50);
    qint64 spent = 0;
    QElapsedTimer timer;
    connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, [&] {
        if (!timer.isValid())
            timer.start();
    });
    connect(&model, &QAbstractItemModel::rowsInserted, this, [&] { spent = timer.elapsed(); });
    stores().setEntries(text("t"), entries);
    QTRY_COMPARE(model.rowCount(), 5000);
    qInfo("5000 rows in %lld ms", static_cast<long long>(spent));
    QVERIFY2(spent < 1000, "grows faster than the rows");
}

QTEST_GUILESS_MAIN(tst_KeyStoreModel)
#include "tst_keystoremodel.moc"
