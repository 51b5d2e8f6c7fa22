// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

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
    /// Waits a minute at most for modules that don't answer and tokens that are still being read;
    /// says so when it takes long.
    Stores();
    ~Stores();
    Q_DISABLE_COPY(Stores)

    /// False when a module has not answered in time: its tokens are missing, or a part of what is
    /// on one.
    bool isComplete() const { return m_isComplete; }
    /// Complains where it is false.
    void tellWhatIsMissing() const;
    /// By name, then by id.
    const QVector<QCA::KeyStore *> &all() const { return m_stores; }
    static QVector<StoreRow> rowsOf(QCA::KeyStore *store);

private:
    QCA::KeyStoreManager m_manager;
    QVector<QCA::KeyStore *> m_stores;
    bool m_isComplete = false;
};

} // namespace Trivex
