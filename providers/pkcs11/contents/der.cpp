// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/der.h"

#include "qca/asn1/der.h"
#include "qca/asn1/derwriter.h"

namespace Trivex {

namespace {

DerSpan spanIn(const QByteArray &der, Der::Slice slice)
{
    return {quint32(slice.data - der.constData()), quint32(slice.size)};
}

// Told apart by their octets: the text of an identifier would have to be made for each extension.
bool isExtension(Der::Slice oid, char number)
{
    return oid.size == 3 && oid.at(0) == 0x55 && oid.at(1) == 0x1D && oid.data[2] == number;
}

/// The octets of a string that lie together: of one in a single piece, and of one that is wrapped
/// around a single piece. What lies scattered has no place to name.
bool onePiece(Der::Reader *reader, int tag, Der::Slice *content)
{
    if (reader->next(tag, content))
        return true;
    Der::Slice wrapped;
    return reader->next(tag | Der::ConstructedBit, &wrapped)
        && Der::single(wrapped, Der::OctetString, content);
}

/// What SubjectKeyIdentifier, AuthorityKeyIdentifier or BasicConstraints say (RFC 5280, 4.2.1.2,
/// .1, .9).
void readExtension(const QByteArray &der, Der::Slice extension, CertificateParts *parts)
{
    Der::Reader reader(extension);
    Der::Slice oid;
    Der::Slice value;
    Der::Slice content;
    Der::Slice id;
    if (!reader.next(Der::ObjectIdentifier, &oid))
        return;
    reader.skip(Der::Boolean);
    if (!onePiece(&reader, Der::OctetString, &value))
        return;
    Der::Reader values(value);
    if (isExtension(oid, 0x0E) && onePiece(&values, Der::OctetString, &id)) {
        parts->keyId = spanIn(der, id);
    } else if (isExtension(oid, 0x23) && values.next(Der::Sequence, &content)) {
        Der::Reader fields(content);
        if (onePiece(&fields, Der::context(0, false), &id))
            parts->authorityKeyId = spanIn(der, id);
    } else if (isExtension(oid, 0x13) && values.next(Der::Sequence, &content)) {
        Der::Slice flag;
        parts->isAuthority =
            Der::Reader(content).next(Der::Boolean, &flag) && flag.size == 1 && flag.at(0) != 0;
    }
}

void readExtensions(const QByteArray &der, Der::Reader fields, CertificateParts *parts)
{
    for (const int number : {1, 2}) { // unique identifiers
        fields.skip(Der::context(number, false));
        fields.skip(Der::context(number));
    }
    Der::Slice wrapped;
    Der::Slice list;
    if (!fields.next(Der::context(3), &wrapped)
        || !Der::Reader(wrapped).nextList(Der::Sequence, &list))
        return;
    Der::Reader extensions(list);
    Der::Slice extension;
    while (extensions.next(Der::Sequence, &extension))
        readExtension(der, extension, parts);
}

QByteArray unsignedInteger(QByteArray number)
{
    int zeros = 0;
    while (zeros < number.size() - 1 && number.at(zeros) == '\0')
        ++zeros;
    number.remove(0, zeros);
    if (number.isEmpty() || quint8(number.at(0)) >= 0x80)
        number.prepend('\0');
    return Der::write(Der::Integer, number);
}

QByteArray publicInfo(const QByteArray &algorithm, const QByteArray &key)
{
    return Der::write(Der::Sequence,
                      Der::write(Der::Sequence, algorithm)
                          + Der::write(Der::BitString, QByteArray(1, '\0') + key));
}

} // namespace

CertificateParts certificateParts(const QByteArray &der)
{
    Der::Slice certificate;
    Der::Slice body;
    if (!Der::Reader(Der::sliceOf(der)).next(Der::Sequence, &certificate)
        || !Der::Reader(certificate).next(Der::Sequence, &body))
        return {};
    Der::Reader fields(body);
    fields.skip(Der::context(0)); // version
    Der::Element serial;
    Der::Element algorithm;
    Der::Element issuer;
    Der::Element validity;
    Der::Element subject;
    Der::Element key;
    if (!fields.next(Der::Integer, &serial) || !fields.next(Der::Sequence, &algorithm)
        || !fields.nextList(Der::Sequence, &issuer) || !fields.next(Der::Sequence, &validity)
        || !fields.nextList(Der::Sequence, &subject) || !fields.next(Der::Sequence, &key))
        return {};
    CertificateParts parts;
    parts.serial = spanIn(der, serial.whole);
    parts.issuer = spanIn(der, issuer.whole);
    parts.subject = spanIn(der, subject.whole);
    parts.publicInfo = spanIn(der, key.whole);
    readExtensions(der, fields, &parts);
    return parts;
}

QByteArray publicKeyBits(const QByteArray &publicInfo)
{
    Der::Slice content;
    Der::Slice bits;
    if (!Der::Reader(Der::sliceOf(publicInfo)).next(Der::Sequence, &content))
        return {};
    Der::Reader fields(content);
    fields.skip(Der::Sequence);
    if (!fields.next(Der::BitString, &bits) || bits.isEmpty())
        return {};
    return bits.bytes().mid(1);
}

QByteArray derContent(const QByteArray &der, quint8 tag)
{
    Der::Slice content;
    return Der::Reader(Der::sliceOf(der)).next(tag, &content) ? content.bytes() : QByteArray();
}

QByteArray rsaPublicInfo(const QByteArray &modulus, const QByteArray &exponent)
{
    if (modulus.isEmpty() || exponent.isEmpty())
        return {};
    // rsaEncryption with its NULL parameters.
    const auto algorithm =
        QByteArrayLiteral("\x06\x09\x2a\x86\x48\x86\xf7\x0d\x01\x01\x01\x05\x00");
    return publicInfo(
        algorithm, Der::write(Der::Sequence, unsignedInteger(modulus) + unsignedInteger(exponent)));
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
