// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/question.h"
#include "tests/signing/askedsigner.h"
#include "tests/signing/pintoken.h"
#include "tests/support/shortpauses.h"
#include "tests/support/textlist.h"

#include <QEventLoop>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QByteArray data = "What is signed";

/// Returns when an answer that was on its way has met somebody, or nobody.
void letPass()
{
    QTest::qWait(2 * Trivex::PinQuestions::AnswerDelay.milliseconds());
}

} // namespace

class TestSignPin : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksAndRemembers();
    void anotherStoreAsksAgain();
    void typedPinOnly();
    void plainEventsUseTheKeptPin();
    void rejected();
    void rejectionForgetsTheKeptPin();
    void wrongPinIsForgotten();
    void scheduledTogether();
    void nobodyToAsk();
    void leavesOthersAlone();
    void otherKindsAreRejected();
    void storedAnswersStandBack_data();
    void storedAnswersStandBack();
    void withdrawn();
    void destroyedWhileAsking();
    void entryDestroyedWhileAsking();

private:
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }
    QTemporaryDir m_directory;
};

void TestSignPin::asksAndRemembers()
{
    PinToken token;
    const auto entry = token.entry();
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    QElapsedTimer timer;
    connect(&signer, &SignVerify::getPin, this, [&] {
        timer.start();
        signer.pinAccepted(QStringLiteral("1234"));
    });
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.wait(SignTime));
    QVERIFY(timer.elapsed() >= Trivex::PinQuestions::AnswerDelay.milliseconds());
    QCOMPARE(asked.count(), 1);
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.wait(SignTime));
    QCOMPARE(asked.count(), 1);
    QCOMPARE(token.tried, list({"1234", "1234"}));
}

void TestSignPin::anotherStoreAsksAgain()
{
    PinToken first;
    PinToken second(QStringLiteral("second store"));
    const auto firstEntry = first.entry();
    const auto secondEntry = second.entry();
    AskedSigner signer;
    signer.sign(data, path("a.sig"), firstEntry.get());
    signer.sign(data, path("b.sig"), secondEntry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.isSigned.count(), 2, 2 * SignTime);
    QCOMPARE(signer.asked.count(), 2);
}

void TestSignPin::typedPinOnly()
{
    PinToken token;
    const auto entry = token.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    token.question().needsTypedPin = true;
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 2);
}

void TestSignPin::plainEventsUseTheKeptPin()
{
    PinToken token;
    token.plain = true;
    const auto entry = token.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 1);
    QCOMPARE(token.tried, list({"1234", "1234"}));
}

void TestSignPin::rejected()
{
    PinToken token;
    const auto entry = token.entry();
    AskedSigner signer;
    signer.typed.clear();
    QTest::ignoreMessage(QtDebugMsg, "Error sign");
    signer.sign(data, path("r.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), SignTime);
    QCOMPARE(signer.asked.count(), 1);
    QCOMPARE(token.tried, list({"-"}));
    QVERIFY(!QFile::exists(path("r.sig")));
}

void TestSignPin::rejectionForgetsTheKeptPin()
{
    PinToken first;
    PinToken second(QStringLiteral("second store"));
    const auto firstEntry = first.entry();
    const auto secondEntry = second.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), firstEntry.get()));
    signer.typed.clear();
    signer.sign(data, path("r.sig"), secondEntry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), SignTime);
    signer.typed = QStringLiteral("1234");
    QVERIFY(signer.hasSigned(path("a.sig"), firstEntry.get()));
    QCOMPARE(signer.asked.count(), 3);
}

void TestSignPin::wrongPinIsForgotten()
{
    PinToken token;
    const auto entry = token.entry();
    AskedSigner signer;
    QSignalSpy failed(&signer, &SignVerify::errorChanged);
    signer.typed = QStringLiteral("9999");
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(failed.wait(SignTime));
    signer.typed = QStringLiteral("1234");
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(token.tried, list({"9999", "1234"}));
}

void TestSignPin::scheduledTogether()
{
    // The second job's time comes while the first one asks. A PIN that turns out wrong must not be
    // tried for the second.
    PinToken token;
    const auto entry = token.entry();
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    QStringList pins = list({"9999", "1234"});
    connect(&signer, &SignVerify::getPin, this, [&] { signer.pinAccepted(pins.takeFirst()); });
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    signer.sign(data, path("1.sig"), entry.get());
    signer.sign(data, path("2.sig"), entry.get());
    QVERIFY(isSigned.wait(2 * SignTime));
    QCOMPARE(asked.count(), 2);
    QCOMPARE(token.tried, list({"9999", "1234"}));
    QVERIFY(!QFile::exists(path("1.sig")));
    QVERIFY(QFile::exists(path("2.sig")));
}

void TestSignPin::nobodyToAsk()
{
    PinToken token;
    const auto entry = token.entry();
    SignVerify signer;
    signer.sign(data, path("n.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), SignTime);
    QCOMPARE(token.tried, list({"-"}));
}

void TestSignPin::leavesOthersAlone()
{
    PinToken token;
    const auto entry = token.entry();
    SignVerify bystander;
    AskedSigner signer;
    QSignalSpy wronglyAsked(&bystander, &SignVerify::getPin);
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(wronglyAsked.count(), 0);
}

void TestSignPin::otherKindsAreRejected()
{
    SignVerify signer;
    QSignalSpy asked(&signer, &SignVerify::getPin);
    for (const int kind : {Trivex::KeyStoreIdQuestion, Trivex::EntryNameQuestion}) {
        Trivex::QuestionInfo question;
        question.kind = kind;
        const Trivex::Reply reply = Trivex::ask(question, {});
        QVERIFY(!reply.accepted);
    }
    QCA::TokenAsker asker;
    QEventLoop loop;
    connect(&asker, &QCA::TokenAsker::responseReady, &loop, &QEventLoop::quit,
            Qt::QueuedConnection);
    asker.ask({}, {}, nullptr);
    loop.exec();
    asker.waitForResponse();
    QVERIFY(!asker.accepted());
    QCOMPARE(asked.count(), 0);
}

void TestSignPin::storedAnswersStandBack_data()
{
    QTest::addColumn<bool>("signerFirst");
    QTest::newRow("signer first") << true;
    QTest::newRow("stored answers first") << false;
}

void TestSignPin::storedAnswersStandBack()
{
    QFETCH(bool, signerFirst);
    std::unique_ptr<SignVerify> signer;
    if (signerFirst)
        signer = std::make_unique<SignVerify>();
    QcaHandler handler;
    handler.start();
    handler.setKeyStoreId(QStringLiteral("store"));
    handler.setPassword(QCA::SecureArray("9999"));
    if (!signer)
        signer = std::make_unique<SignVerify>();
    PinToken token;
    const auto entry = token.entry();
    QSignalSpy isSigned(signer.get(), &SignVerify::signSuccess);
    connect(signer.get(), &SignVerify::getPin, this,
            [&] { signer->pinAccepted(QStringLiteral("1234")); });
    signer->sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.wait(SignTime));
    QCOMPARE(token.tried, list({"1234"}));
}

void TestSignPin::withdrawn()
{
    PinToken token;
    const auto entry = token.entry();
    SignVerify signer;
    connect(&signer, &SignVerify::getPin, this, [] { Trivex::cancelQuestions(); });
    signer.sign(data, path("w.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), SignTime);
    QCOMPARE(token.tried, list({"-"}));
    // Too late: nobody gets it.
    signer.pinAccepted(QStringLiteral("1234"));
    letPass(); // it must meet nobody
    signer.pinRejected();
    QCOMPARE(token.tried, list({"-"}));
}

void TestSignPin::destroyedWhileAsking()
{
    PinToken token;
    const auto entry = token.entry();
    auto signer = std::make_unique<SignVerify>();
    connect(signer.get(), &SignVerify::getPin, this, [&] {
        signer->pinAccepted(QStringLiteral("1234"));
        QTimer::singleShot(0, this, [&] { signer.reset(); });
    });
    signer->sign(data, path("d.sig"), entry.get());
    QTRY_COMPARE_WITH_TIMEOUT(token.tried, list({"-"}), SignTime);
    letPass(); // it must sign nothing
    QVERIFY(!signer);
    QVERIFY(!QFile::exists(path("d.sig")));
}

void TestSignPin::entryDestroyedWhileAsking()
{
    PinToken token;
    auto entry = token.entry();
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    connect(&signer, &SignVerify::getPin, this, [&] {
        entry.reset();
        signer.pinAccepted(QStringLiteral("1234"));
    });
    signer.sign(data, path("a.sig"), entry.get());
    QVERIFY(isSigned.wait(SignTime));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    shortenPauses();
    TestSignPin test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signpin.moc"
