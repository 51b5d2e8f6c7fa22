// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/documentsignature.h"
#include "qca/questions/cancellation.h"
#include "tools/job.h"

#include <QtCrypto>

#include <memory>

namespace Trivex {

/// Signs a document of any length so that others can check it: a message of CMS (RFC 5652) with the
/// certificates that lead to a root, and the time.
///
///     DocumentSigner {
///         id: signing
///         onFinished: error === DocumentSigner.NoError ? show(target) : tell(message)
///     }
///     ...
///     signing.sign(row.keyStoreEntry, "Documents/letter.pdf",
///                  signing.targetFor("Documents/letter.pdf", DocumentSigner.Detached),
///                  DocumentSigner.Detached, false)
///
/// Reading and writing go on in a thread of their own. A token asks for its PIN through
/// `PinPrompt`. GUI thread; while a token works, an event loop runs.
class DocumentSigner : public Job {
    Q_OBJECT
    /// How the last run ended.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// Where the last run put the signature, or was to put it.
    Q_PROPERTY(QString target READ target NOTIFY finished)
public:
    enum Form {
        Detached, ///< a file with the signature alone, beside the document
        Attached, ///< one file with the document in it
    };
    Q_ENUM(Form)
    enum Error {
        NoError,
        WrongKey, ///< no private key is there, or one that makes no such signatures
        NoDigest, ///< the digest that belongs to the key is missing on this computer
        NotRead, ///< the document is no file that can be read
        Changed, ///< the document was changed meanwhile; nothing was written
        NotSigned, ///< the token refused, or was stopped; `TokenErrors` knows why
        NotGood, ///< the key's signature does not fit its certificate; nothing was written
        NotWritten,
        Exists, ///< a file is in its place: `replace()` puts the signature there
        Cancelled,
        SameFile, ///< it would take the place of its own document; nothing was written
    };
    Q_ENUM(Error)

    explicit DocumentSigner(QObject *parent = nullptr);
    ~DocumentSigner() override;

    int error() const { return m_error; }
    QString target() const { return m_files.target; }
    double progress() const override;
    QString message() const override;

    /// The usual name of such a signature: the document's with ".p7s" or ".p7m".
    Q_INVOKABLE static QString targetFor(const QString &document, int form);

    /// Signs the file at `document` as it is now by the key of a row's object ("keyStoreEntry"),
    /// and writes the result to `target`: over another file only with `mayReplace`, and never over
    /// the document. Ends with
    /// `finished()`; ignored while it runs.
    Q_INVOKABLE void sign(QObject *keyStoreEntry, const QString &document, const QString &target,
                          int form, bool mayReplace);
    void signWith(const QCA::KeyBundle &bundle, const DocumentSignature::Files &files,
                  bool mayReplace);
    /// After `Exists`: replaces what is there. Ends with `finished()`.
    Q_INVOKABLE void replace();
    Q_INVOKABLE void cancel() override;

private:
    using SignaturePtr = std::shared_ptr<DocumentSignature>;

    void start(const QCA::KeyStoreEntry &entry, const QCA::KeyBundle &bundle,
               const DocumentSignature::Files &files, bool mayReplace);
    void digest();
    void signDigest();
    void write();
    void end(Error error);

    SignaturePtr m_signature;
    DocumentSignature::Files m_files;
    QCA::KeyStoreEntry m_entry; ///< of the key; a null one if only the bundle is known
    QCA::PrivateKey m_key;
    CancellationPtr m_task; ///< what the token does for this signature
    bool m_mayReplace = false;
    Error m_error = NoError;
};

} // namespace Trivex
