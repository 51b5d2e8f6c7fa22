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
/// Everything in it, in the form of `CertificateDetails::groups`.
QVariantList itemGroups(const FileItem &item);
/// Kind and size of a key: "RSA, 2048 bits"; empty for an unknown one.
QString keyText(const QString &kind, int bits);

} // namespace Trivex
