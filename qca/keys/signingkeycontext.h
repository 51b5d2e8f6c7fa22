// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keybase.h"
#include "qca/keys/requestsigner.h"

namespace Trivex {

/// The base of the contexts of keys that sign: RSA, DSA and curves.
///
/// Data is digested by the digest that the algorithm names (`EMSA1_SHA1`, `EMSA3_*` and our numbers
/// 11 to 15); with `EMSA3_Raw` it is the digest itself. Any other algorithm makes the signature
/// fail.
template <class Base>
class TRIVEX_QCA_EXPORT SigningKeyContext : public KeyBase<Base>, public RequestSigner {
public:
    void startSign(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override;
    void startVerify(QCA::SignatureAlgorithm algorithm, QCA::SignatureFormat format) override;
    QByteArray endSign() override;
    bool endVerify(const QByteArray &signature) override;

    bool signMessage(const QByteArray &message, const QByteArray &digestName,
                     QByteArray *signature) override;

protected:
    using KeyBase<Base>::KeyBase;
    SigningKeyContext(const SigningKeyContext &other)
        : KeyBase<Base>(other)
        , RequestSigner(other)
    {
    }

    bool signBlock(const QByteArray &block, QByteArray *signature) override;

    /// True for a key that digests by itself.
    virtual bool takesMessage() const { return false; }
    /// The octets that are signed for a digest.
    virtual QByteArray blockOf(const QByteArray &digestName, const QByteArray &digest) const;
    /// The length of r and of s in the signature that is being made or verified; 0 where that is
    /// not the two side by side.
    virtual int partBits() const { return 0; }

private:
    void start(KeyOperation::Mode mode, QCA::SignatureAlgorithm algorithm,
               QCA::SignatureFormat format);
    bool finish(KeyOperation::Mode mode, QByteArray *block);
};

} // namespace Trivex
