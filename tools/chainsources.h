// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"
#include "tools/listfolder.h"

namespace Trivex {

/// The certificates of an entry model as candidates for paths, with the revocation lists of the
/// user's own files. One for each model, shared by all who check paths; it goes with the model.
///
/// A path may end at a root of the system, or at one that lies among the user's own files. Rows are
/// read in small portions while the event loop is idle. GUI thread.
class ChainSources : public QObject {
    Q_OBJECT
public:
    /// Whether a path may end at a certificate of that store.
    static bool isAnchor(const QByteArray &der, const QString &storeId, bool isSystemStore);
    /// Never null for a model.
    static ChainSources *of(EntryModel *entries);

    /// Empty for a row that has no certificate.
    QByteArray certificateOf(int row) const;
    /// Of all rows that have been read; decodes nothing.
    QList<QByteArray> certificates() const;
    const CandidateIndex &index() const { return m_index; }
    /// Whether every row has been read.
    bool isComplete() const { return m_next >= m_rows.size(); }

Q_SIGNALS:
    /// Something came or went, after all rows were read; once for many.
    void changed();

private:
    explicit ChainSources(EntryModel *entries);

    void insert(int first, int last);
    void remove(int first, int last);
    void reset();
    void readAhead();
    void noteChange();
    ChainCandidate candidate(int row) const;
    void takeLists();

    EntryModel *m_entries;
    QVector<ChainCandidate> m_rows; ///< without a certificate where not yet read
    CandidateIndex m_index;
    ListFolder m_lists;
    int m_entryRole = -1;
    int m_typeRole = -1;
    int m_next = 0; ///< where reading goes on
    QTimer m_idle;
    QTimer m_announce;
};

} // namespace Trivex
