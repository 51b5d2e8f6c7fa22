// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "benchmarks/measure.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <ctime>

#include <sys/resource.h>

namespace Measure {

namespace {

/// In nanoseconds.
qint64 threadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

} // namespace

double computed()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval &time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

double median(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double median(int rounds, const std::function<void()> &work)
{
    Turns turns(1);
    for (int round = 0; round < rounds; ++round)
        turns.time(0, work);
    return turns.median(0);
}

void Turns::time(int kind, const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    m_times[kind].append(double(timer.nsecsElapsed()) / 1e6);
}

CpuTime::CpuTime()
    : m_start(threadTime())
{
}

double CpuTime::milliseconds() const
{
    return double(threadTime() - m_start) / 1e6;
}

Table::Table(const QString &title, const QString &baseline)
    : m_title(title)
    , m_baseline(baseline)
{
}

Table::~Table()
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    out << "\n### " << m_title << "\n\nBaseline: " << m_baseline << "\n\n"
        << "| what | size | ms | baseline ms | ratio | growth |\n|---|---:|---:|---:|---:|---:|\n";
    for (int i = 0; i < m_rows.size(); ++i) {
        const Row &row = m_rows.at(i);
        const double ratio = row.baseline > 0 ? row.milliseconds / row.baseline : 0;
        out << "| " << row.what << " | " << (row.size ? QString::number(row.size) : QString())
            << " | " << QString::number(row.milliseconds, 'f', 3) << " | "
            << QString::number(row.baseline, 'f', 3) << " | " << QString::number(ratio, 'f', 2)
            << " | " << growth(i) << " |\n";
    }
    for (const QString &note : m_notes)
        out << "\n" << note << "\n";
}

void Table::add(const QString &what, qint64 size, double milliseconds, double baseline)
{
    m_rows.append({what, size, milliseconds, baseline});
}

void Table::note(const QString &text)
{
    m_notes.append(text);
}

QString Table::growth(int row) const
{
    for (int before = row - 1; before >= 0; --before) {
        const Row &a = m_rows.at(before);
        const Row &b = m_rows.at(row);
        if (a.what != b.what || a.size <= 0 || b.size <= a.size || a.milliseconds <= 0)
            continue;
        const double exponent =
            std::log(b.milliseconds / a.milliseconds) / std::log(double(b.size) / double(a.size));
        return QString::number(exponent, 'f', 2);
    }
    return QString();
}

} // namespace Measure
