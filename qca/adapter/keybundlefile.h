// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

#include <functional>
#include <optional>

namespace Trivex {

/// The result of opening a file: the bundle for `ConvertGood`, else a null one with `ErrorFile`
/// (missing, unreadable or no regular file), `ErrorPassphrase` or `ErrorDecode` (no key bundle, or
/// our certificate provider is not there).
struct LoadedBundle {
    QCA::ConvertResult result = QCA::ErrorDecode;
    QCA::KeyBundle bundle;
};

// `QCA::KeyBundle::fromFile` without its questions: with an empty password the stock function
// blocks its thread on a question about whatever it can't read, for ever on the GUI thread. Here a
// missing password is a wrong one. A key may take seconds to derive; that is done in a thread of
// its own, which the process does not wait for when it ends.

/// Calls `then` on the thread of `context`, from its event loop, unless that has gone meanwhile.
TRIVEX_QCA_EXPORT void openKeyBundle(const QString &path, const QCA::SecureArray &password,
                                     QObject *context,
                                     const std::function<void(const LoadedBundle &)> &then);

/// Waits: on the GUI thread, unless it takes hardly any time, in an event loop, in which the caller
/// may be destroyed; other threads are blocked. Nothing when the application or the process ends
/// before the bundle is open. Calls that overlap don't disturb each other, but one that was made in
/// the event loop of another returns first.
TRIVEX_QCA_EXPORT std::optional<LoadedBundle> readKeyBundle(const QString &path,
                                                            const QCA::SecureArray &password);

} // namespace Trivex
