// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Signed and encrypted messages (CMS, RFC 5652), in DER and BER, with and without their document.
#include "fuzz/target.h"
#include "qca/cms/envelope.h"
#include "qca/cms/messagecheck.h"
#include "qca/cms/messageparts.h"

using namespace Trivex;

namespace {

/// How much of the document there is.
qint64 length(const Content &content)
{
    LongWork work;
    qint64 bytes = 0;
    readContent(content, work, [&](const char *, qint64 size) {
        bytes += size;
        return true;
    });
    return bytes;
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    isEncryptedMessage(input);
    const ByteSourcePtr source = byteSourceOf(input);
    const SignedMessage message = SignedMessage::read(source);
    if (message.isNull())
        return;
    if (message.isAttached())
        check(length(message.content) <= input.size(), "a document is no longer than its message");
    LongWork work;
    checkMessage(message, {}, {}, work);
    checkMessage(message, wholeContent(byteSourceOf("What is signed")), {}, work);
}
