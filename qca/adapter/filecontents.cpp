// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filecontents.h"

#include "qca/adapter/filekinds.h"
#include "qca/asn1/der.h"
#include "qca/asn1/pem.h"
#include "qca/base/bounds.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/privatekeyreader.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/crlcontext.h"
#include "qca/x509/makecertificate.h"
#include "qca/x509/requestdata.h"
#include "qca/x509/signeddata.h"

#include <QHash>
#include <QTextCodec>

#include <openssl/err.h>

#include <algorithm>
#include <optional>

namespace Trivex {

namespace {

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
    KeyMaterial key;
    if (readPrivateKey(der, {}, &key) != QCA::ConvertGood || !key.isPrivate())
        return std::nullopt;
    object.key = std::make_shared<const KeyMaterial>(std::move(key));
    return object;
}

/// Collects what the elements of a file are.
class Collector {
public:
    explicit Collector(const std::atomic_bool *stopped)
        : m_stopped(stopped)
    {
    }

    bool isStopped() const { return m_stopped && *m_stopped; }

    /// One element of DER or BER; false when it is nothing that is known here.
    bool addElement(const Der::Element &element)
    {
        if (element.tag != Der::Sequence)
            return false;
        const Shape shape(element.content);
        QByteArray der = element.whole.bytes();
        if (shape.isSealed())
            return takeSealed(der, shape);
        if (shape.isEncryptedMessage())
            return add(FileObject::EncryptedMessage, der);
        if (shape.isRevocationAnswer())
            return add(FileObject::RevocationAnswer, der);
        if (shape.first == Der::ObjectIdentifier)
            return takeSignedData(der);
        if (shape.isBundle()) {
            contents.form = FileContents::Bundle;
            return true;
        }
        const bool isKey = takeKey(der, shape);
        if (shape.first == Der::Integer)
            der.fill(0);
        return isKey;
    }

    void takeBlock(const PemBlock &block)
    {
        if (block.label == "OPENSSH PRIVATE KEY") {
            add(FileObject::SshKey, {});
            return;
        }
        // As RFC 1421 has it.
        if (block.label.endsWith("PRIVATE KEY") && block.header.contains("ENCRYPTED")) {
            contents.objects += encryptedKey();
            return;
        }
        Der::Element element;
        if (!Der::Reader(Der::sliceOf(block.data)).next(&element) || !addElement(element))
            contents.broken += namesOurs(block.label) ? 1 : 0;
    }

    FileContents contents;

private:
    bool add(FileObject::Kind kind, const QByteArray &der)
    {
        contents.objects += objectOf(kind, der);
        return true;
    }

    bool takeSealed(const QByteArray &der, const Shape &shape)
    {
        if (shape.isAttributeCertificate())
            return add(FileObject::AttributeCertificate, der);
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
                takeMember(member);
        }
        return true;
    }

    void takeMember(const QByteArray &member)
    {
        Der::Slice content;
        if (isStopped())
            return;
        if (Der::single(Der::sliceOf(member), Der::Sequence, &content))
            takeSealed(member, Shape(content));
        else
            takeOtherMember(member);
    }

    /// Attribute certificates stand among the others by a tag of their own (RFC 5652, 10.2.2).
    void takeOtherMember(const QByteArray &member)
    {
        Der::Element element;
        const bool isElement = Der::Reader(Der::sliceOf(member)).next(&element);
        const bool isAttributes = isElement
            && (element.tag == Der::context(1) || element.tag == Der::context(2))
            && Shape(element.content).isSealed();
        if (!isAttributes) {
            ++contents.broken;
            return;
        }
        QByteArray der = member;
        der[0] = char(Der::Sequence);
        add(FileObject::AttributeCertificate, der);
    }

    bool takeKey(const QByteArray &der, const Shape &shape)
    {
        const bool isPublic =
            shape.first == Der::Sequence && shape.second == Der::BitString && shape.count == 2;
        if (isPublic || shape.isRsaPublicKey())
            return add(FileObject::PublicKey, der);
        // EncryptedPrivateKeyInfo (RFC 5958, 3).
        if (shape.first == Der::Sequence && shape.second == Der::OctetString && shape.count == 2) {
            contents.objects += encryptedKey();
            return true;
        }
        if (shape.first != Der::Integer)
            return false;
        if (++m_keys > MaxFileKeys) {
            ++contents.unreadKeys;
            return true;
        }
        const auto key = privateKey(der);
        if (key)
            contents.objects += *key;
        return key.has_value();
    }

    const std::atomic_bool *m_stopped;
    int m_keys = 0;
};

/// Text that some editors save with two bytes a letter, or with a byte order mark before it.
QByteArray plainBytes(const QByteArray &bytes)
{
    const QByteArray mark("\xef\xbb\xbf");
    if (bytes.startsWith(mark))
        return bytes.mid(mark.size());
    const bool isWide = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    const QTextCodec *codec = isWide ? QTextCodec::codecForName("UTF-16") : nullptr;
    return codec ? codec->toUnicode(bytes).toUtf8() : bytes;
}

/// The DER in a text that is Base64 without PEM lines; empty for other texts.
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
    // One that is cut off may end in the middle of a group.
    if (!joined.endsWith('='))
        joined.truncate(joined.size() / 4 * 4);
    const auto decoded = QByteArray::fromBase64Encoding(
        joined, QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? decoded.decoded : QByteArray();
}

FileContents fromDer(const QByteArray &bytes, const std::atomic_bool *stopped)
{
    Collector collector(stopped);
    Der::Reader reader(Der::sliceOf(bytes));
    Der::Slice rest = reader.rest();
    Der::Element element;
    // Another certificate may follow, or a line break.
    while (!collector.isStopped() && reader.next(&element) && collector.addElement(element))
        rest = reader.rest();
    FileContents &contents = collector.contents;
    if (beginsAsOurs(rest) && !beginsAsBundle(rest.view()))
        ++contents.broken;
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

FileContents fromPem(const QByteArray &text, const std::atomic_bool *stopped)
{
    Collector collector(stopped);
    int broken = 0;
    QList<PemBlock> blocks = readPem(text, &broken);
    for (PemBlock &block : blocks) {
        if (!collector.isStopped())
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

/// Tells each private key which of the objects is its certificate.
class Pairing {
public:
    explicit Pairing(FileContents *contents)
        : m_objects(contents->objects)
    {
        for (int i = 0; i < m_objects.size(); ++i) {
            const FileObject &object = m_objects.at(i);
            if (object.kind != FileObject::Certificate)
                continue;
            const auto data = CertificateData::fromDer(object.der);
            const QByteArray half = data ? comparablePublicInfo(data->publicInfo()) : QByteArray();
            if (!m_byPublicKey.contains(half))
                m_byPublicKey.insert(half, i);
        }
    }

    void run(const std::atomic_bool *stopped)
    {
        for (FileObject &object : m_objects) {
            if (stopped && *stopped)
                return;
            if (object.key)
                object.certificate = certificateOf(*object.key);
        }
    }

private:
    int certificateOf(const KeyMaterial &key)
    {
        const QByteArray half = comparablePublicInfo(key.publicInfo());
        const auto found = m_byPublicKey.constFind(half);
        if (half.isEmpty() || found != m_byPublicKey.constEnd())
            return half.isEmpty() ? -1 : *found;
        // One key has several encodings: a curve by its name or by its numbers.
        for (auto one = m_byPublicKey.cbegin(); one != m_byPublicKey.cend(); ++one) {
            if (++m_checks > MaxIssuerChecks)
                break;
            const KeyMaterial other = KeyMaterial::fromPublicInfo(one.key());
            if (other.keyType() == key.keyType() && key.native() && other.native()
                && EVP_PKEY_eq(key.native(), other.native()) == 1)
                return *one;
        }
        ERR_clear_error();
        return -1;
    }

    QVector<FileObject> &m_objects;
    QHash<QByteArray, int> m_byPublicKey;
    int m_checks = 0;
};

} // namespace

bool FileContents::has(FileObject::Kind kind) const
{
    return std::any_of(objects.cbegin(), objects.cend(),
                       [kind](const FileObject &object) { return object.kind == kind; });
}

FileContents readFileContents(const QByteArray &bytes, const std::atomic_bool *stopped)
{
    const QByteArray text = plainBytes(bytes);
    FileContents contents = fromPem(text, stopped);
    if (contents.form == FileContents::Document && contents.unreadKeys == 0)
        contents = fromDer(bytes, stopped);
    if (contents.form == FileContents::Document) {
        const QByteArray decoded = fromBareBase64(text);
        if (!decoded.isEmpty())
            contents = fromDer(decoded, stopped);
    }
    if (contents.form == FileContents::Document && isRawSignature(bytes))
        contents.form = FileContents::RawSignature;
    if (contents.has(FileObject::PrivateKey) && contents.has(FileObject::Certificate))
        Pairing(&contents).run(stopped);
    return contents;
}

QCA::PrivateKey privateKeyOf(const FileObject &object)
{
    QCA::PrivateKey key;
    QCA::Provider *provider = object.key ? certificateProvider() : nullptr;
    if (provider)
        key.change(new PKeyContainer(softwareKeyProvider(provider), provider,
                                     makeKeyContext(*object.key, provider)));
    return key;
}

} // namespace Trivex
