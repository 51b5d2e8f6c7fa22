// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Bus errors that are not about a mapping of ours end where they would have ended without us. Each
// case runs in a process of its own.
#include "signing/buserrorguard.h"

#include <QProcess>
#include <QTemporaryFile>
#include <QtTest>

#include <csignal>

#include <unistd.h>

namespace {

constexpr int Survived = 40; ///< exit codes
constexpr int HandledPlainly = 41;
constexpr int HandledWithInfo = 42;
constexpr int HandledTwice = 43;
constexpr int NotPrepared = 44;
constexpr unsigned Patience = 20; ///< seconds; what loops ends by SIGALRM
constexpr int FileSize = 4 * 65536;

char *faulty = nullptr;
int calls = 0;

void exitPlainly(int)
{
    _exit(HandledPlainly);
}

void exitWithInfo(int, siginfo_t *info, void *)
{
    _exit(info->si_addr == faulty ? HandledWithInfo : Survived);
}

/// As a reporter of crashes does: writes its report, and leaves the end to the default.
void report(int)
{
    if (++calls > 1)
        _exit(HandledTwice);
}

void reportAndRestore(int number)
{
    report(number);
    signal(SIGBUS, SIG_DFL);
}

struct Disposition {
    const char *name;
    void (*plain)(int);
    void (*withInfo)(int, siginfo_t *, void *);
    int flags;
    /// How the process ends: an exit code, or the negative number of a signal.
    int afterFault;
    int afterSignal;
};

const Disposition dispositions[] = {
    {"default", SIG_DFL, nullptr, 0, -SIGBUS, -SIGBUS},
    // The system lets nobody ignore a fault.
    {"ignored", SIG_IGN, nullptr, 0, -SIGBUS, Survived},
    {"plain", &exitPlainly, nullptr, 0, HandledPlainly, HandledPlainly},
    {"with information", nullptr, &exitWithInfo, SA_SIGINFO, HandledWithInfo, Survived},
    {"once", &report, nullptr, int(SA_RESETHAND), -SIGBUS, Survived},
    {"once, not deferred", &report, nullptr, int(SA_RESETHAND) | SA_NODEFER, -SIGBUS, Survived},
    {"restores the default", &reportAndRestore, nullptr, 0, -SIGBUS, Survived},
};

/// The second of two pages of a file that has lost it.
char *lostPage(QTemporaryFile *file)
{
    if (!file->open() || !file->resize(FileSize))
        return nullptr;
    char *page = reinterpret_cast<char *>(file->map(0, FileSize));
    return page && file->resize(0) ? page + FileSize / 2 : nullptr;
}

void set(const Disposition &disposition)
{
    struct sigaction action = {};
    if (disposition.withInfo)
        action.sa_sigaction = disposition.withInfo;
    else
        action.sa_handler = disposition.plain;
    action.sa_flags = disposition.flags;
    sigemptyset(&action.sa_mask);
    sigaction(SIGBUS, &action, nullptr);
}

/// One case; `isFault` for a fault outside of every guard, else a signal that is sent.
int run(int number, bool isFault)
{
    alarm(Patience);
    set(dispositions[number]);
    QTemporaryFile foreign;
    QTemporaryFile guarded;
    faulty = lostPage(&foreign);
    char *own = lostPage(&guarded);
    if (!faulty || !own)
        return NotPrepared;
    const Trivex::BusErrorGuard guard(own, FileSize / 2);
    // What is guarded reads as zeros, whatever was set before.
    if (*static_cast<volatile char *>(own) != 0 || !guard.isDamaged())
        return NotPrepared;
    if (isFault)
        *static_cast<volatile char *>(faulty) = 1;
    else
        raise(SIGBUS);
    return Survived;
}

} // namespace

class TestBusErrors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void endAsBefore_data();
    void endAsBefore();
};

void TestBusErrors::endAsBefore_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isFault");
    QTest::addColumn<int>("end");
    int number = 0;
    for (const Disposition &disposition : dispositions) {
        QTest::addRow("fault, %s", disposition.name) << number << true << disposition.afterFault;
        QTest::addRow("sent, %s", disposition.name) << number << false << disposition.afterSignal;
        ++number;
    }
}

void TestBusErrors::endAsBefore()
{
    QFETCH(int, number);
    QFETCH(bool, isFault);
    QFETCH(int, end);
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QCoreApplication::applicationFilePath(),
                  {QString::number(number), QString::number(int(isFault))});
    QVERIFY(process.waitForFinished());
    // Of a process that was ended by a signal the exit code is the number of that.
    const bool isExit = process.exitStatus() == QProcess::NormalExit;
    QCOMPARE(isExit ? process.exitCode() : -process.exitCode(), end);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    bool isCase = false;
    const int number = argc == 3 ? arguments.at(1).toInt(&isCase) : -1;
    if (isCase)
        return run(number, arguments.at(2) == QLatin1String("1"));
    TestBusErrors test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_buserrors.moc"
