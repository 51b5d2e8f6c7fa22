// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// Facts and services of the desktop that QML lacks. A singleton in QML. While it lives, dialogs of
/// the platform over Qt Quick windows get the keys and give them back, window manager or not.
class Desktop : public QObject {
    Q_OBJECT
    /// An installed font family of fixed width, for serial numbers and key ids.
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)
    /// True where the application can show widgets; a `QGuiApplication` can't.
    Q_PROPERTY(bool hasWidgets READ hasWidgets CONSTANT)
    /// True where the application has the style of this module, which takes its colours from
    /// `Theme`.
    Q_PROPERTY(bool hasOwnStyle READ hasOwnStyle CONSTANT)
public:
    explicit Desktop(QObject *parent = nullptr);

    QString fixedFamily() const;
    bool hasWidgets() const;
    bool hasOwnStyle() const;

    /// Puts a text on the clipboard.
    Q_INVOKABLE void copy(const QString &text) const;
    /// Opens a file with the program that the desktop has for its kind.
    Q_INVOKABLE bool openFile(const QString &path) const;
    /// Opens the folder in which `path` lies (or `path`, when it is one) in the file manager.
    Q_INVOKABLE bool openFolder(const QString &path) const;
};

} // namespace Trivex
