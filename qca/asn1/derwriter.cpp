// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/derwriter.h"

#include "qca/asn1/nativecoding.h"

namespace Trivex::Der {

QByteArray write(int tag, const QByteArray &content)
{
    QByteArray encoded(1, char(tag));
    const int size = content.size();
    if (size < 0x80) {
        encoded.append(char(size));
    } else {
        int count = 1;
        while (count < 4 && size >> (8 * count))
            ++count;
        encoded.append(char(0x80 | count));
        while (count-- > 0)
            encoded.append(char(size >> (8 * count)));
    }
    return encoded.append(content);
}

QByteArray writeSequence(const QList<QByteArray> &parts)
{
    QByteArray content;
    for (const QByteArray &part : parts)
        content += part;
    return write(Sequence, content);
}

QByteArray writeOid(const QByteArray &dotted)
{
    const ObjectHandle object(OBJ_txt2obj(dotted.constData(), 1));
    return encodeNative(object.get(), i2d_ASN1_OBJECT);
}

QByteArray writeInteger(const QCA::BigInteger &number)
{
    // QCA too gives two's complement of the least length.
    return write(Integer, number.toArray().toByteArray());
}

QByteArray writeUnsigned(QByteArray bigEndian)
{
    int zeros = 0;
    while (zeros < bigEndian.size() - 1 && bigEndian.at(zeros) == '\0')
        ++zeros;
    bigEndian.remove(0, zeros);
    // A first octet of 0x80 and more would make it negative.
    if (bigEndian.isEmpty() || quint8(bigEndian.at(0)) >= 0x80)
        bigEndian.prepend('\0');
    return write(Integer, bigEndian);
}

QByteArray writeBits(const QByteArray &octets)
{
    return write(BitString, QByteArray(1, '\0') + octets);
}

QByteArray writeTime(const QDateTime &time)
{
    const QDateTime utc = time.toUTC();
    const int year = utc.date().year();
    const bool twoDigits = year >= 1950 && year < 2050;
    const QString format =
        twoDigits ? QStringLiteral("yyMMddHHmmss'Z'") : QStringLiteral("yyyyMMddHHmmss'Z'");
    return write(twoDigits ? UtcTime : GeneralizedTime, utc.toString(format).toLatin1());
}

} // namespace Trivex::Der
