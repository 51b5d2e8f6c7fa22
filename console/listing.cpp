// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/listing.h"

#include "console/report.h"
#include "console/stores.h"
#include "qca/adapter/entries.h"
#include "qca/base/plaintext.h"
#include "tools/fileitemtexts.h"
#include "tools/validity.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonObject>

namespace Trivex {

namespace {

struct StoreKind {
    QCA::KeyStore::Type type;
    const char *word; ///< in JSON
};

/// In the order in which they are said.
constexpr StoreKind StoreKinds[] = {
    {QCA::KeyStore::SmartCard, "token"},
    {QCA::KeyStore::User, "user"},
    {QCA::KeyStore::Application, "application"},
    {QCA::KeyStore::System, "system"},
};

/// The words for `Validity::State` in JSON.
constexpr const char *StateWords[] = {"unknown", "valid", "expiring", "expired", "not-yet-valid"};

int stateOf(const StoreRow &row)
{
    const QCA::Certificate &certificate = row.item.certificate();
    return Validity().state(certificate.notValidBefore(), certificate.notValidAfter());
}

QString isoTime(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODate);
}

QJsonObject jsonOf(const StoreRow &row)
{
    const QCA::Certificate &certificate = row.item.certificate();
    return {{QStringLiteral("id"), entryId(row.entry)},
            {QStringLiteral("name"), itemName(row.item)},
            {QStringLiteral("issuer"), itemDetail(row.item)},
            {QStringLiteral("serial"),
             QString::fromLatin1(certificate.serialNumber().toArray().toByteArray().toHex())},
            {QStringLiteral("notBefore"), isoTime(certificate.notValidBefore())},
            {QStringLiteral("notAfter"), isoTime(certificate.notValidAfter())},
            {QStringLiteral("state"), QLatin1String(StateWords[stateOf(row)])},
            {QStringLiteral("hasKey"), row.hasKey},
            {QStringLiteral("sha256"),
             QString::fromLatin1(
                 QCryptographicHash::hash(row.item.der, QCryptographicHash::Sha256).toHex())}};
}

QString lineOf(const StoreRow &row)
{
    const Validity validity;
    QStringList parts = {itemName(row.item), itemDetail(row.item), validity.word(stateOf(row)),
                         validity.until(row.item.certificate().notValidAfter())};
    if (row.hasKey) {
        //% "with its key"
        parts += qtTrId("trivex-console-with-key");
    }
    parts.removeAll(QString());
    return QStringLiteral("  ") + parts.join(QStringLiteral(", "));
}

/// What is told of a store.
struct Told {
    const QCA::KeyStore &store;
    const StoreKind &kind;
    QVector<StoreRow> rows;
    QString problem; ///< why the rows are not all; empty when they are
};

QJsonObject jsonOf(const Told &told)
{
    QJsonArray certificates;
    for (const StoreRow &row : told.rows)
        certificates += jsonOf(row);
    QJsonObject json{{QStringLiteral("store"), plainText(told.store.name())},
                     {QStringLiteral("storeId"), told.store.id()},
                     {QStringLiteral("kind"), QLatin1String(told.kind.word)},
                     {QStringLiteral("certificates"), certificates}};
    if (!told.problem.isEmpty())
        json.insert(QStringLiteral("error"), told.problem);
    return json;
}

void sayLines(const Told &told)
{
    // An empty token is there, an empty list of files is nothing to tell of.
    if (told.rows.isEmpty() && told.kind.type != QCA::KeyStore::SmartCard)
        return;
    const QString name = plainText(told.store.name());
    if (told.rows.isEmpty() && !told.problem.isEmpty()) {
        //% "%1: not read"
        say(qtTrId("trivex-console-store-unread").arg(name));
        return;
    }
    //% "%1: %n certificate(s)"
    say(qtTrId("trivex-console-store", told.rows.size()).arg(name));
    for (const StoreRow &row : told.rows)
        say(lineOf(row));
}

} // namespace

ExitCode list(bool isJson, const Patience &patience)
{
    const Stores stores(patience);
    QJsonArray json;
    for (const StoreKind &kind : StoreKinds) {
        for (QCA::KeyStore *store : stores.all()) {
            if (store->type() != kind.type)
                continue;
            const Told told{*store, kind, Stores::rowsOf(store), stores.problemOf(*store)};
            if (isJson)
                json += jsonOf(told);
            else
                sayLines(told);
        }
    }
    if (isJson)
        sayJson(json);
    stores.tellWhatIsMissing();
    return stores.isComplete() ? Done : Failed;
}

} // namespace Trivex
