// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <QByteArray>
#include <QList>

#include <openssl/pkcs12.h>

namespace TrivexTest {

/// A new key on P-256.
Trivex::PKeyHandle newKey();

/// A certificate for a day from now on. The names have one CN each.
Trivex::X509Handle issued(const QByteArray &subject, EVP_PKEY *key, const QByteArray &issuer,
                          EVP_PKEY *issuerKey, int serial = 7);

/// A key with a certificate that it signed itself.
struct KeyAndCertificate {
    explicit KeyAndCertificate(const QByteArray &name)
        : key(newKey())
        , certificate(issued(name, key.get(), name, key.get()))
    {
    }

    Trivex::PKeyHandle key;
    Trivex::X509Handle certificate;
};

/// A PKCS#12 bundle under way, whose members stand in the order in which they are added.
class BundleBuilder {
public:
    static constexpr char Password[] = "secret";

    BundleBuilder() = default;
    ~BundleBuilder();
    BundleBuilder(const BundleBuilder &) = delete;
    BundleBuilder &operator=(const BundleBuilder &) = delete;

    /// A key in plain, or encrypted by `secret`.
    BundleBuilder &key(EVP_PKEY *key, const char *secret = nullptr);
    /// A key as its PrivateKeyInfo in DER, which need not be a good one.
    BundleBuilder &keyInfo(const QByteArray &privateInfo);
    BundleBuilder &certificate(X509 *certificate);
    /// The same, with an identifier at once.
    BundleBuilder &key(const KeyAndCertificate &pair, const QByteArray &localId = {},
                       const char *secret = nullptr)
    {
        return key(pair.key.get(), secret).identified(localId);
    }
    BundleBuilder &certificate(const KeyAndCertificate &pair, const QByteArray &localId = {})
    {
        return certificate(pair.certificate.get()).identified(localId);
    }
    /// Gives what was added last an identifier (localKeyId); an empty one is none.
    BundleBuilder &identified(const QByteArray &localId);
    /// The name of what was added last, in octets of UTF-16.
    BundleBuilder &named(const QByteArray &utf16);
    /// Puts all that was added so far into a bag of its own.
    BundleBuilder &nested();

    /// The bundle, with further parts in DER behind its own, checked by `secret` or by nothing.
    QByteArray sealed(const char *secret = Password, bool isChecked = true,
                      const QList<QByteArray> &safes = {});

private:
    PKCS12_SAFEBAG *last() const;

    STACK_OF(PKCS12_SAFEBAG) *m_bags = sk_PKCS12_SAFEBAG_new_null();
};

} // namespace TrivexTest
