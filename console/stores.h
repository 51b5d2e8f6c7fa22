// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/patience.h"
#include "qca/tokens/tokens.h"
#include "tools/fileitem.h"

#include <QVector>
#include <QtCrypto>

#include <memory>

namespace Trivex {

/// A certificate in a key store.
struct StoreRow {
    QCA::KeyStoreEntry entry;
    FileItem item; ///< as our own decoder reads it
    bool hasKey = false;
};

/// The key stores of QCA for a work without a window, while it lives.
class Stores {
public:
    /// Waits for modules that don't answer and tokens that are still being read, while `patience`
    /// lasts; says so when it takes long.
    explicit Stores(const Patience &patience);
    ~Stores();
    Q_DISABLE_COPY(Stores)

    /// False when something is missing: the tokens of a module that has not answered in time, or
    /// what is on a token that has not been read.
    bool isComplete() const;
    /// Complains where it is false.
    void tellWhatIsMissing() const;
    /// Why not everything in the store can be told; empty when it can.
    QString problemOf(const QCA::KeyStore &store) const;
    /// By name, then by id.
    const QVector<QCA::KeyStore *> &all() const { return m_stores; }
    static QVector<StoreRow> rowsOf(QCA::KeyStore *store);

private:
    QCA::KeyStoreManager m_manager;
    QVector<QCA::KeyStore *> m_stores;
    // As they were when the waiting was over.
    bool m_isOver = false;
    QStringList m_silentModules;
    QVector<TokenStatus> m_tokens;
};

} // namespace Trivex
