// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/pkcs12/bundlereader.h"
#include "qca/questions/waiter.h"

namespace Trivex {

/// The opening of a bundle's file in a thread of its own, which nobody waits for: key derivation
/// takes seconds and can't be stopped. Held by that thread, too.
class BundleOpening : public std::enable_shared_from_this<BundleOpening> {
public:
    BundleOpening(const QString &path, const Secret &password);

    /// Once. At the end of the process nothing is started, and the waiter is never resolved.
    void start();
    /// Resolved when it is done.
    Waiter &waiter() { return m_waiter; }

    // Once resolved.

    /// `ErrorFile`: missing, unreadable or no regular file. Else see `readBundle`.
    QCA::ConvertResult result() const { return m_result; }
    const Bundle &bundle() const { return m_bundle; }

private:
    void run();

    const QString m_path;
    const Secret m_password;
    Waiter m_waiter;
    QCA::ConvertResult m_result = QCA::ErrorDecode;
    Bundle m_bundle;
};

} // namespace Trivex
