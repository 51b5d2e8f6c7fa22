// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/certificates/countingsource.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QScopedValueRollback>
#include <QtTest>

#include <algorithm>
#include <memory>

using TrivexTest::CountingSource;
using TrivexTest::names;

namespace {

using Row = CountingSource::Row;
using Model = QAbstractItemModel;

/// Knows when its rows must not be changed, and bears being asked for none.
class Source : public CountingSource {
public:
    Source()
    {
        const auto begins = [this] { ++m_busy; };
        const auto ends = [this] { --m_busy; };
        connect(this, &Model::rowsAboutToBeInserted, this, begins);
        connect(this, &Model::rowsInserted, this, ends);
        connect(this, &Model::rowsAboutToBeRemoved, this, begins);
        connect(this, &Model::rowsRemoved, this, ends);
        connect(this, &Model::rowsAboutToBeMoved, this, begins);
        connect(this, &Model::rowsMoved, this, ends);
        connect(this, &Model::layoutAboutToBeChanged, this, begins);
        connect(this, &Model::layoutChanged, this, ends);
        connect(this, &Model::modelAboutToBeReset, this, begins);
        connect(this, &Model::modelReset, this, ends);
    }
    bool isBusy() const { return m_busy > 0; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return index.isValid() ? CountingSource::data(index, role) : QVariant();
    }
    void turnRound()
    {
        Q_EMIT layoutAboutToBeChanged();
        const QModelIndexList old = persistentIndexList();
        QVector<Row> turned = rows();
        std::reverse(turned.begin(), turned.end());
        setRows(turned);
        QModelIndexList now;
        for (const QModelIndex &index : old)
            now << this->index(rowCount({}) - 1 - index.row());
        changePersistentIndexList(old, now);
        Q_EMIT layoutChanged();
    }

private:
    int m_busy = 0;
};

class OpenModel : public CertificateModel {
public:
    using CertificateModel::isSteady;
};

/// What a view knows that only hears the signals.
class Replay : public QObject {
public:
    explicit Replay(const OpenModel &model)
        : m_model(model)
    {
        connect(&model, &Model::rowsInserted, this, [this](const QModelIndex &, int a, int b) {
            for (int row = a; row <= b; ++row)
                m_rows.insert(row, text(row));
        });
        connect(&model, &Model::rowsRemoved, this, [this](const QModelIndex &, int a, int b) {
            m_rows.erase(m_rows.begin() + a, m_rows.begin() + b + 1);
        });
        connect(&model, &Model::dataChanged, this,
                [this](const QModelIndex &a, const QModelIndex &b) {
                    for (int row = a.row(); row <= b.row(); ++row)
                        m_rows[row] = text(row);
                });
        connect(&model, &Model::layoutChanged, this, &Replay::readAll);
        connect(&model, &Model::modelReset, this, &Replay::readAll);
    }
    void readAll()
    {
        m_rows.clear();
        for (int row = 0; row < m_model.rowCount(); ++row)
            m_rows << text(row);
    }
    /// Texts read while the source had changed and had not told yet say nothing.
    bool agrees(const QStringList &rows) const
    {
        bool same = rows.size() == m_rows.size();
        for (int row = 0; same && row < rows.size(); ++row)
            same = m_rows.at(row).isNull() || m_rows.at(row) == rows.at(row);
        return same;
    }
    QStringList rows() const { return m_rows; }

private:
    QString text(int row) const
    {
        return m_model.isSteady()
            ? m_model.data(m_model.index(row, 0), CountingSource::NameRole).toString()
            : QString();
    }

    const OpenModel &m_model;
    QStringList m_rows;
};

/// A model, its source, and listeners who change both while they are told of a change.
class Play {
public:
    explicit Play(quint32 seed)
        : m_random(seed)
        , m_tester(&m_model)
        , m_replay(m_model)
    {
        m_model.setSearchRoles({QStringLiteral("name")});
        replaceSource();
        m_replay.readAll();
        listenToModel();
    }
    void step()
    {
        m_left = 4;
        if (m_random.bounded(40) == 0)
            replaceSource();
        else if (m_random.bounded(2) == 0)
            changeSource();
        else
            changeModel();
        m_left = 0;
    }
    /// Empty where all is right.
    QString wrong();

private:
    Row anyRow();
    void replaceSource();
    void listenToSource(bool isFirst);
    void listenToModel();
    void changeSource();
    void changeModel();
    void interfere(bool maySource);
    QStringList expected() const;

    template <typename Signal> void listen(Model *model, Signal signal)
    {
        QObject::connect(model, signal, &m_listener, [this] { interfere(true); });
    }

    QRandomGenerator m_random;
    QObject m_listener;
    std::unique_ptr<Source> m_source;
    OpenModel m_model;
    QAbstractItemModelTester m_tester;
    Replay m_replay;
    QVector<QPair<QPersistentModelIndex, QPersistentModelIndex>> m_kept;
    int m_left = 0;
    bool m_isEarly = false; ///< the model has not heard yet which rows have other data
};

Row Play::anyRow()
{
    return {QString::number(m_random.bounded(1000)), {}, m_random.bounded(3) == 0 ? 5 : 0, {}};
}

void Play::replaceSource()
{
    auto source = std::make_unique<Source>();
    QVector<Row> rows;
    for (int count = m_random.bounded(m_random.bounded(8) == 0 ? 300 : 12); count > 0; --count)
        rows << anyRow();
    source->reset(rows);
    m_source.swap(source);
    listenToSource(true);
    m_model.setSourceModel(m_source.get());
    listenToSource(false);
}

void Play::listenToSource(bool isFirst)
{
    Source *source = m_source.get();
    listen(source, &Model::rowsAboutToBeInserted);
    listen(source, &Model::rowsAboutToBeRemoved);
    listen(source, &Model::rowsInserted);
    listen(source, &Model::rowsRemoved);
    listen(source, &Model::rowsMoved);
    listen(source, &Model::layoutAboutToBeChanged);
    listen(source, &Model::layoutChanged);
    listen(source, &Model::modelAboutToBeReset);
    listen(source, &Model::modelReset);
    QObject::connect(source, &Model::dataChanged, &m_listener, [this, isFirst] {
        const QScopedValueRollback<bool> early(m_isEarly, isFirst);
        interfere(!isFirst);
    });
}

void Play::listenToModel()
{
    listen(&m_model, &Model::rowsAboutToBeInserted);
    listen(&m_model, &Model::rowsInserted);
    listen(&m_model, &Model::rowsAboutToBeRemoved);
    listen(&m_model, &Model::rowsRemoved);
    listen(&m_model, &Model::layoutAboutToBeChanged);
    listen(&m_model, &Model::layoutChanged);
    listen(&m_model, &Model::dataChanged);
    listen(&m_model, &Model::modelAboutToBeReset);
    listen(&m_model, &Model::modelReset);
}

void Play::interfere(bool maySource)
{
    if (m_left == 0 || m_random.bounded(3) > 0)
        return;
    --m_left;
    if (maySource && !m_isEarly && !m_source->isBusy() && m_random.bounded(2) == 0)
        changeSource();
    else
        changeModel();
}

void Play::changeSource()
{
    const int count = m_source->rows().size();
    const int at = count > 0 ? m_random.bounded(count) : 0;
    const int most = m_random.bounded(6) == 0 ? 150 : 3;
    const int what = m_random.bounded(count > 400 ? 3 : 12);
    if (what < 4 && count > 0) {
        m_source->remove(at, 1 + m_random.bounded(std::min(most, count - at)));
    } else if (what < 5 && count > 0) {
        m_source->turnRound();
    } else if (what < 6 && count > 1) {
        m_source->moveRow(at, at > 0 ? 0 : count);
    } else if (what < 9 && count > 0) {
        m_source->change(at, anyRow());
    } else if (what == 9 && m_model.isSteady() && m_random.bounded(4) == 0) {
        m_source->reset({anyRow(), anyRow(), anyRow()});
    } else {
        QVector<Row> rows;
        for (int more = 1 + m_random.bounded(most); more > 0; --more)
            rows << anyRow();
        m_source->insert(m_random.bounded(count + 1), rows);
    }
}

void Play::changeModel()
{
    static const char *const texts[] = {"", "1", "12", "2", "23", "", "3"};
    switch (m_random.bounded(6)) {
    case 0:
        m_model.rowCount();
        break;
    case 1:
        m_model.setFilterRole(m_random.bounded(3) == 0 ? 5 : 0);
        break;
    case 2:
        m_model.sort(m_random.bounded(4) - 1 > 0 ? 0 : -1,
                     m_random.bounded(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        break;
    case 3:
        m_model.mapFromSource(m_source->index(0));
        break;
    default:
        m_model.setPattern(QLatin1String(texts[m_random.bounded(7)]));
    }
}

QStringList Play::expected() const
{
    QStringList found;
    for (const Row &row : m_source->rows()) {
        if (row.type == m_model.filterRole() && row.name.contains(m_model.pattern()))
            found << row.name;
    }
    if (m_model.sortColumn() < 0)
        return found;
    const bool isUp = m_model.sortOrder() == Qt::AscendingOrder;
    std::stable_sort(found.begin(), found.end(), [isUp](const QString &a, const QString &b) {
        const int way = QString::localeAwareCompare(a, b);
        return isUp ? way < 0 : way > 0;
    });
    return found;
}

QString Play::wrong()
{
    const QStringList want = expected();
    const QStringList shown = names(m_model);
    const auto joined = [](const QStringList &list) { return list.join(QLatin1Char(' ')); };
    if (shown != want)
        return QStringLiteral("shown: %1; wanted: %2").arg(joined(shown), joined(want));
    if (!m_replay.agrees(want))
        return QStringLiteral("told: %1; wanted: %2").arg(joined(m_replay.rows()), joined(want));
    for (const auto &pair : qAsConst(m_kept)) {
        if (pair.first.isValid() && m_model.mapToSource(pair.first) != pair.second)
            return QStringLiteral("an index that was kept is another row's");
    }
    m_kept.clear();
    int mapped = 0;
    for (int row = 0; row < m_source->rows().size(); ++row) {
        const QModelIndex index = m_model.mapFromSource(m_source->index(row));
        mapped += index.isValid() ? 1 : 0;
        if (index.isValid() && m_model.mapToSource(index).row() != row)
            return QStringLiteral("row %1 is mapped to another").arg(row);
    }
    if (mapped != want.size())
        return QStringLiteral("%1 rows are mapped").arg(mapped);
    for (int row = 0; row < want.size(); row += 1 + want.size() / 4)
        m_kept.append({m_model.index(row, 0), m_model.mapToSource(m_model.index(row, 0))});
    return {};
}

} // namespace

/// The filter model against one made from scratch, while listeners change it and its source.
class TestSortedRowsRandom : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QLocale::setDefault(QLocale(QStringLiteral("ru_RU"))); // before the first comparison
    }
    void listenersInterfere_data();
    void listenersInterfere();

private:
    QCA::Initializer m_qca;
};

void TestSortedRowsRandom::listenersInterfere_data()
{
    QTest::addColumn<uint>("seed");
    for (uint seed = 1; seed <= 24; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed;
}

void TestSortedRowsRandom::listenersInterfere()
{
    QFETCH(uint, seed);
    Play play(seed);
    for (int step = 0; step < 250; ++step) {
        play.step();
        const QString wrong = play.wrong();
        QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("step %1: ").arg(step) + wrong));
    }
}

QTEST_GUILESS_MAIN(TestSortedRowsRandom)
#include "tst_sortedrowsrandom.moc"
