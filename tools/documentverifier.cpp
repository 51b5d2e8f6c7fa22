// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/documentverifier.h"

#include "qca/adapter/entries.h"
#include "qca/base/atomicfile.h"
#include "qca/cms/messagecheck.h"
#include "qca/questions/background.h"
#include "qca/tokens/userstore.h"
#include "tools/rowentry.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace Trivex {

namespace {

struct ErrorText {
    DocumentVerifier::Error error;
    const char *id;
};

constexpr ErrorText ErrorTexts[] = {
    //% "This file is not a signature that can be read. Ask for it to be sent again."
    {DocumentVerifier::NoMessage, QT_TRID_NOOP("trivex-app-verify-no-message")},
    //% "The signature waits for its document. Choose the document that was signed."
    {DocumentVerifier::NoDocument, QT_TRID_NOOP("trivex-app-verify-no-document")},
    {DocumentVerifier::NotRead, "trivex-app-document-not-read"},
    //% "A file was changed while it was being read. Verify once more."
    {DocumentVerifier::Changed, QT_TRID_NOOP("trivex-app-verify-moved")},
    //% "The document could not be written. Choose another folder or check the disk."
    {DocumentVerifier::NotWritten, QT_TRID_NOOP("trivex-app-verify-not-written")},
    {DocumentVerifier::Exists, "trivex-app-document-exists"},
    //% "Verifying was stopped. Start again when you like."
    {DocumentVerifier::Cancelled, QT_TRID_NOOP("trivex-app-verify-stopped")},
};

constexpr struct {
    MessageReport::Problem problem;
    DocumentVerifier::Error error;
} Errors[] = {
    {MessageReport::NoProblem, DocumentVerifier::NoError},
    {MessageReport::Unreadable, DocumentVerifier::NoMessage},
    {MessageReport::NoSigner, DocumentVerifier::NoMessage},
    {MessageReport::NoDocument, DocumentVerifier::NoDocument},
    {MessageReport::DocumentUnreadable, DocumentVerifier::NotRead},
    {MessageReport::Changed, DocumentVerifier::Changed},
    {MessageReport::Cancelled, DocumentVerifier::Cancelled},
};

DocumentVerifier::Error errorOf(MessageReport::Problem problem)
{
    for (const auto &one : Errors) {
        if (one.problem == problem)
            return one.error;
    }
    return DocumentVerifier::NoMessage;
}

QString withoutSuffix(const QString &path, const QString &suffixes)
{
    const QRegularExpression pattern(QStringLiteral("\\.(%1)$").arg(suffixes),
                                     QRegularExpression::CaseInsensitiveOption);
    QString result = path;
    return result.remove(pattern);
}

DocumentVerifier::Error copyDocument(const SignedMessage &message, LongWork &work,
                                     const QString &path, bool mayReplace)
{
    AtomicFile file(path);
    if (!file.isOpen())
        return DocumentVerifier::NotWritten;
    const ReadResult result =
        readContent(message.content, work,
                    [&file](const char *data, qint64 size) { return file.write(data, size); });
    if (result == ReadResult::Cancelled)
        return DocumentVerifier::Cancelled;
    if (result != ReadResult::Done)
        return result == ReadResult::Refused ? DocumentVerifier::NotWritten
                                             : DocumentVerifier::Changed;
    switch (file.place(mayReplace)) {
    case WriteResult::Written:
        return DocumentVerifier::NoError;
    case WriteResult::Exists:
        return DocumentVerifier::Exists;
    default:
        return DocumentVerifier::NotWritten;
    }
}

QList<QCA::Certificate> certificatesOf(const QCA::KeyStoreEntry &entry)
{
    const QCA::Certificate certificate = entryCertificate(entry);
    if (!certificate.isNull())
        return {certificate};
    const QCA::KeyBundle bundle = entryKeyBundle(entry);
    return bundle.isNull() ? QList<QCA::Certificate>() : bundle.certificateChain();
}

} // namespace

struct DocumentVerifier::Outcome {
    SignedMessage message;
    MessageReport report;
    QVector<SignerList::Signature> signatures;
    bool isDocumentMissing = false;

    void find(const QString &path, const QString &document, const QVector<ChainCandidate> &known,
              LongWork &work);
};

void DocumentVerifier::Outcome::find(const QString &path, const QString &document,
                                     const QVector<ChainCandidate> &known, LongWork &work)
{
    message = SignedMessage::read(openByteSource(path));
    const bool needsDocument = !message.isAttached() && !document.isEmpty();
    const Content outside = needsDocument ? wholeContent(openByteSource(document)) : Content();
    isDocumentMissing = needsDocument && outside.isNull();
    const Content &content = message.isAttached() ? message.content : outside;
    work.expect(content.end - content.begin);
    CandidateIndex index;
    QList<QByteArray> certificates;
    for (const ChainCandidate &candidate : known) {
        index.add(candidate);
        certificates += candidate.der;
    }
    report = checkMessage(message, outside, certificates, work);
    for (const QByteArray &der : qAsConst(report.certificates))
        index.add({der, QString(), false});
    for (const QByteArray &der : qAsConst(report.lists))
        index.addList(der);
    for (const SignerReport &signer : qAsConst(report.signers)) {
        SignerList::Signature signature;
        signature.report = signer;
        if (!signer.certificate.isEmpty())
            signature.trust = trustIn(signer, index);
        signatures += signature;
    }
}

DocumentVerifier::DocumentVerifier(QObject *parent)
    : Job(parent)
{
}

DocumentVerifier::~DocumentVerifier()
{
    if (m_work)
        m_work->cancel();
}

void DocumentVerifier::setEntries(EntryModel *entries)
{
    if (entries == m_entries)
        return;
    m_entries = entries;
    Q_EMIT entriesChanged();
}

double DocumentVerifier::progress() const
{
    return m_work ? m_work->progress() : -1;
}

QString DocumentVerifier::message() const
{
    for (const ErrorText &text : ErrorTexts) {
        if (text.error == m_error)
            return qtTrId(text.id);
    }
    return {};
}

bool DocumentVerifier::isMessage(const QString &path)
{
    return !SignedMessage::read(openByteSource(path)).isNull();
}

bool DocumentVerifier::hasDocument(const QString &path)
{
    return SignedMessage::read(openByteSource(path)).isAttached();
}

QString DocumentVerifier::documentOf(const QString &message)
{
    const QString document = withoutSuffix(message, QStringLiteral("p7s|sig|p7|cms|sgn"));
    return document != message && QFileInfo(document).isFile() ? document : QString();
}

QString DocumentVerifier::documentName(const QString &message)
{
    const QString name = QFileInfo(message).fileName();
    const QString inner = withoutSuffix(name, QStringLiteral("p7m|p7s|sig|p7|cms|sgn|pem|eml"));
    return inner == name || inner.isEmpty() ? name + QStringLiteral(".document") : inner;
}

QVector<ChainCandidate> DocumentVerifier::gather() const
{
    QVector<ChainCandidate> known;
    const int rows = m_entries ? m_entries->rowCount() : 0;
    const int role = m_entries ? m_entries->roleNames().key("keyStoreEntry", -1) : -1;
    for (int row = 0; row < rows; ++row) {
        auto *object = m_entries->index(row, 0).data(role).value<QObject *>();
        const QCA::KeyStoreEntry *entry = wrappedEntry(object);
        if (!entry)
            continue;
        const QString store = entryStoreId(*entry);
        const bool isSystem = m_entries->isSystemStore(store);
        const QList<QCA::Certificate> certificates = certificatesOf(*entry);
        for (const QCA::Certificate &certificate : certificates)
            known += candidate(certificate, store, isSystem);
    }
    return known;
}

ChainCandidate DocumentVerifier::candidate(const QCA::Certificate &certificate,
                                           const QString &storeId, bool isSystem)
{
    const bool isOwnRoot = storeId == userStoreId() && certificate.isSelfSigned();
    return {certificate.toDER(), QString(), isSystem || isOwnRoot};
}

void DocumentVerifier::verify(const QString &message, const QString &document)
{
    verifyWith(message, document, gather());
}

void DocumentVerifier::verifyWith(const QString &message, const QString &document,
                                  const QVector<ChainCandidate> &known)
{
    if (!begin())
        return;
    m_signers.setSignatures({});
    m_message.reset();
    m_work = std::make_shared<LongWork>();
    const auto outcome = std::make_shared<Outcome>();
    runInBackground([=, work = m_work] { outcome->find(message, document, known, *work); }, this,
                    [this, outcome] { take(*outcome); });
}

void DocumentVerifier::take(const Outcome &outcome)
{
    m_message = std::make_shared<const SignedMessage>(outcome.message);
    m_signers.setSignatures(outcome.signatures);
    const Error error = errorOf(outcome.report.problem);
    end(error == NoDocument && outcome.isDocumentMissing ? NotRead : error);
}

void DocumentVerifier::saveDocument(const QString &path, bool mayReplace)
{
    if (!isAttached() || !begin())
        return;
    m_work = std::make_shared<LongWork>();
    m_work->expect(m_message->content.end - m_message->content.begin);
    const auto error = std::make_shared<Error>();
    runInBackground(
        [=, work = m_work, message = m_message] {
            *error = copyDocument(*message, *work, path, mayReplace);
        },
        this, [this, error] { end(*error); });
}

void DocumentVerifier::end(Error error)
{
    m_error = error;
    m_work.reset();
    Job::end();
}

void DocumentVerifier::cancel()
{
    if (m_work)
        m_work->cancel();
}

} // namespace Trivex
