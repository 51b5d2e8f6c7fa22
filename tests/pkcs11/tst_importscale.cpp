// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"
#include "tools/certificatefile.h"
#include "tools/certificateimport.h"

#include <QSignalSpy>

using namespace TrivexTest;
using Trivex::CertificateFile;
using Trivex::CertificateImport;
using Trivex::FileItem;

namespace {

const QString StoreName = QStringLiteral("Imported");

QVector<FileItem> itemsOf(const QList<QByteArray> &ders)
{
    QVector<FileItem> items;
    for (const QByteArray &der : ders) {
        FileItem item;
        item.der = der;
        item.isChecked = true;
        items += item;
    }
    return items;
}

} // namespace

/// The import of many certificates to a token: what it asks of the module, and what stays when it
/// does not come to its end.
class TestImportScale : public TokenFixture {
    Q_OBJECT
public:
    TestImportScale()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void callsDoNotGrow();
    void progressIsTold_data();
    void progressIsTold();
    void whatIsThereIsNotWritten();
    void whatWasWrittenStays();
    void stopsInTheMiddle();
    void undecodableAmongThem();
    void endsInTheMiddle_data();
    void endsInTheMiddle();
    void anotherProgramsStays_data();
    void anotherProgramsStays();

private:
    /// New ones.
    QList<QByteArray> certificates(int count);
    int entries() const { return m_stores->entries(StoreName).size(); }
    /// Certificates on the token, as another program sees them.
    int objects() const
    {
        return m_token->token()
            .tool({QStringLiteral("--list-objects"), QStringLiteral("--type"),
                   QStringLiteral("cert")})
            .count("Certificate Object");
    }

    int m_made = 0;
    CertificateFile m_file;
    std::unique_ptr<CertificateImport> m_import;
    std::unique_ptr<QSignalSpy> m_finished;
};

void TestImportScale::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    m_token->useInThisProcess();
    QVERIFY(start(0));
}

void TestImportScale::init()
{
    m_token->control();
    m_import = std::make_unique<CertificateImport>();
    m_finished = std::make_unique<QSignalSpy>(m_import.get(), &CertificateImport::finished);
}

QList<QByteArray> TestImportScale::certificates(int count)
{
    m_made += count;
    return plainCertificates(count, m_made - count);
}

/// One session, one look and one list for many of them, not for each.
void TestImportScale::callsDoNotGrow()
{
    constexpr int Few = 40;
    constexpr int Many = 400;
    int before = 0;
    QList<int> around;
    for (const int count : {Few, Many}) {
        m_file.items()->setItems(itemsOf(certificates(count)));
        m_token->forget();
        m_finished->clear();
        m_import->start(&m_file, m_store->id());
        QVERIFY(m_finished->wait(60000));
        QVERIFY2(m_finished->first().first().toBool(), qPrintable(m_import->problem()));
        QCOMPARE(m_import->written(), count);
        QCOMPARE(m_file.items()->checkedCount(), 0);
        QCOMPARE(m_token->count("C_CreateObject"), count);
        // Nothing that is there already is read again.
        QCOMPARE(m_token->count("C_GetAttributeValue"), 0);
        around += m_token->count("C_OpenSession") + m_token->count("C_FindObjectsInit");
        before += count;
        QVERIFY(m_stores->waitForEntries(StoreName, before, 30000));
    }
    qInfo("%d sessions and searches for %d, %d for %d", around.at(0), Few, around.at(1), Many);
    QVERIFY2(around.at(1) <= 16, qPrintable(QString::number(around.at(1))));
}

void TestImportScale::progressIsTold_data()
{
    QTest::addColumn<int>("duration"); // of each step, ms
    QTest::addColumn<QVector<int>>("told");
    QTest::newRow("quick") << 0 << QVector<int>({0, 16, 48, 100});
    QTest::newRow("neither") << 1000 << QVector<int>({0, 16, 32, 48, 64, 80, 96, 100});
    QTest::newRow("slow") << 5000 << QVector<int>({0, 16, 24, 28, 30, 32});
}

void TestImportScale::progressIsTold()
{
    QFETCH(const int, duration);
    QFETCH(const QVector<int>, told);
    const int count = told.last();
    QVector<int> steps;
    qint64 now = 0;
    m_import->setClock([&now, duration] { return now += duration; });
    QObject::connect(m_import.get(), &CertificateImport::changed, this, [&] {
        if (steps.isEmpty() || steps.last() != m_import->written())
            steps += m_import->written();
    });
    m_file.items()->setItems(itemsOf(certificates(count)));
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QCOMPARE(m_import->count(), count);
    QCOMPARE(steps, told);
}

void TestImportScale::whatIsThereIsNotWritten()
{
    const QList<QByteArray> known = certificates(5);
    m_file.items()->setItems(itemsOf(known));
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    m_finished->clear();
    m_token->forget();
    m_file.items()->setItems(itemsOf(known + certificates(3)));
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY(m_finished->first().first().toBool());
    QCOMPARE(m_import->written(), 8);
    QCOMPARE(m_token->count("C_CreateObject"), 3);
}

void TestImportScale::whatWasWrittenStays()
{
    QTRY_VERIFY(entries() > 0);
    const int before = m_stores->currentEntries(StoreName).size();
    m_file.items()->setItems(itemsOf(certificates(10)));
    m_token->forget();
    m_token->control("fail C_CreateObject 5 CKR_DEVICE_MEMORY\n");
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY(!m_finished->first().first().toBool());
    QVERIFY(m_import->isExplained());
    QVERIFY(!m_import->wasLeft());
    QCOMPARE(m_import->written(), 4);
    QCOMPARE(m_file.items()->checkedCount(), 6);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 4);
    // Another start does the rest.
    m_token->control();
    m_finished->clear();
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY(m_finished->first().first().toBool());
    QCOMPARE(m_import->written(), 6);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 10);
}

void TestImportScale::stopsInTheMiddle()
{
    const int before = m_stores->currentEntries(StoreName).size();
    m_file.items()->setItems(itemsOf(certificates(10)));
    m_token->forget();
    m_token->control("hold C_CreateObject 3\n");
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    m_import->cancel();
    m_token->control();
    QVERIFY(m_finished->wait(60000));
    QVERIFY(!m_finished->first().first().toBool());
    QVERIFY(m_import->wasLeft());
    // The one that was on its way has arrived.
    QCOMPARE(m_import->written(), 3);
    QCOMPARE(m_file.items()->checkedCount(), 7);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 3);
}

void TestImportScale::undecodableAmongThem()
{
    const int before = m_stores->currentEntries(StoreName).size();
    QList<QByteArray> ders = certificates(3);
    ders.insert(2, QByteArrayLiteral("none"));
    m_file.items()->setItems(itemsOf(ders));
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY(!m_finished->first().first().toBool());
    QCOMPARE(m_import->written(), 2);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 2);
}

void TestImportScale::endsInTheMiddle_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *order :
         {"end-sessions-at C_CreateObject 5",
          "logout-at C_CreateObject 5\nfail C_CreateObject 5 CKR_USER_NOT_LOGGED_IN",
          "remove-at C_CreateObject 5", "fail-after C_CreateObject 5 CKR_DEVICE_ERROR",
          "fail-after C_CreateObject 5 CKR_SESSION_CLOSED",
          "fail-after C_CreateObject 5 CKR_DEVICE_MEMORY"})
        QTest::newRow(QByteArray(order).replace('\n', ", ").constData()) << QByteArray(order);
}

/// What was written is there and listed, and nothing is there twice after another start.
void TestImportScale::endsInTheMiddle()
{
    QFETCH(QByteArray, order);
    const int before = objects();
    QTRY_COMPARE(m_stores->currentEntries(StoreName).size(), before);
    m_file.items()->setItems(itemsOf(certificates(10)));
    m_token->control(order + '\n');
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY(!m_finished->first().first().toBool());
    QVERIFY(m_import->isExplained());
    QCOMPARE(m_import->written(), 4);
    QCOMPARE(m_file.items()->checkedCount(), 6);
    m_token->control();
    QTRY_COMPARE(m_stores->currentEntries(StoreName).size(), before + 4);
    QCOMPARE(objects(), before + 4);
    m_finished->clear();
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_finished->wait(60000));
    QVERIFY2(m_finished->first().first().toBool(), qPrintable(m_import->problem()));
    QCOMPARE(m_import->written(), 6);
    QCOMPARE(objects(), before + 10);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 10);
}

void TestImportScale::anotherProgramsStays_data()
{
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("refused") << QByteArray("CKR_ATTRIBUTE_VALUE_INVALID");
    QTest::newRow("perhaps made") << QByteArray("CKR_DEVICE_ERROR");
}

/// Another program writes one of them after the token was looked at. What is undone is ours alone.
void TestImportScale::anotherProgramsStays()
{
    QFETCH(QByteArray, result);
    const int before = objects();
    const QList<QByteArray> ders = certificates(10);
    m_file.items()->setItems(itemsOf(ders));
    m_token->forget();
    // Nothing is created after it: SoftHSM does not see what another process wrote before a write
    // of its own.
    m_token->control("hold C_CreateObject 6\nfail C_CreateObject 6 " + result + '\n');
    m_import->start(&m_file, m_store->id());
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    const QString theirs = QStringLiteral("theirs");
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), ders.at(5), QStringLiteral("77"),
                                         theirs));
    m_token->control();
    QTRY_COMPARE(m_finished->size(), 1);
    QVERIFY(!m_finished->first().first().toBool());
    QCOMPARE(m_import->written(), 5);
    QCOMPARE(objects(), before + 6);
    QCOMPARE(m_stores->currentEntries(StoreName).size(), before + 6);
}

QTEST_GUILESS_MAIN(TestImportScale)
#include "tst_importscale.moc"
