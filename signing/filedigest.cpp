// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/filedigest.h"

#include <QtCrypto>

#include <algorithm>

namespace Trivex {

namespace {

constexpr qint64 PieceSize = 256 * 1024;

} // namespace

bool isDigestKnown(const QString &type)
{
    return !type.isEmpty() && QCA::Hash::supportedTypes().contains(type);
}

QList<QByteArray> fileDigests(QIODevice *device, qint64 size, const QStringList &types)
{
    if (!std::all_of(types.cbegin(), types.cend(), &isDigestKnown) || !device->seek(0))
        return {};
    QList<QCA::Hash> hashes;
    for (const QString &type : types)
        hashes.append(QCA::Hash(type));
    QByteArray piece(int(PieceSize), Qt::Uninitialized);
    for (qint64 left = size; left > 0;) {
        const qint64 count = device->read(piece.data(), qMin(left, PieceSize));
        if (count <= 0)
            return {};
        // A view, so that the buffer is neither copied nor cut.
        for (QCA::Hash &hash : hashes)
            hash.update(QByteArray::fromRawData(piece.constData(), int(count)));
        left -= count;
    }
    QList<QByteArray> digests;
    for (QCA::Hash &hash : hashes)
        digests.append(hash.final().toByteArray());
    return digests;
}

QByteArray bytesDigest(const QByteArray &bytes, const QString &type)
{
    if (!isDigestKnown(type))
        return {};
    QCA::Hash hash(type);
    // In pieces: one update with 2 GiB or more would give the digest of no bytes.
    for (qint64 done = 0; done < bytes.size(); done += PieceSize) {
        const qint64 count = qMin(PieceSize, bytes.size() - done);
        hash.update(QByteArray::fromRawData(bytes.constData() + done, int(count)));
    }
    return hash.final().toByteArray();
}

} // namespace Trivex
