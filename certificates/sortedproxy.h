// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/rowlist.h"

#include <QPersistentModelIndex>
#include <QSortFilterProxyModel>
#include <QVector>

#include <functional>
#include <vector>

namespace Trivex {

/// A filter model over a flat list, with a mapping of its own in place of that of its base class,
/// which walks all rows at each row that comes and sorts all of them anew at each large change.
///
/// It keeps the rows that belong to it in their order, found or not, so that a search sorts
/// nothing, and finds the place of a row by bisection. Child rows are not shown. What belongs, what
/// is found and what comes first is the subclass's to say: docs/decisions/049. GUI thread only.
class SortedProxy : public QSortFilterProxyModel {
public:
    ~SortedProxy() override;

    void setSourceModel(QAbstractItemModel *model) override;
    QModelIndex index(int row, int column,
                      const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QModelIndex mapToSource(const QModelIndex &index) const override;
    QModelIndex mapFromSource(const QModelIndex &index) const override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;

protected:
    explicit SortedProxy(QObject *parent);

    // What is known of rows follows the source: these run before the mapping changes.
    virtual void noteInserted(int first, int last) = 0;
    virtual void noteRemoved(int first, int last) = 0;
    virtual void noteChanged(int first, int last) = 0;
    /// Nothing that was known of any row holds any more; the rows are those of `source` now, which
    /// may be null.
    virtual void noteAll(const QAbstractItemModel *source) = 0;
    /// Whether a change of these roles can change what is known of a row.
    virtual bool matters(const QVector<int> &roles) const = 0;

    /// Whether the row is one of those that are kept in order.
    virtual bool belongs(int sourceRow) const = 0;
    /// Whether a row that belongs is shown.
    virtual bool isFound(int sourceRow) const = 0;
    /// Less than, equal to or greater than 0, in ascending order.
    virtual int compare(int sourceRow, int other) const = 0;

    /// The rows that belong, in order.
    const RowList &order() const { return m_order; }
    /// True from the first reading on; before it nobody has seen a row.
    bool isBuilt() const { return m_isBuilt; }
    /// True while a change is being passed on.
    bool isChanging() const { return m_changes > 0 || m_resets > 0 || m_layouts > 0; }
    /// False where the source has changed and has not told yet, or nothing may be passed on. Rows
    /// of the source must not be read then by the numbers of `order()`.
    bool isSteady() const { return m_brackets == 0 && isInStep(); }
    /// What is found has changed.
    void refind();
    /// What belongs has changed.
    void rechoose();

private:
    /// Places from `first` to `last`.
    struct Run {
        int first;
        int last;
    };
    /// Above this number of runs that come and go, views get one new layout.
    static constexpr size_t MostRuns = 64;

    void follow(QAbstractItemModel *model);
    void followResets(QAbstractItemModel *model);
    void resetBegins();
    void resetEnds();
    void leave();
    void forget();
    void startOver();
    void lookAgain();
    void emptyBase();
    void build() const;
    std::vector<int> ordered() const;
    std::vector<int> found() const;
    bool isBefore(int row, int other) const;
    bool isInStep() const;
    bool isLoose() const;
    bool isDoomed(int row) const;

    void rowsCame(const QModelIndex &parent, int first, int last);
    void rowsGo(const QModelIndex &parent, int first, int last);
    void rowsGone(const QModelIndex &parent, int first, int last);
    void rowsChanged(const QModelIndex &first, const QModelIndex &last, const QVector<int> &roles);
    void takeUpChange(int first, int last);
    void passOn(int first, int last, const QVector<int> &roles);
    void takeUp(int row);
    void takeUp(std::vector<int> rows);
    void layoutBegins();
    void layoutEnds();
    void tellLayout(const QModelIndexList &places, const std::vector<int> &rows);

    size_t placeFor(const RowList &rows, int row) const;
    std::vector<Run> runsOf(int first, int last) const;
    void renumber(int from, int by);
    void loseRows(int first, int last);
    void settle();
    void catchUp();
    void hide(const std::vector<Run> &runs);
    void insertShown(int place, std::vector<int> rows);
    void removeShown(const Run &run);
    void layAnew();

    QVector<QMetaObject::Connection> m_connections;
    QAbstractItemModel *m_source = nullptr; ///< also while the base class has to see none
    mutable RowList m_order;
    mutable RowList m_shown; ///< those of them that are found; -1 is no row any more
    std::vector<int> m_coming; ///< those that were announced, and are not there yet
    mutable int m_count = 0; ///< the rows of the source that these numbers speak of
    mutable bool m_isBuilt = false;
    // What they are ordered by; the base class may know better for a moment.
    mutable bool m_isSorted = false;
    mutable bool m_isDescending = false;
    mutable bool m_isLoose = false;
    /// While rows come and go run by run, whoever hears of it may bring the next change about.
    unsigned m_serial = 0;
    int m_changes = 0; ///< signals that are on their way
    int m_brackets = 0; ///< announcements without their end
    int m_layouts = 0; ///< those of the source
    int m_resets = 0;
    bool m_isOwnLayout = false; ///< the next `layoutChanged()` is not the base class's
    bool m_isAnnounced = false; ///< the layout of the source was passed on
    Run m_doomed = {0, -1}; ///< rows that the source is about to remove
    int m_doomedCount = 0; ///< its rows while it still has them
    // What could not be done at once.
    bool m_isStale = false;
    bool m_isLost = false; ///< what is known of rows may be that of others
    bool m_mustReset = false; ///< nor do the numbers of rows hold
    QModelIndexList m_places;
    QVector<QPersistentModelIndex> m_rowsThere;
};

} // namespace Trivex
