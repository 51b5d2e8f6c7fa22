// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace Trivex {

/// The window with its engine. One `QApplication` must live; everything else that `main` and the
/// tests share is here.
class Application : public QObject {
    Q_OBJECT
public:
    explicit Application(QObject *parent = nullptr);
    ~Application() override;

    /// Names and version of the program; part of `prepare()`, and enough without a display.
    static void introduce();
    /// Names, icon and paths of the program; once, after the `QApplication` was made.
    static void prepare();

    /// Opens the window; false when its QML could not be loaded.
    bool open();
    QQuickWindow *window() const;

    /// Brings the window to the front and opens `files` in it.
    void activate(const QStringList &files);

    /// The same paths, absolute: the first instance runs in another folder.
    static QStringList absolute(const QStringList &files);

    /// The manual in the user's language, HTML.
    static QString manual();

private:
    QQmlApplicationEngine m_engine;
};

} // namespace Trivex
