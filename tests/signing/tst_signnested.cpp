// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What a page starts inside the event loop in which a signature waits for its token.
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/questions/eventhandler.h"
#include "qca/questions/openquestions.h"
#include "qca/tokens/tokens.h"
#include "signing/signverify.h"
#include "tests/support/shortpauses.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

TestToken *token = nullptr;
constexpr int Patience = 15000; // ms
const QByteArray data = "What is signed";
const QString otherName = QStringLiteral("Other");

/// The program's own prompt, which notes the questions that reach it.
class HostPrompt : public QObject {
public:
    HostPrompt()
    {
        connect(&m_handler, &QCA::EventHandler::eventReady, this,
                [this](int id, const QCA::Event &event) {
                    const auto info = Trivex::questionInfo(event);
                    if (!info || m_handler.isForAnother(event)) {
                        m_handler.reject(id);
                        return;
                    }
                    questions.append(*info);
                    m_handler.submitPassword(id, QCA::SecureArray(TestToken::pin()));
                });
        m_handler.start();
    }

    QVector<Trivex::QuestionInfo> questions;

private:
    Trivex::EventHandler m_handler;
};

Trivex::TokenStatus statusOf(const QString &name)
{
    const auto tokens = Trivex::TokenMonitor::tokens();
    for (const Trivex::TokenStatus &one : tokens) {
        if (one.name == name)
            return one;
    }
    return {};
}

QString storeNamed(const QString &name)
{
    return statusOf(name).keyStoreId;
}

bool isPresent(const QString &name)
{
    const Trivex::TokenStatus status = statusOf(name);
    return status.present && !status.loading;
}

} // namespace

class TestSignNested : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void generationWhileThePinIsAsked();
    void bothAskTheSigner();

private:
    KeyStoreEntry *entry() const;

    TestAuthority m_authority;
    std::unique_ptr<KeyStoreModel> m_stores;
};

void TestSignNested::initTestCase()
{
    QVERIFY(m_authority.isValid());
    QVERIFY(token->generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                   QStringLiteral("rsa")));
    QVERIFY(token->writeObject(
        QStringLiteral("cert"),
        m_authority.issue(token->publicKey(QStringLiteral("01")), QStringLiteral("/CN=Rsa")),
        QStringLiteral("01"), QStringLiteral("rsa")));
    m_stores = std::make_unique<KeyStoreModel>();
    QTRY_VERIFY_WITH_TIMEOUT(entry() && !storeNamed(otherName).isEmpty(), Patience);
}

KeyStoreEntry *TestSignNested::entry() const
{
    for (int row = 0; row < m_stores->rowCount(); ++row) {
        const QModelIndex index = m_stores->index(row);
        if (index.data(KeyStoreModel::NameRole).toString() == QLatin1String("Rsa"))
            return index.data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
    }
    return nullptr;
}

void TestSignNested::generationWhileThePinIsAsked()
{
    HostPrompt host;
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(storeNamed(otherName), QStringLiteral("label"));
    QSignalSpy generated(&generator, &Trivex::KeyGenerator::finished);
    // The signature waits inside the test's own event loop, so everything else is done from slots.
    connect(&signer, &SignVerify::getPin, this, [&] {
        if (asked.count() == 1)
            generator.createRSA(2048, 65537, QStringLiteral("qca-norvel-pkcs11"));
        else
            signer.pinRejected();
    });
    connect(&generator, &Trivex::KeyGenerator::finished, this,
            [&] { signer.pinAccepted(QString::fromLatin1(TestToken::pin())); });
    // So that a question that nobody answers ends the test as a failure.
    QTimer::singleShot(Patience, this, [] { Trivex::cancelQuestions(); });
    signer.sign(data, m_authority.file(QStringLiteral("data.sig")), entry());
    QTRY_VERIFY_WITH_TIMEOUT(!isSigned.isEmpty() || signer.error(), 2 * Patience);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(host.questions.size(), 1);
    QCOMPARE(isSigned.count(), 1);
    QCOMPARE(host.questions.first().keyStoreId, storeNamed(otherName));
    QVERIFY(!host.questions.first().addressee);
    QCOMPARE(generated.count(), 1);
    QVERIFY(!generator.key().isNull());
}

void TestSignNested::bothAskTheSigner()
{
    // Plugged in anew, so that either token asks again.
    token->removeModule();
    QTRY_VERIFY_WITH_TIMEOUT(!isPresent(otherName), Patience);
    token->restoreModule();
    QTRY_VERIFY_WITH_TIMEOUT(isPresent(otherName) && entry(), Patience);
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(storeNamed(otherName), QStringLiteral("label"));
    QSignalSpy generated(&generator, &Trivex::KeyGenerator::finished);
    const auto accept = [&] { signer.pinAccepted(QString::fromLatin1(TestToken::pin())); };
    connect(&signer, &SignVerify::getPin, this, [&] {
        if (asked.count() > 1) {
            accept();
            return;
        }
        generator.createRSA(2048, 65537, QStringLiteral("qca-norvel-pkcs11"));
        // Its question has come when this one is answered.
        QTimer::singleShot(1500, this, accept);
    });
    QTimer::singleShot(2 * Patience, this, [] { Trivex::cancelQuestions(); });
    signer.sign(data, m_authority.file(QStringLiteral("both.sig")), entry());
    QTRY_VERIFY_WITH_TIMEOUT(generated.count() && (isSigned.count() || signer.error()),
                             3 * Patience);
    QCOMPARE(asked.count(), 2);
    QCOMPARE(isSigned.count(), 1);
    QVERIFY(!generator.key().isNull());
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
    if (!softwareToken.isValid() || !softwareToken.addToken(otherName)) {
        qInfo("SKIP %s", qPrintable(softwareToken.problem()));
        return 0;
    }
    const QCA::Initializer initializer;
    TestSignNested test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signnested.moc"
