// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/discretelogcontext.h"

namespace Trivex {

/// A DSA key. Its signatures are DER DSS-Sig-Value, or r and s side by side with `IEEE_1363`, which
/// is what QCA makes of the default.
class TRIVEX_QCA_EXPORT DsaKeyContext : public DsaKeyBase {
    Q_OBJECT
public:
    /// With material of another kind the context is null.
    explicit DsaKeyContext(QCA::Provider *provider, KeyMaterial material = KeyMaterial());
    ~DsaKeyContext() override;

    QCA::Provider::Context *clone() const override;

protected:
    DsaKeyContext(const DsaKeyContext &other);
    int partBits() const override;
};

} // namespace Trivex
