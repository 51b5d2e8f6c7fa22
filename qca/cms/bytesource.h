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
    /// Whether they are still what they were at first. Enough where a digest is compared as well.
    virtual bool isUnchanged() const { return true; }
    /// The same, and beyond doubt: nobody has written and set the times back, nor has anybody
    /// changed the file's rights or names.
    virtual bool isUntouched() const { return true; }
    /// Whether they lie in the file at `path`, by whatever name.
    virtual bool isFile(const QString &path) const;

protected:
    ByteSource() = default;
};

using ByteSourcePtr = std::shared_ptr<const ByteSource>;

/// The octets of the regular file at `path` as it is at the call; null where there is none. The
/// file is held, whatever becomes of its name; it counts as changed when its size or the time of
/// its last change is another.
TRIVEX_QCA_EXPORT ByteSourcePtr openByteSource(const QString &path);

/// Octets in memory.
TRIVEX_QCA_EXPORT ByteSourcePtr byteSourceOf(const QByteArray &bytes);

} // namespace Trivex
