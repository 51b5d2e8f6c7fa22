// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/certificateinfo.h"
#include "tests/pkcs11/gostfixture.h"

#include <openssl/evp.h>

using namespace TrivexTest;

/// GOST keys that come to a token: made there, paired with certificates, imported.
class TestGostKeys : public GostFixture {
    Q_OBJECT
private Q_SLOTS:
    void processHasTheEngineOrNot();
    void generation_data();
    void generation();
    void unknownNames();
    void wrongAndMissingPin();
    void failedGenerationLeavesNothing();
    void tokenWithoutTheMechanism();
    void pairingBeforeLogin_data();
    void pairingBeforeLogin();
    void lyingToken_data();
    void lyingToken();
    void keyOf2001();
    void importOfBundle_data();
    void importOfBundle();
    void bundleThatFailsHalfWay();
};

void TestGostKeys::processHasTheEngineOrNot()
{
    const QCA::PrivateKey key = generate(QStringLiteral("gost2012-256"), QStringLiteral("engine"));
    const bool wanted = !qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE");
    QCOMPARE(EVP_get_digestbyname("md_gost12_256") != nullptr, wanted);
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Engine")).isEmpty());
}

void TestGostKeys::generation_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bits");
    for (const char *name :
         {"gost2012-256", "id-GostR3410-2001-CryptoPro-A-ParamSet",
          "id-GostR3410-2001-CryptoPro-B-ParamSet", "id-GostR3410-2001-CryptoPro-C-ParamSet",
          "id-GostR3410-2001-CryptoPro-XchA-ParamSet", "id-GostR3410-2001-CryptoPro-XchB-ParamSet",
          "id-tc26-gost-3410-2012-256-paramSetA", "id-tc26-gost-3410-2012-256-paramSetB",
          "id-tc26-gost-3410-2012-256-paramSetC", "id-tc26-gost-3410-2012-256-paramSetD"})
        QTest::newRow(name) << int(Trivex::Gost2012Key256) << 256;
    for (const char *name :
         {"gost2012-512", "id-tc26-gost-3410-2012-512-paramSetA",
          "id-tc26-gost-3410-2012-512-paramSetB", "id-tc26-gost-3410-2012-512-paramSetC"})
        QTest::newRow(name) << int(Trivex::Gost2012Key512) << 512;
}

void TestGostKeys::generation()
{
    QFETCH(int, type);
    QFETCH(int, bits);
    QCA::PrivateKey key =
        generate(QString::fromLatin1(QTest::currentDataTag()), QStringLiteral("Ключ"));
    QVERIFY(!key.isNull());
    QVERIFY(key.isPrivate());
    QVERIFY(!key.canExport());
    QCOMPARE(key.provider()->name(), gostProvider());
    QCOMPARE(Trivex::keyType(key), type);
    QCOMPARE(key.bitSize(), bits);
    QCOMPARE(Trivex::keyStoreIdOf(key), m_store->id());
    QCOMPARE(keyObjects(), 2);
    QVERIFY(m_stores->currentEntries(storeName()).isEmpty());
    const QByteArray signature = key.signMessage(data(), signatureFor(key), QCA::DefaultFormat);
    QCOMPARE(signature.size(), bits / 4);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    const QString id = issueAndImport(key, QStringLiteral("/CN=Гост"));
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.name(), QStringLiteral("Ключ"));
    QVERIFY(Trivex::isSamePublicKey(entry.keyBundle().privateKey().toPublicKey(),
                                    Trivex::publicKeyOf(key)));
}

void TestGostKeys::unknownNames()
{
    for (const char *name : {"gost2012-1024", "gost", "GOST2012-256",
                             "id-tc26-gost-3410-2012-256-paramSetE", "ec-gost2012-256"})
        QVERIFY(generate(QString::fromLatin1(name), QStringLiteral("x")).isNull());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
    // What it meant before, it means still.
    const QCA::PrivateKey curve = generate(QStringLiteral("ec-secp384r1"), QStringLiteral("x"));
    QCOMPARE(Trivex::keyType(curve), int(Trivex::EllipticCurveKey));
    QCOMPARE(keyObjects(), 0);
    QVERIFY(!issueAndImport(curve, QStringLiteral("/CN=Curve")).isEmpty());
}

void TestGostKeys::wrongAndMissingPin()
{
    QVERIFY(m_token->replug(m_store->id()));
    for (const QByteArray &pin : {QByteArray("000000"), QByteArray()}) {
        for (const char *name : {"gost2012-256", "gost2012-512"}) {
            m_token->forget();
            m_prompt->setPin(pin);
            QVERIFY(generate(QString::fromLatin1(name), QStringLiteral("x")).isNull());
            QCOMPARE(m_token->count("C_Login"), pin.isEmpty() ? 0 : 1);
            QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
        }
    }
    QCOMPARE(keyObjects(), 0);
    m_token->forget();
    m_prompt->setPin(TestToken::pin());
    const QCA::PrivateKey key = generate(QStringLiteral("gost2012-512"), QStringLiteral("x"));
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Right")).isEmpty());
}

void TestGostKeys::failedGenerationLeavesNothing()
{
    for (const char *order : {"fail-after C_GenerateKeyPair * CKR_DEVICE_ERROR",
                              "fail C_GenerateKeyPair * CKR_DEVICE_MEMORY"}) {
        m_token->control(order);
        QVERIFY(generate(QStringLiteral("gost2012-512"), QStringLiteral("x")).isNull());
        QCOMPARE(keyObjects(), 0);
    }
}

void TestGostKeys::tokenWithoutTheMechanism()
{
    m_token->control("fail C_GetMechanismInfo * CKR_MECHANISM_INVALID");
    QVERIFY(generate(QStringLiteral("gost2012-256"), QStringLiteral("x")).isNull());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
}

void TestGostKeys::pairingBeforeLogin_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QByteArray>("orders");
    const QByteArray wrapped = "gost wrapped no-digest-parameters";
    for (const char *curve :
         {"gost2012-256", "gost2012-512", "id-tc26-gost-3410-2012-256-paramSetB",
          "id-tc26-gost-3410-2012-512-paramSetC"}) {
        const QString name = QString::fromLatin1(curve);
        QTest::newRow(curve) << name << QByteArray();
        newRow({curve, "on another token"}) << name << wrapped;
    }
}

void TestGostKeys::pairingBeforeLogin()
{
    QFETCH(QString, curve);
    QFETCH(QByteArray, orders);
    const QCA::PrivateKey made = generate(curve, QStringLiteral("pair"));
    const QString id = issueAndImport(made, QStringLiteral("/CN=Pair"));
    QVERIFY(!id.isEmpty());
    m_token->control(orders + "\nremove");
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    m_token->forget();
    m_token->control(orders);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    QCOMPARE(Trivex::keyType(key), Trivex::keyType(made));
    QCOMPARE(m_token->count("C_Login"), 0);
    const Certificate shown(entry.certificate());
    QVERIFY(shown.publicKeyTypeAlgorithm().startsWith(QLatin1String("GOST R 34.10-2012")));
    const QByteArray signature = key.signMessage(data(), signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    QCOMPARE(m_token->count("C_Login"), 1);
}

void TestGostKeys::lyingToken_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *attribute : {"CKA_GOSTR3410_PARAMS", "CKA_GOSTR3411_PARAMS", "CKA_VALUE"}) {
        for (const char *lie : {"beyond 64", "moved"})
            newRow({attribute, lie})
                << QByteArray("lie ").append(attribute).append(" * ").append(lie);
    }
}

/// What can't be believed makes no key; the token is read and used all the same.
void TestGostKeys::lyingToken()
{
    QFETCH(QByteArray, order);
    const QString id = issueAndImport(generate(QStringLiteral("gost2012-512"), QString()),
                                      QStringLiteral("/CN=Lie"));
    QVERIFY(!id.isEmpty());
    m_token->control(QByteArray(order).append("\nremove"));
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).present);
    m_token->control(order);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).present);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).loading);
    m_stores->currentEntries(storeName());
    QVERIFY(m_token->replug(m_store->id()));
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeKeyBundle);
}

/// Only its certificate tells it from one of 2012 where the token names no digest.
void TestGostKeys::keyOf2001()
{
    const QString file = bundle(QStringLiteral("gost2001"), QStringLiteral("A"));
    const auto read = QCA::KeyBundle::fromFile(file, QStringLiteral("пароль").toUtf8(), nullptr,
                                               opensslProvider());
    for (const QByteArray &orders : {QByteArray(), QByteArray("gost no-digest-parameters")}) {
        m_token->control(orders);
        const QString id = m_stores->write(m_store, read);
        QVERIFY(!id.isEmpty());
        QCA::PrivateKey key = entryWithId(id).keyBundle().privateKey();
        QCOMPARE(Trivex::keyType(key), int(Trivex::Gost2001Key));
        const QByteArray signature = key.signMessage(
            data(), QCA::SignatureAlgorithm(Trivex::Gost2001Signature), QCA::DefaultFormat);
        QCOMPARE(signature.size(), 64);
        QVERIFY(m_stores->remove(m_store, id));
        QCOMPARE(keyObjects(), 0);
    }
}

void TestGostKeys::importOfBundle_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<QString>("set");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("orders");
    const auto add = [](const char *algorithm, const char *set, int type, const char *orders) {
        newRow({algorithm, set, orders}) << QString::fromLatin1(algorithm)
                                         << QString::fromLatin1(set) << type << QByteArray(orders);
    };
    for (const char *orders : {"", "gost wrapped no-digest-parameters"}) {
        add("gost2012_256", "A", Trivex::Gost2012Key256, orders);
        add("gost2012_256", "TCA", Trivex::Gost2012Key256, orders);
        add("gost2012_512", "A", Trivex::Gost2012Key512, orders);
        add("gost2012_512", "C", Trivex::Gost2012Key512, orders);
    }
}

void TestGostKeys::importOfBundle()
{
    QFETCH(QString, algorithm);
    QFETCH(QString, set);
    QFETCH(int, type);
    QFETCH(QByteArray, orders);
    m_token->control(orders);
    const QString file = bundle(algorithm, set);
    QVERIFY(!file.isEmpty());
    QCA::ConvertResult result;
    const auto read = QCA::KeyBundle::fromFile(file, QStringLiteral("пароль").toUtf8(), &result,
                                               opensslProvider());
    QVERIFY(!read.isNull());
    const QString id = m_stores->write(m_store, read);
    QVERIFY(!id.isEmpty());
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(entry.name(), QStringLiteral("Мой ключ"));
    QCOMPARE(entry.keyBundle().certificateChain().size(), 2);
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    QCOMPARE(Trivex::keyType(key), type);
    QVERIFY(!key.canExport());
    const QByteArray signature = key.signMessage(data(), signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    QCOMPARE(keyObjects(), 2);
    // A second time adds nothing.
    QCOMPARE(m_stores->write(m_store, read), id);
    QCOMPARE(keyObjects(), 2);
}

void TestGostKeys::bundleThatFailsHalfWay()
{
    const auto read =
        QCA::KeyBundle::fromFile(bundle(QStringLiteral("gost2012_256"), QStringLiteral("A")),
                                 QStringLiteral("пароль").toUtf8(), nullptr, opensslProvider());
    for (const char *order :
         {"fail C_CreateObject 2 CKR_DEVICE_ERROR", "fail-after C_CreateObject 2 CKR_DEVICE_ERROR",
          "fail C_CreateObject 3 CKR_DEVICE_ERROR"}) {
        m_token->control(order);
        QVERIFY(m_stores->write(m_store, read).isEmpty());
        QCOMPARE(keyObjects(), 0);
    }
}

QTEST_GUILESS_MAIN(TestGostKeys)
#include "tst_gostkeys.moc"
