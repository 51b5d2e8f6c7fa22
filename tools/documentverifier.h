// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/signedmessage.h"
#include "tools/chainsources.h"
#include "tools/job.h"
#include "tools/signerlist.h"

#include <QPointer>

#include <functional>
#include <memory>

namespace Trivex {

/// Checks the signatures of a document, anybody's: a message of CMS or PKCS#7, detached or with the
/// document in it, in any of their forms. Every run reads the files of that moment.
///
///     DocumentVerifier {
///         id: checking
///         entries: allRows
///         onFinished: error === DocumentVerifier.NoError ? list(signers) : tell(message)
///     }
///     ...
///     checking.verify("Documents/letter.pdf.p7s", "Documents/letter.pdf")
///
/// GUI thread; the work goes on in a thread of its own.
class DocumentVerifier : public Job {
    Q_OBJECT
    /// How the last run ended. With `NoError` and `NoDocument` the signatures are listed; whether
    /// they are good, each of them says.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// The signatures that were found; the same object always.
    Q_PROPERTY(Trivex::SignerList *signers READ signers CONSTANT)
    /// Whether the document lies in the message.
    Q_PROPERTY(bool attached READ isAttached NOTIFY finished)
    /// The certificates that are known: roots among those of the system and of the user are
    /// trusted, the others may lead to them. Without it nobody is trusted. What becomes known
    /// later changes what the signatures say of their certificates.
    Q_PROPERTY(Trivex::EntryModel *entries READ entries WRITE setEntries NOTIFY entriesChanged)
public:
    enum Error {
        NoError,
        NoMessage, ///< no file, or not a signed message
        NoDocument, ///< the signature is alone, and no document was given
        NotRead, ///< the document is no file that can be read
        Changed, ///< a file was changed while it was read
        NotWritten,
        Exists, ///< a file is in the place of the document that was to be saved
        Cancelled,
    };
    Q_ENUM(Error)

    explicit DocumentVerifier(QObject *parent = nullptr);
    ~DocumentVerifier() override;

    int error() const { return m_error; }
    SignerList *signers() { return &m_signers; }
    bool isAttached() const;
    EntryModel *entries() const { return m_entries; }
    void setEntries(EntryModel *entries);
    double progress() const override;
    QString message() const override;

    /// Whether that file is a signed message, by its contents; reads its beginning and end only
    /// where it is long.
    Q_INVOKABLE static bool isMessage(const QString &path);
    /// Whether that message has its document in it.
    Q_INVOKABLE static bool hasDocument(const QString &path);
    /// The document that lies beside a detached signature by its name ("letter.pdf" for
    /// "letter.pdf.p7s"); empty where there is none.
    Q_INVOKABLE static QString documentOf(const QString &message);
    /// The name for the document inside of a message: without ".p7m".
    Q_INVOKABLE static QString documentName(const QString &message);

    /// Checks the message in a file. A `document` that is named is the one that the signatures are
    /// compared with, even where another lies in the message. Begins when all `entries` have been
    /// read. Ends with `finished()`; ignored while it runs.
    Q_INVOKABLE void verify(const QString &message, const QString &document = QString());
    /// The same with certificates that come from elsewhere than `entries`: `known` for signers
    /// whose own is not in the message, `issuers` for paths.
    void verifyWith(const QString &message, const QString &document, const QList<QByteArray> &known,
                    const CandidateIndex &issuers);
    /// Writes the document of the message that was checked last, over another file only with
    /// `mayReplace`. Ends with `finished()`.
    Q_INVOKABLE void saveDocument(const QString &path, bool mayReplace);
    Q_INVOKABLE void cancel() override;

Q_SIGNALS:
    void entriesChanged();

private:
    struct Outcome;

    bool prepare();
    void check(const QString &message, const QString &document, const QList<QByteArray> &known,
               const CandidateIndex &issuers);
    CandidateIndex knownIssuers() const;
    void follow(EntryModel *entries);
    /// Begins what waits for the entries, once they have been read.
    void goOn();
    void showOutcome(const Outcome &outcome);
    /// Other certificates are known from now on.
    void noteChange();
    void judgeAgain();
    void end(Error error);

    QPointer<EntryModel> m_entries;
    SignerList m_signers;
    std::function<void()> m_waiting; ///< for the entries
    std::shared_ptr<LongWork> m_work;
    std::shared_ptr<const Outcome> m_outcome;
    int m_round = 0; ///< of judging the same message anew
    bool m_isOutdated = false; ///< a change came while it ran
    Error m_error = NoError;
};

} // namespace Trivex
