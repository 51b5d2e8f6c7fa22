// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/describing.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/pem.h"
#include "tests/x509/builtcertificate.h"

using namespace Trivex;

namespace TrivexTest {

QByteArray derOf(const QByteArray &contents)
{
    const QList<PemBlock> blocks = readPem(contents);
    return blocks.isEmpty() ? contents : blocks.first().data;
}

QVector<ShownRow> rowsOf(const QVector<ShownGroup> &groups, ShownTopic topic)
{
    for (const ShownGroup &group : groups) {
        if (group.topic == topic)
            return group.rows;
    }
    return {};
}

QString valueIn(const QVector<ShownRow> &rows, const QString &label)
{
    for (const ShownRow &row : rows) {
        if (row.label == label || row.id == label.toLatin1())
            return row.value;
    }
    return QStringLiteral("no row ") + label;
}

QByteArray dotted(const char *text)
{
    return Der::writeOid(text).mid(2);
}

QByteArray certificateWith(const QByteArray &extensions)
{
    Parts parts;
    parts.extensions = extensions;
    return certificate(parts);
}

QString extensionValue(const char *oid, const QByteArray &value)
{
    const QByteArray der = certificateWith(extension(dotted(oid), value));
    return valueIn(rowsOf(describe(ShownKind::Certificate, der), ShownTopic::Extensions),
                   QLatin1String(oid));
}

} // namespace TrivexTest
