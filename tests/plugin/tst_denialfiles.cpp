// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Small files that ask for a great amount of work, by every way in which files come: each ends at
// once, in an error or in a list, while the event loop goes on. Prints what each took. Those of the
// corpus, and of the folders that TRIVEX_DENIAL_FILES names, with a colon between them.
#include "certificates/certificate.h"
#include "qca/adapter/keybundlefile.h"
#include "requests/certificaterequest.h"
#include "tests/support/loopmeter.h"
#include "tests/x509/corpus.h"
#include "tools/certificatefile.h"

#include <QDir>
#include <QGuiApplication>
#include <QMetaEnum>
#include <QtTest>

#include <ctime>
#include <functional>

using namespace Trivex;
using TrivexTest::LoopMeter;

namespace {

/// Of processors, for one file by one way; in ms. Instrumented code has ten times as long.
constexpr qint64 AtOnce = 10 * LoopMeter::Unnoticed;

QString password()
{
    return QStringLiteral("password");
}

/// What all threads of this process have worked, in milliseconds.
qint64 processTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

QStringList filesIn(const QString &folder)
{
    QStringList paths;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &file : files)
        paths << file.filePath();
    return paths;
}

/// As the window opens it, with a bundle's password.
QString asChosenFile(const QString &path)
{
    CertificateFile file;
    file.open(path);
    const auto isKnown = [&] { return !file.isReading() && !file.isUnlocking(); };
    while (!isKnown())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (file.kind() == CertificateFile::BundleKind)
        file.unlock(password());
    while (!isKnown())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    const char *kind = QMetaEnum::fromType<CertificateFile::Kind>().valueToKey(file.kind());
    return QStringLiteral("%1, %2 objects, %3 broken%4")
        .arg(QLatin1String(kind))
        .arg(file.items()->rowCount())
        .arg(file.broken())
        .arg(file.problem().isEmpty() ? QString() : QStringLiteral(", an error"));
}

QString asBundle(const QString &path)
{
    const auto loaded = readKeyBundle(path, QCA::SecureArray(password().toLatin1()));
    if (!loaded)
        return QStringLiteral("nothing");
    return loaded->result == QCA::ConvertGood
        ? QStringLiteral("a chain of %1").arg(loaded->bundle.certificateChain().size())
        : QStringLiteral("error %1").arg(int(loaded->result));
}

QString asCertificate(const QString &path)
{
    return Certificate().loadFromFile(path) ? QStringLiteral("read") : QStringLiteral("refused");
}

QString asSavedRequest(const QString &path)
{
    const CertificateRequest request(path, nullptr);
    return request.encoding().isEmpty() ? QStringLiteral("refused") : QStringLiteral("read");
}

struct Way {
    const char *name;
    std::function<QString(const QString &path)> take;
};

} // namespace

class TestDenialFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void endsAtOnce_data();
    void endsAtOnce();

private:
    QCA::Initializer m_initializer;
    const QList<Way> m_ways = {{"chosen file", asChosenFile},
                               {"bundle", asBundle},
                               {"certificate", asCertificate},
                               {"saved request", asSavedRequest}};
};

void TestDenialFiles::initTestCase()
{
    // The first use of all loads QCA's plugins, as lists have done long before.
    for (const Way &way : m_ways)
        way.take(Corpus::path(QStringLiteral("bundle-aes.p12")));
}

void TestDenialFiles::endsAtOnce_data()
{
    QTest::addColumn<QString>("path");
    QStringList folders = {Corpus::path(QStringLiteral("denial"))};
    folders +=
        qEnvironmentVariable("TRIVEX_DENIAL_FILES").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString &folder : qAsConst(folders)) {
        const QStringList paths = filesIn(folder);
        QVERIFY2(!paths.isEmpty(), qPrintable(folder));
        for (const QString &path : paths)
            QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path;
    }
}

void TestDenialFiles::endsAtOnce()
{
    QFETCH(QString, path);
    for (const Way &way : m_ways) {
        LoopMeter meter;
        meter.start();
        const qint64 before = processTime();
        const QString outcome = way.take(path);
        const qint64 taken = processTime() - before;
        QCoreApplication::processEvents();
        meter.stop();
        const QString line = QStringLiteral("%1: %2 ms, longest turn %3 ms: %4")
                                 .arg(QLatin1String(way.name))
                                 .arg(taken)
                                 .arg(meter.longest())
                                 .arg(outcome);
        qInfo("%s", qPrintable(line));
        QVERIFY2(taken <= AtOnce, qPrintable(line));
        QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(line));
    }
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QGuiApplication application(argc, argv);
    TestDenialFiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_denialfiles.moc"
