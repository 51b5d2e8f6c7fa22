// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Carries the outcomes of signing and verifying into QML.
class SecureMessage : public QObject {
    Q_OBJECT
public:
    /// 0 to 12 as `QCA::SecureMessage::Error`.
    enum Error {
        ErrorPassphrase = 0,
        ErrorFormat = 1,
        ErrorSignerExpired = 2,
        ErrorSignerInvalid = 3,
        ErrorEncryptExpired = 4,
        ErrorEncryptUntrusted = 5,
        ErrorEncryptInvalid = 6,
        ErrorNeedCard = 7,
        ErrorCertKeyMismatch = 8,
        ErrorUnknown = 9,
        ErrorSignerRevoked = 10,
        ErrorSignatureExpired = 11,
        ErrorEncryptRevoked = 12,
        NoError = 255,
        ErrorPathNotFound = 256,
        ErrorFileNotLoaded = 257,
    };
    Q_ENUM(Error)

    explicit SecureMessage(QObject *parent = nullptr);
};
