// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "keystores/keystoreitem.h"
#include "keystores/recentcertificates.h"

#include <QAbstractListModel>
#include <QList>
#include <QSet>
#include <QTimer>

#include <functional>

/// The entries of key stores as rows of a list, for the key store model, which knows the stores.
/// The rows of a store follow its entries, those of a long list a few at each turn of the event
/// loop. The objects of a row are made when somebody asks for them: docs/decisions/058. GUI thread
/// only.
class StoreRows : public QAbstractListModel, public Trivex::EntryRows {
public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        KeyStoreEntryRole,
        CertificateRole,
        IssuerRole,
        TypeRole,
        EntryIdRole,
    };

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QCA::KeyStoreEntry *entryOf(int row) const override;
    Trivex::RowOrigin originOf(int row) const override;
    void lookAtCertificate(int row,
                           const std::function<void(const QObject &)> &look) const override;
    int rowOf(const QObject *certificate) const override;

protected:
    explicit StoreRows(QObject *parent);

    const QList<KeyStoreItem> &items() const { return m_items; }
    /// Makes the rows of `keyStore` those of `entries`: at once what goes and the first that
    /// come, the others in their turn.
    void follow(const QPointer<QCA::KeyStore> &keyStore, const QList<QCA::KeyStoreEntry> &entries);
    /// Runs `then` when the rows that have been announced so far are there.
    void inTurn(std::function<void()> then);
    /// Removes the rows of `keyStore`, those on their way included, and of stores that are gone.
    void removeRowsOf(const QCA::KeyStore *keyStore);
    /// Announces that each row of `keyStore` goes, and leaves the removal to `removeRows()`, which
    /// removes nothing: it has no end while there is such a row. `removeRowsOf()` runs before it:
    /// docs/decisions/012.
    void announceRemovalOf(const QCA::KeyStore *keyStore);
    /// Called before a key bundle of a token gets a row.
    virtual void bundleArrives(const QCA::KeyStoreEntry &entry) = 0;

private:
    /// Entries of a store's last update that have no row yet, or what follows those before it.
    struct Arrival {
        QPointer<QCA::KeyStore> keyStore;
        QList<QCA::KeyStoreEntry> entries; ///< those that are new from `next` to before `end`
        int next = 0;
        int end = 0;
        QSet<QString> seen; ///< the ids among them that have rows
        std::function<void()> then;

        bool isEmpty() const { return next >= end; }
    };

    const KeyStoreItem::Facts &factsOf(const KeyStoreItem &item) const;
    KeyStoreEntry *objectOf(const KeyStoreItem &item) const;
    std::shared_ptr<const Certificate> certificateOf(const KeyStoreItem &item) const;
    Certificate *certificateObjectOf(const KeyStoreItem &item) const;
    void removeMissingRows(const QCA::KeyStore *keyStore, const QSet<QString> &gone);
    void noteArriving(const Arrival &arrival);
    void appendSlice();
    void appendNext();
    void appendRow(QCA::KeyStore *keyStore, const QCA::KeyStoreEntry &entry);
    void dropRow(int row);

    mutable RecentCertificates m_recent;
    /// A `QList`, because rows go one by one.
    QList<KeyStoreItem> m_items;
    /// In the order in which the stores reported.
    QList<Arrival> m_arriving;
    QTimer m_nextSlice;
};
