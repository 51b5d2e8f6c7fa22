// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What a signer's kept PIN answers, and what ends the keeping.
#include "qca/questions/asker.h"
#include "qca/tokens/tokenregistry.h"
#include "signing/keptpin.h"
#include "tests/signing/askedsigner.h"
#include "tests/signing/pintoken.h"
#include "tests/support/shortpauses.h"

#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace TrivexTest;

namespace {

const QByteArray data = "What is signed";

} // namespace

class TestSignKept : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void givenBeforeAnyQuestion();
    void givenBeforeServesOneTokenOnly();
    void givenAgainServesTheNext();
    void givenBeforeIsOfTheOldPin();
    void otherOperationsAreAskedEachTime_data();
    void otherOperationsAreAskedEachTime();
    void whatEndsTheKeeping_data();
    void whatEndsTheKeeping();
    void onlyOwnSignaturesAreAnswered_data();
    void onlyOwnSignaturesAreAnswered();

private:
    static void cause(const QString &event, Trivex::TokenStatus status);
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }
    QTemporaryDir m_directory;
};

void TestSignKept::onlyOwnSignaturesAreAnswered_data()
{
    QTest::addColumn<int>("purpose");
    QTest::addColumn<bool>("isOwn");
    for (const auto purpose :
         {Trivex::Purpose::Sign, Trivex::Purpose::Decrypt, Trivex::Purpose::Write,
          Trivex::Purpose::Remove, Trivex::Purpose::Generate, Trivex::Purpose::SetPin,
          Trivex::Purpose::Look, Trivex::Purpose::Export}) {
        for (const bool isOwn : {true, false})
            QTest::addRow("purpose %d, %s", int(purpose), isOwn ? "own" : "another's")
                << int(purpose) << isOwn;
    }
}

// Whatever it was kept for, and whatever reaches the signer.
void TestSignKept::onlyOwnSignaturesAreAnswered()
{
    QFETCH(int, purpose);
    QFETCH(bool, isOwn);
    const QCA::EventHandler signer;
    const QCA::EventHandler other;
    const QCA::SecureArray pin("1234");
    const bool isAnswered = isOwn && purpose == int(Trivex::Purpose::Sign);
    Trivex::QuestionInfo question;
    question.purpose = Trivex::Purpose(purpose);
    question.keyStoreId = QStringLiteral("store");
    question.addressee = isOwn ? &signer : &other;
    Trivex::KeptPin given(&signer);
    given.keep(pin);
    QCOMPARE(given.answerFor(question).isEmpty(), !isAnswered);
    // A signature of its own on that token, after an answer to the question.
    Trivex::QuestionInfo next;
    next.keyStoreId = question.keyStoreId;
    next.addressee = &signer;
    Trivex::KeptPin answered(&signer);
    answered.keepAnswer(question, pin);
    QCOMPARE(answered.answerFor(next).isEmpty(), !isAnswered);
}

void TestSignKept::givenBeforeAnyQuestion()
{
    AskedSigner signer;
    signer.pinRejected();
    signer.pinAccepted(QStringLiteral("1234"));
    PinToken token;
    const auto entry = token.entry();
    signer.typed.clear();
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 0);
    QCOMPARE(token.tried, QStringList(QStringLiteral("1234")));
}

void TestSignKept::givenBeforeServesOneTokenOnly()
{
    AskedSigner signer;
    signer.pinAccepted(QStringLiteral("1234"));
    PinToken first;
    PinToken second(QStringLiteral("second store"));
    const auto firstEntry = first.entry();
    const auto secondEntry = second.entry();
    signer.typed.clear();
    QVERIFY(signer.hasSigned(path("a.sig"), firstEntry.get()));
    signer.sign(data, path("b.sig"), secondEntry.get());
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), SignTime);
    QCOMPARE(signer.asked.count(), 1);
    QCOMPARE(second.tried, QStringList(QStringLiteral("-")));
}

/// What is given between two signatures is for the next question, whichever token puts it.
void TestSignKept::givenAgainServesTheNext()
{
    PinToken first;
    PinToken second(QStringLiteral("second store"));
    const auto firstEntry = first.entry();
    const auto secondEntry = second.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), firstEntry.get()));
    QCOMPARE(signer.asked.count(), 1);
    signer.pinAccepted(QStringLiteral("1234"));
    signer.typed.clear();
    QVERIFY(signer.hasSigned(path("b.sig"), secondEntry.get()));
    QCOMPARE(signer.asked.count(), 1);
    QCOMPARE(second.tried, QStringList(QStringLiteral("1234")));
}

/// It may be for the token whose PIN was changed since.
void TestSignKept::givenBeforeIsOfTheOldPin()
{
    AskedSigner signer;
    signer.pinAccepted(QStringLiteral("0000"));
    Trivex::publishPinChange(QStringLiteral("store"));
    QTest::qWait(50); // until the signer has heard of it, which shows nowhere
    PinToken token;
    const auto entry = token.entry();
    signer.typed = QStringLiteral("1234");
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 1);
    QCOMPARE(token.tried, QStringList(QStringLiteral("1234")));
}

void TestSignKept::otherOperationsAreAskedEachTime_data()
{
    QTest::addColumn<int>("purpose");
    using Trivex::Purpose;
    QTest::newRow("write") << int(Purpose::Write);
    QTest::newRow("removal") << int(Purpose::Remove);
    QTest::newRow("generation") << int(Purpose::Generate);
    QTest::newRow("decryption") << int(Purpose::Decrypt);
    QTest::newRow("signature of another") << int(Purpose::Sign);
}

void TestSignKept::otherOperationsAreAskedEachTime()
{
    QFETCH(int, purpose);
    PinToken token;
    const auto entry = token.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 1);
    Trivex::QuestionInfo question;
    question.keyStoreId = QStringLiteral("store");
    question.purpose = Trivex::Purpose(purpose);
    for (const char *pin : {"5678", "8765"}) {
        signer.typed = QLatin1String(pin);
        const Trivex::Reply reply = Trivex::ask(question, {});
        QVERIFY(reply.accepted);
        QCOMPARE(reply.password.toByteArray(), QByteArray(pin));
    }
    QCOMPARE(signer.asked.count(), 3);
    // What was typed for them is not kept.
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), 3);
    QCOMPARE(token.tried, QStringList({QStringLiteral("1234"), QStringLiteral("1234")}));
}

void TestSignKept::whatEndsTheKeeping_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("questions");
    QTest::newRow("nothing") << QString() << 1;
    QTest::newRow("a wrong PIN for a write") << QStringLiteral("wrong") << 2;
    QTest::newRow("the token is locked") << QStringLiteral("locked") << 2;
    QTest::newRow("another failure") << QStringLiteral("full") << 1;
    QTest::newRow("the token was taken out") << QStringLiteral("out") << 2;
    QTest::newRow("out and in before anybody looks") << QStringLiteral("replugged") << 2;
    QTest::newRow("another token was taken out") << QStringLiteral("other out") << 1;
    QTest::newRow("one try left") << QStringLiteral("last try") << 2;
    QTest::newRow("another token has one try left") << QStringLiteral("other last try") << 1;
    QTest::newRow("another PIN") << QStringLiteral("new pin") << 2;
    QTest::newRow("another token's PIN") << QStringLiteral("other new pin") << 1;
    QTest::newRow("a write asks with one try left") << QStringLiteral("last question") << 2;
}

void TestSignKept::whatEndsTheKeeping()
{
    QFETCH(QString, event);
    QFETCH(int, questions);
    Trivex::TokenStatus status;
    status.name = status.keyStoreId = event.startsWith(QLatin1String("other"))
        ? QStringLiteral("other")
        : QStringLiteral("store");
    status.present = true;
    Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
    PinToken token;
    const auto entry = token.entry();
    AskedSigner signer;
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    std::thread other([&] { cause(event, status); });
    other.join();
    QTest::qWait(50); // until the signer has heard of it, which shows nowhere
    signer.asked.clear();
    if (event == QLatin1String("last question")) {
        Trivex::QuestionInfo question;
        question.keyStoreId = QStringLiteral("store");
        question.purpose = Trivex::Purpose::Write;
        question.pinState = Trivex::PinState::FinalTry;
        QVERIFY(Trivex::ask(question, {}).accepted);
        signer.asked.clear();
    }
    QVERIFY(signer.hasSigned(path("a.sig"), entry.get()));
    QCOMPARE(signer.asked.count(), questions - 1);
}

/// What happens to a token, told as its thread tells it.
void TestSignKept::cause(const QString &event, Trivex::TokenStatus status)
{
    Trivex::TokenError error;
    error.keyStoreId = status.keyStoreId;
    error.purpose = Trivex::Purpose::Write;
    const QHash<QString, Trivex::TokenError::Kind> failures = {
        {QStringLiteral("wrong"), Trivex::TokenError::WrongPin},
        {QStringLiteral("locked"), Trivex::TokenError::PinLocked},
        {QStringLiteral("full"), Trivex::TokenError::TokenFull},
    };
    error.kind = failures.value(event, Trivex::TokenError::NoError);
    if (error.kind != Trivex::TokenError::NoError)
        Trivex::publishTokenError(error);
    if (event.endsWith(QLatin1String("last try")))
        status.pinState = Trivex::PinState::FinalTry;
    if (event.endsWith(QLatin1String("new pin")))
        Trivex::publishPinChange(status.keyStoreId);
    const bool comesBack = event == QLatin1String("replugged");
    status.present = !comesBack && !event.endsWith(QLatin1String("out"));
    Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
    status.present = status.present || comesBack;
    Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    shortenPauses();
    TestSignKept test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_signkept.moc"
