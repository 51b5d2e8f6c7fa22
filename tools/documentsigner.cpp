// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/documentsigner.h"

#include "qca/adapter/entries.h"
#include "qca/cms/documentkey.h"
#include "qca/keys/keys.h"
#include "qca/questions/background.h"
#include "qca/questions/cancellationscope.h"
#include "qca/tokens/tokens.h"
#include "tools/rowentry.h"

#include <QPointer>
#include <QRegularExpression>

namespace Trivex {

namespace {

struct ErrorText {
    DocumentSigner::Error error;
    const char *id;
};

constexpr ErrorText ErrorTexts[] = {
    //% "This key can't make such a signature. Choose another key."
    {DocumentSigner::WrongKey, QT_TRID_NOOP("trivex-app-document-wrong-key")},
    //% "This computer lacks the digest that belongs to this key. Install the GOST engine of
    //% OpenSSL, or choose another key."
    {DocumentSigner::NoDigest, QT_TRID_NOOP("trivex-app-document-no-digest")},
    //% "The document could not be read. Check the file and try again."
    {DocumentSigner::NotRead, QT_TRID_NOOP("trivex-app-document-not-read")},
    //% "The document was changed while it was being signed. See what it holds now, then sign once
    //% more."
    {DocumentSigner::Changed, QT_TRID_NOOP("trivex-app-document-moved")},
    //% "The document was not signed. Check the token and try again."
    {DocumentSigner::NotSigned, QT_TRID_NOOP("trivex-app-document-not-signed")},
    //% "The key did not make a signature that fits its certificate. Nothing was written; choose
    //% another key."
    {DocumentSigner::NotGood, QT_TRID_NOOP("trivex-app-document-not-good")},
    //% "The signature could not be written. Choose another folder or check the disk."
    {DocumentSigner::NotWritten, QT_TRID_NOOP("trivex-app-document-not-written")},
    //% "There is a file of this name. Replace it, or choose another name."
    {DocumentSigner::Exists, QT_TRID_NOOP("trivex-app-document-exists")},
    //% "The signature would take the place of its own document. Choose another name."
    {DocumentSigner::SameFile, QT_TRID_NOOP("trivex-app-document-same-file")},
    //% "Signing was stopped. Nothing was written; start again when you like."
    {DocumentSigner::Cancelled, QT_TRID_NOOP("trivex-app-document-stopped")},
};

constexpr struct {
    DocumentSignature::Problem problem;
    DocumentSigner::Error error;
} Errors[] = {
    {DocumentSignature::NoProblem, DocumentSigner::NoError},
    {DocumentSignature::NoScheme, DocumentSigner::WrongKey},
    {DocumentSignature::NoDigest, DocumentSigner::NoDigest},
    {DocumentSignature::Unreadable, DocumentSigner::NotRead},
    {DocumentSignature::Changed, DocumentSigner::Changed},
    {DocumentSignature::Cancelled, DocumentSigner::Cancelled},
    {DocumentSignature::NotWritten, DocumentSigner::NotWritten},
    {DocumentSignature::NotGood, DocumentSigner::NotGood},
    {DocumentSignature::Exists, DocumentSigner::Exists},
    {DocumentSignature::SameFile, DocumentSigner::SameFile},
};

DocumentSigner::Error errorOf(DocumentSignature::Problem problem)
{
    for (const auto &one : Errors) {
        if (one.problem == problem)
            return one.error;
    }
    return DocumentSigner::NotSigned;
}

} // namespace

DocumentSigner::DocumentSigner(QObject *parent)
    : Job(parent)
{
}

DocumentSigner::~DocumentSigner()
{
    if (m_signature)
        m_signature->work().cancel();
}

double DocumentSigner::progress() const
{
    return m_signature ? m_signature->work().progress() : -1;
}

QString DocumentSigner::message() const
{
    for (const ErrorText &text : ErrorTexts) {
        if (text.error == m_error)
            return qtTrId(text.id);
    }
    return {};
}

QString DocumentSigner::targetFor(const QString &document, int form)
{
    const QString suffix = form == Attached ? QStringLiteral(".p7m") : QStringLiteral(".p7s");
    // A signature that is signed itself does not get the same suffix twice.
    static const QRegularExpression own(QStringLiteral("\\.(p7[sm]|sig)$"),
                                        QRegularExpression::CaseInsensitiveOption);
    QString name = document;
    return name.replace(own, QStringLiteral(".signed")) + suffix;
}

void DocumentSigner::sign(QObject *keyStoreEntry, const QString &document, const QString &target,
                          int form, bool mayReplace)
{
    const QCA::KeyStoreEntry *entry = wrappedEntry(keyStoreEntry);
    const auto kind = form == Attached ? DocumentSignature::Attached : DocumentSignature::Detached;
    start(entry ? *entry : QCA::KeyStoreEntry(), entry ? entryKeyBundle(*entry) : QCA::KeyBundle(),
          {document, target, kind}, mayReplace);
}

void DocumentSigner::signWith(const QCA::KeyBundle &bundle, const DocumentSignature::Files &files,
                              bool mayReplace)
{
    start({}, bundle, files, mayReplace);
}

void DocumentSigner::start(const QCA::KeyStoreEntry &entry, const QCA::KeyBundle &bundle,
                           const DocumentSignature::Files &files, bool mayReplace)
{
    if (!begin())
        return;
    m_entry = entry;
    const QList<QByteArray> chain = signingChain(bundle);
    m_files = files;
    m_mayReplace = mayReplace;
    m_signature = std::make_shared<DocumentSignature>(files, chain.value(0), chain);
    m_key = bundle.isNull() ? QCA::PrivateKey() : bundle.privateKey();
    m_task = std::make_shared<Cancellation>();
    if (isPrivateKey(m_key))
        digest();
    else
        end(WrongKey);
}

void DocumentSigner::digest()
{
    const auto problem = std::make_shared<DocumentSignature::Problem>();
    runInBackground([signature = m_signature,
                     problem] { *problem = signature->digest(QDateTime::currentDateTimeUtc()); },
                    this,
                    [this, problem] {
                        if (*problem == DocumentSignature::NoProblem)
                            signDigest();
                        else
                            end(errorOf(*problem));
                    });
}

void DocumentSigner::signDigest()
{
    if (m_signature->work().isCancelled()) {
        end(Cancelled);
        return;
    }
    const QPointer<DocumentSigner> self(this);
    const SignaturePtr signature = m_signature;
    const MessageWriter &message = signature->message();
    QByteArray made;
    {
        const CancellationScope scope(m_task);
        made = signForMessage(m_key, message.scheme(), message.toBeSigned());
    }
    if (!self)
        return;
    if (made.isEmpty()) {
        end(NotSigned);
        return;
    }
    signature->setSignature(made);
    // When it began the token may have been in the middle of its reading, with issuers to come.
    const QList<QByteArray> chain = signingChain(entryKeyBundle(m_entry));
    if (!chain.isEmpty())
        signature->setChain(chain);
    write();
}

void DocumentSigner::write()
{
    const auto problem = std::make_shared<DocumentSignature::Problem>();
    runInBackground(
        [signature = m_signature, problem, mayReplace = m_mayReplace] {
            *problem = signature->write();
            if (*problem == DocumentSignature::NoProblem)
                *problem = signature->place(mayReplace);
        },
        this, [this, problem] { end(errorOf(*problem)); });
}

void DocumentSigner::replace()
{
    if (m_error != Exists || !m_signature || !begin())
        return;
    const auto problem = std::make_shared<DocumentSignature::Problem>();
    runInBackground([signature = m_signature, problem] { *problem = signature->place(true); }, this,
                    [this, problem] { end(errorOf(*problem)); });
}

void DocumentSigner::end(Error error)
{
    m_error = error;
    // It keeps what it made for `replace()` only.
    if (error != Exists)
        m_signature.reset();
    m_key = QCA::PrivateKey();
    m_entry = QCA::KeyStoreEntry();
    Job::end();
}

void DocumentSigner::cancel()
{
    if (!isRunning() || !m_signature)
        return;
    m_signature->work().cancel();
    cancelTokenTask(m_task);
}

} // namespace Trivex
