// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJSEngine>
#include <QObject>
#include <QPointer>

/// For calls from script that may run an event loop. While a keeper lives, `deleteLater()` on the
/// engine of `object` waits, because the call has to return into that engine; the caller's event
/// loop deletes it afterwards. Does nothing for an object without an engine.
class EngineKeeper : public QObject {
    Q_OBJECT
public:
    /// On the thread of `object`, which may be destroyed before this one.
    explicit EngineKeeper(const QObject *object);
    ~EngineKeeper() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QJSEngine> m_engine;
    bool m_isToGo = false;
};
