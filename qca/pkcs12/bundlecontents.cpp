// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/bundlecontents.h"

#include "qca/base/bounds.h"
#include "qca/keys/gostpublickey.h"
#include "qca/x509/certificatedata.h"

#include <openssl/err.h>

namespace Trivex {

OwnCertificates::OwnCertificates(const QList<BundleCertificate> &certificates)
{
    for (int i = 0; i < certificates.size(); ++i) {
        const BundleCertificate &certificate = certificates.at(i);
        const auto data = CertificateData::fromDer(certificate.der);
        m_publicInfos += data ? data->publicInfo() : QByteArray();
        if (!data)
            continue;
        const QByteArray publicKey = comparablePublicInfo(m_publicInfos.last());
        if (!m_byPublicKey.contains(publicKey))
            m_byPublicKey.insert(publicKey, i);
        if (!certificate.localId.isEmpty())
            m_byLocalId[certificate.localId] += i;
    }
}

int OwnCertificates::find(const BundleKey &key)
{
    const QByteArray publicInfo = key.key.publicInfo();
    if (!publicInfo.isEmpty()) {
        const auto found = m_byPublicKey.constFind(comparablePublicInfo(publicInfo));
        if (found != m_byPublicKey.constEnd())
            return *found;
    }
    // A key whose encoding differs from its certificate's (curve by name or by numbers), or one
    // whose public key is unknown here.
    const QList<int> candidates = m_byLocalId.value(key.localId);
    for (const int candidate : candidates) {
        if (++m_checks > MaxIssuerChecks)
            break;
        if (fits(m_publicInfos.at(candidate), key))
            return candidate;
    }
    return -1;
}

bool OwnCertificates::fits(const QByteArray &publicInfo, const BundleKey &key)
{
    const KeyMaterial other = KeyMaterial::fromPublicInfo(publicInfo);
    if (other.keyType() != key.key.keyType())
        return false;
    const bool isSame = key.key.publicInfo().isEmpty()
        || (key.key.native() && other.native()
            && EVP_PKEY_eq(key.key.native(), other.native()) == 1);
    ERR_clear_error();
    return isSame;
}

} // namespace Trivex
