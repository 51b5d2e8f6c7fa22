// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/messagework.h"

#include "providers/openssl/messagesignatures.h"
#include "qca/asn1/der.h"
#include "qca/asn1/pem.h"
#include "qca/cms/documentkey.h"
#include "qca/cms/envelope.h"
#include "qca/cms/messagecheck.h"
#include "qca/cms/messagewriter.h"
#include "qca/keys/keyoperation.h"
#include "qca/keys/pkeycontainer.h"

namespace Trivex {

namespace {

using Format = QCA::SecureMessage::Format;

/// The name that stock code gives every message, and that all programs read.
constexpr char PemLabel[] = "PKCS7";

QByteArray inFormat(const QByteArray &message, Format format)
{
    return format == QCA::SecureMessage::Ascii ? writePem(PemLabel, message) : message;
}

QByteArray derOf(const QByteArray &message)
{
    if (message.startsWith(char(Der::Sequence)))
        return message;
    const QList<PemBlock> blocks = readPem(message);
    return blocks.isEmpty() ? QByteArray() : blocks.first().data;
}

MessageResult failed(QCA::SecureMessage::Error error)
{
    MessageResult result;
    result.error = error;
    return result;
}

MessageResult made(const QByteArray &output)
{
    MessageResult result;
    result.isGood = true;
    result.output = output;
    return result;
}

QList<QByteArray> encodedChain(const QCA::SecureMessageKey &key)
{
    QList<QByteArray> chain;
    const QCA::CertificateChain certificates = key.x509CertificateChain();
    for (const QCA::Certificate &certificate : certificates)
        chain += certificate.toDER();
    return chain;
}

/// Whether a stranger would find the signature good.
bool isSignatureGood(const QByteArray &detached, const QByteArray &document,
                     const QByteArray &certificate)
{
    LongWork work;
    const MessageReport report =
        checkMessage(SignedMessage::read(byteSourceOf(detached)),
                     wholeContent(byteSourceOf(document)), {certificate}, work);
    return report.signers.size() == 1 && report.signers.first().verdict == SignerReport::Good;
}

MessageResult sign(const MessageTask &task, const MessageMeans &)
{
    const QCA::SecureMessageKey signer = task.signers.value(0);
    const QList<QByteArray> chain = encodedChain(signer);
    MessageWriter message(chain.value(0), chain);
    if (!message.isValid() || !signer.havePrivate())
        return failed(QCA::SecureMessage::ErrorSignerInvalid);
    message.setBundled(task.bundlesSigner);
    const QByteArray digest = digestOfMessage(message.scheme().digest, task.input);
    if (digest.isEmpty())
        return failed(QCA::SecureMessage::ErrorSignerInvalid);
    message.setDigest(digest, QDateTime::currentDateTimeUtc());
    const QByteArray signature =
        signForMessage(signer.x509PrivateKey(), message.scheme(), message.toBeSigned());
    if (signature.isEmpty())
        return failed(QCA::SecureMessage::ErrorUnknown);
    message.setSignature(signature);
    if (!isSignatureGood(message.detached(), task.input, chain.first()))
        return failed(QCA::SecureMessage::ErrorCertKeyMismatch);
    MessageResult result = made({});
    result.digest = QString::fromLatin1(message.scheme().digest.toLower());
    if (task.mode == QCA::SecureMessage::Detached) {
        result.signature = inFormat(message.detached(), task.format);
        return result;
    }
    QByteArray before;
    QByteArray behind;
    message.attached(task.input.size(), &before, &behind);
    result.output = inFormat(before + task.input + behind, task.format);
    return result;
}

QByteArray documentOf(const SignedMessage &message)
{
    QByteArray document;
    LongWork work;
    const ReadResult result =
        readContent(message.content, work, [&document](const char *data, qint64 size) {
            document.append(data, int(size));
            return true;
        });
    return result == ReadResult::Done ? document : QByteArray();
}

MessageResult verify(const MessageTask &task, const MessageMeans &means)
{
    const bool isDetached = !task.signature.isEmpty();
    SignedMessage message =
        SignedMessage::read(byteSourceOf(isDetached ? task.signature : task.input));
    if (message.isNull())
        return failed(QCA::SecureMessage::ErrorFormat);
    Content document;
    if (isDetached) {
        // The document that was handed over is the one to be checked, whatever else is in there.
        message.content = Content();
        document = wholeContent(byteSourceOf(task.input));
    }
    LongWork work;
    const MessageReport report = checkMessage(message, document, knownCertificates(means), work);
    if (report.problem == MessageReport::Unreadable)
        return failed(QCA::SecureMessage::ErrorFormat);
    MessageResult result = made(message.isAttached() ? documentOf(message) : QByteArray());
    result.signers = signaturesOf(report, means);
    return result;
}

MessageResult encrypt(const MessageTask &task, const MessageMeans &)
{
    QList<QByteArray> recipients;
    for (const QCA::SecureMessageKey &recipient : task.recipients)
        recipients += encodedChain(recipient).value(0);
    const QByteArray message = encryptedFor(recipients, task.input);
    if (message.isEmpty())
        return failed(QCA::SecureMessage::ErrorEncryptInvalid);
    // Stock code neither writes nor reads a text here, whatever the format.
    return made(message);
}

MessageResult decrypt(const MessageTask &task, const MessageMeans &means)
{
    const QByteArray message = derOf(task.input);
    if (!isEncryptedMessage(message))
        return failed(QCA::SecureMessage::ErrorFormat);
    for (const QCA::SecureMessageKey &key : means.keys) {
        const QCA::PrivateKey secret = key.x509PrivateKey();
        const auto *container = dynamic_cast<const QCA::PKeyContext *>(secret.context());
        if (!container || !container->key())
            continue;
        const KeyMaterial material = materialOf(container->key());
        const auto document = decryptedBy(material.native(), encodedChain(key).value(0), message);
        if (document)
            return made(*document);
    }
    return failed(QCA::SecureMessage::ErrorUnknown);
}

struct Work {
    QCA::MessageContext::Operation operation;
    MessageResult (*work)(const MessageTask &task, const MessageMeans &means);
};

constexpr Work Works[] = {
    {QCA::MessageContext::Sign, &sign},
    {QCA::MessageContext::Verify, &verify},
    {QCA::MessageContext::Encrypt, &encrypt},
    {QCA::MessageContext::Decrypt, &decrypt},
};

} // namespace

MessageResult workOn(const MessageTask &task, const MessageMeans &means)
{
    for (const Work &one : Works) {
        if (one.operation == task.operation)
            return one.work(task, means);
    }
    return failed(QCA::SecureMessage::ErrorUnknown);
}

} // namespace Trivex
