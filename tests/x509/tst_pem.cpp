// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Where the blocks of a text begin and end: what is removed from a file, or shown of it, is cut
// there.
#include "qca/asn1/pem.h"
#include "tests/support/allocations.h"

#include <QtTest>

using namespace Trivex;

namespace {

const QByteArray block = "-----BEGIN X-----\nQUJD\n-----END X-----";

} // namespace

class TestPem : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ends_data();
    void ends();
    void endsWithItsText_data();
    void endsWithItsText();
    void broken_data();
    void broken();
    void writesWithoutMoving();
};

void TestPem::ends_data()
{
    QTest::addColumn<QByteArray>("behind");
    QTest::addColumn<int>("taken"); // octets behind the block that are its line's
    QTest::newRow("nothing") << QByteArray() << 0;
    QTest::newRow("a line feed") << QByteArray("\n") << 1;
    QTest::newRow("two lines") << QByteArray("\n\n") << 1;
    QTest::newRow("both") << QByteArray("\r\n") << 2;
    QTest::newRow("both, twice") << QByteArray("\r\n\r\n") << 2;
    QTest::newRow("a return alone") << QByteArray("\r") << 1;
    QTest::newRow("two returns") << QByteArray("\r\r\n") << 3;
    QTest::newRow("other text") << QByteArray("x\n") << 0;
    QTest::newRow("a return and text") << QByteArray("\rx\n") << 1;
}

void TestPem::ends()
{
    QFETCH(QByteArray, behind);
    QFETCH(int, taken);
    const QByteArray before = "text\n";
    const QByteArray text = before + block + behind;
    for (const QByteArray &whole : QList<QByteArray>{text, text + block}) {
        const QList<PemBlock> blocks = readPem(whole);
        QVERIFY(!blocks.isEmpty());
        QCOMPARE(blocks.first().begin, before.size());
        QCOMPARE(blocks.first().end, before.size() + block.size() + taken);
        QCOMPARE(blocks.first().data, QByteArray("ABC"));
        QCOMPARE(blocks.last().end,
                 whole.size() - (blocks.size() == 1 ? behind.size() - taken : 0));
    }
}

void TestPem::endsWithItsText_data()
{
    QTest::addColumn<QByteArray>("inside");
    QTest::addColumn<QByteArray>("outside");
    QTest::newRow("a return outside") << QByteArray() << QByteArray("\r\n");
    QTest::newRow("a line feed outside") << QByteArray() << QByteArray("\n");
    QTest::newRow("a line cut in two") << QByteArray("\r") << QByteArray("\n");
    QTest::newRow("a second return outside") << QByteArray("\r") << QByteArray("\r\n");
}

// A text may be a view of a longer one: a mapped file, or the part before another block.
void TestPem::endsWithItsText()
{
    QFETCH(QByteArray, inside);
    QFETCH(QByteArray, outside);
    const QByteArray all = block + inside + outside;
    const int size = block.size() + inside.size();
    const QList<PemBlock> blocks = readPem(QByteArray::fromRawData(all.constData(), size));
    QCOMPARE(blocks.size(), 1);
    QCOMPARE(blocks.first().end, size);
    // The end of the block itself.
    const QByteArray cut = QByteArray::fromRawData(all.constData(), block.size() - 1);
    QVERIFY(readPem(cut).isEmpty());
}

void TestPem::broken_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("no end") << QByteArray("-----BEGIN X-----\nQUJD\n");
    QTest::newRow("another end") << QByteArray("-----BEGIN X-----\nQUJD\n-----END Y-----\n");
    QTest::newRow("no label's end") << QByteArray("-----BEGIN X");
    QTest::newRow("a label of two lines")
        << QByteArray("-----BEGIN X\n-----\nQUJD\n-----END X\n-----");
    QTest::newRow("empty") << QByteArray("-----BEGIN X-----\n-----END X-----\n");
    QTest::newRow("no Base64") << QByteArray("-----BEGIN X-----\nQUJ!\n-----END X-----\n");
    QTest::newRow("the end in the next block")
        << QByteArray("-----BEGIN X-----\nQUJD\n-----BEGIN Y-----\nQUJD\n-----END X-----\n");
}

void TestPem::broken()
{
    QFETCH(QByteArray, text);
    int count = 0;
    const QList<PemBlock> none = readPem(text, &count);
    QVERIFY(none.isEmpty());
    QCOMPARE(count, text.count("BEGIN"));
    // What stands around it is read.
    const QList<PemBlock> around = readPem(block + '\n' + text + '\n' + block, &(count = 0));
    QCOMPARE(around.size(), 2);
    QCOMPARE(count, text.count("BEGIN"));
}

/// The text grows by doubling, not line by line: that would copy all of it for each line, wherever
/// the allocator can't grow it in its place.
void TestPem::writesWithoutMoving()
{
    if (TrivexTest::allocations() < 0)
        QSKIP("the sanitizers count no allocations");
    const QByteArray data(1 << 20, 'x');
    const qint64 before = TrivexTest::allocations();
    const QByteArray text = writePem("X", data);
    const qint64 taken = TrivexTest::allocations() - before;
    QVERIFY2(taken < 100, qPrintable(QString::number(taken)));
    QCOMPARE(readPem(text).first().data, data);
}

QTEST_GUILESS_MAIN(TestPem)

#include "tst_pem.moc"
