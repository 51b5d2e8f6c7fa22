// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "keystores/providerlookup.h"
#include "tests/certificates/flat.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"
#include "tests/support/marktranslator.h"
#include "tests/support/processortime.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

using TrivexTest::FakeEntry;
using TrivexTest::Flat;
using TrivexTest::KeyStoreFixture;

using TrivexTest::processorTime;

namespace {

const TrivexTest::PrivateHome privateHome;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

/// While it lives, keeps the process's warnings, in order.
class Warnings {
public:
    Warnings()
    {
        seen().clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext &, const QString &message) {
                if (type == QtWarningMsg)
                    seen() << message;
            });
    }
    ~Warnings() { qInstallMessageHandler(m_previous); }
    static QStringList &seen()
    {
        static QStringList list;
        return list;
    }

private:
    QtMessageHandler m_previous;
};

} // namespace

class TestKeyStoreModel : public KeyStoreFixture {
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
    void invalidUpdate();
    void busy();
    void results();
    void storeAccessors();
    void providerLookUp();
    void manyRows();

private:
    void takeRows(int count, qint64 *spent);
    const TrivexTest::MarkTranslator m_marks;
};

void TestKeyStoreModel::initTestCase()
{
    prepare();
}

void TestKeyStoreModel::init()
{
    if (QByteArray(QTest::currentTestFunction()) == "withoutProvider")
        return;
    install();
    if (QByteArray(QTest::currentTestFunction()) != "providerWithoutConfig")
        configure();
}

void TestKeyStoreModel::cleanup()
{
    if (m_fake)
        stores().reset();
}

void TestKeyStoreModel::withoutProvider()
{
    const Warnings warnings;
    KeyStoreModel model;
    QCOMPARE(Warnings::seen(),
             QStringList({text("Provider qca-norvel-pkcs11 not supported!"),
                          text("Provider qca-norvel-pkcs11 config is empty!")}));
    QVERIFY(!model.isProviderReady());
    QCOMPARE(model.provider(), nullptr);
    QCOMPARE(model.error(), KeyStoreModel::ErrorUnknown);
}

void TestKeyStoreModel::providerWithoutConfig()
{
    QTest::ignoreMessage(QtWarningMsg, "Provider qca-norvel-pkcs11 config is empty!");
    KeyStoreModel model;
    QVERIFY(!model.isProviderReady());
    QVERIFY(model.provider());
}

void TestKeyStoreModel::providerIsConfigured()
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

void TestKeyStoreModel::locations()
{
    int others = 0; // of stock plugins
    {
        KeyStoreModel before;
        QTest::qWait(100); // nobody knows how many come, if any
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
    QSignalSpy types(&model, &KeyStoreModel::typeModelChanged);
    ComboBoxModel *list = model.certLocationModel();
    QTRY_COMPARE(list->rowCount(), others + 2);
    // QCA reports what it has known before the model either at its start or a moment later.
    changed.clear();
    addStore("id-c", "Token C");
    QTRY_COMPARE(list->rowCount(), others + 3);
    QCOMPARE(changed.count(), 1);
    addStore("id-c2", "Token C");
    addStore("id-d", "Token D");
    QTRY_COMPARE(list->rowCount(), others + 4);
    QCOMPARE(changed.count(), 2); // once for each new location
    QCOMPARE(types.count(), 0);
    QVERIFY(list->containsType(text("Token A")));
    QVERIFY(list->containsType(text("Token B")));
    QCOMPARE(list->rowAt(others + 2).id, int(KeyStoreModel::SoftHSM));
    QCOMPARE(list->rowAt(others + 2).name, text("tr:trivex-me-softhsm"));
}

void TestKeyStoreModel::rowsAndRoles()
{
    addStore("t", "Token", {certificate("c"), keyed("k")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(ids(model), QStringList({text("c"), text("k")}));
    const QModelIndex index = model.index(0, 0);
    QCOMPARE(index.data(KeyStoreModel::NameRole).toString(), text("Subject"));
    QCOMPARE(index.data(KeyStoreModel::IssuerRole).toString(), text("Subject"));
    QCOMPARE(index.data(KeyStoreModel::TypeRole), QVariant(3));
    auto *entry = index.data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
    QVERIFY(entry);
    QCOMPARE(index.data(KeyStoreModel::CertificateRole).value<Certificate *>(),
             entry->certificate());
    QCOMPARE(entry->name(), text("c"));
    QVERIFY(!index.data(KeyStoreModel::NameRole - 1).isValid());
    QVERIFY(!index.data(KeyStoreModel::EntryIdRole + 1).isValid());
    QVERIFY(!model.data(QModelIndex(), KeyStoreModel::NameRole).isValid());
    auto *bundle =
        model.index(1, 0).data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
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

void TestKeyStoreModel::fallbackTexts()
{
    const auto unit = m_factory.selfSigned(QStringLiteral("/OU=Unit"));
    const auto organization = m_factory.selfSigned(QStringLiteral("/O=Org"));
    addStore("t", "Token", {certificate("u", unit), certificate("o", organization)});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(0, 0).data(KeyStoreModel::NameRole).toString(), text("Unit"));
    QCOMPARE(model.index(0, 0).data(KeyStoreModel::IssuerRole).toString(),
             text("tr:trivex-se-unknown_organization"));
    QCOMPARE(model.index(1, 0).data(KeyStoreModel::NameRole).toString(),
             text("tr:trivex-se-unnamed"));
    QCOMPARE(model.index(1, 0).data(KeyStoreModel::IssuerRole).toString(), text("Org"));
}

void TestKeyStoreModel::unusableEntries()
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
    QVERIFY(
        model.index(0, 0).data(KeyStoreModel::CertificateRole).value<Certificate *>()->isNull());
    QCOMPARE(model.index(0, 0).data(KeyStoreModel::NameRole).toString(),
             text("tr:trivex-se-unnamed"));
}

void TestKeyStoreModel::oneReadPerRole()
{
    addStore("t", "Token", {certificate("c"), keyed("k")});
    KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 2);
    const auto readAll = [&](const QVector<int> &roles) {
        for (int turn = 0; turn < 3; ++turn) {
            for (int row = 0; row < model.rowCount(); ++row) {
                for (const int role : roles)
                    model.index(row, 0).data(role);
            }
        }
    };
    const auto reads = [this](const char *what) { return stores().reads(text(what)); };
    // For a row to appear, a bundle is looked at once, as an empty one gets no row. No certificate
    // is read for it, nor for the roles that don't need one.
    readAll(
        {KeyStoreModel::KeyStoreEntryRole, KeyStoreModel::TypeRole, KeyStoreModel::EntryIdRole});
    QCOMPARE(reads("certificate"), 0);
    QCOMPARE(reads("keyBundle"), 1);
    // The id is asked for each time, but nothing else of the entry.
    stores().forgetReads();
    model.index(0, 0).data(KeyStoreModel::EntryIdRole);
    QCOMPARE(reads("id"), 1);
    QCOMPARE(reads("name") + reads("certificate") + reads("keyBundle"), 0);
    // One read serves every role that shows the certificate, however often.
    stores().forgetReads();
    readAll({KeyStoreModel::NameRole, KeyStoreModel::CertificateRole, KeyStoreModel::IssuerRole});
    QCOMPARE(reads("certificate"), 1);
    QCOMPARE(reads("keyBundle"), 1);
    QCOMPARE(reads("id") + reads("name"), 0);
}

void TestKeyStoreModel::removalLeavesTheSecondRow()
{
    addStore("t", "Token", {certificate("0"), certificate("1"), certificate("2")});
    Flat<KeyStoreModel> model;
    QAbstractItemModelTester tester(&model);
    QTRY_COMPARE(model.rowCount(), 3);
    stores().setEntries(text("t"), {certificate("2")});
    QTRY_COMPARE(ids(model), QStringList({text("1"), text("2")}));
    QTest::qWait(50); // no row must come in this time
    QCOMPARE(model.rowCount(), 2);
    stores().setEntries(text("t"), {certificate("2")});
    QTRY_COMPARE(ids(model), QStringList({text("2")}));
}

void TestKeyStoreModel::removalElsewhere()
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

void TestKeyStoreModel::newBundleIsAnnounced()
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

void TestKeyStoreModel::invalidUpdate()
{
    KeyStoreModel model;
    QTest::ignoreMessage(QtWarningMsg, "Error: KeyStore not valid");
    QMetaObject::invokeMethod(&model, "ksUpdated", Qt::DirectConnection);
    QTest::ignoreMessage(QtWarningMsg, "Error: KeyStore not valid");
    addStore("n", "", {certificate("c")}); // nameless
    QTRY_VERIFY(model.keyStoreCount() > 0);
    QTest::qWait(100); // no row must come in this time
    QCOMPARE(model.rowCount(), 0);
}

void TestKeyStoreModel::busy()
{
    KeyStoreModel model;
    QTRY_VERIFY(!model.isBusy());
    QSignalSpy changed(&model, &KeyStoreModel::busyChanged);
    QSignalSpy ready(&model, &KeyStoreModel::keysReady);
    QSignalSpy notReady(&model, &KeyStoreModel::keysNotReady);
    QVector<bool> before; // what the first of the two signals finds
    connect(&model, &KeyStoreModel::keysNotReady, this, [&] { before << model.isBusy(); });
    connect(&model, &KeyStoreModel::keysReady, this, [&] { before << model.isBusy(); });
    QMetaObject::invokeMethod(&model, "ksmBusyStarted");
    QVERIFY(model.isBusy());
    QMetaObject::invokeMethod(&model, "ksmBusyStarted");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(notReady.count(), 2);
    QMetaObject::invokeMethod(&model, "ksmBusyFinished");
    QVERIFY(!model.isBusy());
    QCOMPARE(changed.count(), 2);
    QCOMPARE(ready.count(), 1);
    QCOMPARE(before, QVector<bool>({false, true, true}));
    model.setBusy(false);
    QCOMPARE(changed.count(), 2);
}

void TestKeyStoreModel::results()
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

void TestKeyStoreModel::storeAccessors()
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
    addStore("t2", "Token");
    QTRY_COMPARE(model.keyStoreCount(), count + 1);
    QCOMPARE(model.keyStoreByName(text("Token"))->id(), text("t")); // the first of that name
}

void TestKeyStoreModel::providerLookUp()
{
    QVariantMap config = {{text("left"), true}};
    QTest::ignoreMessage(QtWarningMsg, "Provider none not supported!");
    QCOMPARE(Trivex::lookUpProvider(text("none"), &config), nullptr);
    QCOMPARE(config, QVariantMap({{text("left"), true}}));
    QCOMPARE(Trivex::lookUpProvider(text("qca-norvel-pkcs11"), &config), m_fake);
    QVERIFY(!config.contains(text("left"))); // replaced, not added to
    QCOMPARE(config.value(text("x")), QVariant(1));
}

/// What it took this thread to take in `count` rows of one store.
void TestKeyStoreModel::takeRows(int count, qint64 *spent)
{
    QList<FakeEntry> entries;
    for (int i = 0; i < count; ++i)
        entries.append(certificate(QByteArray::number(i).constData()));
    addStore("t", "Token");
    KeyStoreModel model;
    CertificateModel system;
    system.setSourceModel(&model);
    QTRY_VERIFY(model.keyStoreByName(text("Token")));
    QTest::qWait(50); // its first, empty list, which shows nowhere
    qint64 first = 0;
    connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, [&] {
        if (first == 0)
            first = processorTime();
    });
    connect(&model, &QAbstractItemModel::rowsInserted, this,
            [&] { *spent = processorTime() - first; });
    // A turn of the event loop takes a few in, and whatever else waits has its turn then.
    int inThisTurn = 0;
    int most = 0;
    connect(&model, &QAbstractItemModel::rowsInserted, this,
            [&] { most = qMax(most, ++inThisTurn); });
    QTimer turn;
    connect(&turn, &QTimer::timeout, this, [&] { inThisTurn = 0; });
    turn.start(0);
    stores().setEntries(text("t"), entries);
    QTRY_COMPARE(model.rowCount(), count);
    QVERIFY2(most <= 100, qPrintable(QString::number(most)));
}

void TestKeyStoreModel::manyRows()
{
    constexpr int Rows = 5000;
    qint64 few = 0;
    takeRows(Rows / 4, &few);
    if (QTest::currentTestFailed())
        return;
    cleanup();
    qint64 many = 0;
    takeRows(Rows, &many);
    // Sixteen times where the work grows with the square of the rows, four times where it does not.
    QVERIFY2(many < 9 * few, qPrintable(QStringLiteral("%1 and %2 ns").arg(few).arg(many)));
}

QTEST_GUILESS_MAIN(TestKeyStoreModel)
#include "tst_keystoremodel.moc"
