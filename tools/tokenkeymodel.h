// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tools/entrymodel.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QTimer>

namespace Trivex {

/// The keys without a certificate on all tokens that are there, the keys of one token together.
/// Key stores and their models do not list them.
///
///     SectionedModel {
///         entries: entries
///         keys: TokenKeyModel { requests: requestModel }
///     }
///
/// A key that gets its certificate goes, and comes back when that goes; see `heirOf`.
///
/// | role | name              | type                                                    |
/// |------|-------------------|---------------------------------------------------------|
/// | 400  | "name"            | QString, how the key is called                          |
/// | 401  | "issuer"          | QString, its kind in words, where lists have the issuer |
/// | 402  | "isKey"           | bool, always true                                       |
/// | 403  | "keyId"           | QString, by which the token's operations know it        |
/// | 404  | "tokenId"         | QString, its id on the token, hexadecimal               |
/// | 405  | "uses"            | QString, what it may do; empty before a login           |
/// | 406  | "origin"          | QString, whether the token made it; empty: not known    |
/// | 407  | "canRequest"      | bool, a request can be made for it                      |
/// | 408  | "request"         | QString, of the saved request that waits for it         |
/// | 409  | "requestIdentity" | QString, the identity of that request                   |
///
/// and those of `EntryModel` from "storeId" on, with the same numbers.
class TokenKeyModel : public QAbstractListModel {
    Q_OBJECT
    /// The saved requests; a model with the role "certificate".
    Q_PROPERTY(QAbstractItemModel *requests READ requests WRITE setRequests NOTIFY requestsChanged)
    /// How many keys without a certificate there are, on all tokens.
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    enum Role {
        NameRole = 400,
        KindRole,
        IsKeyRole,
        KeyIdRole,
        TokenIdRole,
        UsesRole,
        OriginRole,
        CanRequestRole,
        RequestRole,
        RequestIdentityRole,
    };

    explicit TokenKeyModel(QObject *parent = nullptr);
    ~TokenKeyModel() override;

    QAbstractItemModel *requests() const;
    void setRequests(QAbstractItemModel *requests);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The identity of a row: its token with its id there, as rows of entries have it.
    QString identityAt(int row) const;
    /// A number that no other key gets, and its row; -1 for that of one that has gone.
    int serialAt(int row) const { return m_rows.at(row).serial; }
    int rowOfSerial(int serial) const;
    /// The row of this identity, or -1.
    Q_INVOKABLE int rowOfIdentity(const QString &identity) const;
    /// Which row stands for the same key: of a key's row that of its certificate, and the other way
    /// round. Empty where there is none. Of certificates that have gone, too.
    QString heirOf(const QString &identity) const;
    /// How many of them are on that token.
    Q_INVOKABLE int countInStore(const QString &storeId) const;

    /// A key in words: "RSA, 2048 bits".
    static QString kindText(const TokenKeyFacts &key);
    static QString usesText(const TokenKeyFacts &key);
    static QString originText(const TokenKeyFacts &key);

Q_SIGNALS:
    void requestsChanged();
    void countChanged();

private:
    struct Row {
        QString storeId;
        QString storeName;
        TokenKeyFacts key;
        int serial = 0;
    };
    struct WaitingRequest {
        QString name;
        QString identity;
    };

    void noteToken(const QString &storeId);
    void noteCertificates(const TokenStatus &status);
    void takeUp(const QString &storeId, const QVector<Row> &wanted);
    void number(int from);
    void removeMissing(const QString &storeId, const QVector<Row> &wanted);
    void readRequests();
    WaitingRequest requestFor(const Row &row) const;
    QVariant entryData(const Row &row, int role) const;

    TokenMonitor m_monitor;
    QVector<Row> m_rows;
    QHash<int, int> m_rowsBySerial;
    int m_nextSerial = 0;
    QPointer<QAbstractItemModel> m_requests;
    QHash<QByteArray, WaitingRequest> m_waiting; ///< by the public half
    /// By the identities of keys and of entries; of entries that have gone, too.
    QHash<QString, QString> m_entryOfKey;
    QHash<QString, QString> m_keyOfEntry;
    QTimer m_later;
};

} // namespace Trivex
