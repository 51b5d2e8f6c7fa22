// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/rawsignature.h"

#include "qca/base/regularfile.h"
#include "qca/keys/keys.h"
#include "signing/filedigest.h"
#include "signing/mappedfile.h"

#include <QFile>

namespace Trivex {

namespace {

constexpr qint64 MaxSignatureSize = 1024 * 1024;

QByteArray dataDigest(const QByteArray &data)
{
    const QString type = QStringLiteral("sha256");
    const auto file = MappedFile::behind(data);
    return file ? file->digest(type) : bytesDigest(data, type);
}

} // namespace

QByteArray signedText(const QByteArray &data)
{
    return QCA::arrayToHex(dataDigest(data)).toUtf8();
}

bool canSignRaw(const QCA::PKey &key)
{
    return keyType(key) == RsaKey;
}

QByteArray rawSignature(const QCA::PrivateKey &key, const QByteArray &text)
{
    if (!canSignRaw(key))
        return {};
    QCA::RSAPrivateKey rsa = key.toRSA();
    if (rsa.isNull())
        return {};
    rsa.startSign(QCA::EMSA3_Raw, QCA::DefaultFormat);
    rsa.update(text);
    return rsa.signature();
}

bool isRawSignatureValid(const QCA::PrivateKey &key, const QByteArray &text,
                         const QByteArray &signature)
{
    if (!canSignRaw(key))
        return false;
    QCA::RSAPublicKey rsa = publicKeyOf(key).toRSA();
    if (rsa.isNull())
        return false;
    rsa.startVerify(QCA::EMSA3_Raw, QCA::DefaultFormat);
    rsa.update(text);
    return rsa.validSignature(signature);
}

std::optional<QByteArray> readSignature(const QString &path)
{
    QFile file;
    if (!openRegularFile(path, &file))
        return std::nullopt;
    return file.read(MaxSignatureSize);
}

} // namespace Trivex
