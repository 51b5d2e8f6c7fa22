// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/engine/x509/handles.h"

#include <QByteArray>

namespace Trivex {

enum class SignatureState {
    Good,
    Bad,
    Unknown, ///< nothing here can handle the key or the algorithm
};

/// Whether `certificate` is signed by the key in `publicInfo` (DER SubjectPublicKeyInfo).
SignatureState checkSignature(X509 *certificate, const QByteArray &publicInfo);

} // namespace Trivex
