// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "tools/pinprompt.h"

#include <QSignalSpy>
#include <QtTest>

#include <future>

using namespace Trivex;

namespace {

/// A question of a token, put from a thread of its own as an operation would.
class Question {
public:
    explicit Question(const QString &token)
        : m_store(QStringLiteral("store of ") + token)
    {
        QuestionInfo info;
        info.purpose = Purpose::Write;
        info.keyStoreId = m_store;
        info.tokenName = token;
        m_reply = std::async(std::launch::async, [info] {
            return ask(
                info, QCA::KeyStoreInfo(QCA::KeyStore::SmartCard, info.keyStoreId, info.tokenName));
        });
    }
    ~Question()
    {
        withdraw();
        while (m_reply.valid() && !isOver())
            QCoreApplication::processEvents();
    }

    void withdraw() const { cancelQuestions(m_store); }
    bool isOver() const
    {
        return m_reply.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    }
    /// The PIN that it was answered with; null when it was declined. Only once it is over.
    QByteArray pin()
    {
        const Reply reply = m_reply.get();
        return reply.accepted ? reply.password.toByteArray() : QByteArray();
    }

private:
    QString m_store;
    std::future<Reply> m_reply;
};

const QString First = QStringLiteral("first");
const QString Second = QStringLiteral("second");

} // namespace

/// Questions that overlap, without a window: what is typed or declined concerns the question that
/// was seen, and no other.
class TestPinPrompt : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void answersWhatWasSeen();
    void declinesWhatWasSeen();
    void withdrawnBehind();
    void withdrawnInFront();
    void disabledDeclines();
    void emptyPinIsNone();

private:
    /// Waits until the prompt has it.
    void put(std::unique_ptr<Question> &question, const QString &token);

    QCA::Initializer m_qca;
    std::unique_ptr<QCA::EventHandler> m_witness;
    int m_questions = 0; ///< that the witness has seen
    std::unique_ptr<PinPrompt> m_prompt;
};

void TestPinPrompt::init()
{
    m_prompt.reset();
    m_questions = 0;
    // Each question comes to it first, and to the prompt when it stands back.
    m_witness = std::make_unique<QCA::EventHandler>();
    connect(m_witness.get(), &QCA::EventHandler::eventReady, this, [this](int id) {
        ++m_questions;
        m_witness->reject(id);
    });
    m_witness->start();
    m_prompt = std::make_unique<PinPrompt>();
    m_prompt->setEnabled(true);
}

void TestPinPrompt::put(std::unique_ptr<Question> &question, const QString &token)
{
    const int before = m_questions;
    question = std::make_unique<Question>(token);
    QTRY_VERIFY(m_questions > before);
    // The prompt shows the first one alone: of the others the next turns of the loop are all.
    QTRY_VERIFY(m_prompt->isOpen());
    for (int turn = 0; turn < 5; ++turn)
        QTest::qWait(1);
}

void TestPinPrompt::answersWhatWasSeen()
{
    std::unique_ptr<Question> first;
    std::unique_ptr<Question> second;
    put(first, First);
    const int seen = m_prompt->question();
    put(second, Second);
    m_prompt->submit(seen, QStringLiteral("1111"));
    QTRY_VERIFY(first->isOver());
    QCOMPARE(first->pin(), QByteArray("1111"));
    QTRY_COMPARE(m_prompt->tokenName(), Second);
    // Typed a moment too late.
    m_prompt->submit(seen, QStringLiteral("1111"));
    m_prompt->submitKept(seen, QStringLiteral("1111"));
    QCOMPARE(m_prompt->tokenName(), Second);
    QVERIFY(m_prompt->question() != seen);
    m_prompt->submit(m_prompt->question(), QStringLiteral("2222"));
    QTRY_VERIFY(second->isOver());
    QCOMPARE(second->pin(), QByteArray("2222"));
    QVERIFY(!m_prompt->isOpen());
}

void TestPinPrompt::declinesWhatWasSeen()
{
    std::unique_ptr<Question> first;
    std::unique_ptr<Question> second;
    put(first, First);
    const int seen = m_prompt->question();
    put(second, Second);
    m_prompt->reject(seen);
    QTRY_VERIFY(first->isOver());
    QVERIFY(first->pin().isNull());
    QTRY_COMPARE(m_prompt->tokenName(), Second);
    m_prompt->reject(seen);
    QCOMPARE(m_prompt->tokenName(), Second);
    m_prompt->submit(m_prompt->question(), QStringLiteral("2222"));
    QTRY_VERIFY(second->isOver());
    QCOMPARE(second->pin(), QByteArray("2222"));
}

// The one that is open stays as it is, with what was typed so far.
void TestPinPrompt::withdrawnBehind()
{
    std::unique_ptr<Question> first;
    std::unique_ptr<Question> second;
    put(first, First);
    const int seen = m_prompt->question();
    put(second, Second);
    QSignalSpy withdrawn(m_prompt.get(), &PinPrompt::withdrawn);
    second->withdraw();
    QTRY_VERIFY(second->isOver());
    QVERIFY(second->pin().isNull());
    QTest::qWait(1); // the prompt hears of it by a queued call
    QCOMPARE(withdrawn.count(), 0);
    QCOMPARE(m_prompt->question(), seen);
    QVERIFY(!first->isOver());
    m_prompt->submit(seen, QStringLiteral("1111"));
    QTRY_VERIFY(first->isOver());
    QCOMPARE(first->pin(), QByteArray("1111"));
    QVERIFY(!m_prompt->isOpen());
}

void TestPinPrompt::withdrawnInFront()
{
    std::unique_ptr<Question> first;
    std::unique_ptr<Question> second;
    put(first, First);
    put(second, Second);
    QSignalSpy withdrawn(m_prompt.get(), &PinPrompt::withdrawn);
    first->withdraw();
    QTRY_COMPARE(m_prompt->tokenName(), Second);
    QCOMPARE(withdrawn.count(), 1);
    QTRY_VERIFY(first->isOver());
    QVERIFY(first->pin().isNull());
    m_prompt->submit(m_prompt->question(), QStringLiteral("2222"));
    QTRY_VERIFY(second->isOver());
    QCOMPARE(second->pin(), QByteArray("2222"));
}

// Nobody is there any more who could answer: no operation waits for ever.
void TestPinPrompt::disabledDeclines()
{
    std::unique_ptr<Question> first;
    std::unique_ptr<Question> second;
    put(first, First);
    put(second, Second);
    m_prompt->setEnabled(false);
    QVERIFY(!m_prompt->isOpen());
    QTRY_VERIFY(first->isOver());
    QTRY_VERIFY(second->isOver());
    QVERIFY(first->pin().isNull());
    QVERIFY(second->pin().isNull());
    // Nor is one taken up from now on.
    first = std::make_unique<Question>(First);
    QTRY_VERIFY(first->isOver());
    QVERIFY(first->pin().isNull());
    QVERIFY(!m_prompt->isOpen());
}

void TestPinPrompt::emptyPinIsNone()
{
    std::unique_ptr<Question> first;
    put(first, First);
    m_prompt->submit(m_prompt->question(), QString());
    m_prompt->submitKept(m_prompt->question(), QString());
    QVERIFY(m_prompt->isOpen());
    m_prompt->reject(m_prompt->question());
    QTRY_VERIFY(first->isOver());
    QVERIFY(first->pin().isNull());
}

QTEST_GUILESS_MAIN(TestPinPrompt)
#include "tst_pinprompt.moc"
