// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keymaterial.h"

namespace Trivex {

/// The context behind `QCA::PublicKey` and `QCA::PrivateKey`: holds a key of any kind, ours or a
/// token's, and reads and writes the encoded forms.
class TRIVEX_QCA_EXPORT PKeyContainer : public QCA::PKeyContext {
    Q_OBJECT
public:
    /// Takes ownership of `key`, which may be null.
    explicit PKeyContainer(QCA::Provider *provider, QCA::PKeyBase *key = nullptr);
    /// The same, but the container names another provider than its keys do; see
    /// `softwareKeyProvider`.
    PKeyContainer(QCA::Provider *provider, QCA::Provider *keyProvider, QCA::PKeyBase *key);
    ~PKeyContainer() override;

    QCA::Provider::Context *clone() const override;

    QList<QCA::PKey::Type> supportedTypes() const override;
    QList<QCA::PKey::Type> supportedIOTypes() const override;
    QList<QCA::PBEAlgorithm> supportedPBEAlgorithms() const override;

    QCA::PKeyBase *key() override { return m_key; }
    const QCA::PKeyBase *key() const override { return m_key; }
    void setKey(QCA::PKeyBase *key) override;
    bool importKey(const QCA::PKeyBase *key) override;

    QByteArray publicToDER() const override;
    QString publicToPEM() const override;
    QCA::ConvertResult publicFromDER(const QByteArray &der) override;
    QCA::ConvertResult publicFromPEM(const QString &pem) override;

    /// Unencrypted with an empty passphrase. Empty for a key that can't be exported.
    QCA::SecureArray privateToDER(const QCA::SecureArray &passphrase,
                                  QCA::PBEAlgorithm pbe) const override;
    QString privateToPEM(const QCA::SecureArray &passphrase, QCA::PBEAlgorithm pbe) const override;
    QCA::ConvertResult privateFromDER(const QCA::SecureArray &der,
                                      const QCA::SecureArray &passphrase) override;
    QCA::ConvertResult privateFromPEM(const QString &pem,
                                      const QCA::SecureArray &passphrase) override;

private:
    PKeyContainer(const PKeyContainer &other);
    QCA::ConvertResult adopt(KeyMaterial material);

    // The first member, and a plain pointer: stock code reads the key of a foreign container there.
    QCA::PKeyBase *m_key;
    QCA::Provider *m_keyProvider;
};

/// The provider that the containers of software keys name: the stock one if it is loaded, else
/// `own`. Stock TLS and CMS treat a key of another provider as one without bytes, wrap it so that
/// it can't sign, and crash when it has to (QCA 2.3). They read their own keys by the layout, and
/// ours have the same layout. The key inside still names its true provider.
TRIVEX_QCA_EXPORT QCA::Provider *softwareKeyProvider(QCA::Provider *own);

/// The context for `material`: RSA, DSA and DH by their QCA class, all other kinds as
/// `EcKeyContext`. Null for null material. The caller owns it.
TRIVEX_QCA_EXPORT QCA::PKeyBase *makeKeyContext(KeyMaterial material, QCA::Provider *provider);

/// The same for the public key in DER SubjectPublicKeyInfo. An unknown algorithm gives a context
/// with `keyType()` `OtherKey`, its encoding, and 0 bits. Null when the bytes are no key.
TRIVEX_QCA_EXPORT QCA::PKeyBase *makePublicKeyContext(const QByteArray &spki,
                                                      QCA::Provider *provider);

/// The material of a context of any provider: read directly from ours, through the encodings from
/// foreign ones, never by a cast to an unknown class. Null when it is not available (a token's
/// private key).
TRIVEX_QCA_EXPORT KeyMaterial materialOf(const QCA::PKeyBase *key);
/// The public half of a key of any provider, on a token or not. Shares the native object of ours,
/// which is costly to decode.
KeyMaterial publicMaterialOf(const QCA::PKeyBase *key);

} // namespace Trivex
