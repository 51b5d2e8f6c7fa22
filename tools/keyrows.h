// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/rowtext.h"
#include "tools/tokenkeymodel.h"

#include <QHash>
#include <QPointer>

namespace Trivex {

/// The keys without a certificate among the rows of a list that has entries, too. There a key is a
/// negative number, which stays the same whatever comes and goes, and an entry is its row.
class KeyRows {
public:
    static bool isKey(int row) { return row < 0; }

    TokenKeyModel *model() const { return m_model; }
    void setModel(TokenKeyModel *model) { m_model = model; }

    /// Those of one token that a search lets through, by their names.
    QVector<int> wanted(const QString &storeId, const SearchNeedle &needle);
    /// The number of a row of the model.
    int numberOf(int modelRow) const { return -1 - m_model->serialAt(modelRow); }
    /// Under the role that `entries` calls by the same name; nothing for a key that has gone.
    QVariant data(int number, int role, const EntryModel &entries);
    QString identityOf(int number) const;

private:
    int modelRow(int number) const { return m_model ? m_model->rowOfSerial(-1 - number) : -1; }

    QPointer<TokenKeyModel> m_model;
    QHash<int, int> m_roles; ///< of the entries, to those of the keys
};

} // namespace Trivex
