// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/discretelogcontext.h"

namespace Trivex {

/// A Diffie-Hellman key.
class TRIVEX_QCA_EXPORT DhKeyContext : public DhKeyBase {
    Q_OBJECT
public:
    /// With material of another kind the context is null.
    explicit DhKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~DhKeyContext() override;

    QCA::Provider::Context *clone() const override;

    /// The shared secret with the public key `theirs`; empty when the two don't fit.
    QCA::SymmetricKey deriveKey(const QCA::PKeyBase &theirs) override;

protected:
    DhKeyContext(const DhKeyContext &other);
    bool signBlock(const QByteArray &, QByteArray *) override { return false; }
};

} // namespace Trivex
