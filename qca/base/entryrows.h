// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

#include <functional>

class QAbstractItemModel;

namespace QCA {
class KeyStoreEntry;
}

namespace Trivex {

/// What a filter asks about a certificate.
struct RowOrigin {
    bool hasPrivateKey = false;
    bool isRoot = false; ///< a root certificate without a private key
};

/// The C++ interface of a model whose rows are entries of key stores. Who reads every row of a long
/// list reads it here: an object that a role has given lives as long as its row. GUI thread.
class EntryRows {
public:
    /// The entry of `row`, as long as the rows do not change; null where there is no such row.
    virtual const QCA::KeyStoreEntry *entryOf(int row) const = 0;
    virtual RowOrigin originOf(int row) const = 0;
    /// Calls `look` with an object that has the properties of the row's certificate, which may be
    /// made for this call and go with it; not at all where there is no such row.
    virtual void lookAtCertificate(int row,
                                   const std::function<void(const QObject &)> &look) const = 0;
    /// The row whose role "certificate" has given `certificate`, or -1.
    virtual int rowOf(const QObject *certificate) const = 0;

protected:
    ~EntryRows() = default;
};

/// That of `model`, or of the model that it shows row by row; null when it has none.
TRIVEX_QCA_EXPORT const EntryRows *entryRowsOf(const QAbstractItemModel *model);

} // namespace Trivex

Q_DECLARE_INTERFACE(Trivex::EntryRows, "org.trivex.EntryRows/1")
