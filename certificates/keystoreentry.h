// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtCrypto>

#include <memory>

class Certificate;

/// The name under which QML and native code pass the wrapped entry around.
using QCA_KeyStoreEntry = QCA::KeyStoreEntry;

/// One item of a key store, for QML: its name, the entry itself for native code, and its
/// certificate. Constant after construction.
class KeyStoreEntry : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    /// The wrapped entry, not a copy; valid while this object lives.
    Q_PROPERTY(QCA::KeyStoreEntry *data READ data CONSTANT)
    /// The entry's certificate, or the first of its bundle with the bundle; a null certificate
    /// for other kinds of entry. Belongs to this object. A null pointer only when this object was
    /// made without an entry.
    Q_PROPERTY(Certificate *certificate READ certificate CONSTANT)
public:
    explicit KeyStoreEntry(QObject *parent = nullptr);
    explicit KeyStoreEntry(const QCA::KeyStoreEntry &entry, QObject *parent = nullptr);
    ~KeyStoreEntry() override;

    QString name() const;
    QCA::KeyStoreEntry *data() { return &m_entry; }
    /// Made on the first read: a list of thousands shows a few at a time.
    Certificate *certificate();

    const QCA::KeyStoreEntry &entry() const { return m_entry; }

private:
    Certificate *makeCertificate() const;

    QCA::KeyStoreEntry m_entry;
    bool m_hasEntry = false;
    std::unique_ptr<Certificate> m_certificate;
};

Q_DECLARE_METATYPE(QCA::KeyStoreEntry *)
