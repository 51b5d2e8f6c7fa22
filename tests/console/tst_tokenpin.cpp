// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Which questions a file answers, and which have to be answered at the terminal.
#include "console/tokenpin.h"
#include "qca/base/descriptor.h"
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <future>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

using namespace Trivex;

namespace {

const QString Store = QStringLiteral("store");
constexpr int Patience = 60000; // ms

/// The terminal of this process; the test is the person who sits at it.
class Terminal {
public:
    /// The process must lead a session that has no terminal yet.
    Terminal()
        : m_person(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (grantpt(m_person.get()) == 0 && unlockpt(m_person.get()) == 0)
            m_process = Descriptor(::open(ptsname(m_person.get()), O_RDWR | O_CLOEXEC));
    }
    // The end of a terminal ends the process that leads its session, otherwise.
    ~Terminal() { std::signal(SIGHUP, SIG_IGN); }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;
    bool isValid() const { return m_process.isOpen(); }

    bool hasEcho() const
    {
        termios now = {};
        return tcgetattr(m_process.get(), &now) == 0 && (now.c_lflag & ECHO);
    }
    /// Types the line when it is asked for. What was seen, to the end of the line with the
    /// question.
    QByteArray answer(const QByteArray &line)
    {
        QByteArray seen;
        readTo(" ", &seen);
        const auto written = ::write(m_person.get(), line.constData(), size_t(line.size()));
        if (written == line.size())
            readTo("\n", &seen);
        return seen;
    }

private:
    void readTo(const char *mark, QByteArray *seen)
    {
        char next = 0;
        pollfd one = {m_person.get(), POLLIN, 0};
        while (!seen->contains(mark) && poll(&one, 1, Patience) == 1
               && ::read(m_person.get(), &next, 1) == 1)
            seen->append(next);
    }

    Descriptor m_person;
    Descriptor m_process;
};

} // namespace

/// A wrong PIN of a file would be tried by each start of a script until the token is locked.
class TestTokenPin : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void fileAnswers_data();
    void fileAnswers();
    void fileAnswersOnce();
    void terminalAnswersWithoutAFile();
    void takesTheEncodingOfTheLocale_data();
    void takesTheEncodingOfTheLocale();

private:
    /// What the question is answered with; `typed` at the terminal, if it is asked for there.
    Reply ask(PinState state, const QByteArray &typed);

    QCA::Initializer m_qca;
    QTemporaryDir m_directory;
    QString m_file;
    std::unique_ptr<Terminal> m_terminal;
    QByteArray m_seen; ///< at the terminal, while the last question was open
};

void TestTokenPin::initTestCase()
{
    m_terminal = std::make_unique<Terminal>();
    QVERIFY(m_terminal->isValid());
    m_file = m_directory.filePath(QStringLiteral("pin"));
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("1234\n") == 5);
}

Reply TestTokenPin::ask(PinState state, const QByteArray &typed)
{
    QuestionInfo info;
    info.purpose = Purpose::Sign;
    info.keyStoreId = Store;
    info.tokenName = QStringLiteral("Token A");
    info.pinState = state;
    auto person = std::async(std::launch::async, [&] {
        return typed.isEmpty() ? QByteArray() : m_terminal->answer(typed);
    });
    auto reply = std::async(std::launch::async, [&] {
        return Trivex::ask(info,
                           QCA::KeyStoreInfo(QCA::KeyStore::SmartCard, Store, info.tokenName));
    });
    const bool isOver = QTest::qWaitFor(
        [&] { return reply.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
        Patience);
    if (!isOver)
        cancelQuestions(Store);
    m_seen = person.get();
    return reply.get();
}

void TestTokenPin::fileAnswers_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isAnswered");
    QTest::newRow("normal") << int(PinState::Normal) << true;
    QTest::newRow("few tries") << int(PinState::CountLow) << true;
    QTest::newRow("last try") << int(PinState::FinalTry) << false;
}

void TestTokenPin::fileAnswers()
{
    QFETCH(int, state);
    QFETCH(bool, isAnswered);
    const TokenPin pin(m_file);
    QCOMPARE(pin.problem(), QString());
    const Reply reply = ask(PinState(state), isAnswered ? QByteArray() : QByteArray("4711\n"));
    QVERIFY(reply.accepted);
    QCOMPARE(reply.password.toByteArray(), QByteArray(isAnswered ? "1234" : "4711"));
    // Who gave it by a file is not there to give another one.
    QCOMPARE(reply.asksAgain, !isAnswered);
}

void TestTokenPin::fileAnswersOnce()
{
    const TokenPin pin(m_file);
    QCOMPARE(ask(PinState::Normal, {}).password.toByteArray(), QByteArray("1234"));
    QCOMPARE(ask(PinState::Normal, "4711\n").password.toByteArray(), QByteArray("4711"));
    QCOMPARE(ask(PinState::Normal, "0815\n").password.toByteArray(), QByteArray("0815"));
}

void TestTokenPin::terminalAnswersWithoutAFile()
{
    const TokenPin pin({});
    QCOMPARE(pin.problem(), QString());
    QVERIFY(m_terminal->hasEcho());
    const Reply reply = ask(PinState::Normal, "4711\n");
    QCOMPARE(reply.password.toByteArray(), QByteArray("4711"));
    QVERIFY2(m_seen.startsWith("trivex-console-pin"), m_seen.constData()); // no catalogue
    QVERIFY2(!m_seen.contains("4"), m_seen.constData());
    QVERIFY(m_terminal->hasEcho());
    // Nothing typed is no PIN.
    QVERIFY(!ask(PinState::Normal, "\n").accepted);
}

void TestTokenPin::takesTheEncodingOfTheLocale_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QByteArray>("pin");
    const QByteArray utf8 = QStringLiteral("пароль").toUtf8();
    QTest::newRow("KOI8-R") << QByteArray("KOI8-R") << QByteArray("\xD0\xC1\xD2\xCF\xCC\xD8")
                            << utf8;
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1") << QByteArray("\xE9t\xE9")
                             << QStringLiteral("été").toUtf8();
    // Written by a program that always writes it.
    QTest::newRow("UTF-8 elsewhere") << QByteArray("KOI8-R") << utf8 << utf8;
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << utf8 << utf8;
}

// A wrong encoding would be a wrong PIN, and cost one of three tries.
void TestTokenPin::takesTheEncodingOfTheLocale()
{
    QFETCH(QByteArray, locale);
    QFETCH(QByteArray, written);
    QFETCH(QByteArray, pin);
    const auto restore = qScopeGuard(
        [before = QTextCodec::codecForLocale()] { QTextCodec::setCodecForLocale(before); });
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(locale));
    {
        const TokenPin typed({});
        QCOMPARE(ask(PinState::Normal, written + '\n').password.toByteArray(), pin);
    }
    const QString path = m_directory.filePath(QStringLiteral("encoded"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(written + '\n') > 0);
    file.close();
    const TokenPin read(path);
    QCOMPARE(ask(PinState::Normal, {}).password.toByteArray(), pin);
}

int main(int argc, char *argv[])
{
    // Who leads a group of processes can't begin a session; its child can.
    if (setsid() < 0) {
        const pid_t child = fork();
        int status = 0;
        if (child > 0)
            return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status)
                                                                            : 1;
        if (child < 0 || setsid() < 0)
            return 1;
    }
    QCoreApplication application(argc, argv);
    TestTokenPin test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tokenpin.moc"
