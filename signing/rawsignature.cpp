// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/rawsignature.h"

#include "qca/adapter/keys.h"
#include "signing/filedigest.h"
#include "signing/mappedfile.h"

#include <QFile>

#include <sys/stat.h>

namespace Trivex {

namespace {

constexpr qint64 maxSignatureSize = 1024 * 1024;

/// Opening a pipe would wait for its other end.
bool isPipe(const QString &path)
{
    struct stat status;
    return stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISFIFO(status.st_mode);
}

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

QByteArray rawSignature(const QCA::PrivateKey &key, const QByteArray &text)
{
    if (keyType(key) != RsaKey)
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
    if (keyType(key) != RsaKey)
        return false;
    QCA::RSAPublicKey rsa = publicKeyOf(key).toRSA();
    if (rsa.isNull())
        return false;
    rsa.startVerify(QCA::EMSA3_Raw, QCA::DefaultFormat);
    rsa.update(text);
    return rsa.validSignature(signature);
}

bool writeSignature(const QString &path, const QByteArray &signature)
{
    QFile file(path);
    if (isPipe(path) || !file.open(QIODevice::WriteOnly))
        return false;
    const bool written = file.write(signature) == signature.size() && file.flush();
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

std::optional<QByteArray> readSignature(const QString &path)
{
    QFile file(path);
    if (isPipe(path) || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(maxSignatureSize);
}

} // namespace Trivex
