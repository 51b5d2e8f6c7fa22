// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/keystoreentry.h"
#include "signing/signverify.h"

#include <QSignalSpy>

namespace TrivexTest {

/// For a signature that must come, on a busy machine too.
constexpr int SignTime = 30000; // ms

/// A signer, somebody who answers its questions at once, and what was asked and signed.
class AskedSigner : public SignVerify {
public:
    AskedSigner()
    {
        connect(this, &SignVerify::getPin, this, [this] {
            if (typed.isEmpty())
                pinRejected();
            else
                pinAccepted(typed);
        });
    }

    /// Signs and waits for the success.
    bool hasSigned(const QString &path, KeyStoreEntry *entry)
    {
        sign(QByteArrayLiteral("What is signed"), path, entry);
        return isSigned.wait(SignTime);
    }

    QSignalSpy asked{this, &SignVerify::getPin};
    QSignalSpy isSigned{this, &SignVerify::signSuccess};
    QString typed = QStringLiteral("1234"); ///< empty: every question is rejected
};

} // namespace TrivexTest
