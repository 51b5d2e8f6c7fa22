// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tools/rowtext.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QIdentityProxyModel>
#include <QSet>
#include <QTimer>
#include <QVector>

namespace Trivex {

/// The rows of a key store model, or of a request list, with what a list shows beside them.
///
/// Stands between that model and the filter model, so that the search finds what the source has no
/// role for: the digits of tax numbers, serial numbers, the name of the store. Reads the rows'
/// objects only through their properties. What it read of a row is kept; it is read ahead in small
/// portions while the event loop is idle, so that the first search of a long list does not stop
/// the window. From that search on everything that the viewer shows of the rows is found: it is
/// put into words in such portions too, and changes of `HaystackRole` tell of it.
class EntryModel : public QIdentityProxyModel {
    Q_OBJECT
    /// A search has begun, and some rows are not put into words yet.
    Q_PROPERTY(bool describing READ isDescribing NOTIFY describingChanged)
public:
    enum Role {
        StoreIdRole = Qt::UserRole + 102, ///< QString; beyond the source's own roles
        StoreNameRole, ///< QString
        ValidityRole, ///< int, a `Validity::State`
        UntilRole, ///< QDateTime
        InitialRole, ///< QString, for the avatar
        HaystackRole, ///< QString, folded: everything that the search looks through
        HasKeyRole, ///< bool
        KeyKindRole, ///< int, a `KeyKind`
        IdentityRole, ///< QString, by which a row is known again in a list that was rebuilt
        /// bool: whether the key is there is known only after a login, see `TokenStatus`
        KeyPresumedRole,
    };
    Q_ENUM(Role)
    /// The kinds of private key that a page has to tell apart.
    enum KeyKind { NoKey, RsaKind, OtherKind };
    Q_ENUM(KeyKind)

    explicit EntryModel(QObject *parent = nullptr);
    ~EntryModel() override;

    void setSourceModel(QAbstractItemModel *source) override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Whether what is looked for stands in the row, as far as it is put into words.
    bool isFound(int row, const SearchNeedle &needle) const;
    /// Somebody searches: the rows are put into words from now on.
    void noteSearch() const;
    bool isDescribing() const { return m_searched && m_nextText < m_rows.size(); }
    /// How many certificates and requests were put into words.
    int describedCount() const { return m_texts.made(); }
    /// How many rows lie in each store; kept current, cheap to read.
    int countInStore(const QString &storeId) const;
    /// The `StoreNameRole` of a row, without the way through a variant.
    QString storeNameAt(int row) const;
    /// The `IdentityRole` of a row: its store with its id there, or the file of a request. Cheap,
    /// also for a row of which nothing else was read.
    QString identityAt(int row) const;
    /// The row of this identity, or -1. Asked several times between two changes of the rows, all
    /// are known from the second time on.
    Q_INVOKABLE int rowOfIdentity(const QString &identity) const;
    /// The certificate of the row of this identity, or nothing; it belongs to the row.
    Q_INVOKABLE QVariant certificateOf(const QString &identity) const;

    /// The row whose certificate is `certificate`, or -1.
    Q_INVOKABLE int rowOfCertificate(QObject *certificate) const;

Q_SIGNALS:
    /// Some store's count changed; at most once per turn of the event loop.
    void countsChanged();
    void describingChanged();

private:
    /// The source's roles, known by their names; -1 for one that it does not have.
    struct SourceRoles {
        int name = -1;
        int entry = -1;
        int certificate = -1;
        int issuer = -1;
        int type = -1;
    };
    struct Row {
        QString storeId;
        QString storeName;
        QByteArray words; ///< of what the row itself shows, folded
        RowText text; ///< of what the viewer shows
        QDateTime until;
        QDateTime from;
        bool read = false;
        bool described = false;
        bool hasKey = false;
        quint8 keyKind = NoKey;
    };

    const Row &row(int sourceRow) const;
    void read(int sourceRow, Row &row) const;
    void readEntry(int sourceRow, const QCA::KeyStoreEntry &entry, Row &row) const;
    void readCertificate(int sourceRow, const QObject &certificate, Row &row) const;
    const QCA::KeyStoreEntry *entryAt(int sourceRow) const;
    void readAhead();
    void describeRow(int sourceRow);
    void describeAhead(const QElapsedTimer &clock);
    void startAhead(int first);
    void noteDescribing();
    void insert(int first, int last);
    void remove(int first, int last);
    void reset();
    void noteCounts(const Row &row, int delta) const;
    void noteToken(const QString &storeId);
    int lookForIdentity(const QString &identity) const;
    void forgetIdentities();

    SourceRoles m_source;
    mutable QVector<Row> m_rows;
    mutable QHash<QString, int> m_counts;
    mutable QHash<QString, int> m_rowsByIdentity; ///< empty until it pays
    mutable bool m_wasAsked = false; ///< for an identity, since the last change
    int m_next = 0; ///< where reading ahead goes on
    int m_nextText = 0; ///< and putting into words
    mutable bool m_searched = false;
    bool m_told = false; ///< that some rows are not put into words
    RowTexts m_texts;
    TokenMonitor m_monitor;
    QSet<QString> m_presumed; ///< the stores with presumed keys
    mutable QTimer m_idle;
    mutable QTimer m_announce;
};

} // namespace Trivex
