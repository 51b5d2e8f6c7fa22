// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What a request asks the providers for: which of them, by which names, with which numbers.
#include "keystores/keystoremodel.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/storedanswers.h"
#include "requests/certificaterequest.h"
#include "tests/fakes/provider/fakeprovider.h"
#include "tests/requests/home.h"
#include "tests/support/textlist.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;
const QString Pkcs11 = QStringLiteral("qca-norvel-pkcs11");
const QString Gost = QStringLiteral("qca-norvel-gost");

} // namespace

class TestKeyPairs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void features_data();
    void features();
    void generation_data();
    void generation();
    void missingFeature_data();
    void missingFeature();
    void requestFeature_data();
    void requestFeature();

private:
    void choose(CertificateRequest *request, int algorithm);

    FakeProvider *m_pkcs11 = nullptr;
    FakeProvider *m_gost = nullptr;
    std::unique_ptr<KeyStoreModel> m_stores;
};

void TestKeyPairs::initTestCase()
{
    // What the machine has can make requests too, and QCA loads it again at the next question.
    QStringList names;
    const QCA::ProviderList providers = QCA::providers();
    for (const QCA::Provider *provider : providers)
        names.append(provider->name());
    QVariantMap configuration = QCA::getProviderConfig(QStringLiteral("default"));
    configuration.insert(QStringLiteral("skip_plugins"), names.join(QLatin1Char(',')));
    QCA::setProviderConfig(QStringLiteral("default"), configuration);
    for (const QString &name : qAsConst(names))
        QCA::unloadProvider(name);
    QVERIFY(!QCA::isSupported("csr"));
    m_pkcs11 = FakeProvider::install(Pkcs11, {});
    m_gost = FakeProvider::install(Gost, {});
    QVERIFY(m_pkcs11 && m_gost);
    m_pkcs11->setDefaultConfig({{QStringLiteral("formtype"), QStringLiteral("test")}});
    init();
    m_pkcs11->stores->addStore(
        {QStringLiteral("token-id"), QStringLiteral("Token"), QCA::KeyStore::SmartCard, {}});
    m_stores = std::make_unique<KeyStoreModel>();
    QVERIFY(m_stores->isProviderReady());
    QTRY_COMPARE(m_stores->certLocationModel()->rowCount(), 1);
}

/// What the real providers offer.
void TestKeyPairs::init()
{
    m_pkcs11->setFeatures(list({"keystorelist", "pkey", "rsa", "ec", "csr"}));
    m_gost->setFeatures(list({"pkey", "ec"}));
    m_pkcs11->stores->forgetCalls();
    m_gost->stores->forgetCalls();
    home->clearRequests();
}

void TestKeyPairs::choose(CertificateRequest *request, int algorithm)
{
    request->setKeyStoreModel(m_stores.get());
    request->init();
    request->setPrKeyAlgorithmId(algorithm);
    request->setPrKeyLocationIndex(0);
    QCOMPARE(request->prKeyLocationId(), 2);
}

void TestKeyPairs::features_data()
{
    QTest::addColumn<QStringList>("features");
    QTest::addColumn<QVector<int>>("algorithms");
    using Algorithms = QVector<int>;
    QTest::newRow("both") << list({"rsa", "ec"}) << Algorithms{2048, 3072, 4096, 384};
    QTest::newRow("other order") << list({"ec", "rsa"}) << Algorithms{2048, 3072, 4096, 384};
    QTest::newRow("RSA alone") << list({"rsa", "pkey"}) << Algorithms{2048, 3072, 4096};
    QTest::newRow("EC alone") << list({"ec"}) << Algorithms{384};
    QTest::newRow("upper case") << list({"RSA", "EC"}) << Algorithms{};
    QTest::newRow("RSA in upper case") << list({"RSA", "ec"}) << Algorithms{384};
    QTest::newRow("EC in upper case") << list({"rsa", "EC"}) << Algorithms{2048, 3072, 4096};
    QTest::newRow("parts of names") << list({"rsa2", "xec"}) << Algorithms{};
}

/// The choice of algorithms follows the names of features exactly.
void TestKeyPairs::features()
{
    QFETCH(QStringList, features);
    QFETCH(QVector<int>, algorithms);
    m_pkcs11->setFeatures(features);
    CertificateRequest request;
    request.setKeyStoreModel(m_stores.get());
    request.init();
    QVector<int> offered;
    QStringList types;
    auto *model = qobject_cast<ComboBoxModel *>(request.prKeyAlgorithm());
    for (int row = 0; row < model->rowCount(); ++row) {
        offered.append(model->rowAt(row).id);
        types.append(model->rowAt(row).type);
    }
    // The model sorts them by their texts.
    QCOMPARE(QSet<int>(offered.begin(), offered.end()),
             QSet<int>(algorithms.begin(), algorithms.end()));
    QCOMPARE(offered.size(), algorithms.size());
    for (int row = 0; row < offered.size(); ++row)
        QCOMPARE(types.at(row),
                 offered.at(row) == 384 ? QStringLiteral("ec") : QStringLiteral("rsa"));
}

void TestKeyPairs::generation_data()
{
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QString>("provider");
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("arguments");
    // Bits, public exponent or curve, and that nobody waits.
    QTest::newRow("2048") << 2048 << Pkcs11 << "createRSA"
                          << "2048 3 0";
    QTest::newRow("3072") << 3072 << Pkcs11 << "createRSA"
                          << "3072 3 0";
    QTest::newRow("4096") << 4096 << Pkcs11 << "createRSA"
                          << "4096 3 0";
    QTest::newRow("384") << 384 << Gost << "createEC"
                         << "ec-secp384r1 0";
    for (const int other : {0, -1, 1024, 256, 2049})
        QTest::addRow("no algorithm %d", other) << other << QString() << QString() << QString();
}

void TestKeyPairs::generation()
{
    QFETCH(int, algorithm);
    QFETCH(QString, provider);
    QFETCH(QString, function);
    QFETCH(QString, arguments);
    CertificateRequest request;
    choose(&request, algorithm);
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    QTRY_VERIFY(m_stores->askerThread()->handler());
    request.setPrKeyPin(QStringLiteral("1234"));
    request.createKeyPair();
    // Without a generation nobody takes the PIN, and it must not serve what comes next.
    const auto answers = Trivex::takeStoredAnswers(QStringLiteral("token-id"));
    QCOMPARE(answers.has_value(), !function.isEmpty());
    // The signal comes afterwards, never from within.
    QCOMPARE(done.count(), 0);
    const QVector<FakeCall> calls = m_pkcs11->stores->calls() + m_gost->stores->calls();
    if (function.isEmpty()) {
        QVERIFY(calls.isEmpty());
        QVERIFY(!done.wait(100));
        return;
    }
    QCOMPARE(calls.size(), 1);
    QCOMPARE((provider == Gost ? m_gost : m_pkcs11)->stores->calls().size(), 1);
    QCOMPARE(calls.first().function, function);
    QCOMPARE(calls.first().argument, arguments);
    QVERIFY(done.wait(5000));
    QCOMPARE(done.count(), 1);
    QCOMPARE(request.privateKeyAvailability(), qtTrId("trivex-p-la-private_available"));
}

void TestKeyPairs::missingFeature_data()
{
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QStringList>("pkcs11");
    QTest::addColumn<QStringList>("gost");
    const QStringList all = list({"keystorelist", "pkey", "rsa", "ec"});
    QTest::newRow("no rsa") << 2048 << list({"keystorelist", "pkey", "ec"}) << all;
    QTest::newRow("RSA") << 2048 << list({"keystorelist", "pkey", "RSA"}) << all;
    QTest::newRow("no pkey for rsa") << 2048 << list({"keystorelist", "rsa"}) << all;
    QTest::newRow("no ec") << 384 << all << list({"pkey", "rsa"});
    QTest::newRow("EC") << 384 << all << list({"pkey", "EC"});
    QTest::newRow("no pkey for ec") << 384 << all << list({"ec"});
}

/// No other provider is taken instead, whatever it could do.
void TestKeyPairs::missingFeature()
{
    QFETCH(int, algorithm);
    QFETCH(QStringList, pkcs11);
    QFETCH(QStringList, gost);
    m_pkcs11->setFeatures(pkcs11);
    m_gost->setFeatures(gost);
    CertificateRequest request;
    choose(&request, algorithm);
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    request.createKeyPair();
    QVERIFY(!done.wait(200));
    QVERIFY(m_pkcs11->stores->calls().isEmpty());
    QVERIFY(m_gost->stores->calls().isEmpty());
    QCOMPARE(request.privateKeyAvailability(), QString());
}

void TestKeyPairs::requestFeature_data()
{
    QTest::addColumn<QString>("feature");
    QTest::newRow("none") << "";
    QTest::newRow("upper case") << "CSR";
    QTest::newRow("part of a name") << "csr2";
}

void TestKeyPairs::requestFeature()
{
    QFETCH(QString, feature);
    m_pkcs11->setFeatures(list({"keystorelist", "pkey", "rsa", "ec"}) << feature);
    CertificateRequest request;
    choose(&request, 2048);
    QSignalSpy done(&request, &CertificateRequest::createKeyPairDone);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    request.createKeyPair();
    QVERIFY(done.wait(5000));
    request.setCommonName(QStringLiteral("Anna"));
    QTest::ignoreMessage(QtWarningMsg, "Error: need' \"csr\" ' feature");
    request.createRequest();
    QCOMPARE(created.count(), 0);
    QVERIFY(home->requestFiles().isEmpty());
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestKeyPairs test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keypairs.moc"
