// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "qca/questions/cancellationscope.h"
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/userstore.h"
#include "tests/support/quietbackend.h"
#include "tests/support/testcertificates.h"
#include "tools/certificateimport.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QtTest>

#include <utility>

using namespace Trivex;

namespace {

/// Takes whatever it gets.
class Store : public UserStoreBackend {
public:
    void startWrite(const QCA::Certificate &certificate, UserWriteDone done) override
    {
        written += certificate.commonName();
        done(QStringLiteral("id"));
    }
    QStringList written;
};

const QString TokenId = QStringLiteral("token");

/// Notes what is to be written, and says that it was where it is not told to wait.
class Tokens : public TrivexTest::QuietBackend {
public:
    bool startChange(const QString &storeId, const StoreChange &change,
                     StoreChangeDone done) override
    {
        if (storeId != TokenId)
            return false;
        changes += change;
        task = CancellationScope::current();
        pending = std::move(done);
        if (!waits)
            end(true);
        return true;
    }
    void cancelTask(const CancellationPtr &cancelledTask) override
    {
        cancelled += cancelledTask == task ? 1 : 0;
    }

    /// `count` of several, where it did not succeed.
    void end(bool succeeded, int count = 0)
    {
        StoreChangeResult result;
        result.succeeded = succeeded;
        result.count = succeeded ? changes.last().certificates.size() : count;
        if (succeeded)
            result.entryId = QStringLiteral("entry");
        task.reset();
        std::exchange(pending, {})(result);
    }

    bool waits = false;
    QVector<StoreChange> changes;
    StoreChangeDone pending;
    CancellationPtr task; ///< of what is pending
    int cancelled = 0;
};

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Imports to a token, and to the store of the user's files, which starts a while after the window.
class TestImport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void waitsForItsStore();
    void waitIsLeft();
    void keyGoesWithItsIssuers();
    void keysGoAlone();
    void filesTakeNoKey();
    void requestTakesNoName();
    void cancelledInTheMiddle();
    void lastStepIsWhole_data();
    void lastStepIsWhole();
    void failureBeforeTheLastStep();
    void failures_data();
    void failures();

private:
    FileItem item(const TrivexTest::TestAuthority &authority, bool withKey = false) const;

    TrivexTest::TestAuthority m_authority;
    TrivexTest::TestAuthority m_second{QStringLiteral("Second Root")};
    TrivexTest::TestAuthority m_third{QStringLiteral("Third Root")};
};

void TestImport::initTestCase()
{
    QVERIFY(m_authority.isValid() && m_second.isValid() && m_third.isValid());
    QVERIFY(!item(m_authority, true).key.isNull());
}

FileItem TestImport::item(const TrivexTest::TestAuthority &authority, bool withKey) const
{
    FileItem item;
    item.der = authority.certificate();
    if (withKey) {
        item.label = QStringLiteral("friendly");
        item.key = QCA::PrivateKey::fromPEM(
            QString::fromLatin1(contentsOf(authority.file(QStringLiteral("ca.key")))), {}, nullptr,
            opensslProviderName());
    }
    return item;
}

void TestImport::waitsForItsStore()
{
    QVERIFY(m_authority.isValid());
    Store store;
    CertificateFile file;
    file.open(m_authority.certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, userStoreId());
    // The store is not there yet, and nothing must come of the import in this time.
    QTest::qWait(300);
    QVERIFY(import.isRunning());
    QVERIFY(finished.isEmpty());
    setUserStore(&store);
    QTRY_COMPARE(finished.size(), 1);
    unsetUserStore(&store);
    QVERIFY2(finished.first().first().toBool(), qPrintable(import.problem()));
    QCOMPARE(store.written, QStringList{QStringLiteral("Test Root")});
}

void TestImport::waitIsLeft()
{
    CertificateFile file;
    file.open(m_authority.certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, userStoreId());
    // Nothing must come of the import in this time.
    QTest::qWait(200);
    QVERIFY(finished.isEmpty());
    import.cancel();
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(import.wasLeft());
}

// All of it is on the token in the end, or nothing; what has no tick stays where it is.
void TestImport::keyGoesWithItsIssuers()
{
    Tokens tokens;
    CertificateFile file;
    file.items()->setItems({item(m_second), item(m_authority, true), item(m_third)});
    file.items()->setChecked(2, false);
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY2(finished.first().first().toBool(), qPrintable(import.problem()));
    QCOMPARE(tokens.changes.size(), 1);
    const StoreChange &change = tokens.changes.first();
    QCOMPARE(change.kind, StoreChange::WriteBundle);
    QVERIFY(change.bundle.privateKey() == item(m_authority, true).key);
    QCOMPARE(change.bundle.name(), QStringLiteral("friendly"));
    const QCA::CertificateChain chain = change.bundle.certificateChain();
    QCOMPARE(chain.size(), 2);
    QCOMPARE(chain.at(0).toDER(), m_authority.certificate());
    QCOMPARE(chain.at(1).toDER(), m_second.certificate());
    QCOMPARE(import.written(), 2);
    QCOMPARE(import.count(), 2);
    QCOMPARE(file.items()->checkedCount(), 0);
}

// Nobody can tell whose issuers the others are.
void TestImport::keysGoAlone()
{
    Tokens tokens;
    CertificateFile file;
    file.items()->setItems({item(m_authority, true), item(m_second, true), item(m_third)});
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(finished.first().first().toBool());
    QCOMPARE(tokens.changes.size(), 3);
    for (int i : {0, 1}) {
        QCOMPARE(tokens.changes.at(i).kind, StoreChange::WriteBundle);
        QCOMPARE(tokens.changes.at(i).bundle.certificateChain().size(), 1);
        QVERIFY(!tokens.changes.at(i).bundle.privateKey().isNull());
    }
    QCOMPARE(tokens.changes.at(2).kind, StoreChange::WriteCertificate);
    QCOMPARE(tokens.changes.at(2).certificate.toDER(), m_third.certificate());
}

// A private key is no certificate file: it stays out of the home directory.
void TestImport::filesTakeNoKey()
{
    Store store;
    setUserStore(&store);
    CertificateFile file;
    file.items()->setItems({item(m_authority, true), item(m_second)});
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, userStoreId());
    QTRY_COMPARE(finished.size(), 1);
    unsetUserStore(&store);
    QVERIFY(finished.first().first().toBool());
    QCOMPARE(store.written,
             (QStringList{QStringLiteral("Test Root"), QStringLiteral("Second Root")}));
}

void TestImport::requestTakesNoName()
{
    FileItem request;
    request.kind = FileObject::Request;
    request.der = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-key"),
         m_authority.file(QStringLiteral("ca.key")), QStringLiteral("-subj"),
         QStringLiteral("/CN=Name"), QStringLiteral("-outform"), QStringLiteral("DER")});
    QVERIFY(!request.der.isEmpty());
    const QTemporaryDir folder;
    QFile other(folder.filePath(QStringLiteral("Name.csr")));
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("of somebody else") > 0);
    other.close();
    CertificateFile file;
    file.items()->setItems({request});
    CertificateImport import;
    import.setRequestFolder(folder.path());
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY2(finished.first().first().toBool(), qPrintable(import.problem()));
    QCOMPARE(contentsOf(other.fileName()), QByteArray("of somebody else"));
    QVERIFY(contentsOf(folder.filePath(QStringLiteral("Name (2).csr")))
                .startsWith("-----BEGIN CERTIFICATE REQUEST-----"));
}

// What was on its way to the token may arrive; nothing follows it.
void TestImport::cancelledInTheMiddle()
{
    Tokens tokens;
    tokens.waits = true;
    CertificateFile file;
    file.items()->setItems({item(m_authority), item(m_second)});
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_VERIFY(tokens.pending);
    import.cancel();
    QCOMPARE(tokens.cancelled, 1);
    QVERIFY(import.isRunning());
    tokens.end(false, 1);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(import.wasLeft());
    QCOMPARE(tokens.changes.size(), 1);
    QCOMPARE(import.written(), 1);
    QCOMPARE(file.items()->checkedCount(), 1);
    QVERIFY(!import.problem().isEmpty());
    import.clear();
    QVERIFY(import.problem().isEmpty());
}

void TestImport::lastStepIsWhole_data()
{
    QTest::addColumn<bool>("isStopped");
    QTest::newRow("token pulled") << false;
    QTest::newRow("cancelled") << true;
}

// Whatever failed after the last was written, nothing is left to start again for.
void TestImport::lastStepIsWhole()
{
    QFETCH(bool, isStopped);
    Tokens tokens;
    tokens.waits = true;
    CertificateFile file;
    file.items()->setItems({item(m_authority), item(m_second), item(m_third)});
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_VERIFY(tokens.pending);
    if (isStopped)
        import.cancel();
    TokenError error;
    error.kind = TokenError::TokenRemoved;
    error.keyStoreId = TokenId;
    error.purpose = Purpose::Write;
    publishTokenError(error);
    tokens.end(false, 3);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY2(finished.first().first().toBool(), qPrintable(import.problem()));
    QCOMPARE(import.written(), 3);
    QCOMPARE(file.items()->checkedCount(), 0);
    QCOMPARE(import.problem(), QString());
    QVERIFY(!import.isExplained());
    QVERIFY(!import.wasLeft());
}

// All of the step was written, and more was to follow: that is not done by itself after a failure.
void TestImport::failureBeforeTheLastStep()
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", QFile::encodeName(data.path()));
    Tokens tokens;
    tokens.waits = true;
    FileItem list;
    list.kind = FileObject::RevocationList;
    list.der = "a list";
    CertificateFile file;
    file.items()->setItems({item(m_authority), item(m_second), list});
    file.items()->setChecked(2, true);
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_VERIFY(tokens.pending);
    QCOMPARE(tokens.changes.last().certificates.size(), 2);
    tokens.end(false, 2);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(!finished.first().first().toBool());
    QCOMPARE(import.written(), 2);
    QCOMPARE(file.items()->checkedCount(), 1);
    QVERIFY(QDir(userStoreDirectory()).entryList(QDir::Files).isEmpty());
}

void TestImport::failures_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("purpose");
    QTest::addColumn<bool>("isExplained");
    QTest::addColumn<bool>("isLeft");
    const auto row = [](const char *name, const QString &token, TokenError::Kind kind,
                        Purpose purpose, bool isExplained, bool isLeft) {
        QTest::newRow(name) << token << int(kind) << int(purpose) << isExplained << isLeft;
    };
    const QString other = QStringLiteral("other");
    row("full", TokenId, TokenError::TokenFull, Purpose::Write, true, false);
    row("another token", other, TokenError::TokenFull, Purpose::Write, false, false);
    row("another operation", TokenId, TokenError::TokenFull, Purpose::Sign, false, false);
    row("cancelled", TokenId, TokenError::Cancelled, Purpose::Write, false, true);
    row("no PIN", TokenId, TokenError::PinMissing, Purpose::Write, false, true);
    row("no PIN for another token", other, TokenError::PinMissing, Purpose::Write, false, false);
}

// Why it ended is told once: by the token's message, or by the import's own.
void TestImport::failures()
{
    QFETCH(QString, token);
    QFETCH(int, kind);
    QFETCH(int, purpose);
    Tokens tokens;
    tokens.waits = true;
    CertificateFile file;
    file.items()->setItems({item(m_authority), item(m_second)});
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, TokenId);
    QTRY_VERIFY(tokens.pending);
    TokenError error;
    error.kind = TokenError::Kind(kind);
    error.keyStoreId = token;
    error.purpose = Purpose(purpose);
    publishTokenError(error);
    tokens.end(false);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(!finished.first().first().toBool());
    QTEST(import.isExplained(), "isExplained");
    QTEST(import.wasLeft(), "isLeft");
    QCOMPARE(tokens.changes.size(), 1);
    QCOMPARE(file.items()->checkedCount(), 2);
    QVERIFY(!import.problem().isEmpty());
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QCA::Initializer qca;
    TestImport test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_import.moc"
