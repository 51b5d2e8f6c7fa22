// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QVector>
#include <QtCrypto>

#include <atomic>
#include <memory>

namespace Trivex {

class KeyMaterial;

/// One thing that a file holds.
struct FileObject {
    enum Kind {
        Certificate, ///< X.509 (RFC 5280)
        Request, ///< PKCS#10 (RFC 2986)
        RevocationList, ///< RFC 5280, 5
        PrivateKey, ///< in any common form, encrypted or not
        PublicKey, ///< SubjectPublicKeyInfo, or the older form of RSA
        AttributeCertificate, ///< RFC 5755
        RevocationAnswer, ///< OCSP (RFC 6960)
        EncryptedMessage, ///< PKCS#7 or CMS (RFC 5652, 6)
        SshKey, ///< a private key as the programs of SSH keep it, with or without a password
    };
    Kind kind = Certificate;
    /// The encoding; empty for a private key of any form.
    QByteArray der;
    /// A private key; null for one that needs a password.
    std::shared_ptr<const KeyMaterial> key;
    bool isEncrypted = false;
    /// For a private key: the index of the object that is its certificate; -1 for none of them.
    int certificate = -1;
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
    /// The number of private keys beyond the first `MaxFileKeys`, which are not looked at.
    int unreadKeys = 0;

    bool has(FileObject::Kind kind) const;
};

/// Thread-safe; the work grows with the size alone, which the caller bounds: some seconds for the
/// largest files. Once `*stopped` is true it returns soon, with part of what there is.
TRIVEX_QCA_EXPORT FileContents readFileContents(const QByteArray &bytes,
                                                const std::atomic_bool *stopped = nullptr);

/// A private key of a file as QCA has it; null where it is encrypted. Call it only while QCA lives.
TRIVEX_QCA_EXPORT QCA::PrivateKey privateKeyOf(const FileObject &object);

} // namespace Trivex
