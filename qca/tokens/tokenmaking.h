// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"
#include "qca/tokens/tokens.h"

#include <functional>
#include <memory>

namespace Trivex {

/// A software token of the user's own that is to be made.
struct TokenMaking {
    QString name; ///< up to 32 bytes in UTF-8
    Secret pin; ///< for its user, and at first for its administrator
};

/// Called once, on any thread.
using TokenMakingDone = std::function<void(const TokenError &)>;

/// The modules that can make a software token at the moment. One a process, never deleted, because
/// a module's thread may come back late. Thread-safe.
class TRIVEX_QCA_EXPORT TokenMakers : public QObject {
    Q_OBJECT
public:
    using Start = std::function<void(TokenMaking, TokenMakingDone)>;

    static TokenMakers &instance();

    /// Registers the module of that name. `start` must be callable on any thread at any time.
    void offer(const QString &module, Start start);
    void withdraw(const QString &module);

    bool isOffered() const;
    /// Starts the making and returns; `done` follows. False when nobody offers it.
    bool start(TokenMaking making, TokenMakingDone done);

Q_SIGNALS:
    /// On any thread.
    void changed();

private:
    TokenMakers();
    ~TokenMakers() override;

    struct Offers;
    const std::unique_ptr<Offers> m_offers;
};

} // namespace Trivex
