// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/shownvalues.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/pem.h"
#include "tools/checkdigits.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Larger ones are saved as files and not shown: their lines would keep the window busy.
constexpr int LargestPem = 64 * 1024;

struct Checked {
    const char *id;
    CheckDigits::Kind kind;
};

constexpr Checked CheckedIds[] = {
    {Oid::Inn, CheckDigits::Inn},       {Oid::Snils, CheckDigits::Snils},
    {Oid::Ogrn, CheckDigits::Ogrn},     {Oid::Innle, CheckDigits::Innle},
    {Oid::Ogrnip, CheckDigits::Ogrnip},
};

QString flagOf(const QByteArray &id, const QString &value)
{
    const auto *const found = std::find_if(std::begin(CheckedIds), std::end(CheckedIds),
                                           [&id](const Checked &one) { return id == one.id; });
    return found == std::end(CheckedIds) ? QString() : CheckDigits::explain(found->kind, value);
}

const char *pemLabel(ShownKind kind)
{
    switch (kind) {
    case ShownKind::Certificate:
        return "CERTIFICATE";
    case ShownKind::Request:
        return "CERTIFICATE REQUEST";
    case ShownKind::RevocationList:
        return "X509 CRL";
    case ShownKind::PublicKey:
        break;
    }
    return "PUBLIC KEY";
}

} // namespace

QVariantMap valueRow(const QByteArray &id, const QString &label, const QString &value, bool isFixed)
{
    return {{QStringLiteral("label"), label},
            {QStringLiteral("value"), value},
            {QStringLiteral("fixed"), isFixed},
            {QStringLiteral("flag"), flagOf(id, value)}};
}

QVariantMap valueRow(const ShownRow &row)
{
    return valueRow(row.id, row.label, row.value, row.isFixed);
}

QVariantMap valueGroup(const QString &title, const QVariantList &rows)
{
    return {{QStringLiteral("title"), title}, {QStringLiteral("rows"), rows}};
}

QVariantList valueGroups(const QVector<ShownGroup> &groups)
{
    QVariantList result;
    for (const ShownGroup &group : groups) {
        QVariantList rows;
        for (const ShownRow &row : group.rows)
            rows += valueRow(row);
        result += valueGroup(group.title, rows);
    }
    return result;
}

QString pemText(ShownKind kind, const QByteArray &der)
{
    return der.isEmpty() || der.size() > LargestPem
        ? QString()
        : QString::fromLatin1(writePem(pemLabel(kind), der));
}

} // namespace Trivex
