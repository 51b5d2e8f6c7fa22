// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace Trivex {

/// Octets that are read at any place and never held in memory as a whole.
class TRIVEX_QCA_EXPORT ByteSource {
public:
    virtual ~ByteSource();
    ByteSource(const ByteSource &) = delete;
    ByteSource &operator=(const ByteSource &) = delete;

    virtual qint64 size() const = 0;
    /// Reads exactly `count` octets at `offset`; false where there are fewer.
    virtual bool readAt(qint64 offset, char *to, qint64 count) const = 0;
    /// Whether they are still what they were at first.
    virtual bool isUnchanged() const { return true; }

protected:
    ByteSource() = default;
};

using ByteSourcePtr = std::shared_ptr<const ByteSource>;

/// The octets of the regular file at `path` as it is at the call; null where there is none. The
/// file is held, whatever becomes of its name; it counts as changed when its size or one of its
/// times is another.
TRIVEX_QCA_EXPORT ByteSourcePtr openByteSource(const QString &path);

/// Octets in memory.
TRIVEX_QCA_EXPORT ByteSourcePtr byteSourceOf(const QByteArray &bytes);

} // namespace Trivex
