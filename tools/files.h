// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QUrl>

namespace Trivex {

/// What pages need of files, and QML does not give. A singleton in QML.
class Files : public QObject {
    Q_OBJECT
    /// The user's home folder, a path.
    Q_PROPERTY(QString homeFolder READ homeFolder CONSTANT)
public:
    explicit Files(QObject *parent = nullptr);

    QString homeFolder() const;

    /// The local path of a URL or of a path; empty for a URL of another kind.
    Q_INVOKABLE QString path(const QUrl &url) const;
    /// The URL of a local path.
    Q_INVOKABLE QUrl url(const QString &path) const;
    /// The name of a path's last part.
    Q_INVOKABLE QString fileName(const QString &path) const;
    /// The path of the folder that a file is in.
    Q_INVOKABLE QString folder(const QString &path) const;
    /// The path in `folder` at which the module writes a file that is to be called `name`.
    Q_INVOKABLE QString exportPath(const QString &folder, const QString &name) const;
    /// Whether there is anything at that path.
    Q_INVOKABLE bool exists(const QString &path) const;
    /// Whether there is a folder at that path.
    Q_INVOKABLE bool isFolder(const QString &path) const;
    /// Whether there is an ordinary file that can be read, of any length.
    Q_INVOKABLE bool isReadable(const QString &path) const;
    /// In bytes; 0 where there is none. A number of script, exact to 2^53.
    Q_INVOKABLE double size(const QString &path) const;
    /// The type of a file by its name and its beginning, as "text/plain".
    Q_INVOKABLE QString mimeType(const QString &path) const;
    /// Which file lies at `path` and how it is: another text when it was replaced or written to.
    /// Empty where there is none.
    Q_INVOKABLE QString stamp(const QString &path) const;
    /// Why a file could not be written to `folder`, as a sentence with its next step.
    Q_INVOKABLE QString whyNotWritten(const QString &folder) const;
    /// Whether the settings of the application (`QSettings`) can be written, so that a choice
    /// outlives the program.
    Q_INVOKABLE bool settingsAreKept() const;
    /// Why a file could not be read, as a sentence with its next step.
    Q_INVOKABLE QString whyNotRead(const QString &path) const;
};

} // namespace Trivex
