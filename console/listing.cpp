// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/listing.h"

#include "console/report.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/qcause.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/stores.h"
#include "qca/base/plaintext.h"
#include "tools/fileitemtexts.h"
#include "tools/validity.h"

#include <QCryptographicHash>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace Trivex {

namespace {

constexpr int PatienceMs = 60 * 1000;
constexpr int SilenceMs = 3 * 1000;

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

struct Row {
    QString id;
    bool hasKey = false;
    FileItem item;

    const QCA::Certificate &certificate() const { return item.certificate; }
    int state() const
    {
        return Validity().state(certificate().notValidBefore(), certificate().notValidAfter());
    }
};

/// True when every module has answered in time.
bool waitForStores(QCA::KeyStoreManager *manager)
{
    if (!manager->isBusy())
        return true;
    QEventLoop loop;
    QObject::connect(manager, &QCA::KeyStoreManager::busyFinished, &loop, &QEventLoop::quit);
    QTimer::singleShot(PatienceMs, &loop, &QEventLoop::quit);
    QTimer::singleShot(SilenceMs, &loop, [] {
        //% "Reading the tokens…"
        complain(qtTrId("trivex-console-reading"));
    });
    loop.exec();
    return !manager->isBusy();
}

QVector<Row> rowsOf(QCA::KeyStore *store)
{
    QVector<Row> rows;
    const QList<QCA::KeyStoreEntry> entries = store->entryList();
    for (const QCA::KeyStoreEntry &entry : entries) {
        const QCA::KeyBundle bundle = entryKeyBundle(entry);
        const QCA::Certificate certificate =
            bundle.isNull() ? entryCertificate(entry) : bundle.certificateChain().primary();
        Row row;
        row.item.certificate = ownCertificate(certificate);
        if (row.item.certificate.isNull())
            continue;
        row.item.der = row.item.certificate.toDER();
        row.id = entryId(entry);
        row.hasKey = !bundle.isNull();
        rows += row;
    }
    return rows;
}

QString isoTime(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODate);
}

QJsonObject jsonOf(const Row &row)
{
    const QCA::Certificate &certificate = row.certificate();
    return {{QStringLiteral("id"), row.id},
            {QStringLiteral("name"), itemName(row.item)},
            {QStringLiteral("issuer"), itemDetail(row.item)},
            {QStringLiteral("serial"),
             QString::fromLatin1(certificate.serialNumber().toArray().toByteArray().toHex())},
            {QStringLiteral("notBefore"), isoTime(certificate.notValidBefore())},
            {QStringLiteral("notAfter"), isoTime(certificate.notValidAfter())},
            {QStringLiteral("state"), QLatin1String(StateWords[row.state()])},
            {QStringLiteral("hasKey"), row.hasKey},
            {QStringLiteral("sha256"),
             QString::fromLatin1(
                 QCryptographicHash::hash(row.item.der, QCryptographicHash::Sha256).toHex())}};
}

QString lineOf(const Row &row)
{
    const Validity validity;
    QStringList parts = {itemName(row.item), itemDetail(row.item), validity.word(row.state()),
                         validity.until(row.certificate().notValidAfter())};
    if (row.hasKey) {
        //% "with its key"
        parts += qtTrId("trivex-console-with-key");
    }
    parts.removeAll(QString());
    return QStringLiteral("  ") + parts.join(QStringLiteral(", "));
}

void sayStore(const QCA::KeyStore &store, const StoreKind &kind, const QVector<Row> &rows,
              QJsonArray *json)
{
    if (json) {
        QJsonArray certificates;
        for (const Row &row : rows)
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
    for (const Row &row : rows)
        say(lineOf(row));
}

} // namespace

ExitCode list(bool isJson)
{
    useQca();
    startStores();
    QCA::KeyStoreManager manager;
    const bool isComplete = waitForStores(&manager);
    QVector<QCA::KeyStore *> stores;
    for (const QString &id : manager.keyStores())
        stores += new QCA::KeyStore(id, &manager);
    QJsonArray json;
    for (const StoreKind &kind : StoreKinds) {
        for (QCA::KeyStore *store : qAsConst(stores)) {
            if (store->type() == kind.type)
                sayStore(*store, kind, rowsOf(store), isJson ? &json : nullptr);
        }
    }
    closeStores(stores);
    if (isJson)
        sayJson(json);
    if (isComplete)
        return Done;
    //% "A module has not answered within a minute: its tokens are missing here."
    complain(qtTrId("trivex-console-incomplete"));
    return Failed;
}

} // namespace Trivex
