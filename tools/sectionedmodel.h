// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/keyrows.h"
#include "tools/readyfilter.h"
#include "tools/roworder.h"

#include <QElapsedTimer>
#include <QPointer>

namespace Trivex {

/// The rows that a filter model lets through, grouped by the store they live in, in an order of the
/// user's choice within a store.
///
/// Changes of the filter are taken up once per turn of the event loop and passed on as one change,
/// so that a keystroke over thousands of rows costs one pass and not one per range; rows that
/// vanish from the entries vanish here at once. Rows that arrive wait the longer for the next pass
/// the more the last one cost.
class SectionedModel : public QAbstractListModel {
    Q_OBJECT
    /// The rows themselves.
    Q_PROPERTY(Trivex::EntryModel *entries READ entries WRITE setEntries NOTIFY entriesChanged)
    /// A filter over `entries` that chooses and orders; when null, every row counts.
    Q_PROPERTY(QAbstractItemModel *filter READ filter WRITE setFilter NOTIFY filterChanged)
    /// Keys without a certificate, which follow the rows of their token where it is shown alone.
    Q_PROPERTY(Trivex::TokenKeyModel *keys READ keys WRITE setKeys NOTIFY keysChanged)
    /// Some of these are listed: there is a section of certificates and one of keys.
    Q_PROPERTY(bool hasKeys READ hasKeys NOTIFY countChanged)
    /// When not empty, only the rows of that store.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// What is looked for in everything that the viewer shows of a row. Nothing of it is lost when
    /// the filter has a search text of its own: both have to be found then.
    Q_PROPERTY(QString pattern READ pattern WRITE setPattern NOTIFY patternChanged)
    /// When not `NoKey`, only the rows whose key is of that kind.
    Q_PROPERTY(int keyKind READ keyKind WRITE setKeyKind NOTIFY keyKindChanged)
    // Ready filters, which come on top of all that: they are in force together.
    /// When not `Validity.Unknown`, only the rows in that state.
    Q_PROPERTY(int wantedValidity READ wantedValidity WRITE setWantedValidity NOTIFY readyChanged)
    /// Only the rows that have a private key.
    Q_PROPERTY(bool onlyWithKeys READ isOnlyWithKeys WRITE setOnlyWithKeys NOTIFY readyChanged)
    /// When not empty, only the rows of that store.
    Q_PROPERTY(QString wantedStore READ wantedStore WRITE setWantedStore NOTIFY readyChanged)
    /// How many rows the ready filters hide that would be listed without them.
    Q_PROPERTY(int hiddenCount READ hiddenCount NOTIFY hiddenCountChanged)
    /// What the rows of a store, or the stores, are sorted by: a `SortKey`.
    Q_PROPERTY(int sortKey READ sortKey WRITE setSortKey NOTIFY orderChanged)
    /// Sorts from the last to the first.
    Q_PROPERTY(bool descending READ isDescending WRITE setDescending NOTIFY orderChanged)
    /// How many rows are listed.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum SortKey {
        Unsorted = RowOrder::Given, ///< as the filter, or the entries, have them
        SortByName = RowOrder::Name,
        SortByIssuer = RowOrder::Issuer,
        SortByEnd = RowOrder::Until,
        SortByPlace = RowOrder::Place, ///< the stores themselves; no other order within them
    };
    Q_ENUM(SortKey)

    /// The heading under which a view groups; after the entries' own roles.
    static constexpr int SectionRole = 380;

    explicit SectionedModel(QObject *parent = nullptr);
    ~SectionedModel() override;

    EntryModel *entries() const;
    void setEntries(EntryModel *entries);
    QAbstractItemModel *filter() const;
    void setFilter(QAbstractItemModel *filter);
    TokenKeyModel *keys() const { return m_keys.model(); }
    void setKeys(TokenKeyModel *keys);
    bool hasKeys() const { return !m_rows.isEmpty() && KeyRows::isKey(m_rows.last()); }
    QString storeId() const;
    void setStoreId(const QString &storeId);
    QString pattern() const;
    void setPattern(const QString &pattern);
    int keyKind() const;
    void setKeyKind(int kind);
    int wantedValidity() const { return m_ready.validity; }
    void setWantedValidity(int state) { setReadyMember(&ReadyFilter::validity, state); }
    bool isOnlyWithKeys() const { return m_ready.onlyWithKeys; }
    void setOnlyWithKeys(bool only) { setReadyMember(&ReadyFilter::onlyWithKeys, only); }
    QString wantedStore() const { return m_ready.storeId; }
    void setWantedStore(const QString &id) { setReadyMember(&ReadyFilter::storeId, id); }
    int hiddenCount() const { return m_hidden; }
    /// Lifts all ready filters at once.
    Q_INVOKABLE void liftFilters();
    int sortKey() const;
    /// A number that is none of `SortKey` is left alone: settings may hold any.
    void setSortKey(int key);
    bool isDescending() const;
    void setDescending(bool descending);
    int count() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row that shows `certificate`, or -1.
    Q_INVOKABLE int rowOf(QObject *certificate) const;
    /// Whether a row that is listed is a key without a certificate.
    bool isKeyAt(int row) const { return KeyRows::isKey(m_rows.at(row)); }
    /// The identity of a row that is listed. Cheap.
    QString identityAt(int row) const;
    /// The row of this identity, or -1.
    Q_INVOKABLE int rowOfIdentity(const QString &identity) const;
    /// The identity of the row that stands for the same key where one gets or loses its
    /// certificate.
    QString heirOf(const QString &identity) const;
    /// The value of a role, by name, of a row.
    Q_INVOKABLE QVariant value(int row, const QString &role) const;
    /// How many rows have this validity.
    Q_INVOKABLE int countWithValidity(int state) const;

Q_SIGNALS:
    void entriesChanged();
    void filterChanged();
    void keysChanged();
    void storeIdChanged();
    void patternChanged();
    void keyKindChanged();
    /// All stores have reported, or are being read anew.
    void readyChanged();
    void hiddenCountChanged();
    /// The rows are sorted by another key, or the other way round.
    void orderChanged();
    void countChanged();

private:
    /// Listed rows from `first` to `last`.
    struct Run {
        int first;
        int last;
    };

    template <class Value> void setReadyMember(Value ReadyFilter::*member, const Value &value)
    {
        ReadyFilter ready = m_ready;
        ready.*member = value;
        setReady(ready);
    }
    void setReady(const ReadyFilter &ready);
    void setHidden(int count);
    void schedule();
    void scheduleInTurn();
    void refresh();
    void takeUp(const QVector<int> &rows);
    void setOrder(RowOrder::Key key, bool descending);
    QVector<int> wantedRows();
    QVector<int> groupedByStore(const QVector<int> &rows);
    bool isWanted(int entryRow) const;
    QVector<Run> runsOf(int first, int last) const;
    void entriesChange(const QModelIndex &first, const QModelIndex &last,
                       const QVector<int> &roles);
    void entriesInserted(int first, int last);
    void entriesAboutToGo(int first, int last);
    void keysAboutToGo(int first, int last);
    void keysChange(int first, int last);
    void addKeys(QVector<int> *rows);
    QString section(const QModelIndex &entry) const;
    QString identityOf(int row) const;
    void replaceMiddle(const QVector<int> &rows, int prefix, int suffix);

    QPointer<EntryModel> m_entries;
    QPointer<QAbstractItemModel> m_filter;
    mutable KeyRows m_keys;
    QString m_storeId;
    QString m_pattern;
    SearchNeedle m_needle;
    int m_keyKind = EntryModel::NoKey;
    ReadyFilter m_ready;
    int m_hidden = 0;
    RowOrder m_order;
    QVector<int> m_rows;
    mutable QHash<QString, int> m_roles; ///< by the names that were asked for
    QTimer m_refresh;
    QElapsedTimer m_sinceRefresh;
    qint64 m_rest = 0; ///< ms
};

} // namespace Trivex
