// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/filesaver.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QtTest>

#include <sys/stat.h>

using namespace Trivex;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

/// What is exported: it never takes the place of another file unasked, and a private key is seen by
/// nobody else, neither where it is saved nor where it was made.
class TestFileSaver : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void privateFile();
    void publicFileAfterwards();
    void replacesOnlyWhenTold();
    void saysWhyNot_data();
    void saysWhyNot();
    void nothingWasMade();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileSaver::initTestCase()
{
    ::umask(0022);
}

void TestFileSaver::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestFileSaver::privateFile()
{
    FileSaver saver;
    const QString staging = saver.privateStagingFolder();
    QVERIFY(write(FileSaver::stagedFile(staging, FileSaver::AsIs), "key"));
    const QString path = m_folder->filePath(QStringLiteral("key.p12"));
    QCOMPARE(saver.place(path, false), int(FileSaver::Saved));
    QCOMPARE(contentsOf(path), QByteArray("key"));
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(path) & others));
    // What it was made in is gone while the window stays.
    QVERIFY(!QFileInfo::exists(staging));
    QVERIFY(!saver.staging());
    QCOMPARE(saver.place(path, true), int(FileSaver::Failed));
    QCOMPARE(contentsOf(path), QByteArray("key"));
}

void TestFileSaver::publicFileAfterwards()
{
    FileSaver saver;
    saver.privateStagingFolder();
    const QString staging = saver.stagingFolder();
    QVERIFY(write(FileSaver::stagedFile(staging, FileSaver::AsIs), "certificate"));
    const QString path = m_folder->filePath(QStringLiteral("certificate.pem"));
    QCOMPARE(saver.place(path, false), int(FileSaver::Saved));
    QVERIFY(QFile::permissions(path) & QFile::ReadOther);
}

void TestFileSaver::replacesOnlyWhenTold()
{
    FileSaver saver;
    const QString path = m_folder->filePath(QStringLiteral("certificate.pem"));
    QVERIFY(write(path, "of somebody else"));
    QVERIFY(write(FileSaver::stagedFile(saver.stagingFolder(), FileSaver::AsIs), "new"));
    QCOMPARE(saver.place(path, false), int(FileSaver::Exists));
    QCOMPARE(contentsOf(path), QByteArray("of somebody else"));
    QVERIFY(saver.problem().isEmpty());
    // The question is answered, and what was made is still there.
    QCOMPARE(saver.place(path, true), int(FileSaver::Saved));
    QCOMPARE(contentsOf(path), QByteArray("new"));
}

void TestFileSaver::saysWhyNot_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a folder") << QString();
    QTest::newRow("no such folder") << QStringLiteral("nowhere/certificate.pem");
}

void TestFileSaver::saysWhyNot()
{
    QFETCH(QString, name);
    FileSaver saver;
    QSignalSpy problemChanged(&saver, &FileSaver::problemChanged);
    QVERIFY(write(FileSaver::stagedFile(saver.stagingFolder(), FileSaver::AsIs), "new"));
    const QString path = m_folder->filePath(name);
    QVERIFY(!saver.whyNot(path).isEmpty());
    QCOMPARE(saver.place(path, true), int(FileSaver::Failed));
    QVERIFY(!saver.problem().isEmpty());
    QCOMPARE(problemChanged.count(), 1);
    // Another name helps, and the reason is forgotten.
    QCOMPARE(saver.place(m_folder->filePath(QStringLiteral("good.pem")), false),
             int(FileSaver::Saved));
    QVERIFY(saver.problem().isEmpty());
}

void TestFileSaver::nothingWasMade()
{
    FileSaver saver;
    const QString path = m_folder->filePath(QStringLiteral("certificate.pem"));
    QVERIFY(write(path, "of somebody else"));
    saver.stagingFolder();
    QCOMPARE(saver.place(path, true), int(FileSaver::Failed));
    QVERIFY(!saver.problem().isEmpty());
    QCOMPARE(contentsOf(path), QByteArray("of somebody else"));
}

QTEST_GUILESS_MAIN(TestFileSaver)
#include "tst_filesaver.moc"
