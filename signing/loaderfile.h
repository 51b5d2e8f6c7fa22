// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

#include <memory>

namespace Trivex {
class MappedFile;
}

/// Opens one local file, of four accepted types, and offers its name, type, size, digest and
/// bytes. The bytes are a view of the mapped file, never a copy.
///
///     LoaderFile {
///         filePath: "/home/me/contract.pdf"
///         onStatusChanged: if (status === LoaderFile.Ready) console.log(fileName, fileHash)
///     }
///
/// Setting `filePath` loads the file and returns when the digest is made (about a second for each
/// GiB). Read the other properties only while `status` is `Ready`: a failed load leaves them as
/// they were, except the bytes, which are given up.
///
/// The loaded file is held open and watched. When it changes, `status` becomes `Error`, with
/// `ErrorNotLoadFile`, at the latest when its bytes are signed or verified; that fails then.
/// Deleting, renaming or replacing it changes nothing. Lives on the GUI thread.
class LoaderFile : public QObject {
    Q_OBJECT
    /// The file last loaded. Assigning the same again does nothing, unless `status` is `Error`:
    /// then it loads again.
    Q_PROPERTY(QString filePath READ filePath WRITE setFilePath NOTIFY filePathChanged)
    /// QCA's name of the digest, "sha256" at first. Assigning another makes `fileHash` anew,
    /// without `fileHashChanged()`; it becomes empty for an unknown name.
    Q_PROPERTY(QString hashType READ hashType WRITE setHashType NOTIFY hashTypeChanged)
    /// The name of the loaded file, without its folder.
    Q_PROPERTY(QString fileName READ fileName NOTIFY fileNameChanged)
    /// The name of the detected type.
    Q_PROPERTY(QString mimeType READ mimeType NOTIFY mimeTypeChanged)
    /// In bytes.
    Q_PROPERTY(qlonglong fileSize READ fileSize NOTIFY fileSizeChanged)
    /// Lower-case hexadecimal.
    Q_PROPERTY(QString fileHash READ fileHash NOTIFY fileHashChanged)
    /// A value of `Status`.
    Q_PROPERTY(int status READ status NOTIFY statusChanged)
    /// A value of `ErrorType`.
    Q_PROPERTY(int error READ error WRITE setError NOTIFY errorChanged)
    /// The names of the accepted types.
    Q_PROPERTY(QStringList availableMimeTypes READ availableMimeTypes CONSTANT)
    /// A load does not notify these two.
    Q_PROPERTY(bool isImage READ isImage NOTIFY isImageChanged)
    /// Whether the loaded file is a PDF document, by its content.
    Q_PROPERTY(bool isPdf READ isPdf NOTIFY isPdfChanged)
    /// The contents. Copies stay readable for as long as they exist, even when this object or the
    /// file is gone.
    Q_PROPERTY(QByteArray rawData READ rawData NOTIFY rawDataChanged)
public:
    enum Status {
        Null = 0,
        Ready = 1,
        Loading = 2,
        Error = 3,
    };
    Q_ENUM(Status)
    enum ErrorType {
        NoError = 0,
        /// Missing, unreadable, a directory, a pipe or a device.
        ErrorNotOpenFile = 1,
        /// Of 2 GiB and more, without a size, or changed (its size, its time of change or its
        /// contents) while or after it was loaded.
        ErrorNotLoadFile = 2,
        ErrorMimeType = 3, ///< not one of the accepted types
    };
    Q_ENUM(ErrorType)

    explicit LoaderFile(QObject *parent = nullptr);
    ~LoaderFile() override;

    QString filePath() const { return m_filePath; }
    void setFilePath(const QString &path);
    QString hashType() const { return m_hashType; }
    void setHashType(const QString &name);
    QString fileName() const { return m_fileName; }
    QString mimeType() const { return m_mimeType; }
    qlonglong fileSize() const { return m_fileSize; }
    QString fileHash() const { return m_fileHash; }
    int status() const { return m_status; }
    int error() const { return m_error; }
    void setError(int error);
    QStringList availableMimeTypes() const;
    bool isImage() const;
    bool isPdf() const;
    QByteArray rawData() const { return m_rawData; }

Q_SIGNALS:
    void filePathChanged();
    void fileNameChanged();
    void mimeTypeChanged();
    void fileSizeChanged();
    void fileHashChanged();
    void hashTypeChanged();
    void statusChanged();
    void errorChanged();
    void isImageChanged();
    void isPdfChanged();
    void rawDataChanged();

private:
    struct Loaded;

    bool setState(int status, int error);
    void release();
    int load(const QString &path, Loaded *loaded) const;
    void accept(const QString &path, Loaded loaded);
    void notifyLoaded();
    void watch();
    void checkFile();

    QByteArray m_rawData;
    QString m_filePath;
    QString m_fileName;
    QString m_mimeType;
    qint64 m_fileSize = 0;
    QString m_fileHash;
    QString m_hashType = QStringLiteral("sha256");
    std::shared_ptr<Trivex::MappedFile> m_file;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    int m_loads = 0; ///< so far: tells a load that a listener started meanwhile
    int m_status = Null;
    int m_error = NoError;
};
