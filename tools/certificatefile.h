// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>
#include <QTemporaryDir>
#include <QVariantList>
#include <QtCrypto>

#include <memory>

namespace Trivex {

/// What a file holds, told by its content and never by its name, with a preview of it.
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
    /// The certificates, the one that belongs to the key first: maps with "name", "issuer",
    /// "from", "until" (dates), "initial".
    Q_PROPERTY(QVariantList certificates READ certificates NOTIFY contentChanged)
    /// The certificate as a PEM file: `path` itself, or a temporary copy of a DER one.
    Q_PROPERTY(QString pemPath READ pemPath NOTIFY contentChanged)
public:
    enum Kind {
        None,
        CertificateKind,
        BundleKind,
        RequestKind,
        PrivateKeyKind,
        OtherKind,
        Unreadable
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
    QVariantList certificates() const;
    QString pemPath() const;

    /// Tries a bundle's password; `contentChanged` tells when it is done.
    Q_INVOKABLE void unlock(const QString &password);

Q_SIGNALS:
    void pathChanged();
    void contentChanged();

private:
    void clear();
    void read();
    void readCertificates(const QByteArray &bytes);
    void opened(int serial, const QCA::KeyBundle &bundle, QCA::ConvertResult result);

    QString m_path;
    Kind m_kind = None;
    QString m_problem;
    bool m_unlocked = false;
    bool m_unlocking = false;
    int m_serial = 0; ///< tells a late answer for an earlier file
    QVariantList m_certificates;
    QString m_pemPath;
    std::unique_ptr<QTemporaryDir> m_copies;
};

} // namespace Trivex
