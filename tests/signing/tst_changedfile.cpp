// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What becomes of a loaded file that others change, and of the bytes of one that is given up.
#include "signing/loaderfile.h"
#include "signing/rawsignature.h"
#include "signing/signverify.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/shortpauses.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TrivexTest;

namespace {

const QByteArray text = "Some plain text\n";
const QByteArray sameSize = "Same plain text\n";

using Change = std::function<bool(const QString &path)>;

int openForWriting(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC);
}

/// Writes `content` at `offset` through `descriptor`, which is closed.
bool writeAt(int descriptor, const QByteArray &content, int offset)
{
    const bool written = descriptor >= 0
        && pwrite(descriptor, content.constData(), size_t(content.size()), offset)
            == content.size();
    return ::close(descriptor) == 0 && written;
}

bool overwrite(const QString &path)
{
    return writeAt(openForWriting(path), sameSize, 0);
}

bool grow(const QString &path)
{
    return writeAt(openForWriting(path), text, text.size());
}

/// Changes the file, and sets its times back.
bool inSecret(const Change &change, const QString &path)
{
    struct stat status;
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !change(path))
        return false;
    const timespec times[2] = {status.st_atim, status.st_mtim};
    return utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0;
}

/// The same size and the same times, but other contents.
bool overwriteInSecret(const QString &path)
{
    return inSecret(&overwrite, path);
}

/// So much later than before, with the same contents.
bool touch(const QString &path, int seconds, int nanoseconds)
{
    struct stat status;
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return false;
    timespec times[2] = {status.st_atim, status.st_mtim};
    times[1].tv_sec += seconds;
    times[1].tv_nsec = (times[1].tv_nsec + nanoseconds) % 1000000000;
    return utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0;
}

bool changeDeleted(const QString &path)
{
    const int descriptor = openForWriting(path);
    return QFile::remove(path) && writeAt(descriptor, text, text.size());
}

bool changeRenamed(const QString &path)
{
    const QString other = path + QStringLiteral(".old");
    QFile::remove(other);
    // The watch may see the new name before the change.
    if (!QFile::rename(path, other))
        return false;
    QTest::qWait(50);
    return writeAt(openForWriting(other), text, text.size());
}

bool isMapped(const QString &path)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(QFile::encodeName(path));
}

/// Does something with the file in the middle of its digest.
std::function<void()> duringDigest;
const QString busyDigest = QStringLiteral("busy");

class BusyHash : public QCA::HashContext {
public:
    explicit BusyHash(QCA::Provider *provider)
        : QCA::HashContext(provider, busyDigest)
    {
    }
    Context *clone() const override { return new BusyHash(*this); }
    void clear() override { }
    void update(const QCA::MemoryRegion &) override { duringDigest(); }
    QCA::MemoryRegion final() override { return QByteArray("digest"); }
};

class BusyTypes : public QCA::InfoContext {
public:
    using QCA::InfoContext::InfoContext;
    Context *clone() const override { return new BusyTypes(*this); }
    QStringList supportedHashTypes() const override { return {busyDigest}; }
};

class BusyProvider : public QCA::Provider {
public:
    int qcaVersion() const override { return QCA_VERSION; }
    QString name() const override { return QStringLiteral("busy-digests"); }
    QStringList features() const override { return {QStringLiteral("info"), busyDigest}; }
    Context *createContext(const QString &type) override
    {
        if (type == busyDigest)
            return new BusyHash(this);
        return type == QLatin1String("info") ? new BusyTypes(this) : nullptr;
    }
};

/// Counts the calls that are put off for an object.
class LateCalls : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::MetaCall ? 1 : 0;
        return false;
    }
};

} // namespace

Q_DECLARE_METATYPE(Change)

class TestChangedFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void changes_data();
    void changes();
    void neitherSignedNorVerified_data() { changes_data(); }
    void neitherSignedNorVerified();
    void verifiedBeforeTheChangeOnly();
    void contentsDecideWhereTimesLie();
    void anotherDigestFindsTheChange();
    void emptyFileGrows();
    void changesWhileItLoads_data();
    void changesWhileItLoads();
    void givenUpFileTellsNobody();
    void harmless_data();
    void harmless();
    void loadsAgainAfterAnError();
    void failedLoadGivesUpTheFile_data();
    void failedLoadGivesUpTheFile();
    void stateIsCompleteBeforeSignals();
    void loadStartedByAListener();
    void deletedByAListener();

private:
    QString make(const QString &name, const QByteArray &content) const;
    QTemporaryDir m_directory;
};

QString TestChangedFile::make(const QString &name, const QByteArray &content) const
{
    QFile file(m_directory.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return file.fileName();
}

void TestChangedFile::changes_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("grown") << Change(&grow);
    QTest::newRow("grown in secret")
        << Change([](const QString &path) { return inSecret(&grow, path); });
    QTest::newRow("shrunk in secret") << Change([](const QString &path) {
        return inSecret([](const QString &file) { return QFile::resize(file, 3); }, path);
    });
    QTest::newRow("shrunk") << Change([](const QString &path) { return QFile::resize(path, 3); });
    QTest::newRow("emptied") << Change([](const QString &path) { return QFile::resize(path, 0); });
    QTest::newRow("overwritten") << Change(&overwrite);
    QTest::newRow("touched") << Change([](const QString &path) { return touch(path, 0, 1); });
    QTest::newRow("touched a whole second later")
        << Change([](const QString &path) { return touch(path, 1, 0); });
    QTest::newRow("deleted, then grown") << Change(&changeDeleted);
    QTest::newRow("renamed, then grown") << Change(&changeRenamed);
}

void TestChangedFile::changes()
{
    QFETCH(Change, change);
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QVERIFY(change(loader.filePath()));
    QTRY_COMPARE(loader.status(), int(LoaderFile::Error));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
}

void TestChangedFile::neitherSignedNorVerified()
{
    QFETCH(Change, change);
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    const QByteArray bytes = loader.rawData();
    QVERIFY(!Trivex::signedText(bytes).isEmpty());
    QVERIFY(change(loader.filePath()));
    // At once, whether or not the watch has told of it.
    QCOMPARE(Trivex::signedText(bytes), QByteArray());
    // The bytes as they were by chance are not those that were loaded, either.
    QVERIFY(QFile::exists(loader.filePath()) ? !make(QStringLiteral("a.txt"), text).isEmpty()
                                             : true);
    QCOMPARE(Trivex::signedText(bytes), QByteArray());
    QTRY_COMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
}

void TestChangedFile::verifiedBeforeTheChangeOnly()
{
    const auto entry = bundleEntry(softwareKey());
    const QString signature = m_directory.filePath(QStringLiteral("a.sig"));
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    SignVerify signer;
    QSignalSpy isSigned(&signer, &SignVerify::signSuccess);
    QSignalSpy isVerified(&signer, &SignVerify::verifySuccess);
    signer.sign(loader.rawData(), signature, entry.get());
    QVERIFY(isSigned.wait(8000));
    signer.verify(loader.rawData(), signature, entry.get());
    QVERIFY(isVerified.wait(8000));
    // A page that asks before the change was noticed.
    signer.verify(loader.rawData(), signature, entry.get());
    QVERIFY(writeAt(openForWriting(loader.filePath()), text, text.size()));
    QTRY_COMPARE(signer.error(), int(SignVerify::ErrorVerify));
    QCOMPARE(isVerified.count(), 1);
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    signer.setError(SignVerify::NoError);
    signer.sign(loader.rawData(), signature, entry.get());
    QTRY_COMPARE(signer.error(), int(SignVerify::ErrorVerify));
    QCOMPARE(isSigned.count(), 1);
}

void TestChangedFile::contentsDecideWhereTimesLie()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    QVERIFY(overwriteInSecret(loader.filePath()));
    QCOMPARE(Trivex::signedText(loader.rawData()), QByteArray());
    QTRY_COMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    // A digest that is easy to forge is not what contents are known by.
    loader.setHashType(QStringLiteral("md5"));
    loader.setFilePath(loader.filePath());
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QVERIFY(overwriteInSecret(make(QStringLiteral("a.txt"), text)));
    QCOMPARE(Trivex::signedText(loader.rawData()), QByteArray());
}

// At once: nobody shows the digest of contents that are no longer there, or none without a reason.
void TestChangedFile::anotherDigestFindsTheChange()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    QVERIFY(grow(loader.filePath()));
    loader.setHashType(QStringLiteral("sha1"));
    QCOMPARE(loader.status(), int(LoaderFile::Error));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    QCOMPARE(loader.fileHash(), QString());
}

void TestChangedFile::emptyFileGrows()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("empty.txt"), {}));
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    const QByteArray nothing = Trivex::signedText({});
    QCOMPARE(Trivex::signedText(loader.rawData()), nothing);
    QVERIFY(writeAt(openForWriting(loader.filePath()), text, 0));
    QCOMPARE(Trivex::signedText(loader.rawData()), QByteArray());
    QTRY_COMPARE(loader.error(), int(LoaderFile::ErrorNotLoadFile));
    loader.setFilePath(make(QStringLiteral("empty.txt"), {}));
    QCOMPARE(Trivex::signedText(loader.rawData()), nothing);
}

void TestChangedFile::changesWhileItLoads_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isReady");
    QTest::newRow("left alone") << Change([](const QString &) { return true; }) << true;
    QTest::newRow("deleted") << Change([](const QString &path) { return QFile::remove(path); })
                             << true;
    QTest::newRow("grown") << Change(&grow) << false;
    QTest::newRow("grown in secret")
        << Change([](const QString &path) { return inSecret(&grow, path); }) << false;
    QTest::newRow("overwritten") << Change(&overwrite) << false;
    QTest::newRow("emptied") << Change([](const QString &path) { return QFile::resize(path, 0); })
                             << false;
}

// Nobody sees half of the file before and half of it after.
void TestChangedFile::changesWhileItLoads()
{
    QFETCH(Change, change);
    QFETCH(bool, isReady);
    const QString path = make(QStringLiteral("a.txt"), text);
    bool isChanged = false;
    duringDigest = [&] { isChanged = isChanged || change(path); };
    LoaderFile loader;
    loader.setHashType(busyDigest);
    loader.setFilePath(path);
    QVERIFY(isChanged);
    QCOMPARE(loader.status(), int(isReady ? LoaderFile::Ready : LoaderFile::Error));
    QCOMPARE(loader.error(), int(isReady ? LoaderFile::NoError : LoaderFile::ErrorNotLoadFile));
    QCOMPARE(loader.fileHash().isEmpty(), !isReady);
    QCOMPARE(loader.rawData(), isReady ? text : QByteArray());
    QCOMPARE(loader.filePath(), isReady ? path : QString());
}

// Its bytes may be held for longer, by a signature for instance, and found to have changed.
void TestChangedFile::givenUpFileTellsNobody()
{
    LateCalls calls;
    auto loader = std::make_unique<LoaderFile>();
    loader->installEventFilter(&calls);
    const auto isFoundOut = [&](const QByteArray &bytes) {
        const bool isFound = Trivex::signedText(bytes).isEmpty();
        QCoreApplication::sendPostedEvents(loader.get(), QEvent::MetaCall);
        return isFound;
    };
    loader->setFilePath(make(QStringLiteral("a.txt"), text));
    const QByteArray first = loader->rawData();
    loader->setFilePath(make(QStringLiteral("b.txt"), text));
    const QByteArray second = loader->rawData();
    QVERIFY(grow(m_directory.filePath(QStringLiteral("a.txt"))));
    QVERIFY(isFoundOut(first));
    QCOMPARE(calls.count, 0);
    QCOMPARE(loader->status(), int(LoaderFile::Ready));
    // The file that it has does tell it.
    QVERIFY(grow(m_directory.filePath(QStringLiteral("b.txt"))));
    QVERIFY(isFoundOut(second));
    QCOMPARE(calls.count, 1);
    QCOMPARE(loader->status(), int(LoaderFile::Error));
    loader->setFilePath(make(QStringLiteral("c.txt"), text));
    const QByteArray third = loader->rawData();
    loader.reset();
    QVERIFY(grow(m_directory.filePath(QStringLiteral("c.txt"))));
    QCOMPARE(Trivex::signedText(third), QByteArray());
}

void TestChangedFile::harmless_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("deleted") << Change([](const QString &path) { return QFile::remove(path); });
    QTest::newRow("renamed") << Change([](const QString &path) {
        return ::rename(QFile::encodeName(path).constData(),
                        QFile::encodeName(path + QStringLiteral(".old")).constData())
            == 0;
    });
    QTest::newRow("replaced") << Change([this](const QString &path) {
        const QString other = make(QStringLiteral("other.txt"), "other");
        return ::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData())
            == 0;
    });
    QTest::newRow("deleted and made anew") << Change([this](const QString &path) {
        return QFile::remove(path) && !make(QStringLiteral("a.txt"), "other").isEmpty();
    });
    QTest::newRow("other rights") << Change([](const QString &path) {
        return QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
    });
    QTest::newRow("another name") << Change([](const QString &path) {
        return QFile::link(path, path + QStringLiteral(".symbolic"))
            && ::link(QFile::encodeName(path).constData(),
                      QFile::encodeName(path + QStringLiteral(".hard")).constData())
            == 0;
    });
}

void TestChangedFile::harmless()
{
    QFETCH(Change, change);
    LoaderFile loader;
    QFile::remove(m_directory.filePath(QStringLiteral("a.txt")));
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    QVERIFY(change(loader.filePath()));
    QTest::qWait(100); // the watch would have told by now, as the other cases show
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QCOMPARE(loader.rawData(), text);
    QCOMPARE(Trivex::signedText(loader.rawData()), Trivex::signedText(text));
}

void TestChangedFile::loadsAgainAfterAnError()
{
    LoaderFile loader;
    const QString path = make(QStringLiteral("a.txt"), text);
    loader.setFilePath(path);
    make(QStringLiteral("a.txt"), "longer than it was before");
    QTRY_COMPARE(loader.status(), int(LoaderFile::Error));
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
    QCOMPARE(loader.error(), int(LoaderFile::NoError));
    QCOMPARE(loader.rawData(), QByteArray("longer than it was before"));
    QVERIFY(!Trivex::signedText(loader.rawData()).isEmpty());
    // After another one failed, the first is to be had again.
    loader.setFilePath(m_directory.filePath(QStringLiteral("missing.txt")));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotOpenFile));
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Ready));
}

void TestChangedFile::failedLoadGivesUpTheFile_data()
{
    QTest::addColumn<QString>("path");
    const QString large = make(QStringLiteral("large.txt"), text);
    QFile::resize(large, qint64(2) << 30);
    QTest::newRow("missing") << m_directory.filePath(QStringLiteral("missing.txt"));
    QTest::newRow("of another type")
        << make(QStringLiteral("t.c"), "int main(void) { return 0; }\n");
    QTest::newRow("too large") << large;
}

void TestChangedFile::failedLoadGivesUpTheFile()
{
    QFETCH(QString, path);
    LoaderFile loader;
    const QString before = make(QStringLiteral("before.txt"), QByteArray(300000, 'b'));
    loader.setFilePath(before);
    QVERIFY(isMapped(before));
    loader.setFilePath(path);
    QCOMPARE(loader.status(), int(LoaderFile::Error));
    QVERIFY(!isMapped(before));
    QVERIFY(!isMapped(path));
    QVERIFY(loader.rawData().isEmpty());
    QCOMPARE(loader.filePath(), before);
    QCOMPARE(loader.fileSize(), 300000);
}

void TestChangedFile::stateIsCompleteBeforeSignals()
{
    LoaderFile loader;
    QVector<QPair<int, int>> seen;
    const auto note = [&] {
        seen << qMakePair(loader.status(), loader.error());
        if (loader.status() == LoaderFile::Ready)
            QCOMPARE(loader.rawData(), text);
    };
    connect(&loader, &LoaderFile::statusChanged, &loader, note);
    connect(&loader, &LoaderFile::errorChanged, &loader, note);
    loader.setFilePath(m_directory.filePath(QStringLiteral("missing.txt")));
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    QVERIFY(writeAt(openForWriting(loader.filePath()), text, 3));
    QTRY_COMPARE(loader.status(), int(LoaderFile::Error));
    const QVector<QPair<int, int>> expected = {
        {LoaderFile::Loading, LoaderFile::NoError},
        {LoaderFile::Error, LoaderFile::ErrorNotOpenFile},
        {LoaderFile::Error, LoaderFile::ErrorNotOpenFile},
        {LoaderFile::Loading, LoaderFile::NoError},
        {LoaderFile::Loading, LoaderFile::NoError},
        {LoaderFile::Ready, LoaderFile::NoError},
        {LoaderFile::Error, LoaderFile::ErrorNotLoadFile},
        {LoaderFile::Error, LoaderFile::ErrorNotLoadFile},
    };
    QCOMPARE(seen, expected);
}

void TestChangedFile::loadStartedByAListener()
{
    // The last call wins, from whichever signal it comes.
    const QString good = make(QStringLiteral("a.txt"), text);
    const QString other = make(QStringLiteral("b.txt"), sameSize);
    for (const int at : {LoaderFile::Loading, LoaderFile::Ready, LoaderFile::Error}) {
        LoaderFile loader;
        bool once = true;
        connect(&loader, &LoaderFile::statusChanged, &loader, [&] {
            if (loader.status() == at && std::exchange(once, false))
                loader.setFilePath(good);
        });
        loader.setFilePath(
            at == LoaderFile::Error ? m_directory.filePath(QStringLiteral("missing.txt")) : other);
        QCOMPARE(once, false);
        QCOMPARE(loader.status(), int(LoaderFile::Ready));
        QCOMPARE(loader.error(), int(LoaderFile::NoError));
        QCOMPARE(loader.filePath(), good);
        QCOMPARE(loader.rawData(), text);
    }
}

void TestChangedFile::deletedByAListener()
{
    const QString good = make(QStringLiteral("a.txt"), text);
    for (const int at : {LoaderFile::Loading, LoaderFile::Ready, LoaderFile::Error}) {
        QPointer<LoaderFile> loader = new LoaderFile;
        connect(loader, &LoaderFile::statusChanged, this, [&] {
            if (loader && loader->status() == at)
                delete loader;
        });
        loader->setFilePath(
            at == LoaderFile::Error ? m_directory.filePath(QStringLiteral("missing.txt")) : good);
        QVERIFY(!loader);
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    QCA::insertProvider(new BusyProvider);
    shortenPauses();
    TestChangedFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_changedfile.moc"
