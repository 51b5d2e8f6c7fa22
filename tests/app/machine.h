// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/descriptor.h"

#include <QByteArray>
#include <QString>

#include <vector>

#include <sys/resource.h>

namespace TrivexTest {

/// One fault of the machine around a process, which begins and ends while that process runs.
///
/// It concerns the folder `place`, where the process has its home ("home"), its files that wait
/// ("tmp") and what it exports ("out").
class Machine {
public:
    enum Fault { NoHome, ForeignHome, ReadOnly, FullDisk, FileSizes, NoDescriptors };

    Machine(Fault fault, QString place);
    ~Machine();
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;

    /// Before the process has threads. Why this fault can't be had here; empty when it can.
    QByteArray prepare();
    void begin();
    void end();
    /// Whether the fault lies in the environment, which does not change while a process runs.
    bool lasts() const { return m_fault == NoHome; }
    bool isFull() const { return m_fault == FullDisk; }
    /// What fills the disk.
    QString filler() const;

private:
    QByteArray separate() const;
    void fill() const;
    void setForeign(bool isForeign) const;

    const Fault m_fault;
    const QString m_place;
    rlimit m_before{};
    std::vector<Trivex::Descriptor> m_all;
};

} // namespace TrivexTest
