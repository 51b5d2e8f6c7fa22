// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

#include <memory>

namespace QCA {
class SecureArray;
}

namespace Trivex {

/// Bytes that are wiped with their owner: a PIN, a decrypted text, the numbers of a private key.
///
/// In plain memory, because a thread inside a module may use it after QCA has ended, and
/// `QCA::SecureArray` can't be touched then.
class TRIVEX_QCA_EXPORT Secret {
public:
    Secret() = default;
    explicit Secret(int size);
    explicit Secret(const QCA::SecureArray &bytes);
    ~Secret();
    Secret(const Secret &other);
    Secret(Secret &&other) noexcept;
    Secret &operator=(Secret other) noexcept;

    bool isEmpty() const { return m_size == 0; }
    int size() const { return m_size; }
    char *data() { return m_bytes.get(); }
    const char *constData() const { return m_bytes.get(); }
    /// Shortens it; it never grows.
    void truncate(int size);

    /// A copy that nobody wipes, for bytes that are not secret.
    QByteArray toByteArray() const;
    /// Call it only while QCA lives.
    QCA::SecureArray toSecureArray() const;

private:
    std::unique_ptr<char[]> m_bytes;
    int m_size = 0;
    int m_room = 0;
};

} // namespace Trivex
