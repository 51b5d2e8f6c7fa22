// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/fileitems.h"

#include <QObject>
#include <QtCrypto>

#include <memory>

namespace Trivex {

class FileReading;

/// What a file holds, told by its content and never by its name, with everything in it.
///
/// A file of some kilobytes has been read when `open` returns, and so has a larger one that takes
/// no time. Others are read in a worker thread, with `reading` true meanwhile. A bundle shows
/// nothing until `unlock`, which opens it in a worker thread too: key derivation may take long, and
/// the window goes on meanwhile.
class CertificateFile : public QObject {
    Q_OBJECT
    /// The file. Assigning it reads the file, as `open()` does.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// A `Kind`; `None` until the file has been read.
    Q_PROPERTY(int kind READ kind NOTIFY contentChanged)
    /// Why a file is `Unreadable`, or a bundle would not open; a sentence with its next step.
    Q_PROPERTY(QString problem READ problem NOTIFY contentChanged)
    /// True until it is known what the file holds; `kind` is `None` until then.
    Q_PROPERTY(bool reading READ isReading NOTIFY contentChanged)
    /// A bundle has been opened with its password.
    Q_PROPERTY(bool unlocked READ isUnlocked NOTIFY contentChanged)
    /// A bundle's password is being tried.
    Q_PROPERTY(bool unlocking READ isUnlocking NOTIFY contentChanged)
    /// What is in it, each with its tick; the same object always.
    Q_PROPERTY(Trivex::FileItemModel *items READ items CONSTANT)
    /// How many parts of it are damaged and left out.
    Q_PROPERTY(int broken READ broken NOTIFY contentChanged)
    /// How many private keys in it were not looked at, because it has so many.
    Q_PROPERTY(int unreadKeys READ unreadKeys NOTIFY contentChanged)
public:
    /// What the file is. Of several things in it a certificate counts first, then a request, a list
    /// of revocations, and keys.
    enum Kind {
        None,
        CertificateKind, ///< one or more
        BundleKind, ///< PKCS#12
        RequestKind,
        PrivateKeyKind,
        OtherKind, ///< a document: nothing that is known here
        Unreadable, ///< damaged, or no file
        CollectionKind, ///< PKCS#7 without a signature
        MessageKind, ///< signed PKCS#7 or CMS
        SignatureKind, ///< the bytes of a signature and nothing else
        RevocationListKind,
        PublicKeyKind,
        AttributeCertificateKind,
        RevocationAnswerKind, ///< of OCSP
        EncryptedMessageKind, ///< encrypted PKCS#7 or CMS
    };
    Q_ENUM(Kind)

    explicit CertificateFile(QObject *parent = nullptr);
    ~CertificateFile() override;

    QString path() const;
    void setPath(const QString &path);
    int kind() const;
    QString problem() const;
    bool isReading() const { return m_reading != nullptr; }
    bool isUnlocked() const;
    bool isUnlocking() const;
    FileItemModel *items() { return &m_items; }
    int broken() const;
    int unreadKeys() const { return m_unreadKeys; }

    /// Reads the file of this moment, again where the path is the one before; `contentChanged`
    /// tells when it is known. What is still read for an earlier call is stopped.
    Q_INVOKABLE void open(const QString &path);
    /// Stops reading: the file then holds nothing that is known.
    Q_INVOKABLE void stop();
    /// Tries a bundle's password; `contentChanged` tells when it is done.
    Q_INVOKABLE void unlock(const QString &password);

Q_SIGNALS:
    void pathChanged();
    /// Any property but the path has changed.
    void contentChanged();

private:
    void clear();
    void read();
    void haveRead();
    void showContents(const FileContents &contents);
    void opened(int serial, const QCA::KeyBundle &bundle, QCA::ConvertResult result);

    QString m_path;
    Kind m_kind = None;
    QString m_problem;
    bool m_unlocked = false;
    bool m_unlocking = false;
    int m_serial = 0; ///< tells a late answer for an earlier file
    int m_broken = 0;
    int m_unreadKeys = 0;
    std::shared_ptr<FileReading> m_reading; ///< null when nothing is being read
    FileItemModel m_items;
};

} // namespace Trivex
