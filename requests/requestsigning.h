// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"

#include <QList>
#include <QPointer>
#include <QtCrypto>

namespace Trivex {

// Signing may run an event loop, in which the caller's object and the stores may go: arguments are
// copies. GUI thread only.

/// A request signed by `key`, null where that fails. Stock QCA takes any other provider without a
/// word where ours is missing; that one would read the key as one of its own, so it gets none but
/// those.
QCA::CertificateRequest signedRequest(QCA::CertificateOptions options, QCA::PrivateKey key);

/// `original` asking for `fields`, by the same rules. What they do not change stays to the byte.
QCA::CertificateRequest signedAnew(QCA::CertificateRequest original, RequestedFields fields,
                                   QCA::PrivateKey key);

/// The private key that belongs to `key`: one of a bundle in `stores`, else `own`, else one that
/// has no certificate yet, which its token alone knows. Null where there is none.
QCA::PrivateKey findPrivateKey(QCA::PublicKey key, QCA::PrivateKey own,
                               QList<QPointer<QCA::KeyStore>> stores);

} // namespace Trivex
