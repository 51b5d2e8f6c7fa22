// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QUrl>

namespace Trivex {

/// What pages need of the desktop and of files, and QML does not give. A singleton in QML.
class Desktop : public QObject {
    Q_OBJECT
    /// A family of fixed width that is installed, for serial numbers and key ids.
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)
    /// True where the application can show widgets; a `QGuiApplication` can't.
    Q_PROPERTY(bool hasWidgets READ hasWidgets CONSTANT)
    Q_PROPERTY(QString homeFolder READ homeFolder CONSTANT)
public:
    explicit Desktop(QObject *parent = nullptr);

    QString fixedFamily() const;
    bool hasWidgets() const;
    QString homeFolder() const;

    Q_INVOKABLE void copy(const QString &text) const;
    /// Opens the folder in which `path` lies (or `path`, when it is one) in the file manager.
    Q_INVOKABLE bool openFolder(const QString &path) const;
    /// The local path of a URL or of a path; empty for a URL of another kind.
    Q_INVOKABLE QString path(const QUrl &url) const;
    Q_INVOKABLE QUrl url(const QString &path) const;
    Q_INVOKABLE QString fileName(const QString &path) const;
    Q_INVOKABLE QString folder(const QString &path) const;
    Q_INVOKABLE bool exists(const QString &path) const;
    Q_INVOKABLE bool isFolder(const QString &path) const;
    /// Which file lies at `path` and how it is: another text when it was replaced or written to.
    /// Empty where there is none.
    Q_INVOKABLE QString stamp(const QString &path) const;
    /// Bytes as a person reads them, in the user's locale.
    Q_INVOKABLE QString size(qint64 bytes) const;

    /// True when `path` holds a whole PEM object: written to its end line. A disk that fills up
    /// while a file is written is seen by nobody else.
    Q_INVOKABLE bool isWholePem(const QString &path) const;
    /// True for a file that is there, not empty, and could have been written to just now.
    Q_INVOKABLE bool hasContents(const QString &path) const;
    /// Why a file could not be written to `folder`, as a sentence with its next step.
    Q_INVOKABLE QString whyNotWritten(const QString &folder) const;
    /// Why a file could not be read, as a sentence with its next step.
    Q_INVOKABLE QString whyNotRead(const QString &path) const;

    /// Bytes as two hexadecimal digits each. The module writes those above 7F as negative numbers
    /// ("-3D" for C3), which no other program does; this undoes it. Other text comes back as it is.
    Q_INVOKABLE static QString plainHex(const QString &text);

    /// `text` with every place that contains `pattern` marked, as styled text; the rest escaped.
    Q_INVOKABLE QString marked(const QString &text, const QString &pattern,
                               const QString &color) const;
};

} // namespace Trivex
