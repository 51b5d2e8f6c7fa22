// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtCrypto>

namespace Trivex {

/// The container with the key in `publicInfo` (DER SubjectPublicKeyInfo), for a certificate's or a
/// request's `subjectPublicKey()`. Never a null pointer and never without a key, because stock QCA
/// uses it without a check: bytes that are no key give a null key. The caller owns it.
QCA::PKeyContext *makeSubjectKey(const QByteArray &publicInfo, QCA::Provider *provider);

} // namespace Trivex
