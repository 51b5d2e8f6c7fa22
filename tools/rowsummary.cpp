// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowsummary.h"

#include "qca/base/plaintext.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

namespace Trivex {

namespace {

struct Summary {
    QStringList names;
    QStringList places;
    QStringList requests;
    QStringList identities;
    QVariantList keys;
    bool hasKey = false;
    bool isRequest = false;
};

QString nameOf(const SectionedModel &list, int row)
{
    if (list.isKeyAt(row))
        return list.value(row, QStringLiteral("name")).toString();
    const auto *object = list.value(row, QStringLiteral("certificate")).value<QObject *>();
    if (!object)
        return {};
    const QString name = object->property("commonName").toString();
    return plainText(name.isEmpty() ? object->property("fileName").toString() : name);
}

void addKey(const SectionedModel &list, int row, Summary *summary)
{
    const auto value = [&](const char *role) { return list.value(row, QLatin1String(role)); };
    summary->keys += QVariantMap{{QStringLiteral("isKey"), true},
                                 {QStringLiteral("identity"), list.identityAt(row)},
                                 {QStringLiteral("storeId"), value("storeId")},
                                 {QStringLiteral("keyId"), value("keyId")}};
    const QString request = value("request").toString();
    if (!request.isEmpty())
        summary->requests += request;
}

void add(const SectionedModel &list, int row, int typeRole, Summary *summary)
{
    const auto value = [index = list.index(row)](int role) { return index.data(role); };
    const QString place = value(EntryModel::StoreNameRole).toString();
    if (!summary->places.contains(place))
        summary->places += place;
    summary->hasKey = summary->hasKey || value(EntryModel::HasKeyRole).toBool();
    if (list.isKeyAt(row)) {
        addKey(list, row, summary);
        return;
    }
    summary->isRequest = summary->isRequest || value(typeRole).toInt() == SavedRequestType;
    summary->identities += list.identityAt(row);
}

} // namespace

QVariantMap summaryOf(const SectionedModel &list, const QVector<int> &rows, int most)
{
    Summary all;
    const int typeRole = roleNamed(list, QStringLiteral("type"));
    for (const int row : rows) {
        if (all.names.size() < most)
            all.names += nameOf(list, row);
        add(list, row, typeRole, &all);
    }
    return {
        {QStringLiteral("count"), rows.size()},
        {QStringLiteral("identity"), rows.isEmpty() ? QString() : list.identityAt(rows.first())},
        {QStringLiteral("names"), all.names},
        {QStringLiteral("places"), all.places},
        {QStringLiteral("hasKey"), all.hasKey},
        {QStringLiteral("isRequest"), all.isRequest},
        {QStringLiteral("isKey"), all.identities.isEmpty() && !rows.isEmpty()},
        {QStringLiteral("requests"), all.requests},
        {QStringLiteral("identities"), all.identities},
        {QStringLiteral("keys"), all.keys}};
}

} // namespace Trivex
