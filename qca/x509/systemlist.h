// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QList>
#include <QtCrypto>

#include <functional>

namespace Trivex {

/// Whether `store` is QCA's own list of the system's certificates, which it reads anew for each
/// request, and never announces a change of.
TRIVEX_QCA_EXPORT bool isSystemList(const QCA::KeyStore &store);

/// The entries of QCA's own list of the system as QCA itself lists them now, read in this thread
/// and not in QCA's store thread, which everybody waits for. Their certificates are light, see
/// `LightDecoding`. Empty where QCA has no such list.
TRIVEX_QCA_EXPORT QList<QCA::KeyStoreEntry> systemList();

/// Runs `systemList` in a thread below `store`, where QCA has the threads of its own operations,
/// and gives the result to `done` on the thread of `store`, unless that is closed before.
TRIVEX_QCA_EXPORT void readSystemList(QCA::KeyStore *store,
                                      std::function<void(const QList<QCA::KeyStoreEntry> &)> done);

} // namespace Trivex
