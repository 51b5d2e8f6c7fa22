// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenadministration.h"
#include "tests/pkcs11/tokenfixture.h"

namespace TrivexTest {

/// A token whose PINs are changed, another one without a PIN, and what tests of that share. What a
/// token is left with is asked of another program.
class AdministrationFixture : public TokenFixture {
protected:
    static inline const QString StoreName = QStringLiteral("Administered");
    static inline const QString OtherName = QStringLiteral("Without a PIN");
    static inline const QByteArray NewPin = QByteArrayLiteral("0987654321");
    static constexpr int Patience = 30000;

    AdministrationFixture()
        : TokenFixture(StoreName)
    {
    }

    /// Both tokens, the signer on the first; false where something of it fails.
    bool prepare();
    /// Gives the first token the PINs back that it had; false where that fails.
    bool resetPins();

    /// Does the task on the token in `m_storeId`, and waits for its end.
    Trivex::TokenAdministrationResult perform(Trivex::TokenAdministration::Kind kind,
                                              const QByteArray &pin, const QByteArray &newPin,
                                              const QString &name = {}, bool mayBeLastTry = false);
    /// Whether another program gets in with that PIN.
    bool opensWith(const QByteArray &pin, const char *type = "user",
                   const QString &name = StoreName) const;
    int objects() const;
    static QString storeIdOf(const QString &name);
    /// Waits for the token of that name; its store.
    QString waitForToken(const QString &name);
    bool waitForCounts(int certificates, int keys);
    /// Back to the token that all begin with, with the signer on it.
    bool makeAnew();

    QString m_storeId;
    Trivex::CancellationPtr m_task; ///< of the last `perform`
};

} // namespace TrivexTest
