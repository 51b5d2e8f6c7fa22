// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The life of requests with keys on a real software token, checked with the openssl program.
#include "keystores/comboboxmodel.h"
#include "keystores/keystoremodel.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/infotypes.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/requests/home.h"
#include "tests/support/locations.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;
FaultyToken *spy = nullptr;
const TestToken *token = nullptr;
constexpr int Patience = 30000; // ms

/// What `openssl req` says of the file, after checking its signature.
QString verified(const QString &path)
{
    const TestAuthority authority;
    return QString::fromUtf8(authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-in"), path,
         QStringLiteral("-noout"), QStringLiteral("-subject"), QStringLiteral("-nameopt"),
         QStringLiteral("utf8,sep_comma_plus_space")}));
}

} // namespace

class TestRequestToken : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void algorithms();
    void otherLocations();
    void lives_data();
    void lives();
    void rsaParameters();
    void editsStrangersRequests();
    void wrongPin();
    void wrongPinWhileLoggedIn();
    void secondGenerationMeanwhile();
    void destroyedMeanwhile();
    void storeGone();
    void unknownAlgorithm();

private:
    int row() const;
    void choose(CertificateRequest *request, int algorithm, const QString &identifier);

    std::unique_ptr<KeyStoreModel> m_stores;
};

void TestRequestToken::initTestCase()
{
    m_stores = std::make_unique<KeyStoreModel>();
    QVERIFY(m_stores->isProviderReady());
    // Other providers have stores too.
    QTRY_VERIFY(row() >= 0);
    QTRY_VERIFY(m_stores->askerThread()->handler());
}

/// The token's row in the list of locations.
int TestRequestToken::row() const
{
    return TrivexTest::locationOf(*m_stores, token->label());
}

void TestRequestToken::init()
{
    home->clearRequests();
}

void TestRequestToken::choose(CertificateRequest *request, int algorithm, const QString &identifier)
{
    request->setKeyStoreModel(m_stores.get());
    request->init();
    request->setPrKeyAlgorithmId(algorithm);
    request->setPrKeyLocationIndex(row());
    request->setKeyIdentifier(identifier);
    request->setPrKeyPin(QString::fromLatin1(TestToken::pin()));
}

void TestRequestToken::algorithms()
{
    CertificateRequest request;
    request.setKeyStoreModel(m_stores.get());
    QCOMPARE(request.prKeyAlgorithm()->rowCount(), 0);
    QSignalSpy changed(&request, &CertificateRequest::prKeyAlgorithmIdChanged);
    request.init();
    QCOMPARE(changed.count(), 0);
    QAbstractListModel *model = request.prKeyAlgorithm();
    QMap<int, QString> types;
    for (int row = 0; row < model->rowCount(); ++row)
        types.insert(model->index(row).data(ComboBoxModel::IdRole).toInt(),
                     model->index(row).data(ComboBoxModel::TypeRole).toString());
    const QMap<int, QString> expected{{2048, QStringLiteral("rsa")},
                                      {3072, QStringLiteral("rsa")},
                                      {4096, QStringLiteral("rsa")},
                                      {384, QStringLiteral("ec")}};
    QCOMPARE(types, expected);
    QCOMPARE(request.prKeyAlgorithmId(), model->index(0).data(ComboBoxModel::IdRole).toInt());
    QCOMPARE(request.prKeyAlgorithmId(), 384);
    QCOMPARE(request.prKeyLocation(), m_stores->certLocationModel());
    request.init();
    QCOMPARE(model->rowCount(), 8);
}

void TestRequestToken::otherLocations()
{
    CertificateRequest request;
    choose(&request, 2048, QStringLiteral("nothing"));
    QCOMPARE(request.prKeyLocationId(), 2);
    QCOMPARE(request.privateKeyLocation(), qtTrId("trivex-me-softhsm"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    const int rows = m_stores->certLocationModel()->rowCount();
    request.setPrKeyLocationIndex(rows);
    QCOMPARE(request.prKeyLocationId(), 3);
    QCOMPARE(request.privateKeyLocation(), QString());
    request.createKeyPair();
    request.setPrKeyLocationIndex(-1);
    request.createKeyPair();
    // Rows of the other kinds, which the key store model itself never makes.
    m_stores->certLocationModel()->addRow(0, QStringLiteral("card"), token->label());
    m_stores->certLocationModel()->addRow(1, QStringLiteral("chip"), token->label());
    for (const int location : {0, 1}) {
        request.setPrKeyLocationIndex(rows + location);
        QCOMPARE(request.prKeyLocationId(), location);
        request.createKeyPair();
    }
    QCOMPARE(request.privateKeyLocation(), qtTrId("trivex-me-norvel_tee"));
    m_stores->certLocationModel()->addRow(2, QStringLiteral("gone"), QStringLiteral("no store"));
    request.setPrKeyLocationIndex(rows + 2);
    QTest::ignoreMessage(QtWarningMsg, "void CertificateRequest::createKeyPair() KeyStore is null");
    request.createKeyPair();
    QTest::qWait(500); // no key must be made in this time
    QCOMPARE(done.count(), 0);
    QCOMPARE(token->objectCount(), 0);
}

void TestRequestToken::lives_data()
{
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QString>("kind");
    QTest::newRow("RSA") << 2048 << "RSA";
    QTest::newRow("EC") << 384 << "Elliptic Curve";
}

void TestRequestToken::lives()
{
    QFETCH(int, algorithm);
    QFETCH(QString, kind);
    const int objectsBefore = token->objectCount();
    CertificateRequestModel list;
    list.setKeyStoreModel(m_stores.get());

    CertificateRequest request;
    choose(&request, algorithm, QStringLiteral("my key"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    QCOMPARE(request.privateKeyAvailability(), QString());
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    QCOMPARE(token->objectCount(), objectsBefore + 2);
    QCOMPARE(request.privateKeyAvailability(), qtTrId("trivex-p-la-private_available"));
    QCOMPARE(request.publicKeyTypeAlgorithm(), kind);

    request.setCommonName(QString::fromUtf8("Иванов Иван"));
    request.setCountryCode(QStringLiteral("RU"));
    request.createRequest();
    QCOMPARE(created.count(), 1);
    const QString path = request.filePath();
    QVERIFY(QFile::exists(path));
    QVERIFY2(verified(path).contains(QString::fromUtf8("CN=Иванов Иван")),
             qPrintable(verified(path)));
    QTRY_COMPARE(list.rowCount(), 1);

    // Opened again and edited: the key has no certificate yet, the token knows it all the same.
    auto *saved =
        list.index(0).data(CertificateRequestModel::CertificateRole).value<CertificateRequest *>();
    QPointer<CertificateRequest> guard(saved);
    QSignalSpy missing(saved, &CertificateRequest::missingPrivateKey);
    saved->setCommonName(QStringLiteral("Petrov"));
    saved->setEditMode(true);
    QCOMPARE(missing.count(), 0);
    QVERIFY(!QFile::exists(path));
    const QString edited = home->requests().filePath(QStringLiteral("Petrov.csr"));
    QVERIFY2(verified(edited).contains(QStringLiteral("CN=Petrov")), qPrintable(verified(edited)));
    QTRY_VERIFY(!guard);
    QCOMPARE(list.rowCount(), 1);

    // A restart removes nothing: the bare key is no bundle.
    {
        KeyStoreModel restarted;
        CertificateRequestModel again;
        again.setKeyStoreModel(&restarted);
        QTRY_VERIFY(restarted.certLocationModel()->rowCount() > 0);
        QTest::qWait(1000); // the file must stay in this time
        QVERIFY(QFile::exists(edited));
    }

    // The certificate arrives.
    const TestAuthority authority;
    const QByteArray certificate = authority.issueForRequest(edited);
    QVERIFY(!certificate.isEmpty());
    const QCA::Certificate issued =
        QCA::Certificate::fromDER(certificate, nullptr, QStringLiteral("qca-norvel-openssl"));
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("issued.pem"));
    QVERIFY(issued.toPEMFile(file));
    QSignalSpy arrived(m_stores.get(), &KeyStoreModel::keyBundleWritten);
    QVERIFY(m_stores->certificateFromPEMFile(file));
    m_stores->setCertLocationId(row());
    m_stores->importCertificate();
    QTRY_COMPARE_WITH_TIMEOUT(arrived.count(), 1, Patience);
    QTRY_VERIFY(!QFile::exists(edited));
    QTRY_COMPARE(list.rowCount(), 0);
}

void TestRequestToken::rsaParameters()
{
    CertificateRequest request;
    choose(&request, 3072, QStringLiteral("large key"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    request.setCommonName(QStringLiteral("Large"));
    request.createRequest();
    const QCA::RSAPublicKey key = request.requestPublicKey().toRSA();
    QCOMPARE(key.bitSize(), 3072);
    QCOMPARE(key.e().toString(), QStringLiteral("3"));
}

/// One attempt, an error that says so, and nothing anywhere of what was wanted.
void TestRequestToken::wrongPin()
{
    const QString storeId = m_stores->keyStoreByName(token->label())->id();
    QVERIFY(spy->replug(storeId)); // ends the login
    spy->control("tries 5");
    const int objectsBefore = token->objectCount();
    CertificateRequest request;
    choose(&request, 2048, QStringLiteral("wrong"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    request.setPrKeyPin(QStringLiteral("wrong"));
    spy->forget();
    request.createKeyPair();
    QVERIFY(failed.wait(Patience));
    const auto error = failed.first().first().value<Trivex::TokenError>();
    QCOMPARE(error.kind, Trivex::TokenError::WrongPin);
    QCOMPARE(error.purpose, Trivex::Purpose::Generate);
    QCOMPARE(error.keyStoreId, storeId);
    QCOMPARE(error.function, QStringLiteral("C_Login"));
    QTRY_COMPARE(Trivex::TokenMonitor::token(storeId).pinState, Trivex::PinState::CountLow);
    QVERIFY(!done.wait(1000)); // longer than the token is looked at again
    QCOMPARE(failed.count(), 1);
    QCOMPARE(spy->count("C_Login"), 1);
    QCOMPARE(spy->countText("C_Login CKR_PIN_INCORRECT"), 1);
    QCOMPARE(spy->count("C_GenerateKeyPair"), 0);
    QCOMPARE(token->objectCount(), objectsBefore);
    QCOMPARE(request.privateKeyAvailability(), QString());
    request.setCommonName(QStringLiteral("Nobody"));
    QTest::ignoreMessage(QtWarningMsg, "Error: missing private key");
    request.createRequest();
    QCOMPARE(missing.count(), 1);
    QVERIFY(home->requestFiles().isEmpty());

    // The next one works, with one attempt of its own.
    request.setPrKeyPin(QString::fromLatin1(TestToken::pin()));
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    QCOMPARE(spy->count("C_Login"), 2);
    QCOMPARE(spy->countText("C_Login CKR_PIN_INCORRECT"), 1);
    QCOMPARE(token->objectCount(), objectsBefore + 2);
    spy->control();
}

/// A token that is logged in looks at no PIN. A wrong one is gone all the same, and never reaches
/// the token when the login has ended.
void TestRequestToken::wrongPinWhileLoggedIn()
{
    const QString storeId = m_stores->keyStoreByName(token->label())->id();
    CertificateRequest request;
    choose(&request, 384, QStringLiteral("logged in"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    request.setPrKeyPin(QStringLiteral("wrong"));
    spy->forget();
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    QCOMPARE(done.count(), 2);
    QCOMPARE(spy->count("C_Login"), 0);
    QVERIFY(spy->replug(storeId));
    const auto root = QCA::Certificate::fromDER(TestAuthority().certificate(), nullptr,
                                                QStringLiteral("qca-norvel-openssl"));
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    m_stores->keyStoreByName(token->label())->writeEntry(root);
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, Patience);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind,
             Trivex::TokenError::PinMissing);
    QCOMPARE(spy->count("C_Login"), 0);
}

void TestRequestToken::secondGenerationMeanwhile()
{
    const int objectsBefore = token->objectCount();
    CertificateRequest request;
    choose(&request, 4096, QStringLiteral("twice"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    request.createKeyPair();
    QVERIFY(done.wait(Patience));
    QTest::qWait(500); // no second end must come in this time
    QCOMPARE(done.count(), 1);
    QCOMPARE(token->objectCount(), objectsBefore + 2);
}

void TestRequestToken::destroyedMeanwhile()
{
    const int objectsBefore = token->objectCount();
    auto request = std::make_unique<CertificateRequest>();
    choose(request.get(), 4096, QStringLiteral("abandoned"));
    spy->forget();
    spy->control("delay C_GenerateKeyPair 1 200");
    request->createKeyPair();
    QVERIFY(spy->waitUntilInside("C_GenerateKeyPair"));
    request.reset();
    // The token goes on to the end of the pair and then takes it away. Other processes, as the next
    // test's, have to wait for that: SoftHSM takes its own write for the only one, and does not see
    // what another process has written meanwhile.
    QTRY_COMPARE_WITH_TIMEOUT(spy->count("C_GenerateKeyPair"), 1, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(spy->count("C_DestroyObject") >= 2, Patience);
    spy->control();
    QTRY_COMPARE_WITH_TIMEOUT(token->objectCount(), objectsBefore, Patience);
}

void TestRequestToken::storeGone()
{
    CertificateRequest request;
    choose(&request, 2048, QStringLiteral("no model"));
    KeyStoreModel *second = new KeyStoreModel;
    request.setKeyStoreModel(second);
    delete second;
    request.createKeyPair();
    request.pinRejected();
    request.setCommonName(QStringLiteral("A"));
    QTest::ignoreMessage(QtWarningMsg, "Error: missing private key");
    request.createRequest();
}

void TestRequestToken::unknownAlgorithm()
{
    const int objectsBefore = token->objectCount();
    CertificateRequest request;
    choose(&request, 1024, QStringLiteral("small"));
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    QVERIFY(!done.wait(500));
    QCOMPARE(token->objectCount(), objectsBefore);
}

/// Another program's request for a key of the token keeps what the edit does not touch.
void TestRequestToken::editsStrangersRequests()
{
    const TestAuthority authority;
    const QString key = authority.file(QStringLiteral("key.pem"));
    const QString path = home->requests().filePath(QStringLiteral("foreign.csr"));
    const auto openssl = [&](const char *arguments, const QStringList &further = {}) {
        return authority.openssl(QString::fromLatin1(arguments).split(QLatin1Char(' ')) + further);
    };
    openssl("genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out", {key});
    openssl(
        "req -new -utf8 -addext subjectAltName=DNS:a.example.org,IP:192.0.2.1,RID:1.2.3.4"
        " -addext keyUsage=critical,digitalSignature -addext 1.2.3.4.5=ASN1:UTF8String:odd -key",
        {key, QStringLiteral("-subj"), QStringLiteral("/O=First/CN=Old/OU=North+OU=South"),
         QStringLiteral("-out"), path});
    const QString id = QStringLiteral("77");
    const QByteArray privateDer = openssl("pkey -outform DER -in", {key});
    const QByteArray publicDer = openssl("pkey -pubout -outform DER -in", {key});
    QVERIFY(token->writeObject(QStringLiteral("privkey"), privateDer, id, QStringLiteral("mine")));
    QVERIFY(token->writeObject(QStringLiteral("pubkey"), publicDer, id, QStringLiteral("mine")));
    QVERIFY(spy->replug(m_stores->keyStoreByName(token->label())->id()));

    CertificateRequest request(path, m_stores.get());
    QTRY_VERIFY_WITH_TIMEOUT(request.hasRequestKey(), Patience);
    QCA::CertificateInfo info = request.requestInfo();
    QCOMPARE(info.values(Trivex::infoType(Trivex::CommonNameInfo)),
             QStringList{QStringLiteral("Old")});
    info.remove(Trivex::infoType(Trivex::CommonNameInfo));
    info.insert(Trivex::infoType(Trivex::CommonNameInfo), QStringLiteral("New"));
    request.setRequestInfo(info);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    const PinPrompt prompt(TestToken::pin());
    request.setEditMode(true);
    QCOMPARE(created.count(), 1);
    const QString edited = home->requests().filePath(QStringLiteral("New.csr"));
    QCOMPARE(request.filePath(), edited);
    QVERIFY2(verified(edited).contains(QStringLiteral("O=First, CN=New, OU=North + OU=South")),
             qPrintable(verified(edited)));
    const QByteArray text = openssl("req -text -noout -in", {edited});
    for (const char *kept : {"DNS:a.example.org, IP Address:192.0.2.1, Registered ID:1.2.3.4",
                             "X509v3 Key Usage: critical", "1.2.3.4.5:"})
        QVERIFY2(text.contains(kept), text.constData());
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    FaultyToken softwareToken(QStringLiteral("Trivex Test"));
    spy = &softwareToken;
    token = &softwareToken.token();
    softwareToken.useInThisProcess();
    QCoreApplication application(argc, argv);
    if (!token->isValid()) {
        qInfo("SKIP %s", qPrintable(token->problem()));
        return 0;
    }
    const QCA::Initializer initializer;
    TestRequestToken test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requesttoken.moc"
