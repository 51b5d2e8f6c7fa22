// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/collectionwriting.h"

#include "qca/asn1/handles.h"

namespace Trivex {

namespace {

bool addCertificate(PKCS7 *collection, const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    const X509Handle certificate(d2i_X509(nullptr, &data, der.size()));
    return certificate && PKCS7_add_certificate(collection, certificate.get()) == 1;
}

} // namespace

QByteArray writeCollection(const QVector<QByteArray> &certificates)
{
    const Pkcs7Handle collection(PKCS7_new());
    if (!collection || certificates.isEmpty()
        || PKCS7_set_type(collection.get(), NID_pkcs7_signed) != 1
        || PKCS7_content_new(collection.get(), NID_pkcs7_data) != 1
        || PKCS7_set_detached(collection.get(), 1) != 1)
        return {};
    for (const QByteArray &der : certificates) {
        if (!addCertificate(collection.get(), der))
            return {};
    }
    QByteArray encoded(i2d_PKCS7(collection.get(), nullptr), Qt::Uninitialized);
    auto *place = reinterpret_cast<unsigned char *>(encoded.data());
    return i2d_PKCS7(collection.get(), &place) > 0 ? encoded : QByteArray();
}

} // namespace Trivex
