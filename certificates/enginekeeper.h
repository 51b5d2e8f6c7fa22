// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJSEngine>
#include <QObject>
#include <QPointer>

/// For calls from script that may run an event loop: while one lives, `deleteLater()` on the engine
/// of `object` waits, because the call has to return into that engine. The engine goes afterwards,
/// at the caller's event loop. Nothing for an object that no engine knows.
class EngineKeeper : public QObject {
    Q_OBJECT
public:
    /// On the thread of `object`, which may go before this one does.
    explicit EngineKeeper(const QObject *object);
    ~EngineKeeper() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QJSEngine> m_engine;
    bool m_isToGo = false;
};
