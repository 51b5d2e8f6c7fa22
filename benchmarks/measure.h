// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// What the benchmarks share: medians, and a table of ratios against a named baseline that was
/// measured in the same run. The machines are shared, so absolute times say little.
namespace Measure {

/// The median time of `rounds` runs of `work`, in milliseconds.
double median(int rounds, const std::function<void()> &work);
double median(QVector<double> values);

/// The time of the processor that the calling thread has used since the object was made: what work
/// costs that waits for nothing, whatever else the machine does.
class CpuTime {
public:
    CpuTime();
    double milliseconds() const;

private:
    qint64 m_start;
};

/// What this process computed so far, in all its threads; ms.
double computed();

/// Several kinds of work that take turns, each timed for itself.
class Turns {
public:
    explicit Turns(int kinds)
        : m_times(kinds)
    {
    }
    void time(int kind, const std::function<void()> &work);
    double median(int kind) const { return Measure::median(m_times.at(kind)); }

private:
    QVector<QVector<double>> m_times;
};

/// One table of the report, printed as Markdown when it goes.
class Table {
public:
    /// `baseline` names what every row is divided by.
    Table(const QString &title, const QString &baseline);
    ~Table();
    Table(const Table &) = delete;
    Table &operator=(const Table &) = delete;

    /// A measured time in milliseconds against that of the baseline for the same work; `size` is
    /// what the cost may grow with (0: nothing).
    void add(const QString &what, qint64 size, double milliseconds, double baseline);
    /// A line below the table.
    void note(const QString &text);

private:
    struct Row {
        QString what;
        qint64 size;
        double milliseconds;
        double baseline;
    };
    /// By how much the time grew for each doubling of the size since the row before (an exponent:
    /// 1 is linear, 2 quadratic).
    QString growth(int row) const;

    QString m_title;
    QString m_baseline;
    QVector<Row> m_rows;
    QStringList m_notes;
};

} // namespace Measure
