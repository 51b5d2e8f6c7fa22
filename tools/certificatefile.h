// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/fileitems.h"

#include <QObject>
#include <QtCrypto>

namespace Trivex {

/// What a file holds, told by its content and never by its name, with everything in it.
///
/// A bundle shows nothing until `unlock`, which opens it in a worker thread: key derivation may
/// take long, and the window goes on meanwhile.
class CertificateFile : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    Q_PROPERTY(int kind READ kind NOTIFY contentChanged)
    /// Why a file is `Unreadable`, or a bundle would not open; a sentence with its next step.
    Q_PROPERTY(QString problem READ problem NOTIFY contentChanged)
    Q_PROPERTY(bool unlocked READ isUnlocked NOTIFY contentChanged)
    Q_PROPERTY(bool unlocking READ isUnlocking NOTIFY contentChanged)
    /// What is in it, each with its tick; the same object always.
    Q_PROPERTY(Trivex::FileItemModel *items READ items CONSTANT)
    /// How many parts of it are damaged and left out.
    Q_PROPERTY(int broken READ broken NOTIFY contentChanged)
public:
    /// What the file is; where it holds several things, the first of these that is among them.
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
    };
    Q_ENUM(Kind)

    explicit CertificateFile(QObject *parent = nullptr);
    ~CertificateFile() override;

    QString path() const;
    void setPath(const QString &path);
    int kind() const;
    QString problem() const;
    bool isUnlocked() const;
    bool isUnlocking() const;
    FileItemModel *items() { return &m_items; }
    int broken() const;

    /// Reads the file of this moment, again where the path is the one before.
    Q_INVOKABLE void open(const QString &path);
    /// Tries a bundle's password; `contentChanged` tells when it is done.
    Q_INVOKABLE void unlock(const QString &password);

Q_SIGNALS:
    void pathChanged();
    void contentChanged();

private:
    void clear();
    void read();
    void take(const FileContents &contents);
    void opened(int serial, const QCA::KeyBundle &bundle, QCA::ConvertResult result);

    QString m_path;
    Kind m_kind = None;
    QString m_problem;
    bool m_unlocked = false;
    bool m_unlocking = false;
    int m_serial = 0; ///< tells a late answer for an earlier file
    int m_broken = 0;
    FileItemModel m_items;
};

} // namespace Trivex
