// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// The interface that our own key contexts have beside QCA's. Each inherits it next to its QCA
/// base; `dynamic_cast` from `QCA::PKeyBase` finds it across plugins, because its type information
/// lives in the platform library only. Foreign contexts do not have it.
class TRIVEX_QCA_EXPORT ExtendedKey {
public:
    virtual ~ExtendedKey();

    /// A value of `Trivex::KeyType`. QCA's own enumeration ends at 2, so larger kinds travel here
    /// as an int.
    virtual int keyType() const = 0;

    /// DER SubjectPublicKeyInfo (RFC 5280, 4.1) of the public half; empty when it is not known.
    virtual QByteArray subjectPublicKeyInfo() const = 0;

    /// For a key on a token: the id of its key store and a stable id of the key there (so that the
    /// origin of a generated key can be checked); empty for a software key.
    virtual QString keyStoreId() const;

protected:
    ExtendedKey() = default;
    ExtendedKey(const ExtendedKey &) = default;
    ExtendedKey &operator=(const ExtendedKey &) = default;
};

} // namespace Trivex
