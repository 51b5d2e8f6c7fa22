// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/certificates/rowlistblocks.h"

#include <QRandomGenerator>
#include <QtTest>

#include <functional>
#include <numeric>

using Trivex::RowList;
using Trivex::RowListBlocks;

namespace {

/// So many rows, counted from 0.
std::vector<int> counted(int rows)
{
    std::vector<int> all(size_t(rows), 0);
    std::iota(all.begin(), all.end(), 0);
    return all;
}

RowList listOf(const std::vector<int> &rows)
{
    RowList list;
    list.assign(rows);
    return list;
}

/// More blocks than these would be there if small ones were left behind.
size_t mostBlocks(size_t rows)
{
    return rows / (RowList::MostInBlock / 4) + 1;
}

/// Whether the list reads as `rows`, forwards and by place, and is in blocks of fair length.
bool reads(const RowList &list, const std::vector<int> &rows)
{
    if (list.size() != rows.size() || list.empty() != rows.empty() || list.toVector() != rows)
        return false;
    for (size_t place = 0; place < rows.size(); ++place) {
        if (list[place] != rows[place])
            return false;
    }
    return RowListBlocks::count(list) <= mostBlocks(rows.size())
        && RowListBlocks::longest(list) <= RowList::MostInBlock;
}

/// A list and a vector, to which the same is done.
class Pair {
public:
    explicit Pair(quint32 seed)
        : m_random(seed)
    {
    }

    /// Says what was done.
    QByteArray act()
    {
        static constexpr const char *Names[] = {"insert",     "insert many",       "erase",
                                                "erase many", "erase every third", "renumber",
                                                "assign"};
        // Mostly short changes, so that blocks fill and empty.
        const int dice = m_random.bounded(100);
        const int what = dice < 40 ? 0
            : dice < 50            ? 1
            : dice < 85            ? 2
            : dice < 94            ? 3
            : dice < 96            ? 4
            : dice < 99            ? 5
                                   : 6;
        const std::function<void()> deeds[] = {
            [this] { insert(1); }, [this] { insert(m_random.bounded(3000)); },
            [this] { erase(1); },  [this] { erase(size_t(m_random.bounded(2000))); },
            [this] { thin(); },    [this] { renumber(); },
            [this] { assign(); }};
        deeds[what]();
        return Names[what];
    }
    bool agrees() const { return reads(m_list, m_rows); }

private:
    size_t place(size_t end) { return size_t(m_random.bounded(quint32(end))); }

    void insert(int count)
    {
        const size_t at = place(m_rows.size() + 1);
        if (count == 1) {
            const int row = m_random.bounded(100000);
            m_list.insert(at, row);
            m_rows.insert(m_rows.begin() + std::ptrdiff_t(at), row);
            return;
        }
        const std::vector<int> rows = counted(count);
        m_list.insert(at, rows);
        m_rows.insert(m_rows.begin() + std::ptrdiff_t(at), rows.cbegin(), rows.cend());
    }
    void erase(size_t count)
    {
        const size_t first = place(m_rows.size() + 1);
        const size_t end = std::min(first + count, m_rows.size());
        m_list.erase(first, end);
        m_rows.erase(m_rows.begin() + std::ptrdiff_t(first), m_rows.begin() + std::ptrdiff_t(end));
    }
    void thin()
    {
        const auto isGone = [](int row) { return row % 3 == 0; };
        m_list.eraseIf(isGone);
        m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), isGone), m_rows.end());
    }
    void renumber()
    {
        const auto change = [](int row) { return row + 7; };
        m_list.replaceEach(change);
        std::transform(m_rows.begin(), m_rows.end(), m_rows.begin(), change);
    }
    void assign()
    {
        m_rows = counted(m_random.bounded(5000));
        m_list.assign(m_rows);
    }

    QRandomGenerator m_random;
    RowList m_list;
    std::vector<int> m_rows;
};

} // namespace

class TestRowList : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void readsAsAVector_data();
    void readsAsAVector();
    void findsPlaces();
    void movesAFewRows_data();
    void movesAFewRows();
    void keepsNoSmallBlocks();
    void doesWhatAVectorDoes_data();
    void doesWhatAVectorDoes();
};

void TestRowList::startsEmpty()
{
    RowList list;
    QVERIFY(reads(list, {}));
    QVERIFY(list.begin() == list.end());
    QCOMPARE(list.lowerBound(1, std::less<int>()), size_t(0));
    QCOMPARE(list.upperBound(1, std::less<int>()), size_t(0));
    list.erase(0, 0);
    list.insert(0, std::vector<int>());
    list.eraseIf([](int) { return true; });
    QVERIFY(reads(list, {}));
    list.insert(0, 5);
    QVERIFY(reads(list, {5}));
    list.erase(0, 1);
    QVERIFY(reads(list, {}));
    list.insert(0, counted(3));
    list.clear();
    QVERIFY(reads(list, {}));
}

void TestRowList::readsAsAVector_data()
{
    QTest::addColumn<int>("rows");
    const int block = int(RowList::MostInBlock);
    for (const int rows : {1, block - 1, block, block + 1, 2 * block, 2 * block + 1, 50000})
        QTest::addRow("%d", rows) << rows;
}

void TestRowList::readsAsAVector()
{
    QFETCH(int, rows);
    const std::vector<int> all = counted(rows);
    const RowList list = listOf(all);
    QVERIFY(reads(list, all));
    // A copy is one of its own.
    RowList other = list;
    other.insert(0, 7);
    QVERIFY(reads(list, all));
    QCOMPARE(other.size(), all.size() + 1);
}

void TestRowList::findsPlaces()
{
    // Each number three times: 0 0 0 2 2 2 4 4 4 ...
    std::vector<int> rows = counted(9000);
    for (int &row : rows)
        row = row / 3 * 2;
    const RowList list = listOf(rows);
    const std::less<int> before;
    for (int row = -1; row <= rows.back() + 1; ++row) {
        QCOMPARE(std::ptrdiff_t(list.lowerBound(row, before)),
                 std::lower_bound(rows.cbegin(), rows.cend(), row) - rows.cbegin());
        QCOMPARE(std::ptrdiff_t(list.upperBound(row, before)),
                 std::upper_bound(rows.cbegin(), rows.cend(), row) - rows.cbegin());
    }
}

void TestRowList::movesAFewRows_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("at the front") << 0;
    QTest::newRow("at the end") << 1;
    QTest::newRow("anywhere") << 2;
}

/// What one row costs: those of its block, and the places of the blocks behind it.
void TestRowList::movesAFewRows()
{
    QFETCH(int, way);
    constexpr size_t Rows = 50000;
    QRandomGenerator random(14);
    RowList list;
    for (size_t row = 0; row < Rows; ++row) {
        const size_t places[] = {0, row, size_t(random.bounded(quint32(row + 1)))};
        list.insert(places[way], int(row));
        if (row % 97 == 0) {
            QVERIFY(RowListBlocks::longest(list) <= RowList::MostInBlock);
            QVERIFY(RowListBlocks::count(list) <= mostBlocks(row + 1));
        }
    }
    QVERIFY(RowListBlocks::longest(list) + RowListBlocks::count(list) < Rows / 20);
}

void TestRowList::keepsNoSmallBlocks()
{
    // All but a row of each block, wherever the blocks end.
    RowList list = listOf(counted(50000));
    for (size_t place = 1; place < list.size(); ++place)
        list.erase(place, std::min(place + RowList::MostInBlock / 2 - 1, list.size()));
    std::vector<int> rows;
    for (int row = 0; row < 50000; row += int(RowList::MostInBlock) / 2)
        rows.push_back(row);
    QVERIFY(reads(list, rows));
    list.eraseIf([](int row) { return row != 0; });
    QVERIFY(reads(list, {0}));
    QCOMPARE(RowListBlocks::count(list), size_t(1));
    // From the end, where what is left of the block behind is small already.
    const size_t usual = RowList::MostInBlock / 2;
    list.assign(counted(int(200 * usual)));
    rows.clear();
    for (size_t place = list.size(); place > 0; place -= usual) {
        list.erase(place - usual + 1, place);
        rows.insert(rows.begin(), int(place - usual));
    }
    QVERIFY(reads(list, rows));
}

void TestRowList::doesWhatAVectorDoes_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 8; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void TestRowList::doesWhatAVectorDoes()
{
    QFETCH(int, seed);
    Pair pair{quint32(seed)};
    for (int step = 0; step < 300; ++step) {
        const QByteArray deed = pair.act();
        const QByteArray where = deed + " in step " + QByteArray::number(step);
        QVERIFY2(pair.agrees(), where.constData());
    }
}

QTEST_APPLESS_MAIN(TestRowList)

#include "tst_rowlist.moc"
