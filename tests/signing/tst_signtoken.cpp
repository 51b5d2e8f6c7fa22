// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Signing with keys on a real software token, checked with the openssl program.
#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/entries.h"
#include "qca/tokens/tokens.h"
#include "signing/signverify.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/shortpauses.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

TestToken *token = nullptr;
constexpr int Patience = 60000; // ms
const QByteArray data = "What is signed";

} // namespace

class TestSignToken : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void rejectedThenWrongThenRight();
    void ellipticCurveKey();
    void keyOfAFile_data();
    void keyOfAFile();
    void tokenRemoved();

private:
    KeyStoreEntry *entry(const QString &name) const;

    TestAuthority m_authority;
    std::unique_ptr<KeyStoreModel> m_stores;
};

void TestSignToken::initTestCase()
{
    QVERIFY(token->generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                   QStringLiteral("rsa")));
    QVERIFY(token->generateKeyPair(QStringLiteral("EC:secp384r1"), QStringLiteral("02"),
                                   QStringLiteral("ec")));
    QVERIFY(m_authority.isValid());
    QVERIFY(token->writeObject(
        QStringLiteral("cert"),
        m_authority.issue(token->publicKey(QStringLiteral("01")), QStringLiteral("/CN=Rsa")),
        QStringLiteral("01"), QStringLiteral("rsa")));
    QVERIFY(token->writeObject(
        QStringLiteral("cert"),
        m_authority.issue(token->publicKey(QStringLiteral("02")), QStringLiteral("/CN=Ec")),
        QStringLiteral("02"), QStringLiteral("ec")));
    m_stores = std::make_unique<KeyStoreModel>();
    QTRY_VERIFY_WITH_TIMEOUT(entry(QStringLiteral("Rsa")) && entry(QStringLiteral("Ec")), Patience);
}

KeyStoreEntry *TestSignToken::entry(const QString &name) const
{
    for (int row = 0; row < m_stores->rowCount(); ++row) {
        const QModelIndex index = m_stores->index(row);
        if (index.data(KeyStoreModel::NameRole).toString() == name)
            return index.data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
    }
    return nullptr;
}

void TestSignToken::rejectedThenWrongThenRight()
{
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    QSignalSpy failed(&signer, &SignVerify::errorChanged);
    QString pin;
    connect(&signer, &SignVerify::getPin, this, [&] {
        if (pin.isEmpty())
            signer.pinRejected();
        else
            signer.pinAccepted(pin);
    });
    const QString signature = m_authority.file(QStringLiteral("data.sig"));
    QStringList pins{QString(), QStringLiteral("000000")};
    for (const QString &bad : pins) {
        pin = bad;
        signer.setError(0);
        signer.sign(data, signature, entry(QStringLiteral("Rsa")));
        QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
        QVERIFY(!QFile::exists(signature));
    }
    QCOMPARE(asked.count(), 2);

    // The event loop runs while the token asks: this timer comes before the answer.
    int ticks = 0;
    QTimer clock;
    clock.setTimerType(Qt::PreciseTimer);
    connect(&clock, &QTimer::timeout, this, [&] { ++ticks; });
    connect(&signer, &SignVerify::getPin, &clock, [&] { clock.start(5); });
    pin = QString::fromLatin1(TestToken::pin());
    signer.setError(0);
    signer.sign(data, signature, entry(QStringLiteral("Rsa")));
    QVERIFY(isSigned.wait(Patience));
    QCOMPARE(asked.count(), 3);
    QVERIFY(ticks > 0);
    QCOMPARE(QFileInfo(signature).size(), 256);

    QFile text(m_authority.file(QStringLiteral("text")));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
    text.close();
    QFile key(m_authority.file(QStringLiteral("key.der")));
    QVERIFY(key.open(QIODevice::WriteOnly));
    key.write(token->publicKey(QStringLiteral("01")));
    key.close();
    QVERIFY(
        !m_authority
             .openssl({QStringLiteral("pkeyutl"), QStringLiteral("-verify"),
                       QStringLiteral("-pubin"), QStringLiteral("-keyform"), QStringLiteral("DER"),
                       QStringLiteral("-inkey"), key.fileName(), QStringLiteral("-in"),
                       text.fileName(), QStringLiteral("-sigfile"), signature})
             .isNull());

    QSignalSpy isVerified(&signer, &SignVerify::verifySuccess);
    signer.verify(data, signature, entry(QStringLiteral("Rsa")));
    QVERIFY(isVerified.wait(Patience));
    QCOMPARE(signer.ceritficate()->commonName(), QStringLiteral("Rsa"));
    signer.verify(data + 'x', signature, entry(QStringLiteral("Rsa")));
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorVerify), Patience);
}

void TestSignToken::ellipticCurveKey()
{
    const Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    SignVerify signer;
    SignVerify verifier;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    const QString signature = m_authority.file(QStringLiteral("data.sig"));
    signer.sign(data, m_authority.file(QStringLiteral("ec.sig")), entry(QStringLiteral("Ec")));
    verifier.verify(data, signature, entry(QStringLiteral("Ec")));
    QTRY_COMPARE_WITH_TIMEOUT(verifier.error(), int(SignVerify::ErrorVerify), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    // The reason, twice, and nobody was asked for a PIN that would not have helped.
    QCOMPARE(failed.size(), 2);
    const auto error = failed.first().first().value<Trivex::TokenError>();
    QCOMPARE(error.kind, Trivex::TokenError::WrongKeyKind);
    QCOMPARE(error.keyStoreId, Trivex::entryStoreId(entry(QStringLiteral("Ec"))->entry()));
    QCOMPARE(asked.size(), 0);
}

void TestSignToken::keyOfAFile_data()
{
    QTest::addColumn<QStringList>("make");
    QTest::newRow("EC") << QStringList{QStringLiteral("ecparam"), QStringLiteral("-name"),
                                       QStringLiteral("prime256v1"), QStringLiteral("-genkey"),
                                       QStringLiteral("-noout")};
    QTest::newRow("DSA") << QStringList{QStringLiteral("dsaparam"), QStringLiteral("-genkey"),
                                        QStringLiteral("-noout"), QStringLiteral("1024")};
    QTest::newRow("Ed25519") << QStringList{QStringLiteral("genpkey"), QStringLiteral("-algorithm"),
                                            QStringLiteral("ed25519")};
}

void TestSignToken::keyOfAFile()
{
    QFETCH(QStringList, make);
    const QByteArray pem = m_authority.openssl(make);
    const QCA::PrivateKey key = QCA::PrivateKey::fromPEM(QString::fromLatin1(pem));
    QVERIFY(!key.isNull());
    const auto bundle = bundleEntry(key);
    const Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    SignVerify signer;
    signer.sign(data, m_authority.file(QStringLiteral("file.sig")), bundle.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QCOMPARE(failed.size(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind,
             Trivex::TokenError::WrongKeyKind);
    QVERIFY(!QFile::exists(m_authority.file(QStringLiteral("file.sig"))));
}

void TestSignToken::tokenRemoved()
{
    // Before the signature begins: the real pause is long enough for the removal to be seen.
    Trivex::Pause::shorten(1);
    SignVerify signer;
    signer.sign(data, m_authority.file(QStringLiteral("gone.sig")), entry(QStringLiteral("Rsa")));
    token->removeModule();
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QVERIFY(!QFile::exists(m_authority.file(QStringLiteral("gone.sig"))));
    token->restoreModule();
}

int main(int argc, char *argv[])
{
    shortenPauses();
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    TestToken softwareToken;
    token = &softwareToken;
    softwareToken.useInThisProcess();
    QCoreApplication application(argc, argv);
    if (!softwareToken.isValid()) {
        qInfo("SKIP %s", qPrintable(softwareToken.problem()));
        return 0;
    }
    const QCA::Initializer initializer;
    TestSignToken test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signtoken.moc"
