// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/entries.h"

namespace TrivexTest {

/// The subject's attributes; empty for an empty request.
inline QCA::CertificateInfo requestSubject(const QCA::CertificateRequest &request)
{
    return Trivex::requestedFields(request).info;
}

} // namespace TrivexTest
