// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/groups.h"

#include "qca/describe/algorithmtexts.h"
#include "qca/describe/extensiontexts.h"
#include "qca/describe/keytexts.h"
#include "qca/describe/nametexts.h"
#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"

namespace Trivex {

Groups &Groups::add(ShownTopic topic, const QString &title, const QVector<ShownRow> &rows)
{
    ShownGroup group{topic, title, {}};
    for (const ShownRow &row : rows) {
        if (group.rows.size() == MaxShownRows)
            break;
        if (!row.value.isEmpty())
            append(row, &group.rows);
    }
    if (rows.size() > MaxShownRows) {
        //% "More of them"
        group.rows += {{},
                       qtTrId("trivex-app-more-rows"),
                       qtTrId("trivex-app-and-more", rows.size() - MaxShownRows),
                       false};
    }
    if (!group.rows.isEmpty())
        m_groups += group;
    return *this;
}

void Groups::append(const ShownRow &row, QVector<ShownRow> *rows)
{
    *rows += row;
    if (m_size + row.value.size() > MaxShownText && row.value.size() > MaxShownBehind)
        rows->last().value = row.value.left(MaxShownBehind) + QStringLiteral("…");
    m_size += rows->last().value.size();
}

void addName(ShownTopic topic, Der::Slice name, Groups *groups)
{
    //% "Holder"
    groups->add(topic,
                topic == ShownTopic::Holder ? qtTrId("trivex-app-holder")
                                            //% "Issuer"
                                            : qtTrId("trivex-app-issuer"),
                nameRows(name));
}

void addPublicKey(Der::Slice publicInfo, Groups *groups)
{
    //% "Public key"
    groups->add(ShownTopic::PublicKey, qtTrId("trivex-app-item-public-key"),
                publicKeyRows(publicInfo.view()));
}

void addExtensions(Der::Slice extensions, Groups *groups)
{
    //% "Extensions"
    groups->add(ShownTopic::Extensions, qtTrId("trivex-app-extensions"), extensionRows(extensions));
}

void addSignature(const QByteArray &bits, Groups *groups)
{
    //% "Signature"
    groups->add(ShownTopic::Signature, qtTrId("trivex-app-signature-group"),
                //% "Value"
                {{{}, qtTrId("trivex-app-signature-value"), bytesText(Der::sliceOf(bits)), true}});
}

ShownRow versionRow(Der::Slice content)
{
    const int number = content.isEmpty() ? 0 : Der::smallInteger(content);
    return {{},
            qtTrId("trivex-app-version"),
            number >= 0 ? QString::number(number + 1) : damagedText(content),
            false};
}

ShownRow signatureRow(Der::Slice algorithm)
{
    Der::Slice content;
    Der::Reader(algorithm).next(Der::Sequence, &content);
    //% "Signature algorithm"
    return {ShownId::SignatureAlgorithm, qtTrId("trivex-app-signature-algorithm"),
            signatureAlgorithmText(content), false};
}

} // namespace Trivex
