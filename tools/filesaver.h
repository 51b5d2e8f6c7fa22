// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTemporaryDir>

#include <memory>

namespace Trivex {

enum class FileReaders;

/// Brings a file that something else writes to the place that a person chose: whole or not at all,
/// and never over another that nobody agreed to replace.
///
/// Whatever is to be saved is first written to `stagedPath(name)`, in a folder of one's own.
class FileSaver : public QObject {
    Q_OBJECT
    /// Why the last `place` failed, as a sentence with its next step.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
public:
    enum Result {
        Saved,
        Exists, ///< something is there, and was not to be replaced
        Failed,
    };
    Q_ENUM(Result)
    enum Format {
        AsIs,
        Der, ///< what a PEM file holds, in binary form
        Chain, ///< PEM with the issuers, where an `Exporter` staged it
        Collection, ///< PKCS#7 with the issuers, where an `Exporter` staged it
    };
    Q_ENUM(Format)

    explicit FileSaver(QObject *parent = nullptr);
    ~FileSaver() override;

    QString problem() const;

    /// The folder for files that are still to be placed; emptied by each call. Empty where no
    /// folder for temporary files can be used: then there is nothing to place.
    Q_INVOKABLE QString stagingFolder();
    /// The same for what its owner alone may read once it is saved.
    QString privateStagingFolder();
    /// The path of a file in a fresh folder of that kind; empty, and `problem` says why, where
    /// there is none.
    Q_INVOKABLE QString stagedPath(const QString &name);
    /// Puts a copy of the file at `path` there, under its own name; false when it can't be read.
    Q_INVOKABLE bool stageCopy(const QString &path);
    /// The same folder, which stays until nobody has it any more; null where there is none.
    std::shared_ptr<const QTemporaryDir> staging() const { return m_staging; }
    /// Where a form is staged in such a folder.
    static QString stagedFile(const QString &folder, Format format);
    /// Why nothing could be saved at `path`, found out before anything is made; empty where all is
    /// well. A file that is there and may be replaced is no reason.
    Q_INVOKABLE QString whyNot(const QString &path) const;
    /// Saves the one file of the staging folder at `path`. What is there stays as it is until the
    /// new file is whole.
    Q_INVOKABLE int place(const QString &path, bool mayReplace, int format = AsIs);

Q_SIGNALS:
    void problemChanged();

private:
    QByteArray staged(Format format) const;
    void setProblem(const QString &problem);

    std::shared_ptr<QTemporaryDir> m_staging;
    FileReaders m_readers;
    QString m_problem;
};

} // namespace Trivex
