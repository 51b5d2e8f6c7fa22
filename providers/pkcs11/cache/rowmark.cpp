// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/cache/rowmark.h"

#include <QDataStream>

namespace Trivex {

QByteArray rowMark(const CK_TOKEN_INFO &info)
{
    QByteArray mark;
    QDataStream stream(&mark, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    for (const CK_ULONG memory : {info.ulTotalPublicMemory, info.ulFreePublicMemory,
                                  info.ulTotalPrivateMemory, info.ulFreePrivateMemory})
        stream << quint64(memory);
    for (const CK_VERSION &version : {info.hardwareVersion, info.firmwareVersion})
        stream << quint8(version.major) << quint8(version.minor);
    return mark;
}

} // namespace Trivex
