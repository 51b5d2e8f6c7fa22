// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/eccontext.h"
#include "qca/keys/signingkeycontext.h"

#include <memory>

namespace Trivex {

class KeyMaker;

/// A key that is neither RSA, DSA nor DH: X9.62 curves, Ed25519 and its kin, GOST R 34.10 with or
/// without an engine, and unknown algorithms, which have only an encoding and a kind. A signature
/// is DER ECDSA-Sig-Value, or r and s side by side with `IEEE_1363`. Contexts for keys on tokens
/// derive from it; see `KeyBase` for what they override.
class TRIVEX_QCA_EXPORT EcKeyContext : public SigningKeyContext<ECContext> {
    Q_OBJECT
public:
    explicit EcKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~EcKeyContext() override;

    QCA::Provider::Context *clone() const override;

    int keyType() const override { return m_material.keyType(); }
    QByteArray subjectPublicKeyInfo() const override { return m_material.publicInfo(); }

    void convertToPublic() override;

    /// Generates in software, on "ec-secp256r1", "ec-secp384r1" or "ec-secp521r1".
    void createPrivate(const QString &curve, bool block) override;

protected:
    EcKeyContext(const EcKeyContext &other);
    bool takesMessage() const override;
    int partBits() const override;

private:
    void show();

    std::unique_ptr<KeyMaker> m_maker;
};

} // namespace Trivex
