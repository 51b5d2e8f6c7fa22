// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A process is killed before and after each file system call of a save, under ptrace(2).
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/requests/home.h"
#include "tests/signing/scriptedkey.h"

#include <QtTest>

#include <csignal>
#include <set>

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;
const QString Saved = QStringLiteral("Anna.csr");

/// What changes files. Killed anywhere else, a process leaves what it left at one of these.
const std::set<long> FileCalls = {SYS_openat,    SYS_write,  SYS_fsync,    SYS_rename,
                                  SYS_renameat2, SYS_linkat, SYS_unlink,   SYS_unlinkat,
                                  SYS_ftruncate, SYS_close,  SYS_renameat, SYS_link};

/// The work of the process that is killed; it stops itself just before the save.
int save(const QString &kind)
{
    CertificateRequest request(home->requests().filePath(Saved), nullptr);
    if (kind == QLatin1String("other name"))
        request.setCommonName(QStringLiteral("Boris"));
    std::raise(SIGSTOP);
    if (kind == QLatin1String("copy"))
        return request.saveRequest() ? 0 : 1;
    request.setEditMode(true);
    return QFile::exists(request.filePath()) ? 0 : 1;
}

enum class Tracing { Off, On };

/// A process of this program that does `save(kind)`.
pid_t startSave(const QString &kind, Tracing tracing)
{
    const QByteArray program = QFile::encodeName(QCoreApplication::applicationFilePath());
    const QByteArray path = QFile::encodeName(home->path());
    const QByteArray argument = kind.toUtf8();
    const pid_t process = ::fork();
    if (process != 0)
        return process;
    if (tracing == Tracing::On && ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        ::_exit(9);
    ::execl(program.constData(), program.constData(), "--save", path.constData(),
            argument.constData(), nullptr);
    ::_exit(9);
}

/// A traced process, killed at the end whatever happens.
class Traced {
public:
    explicit Traced(const QString &kind)
        : m_process(startSave(kind, Tracing::On))
    {
    }
    ~Traced() { kill(); }
    Traced(const Traced &) = delete;
    Traced &operator=(const Traced &) = delete;

    /// Runs until the process stops itself. False where tracing is not allowed.
    bool reachSave()
    {
        while (wait()) {
            if (WSTOPSIG(m_status) == SIGSTOP)
                return ::ptrace(PTRACE_SETOPTIONS, m_process, nullptr, PTRACE_O_TRACESYSGOOD) == 0;
            proceed(PTRACE_CONT);
        }
        return false;
    }

    /// Runs to the next beginning or end of a call that changes files; false at the process's end.
    bool nextFileCall()
    {
        for (proceed(PTRACE_SYSCALL); wait(); proceed(PTRACE_SYSCALL)) {
            if (WSTOPSIG(m_status) == (SIGTRAP | 0x80) && isFileCall())
                return true;
        }
        return false;
    }

    bool hasSucceeded() const { return WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0; }

    void kill()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        while (wait())
            proceed(PTRACE_CONT);
    }

private:
    bool wait()
    {
        if (m_process <= 0)
            return false;
        if (::waitpid(m_process, &m_status, 0) == m_process && WIFSTOPPED(m_status))
            return true;
        m_process = 0;
        return false;
    }

    // Signals that are none of the tracing go through.
    void proceed(__ptrace_request how)
    {
        const int signal = WSTOPSIG(m_status);
        const bool isOurs = signal == SIGSTOP || (signal & ~0x80) == SIGTRAP;
        ::ptrace(how, m_process, nullptr, isOurs ? 0L : long(signal));
    }

    bool isFileCall()
    {
        __ptrace_syscall_info info = {};
        if (::ptrace(PTRACE_GET_SYSCALL_INFO, m_process, sizeof info, &info) <= 0)
            return false;
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
            m_call = long(info.entry.nr);
        return FileCalls.count(m_call) > 0;
    }

    pid_t m_process = 0;
    int m_status = 0;
    long m_call = -1;
};

/// A process that is not traced. It stops just before its save, so that several can go on at once.
class Waiting {
public:
    explicit Waiting(const QString &kind)
        : m_process(startSave(kind, Tracing::Off))
    {
    }
    ~Waiting()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    Waiting(const Waiting &) = delete;
    Waiting &operator=(const Waiting &) = delete;

    bool reachSave() const
    {
        int status = 0;
        return ::waitpid(m_process, &status, WUNTRACED) == m_process && WIFSTOPPED(status);
    }
    void goOn() const { ::kill(m_process, SIGCONT); }
    bool succeeds()
    {
        int status = 0;
        const bool hasEnded = ::waitpid(m_process, &status, 0) == m_process;
        m_process = 0;
        return hasEnded && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    pid_t m_process = 0;
};

bool canTrace()
{
    Traced traced(QStringLiteral("copy"));
    return traced.reachSave() && traced.nextFileCall();
}

QByteArray contents(const QString &name)
{
    QFile file(home->requests().filePath(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

class TestRequestKill : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void everyFileCall_data();
    void everyFileCall();
    void severalProcesses_data();
    void severalProcesses();

private:
    void restore();
    bool killAt(const QString &kind, int stop);
    void check(const QString &other);

    QByteArray m_old; ///< what is saved before: with a line that a new save does not write
    QByteArray m_new;
    int m_leftOvers = 0;
};

void TestRequestKill::initTestCase()
{
    home->clearRequests();
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QStringLiteral("Anna"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    const QCA::CertificateRequest request(options, softwareKey(), QStringLiteral("qca-ossl"));
    m_new = request.toPEM().toUtf8();
    m_old = m_new + "# old\n";
    QVERIFY(!m_new.isEmpty());
    restore();
}

void TestRequestKill::restore()
{
    home->clearRequests();
    QFile file(home->requests().filePath(Saved));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(m_old), qint64(m_old.size()));
}

void TestRequestKill::everyFileCall_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("other");
    QTest::addColumn<bool>("keepsOld");
    QTest::newRow("a second one") << "copy"
                                  << "Anna (1).csr" << true;
    QTest::newRow("edited, same name") << "same name" << QString() << false;
    QTest::newRow("edited, other name") << "other name"
                                        << "Boris.csr" << false;
}

/// False when the save ended before it could be killed.
bool TestRequestKill::killAt(const QString &kind, int stop)
{
    restore();
    Traced traced(kind);
    if (!traced.reachSave())
        qFatal("a save did not begin");
    for (int i = 0; i < stop; ++i) {
        if (traced.nextFileCall())
            continue;
        if (!traced.hasSucceeded())
            qFatal("a save did not succeed");
        return false;
    }
    traced.kill();
    return true;
}

void TestRequestKill::everyFileCall()
{
    if (!canTrace())
        QSKIP("processes can't be traced here (ptrace)");
    QFETCH(QString, kind);
    QFETCH(QString, other);
    QFETCH(bool, keepsOld);
    m_leftOvers = 0;
    int stop = 1;
    for (; killAt(kind, stop); ++stop) {
        check(other);
        if (QTest::currentTestFailed()) {
            qWarning() << kind << "killed at" << stop << home->requestFiles();
            return;
        }
        QVERIFY(!keepsOld || contents(Saved) == m_old);
    }
    // A part file, its rename and the flushes, each begun and ended; some leave the part.
    QVERIFY2(stop > 12, qPrintable(QString::number(stop)));
    QVERIFY(m_leftOvers > 0);
    check(other);
    QCOMPARE(home->requestFiles().size(), keepsOld ? 2 : 1);
    QCOMPARE(contents(other.isEmpty() ? Saved : other), m_new);
}

/// What the next start finds.
void TestRequestKill::check(const QString &other)
{
    QStringList whole;
    int parts = 0;
    const auto names = home->requestFiles();
    for (const QString &name : names) {
        if (name.startsWith(QLatin1String(".trivex-"))) {
            ++parts;
            continue;
        }
        QVERIFY2(name == Saved || name == other, qPrintable(name));
        const QByteArray content = contents(name);
        QVERIFY2(content == m_new || (content == m_old && name == Saved), content.constData());
        whole.append(name);
    }
    QVERIFY(!whole.isEmpty());
    QVERIFY(parts <= 1);
    m_leftOvers += parts;
    CertificateRequestModel list;
    list.init();
    QCOMPARE(list.rowCount(), whole.size());
    for (int row = 0; row < list.rowCount(); ++row)
        QCOMPARE(list.index(row).data(CertificateRequestModel::NameRole).toString(),
                 QStringLiteral("Anna"));
}

void TestRequestKill::severalProcesses_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("keepsOld");
    QTest::newRow("copies") << "copy"
                            << QStringList{QStringLiteral("Anna (1).csr"),
                                           QStringLiteral("Anna (2).csr"),
                                           QStringLiteral("Anna (3).csr"),
                                           QStringLiteral("Anna (4).csr"), Saved}
                            << true;
    QTest::newRow("edits") << "same name" << QStringList{Saved} << false;
}

/// They save one request at the same time: nothing is lost, and no file is half of one.
void TestRequestKill::severalProcesses()
{
    QFETCH(QString, kind);
    QFETCH(QStringList, names);
    QFETCH(bool, keepsOld);
    for (int round = 0; round < 3; ++round) {
        restore();
        Waiting processes[] = {Waiting(kind), Waiting(kind), Waiting(kind), Waiting(kind)};
        for (const Waiting &process : processes)
            QVERIFY(process.reachSave());
        for (const Waiting &process : processes)
            process.goOn();
        for (Waiting &process : processes)
            QVERIFY(process.succeeds());
        QCOMPARE(home->requestFiles(), names);
        for (const QString &name : qAsConst(names))
            QCOMPARE(contents(name), name == Saved && keepsOld ? m_old : m_new);
    }
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const bool isChild = argc == 4 && qstrcmp(argv[1], "--save") == 0;
    const Home place(isChild ? QString::fromLocal8Bit(argv[2]) : QString());
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    if (isChild)
        return save(QString::fromUtf8(argv[3]));
    TestRequestKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestkill.moc"
