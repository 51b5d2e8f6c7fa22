// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/core/heldkey.h"
#include "qca/engine/keys/eckeycontext.h"

namespace Trivex {

/// A key pair on a token that is not RSA: elliptic curves of all kinds, and keys of whose kind only
/// the public half is understood here, which can be shown but not used.
class TokenEcContext : public EcKeyContext {
    Q_OBJECT
public:
    /// For generating a key.
    explicit TokenEcContext(QCA::Provider *provider);
    /// For a key that is there.
    TokenEcContext(QCA::Provider *provider, const TokenKeyReference &reference);
    ~TokenEcContext() override;

    QCA::Provider::Context *clone() const override;

    bool isPrivate() const override { return m_held.isPrivate(); }
    bool canExport() const override { return !isPrivate(); }
    void convertToPublic() override { m_held.release(); }
    QString keyStoreId() const override { return m_held.storeId(); }

    /// Generates on the token that the target or the stored answers name: "ec-secp256r1",
    /// "ec-secp384r1" or "ec-secp521r1".
    void createPrivate(const QString &curve, bool block) override;

protected:
    TokenEcContext(const TokenEcContext &other);
    bool signBlock(const QByteArray &block, QByteArray *signature) override;

private:
    void generate(const GenerationRequest &request, bool block);

    HeldKey m_held;
};

} // namespace Trivex
