// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "qca/base/bounds.h"
#include "tests/app/filedrequest.h"
#include "tests/app/rowsource.h"
#include "tests/support/testcertificates.h"
#include "tools/removalundo.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A certificate on a token that is not there.
class CertificateEntry : public QCA::KeyStoreEntryContext {
public:
    explicit CertificateEntry(const QCA::Certificate &certificate)
        : QCA::KeyStoreEntryContext(QCA::findProvider(QStringLiteral("qca-ossl")))
        , m_certificate(certificate)
    {
    }
    Context *clone() const override { return new CertificateEntry(*this); }
    QCA::KeyStoreEntry::Type type() const override { return QCA::KeyStoreEntry::TypeCertificate; }
    QString id() const override { return QStringLiteral("entry"); }
    QString name() const override { return QStringLiteral("Entry"); }
    QString storeId() const override { return QStringLiteral("token"); }
    QString storeName() const override { return QStringLiteral("Token"); }
    QString serialize() const override { return {}; }
    QCA::Certificate certificate() const override { return m_certificate; }

private:
    QCA::Certificate m_certificate;
};

} // namespace

/// What is remembered of removals, with requests, which need no token.
class TestRemovalUndo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void togetherAndLastFirst();
    void whatStaysIsForgotten();
    void whatIsUnknownIsNotNoted();
    void failureCanBeTriedAgain();
    void failureDoesNotBlockOthers();
    void takenNameIsLeftAlone();
    void tokenIsGone();
    void whatIsThereIsDone();
    void oneUndoAtATime();
    void readsToTheBoundOnly();

private:
    QString add(const QString &name);
    /// Notes it and removes its file.
    void remove(const QString &path);
    bool undo();

    QCA::Initializer m_initializer;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RowSource> m_source;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<RemovalUndo> m_undo;
};

void TestRemovalUndo::init()
{
    m_undo = std::make_unique<RemovalUndo>();
    m_entries = std::make_unique<EntryModel>();
    m_source = std::make_unique<RowSource>();
    m_entries->setSourceModel(m_source.get());
    m_folder = std::make_unique<QTemporaryDir>();
}

QString TestRemovalUndo::add(const QString &name)
{
    auto *request = new FiledRequest;
    request->path = m_folder->filePath(name);
    QFile file(request->path);
    if (file.open(QIODevice::WriteOnly))
        file.write("contents of " + name.toUtf8());
    m_source->add(name, request);
    return request->path;
}

void TestRemovalUndo::remove(const QString &path)
{
    m_undo->note(m_entries.get(), path);
    QFile::remove(path);
    m_source->removeRow(m_entries->rowOfIdentity(path));
}

bool TestRemovalUndo::undo()
{
    QSignalSpy finished(m_undo.get(), &RemovalUndo::finished);
    m_undo->undo();
    return finished.wait() && finished.first().at(1).toBool();
}

void TestRemovalUndo::togetherAndLastFirst()
{
    const QString one = add(QStringLiteral("one"));
    const QString two = add(QStringLiteral("two"));
    const QString three = add(QStringLiteral("three"));
    m_undo->begin();
    remove(one);
    remove(two);
    QCOMPARE(m_undo->count(), 2);
    m_undo->begin();
    remove(three);
    QCOMPARE(m_undo->count(), 1);
    QVERIFY(undo());
    QVERIFY(QFile::exists(three));
    QVERIFY(!QFile::exists(one));
    QCOMPARE(m_undo->count(), 2);
    QVERIFY(undo());
    QCOMPARE(contentsOf(one), QByteArray("contents of one"));
    QCOMPARE(contentsOf(two), QByteArray("contents of two"));
    QCOMPARE(m_undo->count(), 0);
}

void TestRemovalUndo::whatStaysIsForgotten()
{
    const QString one = add(QStringLiteral("one"));
    const QString two = add(QStringLiteral("two"));
    m_undo->begin();
    remove(one);
    m_undo->note(m_entries.get(), two);
    QCOMPARE(m_undo->count(), 2);
    m_undo->forgetLast();
    m_undo->forgetLast();
    QCOMPARE(m_undo->count(), 1);
    QVERIFY(undo());
    QVERIFY(QFile::exists(one));
}

void TestRemovalUndo::whatIsUnknownIsNotNoted()
{
    const QString one = add(QStringLiteral("one"));
    m_undo->begin();
    remove(one);
    // The last one that was noted is not the one that stays.
    m_undo->note(m_entries.get(), QStringLiteral("nobody"));
    m_undo->forgetLast();
    QCOMPARE(m_undo->count(), 1);
    m_undo->note(nullptr, one);
    QCOMPARE(m_undo->count(), 1);
}

void TestRemovalUndo::failureCanBeTriedAgain()
{
    const QString one = add(QStringLiteral("one"));
    const QString two = add(QStringLiteral("two"));
    m_undo->begin();
    remove(one);
    remove(two);
    QVERIFY(QDir().mkpath(two));
    QSignalSpy finished(m_undo.get(), &RemovalUndo::finished);
    m_undo->undo();
    QVERIFY(finished.wait());
    QCOMPARE(finished.first().at(0).toInt(), 1);
    QVERIFY(!finished.first().at(1).toBool());
    QVERIFY(!finished.first().at(2).toString().isEmpty());
    QVERIFY(!m_undo->isRunning());
    QVERIFY(QDir().rmdir(two));
    QCOMPARE(m_undo->count(), 1);
    QVERIFY(undo());
    QVERIFY(QFile::exists(two));
}

void TestRemovalUndo::failureDoesNotBlockOthers()
{
    const QString one = add(QStringLiteral("one"));
    const QString two = add(QStringLiteral("two"));
    m_undo->begin();
    remove(one);
    m_undo->begin();
    remove(two);
    QVERIFY(QDir().mkpath(two));
    QVERIFY(!undo());
    QVERIFY(undo());
    QVERIFY(QFile::exists(one));
    QVERIFY(!undo());
    QVERIFY(QDir().rmdir(two));
    QVERIFY(undo());
    QCOMPARE(contentsOf(two), QByteArray("contents of two"));
    QCOMPARE(m_undo->count(), 0);
}

/// Somebody has made another request of that name since.
void TestRemovalUndo::takenNameIsLeftAlone()
{
    const QString one = add(QStringLiteral("one"));
    m_undo->begin();
    remove(one);
    QFile other(one);
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write("another request");
    other.close();
    QSignalSpy finished(m_undo.get(), &RemovalUndo::finished);
    QVERIFY(!undo());
    QVERIFY(!finished.first().at(2).toString().isEmpty());
    QCOMPARE(contentsOf(one), QByteArray("another request"));
    QVERIFY(QFile::remove(one));
    QVERIFY(undo());
    QCOMPARE(contentsOf(one), QByteArray("contents of one"));
}

void TestRemovalUndo::tokenIsGone()
{
    const TestAuthority authority;
    const auto certificate = QCA::Certificate::fromDER(authority.certificate());
    QCA::KeyStoreEntry entry;
    static_cast<QCA::Algorithm &>(entry).change(new CertificateEntry(certificate));
    KeyStoreEntry row(entry);
    constexpr int EntryRole = RowSource::NumberRole + 1;
    auto roles = m_source->roleNames();
    roles.insert(EntryRole, "keyStoreEntry");
    m_source->setItemRoleNames(roles);
    m_entries->setSourceModel(nullptr);
    m_entries->setSourceModel(m_source.get());
    m_source->add(QStringLiteral("Entry"), new StandInCertificate)
        ->setData(QVariant::fromValue<QObject *>(&row), EntryRole);
    m_undo->begin();
    m_undo->note(m_entries.get(), m_entries->identityAt(0));
    QCOMPARE(m_undo->count(), 1);
    QSignalSpy finished(m_undo.get(), &RemovalUndo::finished);
    QVERIFY(!undo());
    QCOMPARE(finished.first().at(2).toString(), qtTrId("trivex-app-undo-no-token"));
    QCOMPARE(m_undo->count(), 1);
    m_source->clear();
}

/// The file was not removed, or somebody else has brought it back.
void TestRemovalUndo::whatIsThereIsDone()
{
    const QString one = add(QStringLiteral("one"));
    m_undo->begin();
    m_undo->note(m_entries.get(), one);
    QVERIFY(undo());
    QCOMPARE(m_undo->count(), 0);
    QCOMPARE(contentsOf(one), QByteArray("contents of one"));
}

void TestRemovalUndo::oneUndoAtATime()
{
    const QString one = add(QStringLiteral("one"));
    const QString two = add(QStringLiteral("two"));
    m_undo->begin();
    remove(one);
    QSignalSpy finished(m_undo.get(), &RemovalUndo::finished);
    m_undo->undo();
    m_undo->undo();
    // What is removed meanwhile is not mixed up with what comes back.
    m_undo->begin();
    m_undo->note(m_entries.get(), two);
    m_undo->forgetLast();
    QVERIFY(finished.wait());
    QCOMPARE(finished.count(), 1);
    QVERIFY(QFile::exists(one));
    QCOMPARE(m_undo->count(), 0);
    QVERIFY(!m_undo->isRunning());
}

/// What can't be read whole can't be written back.
void TestRemovalUndo::readsToTheBoundOnly()
{
    const QString path = add(QStringLiteral("filled"));
    QVERIFY(QFile::resize(path, MaxFileBytes + 1));
    m_undo->note(m_entries.get(), path);
    QCOMPARE(m_undo->count(), 0);
    QVERIFY(QFile::resize(path, MaxFileBytes));
    remove(path);
    QCOMPARE(m_undo->count(), 1);
    QVERIFY(undo());
    QCOMPARE(QFileInfo(path).size(), qint64(MaxFileBytes));
}

QTEST_GUILESS_MAIN(TestRemovalUndo)
#include "tst_removalundo.moc"
