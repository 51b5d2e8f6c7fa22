// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/certificateparts.h"

#include "qca/x509/certificatefields.h"
#include "qca/x509/extensions.h"

namespace Trivex {

namespace {

DerSpan spanIn(const QByteArray &der, Der::Slice slice)
{
    if (slice.isEmpty())
        return {};
    return {quint32(slice.data - der.constData()), quint32(slice.size)};
}

} // namespace

CertificateParts certificateParts(const QByteArray &der)
{
    CertificateFields fields;
    if (!findCertificateFields(Der::sliceOf(der), &fields))
        return {};
    CertificateParts parts;
    parts.serial = spanIn(der, fields.serial.whole);
    parts.issuer = spanIn(der, fields.issuer);
    parts.subject = spanIn(der, fields.subject);
    parts.publicInfo = spanIn(der, fields.publicInfo);
    parts.extensions = spanIn(der, fields.extensions);
    parts.isAuthority = isAuthority(fields.extensions);
    return parts;
}

} // namespace Trivex
