// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedrequest.h"
#include "tests/app/rowsource.h"
#include "tests/support/loopmeter.h"
#include "tests/support/testcertificates.h"
#include "tools/sectionedmodel.h"

#include <QAbstractItemModelTester>
#include <QCryptographicHash>
#include <QTranslator>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const char Configuration[] = "[req]\ndistinguished_name=dn\n[dn]\n[e]\n"
                             "subjectAltName=DNS:hidden.example.org,email:mail@example.org,"
                             "URI:https://example.org/place,IP:192.0.2.77\n"
                             "keyUsage=digitalSignature\n"
                             "extendedKeyUsage=serverAuth,1.3.6.1.4.1.99999.7\n"
                             "subjectKeyIdentifier=A1B2C3D4E5F60718\n"
                             "certificatePolicies=1.2.643.100.113.2\n"
                             "crlDistributionPoints=URI:http://example.org/one.crl\n"
                             "1.3.6.1.4.1.99999.8=ASN1:UTF8String:Unheard of\n";

} // namespace

/// The search over everything that the viewer shows, and what it costs.
class TestFullSearch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void finds_data();
    void finds();
    void shortDigitsAreNoBytes();
    void needsNoSearchNoWork();
    void eachIsDescribedOnce();
    void rowsThatArriveAreFound();
    void manyRowsWhileTheyArrive();

private:
    QString write(int number, const QByteArray &der) const;
    void append(const QString &path);
    void add(const QByteArray &der);
    QByteArray changed(int number) const;

    QCA::Initializer m_initializer;
    QTranslator m_texts;
    TestAuthority m_authority;
    QByteArray m_certificate;
    QByteArray m_request;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RowSource> m_source;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<SectionedModel> m_rows;
};

void TestFullSearch::initTestCase()
{
    QVERIFY(m_texts.load(QStringLiteral(TRIVEX_CATALOGUE_DIR "/trivex-app_en.qm")));
    QCoreApplication::installTranslator(&m_texts);
    if (!m_authority.isValid())
        QSKIP("SKIP the openssl program does not work");
    const QString file = m_authority.file(QStringLiteral("full.cnf"));
    QFile configuration(file);
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    configuration.write(Configuration);
    configuration.close();
    const QString key = m_authority.file(QStringLiteral("full.key"));
    const auto make = [&](const QStringList &further) {
        return m_authority.openssl(
            QStringList{QStringLiteral("req"), QStringLiteral("-config"), file,
                        QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
                        QStringLiteral("-nodes"), QStringLiteral("-keyout"), key,
                        QStringLiteral("-subj"), QStringLiteral("/CN=Full/O=Example"),
                        QStringLiteral("-outform"), QStringLiteral("DER")}
            + further);
    };
    m_certificate =
        make({QStringLiteral("-x509"), QStringLiteral("-extensions"), QStringLiteral("e"),
              QStringLiteral("-set_serial"), QStringLiteral("0x0A1B2C3D4E5F")});
    m_request = make({QStringLiteral("-new"), QStringLiteral("-reqexts"), QStringLiteral("e")});
    QVERIFY(!m_certificate.isEmpty());
    QVERIFY(!m_request.isEmpty());
}

void TestFullSearch::init()
{
    m_rows.reset();
    m_entries.reset();
    m_source = std::make_unique<RowSource>();
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_source.get());
    m_rows = std::make_unique<SectionedModel>();
    m_rows->setEntries(m_entries.get());
    m_folder = std::make_unique<QTemporaryDir>();
}

QString TestFullSearch::write(int number, const QByteArray &der) const
{
    QFile file(m_folder->filePath(QString::number(number)));
    if (file.open(QIODevice::WriteOnly))
        file.write(der);
    return file.fileName();
}

void TestFullSearch::add(const QByteArray &der)
{
    append(write(m_source->rowCount(), der));
}

void TestFullSearch::append(const QString &path)
{
    auto *request = new FiledRequest;
    request->path = path;
    m_source->add(QString(), request);
}

/// The request with other letters in its name.
QByteArray TestFullSearch::changed(int number) const
{
    QByteArray der = m_request;
    const QByteArray name = QByteArray::number(number).rightJustified(7, '0');
    return der.replace("Example", name);
}

void TestFullSearch::finds_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *what, const char *pattern, bool isFound = true) {
        QTest::newRow(what) << QString::fromUtf8(pattern) << isFound;
    };
    row("alternative name", "HIDDEN.example");
    row("mail", "mail@example.org");
    row("place", "https://example.org/place");
    row("address", "192.0.2.77");
    row("purpose by its number", "1.3.6.1.4.1.99999.7");
    row("known purpose by its number", "1.3.6.1.5.5.7.3.1");
    row("known extension by its number", "2.5.29.17");
    row("policy", "1.2.643.100.113.2");
    row("list", "one.crl");
    row("unknown extension by its number", "1.3.6.1.4.1.99999.8");
    row("key id with colons", "a1:b2:c3:d4");
    row("key id without", "A1B2C3D4E5");
    row("key id with spaces", "a1 b2 c3 d4 e5 f6");
    row("serial number with colons", "0A:1B:2C:3D");
    row("serial number without", "0a1b2c3d4e5f");
    row("serial number with a mark", "0x0A1B2C3D4E5F");
    row("serial number with spaces", "0A 1B 2C 3D 4E 5F");
    row("nothing of it", "visible.example", false);
    row("other bytes", "a1:b2:c3:d5", false);
    row("another number", "1.3.6.1.4.1.99999.9", false);
}

void TestFullSearch::finds()
{
    QFETCH(QString, pattern);
    QFETCH(bool, isFound);
    const RowText text = rowText(ShownKind::Certificate, m_certificate);
    QCOMPARE(SearchNeedle(pattern).isIn(text), isFound);
    const QByteArray digest =
        QCryptographicHash::hash(m_certificate, QCryptographicHash::Sha256).toHex(' ');
    QVERIFY(SearchNeedle(QString::fromLatin1(digest)).isIn(text));
    QVERIFY(
        SearchNeedle(QString::fromLatin1(digest).remove(QLatin1Char(' ')).toUpper()).isIn(text));
    QVERIFY(SearchNeedle(QString::fromLatin1(digest).replace(QLatin1Char(' '), QLatin1Char(':')))
                .isIn(text));
}

void TestFullSearch::shortDigitsAreNoBytes()
{
    // A name of hex digits is not to be found in the key of everybody.
    const RowText text = rowText(ShownKind::Certificate, m_certificate);
    const QString bytes = QString::fromUtf8(text.bytes);
    QVERIFY(bytes.size() > 200);
    int found = 0;
    for (int at = 0; at < 100; ++at)
        found += SearchNeedle(bytes.mid(at, 4)).isIn(text) ? 1 : 0;
    QVERIFY2(found < 20, qPrintable(QString::number(found)));
    // Nor are two letters to be found in the words of everybody's description.
    QVERIFY(!SearchNeedle(QStringLiteral("ur")).isIn(text));
    QVERIFY(SearchNeedle(QStringLiteral("ur")).isIn(QByteArrayLiteral("laura")));
}

void TestFullSearch::needsNoSearchNoWork()
{
    add(m_request);
    QTRY_COMPARE(m_rows->count(), 1);
    // Nothing must be described in this time.
    QTest::qWait(50);
    QCOMPARE(m_entries->describedCount(), 0);
    QVERIFY(!m_entries->isDescribing());
    m_rows->setPattern(QStringLiteral("hidden.example"));
    QVERIFY(m_entries->isDescribing());
    QTRY_COMPARE(m_entries->describedCount(), 1);
    QTRY_COMPARE(m_rows->count(), 1);
    QVERIFY(!m_entries->isDescribing());
}

void TestFullSearch::eachIsDescribedOnce()
{
    QAbstractItemModelTester tester(m_rows.get(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int i = 0; i < 20; ++i)
        add(changed(i));
    for (const char *pattern : {"hidden", "hidden.example", "", "0000003", "one.crl"}) {
        m_rows->setPattern(QLatin1String(pattern));
        QTRY_VERIFY(!m_entries->isDescribing());
        QCoreApplication::processEvents();
    }
    QCOMPARE(m_entries->describedCount(), 20);
    // Rows that go and come again, too.
    m_source->removeRows(0, 10);
    for (int i = 0; i < 10; ++i)
        add(changed(i));
    QTRY_VERIFY(!m_entries->isDescribing());
    QTRY_COMPARE(m_rows->count(), 20);
    QCOMPARE(m_entries->describedCount(), 20);
}

void TestFullSearch::rowsThatArriveAreFound()
{
    m_rows->setPattern(QStringLiteral("0000042"));
    for (int i = 40; i < 45; ++i) {
        add(changed(i));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(m_rows->count(), 1);
    m_source->removeRow(2);
    QTRY_COMPARE(m_rows->count(), 0);
    add(changed(42));
    QTRY_COMPARE(m_rows->count(), 1);
}

void TestFullSearch::manyRowsWhileTheyArrive()
{
    constexpr int Rows = 10000;
    // The disk may make a writer wait, and that is not what is measured.
    QStringList files;
    for (int i = 0; i < Rows; ++i)
        files += write(i, changed(i));
    LoopMeter meter;
    m_rows->setPattern(QStringLiteral("hidden.example"));
    int most = 0;
    meter.start();
    for (int i = 0; i < Rows; ++i) {
        append(files.at(i));
        if (i % 20 == 19)
            QCoreApplication::processEvents();
        // The list fills while it is searched.
        if (i == Rows / 2)
            most = m_rows->count();
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_rows->count(), Rows, 120000);
    QVERIFY2(most > 0, "nothing was found before the last row had come");
    for (const char *pattern :
         {"hid", "hidden.example.o", "0001234", "a1 b2 c3 d4", "none at all"}) {
        m_rows->setPattern(QLatin1String(pattern));
        // A hand that types: the search is under way when the next one begins.
        QTest::qWait(50);
    }
    meter.stop();
    QCOMPARE(m_rows->count(), 0);
    QCOMPARE(m_entries->describedCount(), Rows);
    qInfo("longest turn %lld ms", meter.longest());
    QVERIFY2(meter.longest() < LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
}

QTEST_GUILESS_MAIN(TestFullSearch)
#include "tst_fullsearch.moc"
