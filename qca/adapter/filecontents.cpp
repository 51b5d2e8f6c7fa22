// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filecontents.h"

#include "qca/asn1/der.h"
#include "qca/asn1/pem.h"
#include "qca/keys/privatekeyreader.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/crlcontext.h"
#include "qca/x509/makecertificate.h"
#include "qca/x509/requestdata.h"
#include "qca/x509/signeddata.h"

#include <QTextCodec>

#include <algorithm>
#include <optional>

namespace Trivex {

namespace {

/// The tags of the first elements in a SEQUENCE; -1 where there are fewer.
struct Shape {
    int first = -1;
    int second = -1;
    int third = -1;
    int count = 0;
    Der::Slice firstContent;
    Der::Slice secondContent;

    explicit Shape(Der::Slice sequence)
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
    /// Body, algorithm and signature: certificates, requests and lists.
    bool isSealed() const
    {
        return first == Der::Sequence && second == Der::Sequence && third == Der::BitString
            && count == 3;
    }

private:
    static constexpr int MostElements = 12;
};

FileObject objectOf(FileObject::Kind kind, const QByteArray &der)
{
    FileObject object;
    object.kind = kind;
    object.der = der;
    return object;
}

std::optional<FileObject> sealedObject(const QByteArray &der)
{
    if (CertificateData::fromDer(der))
        return objectOf(FileObject::Certificate, der);
    // A list before a request: it may look like one whose name is its algorithm.
    if (CrlContext(certificateProvider()).fromDER(der) == QCA::ConvertGood)
        return objectOf(FileObject::RevocationList, der);
    if (RequestData::fromDer(der))
        return objectOf(FileObject::Request, der);
    return std::nullopt;
}

FileObject encryptedKey()
{
    FileObject object;
    object.kind = FileObject::PrivateKey;
    object.isEncrypted = true;
    return object;
}

std::optional<FileObject> privateKey(const QByteArray &der)
{
    FileObject object;
    object.kind = FileObject::PrivateKey;
    object.secret = der;
    KeyMaterial material;
    if (readPrivateKey(object.secret, {}, &material) != QCA::ConvertGood || !material.isPrivate())
        return std::nullopt;
    return object;
}

/// RSAPublicKey (RFC 8017, A.1.1): a long odd modulus and a short exponent.
bool isRsaPublicKey(const Shape &shape)
{
    constexpr int ShortestModulus = 64;
    constexpr int LongestExponent = 8;
    // Both are odd, unlike the generator 2 of Diffie-Hellman parameters, which look the same.
    const auto isOdd = [](Der::Slice number) {
        const QByteArray octets = number.bytes();
        return !octets.isEmpty() && (octets.back() & 1) == 1;
    };
    return shape.first == Der::Integer && shape.second == Der::Integer && shape.count == 2
        && shape.firstContent.size >= ShortestModulus && shape.secondContent.size <= LongestExponent
        && isOdd(shape.firstContent) && isOdd(shape.secondContent);
}

/// Ecdsa-Sig-Value (RFC 3279, 2.2.3) of any usual curve.
bool isCurveSignature(const Shape &shape)
{
    const auto isNumber = [](Der::Slice content) {
        return content.size >= 20 && content.size <= 67;
    };
    return shape.first == Der::Integer && shape.second == Der::Integer && shape.count == 2
        && isNumber(shape.firstContent) && isNumber(shape.secondContent);
}

/// PFX ::= SEQUENCE { version INTEGER (3), authSafe ContentInfo, ... } (RFC 7292, 4).
bool isBundle(const Shape &shape)
{
    return shape.first == Der::Integer && shape.firstContent.size == 1
        && shape.firstContent.at(0) == 3 && shape.second == Der::Sequence && shape.count <= 3
        && Der::Reader(shape.secondContent).peek() == Der::ObjectIdentifier;
}

/// The beginning of one is enough: a bundle that is cut off is to be reported as a bundle.
bool beginsAsBundle(const QByteArray &bytes)
{
    if (bytes.size() < 8 || bytes.at(0) != Der::Sequence)
        return false;
    const auto length = uchar(bytes.at(1));
    const int body = 2 + (length > 0x80 ? length - 0x80 : 0);
    return bytes.mid(body, 3) == QByteArray("\x02\x01\x03", 3);
}

/// Whether a PEM block says that it is something of ours: other programs have blocks of their own.
bool namesOurs(const QByteArray &label)
{
    static const char *const marks[] = {"CERTIFICATE", "PRIVATE KEY", "PUBLIC KEY",
                                        "CRL",         "PKCS",        "CMS"};
    return !label.startsWith("PGP ") && !label.startsWith("SSH2 ")
        && std::any_of(std::begin(marks), std::end(marks),
                       [&label](const char *mark) { return label.contains(mark); });
}

/// Collects what the elements of a file are.
class Collector {
public:
    /// One element of DER or BER; false when it is nothing that is known here.
    bool take(const Der::Element &element)
    {
        if (element.tag != Der::Sequence)
            return false;
        const Shape shape(element.content);
        QByteArray der = element.whole.bytes();
        if (shape.isSealed())
            return takeSealed(der);
        if (shape.first == Der::ObjectIdentifier)
            return takeSignedData(der);
        if (isBundle(shape)) {
            contents.form = FileContents::Bundle;
            return true;
        }
        const bool isKey = takeKey(der, shape);
        if (isKey && contents.objects.last().kind == FileObject::PrivateKey)
            der.fill(0);
        return isKey;
    }

    void takeBlock(const PemBlock &block)
    {
        // Encrypted as RFC 1421 has it, or by the programs of SSH.
        if (block.label.endsWith("PRIVATE KEY")
            && (block.header.contains("ENCRYPTED") || block.label.startsWith("OPENSSH"))) {
            contents.objects += encryptedKey();
            return;
        }
        Der::Element element;
        if (!Der::Reader(Der::sliceOf(block.data)).next(&element) || !take(element))
            contents.broken += namesOurs(block.label) ? 1 : 0;
    }

    FileContents contents;

private:
    bool takeSealed(const QByteArray &der)
    {
        if (const auto object = sealedObject(der))
            contents.objects += *object;
        else
            ++contents.broken;
        return true;
    }

    bool takeSignedData(const QByteArray &der)
    {
        SignedData data;
        if (!SignedData::read(der, &data))
            return false;
        contents.form = data.signers > 0 ? FileContents::Message : FileContents::Collection;
        for (const QList<QByteArray> &members : {data.certificates, data.lists}) {
            for (const QByteArray &member : members)
                takeSealed(member);
        }
        return true;
    }

    bool takeKey(const QByteArray &der, const Shape &shape)
    {
        const bool isPublic =
            shape.first == Der::Sequence && shape.second == Der::BitString && shape.count == 2;
        if (isPublic || isRsaPublicKey(shape)) {
            contents.objects += objectOf(FileObject::PublicKey, der);
            return true;
        }
        // EncryptedPrivateKeyInfo (RFC 5958, 3).
        if (shape.first == Der::Sequence && shape.second == Der::OctetString && shape.count == 2) {
            contents.objects += encryptedKey();
            return true;
        }
        if (shape.first != Der::Integer)
            return false;
        const auto key = privateKey(der);
        if (key)
            contents.objects += *key;
        return key.has_value();
    }
};

/// Text that some editors save with two bytes a letter.
QByteArray plainBytes(const QByteArray &bytes)
{
    const bool isWide = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    const QTextCodec *codec = isWide ? QTextCodec::codecForName("UTF-16") : nullptr;
    return codec ? codec->toUnicode(bytes).toUtf8() : bytes;
}

/// What a text without PEM lines decodes to, when it is the Base64 of something in DER.
QByteArray fromBareBase64(const QByteArray &bytes)
{
    const QByteArray text = bytes.trimmed();
    if (!text.startsWith("MI"))
        return {};
    QByteArray joined;
    joined.reserve(text.size());
    for (const char c : text) {
        if (c != '\n' && c != '\r' && c != ' ' && c != '\t')
            joined += c;
    }
    const auto decoded = QByteArray::fromBase64Encoding(
        joined, QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? decoded.decoded : QByteArray();
}

FileContents fromDer(const QByteArray &bytes)
{
    Collector collector;
    Der::Reader reader(Der::sliceOf(bytes));
    Der::Element element;
    // What follows may be another certificate, or a line break.
    while (reader.next(&element) && collector.take(element)) { }
    FileContents &contents = collector.contents;
    if (contents.form == FileContents::Document && !contents.objects.isEmpty())
        contents.form = FileContents::Objects;
    else if (contents.form == FileContents::Document && beginsAsBundle(bytes))
        contents.form = FileContents::Bundle;
    else if (contents.form == FileContents::Document && contents.broken > 0)
        contents.form = FileContents::Damaged;
    return contents;
}

/// The text behind the first "BEGIN", where a block that has no end may stand.
QByteArray firstLabel(const QByteArray &text)
{
    const QByteArray mark("-----BEGIN ");
    const int begin = text.indexOf(mark);
    constexpr int LongestLabel = 60;
    return begin < 0 ? QByteArray()
                     : text.mid(begin + mark.size(), LongestLabel).split('-').first();
}

FileContents fromPem(const QByteArray &text)
{
    Collector collector;
    int broken = 0;
    QList<PemBlock> blocks = readPem(text, &broken);
    for (PemBlock &block : blocks) {
        collector.takeBlock(block);
        block.data.fill(0); // it may be a key
    }
    FileContents &contents = collector.contents;
    if (broken > 0 && (!contents.objects.isEmpty() || namesOurs(firstLabel(text))))
        contents.broken += broken;
    if (contents.form == FileContents::Document && !contents.objects.isEmpty())
        contents.form = FileContents::Objects;
    else if (contents.form == FileContents::Document && contents.broken > 0)
        contents.form = FileContents::Damaged;
    return contents;
}

/// A signature in itself has no mark at all: RSA's is as long as its key, and looks like noise.
bool isRawSignature(const QByteArray &bytes)
{
    static const int sizes[] = {64, 128, 256, 384, 512};
    const bool isSize =
        std::find(std::begin(sizes), std::end(sizes), bytes.size()) != std::end(sizes);
    const auto unusual = std::count_if(bytes.cbegin(), bytes.cend(), [](char c) {
        return uchar(c) >= 0x80 || (uchar(c) < 0x20 && c != '\n' && c != '\r' && c != '\t');
    });
    // Half of the letters of noise are none; text and the headers of pictures have fewer.
    if (isSize && unusual * 3 >= bytes.size())
        return QString::fromUtf8(bytes).contains(QChar::ReplacementCharacter);
    Der::Slice content;
    return Der::single(Der::sliceOf(bytes), Der::Sequence, &content)
        && isCurveSignature(Shape(content));
}

} // namespace

bool FileContents::has(FileObject::Kind kind) const
{
    return std::any_of(objects.cbegin(), objects.cend(),
                       [kind](const FileObject &object) { return object.kind == kind; });
}

FileContents readFileContents(const QByteArray &bytes)
{
    const QByteArray text = plainBytes(bytes);
    FileContents contents = fromPem(text);
    if (contents.form == FileContents::Document)
        contents = fromDer(bytes);
    if (contents.form == FileContents::Document) {
        const QByteArray decoded = fromBareBase64(text);
        if (!decoded.isEmpty())
            contents = fromDer(decoded);
    }
    if (contents.form == FileContents::Document && isRawSignature(bytes))
        contents.form = FileContents::RawSignature;
    return contents;
}

} // namespace Trivex
