// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

namespace Trivex {

/// Work that takes a while, of which the window need not wait: it goes on beside it, tells how far
/// it is, and can be given up. What came of it a derived class says, by an `error` of its own.
///
/// GUI thread. The object may go at any time; its work then ends without a result.
class Job : public QObject {
    Q_OBJECT
    /// True from the call that starts it until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// From 0 to 1; -1 while it is not known.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// What went wrong, as a sentence with the next step; empty when all is well.
    Q_PROPERTY(QString message READ message NOTIFY finished)
public:
    explicit Job(QObject *parent = nullptr);
    ~Job() override;

    bool isRunning() const { return m_isRunning; }
    virtual double progress() const { return -1; }
    virtual QString message() const = 0;

    /// Asks the work to stop; `finished()` follows, unless nothing runs.
    Q_INVOKABLE virtual void cancel() = 0;

Q_SIGNALS:
    void runningChanged();
    void progressChanged();
    /// The work has ended, well or not.
    void finished();

protected:
    /// False while it runs already.
    bool begin();
    /// The object may be gone when this returns.
    void end();

private:
    bool m_isRunning = false;
    QTimer m_clock;
};

} // namespace Trivex
