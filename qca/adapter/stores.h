// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QVector>
#include <QtCrypto>

namespace Trivex {

/// `QCA::KeyStoreManager::start()`, unless that has been done for all providers that are loaded:
/// the call waits for whatever QCA's store thread does, be it for a person. Any thread.
TRIVEX_QCA_EXPORT void startStores();

/// Deletes the stores. One whose operation does not end within a moment is let go: nobody hears of
/// it any more, and it is deleted when the operation has ended; QCA does not end before. Questions
/// about such a store are ended meanwhile. On the thread of the stores; null pointers are skipped.
TRIVEX_QCA_EXPORT void closeStores(const QVector<QCA::KeyStore *> &stores);

/// Deletes the stores that were let go, before QCA ends: what they hold is QCA's. Waits a second at
/// most; false when the operation of one has not ended then.
bool deleteClosedStores();

} // namespace Trivex
