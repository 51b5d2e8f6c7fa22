// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/atomicfile.h"
#include "qca/cms/content.h"
#include "qca/cms/messagewriter.h"

#include <memory>
#include <optional>

namespace Trivex {

/// Signs a file of any length into another one, in steps: `digest`, then whoever has the private
/// key signs `toBeSigned()`, then `write`, then `place`. A step that returns another thing than
/// `NoProblem` is the last one, but for `Exists`. One thread at a time; holds no memory of QCA's.
class TRIVEX_QCA_EXPORT DocumentSignature {
public:
    enum Problem {
        NoProblem,
        NoScheme, ///< the certificate's key makes no such signatures
        NoDigest, ///< the digest that belongs to the key is missing here
        Unreadable, ///< the document is no file that can be read
        Changed, ///< the document was changed meanwhile
        Cancelled,
        NotWritten,
        NotGood, ///< what the key made is no signature of the document by the certificate
        Exists, ///< a file is there and may not be replaced; `place` may be called again
        SameFile, ///< the target is the document itself, by whatever name
    };
    enum Form {
        Detached, ///< the signature alone
        Attached, ///< with the document in it
    };
    struct Files {
        QString document;
        QString target;
        Form form = Detached;
    };

    /// The signer's certificate and its chain, DER.
    DocumentSignature(const Files &files, const QByteArray &certificate,
                      const QList<QByteArray> &chain);
    ~DocumentSignature();

    /// May be used from any thread.
    LongWork &work() { return m_work; }
    const MessageWriter &message() const { return m_message; }

    /// Reads the file of this moment; `time` is the signing time.
    Problem digest(const QDateTime &time);
    void setSignature(const QByteArray &signature) { m_message.setSignature(signature); }
    /// Before `write`, if more is known of the chain by then.
    void setChain(const QList<QByteArray> &chain) { m_message.setChain(chain); }
    /// Writes everything beside the target, and checks it as a stranger would, with the file that
    /// lies at the document's path by then.
    Problem write();
    /// Gives the file its name.
    Problem place(bool mayReplace);

private:
    Problem readDocument(const ContentSink &sink);
    Problem writeAttached();
    Problem check();

    const Files m_files;
    LongWork m_work;
    MessageWriter m_message;
    ByteSourcePtr m_document;
    std::unique_ptr<AtomicFile> m_target;
};

} // namespace Trivex
