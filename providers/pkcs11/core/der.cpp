// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/der.h"

#include <QStringBuilder>

#include <optional>

namespace Trivex {

namespace {

enum Tag : quint8 {
    Integer = 0x02,
    BitString = 0x03,
    OctetString = 0x04,
    ObjectId = 0x06,
    Boolean = 0x01,
    Sequence = 0x30,
    Version = 0xa0,
    Extensions = 0xa3,
    KeyIdentifier = 0x80,
};

struct Value {
    quint8 tag = 0;
    DerSpan whole;
    DerSpan content;
};

/// Walks over the values inside one span. Definite lengths of up to four bytes, as DER has them.
class Walker {
public:
    Walker(const QByteArray &der, DerSpan span)
        : m_der(der)
        , m_at(span.offset)
        , m_end(span.offset + span.length)
    {
    }

    std::optional<Value> next()
    {
        const quint32 start = m_at;
        const auto tag = byte();
        const auto length = readLength();
        if (!tag || !length || *length > m_end - m_at)
            return std::nullopt;
        Value value;
        value.tag = *tag;
        value.content = {m_at, *length};
        m_at += *length;
        value.whole = {start, m_at - start};
        return value;
    }

    /// The next value when it has `tag`; otherwise nothing, and the walker stays where it is.
    std::optional<Value> next(quint8 tag)
    {
        if (m_at >= m_end || quint8(m_der.at(int(m_at))) != tag)
            return std::nullopt;
        return next();
    }

private:
    std::optional<quint8> byte()
    {
        if (m_at >= m_end)
            return std::nullopt;
        return quint8(m_der.at(int(m_at++)));
    }

    std::optional<quint32> readLength()
    {
        const auto first = byte();
        if (!first || *first < 0x80)
            return first ? std::optional<quint32>(*first) : std::nullopt;
        const int count = *first & 0x7f;
        if (count < 1 || count > 4)
            return std::nullopt;
        quint32 length = 0;
        for (int i = 0; i < count; ++i) {
            const auto next = byte();
            if (!next)
                return std::nullopt;
            length = length << 8 | *next;
        }
        return length;
    }

    const QByteArray &m_der;
    quint32 m_at;
    quint32 m_end;
};

DerSpan all(const QByteArray &der)
{
    return {0, quint32(der.size())};
}

/// The identifier in an AuthorityKeyIdentifier or SubjectKeyIdentifier (RFC 5280, 4.2.1.1, .2).
DerSpan identifierIn(const QByteArray &der, DerSpan extensionValue, quint8 outer, quint8 inner)
{
    const auto value = Walker(der, extensionValue).next(outer);
    if (!value)
        return {};
    if (!inner)
        return value->content;
    const auto identifier = Walker(der, value->content).next(inner);
    return identifier ? identifier->content : DerSpan();
}

void readExtension(const QByteArray &der, DerSpan extension, CertificateParts *parts)
{
    static const QByteArray subjectKeyId = QByteArrayLiteral("\x55\x1d\x0e");
    static const QByteArray authorityKeyId = QByteArrayLiteral("\x55\x1d\x23");
    Walker walker(der, extension);
    const auto oid = walker.next(ObjectId);
    walker.next(Boolean);
    const auto value = walker.next(OctetString);
    if (!oid || !value)
        return;
    const QByteArray name = oid->content.in(der);
    if (name == subjectKeyId)
        parts->keyId = identifierIn(der, value->content, OctetString, 0);
    else if (name == authorityKeyId)
        parts->authorityKeyId = identifierIn(der, value->content, Sequence, KeyIdentifier);
}

void readExtensions(const QByteArray &der, Walker fields, CertificateParts *parts)
{
    while (const auto field = fields.next()) {
        if (field->tag != Extensions)
            continue;
        const auto list = Walker(der, field->content).next(Sequence);
        if (!list)
            return;
        Walker extensions(der, list->content);
        while (const auto extension = extensions.next(Sequence))
            readExtension(der, extension->content, parts);
        return;
    }
}

QByteArray unsignedInteger(QByteArray number)
{
    int zeros = 0;
    while (zeros < number.size() - 1 && number.at(zeros) == '\0')
        ++zeros;
    number.remove(0, zeros);
    if (number.isEmpty() || quint8(number.at(0)) >= 0x80)
        number.prepend('\0');
    return derValue(Integer, number);
}

QByteArray publicInfo(const QByteArray &algorithm, const QByteArray &key)
{
    return derValue(Sequence,
                    derValue(Sequence, algorithm) + derValue(BitString, QByteArray(1, '\0') + key));
}

} // namespace

CertificateParts certificateParts(const QByteArray &der)
{
    const auto certificate = Walker(der, all(der)).next(Sequence);
    const auto body = certificate ? Walker(der, certificate->content).next(Sequence) : std::nullopt;
    if (!body)
        return {};
    Walker fields(der, body->content);
    fields.next(Version);
    const auto serial = fields.next(Integer);
    const auto algorithm = fields.next(Sequence);
    const auto issuer = fields.next(Sequence);
    const auto validity = fields.next(Sequence);
    const auto subject = fields.next(Sequence);
    const auto key = fields.next(Sequence);
    if (!serial || !algorithm || !issuer || !validity || !subject || !key)
        return {};
    CertificateParts parts;
    parts.serial = serial->whole;
    parts.issuer = issuer->whole;
    parts.subject = subject->whole;
    parts.publicInfo = key->whole;
    readExtensions(der, fields, &parts);
    return parts;
}

QByteArray publicKeyBits(const QByteArray &publicInfo)
{
    const auto outer = Walker(publicInfo, all(publicInfo)).next(Sequence);
    if (!outer)
        return {};
    Walker fields(publicInfo, outer->content);
    fields.next(Sequence);
    const auto bits = fields.next(BitString);
    if (!bits || bits->content.isEmpty())
        return {};
    return QByteArray(publicInfo.constData() + bits->content.offset + 1,
                      int(bits->content.length - 1));
}

QByteArray derContent(const QByteArray &der, quint8 tag)
{
    const auto value = Walker(der, all(der)).next(tag);
    return value ? QByteArray(der.constData() + value->content.offset, int(value->content.length))
                 : QByteArray();
}

QByteArray derValue(quint8 tag, const QByteArray &content)
{
    QByteArray encoded(1, char(tag));
    const auto length = quint32(content.size());
    if (length < 0x80) {
        encoded.append(char(length));
    } else {
        QByteArray bytes;
        for (quint32 left = length; left; left >>= 8)
            bytes.prepend(char(left & 0xff));
        encoded.append(char(0x80 | bytes.size()));
        encoded.append(bytes);
    }
    return encoded + content;
}

QByteArray rsaPublicInfo(const QByteArray &modulus, const QByteArray &exponent)
{
    if (modulus.isEmpty() || exponent.isEmpty())
        return {};
    // rsaEncryption with its NULL parameters.
    const auto algorithm =
        QByteArrayLiteral("\x06\x09\x2a\x86\x48\x86\xf7\x0d\x01\x01\x01\x05\x00");
    return publicInfo(algorithm,
                      derValue(Sequence, unsignedInteger(modulus) + unsignedInteger(exponent)));
}

QByteArray ecPublicInfo(const QByteArray &parameters, const QByteArray &point)
{
    if (parameters.isEmpty() || point.isEmpty())
        return {};
    // id-ecPublicKey
    const auto algorithm = QByteArrayLiteral("\x06\x07\x2a\x86\x48\xce\x3d\x02\x01");
    return publicInfo(algorithm + parameters, point);
}

} // namespace Trivex
