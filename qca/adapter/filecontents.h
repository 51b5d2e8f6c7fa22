// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QVector>
#include <QtCrypto>

namespace Trivex {

/// One thing that a file holds.
struct FileObject {
    enum Kind {
        Certificate, ///< X.509 (RFC 5280)
        Request, ///< PKCS#10 (RFC 2986)
        RevocationList, ///< RFC 5280, 5
        PrivateKey, ///< in any common form, encrypted or not
        PublicKey, ///< SubjectPublicKeyInfo, or the older form of RSA
    };
    Kind kind = Certificate;
    /// The encoding; empty for a private key.
    QByteArray der;
    /// The encoding of a private key; empty for one that needs a password.
    QCA::SecureArray secret;
    bool isEncrypted = false;
};

/// What the bytes of a file are. Names, suffixes and the labels of PEM blocks decide nothing: what
/// can be decoded does.
struct TRIVEX_QCA_EXPORT FileContents {
    enum Form {
        Objects, ///< one or more of them, in PEM, DER or plain Base64
        Collection, ///< PKCS#7 or CMS without a signature: certificates and lists
        Message, ///< a signed PKCS#7 or CMS message, with what it carries
        RawSignature, ///< the bytes of a signature and nothing else
        Bundle, ///< PKCS#12; what is in it shows only with its password
        Damaged, ///< meant to be one of these, and none that can be read
        Document, ///< anything else
    };
    Form form = Document;
    QVector<FileObject> objects;
    int broken = 0; ///< parts of the file that are damaged and left out

    bool has(FileObject::Kind kind) const;
};

/// Thread-safe; the work grows with the size alone, which the caller bounds.
TRIVEX_QCA_EXPORT FileContents readFileContents(const QByteArray &bytes);

} // namespace Trivex
