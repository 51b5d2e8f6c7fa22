// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filekinds.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/attributeids.h"

#include <QMimeDatabase>

#include <algorithm>
#include <array>

namespace Trivex {

namespace {

constexpr int MostElements = 12;

/// The tag and the content of what begins at `bytes`, of which the end may be missing.
struct Beginning {
    int tag = -1;
    qint64 length = 0; ///< as it is written
    Der::Slice content; ///< as much of it as there is
    bool isCut = false;
};

Beginning beginningOf(Der::Slice bytes)
{
    constexpr int LongestLength = 4;
    Beginning result;
    if (bytes.size < 2)
        return result;
    int header = 2;
    qint64 length = bytes.at(1);
    if (length >= 0x80) {
        const int octets = int(length - 0x80);
        header += octets;
        // An indefinite length has no end that could be missing.
        if (octets == 0 || octets > LongestLength || header > bytes.size)
            return result;
        length = 0;
        for (int i = 2; i < header; ++i)
            length = length << 8 | bytes.at(i);
    }
    result.tag = bytes.at(0);
    result.length = length;
    result.isCut = length > bytes.size - header;
    result.content = {bytes.data + header, int(qMin<qint64>(length, bytes.size - header))};
    return result;
}

/// Behind the element at its beginning.
Der::Slice behind(Der::Slice slice)
{
    const Beginning first = beginningOf(slice);
    if (first.tag < 0 || first.isCut)
        return {};
    const auto used = int(first.content.data - slice.data) + first.content.size;
    return {slice.data + used, slice.size - used};
}

bool isOneOf(int tag, std::initializer_list<int> tags)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

/// No byte of noise is much more frequent than the others; programs and pictures are full of some.
bool looksRandom(const QByteArray &bytes)
{
    std::array<int, 256> counts = {};
    for (const char c : bytes)
        ++counts[uchar(c)];
    const int most = *std::max_element(counts.begin(), counts.end());
    const auto unusual = std::count_if(bytes.cbegin(), bytes.cend(), [](char c) {
        return uchar(c) >= 0x80 || (uchar(c) < 0x20 && c != '\n' && c != '\r' && c != '\t');
    });
    // Half of the letters of noise are none; text and the headers of pictures have fewer.
    return most <= 6 + bytes.size() / 64 && unusual * 3 >= bytes.size()
        && QString::fromUtf8(bytes).contains(QChar::ReplacementCharacter);
}

/// The lengths that most signatures have: RSA of 1024 to 4096 bits, curves of 256 and 512.
bool isUsualLength(int size)
{
    static const int sizes[] = {64, 128, 256, 384, 512};
    return std::find(std::begin(sizes), std::end(sizes), size) != std::end(sizes);
}

/// Those of RSA keys up to the largest that can be used, in steps of 128 bits, and of the curves
/// P-192, P-224, P-521 and Ed448 and of DSA.
bool isPossibleLength(int size)
{
    static const int sizes[] = {40, 48, 56, 114, 132};
    return std::find(std::begin(sizes), std::end(sizes), size) != std::end(sizes)
        || (size >= 64 && size <= 2048 && size % 16 == 0);
}

} // namespace

Shape::Shape(Der::Slice sequence)
{
    Der::Reader reader(sequence);
    Der::Element element;
    while (count < MostElements && reader.next(&element)) {
        if (count == 0) {
            first = element.tag;
            firstContent = element.content;
        } else if (count == 1) {
            second = element.tag;
            secondContent = element.content;
        } else if (count == 2) {
            third = element.tag;
        }
        ++count;
    }
}

bool Shape::isSealed() const
{
    return first == Der::Sequence && second == Der::Sequence && third == Der::BitString
        && count == 3;
}

bool Shape::isAttributeCertificate() const
{
    if (!isSealed())
        return false;
    const Shape body(firstContent);
    // Holder and issuer come before the algorithm and the number; certificates have these two
    // the other way round, and lists and requests have a name where the issuer is.
    return body.first == Der::Integer && body.firstContent.size == 1 && body.firstContent.at(0) == 1
        && body.second == Der::Sequence
        && isOneOf(Der::Reader(body.secondContent).peek(),
                   {Der::context(0), Der::context(1), Der::context(2)});
}

bool Shape::isRevocationAnswer() const
{
    if (first != Der::Enumerated || firstContent.size != 1 || count > 2)
        return false;
    // An answer without a certificate's state has its status alone.
    return count == 1 || second == Der::context(0);
}

bool Shape::isEncryptedMessage() const
{
    static const char *const types[] = {
        Oid::EnvelopedData,
        Oid::SignedAndEnvelopedData,
        Oid::EncryptedData,
        Oid::AuthEnvelopedData,
    };
    if (first != Der::ObjectIdentifier || second != Der::context(0) || count != 2)
        return false;
    const QByteArray type = Der::oidText(firstContent);
    return std::any_of(std::begin(types), std::end(types),
                       [&type](const char *one) { return type == one; });
}

bool Shape::isBundle() const
{
    return first == Der::Integer && firstContent.size == 1 && firstContent.at(0) == 3
        && second == Der::Sequence && count <= 3
        && Der::Reader(secondContent).peek() == Der::ObjectIdentifier;
}

bool Shape::isRsaPublicKey() const
{
    constexpr int ShortestModulus = 64;
    constexpr int LongestExponent = 8;
    // Both are odd, unlike the generator 2 of Diffie-Hellman parameters, which look the same.
    const auto isOdd = [](Der::Slice number) {
        const QByteArray octets = number.bytes();
        return !octets.isEmpty() && (octets.back() & 1) == 1;
    };
    return first == Der::Integer && second == Der::Integer && count == 2
        && firstContent.size >= ShortestModulus && secondContent.size <= LongestExponent
        && isOdd(firstContent) && isOdd(secondContent);
}

bool Shape::isCurveSignature() const
{
    const auto isNumber = [](Der::Slice content) {
        return content.size >= 20 && content.size <= 67;
    };
    return first == Der::Integer && second == Der::Integer && count == 2 && isNumber(firstContent)
        && isNumber(secondContent);
}

bool beginsAsBundle(const QByteArray &bytes)
{
    if (bytes.size() < 8 || bytes.at(0) != Der::Sequence)
        return false;
    const auto length = uchar(bytes.at(1));
    const int body = 2 + (length > 0x80 ? length - 0x80 : 0);
    return bytes.mid(body, 3) == QByteArray("\x02\x01\x03", 3);
}

bool beginsAsOurs(Der::Slice bytes)
{
    // Shorter beginnings are anybody's.
    constexpr int Least = 12;
    constexpr int LeastHeader = 2;
    const Beginning whole = beginningOf(bytes);
    if (whole.tag != Der::Sequence || !whole.isCut || bytes.size < Least)
        return false;
    const Beginning first = beginningOf(whole.content);
    if (first.tag < 0 || first.length + LeastHeader > whole.length)
        return false;
    const Beginning inner = beginningOf(first.content);
    const Der::Slice next = behind(whole.content);
    const int second = next.isEmpty() ? -1 : next.at(0);
    const bool isNumber = first.tag == Der::Integer && first.length <= 1;
    // A message says its type, a key its version; what is signed has a body with a version, a
    // number, a holder or an algorithm before all else, and so has a public key.
    return (first.tag == Der::ObjectIdentifier && second == Der::context(0)
            && Der::oidText(first.content).startsWith(Oid::PkcsArc))
        || (isNumber && isOneOf(second, {Der::Sequence, Der::Integer, Der::OctetString}))
        || (first.tag == Der::Sequence && inner.length + LeastHeader <= first.length
            && isOneOf(inner.tag,
                       {Der::context(0), Der::Integer, Der::Sequence, Der::ObjectIdentifier}));
}

bool namesOurs(const QByteArray &label)
{
    static const char *const marks[] = {"CERTIFICATE", "PRIVATE KEY", "PUBLIC KEY", "CRL",
                                        "PKCS",        "CMS",         "OCSP"};
    return !label.startsWith("PGP ") && !label.startsWith("SSH2 ")
        && std::any_of(std::begin(marks), std::end(marks),
                       [&label](const char *mark) { return label.contains(mark); });
}

bool isRawSignature(const QByteArray &bytes)
{
    const int size = bytes.size();
    if ((isUsualLength(size) || isPossibleLength(size)) && looksRandom(bytes)) {
        // Compressed files look like noise, too, and begin with a mark of their own.
        return isUsualLength(size) || QMimeDatabase().mimeTypeForData(bytes).isDefault();
    }
    Der::Slice content;
    return Der::single(Der::sliceOf(bytes), Der::Sequence, &content)
        && Shape(content).isCurveSignature();
}

} // namespace Trivex
