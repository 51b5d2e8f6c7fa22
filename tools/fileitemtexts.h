// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/fileitem.h"

#include <QVariantList>

namespace Trivex {

// What is shown of one thing in a file, in the user's language.

/// Whose it is: a name, or what it is where it has none. Never empty.
QString itemName(const FileItem &item);
/// The issuer of a certificate; else what kind of thing it is.
QString itemDetail(const FileItem &item);
/// The bytes that are shown of it: for a private key those of the public one. Empty for a key that
/// is locked.
QByteArray itemDer(const FileItem &item);
/// When a revocation list says that a newer one is due; invalid for what says nothing of it.
QDateTime nextUpdateOf(const FileItem &item);
/// Everything in it, in the form of `CertificateDetails::groups`.
QVariantList itemGroups(const FileItem &item);
/// Its PEM text and its structure, of a key only those of the public one; as
/// `CertificateDetails::pem` and `structure`.
QString itemPem(const FileItem &item);
QString itemStructure(const FileItem &item);

} // namespace Trivex
