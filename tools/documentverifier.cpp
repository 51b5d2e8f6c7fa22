// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/documentverifier.h"

#include "qca/base/atomicfile.h"
#include "qca/cms/messagecheck.h"
#include "qca/questions/background.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <utility>

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
    // No digest is compared here: it has to be what was checked.
    if (!message.content.source->isUntouched())
        return DocumentVerifier::Changed;
    switch (file.place(mayReplace)) {
    case WriteResult::Written:
        return DocumentVerifier::NoError;
    case WriteResult::Exists:
        return DocumentVerifier::Exists;
    default:
        return DocumentVerifier::NotWritten;
    }
}

} // namespace

struct DocumentVerifier::Outcome {
    SignedMessage message;
    MessageReport report;
    bool isDocumentMissing = false;

    void find(const QString &path, const QString &document, const QList<QByteArray> &known,
              LongWork &work);
    QVector<SignerList::Signature> judged(CandidateIndex known) const;
};

void DocumentVerifier::Outcome::find(const QString &path, const QString &document,
                                     const QList<QByteArray> &known, LongWork &work)
{
    message = SignedMessage::read(openByteSource(path));
    const bool isNamed = !document.isEmpty();
    const Content outside = isNamed ? wholeContent(openByteSource(document)) : Content();
    isDocumentMissing = isNamed && outside.isNull();
    // Whoever names a document asks about that one: the one in the message would vouch for itself.
    SignedMessage asked = message;
    if (isNamed)
        asked.content = Content();
    const Content &content = asked.isAttached() ? asked.content : outside;
    work.expect(content.end - content.begin);
    report = checkMessage(asked, outside, known, work);
}

/// What comes with a message may be part of a path, and vouches for nothing.
QVector<SignerList::Signature> DocumentVerifier::Outcome::judged(CandidateIndex known) const
{
    for (const QByteArray &der : report.certificates)
        known.add({der, QString(), false});
    for (const QByteArray &der : report.lists)
        known.addList(der);
    QVector<SignerList::Signature> signatures;
    for (const SignerReport &signer : report.signers) {
        SignerList::Signature signature;
        signature.report = signer;
        if (!signer.certificate.isEmpty())
            signature.trust = trustIn(signer, known);
        signatures += signature;
    }
    return signatures;
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
    if (m_entries)
        disconnect(ChainSources::of(m_entries), nullptr, this, nullptr);
    m_entries = entries;
    if (m_entries)
        follow(m_entries);
    goOn();
    Q_EMIT entriesChanged();
}

void DocumentVerifier::follow(EntryModel *entries)
{
    ChainSources *sources = ChainSources::of(entries);
    connect(sources, &ChainSources::changed, this, [this] {
        if (m_waiting)
            goOn();
        else
            noteChange();
    });
    // It goes with its model.
    connect(sources, &QObject::destroyed, this, &DocumentVerifier::goOn);
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

bool DocumentVerifier::isAttached() const
{
    return m_outcome && m_outcome->message.isAttached();
}

CandidateIndex DocumentVerifier::knownIssuers() const
{
    return m_entries ? ChainSources::of(m_entries)->index() : CandidateIndex();
}

bool DocumentVerifier::prepare()
{
    if (!begin())
        return false;
    m_signers.setSignatures({});
    m_outcome.reset();
    m_work = std::make_shared<LongWork>();
    return true;
}

void DocumentVerifier::verify(const QString &message, const QString &document)
{
    if (!prepare())
        return;
    m_waiting = [=] {
        const auto known =
            m_entries ? ChainSources::of(m_entries)->certificates() : QList<QByteArray>();
        check(message, document, known, knownIssuers());
    };
    goOn();
}

void DocumentVerifier::goOn()
{
    // To read thousands of certificates at once would stop the window.
    if (m_waiting && (!m_entries || ChainSources::of(m_entries)->isComplete()))
        std::exchange(m_waiting, nullptr)();
}

void DocumentVerifier::verifyWith(const QString &message, const QString &document,
                                  const QList<QByteArray> &known, const CandidateIndex &issuers)
{
    if (prepare())
        check(message, document, known, issuers);
}

void DocumentVerifier::check(const QString &message, const QString &document,
                             const QList<QByteArray> &known, const CandidateIndex &issuers)
{
    const auto outcome = std::make_shared<Outcome>();
    const auto signatures = std::make_shared<QVector<SignerList::Signature>>();
    runInBackground(
        [=, work = m_work] {
            outcome->find(message, document, known, *work);
            *signatures = outcome->judged(issuers);
        },
        this,
        [this, outcome, signatures] {
            m_outcome = outcome;
            m_signers.setSignatures(*signatures);
            showOutcome(*outcome);
        });
}

void DocumentVerifier::showOutcome(const Outcome &outcome)
{
    const Error error = errorOf(outcome.report.problem);
    end(error == NoDocument && outcome.isDocumentMissing ? NotRead : error);
}

void DocumentVerifier::noteChange()
{
    if (isRunning())
        m_isOutdated = true;
    else
        judgeAgain();
}

void DocumentVerifier::judgeAgain()
{
    if (!m_outcome || m_outcome->report.signers.isEmpty())
        return;
    const int round = ++m_round;
    const auto signatures = std::make_shared<QVector<SignerList::Signature>>();
    runInBackground([=, outcome = m_outcome,
                     issuers = knownIssuers()] { *signatures = outcome->judged(issuers); },
                    this,
                    [this, signatures, round, outcome = m_outcome] {
                        // A later round, which knows more, may have ended before.
                        if (outcome == m_outcome && round == m_round)
                            m_signers.setSignatures(*signatures);
                    });
}

void DocumentVerifier::saveDocument(const QString &path, bool mayReplace)
{
    if (!isAttached() || !begin())
        return;
    m_work = std::make_shared<LongWork>();
    const SignedMessage &message = m_outcome->message;
    m_work->expect(message.content.end - message.content.begin);
    const auto error = std::make_shared<Error>();
    runInBackground(
        [=, work = m_work, outcome = m_outcome] {
            *error = copyDocument(outcome->message, *work, path, mayReplace);
        },
        this, [this, error] { end(*error); });
}

void DocumentVerifier::end(Error error)
{
    m_error = error;
    m_work.reset();
    if (std::exchange(m_isOutdated, false))
        judgeAgain();
    Job::end();
}

void DocumentVerifier::cancel()
{
    if (std::exchange(m_waiting, nullptr))
        end(Cancelled);
    else if (m_work)
        m_work->cancel();
}

} // namespace Trivex
