// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/cache/rowfile.h"

#include <QCryptographicHash>
#include <QDataStream>

namespace Trivex {

namespace {

/// The number rises with every change of what follows.
const QByteArray Magic = QByteArrayLiteral("trivex-token-rows-1\n");

QByteArray digestOf(const QByteArray &payload)
{
    return QCryptographicHash::hash(payload, QCryptographicHash::Sha256);
}

QDataStream &operator<<(QDataStream &stream, const TokenCertificate &certificate)
{
    return stream << certificate.der << certificate.id << certificate.label;
}

QDataStream &operator>>(QDataStream &stream, TokenCertificate &certificate)
{
    stream >> certificate.der >> certificate.id >> certificate.label;
    certificate.parts = certificateParts(certificate.der);
    if (!certificate.parts.isValid())
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const TokenKey &key)
{
    return stream << quint64(key.type) << key.id << key.label << key.publicInfo << qint32(key.uses)
                  << qint32(key.origin) << qint32(key.leave);
}

QDataStream &operator>>(QDataStream &stream, TokenKey &key)
{
    quint64 type = 0;
    qint32 uses = 0;
    qint32 origin = 0;
    qint32 leave = 0;
    stream >> type >> key.id >> key.label >> key.publicInfo >> uses >> origin >> leave;
    key.type = CK_KEY_TYPE(type);
    key.uses = uses;
    key.origin = TokenKeyFacts::Origin(origin);
    key.leave = TokenKeyFacts::Leave(leave);
    return stream;
}

template <class Object>
QDataStream &operator<<(QDataStream &stream, const std::vector<Object> &objects)
{
    stream << quint32(objects.size());
    for (const Object &one : objects)
        stream << one;
    return stream;
}

/// What the count says is not believed: the room grows with what is there.
template <class Object> QDataStream &operator>>(QDataStream &stream, std::vector<Object> &objects)
{
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        Object one;
        stream >> one;
        objects.push_back(std::move(one));
    }
    return stream;
}

} // namespace

QByteArray packRows(const RowKey &key, const TokenObjects &objects)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << key.storeId << key.mark << objects.privateKeysHidden << objects.certificates
           << objects.publicKeys << objects.privateKeys;
    return Magic + digestOf(payload) + payload;
}

std::optional<TokenObjects> unpackRows(const RowKey &key, const QByteArray &file)
{
    const int head = Magic.size() + QCryptographicHash::hashLength(QCryptographicHash::Sha256);
    if (file.size() <= head || file.size() > MostRowBytes || !file.startsWith(Magic))
        return std::nullopt;
    const QByteArray payload = file.mid(head);
    if (file.mid(Magic.size(), head - Magic.size()) != digestOf(payload))
        return std::nullopt;
    QDataStream stream(payload);
    stream.setVersion(QDataStream::Qt_5_15);
    RowKey written;
    TokenObjects objects;
    stream >> written.storeId >> written.mark;
    if (written.storeId != key.storeId || written.mark != key.mark)
        return std::nullopt;
    stream >> objects.privateKeysHidden >> objects.certificates >> objects.publicKeys
        >> objects.privateKeys;
    const bool isWhole = stream.status() == QDataStream::Ok && stream.atEnd();
    return isWhole ? std::make_optional(std::move(objects)) : std::nullopt;
}

} // namespace Trivex
