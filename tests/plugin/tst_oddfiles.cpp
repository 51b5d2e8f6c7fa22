// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Whatever somebody chooses in place of a file, and whatever happens to it meanwhile: each place
// that opens files reads a bounded part of it, waits for nobody and says that it is nothing.
#include "certificates/certificate.h"
#include "keystores/keystoremodel.h"
#include "qca/base/bounds.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "signing/loaderfile.h"
#include "signing/rawsignature.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/support/processfacts.h"
#include "tests/support/systemlist.h"
#include "tests/support/testcertificates.h"
#include "tools/certificatefile.h"
#include "tools/files.h"

#include <QtTest>

#include <atomic>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const PrivateHome privateHome;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 MostMemory = 512 * 1024; // KiB; the sanitizers keep what is freed
#else
constexpr qint64 MostMemory = 96 * 1024; // KiB: a file at the bound, as bytes and as text
#endif
constexpr qint64 Slack = 1024 * 1024; // what reading these numbers and Qt's own files takes
constexpr qint64 MostGrown = qint64(64) << 20;

void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("5") == 1);
}

/// Does `work` to a file again and again, for as long as it lives.
class Meanwhile {
public:
    explicit Meanwhile(std::function<void()> work)
        : m_thread([this, work = std::move(work)] {
            while (!m_isOver)
                work();
        })
    {
    }
    ~Meanwhile()
    {
        m_isOver = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_isOver{false};
    std::thread m_thread;
};

enum Outcome { Refused, Taken, Either };

/// Reads as somebody who owns nothing, where this process may read all.
class NobodyReads {
public:
    explicit NobodyReads(bool isWanted)
        : m_isOn(isWanted && geteuid() == 0 && setresuid(65534, 65534, 0) == 0)
    {
    }
    ~NobodyReads()
    {
        if (m_isOn && setresuid(0, 0, 0) != 0)
            qFatal("no way back");
    }
    Q_DISABLE_COPY(NobodyReads)

private:
    bool m_isOn;
};

} // namespace

class TestOddFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void opens_data();
    void opens();
    void saysWhatIsTheMatter_data();
    void saysWhatIsTheMatter();
    void directories();

private:
    struct Opener {
        const char *name;
        qint64 mostRead;
        Outcome sparse; ///< a regular file of less than 2 GiB
        Outcome large; ///< one of more
        Outcome sizeless; ///< contents without a size
        std::function<bool(const QString &path)> open;
    };
    QList<Opener> openers();
    QString make(const QString &kind);
    std::unique_ptr<Meanwhile> trouble(const QString &kind, const QString &path);

    QCA::Initializer m_initializer;
    TestAuthority m_authority;
    QTemporaryDir m_directory;
    std::unique_ptr<KeyStoreModel> m_model;
    QByteArray m_pem;
};

void TestOddFiles::initTestCase()
{
    QVERIFY(m_authority.isValid());
    // For those who own nothing, too.
    QCOMPARE(chmod(QFile::encodeName(m_directory.path()).constData(), 0711), 0);
    setSystemList();
    m_model = std::make_unique<KeyStoreModel>();
    QFile file(m_authority.certificateFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_pem = file.readAll();
    QVERIFY(bytesRead() > 0);
}

QList<TestOddFiles::Opener> TestOddFiles::openers()
{
    constexpr qint64 File = MaxFileBytes;
    constexpr qint64 Signature = 1024 * 1024;
    constexpr qint64 Document = qint64(1600) << 20;
    return {
        {"certificate", File, Refused, Refused, Refused,
         [](const QString &path) { return Certificate(path).commonName() != QString(); }},
        {"certificate to import", File, Refused, Refused, Refused,
         [this](const QString &path) {
             m_model->resetImportedCertificate();
             return m_model->certificateFromPEMFile(path);
         }},
        {"bundle", File, Refused, Refused, Refused,
         [this](const QString &path) {
             return m_model->keyBundleFromFile(path, QStringLiteral("secret"));
         }},
        {"file of the window", File, Refused, Refused, Refused,
         [](const QString &path) {
             CertificateFile opened;
             opened.setPath(path);
             return opened.kind() != CertificateFile::Unreadable
                 && opened.kind() != CertificateFile::OtherKind;
         }},
        {"request", File, Refused, Refused, Refused,
         [this](const QString &path) {
             return !CertificateRequest(path, m_model.get()).commonName().isEmpty();
         }},
        {"document", Document, Taken, Refused, Refused,
         [](const QString &path) {
             LoaderFile loader;
             loader.setFilePath(path);
             return loader.status() == LoaderFile::Ready;
         }},
        // Its first MiB is looked at: no signature is longer.
        {"signature", Signature, Taken, Taken, Taken,
         [](const QString &path) { return readSignature(path).has_value(); }},
    };
}

void TestOddFiles::opens_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("opener");
    QTest::addColumn<int>("expected");
    const QList<Opener> all = openers();
    for (int i = 0; i < all.size(); ++i) {
        const Opener &opener = all.at(i);
        const auto row = [&](const char *kind, Outcome expected) {
            QTest::addRow("%s, %s", opener.name, kind)
                << QString::fromLatin1(kind) << i << int(expected);
        };
        for (const char *kind : {"missing", "directory", "pipe", "pipe with a writer", "zeros",
                                 "socket", "circle", "unreadable"})
            row(kind, Refused);
        row("sparse 1.5 GB", opener.sparse);
        row("sparse 3 GB", opener.large);
        row("status of the process", opener.sizeless);
        row("endless file of the system", opener.sizeless);
        row("empty", opener.sparse);
        row("grows", Either);
        row("shrinks", Either);
    }
}

QString TestOddFiles::make(const QString &kind)
{
    static int count = 0;
    const QString path = m_directory.filePath(QStringLiteral("%1.txt").arg(++count));
    const QByteArray native = QFile::encodeName(path);
    if (kind == QLatin1String("zeros"))
        return QStringLiteral("/dev/zero");
    if (kind == QLatin1String("status of the process"))
        return QStringLiteral("/proc/self/status");
    if (kind == QLatin1String("endless file of the system"))
        return QStringLiteral("/proc/self/pagemap");
    if (kind == QLatin1String("directory")) {
        mkdir(native.constData(), 0700);
    } else if (kind.startsWith(QLatin1String("pipe"))) {
        mkfifo(native.constData(), 0600);
    } else if (kind == QLatin1String("circle")) {
        if (symlink(native.constData(), native.constData()) != 0)
            return {};
    } else if (kind == QLatin1String("socket")) {
        mknod(native.constData(), S_IFSOCK | 0600, 0);
    } else if (kind != QLatin1String("missing")) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return {};
        if (kind.startsWith(QLatin1String("sparse")))
            file.resize(qint64(3) << (kind.contains(QLatin1String("1.5")) ? 29 : 30));
        else if (kind != QLatin1String("empty"))
            file.write(m_pem);
        file.close();
        if (kind == QLatin1String("unreadable"))
            chmod(native.constData(), 0);
    }
    return path;
}

/// What goes on with the file while it is read.
std::unique_ptr<Meanwhile> TestOddFiles::trouble(const QString &kind, const QString &path)
{
    const QByteArray native = QFile::encodeName(path);
    if (kind == QLatin1String("pipe with a writer"))
        return std::make_unique<Meanwhile>([native] {
            // Both ways, so that opening it waits for nobody.
            const int descriptor = open(native.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
            for (int i = 0; i < 100; ++i) {
                if (write(descriptor, "text\n", 5) < 0)
                    break;
            }
            close(descriptor);
        });
    if (kind == QLatin1String("grows"))
        return std::make_unique<Meanwhile>([native] {
            static const std::string text(64 * 1024, '\n');
            struct stat status;
            const int descriptor = open(native.constData(), O_WRONLY | O_APPEND | O_CLOEXEC);
            if (fstat(descriptor, &status) == 0 && status.st_size < MostGrown)
                static_cast<void>(write(descriptor, text.data(), text.size()) < 0);
            close(descriptor);
        });
    if (kind == QLatin1String("shrinks"))
        return std::make_unique<Meanwhile>([native] {
            static_cast<void>(truncate(native.constData(), 8 << 20) < 0);
            static_cast<void>(truncate(native.constData(), 100) < 0);
        });
    return nullptr;
}

void TestOddFiles::opens()
{
    QFETCH(QString, kind);
    QFETCH(int, opener);
    QFETCH(int, expected);
    const Opener used = openers().at(opener);
    const QString path = make(kind);
    QVERIFY(!path.isEmpty());
    const auto meanwhile = trouble(kind, path);
    // What is read lazily once is not the file's.
    static_cast<void>(used.open(m_authority.certificateFile()));
    forgetPeak();
    const qint64 memory = peakMemory();
    const qint64 before = bytesRead();
    const bool isTaken = [&] {
        // No longer than this: such a one may not even ask what was read.
        const NobodyReads nobody(kind == QLatin1String("unreadable"));
        return used.open(path);
    }();
    const qint64 after = bytesRead();
    QVERIFY(before >= 0 && after >= before);
    const qint64 read = after - before;
    QVERIFY2(read <= used.mostRead + Slack, qPrintable(QString::number(read)));
    QVERIFY2(peakMemory() - memory < MostMemory,
             qPrintable(QString::number(peakMemory() - memory)));
    if (expected != Either)
        QCOMPARE(isTaken, expected == Taken);
}

void TestOddFiles::saysWhatIsTheMatter_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *kind, const char *text) {
        QTest::newRow(kind) << QString::fromLatin1(kind) << QString::fromLatin1(text);
    };
    row("missing", "trivex-app-read-missing");
    row("circle", "trivex-app-read-missing");
    row("directory", "trivex-app-read-folder");
    row("unreadable", "trivex-app-read-denied");
    row("empty", "trivex-app-read-empty");
    row("sparse 3 GB", "trivex-app-read-too-big");
    for (const char *kind : {"pipe", "pipe with a writer", "zeros", "socket",
                             "status of the process", "endless file of the system"})
        row(kind, "trivex-app-read-special");
}

void TestOddFiles::saysWhatIsTheMatter()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    const QString path = make(kind);
    const auto meanwhile = trouble(kind, path);
    const NobodyReads nobody(kind == QLatin1String("unreadable"));
    QCOMPARE(Files().whyNotRead(path), text);
}

// All of them at once, in the two directories that are read by themselves.
void TestOddFiles::directories()
{
    const QString requests = privateHome.path() + QStringLiteral("/CertificateRequest/");
    QVERIFY(QDir().mkpath(requests));
    std::vector<std::unique_ptr<Meanwhile>> troubles;
    int count = 0;
    for (const char *kind : {"directory", "pipe", "pipe with a writer", "zeros", "socket", "circle",
                             "sparse 1.5 GB", "sparse 3 GB", "status of the process",
                             "endless file of the system", "empty", "grows", "shrinks"}) {
        const QString path = make(QString::fromLatin1(kind));
        troubles.push_back(trouble(QString::fromLatin1(kind), path));
        QVERIFY(QFile::link(path, requests + QStringLiteral("%1.csr").arg(++count)));
    }
    m_authority.openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
                         QStringLiteral("rsa:1024"), QStringLiteral("-nodes"),
                         QStringLiteral("-keyout"), m_directory.filePath(QStringLiteral("key")),
                         QStringLiteral("-subj"), QStringLiteral("/CN=Good"),
                         QStringLiteral("-out"), requests + QStringLiteral("zzz.csr")});
    forgetPeak();
    const qint64 memory = peakMemory();
    const qint64 before = bytesRead();
    CertificateRequestModel model;
    model.setKeyStoreModel(m_model.get());
    model.init();
    const auto hasGood = [&] {
        for (int row = 0; row < model.rowCount(); ++row) {
            for (const int role : model.roleNames().keys()) {
                if (model.data(model.index(row), role).toString() == QLatin1String("Good"))
                    return true;
            }
        }
        return false;
    };
    QTRY_VERIFY(hasGood());
    QVERIFY(bytesRead() - before <= count * (MaxFileBytes + Slack));
    QVERIFY2(peakMemory() - memory < MostMemory,
             qPrintable(QString::number(peakMemory() - memory)));
}

QTEST_GUILESS_MAIN(TestOddFiles)

#include "tst_oddfiles.moc"
