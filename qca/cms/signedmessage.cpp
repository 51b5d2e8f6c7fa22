// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/signedmessage.h"

#include "qca/asn1/der.h"
#include "qca/asn1/nativecoding.h"
#include "qca/asn1/pem.h"
#include "qca/base/bounds.h"
#include "qca/cms/messageparts.h"
#include "qca/cms/signercheck.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

SignedMessage fromBer(const ByteSourcePtr &source)
{
    MessageParts parts;
    if (!MessageParts::read(source, &parts))
        return {};
    return {parts.skeleton, parts.contentType, parts.content};
}

SignedMessage fromBytes(const QByteArray &bytes)
{
    return bytes.isEmpty() ? SignedMessage() : fromBer(byteSourceOf(bytes));
}

SignedMessage fromPem(const QByteArray &text)
{
    int broken = 0;
    const QList<PemBlock> blocks = readPem(text, &broken);
    for (const PemBlock &block : blocks) {
        const SignedMessage message = fromBytes(block.data);
        if (!message.isNull())
            return message;
    }
    return {};
}

SignedMessage fromBareBase64(const QByteArray &text)
{
    const auto decoded = QByteArray::fromBase64Encoding(
        text.simplified().replace(' ', ""),
        QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? fromBytes(decoded.decoded) : SignedMessage();
}

/// A mail with the message as its only part, or with the signed part before its signature.
SignedMessage fromMail(const QByteArray &text)
{
    const BioHandle input(BIO_new_mem_buf(text.constData(), text.size()));
    BIO *part = nullptr;
    const CmsHandle native(input ? SMIME_read_CMS(input.get(), &part) : nullptr);
    const BioHandle owner(part);
    SignedMessage message = fromBytes(encodeNative(native.get(), i2d_CMS_ContentInfo));
    if (!message.isNull() && part && !message.isAttached()) {
        char *data = nullptr;
        const long size = BIO_get_mem_data(part, &data);
        message.content = wholeContent(byteSourceOf(QByteArray(data, int(size))));
    }
    ERR_clear_error();
    return message;
}

bool namesMessageType(const QByteArray &text)
{
    return text.contains("pkcs7-mime") || text.contains("pkcs7-signature");
}

} // namespace

SignedMessage SignedMessage::read(const ByteSourcePtr &source)
{
    char first = 0;
    if (!source || !source->readAt(0, &first, 1))
        return {};
    if (first == Der::Sequence)
        return fromBer(source);
    if (source->size() > MaxFileBytes)
        return {};
    QByteArray text(int(source->size()), Qt::Uninitialized);
    if (!source->readAt(0, text.data(), text.size()))
        return {};
    SignedMessage message = fromPem(text);
    if (message.isNull() && text.trimmed().startsWith("MI"))
        message = fromBareBase64(text);
    if (message.isNull() && namesMessageType(text))
        message = fromMail(text);
    return message;
}

} // namespace Trivex
