// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/fileitems.h"
#include "tools/listfolder.h"

namespace Trivex {

/// The revocation lists among the user's own files, which count in every check of a path.
///
///     RevocationLists { id: lists }
///     Repeater { model: lists.items; Label { text: name } }
///
/// Kept current while files come and go. GUI thread.
class RevocationLists : public QObject {
    Q_OBJECT
    /// How many there are.
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// The lists, to be shown; the same object always.
    Q_PROPERTY(Trivex::FileItemModel *items READ items CONSTANT)
public:
    /// Reads the folder in a thread of its own.
    explicit RevocationLists(QObject *parent = nullptr);
    ~RevocationLists() override;

    int count() const { return m_items.rowCount(); }
    FileItemModel *items() { return &m_items; }

    /// False where the list's file holds something else too, which would go with it.
    Q_INVOKABLE bool canRemove(int row) const;
    /// When a newer one is due, as the list says; invalid where it does not.
    Q_INVOKABLE QDateTime due(int row) const;
    /// Deletes the file of a list, where it still holds that and nothing else; `removed` follows.
    Q_INVOKABLE void remove(int row);

Q_SIGNALS:
    /// A list came or went, or is somewhere else.
    void changed();
    /// Why not, as a sentence with its next step; empty when all is well.
    void removed(const QString &problem);

private:
    void readFolder();

    ListFolder m_folder;
    QVector<ListFolder::Place> m_places; ///< of each item
    FileItemModel m_items;
};

} // namespace Trivex
