// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/cache/rowfile.h"
#include "qca/tokens/rememberedtokens.h"

#include <QSet>

#include <atomic>
#include <mutex>

namespace Trivex {

/// The public rows of tokens that were read before, in files of the user's cache directory: one a
/// token, readable by its owner alone, in a directory that is the user's own and no link. Nothing
/// is read or written unless it is switched on. Thread-safe; it reads and writes files, which is
/// nothing for a GUI thread.
class TRIVEX_TOKENS_EXPORT TokenCache {
public:
    /// More tokens than somebody has; those that were not seen for longest go first.
    static constexpr int MostTokens = 32;
    /// All files together.
    static constexpr qint64 MostBytes = 4 * MostRowBytes;
    /// A token that was not seen for so long is forgotten.
    static constexpr int MostDays = 30;

    explicit TokenCache(QString directory = rememberedTokensDirectory());

    // They never wait. It is on, too, while `tokensAreRemembered`.
    void setOn(bool on) { m_isOn = on; }
    bool isOn() const { return m_isOn || tokensAreRemembered(); }

    /// What the token showed to anybody when it was read last. Nothing when it has changed since,
    /// as far as its mark tells, and when the file is damaged.
    std::optional<TokenObjects> read(const RowKey &key) const;
    /// Replaces what is there, unless another process has switched it off for the user meanwhile
    /// (`tokensAreStillRemembered`). `objects` must hold nothing that only a login shows.
    void write(const RowKey &key, const TokenObjects &objects);
    /// Forgets one token, whether it is switched on or not.
    void forget(const QString &storeId);
    /// Forgets what was kept under this id, and keeps nothing more as long as the process lives:
    /// two tokens have the same names, and what one has shown would be taken for the other's.
    void shun(const QString &storeId);
    /// Forgets the tokens that were not seen for `MostDays`, whether it is switched on or not.
    void removeOld() noexcept;
    /// Forgets all of them, whether it is switched on or not.
    void clear();

private:
    QString pathOf(const QString &storeId) const;
    bool isStillOn() const { return m_isOn || tokensAreStillRemembered(); }
    void removeOldFiles() const;

    const QString m_directory;
    mutable std::mutex m_mutex;
    std::atomic_bool m_isOn{false};
    QSet<QString> m_shunned;
};

} // namespace Trivex
