// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Lists: of certificates (PKCS#7) and of what was revoked.
#include "fuzz/target.h"
#include "qca/asn1/pem.h"
#include "qca/chains/chaincheck.h"
#include "qca/chains/listreader.h"
#include "qca/describe/description.h"
#include "qca/x509/collectioncontext.h"
#include "qca/x509/crlcontext.h"

using namespace Trivex;

void TrivexFuzz::take(const QByteArray &input)
{
    const QList<PemBlock> blocks = readPem(input);
    const QByteArray der = blocks.isEmpty() ? input : blocks.first().data;
    QList<QCA::CertContext *> certificates;
    QList<QCA::CRLContext *> lists;
    CollectionContext collection(nullptr);
    if (collection.fromPKCS7(der, &certificates, &lists) == QCA::ConvertGood) {
        for (const QCA::CertContext *certificate : qAsConst(certificates))
            certificate->props();
        const QByteArray again = collection.toPKCS7(certificates, lists);
        check(!again.isEmpty() || certificates.isEmpty(), "a collection can be written");
    }
    qDeleteAll(certificates);
    qDeleteAll(lists);
    CrlContext list(nullptr);
    if (list.fromDER(der) == QCA::ConvertGood) {
        check(der.startsWith(list.toDER()), "a list keeps its bytes");
        list.props();
    }
    readLists(input);
    describe(ShownKind::RevocationList, der);
}
