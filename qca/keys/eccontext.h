// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/extendedkey.h"

#include <QtCrypto>

struct evp_pkey_st;

namespace Trivex {

/// Keeps the native key where stock code reads it in a foreign context: TLS and CMS read the first
/// data member behind `QCA::PKeyBase`, for any kind of key.
class TRIVEX_QCA_EXPORT NativeFirstKey : public QCA::PKeyBase {
    Q_OBJECT
protected:
    using QCA::PKeyBase::PKeyBase;
    NativeFirstKey(const NativeFirstKey &) = default;

    evp_pkey_st *m_stockView = nullptr; ///< owned elsewhere
};

/// The elliptic-curve key context that stock QCA lacks: what a provider returns for its "ec"
/// feature, for Weierstrass, Edwards and GOST keys alike. Its `type()` is 3, the first number
/// behind QCA's own, for all of them; `keyType()` tells them apart.
class TRIVEX_QCA_EXPORT ECContext : public NativeFirstKey, public ExtendedKey {
    Q_OBJECT
public:
    explicit ECContext(QCA::Provider *provider);
    ~ECContext() override;

    QCA::PKey::Type type() const override;

    /// Generates a private key on `curve` ("ec-secp384r1"; each context says what else it takes).
    /// An unknown name fails. With `block` false it returns at once and `finished()` follows on the
    /// thread of this object; afterwards `isNull()` tells whether it worked.
    virtual void createPrivate(const QString &curve, bool block) = 0;

protected:
    ECContext(const ECContext &) = default;
};

} // namespace Trivex
