// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

using namespace TrivexTest;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Odd");
constexpr int Certificates = 5;

/// The orders for so many readings of the object that is read as that one, from 1 on: behind the
/// public key, which takes a call for itself and one for its curve and point.
QByteArray failed(int object, int readings, const char *result)
{
    QByteArray orders;
    for (int i = 0; i < readings; ++i) {
        orders +=
            "fail C_GetAttributeValue " + QByteArray::number(2 + object + i) + ' ' + result + '\n';
    }
    return orders;
}

} // namespace

/// Objects that a module may have, and few do: the other rows of the token are none the worse.
class TestOddObjects : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void objectThatCannotBeRead_data();
    void objectThatCannotBeRead();
    void moduleThatReadsNothing();
    void keyThatCannotTellItsPublicHalf();
    void valueInALargerFile();
    void mechanismsThatBecomeMore();
    void valuesThatAreMissing_data();
    void valuesThatAreMissing();

private:
    QStringList names() const;
    bool isRead() const { return TokenMonitor::token(m_storeId).isRead; }

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<Stores> m_stores;
    QString m_storeId;
    QByteArray m_padded; ///< the certificate whose value has zeros behind it
};

void TestOddObjects::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->token().isValid(), qPrintable(m_token->problem()));
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("EC:prime256v1"), QStringLiteral("01"),
                                             QStringLiteral("key")));
    m_token->useInThisProcess();
    QList<QByteArray> all = plainCertificates(Certificates);
    m_padded = all.at(1);
    all[1] += QByteArray(300, '\0');
    all[2] += QByteArray(7, '\xff');
    PlainToken plain(TestToken::softHsmLibrary());
    QVERIFY(plain.isOpen());
    QVERIFY(plain.writeCertificates(all, TestToken::pin()));
}

void TestOddObjects::init()
{
    m_token->control();
    m_qca = std::make_unique<QCA::Initializer>();
    m_stores = std::make_unique<Stores>();
    QCA::KeyStore *store = m_stores->waitFor(StoreName, 30000);
    QVERIFY(store);
    m_storeId = store->id();
    QVERIFY(QTest::qWaitFor([&] { return isRead(); }, 30000));
}

void TestOddObjects::cleanup()
{
    if (m_token)
        m_token->control();
    m_stores.reset();
    m_qca.reset();
}

QStringList TestOddObjects::names() const
{
    QStringList all;
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        all.append(entry.name());
    all.sort();
    return all;
}

void TestOddObjects::objectThatCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("rows");
    QTest::newRow("once") << failed(2, 1, "CKR_FUNCTION_FAILED") << Certificates;
    QTest::newRow("always") << failed(2, 2, "CKR_FUNCTION_FAILED") << Certificates - 1;
    QTest::newRow("the first") << failed(1, 2, "CKR_GENERAL_ERROR") << Certificates - 1;
}

/// A file of a card that is named in its directory and not there, say.
void TestOddObjects::objectThatCannotBeRead()
{
    QFETCH(QByteArray, orders);
    QFETCH(int, rows);
    QVERIFY(m_token->replug(m_storeId, orders));
    QVERIFY(isRead());
    QVERIFY(m_stores->waitForEntries(StoreName, rows, 30000));
    // Whatever was not read is there again when it can be.
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
}

/// That is the token's trouble and no object's: nothing is taken for what is on it.
void TestOddObjects::moduleThatReadsNothing()
{
    QVERIFY(m_token->replug(m_storeId, "fail C_GetAttributeValue * CKR_GENERAL_ERROR\n"));
    QVERIFY(!isRead());
    m_token->control();
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QVERIFY(isRead());
}

void TestOddObjects::keyThatCannotTellItsPublicHalf()
{
    // The first call is for the key itself; the next two read its curve and point.
    m_token->forget();
    QVERIFY(m_token->replug(m_storeId, failed(0, 2, "CKR_FUNCTION_FAILED")));
    QVERIFY(isRead());
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
}

void TestOddObjects::valueInALargerFile()
{
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates, 30000));
    QList<QByteArray> shown;
    const auto entries = m_stores->entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries) {
        QVERIFY(!entry.certificate().isNull());
        shown.append(entry.certificate().toDER());
    }
    QVERIFY(shown.contains(m_padded));
}

void TestOddObjects::mechanismsThatBecomeMore()
{
    const auto look = [&] { return TokenMonitor::look(m_storeId); };
    m_token->control("fail C_GetMechanismList 2 CKR_BUFFER_TOO_SMALL\n");
    TokenMonitor::takeLook(m_storeId);
    QVERIFY(QTest::qWaitFor([&] { return look().isTaken; }, 30000));
    QVERIFY(look().mechanisms > 0);
    QVERIFY(!look().abilities.isEmpty());
}

void TestOddObjects::valuesThatAreMissing_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<int>("rows");
    QTest::newRow("no labels") << QByteArrayLiteral("lie CKA_LABEL * empty\n") << Certificates;
    QTest::newRow("no ids") << QByteArrayLiteral("lie CKA_ID * empty\n") << Certificates;
    QTest::newRow("neither") << QByteArrayLiteral("lie CKA_ID * empty\nlie CKA_LABEL * invalid\n")
                             << Certificates;
    QTest::newRow("one value") << QByteArrayLiteral("lie CKA_VALUE 3 empty\n") << Certificates - 1;
    QTest::newRow("all values") << QByteArrayLiteral("lie CKA_VALUE * empty\n") << 0;
    QTest::newRow("no key types") << QByteArrayLiteral("lie CKA_KEY_TYPE * empty\n")
                                  << Certificates;
    QTest::newRow("no curve") << QByteArrayLiteral("lie CKA_EC_PARAMS * sensitive\n")
                              << Certificates;
    QTest::newRow("no point") << QByteArrayLiteral("lie CKA_EC_POINT * empty\n") << Certificates;
}

void TestOddObjects::valuesThatAreMissing()
{
    QFETCH(QByteArray, orders);
    QFETCH(int, rows);
    QVERIFY(m_token->replug(m_storeId, orders));
    QVERIFY(isRead());
    QVERIFY(m_stores->waitForEntries(StoreName, rows, 30000));
    QVERIFY(!names().contains(QString()));
}

QTEST_GUILESS_MAIN(TestOddObjects)
#include "tst_oddobjects.moc"
