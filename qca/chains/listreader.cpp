// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/listreader.h"

#include "qca/asn1/nativecoding.h"
#include "qca/asn1/pem.h"
#include "qca/x509/canonicalname.h"

namespace Trivex {

namespace {

/// Whether libcrypto can read it, which has the last word.
bool isList(const QByteArray &der)
{
    return !issuerOfList(der).isEmpty()
        && decodeNative<CrlHandle>(Der::sliceOf(der), d2i_X509_CRL) != nullptr;
}

} // namespace

QVector<QByteArray> readLists(const QByteArray &bytes)
{
    QVector<QByteArray> lists;
    Der::Element element;
    if (Der::Reader(Der::sliceOf(bytes)).next(Der::Sequence, &element)) {
        const QByteArray der = element.whole.bytes();
        if (isList(der))
            lists += der;
        return lists;
    }
    // Most files are certificates, which need not be taken apart for this.
    if (!bytes.contains(" CRL-----"))
        return lists;
    int broken = 0;
    const QList<PemBlock> blocks = readPem(bytes, &broken);
    for (const PemBlock &block : blocks) {
        if (block.label.endsWith("CRL") && isList(block.data))
            lists += block.data;
    }
    return lists;
}

/// CertificateList ::= SEQUENCE { SEQUENCE { version OPTIONAL, signature, issuer, ... }, ... }
/// (RFC 5280, 5.1). Empty for anything else.
QByteArray issuerOfList(const QByteArray &der)
{
    Der::Slice list;
    Der::Slice body;
    Der::Slice algorithm;
    Der::Element issuer;
    Der::Reader outer(Der::sliceOf(der));
    if (!outer.next(Der::Sequence, &list))
        return {};
    Der::Reader middle(list);
    if (!middle.next(Der::Sequence, &body))
        return {};
    Der::Reader inner(body);
    inner.skip(Der::Integer);
    if (!inner.next(Der::Sequence, &algorithm) || !inner.nextList(Der::Sequence, &issuer))
        return {};
    return canonicalName(issuer.whole);
}

} // namespace Trivex
