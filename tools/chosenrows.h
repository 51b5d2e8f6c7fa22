// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMultiHash>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

namespace Trivex {

/// A row as it is known again: a store may hold two of one identity, told apart by their objects as
/// long as these live.
struct KnownRow {
    QString identity;
    QPointer<QObject> certificate; ///< null where no two rows have one identity
};

/// Rows of a list that are chosen together, by their places as long as they are listed, and by
/// their identities only while they are not: to choose thousands reads none of them.
class ChosenRows {
public:
    using Reader = std::function<KnownRow(int row)>;

    /// Some are chosen, be they listed or not.
    bool isActive() const { return m_count > 0 || !m_absent.isEmpty(); }
    /// How many of them are listed.
    int count() const { return m_count; }
    bool isAt(int row) const { return m_marks.value(row, false); }
    /// The first that is listed, -1 for none.
    int first() const { return m_count > 0 ? m_marks.indexOf(true) : -1; }
    /// Those that are listed.
    QVector<int> all() const;

    void clear();
    /// Of a list of `count` rows chooses those from `first` to `last`, and no others.
    void choose(int count, int first, int last);
    /// Chooses one more, of a list of `count`.
    void add(int count, int row);
    void take(int row);

    // The list changes.
    /// These rows have come; `read` knows them.
    void noteInserted(int first, int last, const Reader &read);
    /// These rows are about to go; `read` knows them still.
    void noteGoing(int first, int last, const Reader &read);
    void noteRemoved(int first, int last);

private:
    bool takeAbsent(const KnownRow &row);

    QVector<bool> m_marks; ///< by row; empty while none is chosen
    int m_count = 0;
    QMultiHash<QString, QPointer<QObject>> m_absent; ///< by identity
};

} // namespace Trivex
