// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keymaterial.h"

#include <QHash>
#include <QList>
#include <QString>

namespace Trivex {

/// A private key of a bundle, with the attributes that PKCS#9 has for it.
struct BundleKey {
    KeyMaterial key;
    QString name;
    QByteArray localId;
};

struct BundleCertificate {
    QByteArray der;
    QString name;
    QByteArray localId;
};

/// Finds the certificate of a key, fast for any number of both.
class OwnCertificates {
public:
    explicit OwnCertificates(const QList<BundleCertificate> &certificates);

    /// The index of the certificate with the public key of `key`; -1 for none. A common identifier
    /// counts only when the public keys can't be compared.
    int find(const BundleKey &key);

private:
    bool fits(const QByteArray &publicInfo, const BundleKey &key);

    QHash<QByteArray, int> m_byPublicKey;
    QHash<QByteArray, QList<int>> m_byLocalId;
    QList<QByteArray> m_publicInfos;
    int m_checks = 0;
};

} // namespace Trivex
