// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/filecontents.h"
#include "qca/x509/makecertificate.h"

namespace Trivex {

/// One thing in a file, ready to be shown and imported.
struct FileItem {
    FileObject::Kind kind = FileObject::Certificate;
    QByteArray der; ///< empty for a private key
    /// Of a private key, or of a certificate whose key is in the file too; null where it is
    /// encrypted.
    QCA::PrivateKey key;
    QString label; ///< what a bundle calls its key
    bool isChecked = false;

    /// Null for what is none. Made when it is asked for: a file may hold ten thousand of them.
    const QCA::Certificate &certificate() const
    {
        if (kind == FileObject::Certificate && m_certificate.isNull())
            m_certificate = makeCertificate(der);
        return m_certificate;
    }
    bool isImportable() const
    {
        return kind == FileObject::Certificate || kind == FileObject::Request
            || kind == FileObject::RevocationList;
    }

private:
    mutable QCA::Certificate m_certificate;
};

} // namespace Trivex
