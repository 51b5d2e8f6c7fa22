// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <functional>
#include <memory>

namespace TrivexTest {

/// A foreign application around components of Trivex.Crypto.Controls: a plain window in the style
/// of this process, which knows nothing of ours but the module's name.
class Host {
public:
    /// `body` is QML: what stands in the window. `locale` is the language of everything in it.
    Host(const QString &body, const QString &locale = QStringLiteral("en_US"),
         const QSize &size = {400, 640});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// Why there is no window; empty when there is one.
    QString problem() const { return m_problem; }
    QQuickWindow *window() const { return m_window; }
    /// The object with that name or QML id ("made" by convention), shown or not.
    QObject *object(const char *name) const;
    /// The visible item with that name, dialogs included; null when there is none.
    QQuickItem *item(const char *name) const;
    bool waitForItem(const char *name, int ms = 5000) const;
    /// Waits until `item` has stopped moving, and clicks it.
    bool click(const char *name);
    bool clickItem(QQuickItem *item);
    void key(Qt::Key key) const;
    void type(const QString &text) const;
    bool isOpen(const char *dialog) const;
    bool waitOpen(const char *dialog, bool open = true) const;
    /// Saves a picture where TRIVEX_TEST_PICTURES names a directory.
    void picture(const QString &name) const;
    /// What has no room, in words, one line each.
    QStringList lackOfRoom() const;
    /// Texts that can't be told from their ground, one line each.
    QStringList lackOfContrast() const;

    /// Warnings since the last call.
    static QStringList takeMessages();
    static void collectMessages();

private:
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
    QString m_problem;
};

} // namespace TrivexTest
