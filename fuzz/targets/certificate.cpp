// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A certificate by itself: what it says, in every way in which somebody may ask.
#include "fuzz/target.h"
#include "qca/asn1/pem.h"
#include "qca/describe/description.h"
#include "qca/describe/structure.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificateinfo.h"
#include "qca/x509/extensions.h"
#include "qca/x509/makecertificate.h"

using namespace Trivex;

namespace {

void ask(const QCA::Certificate &certificate)
{
    certificate.subjectInfoOrdered();
    certificate.issuerInfo();
    certificate.constraints();
    certificate.policies();
    certificate.crlLocations();
    certificate.issuerLocations();
    certificate.ocspLocations();
    certificate.serialNumber().toString();
    certificate.notValidBefore();
    certificate.notValidAfter();
    certificate.subjectKeyId();
    certificate.issuerKeyId();
    certificate.isCA();
    certificate.isSelfSigned();
    certificate.pathLimit();
    certificate.isIssuerOf(certificate);
    signatureAlgorithm(certificate);
    streetAddress(certificate);
    publicKeyAlgorithmName(certificate);
    encodedPublicKey(certificate.subjectPublicKey());
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    const QList<PemBlock> blocks = readPem(input);
    const QByteArray der = blocks.isEmpty() ? input : blocks.first().data;
    const QCA::Certificate made = makeCertificate(der);
    if (!made.isNull()) {
        check(der.startsWith(made.toDER()), "a certificate keeps its bytes");
        ask(made);
    }
    const QCA::Certificate decoded = QCA::Certificate::fromDER(der);
    if (!decoded.isNull())
        ask(decoded);
    describe(ShownKind::Certificate, der);
    structureText(der);
}
