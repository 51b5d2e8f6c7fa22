// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/groups.h"

#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"
#include "qca/x509/certificatefields.h"

namespace Trivex {

namespace {

/// The unique identifiers of version 2, which nothing else of ours reads.
QVector<ShownRow> uniqueIdRows(const CertificateFields &fields)
{
    QVector<ShownRow> rows;
    const char *const end = fields.body.content.data + fields.body.content.size;
    const char *const start = fields.publicInfo.data + fields.publicInfo.size;
    Der::Reader rest({start, int(end - start)});
    //% "Unique identifier of the issuer"
    const QString labels[] = {qtTrId("trivex-app-unique-issuer"),
                              //% "Unique identifier of the holder"
                              qtTrId("trivex-app-unique-holder")};
    for (const int number : {1, 2}) {
        Der::Element id;
        if (rest.next(Der::context(number, false), &id) || rest.next(Der::context(number), &id))
            rows += {{}, labels[number - 1], bytesText(id.content), true};
    }
    return rows;
}

QVector<ShownRow> generalRows(const CertificateFields &fields)
{
    QVector<ShownRow> rows;
    rows += versionRow(fields.version);
    rows += {ShownId::SerialNumber, qtTrId("trivex-app-serial"), bytesText(fields.serial.content),
             true};
    //% "Serial number, decimal"
    rows += {{}, qtTrId("trivex-app-serial-decimal"), decimalText(fields.serial.whole), true};
    rows += signatureRow(fields.algorithm.whole);
    if (!(fields.innerAlgorithm == fields.algorithm.whole)) {
        ShownRow inner = signatureRow(fields.innerAlgorithm);
        //% "Signature algorithm, as signed"
        inner.label = qtTrId("trivex-app-signature-signed");
        inner.id.clear();
        rows += inner;
    }
    return rows + uniqueIdRows(fields);
}

} // namespace

bool addCertificate(Der::Slice der, Groups *groups)
{
    CertificateFields fields;
    if (!findCertificateFields(der, &fields))
        return false;
    groups->add(ShownTopic::General, qtTrId("trivex-app-general"), generalRows(fields));
    addName(ShownTopic::Holder, fields.subject, groups);
    addName(ShownTopic::Issuer, fields.issuer, groups);
    //% "Validity"
    groups->add(
        ShownTopic::Validity, qtTrId("trivex-app-validity-group"),
        //% "Valid from"
        {{ShownId::ValidFrom, qtTrId("trivex-app-valid-from"), timeText(fields.notBefore), false},
         //% "Valid until"
         {ShownId::ValidUntil, qtTrId("trivex-app-valid-until"), timeText(fields.notAfter),
          false}});
    addPublicKey(fields.publicInfo, groups);
    addExtensions(fields.extensions, groups);
    addSignature(fields.signatureBytes(), groups);
    return true;
}

} // namespace Trivex
