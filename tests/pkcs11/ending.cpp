// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/ending.h"

#include "providers/pkcs11/contexts/contexts.h"
#include "qca/adapter/keygenerator.h"
#include "qca/base/processend.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testtoken.h"

#include <QElapsedTimer>
#include <QSaveFile>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

// Asked by the leak sanitizer, where there is one: the threads of a forked child are its parent's,
// and what only they point to is no leak.
// NOLINTBEGIN(bugprone-reserved-identifier): the name is the sanitizer's.
extern "C" Q_DECL_EXPORT int __lsan_is_turned_off();

extern "C" int __lsan_is_turned_off()
{
    return Trivex::ProcessEnd::isForkedChild() ? 1 : 0;
}
// NOLINTEND(bugprone-reserved-identifier)

namespace TrivexTest {

const char *const endingWays[3] = {"return", "exit", "thread"};

namespace {

constexpr int StartPatience = 60000;
/// Keys whose making takes a while, and no time at all.
constexpr int LongBits = 4096;
constexpr int ShortBits = 2048;
constexpr int LoginLifetime = 175;
/// Where the end itself makes the call, or nothing is called: how long there is rest before it.
constexpr int Rest = 700;
constexpr int LookPause = 20;
constexpr int NotStarted = 3;
constexpr int NotReached = 4;
constexpr std::chrono::seconds ChildPatience{10};

const QString Provider = QStringLiteral("qca-norvel-pkcs11");

bool isAtStart(const QString &call)
{
    static const QStringList calls = {
        QStringLiteral("C_Initialize"), QStringLiteral("C_GetSlotList"),
        QStringLiteral("C_OpenSession"), QStringLiteral("C_FindObjects")};
    return calls.contains(call);
}

bool isAtEnd(const QString &call)
{
    return call.isEmpty() || call == QLatin1String("C_CloseSession")
        || call == QLatin1String("C_Finalize");
}

/// What the module has logged since this object was made.
class NewLog {
public:
    NewLog()
        : m_file(qEnvironmentVariable("TRIVEX_FAULTY_LOG"))
        , m_start(m_file.size())
    {
    }

    bool contains(const QByteArray &text)
    {
        if (!m_file.isOpen() && !m_file.open(QIODevice::ReadOnly))
            return false;
        m_file.seek(m_start);
        return m_file.readAll().contains(text);
    }

private:
    QFile m_file;
    qint64 m_start;
};

/// Does something once the call waits in the module: a busy machine takes its time to come there.
class Reached : public QObject {
public:
    explicit Reached(const QString &call)
        : m_call(call.toLatin1())
    {
    }

    template <typename Action> void whenReached(Action action)
    {
        if (isAtEnd(QString::fromLatin1(m_call))) {
            QTimer::singleShot(Rest, this, action);
            return;
        }
        m_timer.callOnTimeout(this, [this, action] {
            if (m_log.contains("waits " + m_call + '\n')) {
                m_timer.stop();
                action();
            }
        });
        m_timer.start(LookPause);
        QTimer::singleShot(StartPatience, this, [this] {
            if (m_timer.isActive())
                std::_Exit(NotReached);
        });
    }

private:
    QByteArray m_call;
    NewLog m_log;
    QTimer m_timer;
};

/// `when`: which call, and how many milliseconds it takes.
void order(const Ending &ending, const QByteArray &when)
{
    QSaveFile file(ending.controlFile);
    const bool isGood = file.open(QIODevice::WriteOnly)
        && file.write("delay " + ending.call.toLatin1() + ' ' + when + '\n') > 0 && file.commit();
    if (!isGood)
        qFatal("the control file can't be written");
}

void hold(const Ending &ending)
{
    if (!ending.call.isEmpty())
        order(ending, "* 60000");
}

/// What the test measures the end from.
void tellEnd()
{
    std::puts("ending");
    std::fflush(stdout);
}

void leave(const QString &way)
{
    tellEnd();
    if (way == QLatin1String("exit"))
        std::exit(EndingStatus);
    if (way == QLatin1String("thread"))
        std::thread([] { std::exit(EndingStatus); }).join();
    QCoreApplication::exit(EndingStatus);
}

/// Logins end by themselves, again and again, well before the process does. For tokens that are
/// found afterwards.
void shortenLogins()
{
    // Starts the provider, which takes its settings from QCA first.
    QCA::findProvider(Provider);
    Trivex::TokenSettings settings;
    settings.loginLifetime = std::chrono::milliseconds(LoginLifetime);
    Trivex::configureTokens(settings);
}

void start(Trivex::KeyGenerator *generator, const QString &storeId, int bits)
{
    generator->setBlockingEnabled(false);
    generator->setTarget(storeId, QStringLiteral("made"));
    generator->createRSA(bits, 65537, Provider);
}

bool sign(const Stores &stores, const QString &storeName)
{
    const QCA::KeyStoreEntry entry = stores.entry(storeName, QStringLiteral("signer"));
    if (entry.isNull())
        return false;
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    return !key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat).isEmpty();
}

} // namespace

int runEnding(const Ending &ending)
{
    auto reached = std::make_unique<Reached>(ending.call);
    if (isAtStart(ending.call))
        hold(ending);
    const QCA::Initializer qca;
    const bool isIdle = ending.call == QLatin1String("C_Logout");
    if (isIdle)
        shortenLogins();
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    Trivex::KeyGenerator generator;
    if (!isAtStart(ending.call)) {
        if (!stores.waitForEntries(ending.storeName, 1, StartPatience))
            return NotStarted;
        if ((isIdle || ending.call.isEmpty()) && !sign(stores, ending.storeName))
            return NotStarted;
        reached = std::make_unique<Reached>(ending.call);
        hold(ending);
    }
    reached->whenReached([&ending] { leave(ending.way); });
    if (ending.call == QLatin1String("C_GenerateKeyPair"))
        start(&generator, stores.byName(ending.storeName)->id(), ShortBits);
    else if (ending.call == QLatin1String("C_Sign") || ending.call == QLatin1String("C_Login"))
        QTimer::singleShot(0, [&] { sign(stores, ending.storeName); });
    return QCoreApplication::exec();
}

int runLateReturn(const Ending &ending, int milliseconds)
{
    NewLog log;
    {
        const QCA::Initializer qca;
        PinPrompt prompt(TestToken::pin());
        Stores stores;
        Trivex::KeyGenerator generator;
        if (!stores.waitForEntries(ending.storeName, 1, StartPatience))
            return NotStarted;
        Reached reached(ending.call);
        order(ending, "1 " + QByteArray::number(milliseconds));
        if (ending.call == QLatin1String("C_GenerateKeyPair"))
            start(&generator, stores.byName(ending.storeName)->id(), ShortBits);
        else
            QTimer::singleShot(0, [&] { sign(stores, ending.storeName); });
        reached.whenReached([] { QCoreApplication::exit(); });
        QCoreApplication::exec();
    }
    QElapsedTimer clock;
    clock.start();
    const QByteArray returned = '\n' + ending.call.toLatin1() + " CKR_OK";
    while (!log.contains(returned)) {
        if (clock.elapsed() > StartPatience)
            return NotReached;
        // The log of another library tells nobody that it has grown.
        std::this_thread::sleep_for(std::chrono::milliseconds(LookPause));
    }
    // The thread goes on with what it holds.
    std::this_thread::sleep_for(std::chrono::milliseconds(Rest));
    tellEnd();
    return EndingStatus;
}

int runGeneratingEnd(const QString &storeName, int milliseconds)
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    if (!stores.waitForEntries(storeName, 1, StartPatience) || !sign(stores, storeName))
        return NotStarted;
    Trivex::KeyGenerator generator;
    start(&generator, stores.byName(storeName)->id(), LongBits);
    QTimer::singleShot(milliseconds, [] {
        tellEnd();
        std::exit(EndingStatus);
    });
    return QCoreApplication::exec();
}

int runForkingParent(const QString &storeName)
{
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    if (!stores.waitForEntries(storeName, 1, StartPatience) || !sign(stores, storeName))
        return NotStarted;
    tellEnd();
    const pid_t child = fork();
    if (child == 0)
        std::exit(EndingStatus);
    const auto deadline = std::chrono::steady_clock::now() + ChildPatience;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return 1;
        }
        // `waitpid` has no time limit of its own.
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}

int runTwoApplications(int argc, char *argv[], const QString &storeName)
{
    for (int round = 0; round < 2; ++round) {
        QCoreApplication application(argc, argv);
        const QCA::Initializer qca;
        PinPrompt prompt(TestToken::pin());
        Stores stores;
        if (!stores.waitForEntries(storeName, 1, StartPatience))
            return NotStarted;
        if (!sign(stores, storeName) || prompt.count() != 1)
            return 10 + round;
    }
    tellEnd();
    return EndingStatus;
}

} // namespace TrivexTest
