// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenregistry.h"
#include "tests/pkcs11/failurefixture.h"

namespace TrivexTest {

/// A token with keys that have no certificate: "bare" (RSA) and "twin" (on P-384) share an id.
/// "signer" has a certificate.
class BareKeyFixture : public FailureFixture {
protected:
    explicit BareKeyFixture(const QString &storeName);

    /// The token with these keys; call `startBare` after it.
    bool makeBareToken();
    bool startBare();
    /// No orders are in force, the PIN is the right one, nothing has been asked or gone wrong.
    void resetToken();

    QVector<Trivex::TokenKeyFacts> bareKeys() const;
    /// The first one of that label; without an id where there is none.
    Trivex::TokenKeyFacts bareKey(const char *label) const;
    Trivex::TokenStatus status() const { return Trivex::TokenMonitor::token(m_storeId); }
    /// Whether the change ended well.
    bool change(Trivex::StoreChange::Kind kind, const QString &keyId = {});
    bool remove(const char *label)
    {
        return change(Trivex::StoreChange::RemoveKey, bareKey(label).id);
    }
    bool removeByOthers(const char *type, const QString &id);
    /// Keys of this label on the token itself, of both halves.
    int halves(const char *label) const;

    QString m_storeId;
};

} // namespace TrivexTest
