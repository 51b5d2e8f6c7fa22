// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What a request finds in the key stores, and what it stores for them: with scripted stores.
#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/storedanswers.h"
#include "requests/certificaterequest.h"
#include "tests/fakes/provider/fakeprovider.h"
#include "tests/requests/home.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/testcertificates.h"
#include "tests/support/textlist.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

/// A request for `softwareKey()`.
QString makeRequestFile(const char *commonName)
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, text(commonName));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    const QString path = home->requests().filePath(text(commonName) + QStringLiteral(".csr"));
    const QCA::CertificateRequest request(options, softwareKey(), QStringLiteral("qca-ossl"));
    return request.toPEMFile(path) ? path : QString();
}

FakeEntry bundle(const char *id, const QCA::PrivateKey &key)
{
    QCA::CertificateChain chain;
    chain.append(softwareCertificate());
    QCA::KeyBundle bundle;
    bundle.setCertificateChainAndKey(chain, key);
    return {QCA::KeyStoreEntry::TypeKeyBundle, text(id), text(id), {}, bundle};
}

QCA::PrivateKey otherKey()
{
    static const QCA::PrivateKey key =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    return key;
}

/// Other stores have rows too.
bool hasRow(const KeyStoreModel &stores, const char *id)
{
    for (int row = 0; row < stores.rowCount(); ++row) {
        if (stores.index(row, 0).data(KeyStoreModel::EntryIdRole) == text(id))
            return true;
    }
    return false;
}

void ignoreMissingKey(const char *fileName)
{
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("PrivateKey of certificate request: %1 is null")
                                        .arg(QLatin1String(fileName))));
}

} // namespace

class TestRequestStores : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void providerWithoutFeatures();
    void algorithmsInTheirOrder();
    void locations();
    void answersForAGeneration();
    void noAnswersWithoutAGeneration();
    void rejectsTheWaitingQuestion();
    void editWithTheKeyOfABundle();
    void editWithSeveralValues();
    void otherKeysAreNoMatch();
    void otherStoresAreNotSearched();

private:
    void install(const QStringList &features);
    void addStore(const char *name, const QList<FakeEntry> &entries,
                  QCA::KeyStore::Type type = QCA::KeyStore::SmartCard);
    void choose(CertificateRequest *request, KeyStoreModel *stores, int algorithm);

    FakeProvider *m_fake = nullptr;
};

void TestRequestStores::install(const QStringList &features)
{
    m_fake = FakeProvider::install(Trivex::pkcs11ProviderName(), features);
    QVERIFY(m_fake);
    m_fake->setDefaultConfig({{text("formtype"), text("test")}, {text("x"), 1}});
}

void TestRequestStores::initTestCase()
{
    Trivex::rankProviders();
    QVERIFY(!softwareKey().isNull());
}

void TestRequestStores::cleanup()
{
    if (m_fake)
        m_fake->stores->reset();
    home->clearRequests();
}

void TestRequestStores::addStore(const char *name, const QList<FakeEntry> &entries,
                                 QCA::KeyStore::Type type)
{
    m_fake->stores->addStore({text(name) + QStringLiteral("-id"), text(name), type, entries});
}

void TestRequestStores::choose(CertificateRequest *request, KeyStoreModel *stores, int algorithm)
{
    request->setKeyStoreModel(stores);
    request->init();
    request->setPrKeyAlgorithmId(algorithm);
    request->setKeyIdentifier(QStringLiteral("my key"));
    request->setPrKeyPin(QStringLiteral("1234"));
    const ComboBoxModel *locations = stores->certLocationModel();
    for (int row = 0; row < locations->rowCount(); ++row) {
        if (locations->rowAt(row).type == QLatin1String("Token"))
            request->setPrKeyLocationIndex(row);
    }
    QVERIFY(request->prKeyLocationIndex() >= 0);
}

void TestRequestStores::providerWithoutFeatures()
{
    install({});
    {
        KeyStoreModel stores;
        QVERIFY(stores.isProviderReady());
        CertificateRequest request;
        request.setKeyStoreModel(&stores);
        QTest::ignoreMessage(QtWarningMsg, "provider features is empty!");
        request.init();
        QCOMPARE(request.prKeyAlgorithm()->rowCount(), 0);
        QCOMPARE(request.prKeyAlgorithmId(), -1);
        QCOMPARE(request.prKeyLocation(), stores.certLocationModel());
    }
    QVERIFY(QCA::unloadProvider(Trivex::pkcs11ProviderName()));
    install(list({"keystorelist", "ec", "rsa", "pkey"}));
}

void TestRequestStores::algorithmsInTheirOrder()
{
    KeyStoreModel stores;
    CertificateRequest request;
    request.setKeyStoreModel(&stores);
    QAbstractListModel *model = request.prKeyAlgorithm();
    QVector<int> appended;
    connect(model, &QAbstractItemModel::rowsInserted, this,
            [&](const QModelIndex &, int first, int last) {
                QCOMPARE(first, last);
                appended << model->index(first).data(ComboBoxModel::IdRole).toInt();
            });
    request.init();
    QCOMPARE(appended, QVector<int>({2048, 3072, 4096, 384}));
    QCOMPARE(request.prKeyAlgorithmId(), 384);
}

void TestRequestStores::locations()
{
    addStore("Token", {});
    KeyStoreModel stores;
    QTRY_VERIFY(stores.keyStoreByName(text("Token")));
    CertificateRequest request;
    choose(&request, &stores, 2048);
    struct Location {
        int id;
        QString name;
        int shownId;
        const char *text;
    };
    const QString name = QStringLiteral("name");
    const Location expected[] = {
        {KeyStoreModel::HW, name, 0, "trivex-me-hardware"},
        {KeyStoreModel::TrustZone, name, 1, "trivex-me-norvel_tee"},
        {KeyStoreModel::SoftHSM, name, 2, "trivex-me-softhsm"},
        {KeyStoreModel::Unknown, name, 3, ""},
        {7, name, 7, ""},
        // Without texts it counts as no choice.
        {KeyStoreModel::HW, QString(), 3, "trivex-me-hardware"},
    };
    ComboBoxModel *list = stores.certLocationModel();
    for (const Location &location : expected) {
        const bool isToken = location.id == KeyStoreModel::SoftHSM;
        list->addRow(location.id, location.name, isToken ? text("Token") : QString());
        request.setPrKeyLocationIndex(list->rowCount() - 1);
        QCOMPARE(request.prKeyLocationId(), location.shownId);
        QCOMPARE(request.privateKeyLocation(), text(location.text));
        if (!isToken)
            request.createKeyPair();
    }
    QVERIFY(m_fake->stores->calls().isEmpty());
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
}

void TestRequestStores::answersForAGeneration()
{
    addStore("Token", {});
    KeyStoreModel stores;
    QTRY_VERIFY(stores.keyStoreByName(text("Token")));
    CertificateRequest request;
    choose(&request, &stores, 2048);
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    // The scripted provider takes none of them.
    const auto answers = Trivex::takeStoredAnswers(text("Token-id"));
    QVERIFY(answers);
    QCOMPARE(answers->password.toByteArray(), QByteArray("1234"));
    QCOMPARE(answers->objectId, QStringLiteral("my key"));
    QCOMPARE(answers->keyStoreId, text("Token-id"));
    QVERIFY(done.wait(5000));
}

void TestRequestStores::noAnswersWithoutAGeneration()
{
    addStore("Token", {});
    KeyStoreModel stores;
    QTRY_VERIFY(stores.keyStoreByName(text("Token")));
    CertificateRequest request;
    choose(&request, &stores, 1024);
    request.createKeyPair();
    QVERIFY(!Trivex::takeStoredAnswers(QString()));
    // Not even the PIN alone, for the next operation would add its store to it.
    QcaHandler *handler = stores.askerThread()->startedHandler();
    QVERIFY(handler);
    handler->setKeyStoreId(text("Token-id"));
    QVERIFY(Trivex::takeStoredAnswers(text("Token-id"))->password.isEmpty());
    QVERIFY(m_fake->stores->calls().isEmpty());
}

void TestRequestStores::rejectsTheWaitingQuestion()
{
    KeyStoreModel stores;
    QVERIFY(stores.askerThread()->startedHandler());
    CertificateRequest request;
    request.setKeyStoreModel(&stores);
    QCA::TokenAsker asker;
    QSignalSpy ready(&asker, &QCA::TokenAsker::responseReady);
    asker.ask({}, {}, nullptr);
    QTest::qWait(200); // no answer must come in this time
    QCOMPARE(ready.count(), 0);
    request.pinRejected();
    QTRY_COMPARE(ready.count(), 1);
    QVERIFY(!asker.accepted());
}

void TestRequestStores::editWithTheKeyOfABundle()
{
    FakeEntry certificate{
        QCA::KeyStoreEntry::TypeCertificate, text("c"), text("c"), softwareCertificate(), {}};
    addStore("A", {certificate, bundle("foreign", foreignKey()), bundle("other", otherKey())});
    addStore("B", {bundle("keyless", QCA::PrivateKey()), bundle("mine", softwareKey())});
    KeyStoreModel stores;
    QTRY_VERIFY(hasRow(stores, "other") && hasRow(stores, "mine"));
    CertificateRequest request(makeRequestFile("Old"), &stores);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    QCOMPARE(request.privateKeyAvailability(), QString());
    request.setCommonName(QStringLiteral("New"));
    request.setEditMode(true);
    QCOMPARE(missing.count(), 0);
    QCOMPARE(created.count(), 1);
    QCOMPARE(home->requestFiles(), list({"New.csr"}));
    QCOMPARE(request.privateKeyAvailability(), qtTrId("trivex-p-la-private_available"));
    const TestAuthority authority;
    const QByteArray verified =
        authority.openssl({text("req"), text("-verify"), text("-noout"), text("-subject"),
                           text("-nameopt"), text("RFC2253"), text("-in"), request.filePath()});
    QVERIFY2(verified.contains("CN=New"), verified.constData());
    const QCA::PublicKey key = request.requestPublicKey();
    QCOMPARE(key.toRSA().n().toArray(), softwareKey().toPublicKey().toRSA().n().toArray());
}

void TestRequestStores::editWithSeveralValues()
{
    addStore("B", {bundle("mine", softwareKey())});
    KeyStoreModel stores;
    QTRY_VERIFY(hasRow(stores, "mine"));
    CertificateRequest request(makeRequestFile("A"), &stores);
    request.setCommonName(QString());
    request.setCommonName(QStringLiteral("B"));
    request.setCountry(QStringLiteral("Moscow"));
    request.setSnils(QStringLiteral("11223344595"));
    request.setTin(QStringLiteral("500100732259"));
    request.setEditMode(true);
    // The last one inserted names the file, and the request carries both.
    QCOMPARE(home->requestFiles(), list({"B.csr"}));
    const TestAuthority authority;
    const QByteArray subject =
        authority.openssl({text("req"), text("-noout"), text("-subject"), text("-nameopt"),
                           text("sep_multiline,sname"), text("-in"), request.filePath()});
    QList<QByteArray> lines = subject.trimmed().split('\n').mid(1);
    for (QByteArray &line : lines)
        line = line.trimmed();
    std::sort(lines.begin(), lines.end());
    QCOMPARE(lines, QList<QByteArray>({"CN=A", "CN=B", "ST=Moscow"}));
    QCOMPARE(CertificateRequest(request.filePath(), nullptr).subjectCountry(),
             QStringLiteral("Moscow"));
}

void TestRequestStores::otherKeysAreNoMatch()
{
    addStore("A", {bundle("foreign", foreignKey()), bundle("other", otherKey())});
    KeyStoreModel stores;
    QTRY_VERIFY(hasRow(stores, "other"));
    CertificateRequest request(makeRequestFile("Old"), &stores);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    request.setCommonName(QStringLiteral("New"));
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(missing.count(), 1);
    QCOMPARE(home->requestFiles(), list({"New.csr"}));
    QCOMPARE(CertificateRequest(request.filePath(), nullptr).commonName(), QStringLiteral("Old"));
}

void TestRequestStores::otherStoresAreNotSearched()
{
    addStore("S", {bundle("mine", softwareKey())}, QCA::KeyStore::System);
    KeyStoreModel stores;
    QTRY_VERIFY(stores.keyStoreByName(text("S")));
    QTRY_VERIFY(hasRow(stores, "mine"));
    CertificateRequest request(makeRequestFile("Old"), &stores);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(missing.count(), 1);
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    home->clearRequests();
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestRequestStores test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requeststores.moc"
