// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What becomes of a loaded file: its size, its bytes, and changes made by others.
#include "signing/loaderfile.h"
#include "tests/support/processfacts.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtCrypto>
#include <QtTest>

#include <memory>

#include <sys/resource.h>
#include <unistd.h>

namespace {

const QByteArray text = "Some plain text\n";

/// What this process has read of files so far, and mapped in.
qint64 touchedBytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return TrivexTest::bytesRead()
        + qint64(usage.ru_minflt + usage.ru_majflt) * sysconf(_SC_PAGESIZE);
}

} // namespace

class TestLoadedFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void emptyFile();
    void procFile();
    void twoGibibytes();
    void largestFile();
    void rawDataOutlivesTheLoader();
    void cutWhileLoaded();
    void costIndependentOfSize();

private:
    QString make(const QString &name, const QByteArray &content) const;
    QTemporaryDir m_directory;
};

QString TestLoadedFile::make(const QString &name, const QByteArray &content) const
{
    QFile file(m_directory.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return file.fileName();
}

void TestLoadedFile::emptyFile()
{
    LoaderFile loader;
    QSignalSpy bytes(&loader, &LoaderFile::rawDataChanged);
    loader.setFilePath(make(QStringLiteral("empty.txt"), {}));
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QCOMPARE(loader.error(), int(LoaderFile::NoError));
    QCOMPARE(bytes.count(), 1);
    QVERIFY(loader.rawData().isEmpty());
    QCOMPARE(loader.fileSize(), 0);
    QCOMPARE(loader.fileHash().toLatin1(),
             QCryptographicHash::hash({}, QCryptographicHash::Sha256).toHex());
    loader.setHashType(QStringLiteral("sha1"));
    QCOMPARE(loader.fileHash().toLatin1(),
             QCryptographicHash::hash({}, QCryptographicHash::Sha1).toHex());
}

void TestLoadedFile::procFile()
{
    // It has contents, but tells no size; what would be shown is not what would be signed.
    LoaderFile loader;
    loader.setFilePath(QStringLiteral("/proc/self/status"));
    QCOMPARE(loader.status(), int(LoaderFile::Error));
    QVERIFY(loader.fileHash().isEmpty());
}

void TestLoadedFile::twoGibibytes()
{
    const QString path = make(QStringLiteral("large.txt"), text);
    QVERIFY(QFile::resize(path, qint64(2) << 30));
    LoaderFile loader;
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Error));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    QVERIFY(loader.rawData().isEmpty());
    QVERIFY(loader.fileHash().isEmpty());
    QFile::remove(path);
}

void TestLoadedFile::largestFile()
{
    const QString path = make(QStringLiteral("large.txt"), text);
    const qint64 size = (qint64(2) << 30) - 1;
    QVERIFY(QFile::resize(path, size));
    LoaderFile loader;
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QCOMPARE(loader.fileSize(), size);
    QCOMPARE(qint64(loader.rawData().size()), size);
    QCOMPARE(loader.rawData().at(int(size - 1)), '\0');
    QFile::remove(path);
}

void TestLoadedFile::rawDataOutlivesTheLoader()
{
    const QByteArray large(300000, 'q');
    auto loader = std::make_unique<LoaderFile>();
    loader->setFilePath(make(QStringLiteral("a.txt"), large));
    const QByteArray kept = loader->rawData();
    loader->setFilePath(make(QStringLiteral("b.txt"), text));
    QVERIFY(kept == large);
    loader.reset();
    QVERIFY(kept == large);
}

void TestLoadedFile::cutWhileLoaded()
{
    const QString path = make(QStringLiteral("a.txt"), QByteArray(100000, 'a'));
    LoaderFile loader;
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QVERIFY(QFile::resize(path, 10));
    QVERIFY(loader.rawData().endsWith('\0'));
    QTRY_COMPARE(loader.status(), int(LoaderFile::Error));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    loader.setHashType(QStringLiteral("sha1"));
    QCOMPARE(loader.fileHash(), QString());
}

void TestLoadedFile::costIndependentOfSize()
{
    // Without the digest, of a file of almost 2 GiB no more is read or mapped in than of a small
    // one.
    const QString small = make(QStringLiteral("small.txt"), text);
    const QString large = make(QStringLiteral("large.txt"), text);
    QVERIFY(QFile::resize(large, (qint64(2) << 30) - 1));
    const auto work = [](const QString &path) {
        LoaderFile loader;
        loader.setHashType(QString());
        const qint64 before = touchedBytes();
        loader.setFilePath(path);
        return touchedBytes() - before;
    };
    work(small);
    const qint64 ofSmall = work(small);
    const qint64 ofLarge = work(large);
    QVERIFY2(ofLarge < ofSmall + (1 << 20),
             qPrintable(QStringLiteral("%1, %2 bytes").arg(ofSmall).arg(ofLarge)));
    QFile::remove(large);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestLoadedFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_loadedfile.moc"
