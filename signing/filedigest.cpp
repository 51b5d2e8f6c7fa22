// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/filedigest.h"

#include <QtCrypto>

namespace Trivex {

namespace {

constexpr qint64 pieceSize = 256 * 1024;

} // namespace

bool isDigestKnown(const QString &type)
{
    return !type.isEmpty() && QCA::Hash::supportedTypes().contains(type);
}

QByteArray fileDigest(QIODevice *device, qint64 size, const QString &type)
{
    if (!isDigestKnown(type) || !device->seek(0))
        return {};
    QCA::Hash hash(type);
    QByteArray piece(int(pieceSize), Qt::Uninitialized);
    for (qint64 left = size; left > 0;) {
        const qint64 count = device->read(piece.data(), qMin(left, pieceSize));
        if (count <= 0)
            return {};
        // A view, so that the buffer is neither copied nor cut.
        hash.update(QByteArray::fromRawData(piece.constData(), int(count)));
        left -= count;
    }
    return hash.final().toByteArray();
}

QByteArray bytesDigest(const QByteArray &bytes, const QString &type)
{
    if (!isDigestKnown(type))
        return {};
    QCA::Hash hash(type);
    // In pieces: one update with 2 GiB or more gives the digest of nothing.
    for (qint64 done = 0; done < bytes.size(); done += pieceSize) {
        const qint64 count = qMin(pieceSize, bytes.size() - done);
        hash.update(QByteArray::fromRawData(bytes.constData() + done, int(count)));
    }
    return hash.final().toByteArray();
}

} // namespace Trivex
