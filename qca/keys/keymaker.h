// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <QThread>
#include <QtCrypto>

#include <atomic>
#include <functional>

namespace Trivex {

/// QCA's contexts belong to no thread at first, and get no events there.
void bringToThisThread(QObject *context);

/// Generates one software key, in its own thread or the caller's. Destroying it abandons the
/// generation: libcrypto asks between candidates whether to go on.
class KeyMaker : public QThread {
    Q_OBJECT
public:
    /// Sets up a generation; false when the parameters are refused.
    using SetUp = std::function<bool(EVP_PKEY_CTX *)>;

    /// `type` as libcrypto names it: "RSA", "EC".
    KeyMaker(const char *type, SetUp setUp);
    /// The same on the parameters of `domain`, which has to live until the end.
    explicit KeyMaker(PKeyHandle domain);
    ~KeyMaker() override;

    /// Hands the key, or null, to `done`: before this returns with `block`, otherwise on the thread
    /// of `owner`, which tells then that it is finished. `owner` has to own this.
    void make(QCA::PKeyBase *owner, bool block, std::function<void(PKeyHandle)> done);

    void run() override;
    /// The key; null when it failed. Once, after the end.
    PKeyHandle takeKey() { return std::move(m_key); }

private:
    static int goOn(EVP_PKEY_CTX *context);

    PKeyHandle m_domain;
    KeyContextHandle m_context;
    SetUp m_setUp;
    PKeyHandle m_key;
    std::atomic<bool> m_abandoned{false};
};

} // namespace Trivex
