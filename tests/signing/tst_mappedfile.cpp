// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/mappedfile.h"

#include "signing/rawsignature.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtCrypto>
#include <QtTest>

#include <numeric>

#include <sys/stat.h>

using Trivex::MappedFile;

namespace {

QString sha256()
{
    return QStringLiteral("sha256");
}

int openDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System)
        .size();
}

qint64 sum(const QByteArray &bytes)
{
    return std::accumulate(bytes.cbegin(), bytes.cend(), qint64(0));
}

} // namespace

class TestMappedFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void opensRegularFilesOnly();
    void emptyFile();
    void keepsNothingOfUnmappedFiles();
    void keepsWhatIsCopied();
    void keepsWhatIsHeld();
    void knowsItsBytes();
    void digestOfCutFile();
    void readOfCutFile();
    void grownFile();
    void deletedFile();
    void signedTextOfCutFile();

private:
    QString make(const QByteArray &content) const;
    QTemporaryDir m_directory;
};

QString TestMappedFile::make(const QByteArray &content) const
{
    static int number = 0;
    const QString path = m_directory.filePath(QStringLiteral("file%1").arg(++number));
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return path;
}

void TestMappedFile::opensRegularFilesOnly()
{
    const QString pipe = m_directory.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!MappedFile::open(pipe));
    QVERIFY(!MappedFile::open(m_directory.path()));
    QVERIFY(!MappedFile::open(QStringLiteral("/dev/zero")));
    QVERIFY(!MappedFile::open(m_directory.filePath(QStringLiteral("missing"))));
    QVERIFY(!MappedFile::open(QString()));
}

void TestMappedFile::emptyFile()
{
    const auto empty = MappedFile::open(make({}));
    QVERIFY(empty);
    QVERIFY(empty->map());
    QVERIFY(empty->bytes().isEmpty());
    QVERIFY(empty->isUnchanged());
    QCOMPARE(empty->digest(sha256()), QCryptographicHash::hash({}, QCryptographicHash::Sha256));
    QCOMPARE(MappedFile::behind({}), empty);
    // Contents without a size.
    const auto process = MappedFile::open(QStringLiteral("/proc/self/status"));
    QVERIFY(process);
    QVERIFY(!process->map());
}

void TestMappedFile::keepsNothingOfUnmappedFiles()
{
    MappedFile::releaseUnused();
    const int before = openDescriptors();
    for (int i = 0; i < 5; ++i) {
        QVERIFY(MappedFile::open(make("never mapped")));
        const auto empty = MappedFile::open(make({}));
        QVERIFY(empty && empty->map());
    }
    MappedFile::releaseUnused();
    QCOMPARE(openDescriptors(), before);
}

void TestMappedFile::keepsWhatIsCopied()
{
    const int before = openDescriptors();
    auto file = MappedFile::open(make("contents"));
    QVERIFY(file->map());
    QByteArray copy = file->bytes();
    file.reset();
    MappedFile::releaseUnused();
    QCOMPARE(copy, QByteArray("contents"));
    QCOMPARE(openDescriptors(), before + 1);
    copy.clear();
    MappedFile::releaseUnused();
    QCOMPARE(openDescriptors(), before);
}

// Whoever holds the file may ask for the digest of its bytes at any time, though nobody has a copy.
void TestMappedFile::keepsWhatIsHeld()
{
    auto file = MappedFile::open(make("contents"));
    QVERIFY(file->map());
    const auto empty = MappedFile::open(make({}));
    QVERIFY(empty->map());
    MappedFile::releaseUnused();
    QVERIFY(MappedFile::open(make("another")));
    QCOMPARE(MappedFile::behind(file->bytes()), file);
    QCOMPARE(MappedFile::behind({}), empty);
    // Let go by one of two.
    const auto other = file;
    file.reset();
    MappedFile::releaseUnused();
    QCOMPARE(MappedFile::behind(other->bytes()), other);
}

void TestMappedFile::knowsItsBytes()
{
    const auto file = MappedFile::open(make("contents"));
    QVERIFY(file->map());
    QCOMPARE(MappedFile::behind(file->bytes()), file);
    const QByteArray copy = file->bytes();
    QCOMPARE(MappedFile::behind(copy), file);
    QCOMPARE(MappedFile::behind(QByteArray("contents")), nullptr);
    QCOMPARE(MappedFile::behind(QByteArray()), nullptr);
}

void TestMappedFile::digestOfCutFile()
{
    const QString path = make(QByteArray(100000, 'a'));
    const auto file = MappedFile::open(path);
    QVERIFY(file->map());
    QVERIFY(!file->digest(sha256()).isEmpty());
    QVERIFY(file->isUnchanged());
    QVERIFY(QFile::resize(path, 99999));
    QCOMPARE(file->digest(sha256()), QByteArray());
    QVERIFY(!file->isUnchanged());
    // As long as before again, with the same bytes but for one.
    QVERIFY(QFile::resize(path, 100000));
    QCOMPARE(file->digest(sha256()), QByteArray());
}

void TestMappedFile::readOfCutFile()
{
    const QString path = make(QByteArray(100000, 'a'));
    const auto file = MappedFile::open(path);
    QVERIFY(file->map());
    QVERIFY(QFile::resize(path, 4096));
    // Without the guard this ends the process.
    QCOMPARE(sum(file->bytes()), qint64(4096) * 'a');
    QVERIFY(!file->isUnchanged());
    // Even when the file is as long as before again, its bytes have been seen wrong.
    QVERIFY(QFile::resize(path, 100000));
    QVERIFY(!file->isUnchanged());
}

void TestMappedFile::grownFile()
{
    const QString path = make("abc");
    const auto file = MappedFile::open(path);
    QVERIFY(file->map());
    const QByteArray digest = file->digest(sha256());
    QVERIFY(!digest.isEmpty());
    int told = 0;
    file->setChangeListener([&told] { ++told; });
    QVERIFY(QFile::resize(path, 10));
    QVERIFY(!file->isUnchanged());
    QVERIFY(!file->isUnchanged());
    QCOMPARE(told, 1);
    QCOMPARE(file->bytes(), QByteArray("abc"));
    QCOMPARE(file->digest(sha256()), QByteArray());
}

void TestMappedFile::deletedFile()
{
    const QString path = make("abc");
    const auto file = MappedFile::open(path);
    QVERIFY(file->map());
    QVERIFY(QFile::remove(path));
    QVERIFY(file->isUnchanged());
    QCOMPARE(file->bytes(), QByteArray("abc"));
}

void TestMappedFile::signedTextOfCutFile()
{
    const QString path = make(QByteArray(100000, 'a'));
    const auto file = MappedFile::open(path);
    QVERIFY(file->map());
    const QByteArray bytes = file->bytes();
    QCOMPARE(Trivex::signedText(bytes), Trivex::signedText(QByteArray(100000, 'a')));
    QVERIFY(QFile::resize(path, 10));
    QCOMPARE(Trivex::signedText(bytes), QByteArray());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestMappedFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mappedfile.moc"
