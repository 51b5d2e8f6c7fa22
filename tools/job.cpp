// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/job.h"

#include <QPointer>

#include <chrono>

namespace Trivex {

namespace {

/// Often enough for the eye.
constexpr std::chrono::milliseconds ProgressInterval{100};

} // namespace

Job::Job(QObject *parent)
    : QObject(parent)
{
    m_clock.setInterval(ProgressInterval);
    connect(&m_clock, &QTimer::timeout, this, &Job::progressChanged);
}

Job::~Job() = default;

bool Job::begin()
{
    if (m_isRunning)
        return false;
    m_isRunning = true;
    m_clock.start();
    Q_EMIT runningChanged();
    return true;
}

void Job::end()
{
    m_isRunning = false;
    m_clock.stop();
    const QPointer<Job> self(this);
    Q_EMIT progressChanged();
    if (self)
        Q_EMIT runningChanged();
    if (self)
        Q_EMIT finished();
}

} // namespace Trivex
