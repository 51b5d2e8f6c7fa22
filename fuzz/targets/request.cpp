// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A certification request, by itself and as SPKAC, and one that is edited.
#include "fuzz/target.h"
#include "qca/asn1/pem.h"
#include "qca/describe/description.h"
#include "qca/x509/requestcontext.h"

#include <memory>

using namespace Trivex;

void TrivexFuzz::take(const QByteArray &input)
{
    const QList<PemBlock> blocks = readPem(input);
    const QByteArray der = blocks.isEmpty() ? input : blocks.first().data;
    RequestContext request(nullptr);
    if (request.fromDER(der) == QCA::ConvertGood) {
        check(der.startsWith(request.toDER()), "a request keeps its bytes");
        request.props();
        const std::unique_ptr<QCA::PKeyContext> key(request.subjectPublicKey());
        check(key != nullptr, "a request has a key context");
        RequestContext again(nullptr);
        check(again.fromPEM(request.toPEM()) == QCA::ConvertGood && request.compare(&again),
              "a request is the same after PEM");
    }
    RequestContext spkac(nullptr);
    if (spkac.fromSPKAC(QString::fromLatin1(input)) == QCA::ConvertGood)
        spkac.props();
    describe(ShownKind::Request, der);
}
