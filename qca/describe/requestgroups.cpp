// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/groups.h"

#include "qca/asn1/attributeids.h"
#include "qca/describe/extensiontexts.h"
#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"
#include "qca/x509/requesthead.h"
#include "qca/x509/signedfields.h"

namespace Trivex {

namespace {

/// The values of one attribute, a line each as `extensionText` has them.
ShownRow attributeRow(Der::Slice oid, Der::Slice values)
{
    QStringList texts;
    Der::Reader reader(values);
    while (!reader.atEnd() && texts.size() < MaxShownLines) {
        Der::Element value;
        const Der::Slice rest = reader.rest();
        texts += reader.next(&value) ? extensionText(oid, value.whole) : damagedText(rest);
    }
    if (texts.isEmpty())
        texts += qtTrId("trivex-app-ext-empty");
    return {Der::oidText(oid), extensionLabel(oid), texts.join(QLatin1Char('\n')), false};
}

void addAttribute(Der::Slice attribute, QVector<ShownRow> *rows, QVector<ShownRow> *extensions)
{
    Der::Reader reader(attribute);
    Der::Slice oid;
    Der::Slice values;
    Der::Slice list;
    if (!reader.next(Der::ObjectIdentifier, &oid) || !reader.nextList(Der::Set, &values)) {
        *rows += {{}, qtTrId("trivex-app-damaged-part"), damagedText(attribute), true};
        return;
    }
    const QByteArray dotted = Der::oidText(oid);
    const bool hasExtensions =
        dotted == Oid::ExtensionRequest || dotted == Oid::MicrosoftExtensionRequest;
    if (hasExtensions && Der::Reader(values).nextList(Der::Sequence, &list))
        *extensions += extensionRows(list);
    else if (rows->size() <= MaxShownRows)
        *rows += attributeRow(oid, values);
    else
        *rows += ShownRow();
}

void addAttributes(Der::Slice attributes, Groups *groups)
{
    QVector<ShownRow> rows;
    QVector<ShownRow> extensions;
    Der::Reader reader(attributes);
    while (!reader.atEnd()) {
        const Der::Slice rest = reader.rest();
        Der::Slice attribute;
        if (reader.next(Der::Sequence, &attribute)) {
            addAttribute(attribute, &rows, &extensions);
        } else {
            rows += {{}, qtTrId("trivex-app-damaged-part"), damagedText(rest), true};
            break;
        }
    }
    groups->add(ShownTopic::Extensions, qtTrId("trivex-app-ext-wanted"), extensions);
    //% "Attributes"
    groups->add(ShownTopic::Attributes, qtTrId("trivex-app-attributes"), rows);
}

} // namespace

bool addRequest(Der::Slice der, Groups *groups)
{
    SignedFields fields;
    if (!findSignedFields(der, &fields))
        return false;
    RequestHead head;
    if (!findRequestHead(fields.body.content, &head))
        return false;
    groups->add(ShownTopic::General, qtTrId("trivex-app-general"),
                {versionRow(head.version.content), signatureRow(fields.algorithm.whole)});
    addName(ShownTopic::Holder, head.subject.whole, groups);
    addPublicKey(head.publicInfo.whole, groups);
    Der::Slice attributes;
    if (Der::Reader(head.rest).next(Der::context(0), &attributes))
        addAttributes(attributes, groups);
    addSignature(fields.signatureBytes(), groups);
    return true;
}

} // namespace Trivex
