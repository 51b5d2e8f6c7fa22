// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "signing/rawsignature.h"
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"
#include "tools/documentsigner.h"

#include <QSignalSpy>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Restricted");

/// SEQUENCE of a length below 64 KiB.
QByteArray sequence(const QByteArray &content)
{
    const int size = content.size();
    QByteArray header(1, '\x30');
    if (size < 0x80)
        header += char(size);
    else
        header += QByteArray("\x82") + char(size >> 8) + char(size);
    return header + content;
}

/// The key of RSA in general as one that its certificate restricts to RSASSA-PSS (RFC 4055, 1.2).
QByteArray restricted(const QByteArray &publicInfo, const QByteArray &parameters = {})
{
    const QByteArray algorithm = QByteArray::fromHex("300d06092a864886f70d0101010500");
    const int at = publicInfo.indexOf(algorithm);
    const QByteArray other = sequence(QByteArray::fromHex("06092a864886f70d01010a") + parameters);
    return at < 0 ? QByteArray() : sequence(other + publicInfo.mid(at + algorithm.size()));
}

/// SHA-384 for both, with 48 octets of salt.
const QByteArray Sha384Parameters =
    QByteArray::fromHex("3034a00f300d06096086480165030402020500a11c301a06092a864886f70d010108"
                        "300d06096086480165030402020500a203020130");

} // namespace

/// Certificates that restrict an RSA key of a token to RSASSA-PSS.
class TestCmsPss : public FailureFixture {
    Q_OBJECT
public:
    TestCmsPss()
        : FailureFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void signs_data();
    void signs();
    void tokenWithoutPss();
    void onlyPss();

private:
    QCA::KeyBundle bundle(const QString &name) const
    {
        const QCA::KeyStoreEntry entry = m_stores->entry(StoreName, name);
        return entry.isNull() ? QCA::KeyBundle() : entry.keyBundle();
    }
    int sign(const QString &key);

    QString m_document;
    QString m_target;
};

void TestCmsPss::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    const TestToken &token = m_token->token();
    const QString id = QStringLiteral("01");
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("key")));
    const QByteArray key = token.publicKey(id);
    const auto put = [&](const char *name, const QByteArray &publicInfo) {
        const QByteArray der =
            m_authority->issue(publicInfo, QStringLiteral("/CN=Signer ") + QLatin1String(name));
        return token.writeObject(QStringLiteral("cert"), der, id, QLatin1String(name));
    };
    QVERIFY(put("plain", key));
    QVERIFY(put("pss", restricted(key)));
    QVERIFY(put("pss-sha384", restricted(key, Sha384Parameters)));
    m_token->useInThisProcess();
    QVERIFY(start(3));
    m_document = m_authority->file(QStringLiteral("letter"));
    QFile file(m_document);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Pay 100 to Mary\n") > 0);
}

void TestCmsPss::init()
{
    QVERIFY(m_token->replug(m_store->id()) && m_stores->waitForEntries(StoreName, 3));
    countAfresh();
    m_target = m_authority->file(QStringLiteral("letter.p7s"));
    QFile::remove(m_target);
}

int TestCmsPss::sign(const QString &key)
{
    DocumentSigner signer;
    QSignalSpy finished(&signer, &Job::finished);
    signer.signWith(bundle(key), {m_document, m_target, DocumentSignature::Detached}, false);
    if (finished.isEmpty() && !finished.wait(20000))
        return -1;
    return signer.error();
}

void TestCmsPss::signs_data()
{
    QTest::addColumn<QByteArray>("algorithm");
    QTest::newRow("plain") << QByteArray("rsaEncryption");
    QTest::newRow("pss") << QByteArray("rsassaPss");
    QTest::newRow("pss-sha384") << QByteArray("rsassaPss");
}

void TestCmsPss::signs()
{
    QFETCH(QByteArray, algorithm);
    QCOMPARE(sign(QString::fromLatin1(QTest::currentDataTag())), int(DocumentSigner::NoError));
    QCOMPARE(m_token->count("C_Sign"), 1);
    const QByteArray verified = m_authority->openssl(
        {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-binary"),
         QStringLiteral("-cades"), QStringLiteral("-inform"), QStringLiteral("DER"),
         QStringLiteral("-in"), m_target, QStringLiteral("-content"), m_document,
         QStringLiteral("-CAfile"), m_authority->certificateFile()});
    QCOMPARE(verified, QByteArray("Pay 100 to Mary\n"));
    const QByteArray printed = m_authority->openssl(
        {QStringLiteral("cms"), QStringLiteral("-cmsout"), QStringLiteral("-noout"),
         QStringLiteral("-print"), QStringLiteral("-inform"), QStringLiteral("DER"),
         QStringLiteral("-in"), m_target});
    const int signature = printed.indexOf("signatureAlgorithm:", printed.indexOf("signerInfos:"));
    QVERIFY(signature > 0);
    QVERIFY2(printed.mid(signature, 80).contains(algorithm),
             printed.mid(signature, 80).constData());
}

/// A token that has only the other padding says so before anybody is asked for its PIN.
void TestCmsPss::tokenWithoutPss()
{
    m_token->control("without CKM_RSA_PKCS_PSS");
    QCOMPARE(sign(QStringLiteral("pss")), int(DocumentSigner::NotSigned));
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().kind, TokenError::NotSupported);
    QCOMPARE(sign(QStringLiteral("plain")), int(DocumentSigner::NoError));
    QFile::remove(m_target);
    m_token->control("without CKM_RSA_PKCS");
    QCOMPARE(sign(QStringLiteral("pss")), int(DocumentSigner::NoError));
    m_token->control();
}

/// Nothing is signed by PKCS#1 v1.5 with a key that is not for it.
void TestCmsPss::onlyPss()
{
    const QCA::KeyBundle pss = bundle(QStringLiteral("pss"));
    QVERIFY(!pss.isNull());
    QVERIFY(!canSignRaw(pss.privateKey()));
    QVERIFY(canSignRaw(bundle(QStringLiteral("plain")).privateKey()));
    QCA::PrivateKey key = pss.privateKey();
    QVERIFY(key.signMessage(QByteArray("text"), QCA::EMSA3_Raw, QCA::DefaultFormat).isEmpty());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Sign"), 0);
    QCOMPARE(lastError().kind, TokenError::WrongKeyKind);
}

QTEST_GUILESS_MAIN(TestCmsPss)
#include "tst_cmspss.moc"
