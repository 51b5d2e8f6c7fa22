// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"
#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

// Reads of QCA values that may be empty. Stock QCA dereferences the missing context of an empty
// key store entry or request; these give empty values instead, and the stock result otherwise.

/// The entry's `QCA::KeyStoreEntry::Type`, or -1 for an empty entry.
TRIVEX_QCA_EXPORT int entryType(const QCA::KeyStoreEntry &entry);
TRIVEX_QCA_EXPORT QString entryId(const QCA::KeyStoreEntry &entry);
TRIVEX_QCA_EXPORT QString entryName(const QCA::KeyStoreEntry &entry);
TRIVEX_QCA_EXPORT QString entryStoreId(const QCA::KeyStoreEntry &entry);
TRIVEX_QCA_EXPORT QString entryStoreName(const QCA::KeyStoreEntry &entry);
/// Whether the entry is where it was listed; false for an empty one.
TRIVEX_QCA_EXPORT bool isEntryAvailable(const QCA::KeyStoreEntry &entry);
/// A null bundle for an entry that is none.
TRIVEX_QCA_EXPORT QCA::KeyBundle entryKeyBundle(const QCA::KeyStoreEntry &entry);
/// A null certificate for an entry that is none.
TRIVEX_QCA_EXPORT QCA::Certificate entryCertificate(const QCA::KeyStoreEntry &entry);
/// The subject's public key; null for an empty request, and for one whose key can't be read.
TRIVEX_QCA_EXPORT QCA::PublicKey requestPublicKey(const QCA::CertificateRequest &request);
/// The subject's attributes and the usages that it asks for; empty for an empty request.
TRIVEX_QCA_EXPORT RequestedFields requestedFields(const QCA::CertificateRequest &request);

} // namespace Trivex
