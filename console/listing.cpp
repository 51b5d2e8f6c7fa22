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

void sayStore(const QCA::KeyStore &store, const StoreKind &kind, const QVector<StoreRow> &rows,
              QJsonArray *json)
{
    if (json) {
        QJsonArray certificates;
        for (const StoreRow &row : rows)
            certificates += jsonOf(row);
        *json += QJsonObject{{QStringLiteral("store"), plainText(store.name())},
                             {QStringLiteral("storeId"), store.id()},
                             {QStringLiteral("kind"), QLatin1String(kind.word)},
                             {QStringLiteral("certificates"), certificates}};
        return;
    }
    // An empty token is there, an empty list of files is nothing to tell of.
    if (rows.isEmpty() && kind.type != QCA::KeyStore::SmartCard)
        return;
    //% "%1: %n certificate(s)"
    say(qtTrId("trivex-console-store", rows.size()).arg(plainText(store.name())));
    for (const StoreRow &row : rows)
        say(lineOf(row));
}

} // namespace

ExitCode list(bool isJson)
{
    const Stores stores;
    QJsonArray json;
    for (const StoreKind &kind : StoreKinds) {
        for (QCA::KeyStore *store : stores.all()) {
            if (store->type() == kind.type)
                sayStore(*store, kind, Stores::rowsOf(store), isJson ? &json : nullptr);
        }
    }
    if (isJson)
        sayJson(json);
    stores.tellWhatIsMissing();
    return stores.isComplete() ? Done : Failed;
}

} // namespace Trivex
