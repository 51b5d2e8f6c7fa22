// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/documentsignature.h"

#include "qca/asn1/handles.h"
#include "qca/cms/messagecheck.h"
#include "qca/keys/gostengine.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

DocumentSignature::Problem problemOf(ReadResult result)
{
    switch (result) {
    case ReadResult::Done:
        return DocumentSignature::NoProblem;
    case ReadResult::Cancelled:
        return DocumentSignature::Cancelled;
    case ReadResult::Changed:
        return DocumentSignature::Changed;
    case ReadResult::Refused:
        return DocumentSignature::NotWritten;
    default:
        return DocumentSignature::Unreadable;
    }
}

const EVP_MD *digestNamed(const QByteArray &name)
{
    if (name.startsWith("md_gost"))
        loadGostEngine();
    return EVP_get_digestbyname(name.constData());
}

QByteArray finished(EVP_MD_CTX *context)
{
    QByteArray digest(EVP_MAX_MD_SIZE, '\0');
    unsigned size = 0;
    if (EVP_DigestFinal_ex(context, reinterpret_cast<unsigned char *>(digest.data()), &size) != 1)
        return {};
    digest.truncate(int(size));
    return digest;
}

} // namespace

DocumentSignature::DocumentSignature(const Files &files, const QByteArray &certificate,
                                     const QList<QByteArray> &chain)
    : m_files(files)
    , m_message(certificate, chain)
{
}

DocumentSignature::~DocumentSignature() = default;

DocumentSignature::Problem DocumentSignature::readDocument(const ContentSink &sink)
{
    return problemOf(readContent(wholeContent(m_document), m_work, sink));
}

DocumentSignature::Problem DocumentSignature::digest(const QDateTime &time)
{
    if (!m_message.isValid())
        return NoScheme;
    const EVP_MD *digest = digestNamed(m_message.scheme().digest);
    const DigestContextHandle context(EVP_MD_CTX_new());
    if (!digest || !context || EVP_DigestInit_ex(context.get(), digest, nullptr) != 1) {
        ERR_clear_error();
        return NoDigest;
    }
    m_document = openByteSource(m_files.document);
    if (!m_document)
        return Unreadable;
    if (m_document->isFile(m_files.target))
        return SameFile;
    // It is read once more when the result is checked, and once to be copied.
    m_work.expect(m_document->size() * (m_files.form == Attached ? 3 : 2));
    const Problem problem = readDocument([&context](const char *data, qint64 size) {
        return EVP_DigestUpdate(context.get(), data, size_t(size)) == 1;
    });
    const QByteArray result = finished(context.get());
    if (problem == NoProblem && result.isEmpty())
        return NoDigest;
    m_message.setDigest(result, time);
    return problem;
}

DocumentSignature::Problem DocumentSignature::writeAttached()
{
    QByteArray before;
    QByteArray behind;
    m_message.attached(m_document->size(), &before, &behind);
    if (!m_target->write(before.constData(), before.size()))
        return NotWritten;
    const Problem problem =
        readDocument([this](const char *data, qint64 size) { return m_target->write(data, size); });
    if (problem != NoProblem)
        return problem;
    return m_target->write(behind.constData(), behind.size()) ? NoProblem : NotWritten;
}

DocumentSignature::Problem DocumentSignature::write()
{
    m_target = std::make_unique<AtomicFile>(m_files.target);
    if (!m_target->isOpen())
        return NotWritten;
    if (m_files.form == Attached) {
        const Problem problem = writeAttached();
        return problem == NoProblem ? check() : problem;
    }
    const QByteArray message = m_message.detached();
    return m_target->write(message.constData(), message.size()) ? check() : NotWritten;
}

DocumentSignature::Problem DocumentSignature::check()
{
    const SignedMessage message = SignedMessage::read(openByteSource(m_target->partPath()));
    const Content document = wholeContent(openByteSource(m_files.document));
    if (message.isNull())
        return NotWritten;
    if (document.isNull())
        return Changed;
    const MessageReport report = checkMessage(message, document, {}, m_work);
    if (report.problem == MessageReport::Cancelled)
        return Cancelled;
    if (report.problem != MessageReport::NoProblem)
        return Changed;
    switch (report.signers.value(0).verdict) {
    case SignerReport::Good:
        return m_document->isUnchanged() && m_document->isFile(m_files.document) ? NoProblem
                                                                                 : Changed;
    case SignerReport::DocumentChanged:
        return Changed;
    default:
        return NotGood;
    }
}

DocumentSignature::Problem DocumentSignature::place(bool mayReplace)
{
    // A link may have come there since.
    if (m_document && m_document->isFile(m_files.target))
        return SameFile;
    switch (m_target ? m_target->place(mayReplace) : WriteResult::Failed) {
    case WriteResult::Written:
        return NoProblem;
    case WriteResult::Exists:
        return Exists;
    default:
        return NotWritten;
    }
}

} // namespace Trivex
