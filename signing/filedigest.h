// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QStringList>

namespace Trivex {

/// The digests `types` (QCA's names, such as "sha256") of the first `size` bytes of `device`, in
/// that order, with one pass over the device, which is rewound first. It is read in pieces of
/// 256 KiB: memory stays the same at any size, 4 GiB and more included. An empty list when QCA
/// doesn't know one of the digests, or when there are fewer bytes.
QList<QByteArray> fileDigests(QIODevice *device, qint64 size, const QStringList &types);

/// The digest of `bytes`; empty when QCA doesn't know it.
QByteArray bytesDigest(const QByteArray &bytes, const QString &type);

/// True when QCA has a digest of that name. Naming another kind of algorithm would crash it.
bool isDigestKnown(const QString &type);

} // namespace Trivex
