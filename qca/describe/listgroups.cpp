// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/groups.h"

#include "qca/describe/extensiontexts.h"
#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"
#include "qca/x509/signedfields.h"

namespace Trivex {

namespace {

/// One entry on one line: serial number, when, and what its extensions say.
QString entryText(Der::Slice entry)
{
    Der::Reader parts(entry);
    Der::Slice serial;
    Der::Element time;
    Der::Slice extensions;
    if (!parts.next(Der::Integer, &serial) || !parts.next(&time))
        return damagedText(entry);
    QStringList words = {bytesText(serial), timeText(time)};
    if (parts.nextList(Der::Sequence, &extensions)) {
        const QVector<ShownRow> rows = extensionRows(extensions);
        for (const ShownRow &row : rows)
            words += labeledText(
                row.label, QString(row.value).replace(QLatin1Char('\n'), QStringLiteral(", ")));
    }
    return words.join(QStringLiteral("  "));
}

void addEntries(Der::Slice list, Groups *groups)
{
    Lines lines;
    int count = 0;
    Der::Reader reader(list);
    while (!reader.atEnd()) {
        const Der::Slice rest = reader.rest();
        Der::Slice entry;
        const bool isEntry = reader.next(Der::Sequence, &entry);
        ++count;
        if (lines.isFull())
            lines.skip();
        else
            lines.add(isEntry ? entryText(entry) : damagedText(rest));
        if (!isEntry)
            break;
    }
    //% "Revoked certificates"
    groups->add(ShownTopic::Entries, qtTrId("trivex-app-list-count"),
                //% "Number"
                {{{}, qtTrId("trivex-app-list-number-of"), QString::number(count), false},
                 //% "Serial numbers, and when"
                 {{}, qtTrId("trivex-app-list-entries"), lines.text(), true}});
}

} // namespace

bool addRevocationList(Der::Slice der, Groups *groups)
{
    SignedFields fields;
    if (!findSignedFields(der, &fields))
        return false;
    Der::Reader body(fields.body.content);
    Der::Slice version;
    Der::Slice algorithm;
    Der::Element issuer;
    Der::Element made;
    Der::Element next;
    Der::Slice list;
    Der::Slice wrapped;
    body.next(Der::Integer, &version);
    if (!body.next(Der::Sequence, &algorithm) || !body.nextList(Der::Sequence, &issuer)
        || !Der::isTime(body.peek()) || !body.next(&made))
        return false;
    const bool hasNext = Der::isTime(body.peek()) && body.next(&next);
    groups->add(ShownTopic::General, qtTrId("trivex-app-general"),
                {versionRow(version),
                 //% "Issued on"
                 {{}, qtTrId("trivex-app-list-made"), timeText(made), false},
                 //% "Next update by"
                 {{}, qtTrId("trivex-app-list-next"), hasNext ? timeText(next) : QString(), false},
                 signatureRow(fields.algorithm.whole)});
    addName(ShownTopic::Issuer, issuer.whole, groups);
    Der::Slice entries;
    body.nextList(Der::Sequence, &entries);
    if (body.next(Der::context(0), &wrapped) && Der::singleList(wrapped, Der::Sequence, &list))
        addExtensions(list, groups);
    addEntries(entries, groups);
    addSignature(fields.signatureBytes(), groups);
    return true;
}

} // namespace Trivex
