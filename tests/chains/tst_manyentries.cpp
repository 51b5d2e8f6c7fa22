// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What one turn of the event loop reads where thousands of certificates are worked with, counted.
#include "qca/asn1/pem.h"
#include "tests/chains/chainrows.h"
#include "tests/chains/madechain.h"
#include "tests/x509/corpus.h"
#include "tools/chainsources.h"
#include "tools/documentverifier.h"
#include "tools/exporter.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

namespace {

constexpr int Many = 1500;

} // namespace

class TestManyEntries : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void exportReadsInPortions();
    void exportIsStopped();
    void exportOutlivesItsRows();
    void verifyingReadsNothingAgain();
    void verifyingWaitsForTheReading();
    void verifyingIsStoppedWhileItWaits();
    void verifyingOutlivesItsRows();

private:
    void addRows(int count);
    QStringList identities() const;

    QCA::Initializer m_initializer;
    QByteArray m_der;
    std::unique_ptr<ChainRows> m_rows;
    std::unique_ptr<EntryModel> m_entries;
};

void TestManyEntries::initTestCase()
{
    m_der = make({"Same", -1, 30}, nullptr).der();
    QVERIFY(!m_der.isEmpty());
}

void TestManyEntries::init()
{
    m_rows = std::make_unique<ChainRows>();
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_rows.get());
}

void TestManyEntries::cleanup()
{
    m_entries.reset();
    m_rows.reset();
}

/// All of one identity, and so they are exported together.
void TestManyEntries::addRows(int count)
{
    for (int i = 0; i < count; ++i)
        m_rows->add(ChainRows::User, "Store", m_der);
}

QStringList TestManyEntries::identities() const
{
    return {m_entries->identityAt(0)};
}

void TestManyEntries::exportReadsInPortions()
{
    addRows(Many);
    Exporter exporter;
    QSignalSpy finished(&exporter, &Exporter::finished);
    int reads = 0;
    int turns = 0;
    // Nobody else reads meanwhile.
    m_entries->disconnect();
    RowEntry::takeReads();
    exporter.stage(m_entries.get(), identities(), nullptr);
    double before = 0;
    while (exporter.progress() >= 0) {
        const double read = (exporter.progress() - before) * Many;
        QVERIFY2(read <= double(Exporter::MostInPortion) + 0.5, qPrintable(QString::number(read)));
        before = exporter.progress();
        ++turns;
        QCoreApplication::processEvents();
    }
    QVERIFY2(turns >= Many / int(Exporter::MostInPortion), qPrintable(QString::number(turns)));
    reads = RowEntry::takeReads();
    QVERIFY2(reads >= Many, qPrintable(QString::number(reads)));
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(Exporter::NoError));
    QCOMPARE(readPem(exporter.text().toLatin1()).size(), Many);
    QVERIFY(exporter.isCertificatesOnly());
}

void TestManyEntries::exportIsStopped()
{
    addRows(Many);
    Exporter exporter;
    QSignalSpy finished(&exporter, &Exporter::finished);
    exporter.stage(m_entries.get(), identities(), nullptr);
    QVERIFY(exporter.progress() > 0 && exporter.progress() < 1);
    exporter.cancel();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(Exporter::Cancelled));
    QVERIFY(exporter.progress() < 0);
    // And the next one is whole.
    exporter.stage(m_entries.get(), identities(), nullptr);
    QTRY_COMPARE(finished.count(), 2);
    QCOMPARE(exporter.error(), int(Exporter::NoError));
    QCOMPARE(readPem(exporter.text().toLatin1()).size(), Many);
}

// The rows are those of the moment in which one has asked.
void TestManyEntries::exportOutlivesItsRows()
{
    addRows(Many);
    Exporter exporter;
    QSignalSpy finished(&exporter, &Exporter::finished);
    exporter.stage(m_entries.get(), identities(), nullptr);
    m_entries.reset();
    m_rows.reset();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(Exporter::NoError));
    QCOMPARE(readPem(exporter.text().toLatin1()).size(), Many);
}

void TestManyEntries::verifyingReadsNothingAgain()
{
    addRows(Many);
    DocumentVerifier verifier;
    verifier.setEntries(m_entries.get());
    QTRY_VERIFY(ChainSources::of(m_entries.get())->isComplete());
    QCOMPARE(ChainSources::of(m_entries.get())->certificates().size(), Many);
    QSignalSpy finished(&verifier, &DocumentVerifier::finished);
    RowEntry::takeReads();
    verifier.verify(QStringLiteral("/nonexistent/letter.p7s"));
    QCOMPARE(RowEntry::takeReads(), 0);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoMessage));
}

void TestManyEntries::verifyingWaitsForTheReading()
{
    addRows(Many);
    DocumentVerifier verifier;
    verifier.setEntries(m_entries.get());
    QVERIFY(!ChainSources::of(m_entries.get())->isComplete());
    QSignalSpy finished(&verifier, &DocumentVerifier::finished);
    RowEntry::takeReads();
    verifier.verify(QStringLiteral("/nonexistent/letter.p7s"));
    QCOMPARE(RowEntry::takeReads(), 0);
    QVERIFY(verifier.isRunning());
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(ChainSources::of(m_entries.get())->isComplete());
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoMessage));
}

void TestManyEntries::verifyingIsStoppedWhileItWaits()
{
    addRows(Many);
    DocumentVerifier verifier;
    verifier.setEntries(m_entries.get());
    QSignalSpy finished(&verifier, &DocumentVerifier::finished);
    verifier.verify(QStringLiteral("/nonexistent/letter.p7s"));
    verifier.cancel();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(verifier.error(), int(DocumentVerifier::Cancelled));
    QVERIFY(!verifier.isRunning());
    QTRY_VERIFY(ChainSources::of(m_entries.get())->isComplete());
    QCOMPARE(finished.count(), 1);
}

void TestManyEntries::verifyingOutlivesItsRows()
{
    addRows(Many);
    DocumentVerifier verifier;
    verifier.setEntries(m_entries.get());
    QSignalSpy finished(&verifier, &DocumentVerifier::finished);
    verifier.verify(QStringLiteral("/nonexistent/letter.p7s"));
    m_entries.reset();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoMessage));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestManyEntries test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_manyentries.moc"
