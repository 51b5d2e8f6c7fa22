// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "app/application.h"
#include "tests/support/loopmeter.h"

#include <QAbstractItemModel>
#include <QProcess>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

class QApplication;

namespace TrivexTest {

/// For what must happen: a guard against hanging and no limit, so that a busy machine or a build
/// for inspection may take its time; ms.
constexpr int Patience = 60000;

/// True for what a stock plugin of QCA logs on a machine without gpg, whatever the window does.
bool isForeignWarning(const QString &message);

/// A display of its own (Xvfb), a home of its own, and the settings that every window test runs
/// with. Before the application object is made.
class WindowEnvironment {
public:
    WindowEnvironment();
    ~WindowEnvironment();

    /// False when no display could be started; `problem()` says why.
    bool isValid() const { return m_problem.isEmpty(); }
    QString problem() const { return m_problem; }
    QString home() const { return m_home.path(); }
    QString file(const QString &name) const { return m_home.filePath(name); }

private:
    void startDisplay();

    QTemporaryDir m_home;
    QProcess m_display;
    QString m_problem;
};

/// The frames of a window, and the work that its thread does at a time.
class FrameMeter : public QObject {
    Q_OBJECT
public:
    explicit FrameMeter(QQuickWindow *window);

    void reset();
    /// The most that this thread computed between two beats of a 5 ms timer, in milliseconds of the
    /// processor's time.
    qint64 longestWork() const { return m_longestWork; }
    /// The longest that the loop stood still, waiting included, but not what other programs took
    /// of the processor; in milliseconds.
    qint64 longestStall() const { return m_stall.longest(); }
    int frames() const { return m_frames; }

private:
    QTimer m_timer;
    LoopMeter m_stall;
    qint64 m_longestWork = 0;
    qint64 m_worked = 0;
    int m_frames = 0;
};

/// What the row of `model` holds in the role of that name.
QVariant valueOf(const QAbstractItemModel &model, int row, const char *role);

/// The real window and hands to work with it.
class WindowDriver : public QObject {
    Q_OBJECT
public:
    WindowDriver();
    ~WindowDriver() override;

    QQuickWindow *window() const { return m_application.window(); }
    Trivex::Application &application() { return m_application; }
    FrameMeter &meter() { return *m_meter; }

    /// The visible item with this object name, wherever it is; null when there is none.
    QQuickItem *item(const QString &name) const;
    /// A non-item (dialog, drawer) by name.
    QObject *object(const QString &name) const;
    bool isOpen(const QString &dialog) const;

    /// Clicks the middle of the item with the mouse; false when it is not there or disabled.
    bool click(const QString &name);
    bool clickItem(QQuickItem *item);
    void type(const QString &text);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Whether all of it is within the window.
    bool isInSight(const QQuickItem &item) const;
    /// Clicks a field and types into it, over what it holds.
    bool fill(const QString &name, const QString &text);
    /// Waits until `condition` holds, with the event loop running.
    bool waitFor(const std::function<bool()> &condition, int ms = Patience);
    /// Waits for a visible item.
    bool waitForItem(const QString &name, int ms = Patience);
    /// Waits until what was shown last has been laid out and no dialog is on its way.
    bool waitUntilStill(int ms = Patience / 2);
    /// For what must not happen, of which no event tells: true when `condition` held all the time.
    bool holds(const std::function<bool()> &condition, int ms = 300);
    /// Does `action` once as soon as `condition` holds, from a timer: an operation that was started
    /// by a press returns only when it has ended, so nobody else could.
    void once(const std::function<bool()> &condition, const std::function<void()> &action);
    /// The same, as soon as a visible item has that name.
    void onceShown(const QString &name, const std::function<void()> &action);
    /// Drops those actions whose time has not come.
    void forgetWatches();
    /// The row of the current list whose name is `name`, or -1.
    int rowNamed(const QString &name) const;
    bool clickRow(int row);
    int rowCount() const;

    /// The theme's mode, as the settings dialog would set it; and its text scale.
    void setTheme(int mode, double textScale = 1);

    /// Everything logged as a warning or worse since the last call, but for what the module is
    /// specified to log.
    QStringList takeWarnings();

private:
    /// Waits until the item no longer moves.
    void settle(const QString &name);
    void waitForFrame();

    Trivex::Application m_application;
    std::unique_ptr<FrameMeter> m_meter;
    std::unique_ptr<QObject> m_watches; ///< the parent of their timers
};

} // namespace TrivexTest
