// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
// The filter model against a plain proxy that searches every row with a regular expression:
// loading rows under the filter and keystrokes, and how both grow.
#include "benchmarks/measure.h"
#include "certificates/certificatemodel.h"

#include <QAbstractListModel>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QRandomGenerator>
#include <QRegExp>
#include <QSortFilterProxyModel>

#include <functional>
#include <iterator>

namespace {

constexpr int Rounds = 3;
const int Sizes[] = {100, 1000, 10000, 50000};

enum Role {
    NameRole = CertificateModel::NameRole,
    IssuerRole = NameRole + 3,
    TypeRole,
    EntryIdRole,
};

/// Rows with Cyrillic names in the roles of the key store model, all of the system's type.
class Source : public QAbstractListModel {
public:
    explicit Source(int rows)
    {
        static const QString letters =
            QStringLiteral("абвгдежзийклмнопрстуфхцчшщъыьэюяАБВГДЕЖЗabcdefghijk 0123456789");
        QRandomGenerator random(1);
        for (int i = 0; i < rows; ++i) {
            QString texts[3];
            for (QString &text : texts) {
                for (int k = 0; k < 24; ++k)
                    text += letters.at(random.bounded(letters.size()));
            }
            m_all.append({texts[0], texts[1], texts[2]});
        }
    }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_shown;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        switch (role) {
        case NameRole:
            return m_all.at(index.row()).value(0);
        case IssuerRole:
            return m_all.at(index.row()).value(1);
        case EntryIdRole:
            return m_all.at(index.row()).value(2);
        case TypeRole:
            return 0;
        default:
            return QVariant();
        }
    }
    QHash<int, QByteArray> roleNames() const override
    {
        return {{NameRole, "name"},
                {IssuerRole, "issuer"},
                {TypeRole, "type"},
                {EntryIdRole, "entryId"}};
    }

    /// As the key store model does it.
    void loadRowByRow()
    {
        while (m_shown < m_all.size()) {
            beginInsertRows(QModelIndex(), m_shown, m_shown);
            ++m_shown;
            endInsertRows();
        }
    }
    /// As the key store model does it with a long list: `rows` more at each turn of the event loop.
    bool loadSlice(int rows)
    {
        for (int i = 0; i < rows && m_shown < m_all.size(); ++i) {
            beginInsertRows(QModelIndex(), m_shown, m_shown);
            ++m_shown;
            endInsertRows();
        }
        return m_shown < m_all.size();
    }
    void loadAtOnce()
    {
        beginInsertRows(QModelIndex(), 0, m_all.size() - 1);
        m_shown = m_all.size();
        endInsertRows();
    }

private:
    QVector<QStringList> m_all;
    int m_shown = 0;
};

/// What one writes without a second thought.
class PlainProxy : public QSortFilterProxyModel {
public:
    PlainProxy() { sort(0); }

    void setPattern(const QString &text)
    {
        setFilterRegExp(QRegExp(text, Qt::CaseInsensitive, QRegExp::FixedString));
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const QModelIndex index = sourceModel()->index(row, 0, parent);
        if (sourceModel()->data(index, TypeRole).toInt() != 0)
            return false;
        if (filterRegExp().isEmpty())
            return true;
        for (const int role : {NameRole, IssuerRole, EntryIdRole}) {
            const QString text = sourceModel()->data(index, role).toString().toLower();
            if (text.indexOf(filterRegExp()) >= 0)
                return true;
        }
        return false;
    }
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override
    {
        return QString::localeAwareCompare(
                   sourceModel()->data(left, NameRole).toString().toLower(),
                   sourceModel()->data(right, NameRole).toString().toLower())
            < 0;
    }
};

void prepare(PlainProxy &) { }

void prepare(CertificateModel &model)
{
    model.setSearchRoles(
        {QStringLiteral("name"), QStringLiteral("issuer"), QStringLiteral("entryId")});
}

template <typename Model> double loadTime(int rows, void (Source::*load)())
{
    QVector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        Source source(rows);
        Model model;
        prepare(model);
        model.setSourceModel(&source);
        model.rowCount();
        const Measure::CpuTime timer;
        (source.*load)();
        model.rowCount(); // the rows are sorted when somebody looks
        times.append(timer.milliseconds());
    }
    return Measure::median(times);
}

struct Times {
    double all = 0;
    double longest = 0; ///< of one turn of the event loop
};

/// Rows that arrive while filters for all five categories of a window watch them.
template <typename Model> Times arrival(int rows)
{
    constexpr int Slice = 32;
    const int categories[] = {0, 1, 3, 6, 7};
    QVector<double> all;
    QVector<double> longest;
    for (int round = 0; round < Rounds; ++round) {
        Source source(rows);
        Model models[std::size(categories)];
        for (size_t i = 0; i < std::size(categories); ++i) {
            models[i].setFilterRole(categories[i]);
            models[i].setSourceModel(&source);
            models[i].rowCount();
        }
        Times times;
        for (bool goesOn = true; goesOn;) {
            const Measure::CpuTime timer;
            goesOn = source.loadSlice(Slice);
            const double turn = timer.milliseconds();
            times.all += turn;
            times.longest = qMax(times.longest, turn);
        }
        all.append(times.all);
        longest.append(times.longest);
    }
    return {Measure::median(all), Measure::median(longest)};
}

/// The longest turn of the event loop from letter to letter, where nobody waits for the result.
double longestTurn(int rows)
{
    static const QStringList texts = {QStringLiteral("а"), QStringLiteral("аб"),
                                      QStringLiteral("Ш"), QStringLiteral("12"),
                                      QStringLiteral("1"), QString()};
    QVector<double> rounds;
    for (int round = 0; round < Rounds; ++round) {
        Source source(rows);
        CertificateModel model;
        prepare(model);
        model.setSourceModel(&source);
        source.loadAtOnce();
        model.rowCount();
        double longest = 0;
        const auto turn = [&longest](const std::function<void()> &work) {
            const Measure::CpuTime timer;
            work();
            longest = qMax(longest, timer.milliseconds());
        };
        for (const QString &text : texts) {
            turn([&] { model.setPattern(text); });
            QElapsedTimer quiet;
            quiet.start();
            while (quiet.elapsed() < 100)
                turn([] { QCoreApplication::processEvents(); });
        }
        rounds.append(longest);
    }
    return Measure::median(rounds);
}

struct Keystrokes {
    double median = 0;
    double worst = 0;
};

template <typename Model> Keystrokes keystrokes(int rows)
{
    // Typing, going on, going back, another text, and clearing it.
    static const QStringList texts = {
        QStringLiteral("а"), QStringLiteral("аб"), QStringLiteral("абв"), QStringLiteral("аб"),
        QStringLiteral("а"), QStringLiteral("Ш"),  QStringLiteral("ШК"),  QStringLiteral("12"),
        QStringLiteral("1"), QStringLiteral("c"),  QStringLiteral("cd"),  QString()};
    Source source(rows);
    Model model;
    prepare(model);
    model.setSourceModel(&source);
    source.loadAtOnce();
    model.rowCount();
    QVector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        for (const QString &text : texts) {
            const Measure::CpuTime timer;
            model.setPattern(text);
            model.rowCount();
            times.append(timer.milliseconds());
        }
    }
    return {Measure::median(times), *std::max_element(times.cbegin(), times.cend())};
}

void loading(const char *title, void (Source::*load)(), int most)
{
    Measure::Table table(QString::fromLatin1(title), QStringLiteral("plain proxy"));
    for (const int rows : Sizes) {
        if (rows <= most)
            table.add(QStringLiteral("filter model"), rows, loadTime<CertificateModel>(rows, load),
                      loadTime<PlainProxy>(rows, load));
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
    loading("Loading at once", &Source::loadAtOnce, 50000);
    loading("Loading row by row", &Source::loadRowByRow, 10000);
    {
        Measure::Table all(QStringLiteral("Arrival in slices, five categories watched"),
                           QStringLiteral("five plain proxies"));
        Measure::Table stall(QStringLiteral("The longest turn of the event loop meanwhile"),
                             QStringLiteral("five plain proxies"));
        for (const int rows : {1000, 10000, 50000}) {
            const Times ours = arrival<CertificateModel>(rows);
            const Times plain = arrival<PlainProxy>(rows);
            all.add(QStringLiteral("filter models"), rows, ours.all, plain.all);
            stall.add(QStringLiteral("filter models"), rows, ours.longest, plain.longest);
        }
    }
    Measure::Table median(QStringLiteral("Keystroke over three roles, median"),
                          QStringLiteral("plain proxy"));
    Measure::Table worst(QStringLiteral("Keystroke over three roles, worst"),
                         QStringLiteral("plain proxy"));
    Measure::Table turn(
        QStringLiteral("Keystroke over three roles, longest turn of the event loop"),
        QStringLiteral("plain proxy, worst keystroke"));
    for (const int rows : Sizes) {
        const Keystrokes ours = keystrokes<CertificateModel>(rows);
        const Keystrokes plain = keystrokes<PlainProxy>(rows);
        median.add(QStringLiteral("filter model"), rows, ours.median, plain.median);
        worst.add(QStringLiteral("filter model"), rows, ours.worst, plain.worst);
        turn.add(QStringLiteral("filter model"), rows, longestTurn(rows), plain.worst);
    }
    return 0;
}
