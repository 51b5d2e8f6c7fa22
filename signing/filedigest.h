// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QStringList>

namespace Trivex {

/// The digest `type` (QCA's name, such as "sha256") of the first `size` bytes of `device`, which is
/// rewound first. Read in pieces of 256 KiB: memory stays the same at any size, 4 GiB and more
/// included. An empty array when QCA doesn't know the digest, or when there are fewer bytes.
QByteArray fileDigest(QIODevice *device, qint64 size, const QString &type);

/// Several digests of the same bytes, in the order of `types`, with one pass over the device; as
/// above, an empty list on failure.
QList<QByteArray> fileDigests(QIODevice *device, qint64 size, const QStringList &types);

/// The digest of `bytes`; as above.
QByteArray bytesDigest(const QByteArray &bytes, const QString &type);

/// True when QCA has a digest of that name. Naming another kind of algorithm would crash it.
bool isDigestKnown(const QString &type);

} // namespace Trivex
