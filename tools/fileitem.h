// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/filecontents.h"

namespace Trivex {

/// One thing in a file, ready to be shown and imported.
struct FileItem {
    FileObject::Kind kind = FileObject::Certificate;
    QByteArray der; ///< empty for a private key
    QCA::Certificate certificate;
    /// Of a private key, or of a certificate whose key is in the file too; null where it is
    /// encrypted.
    QCA::PrivateKey key;
    QString label; ///< what a bundle calls its key
    bool isChecked = false;

    bool isImportable() const
    {
        return kind == FileObject::Certificate || kind == FileObject::Request;
    }
};

} // namespace Trivex
