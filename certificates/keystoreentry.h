// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificate.h"

#include <QMetaType>
#include <QObject>
#include <QtCrypto>

#include <memory>

/// The name under which the library's entry travels through QML, as an opaque value.
using QCA_KeyStoreEntry = QCA::KeyStoreEntry; // NOLINT(readability-identifier-naming)
Q_DECLARE_METATYPE(QCA::KeyStoreEntry *)

/// An item of a key store as QML sees it: a certificate, or a key bundle with its chain.
/// GUI thread only.
class KeyStoreEntry : public QObject {
    Q_OBJECT
    /// The name that the store gives the entry.
    Q_PROPERTY(QString name READ name CONSTANT)
    /// The wrapped entry itself; valid while this object lives.
    Q_PROPERTY(QCA::KeyStoreEntry *data READ data CONSTANT)
    /// Owned by this object. A null pointer only without an entry; a null certificate for an entry
    /// that has none.
    Q_PROPERTY(Certificate *certificate READ certificate CONSTANT)

public:
    /// No entry.
    explicit KeyStoreEntry(QObject *parent = nullptr);
    explicit KeyStoreEntry(const QCA::KeyStoreEntry &entry, QObject *parent = nullptr);
    ~KeyStoreEntry() override;

    QString name() const;
    QCA::KeyStoreEntry *data() const { return &m_entry; }
    Certificate *certificate() const;
    /// The same where somebody has read it before, else null.
    std::shared_ptr<const Certificate> knownCertificate() const { return m_certificate; }
    /// Takes one that was made before for that of this object, which has not been read yet.
    void setCertificate(std::shared_ptr<Certificate> certificate);
    /// The certificate of `entry`, which the caller owns.
    static std::unique_ptr<Certificate> makeCertificate(const QCA::KeyStoreEntry &entry);

    const QCA::KeyStoreEntry &entry() const { return m_entry; }

private:
    mutable QCA::KeyStoreEntry m_entry;
    const bool m_hasEntry;
    /// Made at the first read, because most rows of a long list are never shown.
    mutable std::shared_ptr<Certificate> m_certificate;
};
