// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/keystoreentry.h"
#include "qca/base/providers.h"
#include "qca/x509/makecertificate.h"

#include <QStandardItemModel>

#include <utility>

/// An entry of a store that a test makes up.
class RowEntry : public QCA::KeyStoreEntryContext {
    Q_OBJECT
public:
    RowEntry(const QString &store, const QByteArray &der)
        : QCA::KeyStoreEntryContext(QCA::findProvider(Trivex::opensslProviderName()))
        , m_store(store)
        , m_certificate(Trivex::makeCertificate(der))
    {
    }
    QCA::Provider::Context *clone() const override
    {
        return new RowEntry(m_store, m_certificate.toDER());
    }
    QCA::KeyStoreEntry::Type type() const override { return QCA::KeyStoreEntry::TypeCertificate; }
    QString id() const override { return m_certificate.commonName(); }
    QString name() const override { return m_certificate.commonName(); }
    QString storeId() const override { return m_store; }
    QString storeName() const override { return m_store; }
    QCA::Certificate certificate() const override
    {
        ++s_reads;
        return m_certificate;
    }
    QString serialize() const override { return {}; }
    /// How often somebody has asked an entry for its certificate since the last call.
    static int takeReads() { return std::exchange(s_reads, 0); }

private:
    QString m_store;
    QCA::Certificate m_certificate;
    static inline int s_reads = 0;
};

/// Rows as the key store model has them.
class ChainRows : public QStandardItemModel {
public:
    enum Role { Name = Qt::UserRole + 1, Entry, Certificate, Issuer, Type };
    enum StoreType { System = 0, User = 1, SmartCard = 3 };

    ChainRows()
    {
        setItemRoleNames({{Name, "name"},
                          {Entry, "keyStoreEntry"},
                          {Certificate, "certificate"},
                          {Issuer, "issuer"},
                          {Type, "type"}});
    }
    /// The certificate object of the row.
    QObject *add(StoreType type, const char *store, const QByteArray &der)
    {
        QCA::KeyStoreEntry entry;
        entry.change(new RowEntry(QString::fromUtf8(store), der));
        auto *wrapped = new KeyStoreEntry(entry, this);
        auto *item = new QStandardItem;
        item->setData(wrapped->name(), Name);
        item->setData(QVariant::fromValue<QObject *>(wrapped), Entry);
        item->setData(QVariant::fromValue<QObject *>(wrapped->certificate()), Certificate);
        item->setData(int(type), Type);
        appendRow(item);
        return wrapped->certificate();
    }
};
