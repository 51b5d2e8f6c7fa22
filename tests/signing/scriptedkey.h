// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/keystoreentry.h"

#include <QtCrypto>

#include <functional>
#include <memory>

namespace TrivexTest {

/// Called before each signature; false refuses it, as a token does without its PIN.
using BeforeSigning = std::function<bool()>;

/// A private key that signs with the RSA key `inner` after asking `before`.
QCA::PrivateKey scriptedKey(const QCA::PrivateKey &inner, const BeforeSigning &before);

/// A private key that is not RSA, of QCA type number 3, and does nothing.
QCA::PrivateKey foreignKey();

/// A private key of the token of that store: it has `publicInfo` (DER SubjectPublicKeyInfo) and
/// does nothing by itself.
QCA::PrivateKey keyOnToken(const QString &storeId, const QByteArray &publicInfo);

/// An RSA key of 2048 bits in software, made once a process.
QCA::PrivateKey softwareKey();

/// A self-signed certificate of `softwareKey()`, with that common name.
QCA::Certificate softwareCertificate(const QString &name = QStringLiteral("Software"));

/// An entry of a key store that holds `key` and `chain`.
std::unique_ptr<KeyStoreEntry> bundleEntry(const QCA::PrivateKey &key,
                                           const QCA::CertificateChain &chain = {});

} // namespace TrivexTest
