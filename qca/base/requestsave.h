// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QtCrypto>

namespace Trivex {

/// One saving of a request. It works on copies: an edited request is kept only when its file is
/// written, and signing it may run an event loop in which its object can go.
struct TRIVEX_QCA_EXPORT RequestSave {
    QCA::CertificateRequest request;
    QString commonName;
    QString oldPath; ///< of the file to replace; empty for none
    QString path; ///< of the file that was written
    QString fileName;

    /// Writes the request to the first free name for `commonName` in the request directory, and
    /// removes the old file then. False where that fails; the old file is whole then.
    bool write();

private:
    void findName();
};

} // namespace Trivex
