// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/quietbackend.h"
#include "tests/support/testcertificates.h"
#include "tools/filesaver.h"
#include "tools/keyexporter.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;

namespace {

const QString TokenId = QStringLiteral("token");

/// Notes what it is asked for; the test answers.
class Token : public TrivexTest::QuietBackend {
public:
    CancellationPtr startExtraction(const QString &storeId, const QByteArray &publicInfo,
                                    ExtractionDone done) override
    {
        if (storeId != TokenId)
            return {};
        asked += publicInfo;
        answers += std::move(done);
        tasks += std::make_shared<Cancellation>();
        return tasks.last();
    }
    void cancelTask(const CancellationPtr &task) override { cancelled += tasks.indexOf(task); }

    QVector<QByteArray> asked;
    QVector<ExtractionDone> answers;
    QVector<CancellationPtr> tasks;
    QVector<int> cancelled; ///< by their numbers in `tasks`
};

/// The export of a key that its token is asked for.
struct TokenExport {
    explicit TokenExport(const FileItem &item) { items.setItems({item}); }
    void start(const QString &password)
    {
        exporter.stageItem(&items, 0, nullptr, password, &saver);
    }

    Token token;
    FileItemModel items;
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished{&exporter, &KeyExporter::finished};
};

ExtractedKey refused(TokenError::Kind kind)
{
    ExtractedKey key;
    key.error.kind = kind;
    return key;
}

} // namespace

/// A private key that leaves a file for another one: never without a password.
class TestKeyExporter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void withPassword();
    void withoutPassword();
    void tokenGivesItsKey();
    void cancelReachesTheToken();
    void endReachesTheToken();
    void lateKeyIsNotTheNextOnes();
    void cancelledWhileTheFileIsMade();
    void refusals_data();
    void refusals();

private:
    /// The certificate of the authority with its key on a token.
    FileItem onToken() const;
    /// What the token gives out of that key.
    ExtractedKey extracted() const;
    /// What lies in the staging folder.
    static QStringList staged(const FileSaver &saver);

    QCA::Initializer m_initializer;
    TrivexTest::TestAuthority m_authority;
    FileItemModel m_items;
};

void TestKeyExporter::initTestCase()
{
    QVERIFY(m_authority.isValid());
    QFile pem(m_authority.file(QStringLiteral("ca.key")));
    QVERIFY(pem.open(QIODevice::ReadOnly));
    FileItem item;
    item.der = m_authority.certificate();
    item.key = QCA::PrivateKey::fromPEM(QString::fromLatin1(pem.readAll()), {}, nullptr,
                                        opensslProviderName());
    QVERIFY(!item.key.isNull());
    m_items.setItems({item});
}

QStringList TestKeyExporter::staged(const FileSaver &saver)
{
    QStringList files;
    if (!saver.staging())
        return files;
    QDirIterator found(saver.staging()->path(), QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext())
        files += found.next();
    return files;
}

void TestKeyExporter::withPassword()
{
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &KeyExporter::finished);
    exporter.stageItem(&m_items, 0, nullptr, QStringLiteral("secret"), &saver);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(KeyExporter::NoError));
    const QString path = m_authority.file(QStringLiteral("exported.p12"));
    QCOMPARE(saver.place(path, false), int(FileSaver::Saved));
    const auto opened = [&](const char *password) {
        return m_authority.openssl({QStringLiteral("pkcs12"), QStringLiteral("-in"), path,
                                    QStringLiteral("-nodes"), QStringLiteral("-passin"),
                                    QStringLiteral("pass:") + QLatin1String(password)});
    };
    QVERIFY(opened("secret").contains("PRIVATE KEY-----"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("openssl.*failed")));
    QVERIFY(opened("").isNull());
}

void TestKeyExporter::withoutPassword()
{
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &KeyExporter::finished);
    exporter.stageItem(&m_items, 0, nullptr, QString(), &saver);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(KeyExporter::NoPassword));
    QVERIFY(!exporter.message().isEmpty());
    QCOMPARE(staged(saver), QStringList());
}

FileItem TestKeyExporter::onToken() const
{
    FileItem item = m_items.items().first();
    item.key = TrivexTest::keyOnToken(TokenId, encodedPublicKey(item.key));
    return item;
}

ExtractedKey TestKeyExporter::extracted() const
{
    ExtractedKey key;
    key.privateInfo = Secret(m_items.items().first().key.toDER());
    return key;
}

void TestKeyExporter::tokenGivesItsKey()
{
    TokenExport run(onToken());
    run.start(QStringLiteral("secret"));
    QCOMPARE(run.token.asked, QVector{encodedPublicKey(m_items.items().first().key)});
    QVERIFY(run.exporter.isRunning());
    run.token.answers.first()(extracted());
    QTRY_COMPARE_WITH_TIMEOUT(run.finished.count(), 1, 60000);
    QCOMPARE(run.exporter.error(), int(KeyExporter::NoError));
    QCOMPARE(staged(run.saver).size(), 1);
    QVERIFY(run.token.cancelled.isEmpty());
    // There is nothing to be cancelled any more.
    run.exporter.cancel();
    QVERIFY(run.token.cancelled.isEmpty());
    QCOMPARE(run.finished.count(), 1);
}

// The token would ask for its PIN all the same, and give its key to nobody.
void TestKeyExporter::cancelReachesTheToken()
{
    TokenExport run(onToken());
    run.start(QStringLiteral("secret"));
    run.exporter.cancel();
    QCOMPARE(run.token.cancelled, QVector{0});
    QCOMPARE(run.exporter.error(), int(KeyExporter::Cancelled));
    QTRY_COMPARE(run.finished.count(), 1);
    // It was on its way already.
    run.token.answers.first()(extracted());
    QCoreApplication::processEvents();
    QCOMPARE(run.finished.count(), 1);
    QCOMPARE(run.exporter.error(), int(KeyExporter::Cancelled));
    QCOMPARE(staged(run.saver), QStringList());
}

void TestKeyExporter::endReachesTheToken()
{
    Token token;
    FileItemModel items;
    items.setItems({onToken()});
    FileSaver saver;
    auto exporter = std::make_unique<KeyExporter>();
    exporter->stageItem(&items, 0, nullptr, QStringLiteral("secret"), &saver);
    exporter.reset();
    QCOMPARE(token.cancelled, QVector{0});
    token.answers.first()(extracted());
    QCoreApplication::processEvents();
    QCOMPARE(staged(saver), QStringList());
}

void TestKeyExporter::lateKeyIsNotTheNextOnes()
{
    TokenExport run(onToken());
    run.start(QStringLiteral("first"));
    run.exporter.cancel();
    QTRY_COMPARE(run.finished.count(), 1);
    run.start(QStringLiteral("second"));
    QCOMPARE(run.token.answers.size(), 2);
    // Of the run before: the token refuses now, and gives its key then.
    run.token.answers.first()(refused(TokenError::DeviceFailure));
    QCoreApplication::processEvents();
    QVERIFY(run.exporter.isRunning());
    QCOMPARE(run.finished.count(), 1);
    run.token.answers.last()(extracted());
    QTRY_COMPARE_WITH_TIMEOUT(run.finished.count(), 2, 60000);
    QCOMPARE(run.exporter.error(), int(KeyExporter::NoError));
    QCOMPARE(staged(run.saver).size(), 1);
}

// The thread that makes it is not waited for.
void TestKeyExporter::cancelledWhileTheFileIsMade()
{
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &KeyExporter::finished);
    exporter.stageItem(&m_items, 0, nullptr, QStringLiteral("first"), &saver);
    QVERIFY(exporter.isRunning());
    const auto folder = saver.staging();
    exporter.cancel();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(KeyExporter::Cancelled));
    // What is left of the first run ends while the second one waits for its token, and is no end of
    // that one.
    Token token;
    FileItemModel items;
    items.setItems({onToken()});
    exporter.stageItem(&items, 0, nullptr, QStringLiteral("second"), &saver);
    // The thread keeps its folder as long as it works.
    QVERIFY(folder != saver.staging());
    QTRY_COMPARE_WITH_TIMEOUT(folder.use_count(), 1L, 60000);
    QVERIFY(!QDirIterator(folder->path(), QDir::Files, QDirIterator::Subdirectories).hasNext());
    token.answers.first()(extracted());
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 2, 60000);
    QCOMPARE(exporter.error(), int(KeyExporter::NoError));
    QCOMPARE(staged(saver).size(), 1);
}

void TestKeyExporter::refusals_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("error");
    QTest::newRow("cancelled") << int(TokenError::Cancelled) << int(KeyExporter::Cancelled);
    QTest::newRow("no PIN") << int(TokenError::PinMissing) << int(KeyExporter::Cancelled);
    QTest::newRow("wrong PIN") << int(TokenError::WrongPin) << int(KeyExporter::TokenRefused);
    QTest::newRow("stays") << int(TokenError::KeyStays) << int(KeyExporter::TokenRefused);
    QTest::newRow("gone") << int(TokenError::TokenRemoved) << int(KeyExporter::TokenRefused);
}

void TestKeyExporter::refusals()
{
    QFETCH(int, kind);
    QFETCH(int, error);
    TokenExport run(onToken());
    run.start(QStringLiteral("secret"));
    run.token.answers.first()(refused(TokenError::Kind(kind)));
    QTRY_COMPARE(run.finished.count(), 1);
    QCOMPARE(run.exporter.error(), error);
    QCOMPARE(staged(run.saver), QStringList());
    // The token has told why, or nobody wants to hear of it.
    QVERIFY(run.exporter.message().isEmpty());
}

QTEST_GUILESS_MAIN(TestKeyExporter)
#include "tst_keyexporter.moc"
