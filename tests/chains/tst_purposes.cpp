// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/chaincheck.h"
#include "tests/chains/madechain.h"
#include "tests/chains/opensslverify.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

/// What a path is good for: each kind of certificate asked for each purpose, beside the openssl
/// program where that knows the purpose.
class TestPurposes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void purposes_data();
    void purposes();
    void issuerForAnotherPurpose();
    void issuerOfCodeAndTimeStamps_data();
    void issuerOfCodeAndTimeStamps();

private:
    ChainInput inputOf(const Party &leaf, ChainPurpose purpose) const
    {
        ChainInput input;
        input.certificate = leaf.der();
        input.candidates = {m_middle.candidate(), m_root.anchor()};
        input.purpose = purpose;
        return input;
    }
    static bool isRefused(const ChainResult &result, int step)
    {
        for (const ChainFinding &one : result.steps.value(step).findings) {
            if (one.reason == ChainReason::WrongPurpose)
                return true;
        }
        return false;
    }

    QCA::Initializer m_initializer;
    std::atomic<bool> m_isCancelled{false};
    const Party m_root = make({"Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Middle", -10, Year, authority()}, &m_root);
};

void TestPurposes::purposes_data()
{
    QTest::addColumn<QByteArray>("usage");
    QTest::addColumn<QByteArray>("extended");
    /// Any, WebServer, WebClient, Email, TimeStamps, CodeSigning
    QTest::addColumn<QByteArray>("good");
    QTest::newRow("nothing said") << QByteArray() << QByteArray() << QByteArray("yyyynn");
    QTest::newRow("server") << QByteArray("critical,digitalSignature") << QByteArray("serverAuth")
                            << QByteArray("yynnnn");
    QTest::newRow("client") << QByteArray("critical,digitalSignature") << QByteArray("clientAuth")
                            << QByteArray("ynynnn");
    QTest::newRow("mail") << QByteArray("critical,digitalSignature")
                          << QByteArray("emailProtection") << QByteArray("ynnynn");
    QTest::newRow("time stamps") << QByteArray("critical,digitalSignature")
                                 << QByteArray("critical,timeStamping") << QByteArray("ynnnyn");
    QTest::newRow("code") << QByteArray("critical,digitalSignature") << QByteArray("codeSigning")
                          << QByteArray("ynnnny");
    QTest::newRow("code without a usage")
        << QByteArray() << QByteArray("codeSigning") << QByteArray("ynnnnn");
    QTest::newRow("code and servers")
        << QByteArray("critical,digitalSignature") << QByteArray("codeSigning,serverAuth")
        << QByteArray("yynnnn");
    QTest::newRow("code by a key for agreement")
        << QByteArray("critical,keyAgreement") << QByteArray("codeSigning") << QByteArray("ynnnnn");
}

void TestPurposes::purposes()
{
    QFETCH(QByteArray, usage);
    QFETCH(QByteArray, extended);
    QFETCH(QByteArray, good);
    QVector<QPair<int, QByteArray>> extensions;
    if (!usage.isEmpty())
        extensions += {NID_key_usage, usage};
    if (!extended.isEmpty())
        extensions += {NID_ext_key_usage, extended};
    const Party leaf = make({"Leaf", -1, 30, extensions}, &m_middle);
    for (int i = 0; i < good.size(); ++i) {
        const auto purpose = ChainPurpose(i);
        const ChainInput input = inputOf(leaf, purpose);
        const ChainResult result = checkChain(input, m_isCancelled);
        const bool isGood = good.at(i) == 'y';
        QVERIFY2(isRefused(result, 0) != isGood, qPrintable(QString::number(i)));
        QCOMPARE(result.verdict, isGood ? ChainVerdict::Good : ChainVerdict::Bad);
        const QByteArray theirs = verifiedByOpenssl(input);
        if (!knowsPurpose(purpose))
            continue;
        QVERIFY2(theirs.contains(": OK") == isGood, theirs.constData());
    }
}

/// An authority that is there for mail issues no certificate of a server.
void TestPurposes::issuerForAnotherPurpose()
{
    auto limited = authority();
    limited += {NID_ext_key_usage, "emailProtection"};
    const Party mailers = make({"Mailers", -10, Year, limited}, &m_root);
    const Party server = make({"Server", -1, 30, {{NID_ext_key_usage, "serverAuth"}}}, &mailers);
    ChainInput input = inputOf(server, ChainPurpose::WebServer);
    input.candidates += mailers.candidate();
    const ChainResult result = checkChain(input, m_isCancelled);
    QCOMPARE(result.verdict, ChainVerdict::Bad);
    QVERIFY(!isRefused(result, 0) && isRefused(result, 1));
    QVERIFY(!verifiedByOpenssl(input).contains(": OK"));
    input.purpose = ChainPurpose::Any;
    QCOMPARE(checkChain(input, m_isCancelled).verdict, ChainVerdict::Good);
}

void TestPurposes::issuerOfCodeAndTimeStamps_data()
{
    QTest::addColumn<int>("purpose");
    QTest::addColumn<QByteArray>("extended"); // of the authority
    QTest::addColumn<bool>("isGood");
    const int code = int(ChainPurpose::CodeSigning);
    const int stamps = int(ChainPurpose::TimeStamps);
    QTest::newRow("code by who says nothing") << code << QByteArray() << true;
    QTest::newRow("code by who is there for it") << code << QByteArray("codeSigning") << true;
    QTest::newRow("code among others") << code << QByteArray("serverAuth,codeSigning") << true;
    QTest::newRow("code by who is there for all")
        << code << QByteArray("anyExtendedKeyUsage") << true;
    QTest::newRow("code by mailers") << code << QByteArray("emailProtection") << false;
    QTest::newRow("code by servers") << code << QByteArray("serverAuth,clientAuth") << false;
    QTest::newRow("code by who has another") << code << QByteArray("1.2.3.4") << false;
    QTest::newRow("stamps by who says nothing") << stamps << QByteArray() << true;
    QTest::newRow("stamps by who is there for it") << stamps << QByteArray("timeStamping") << true;
    QTest::newRow("stamps by who is there for all")
        << stamps << QByteArray("anyExtendedKeyUsage") << true;
    QTest::newRow("stamps by mailers") << stamps << QByteArray("emailProtection") << false;
}

/// libcrypto looks at no extended usage of an authority for these two; servers, clients and mail
/// have it looked at.
void TestPurposes::issuerOfCodeAndTimeStamps()
{
    QFETCH(int, purpose);
    QFETCH(QByteArray, extended);
    QFETCH(bool, isGood);
    auto limited = authority();
    if (!extended.isEmpty())
        limited += {NID_ext_key_usage, extended};
    const bool isCode = ChainPurpose(purpose) == ChainPurpose::CodeSigning;
    const Party issuer = make({"Limited", -10, Year, limited}, &m_middle);
    const Party leaf =
        make({"Signer",
              -1,
              30,
              {{NID_key_usage, "critical,digitalSignature"},
               {NID_ext_key_usage, isCode ? "codeSigning" : "critical,timeStamping"}}},
             &issuer);
    ChainInput input = inputOf(leaf, ChainPurpose(purpose));
    input.candidates += issuer.candidate();
    const ChainResult result = checkChain(input, m_isCancelled);
    QCOMPARE(result.verdict, isGood ? ChainVerdict::Good : ChainVerdict::Bad);
    QVERIFY(!isRefused(result, 0) && isRefused(result, 1) != isGood);
    QVERIFY(!isRefused(result, 2) && !isRefused(result, 3));
    input.purpose = ChainPurpose::Any;
    QCOMPARE(checkChain(input, m_isCancelled).verdict, ChainVerdict::Good);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestPurposes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_purposes.moc"
