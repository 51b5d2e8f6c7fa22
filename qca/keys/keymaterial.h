// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/base/secret.h"
#include "qca/keys/extendedkey.h"

#include <QtCrypto>

namespace Trivex {

/// The contents of a key context: the native key if libcrypto can make one, and always the encoded
/// form, so that a key of an unknown algorithm still has a kind, a size and bytes. Copies share the
/// native key. None of it is QCA's memory: threads that outlive QCA may hold it.
class TRIVEX_QCA_EXPORT KeyMaterial {
public:
    KeyMaterial() = default;
    KeyMaterial(const KeyMaterial &other);
    KeyMaterial(KeyMaterial &&other) noexcept = default;
    KeyMaterial &operator=(KeyMaterial other) noexcept;

    /// Takes ownership of `key`; `isPrivate` says whether it is used as a private key.
    static KeyMaterial fromNative(PKeyHandle key, bool isPrivate);
    /// From DER SubjectPublicKeyInfo (RFC 5280, 4.1); null when the bytes are not one.
    static KeyMaterial fromPublicInfo(const QByteArray &spki);
    /// From DER PrivateKeyInfo (RFC 5208); null when the bytes are not one.
    static KeyMaterial fromPrivateInfo(const Secret &pkcs8);

    bool isNull() const { return m_keyType < 0; }
    bool isPrivate() const { return m_isPrivate; }
    /// A value of `Trivex::KeyType`; -1 when null.
    int keyType() const { return m_keyType; }
    /// 0 where the size of the algorithm's keys is not known.
    int bits() const { return m_bits; }
    /// Null for an algorithm that libcrypto can't handle here (GOST without an engine, say).
    EVP_PKEY *native() const { return m_native.get(); }
    /// DER SubjectPublicKeyInfo; empty when there is only an unknown private form.
    const QByteArray &publicInfo() const { return m_publicInfo; }
    /// DER PrivateKeyInfo, unencrypted; empty for a public key and for one that can't be written.
    Secret privateInfo() const;

    /// Adds the public half that came with a private key of an unknown algorithm. Changes nothing
    /// if the public half is known already or `publicInfo` is another kind of key.
    void setPublicInfo(const QByteArray &spki);
    /// Forgets the private half.
    void makePublic();

private:
    // The first member, and a plain pointer in memory: stock code reads the key of a foreign
    // context there.
    PKeyHandle m_native;
    QByteArray m_publicInfo;
    Secret m_opaquePrivate;
    int m_keyType = -1;
    int m_bits = 0;
    bool m_isPrivate = false;
};

} // namespace Trivex
