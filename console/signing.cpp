// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/signing.h"

#include "console/report.h"
#include "console/stores.h"
#include "console/tokenpin.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/qcause.h"
#include "qca/base/plaintext.h"
#include "tools/documentsigner.h"
#include "tools/fileitemtexts.h"
#include "tools/filesaver.h"
#include "tools/texts.h"
#include "tools/tokenerrors.h"

#include <QCryptographicHash>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonObject>

namespace Trivex {

namespace {

QString fingerprint(const StoreRow &row)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(row.item.der, QCryptographicHash::Sha256).toHex());
}

bool isMeant(const StoreRow &row, const QString &key)
{
    QString hex = key.toLower();
    hex.remove(QLatin1Char(':')).remove(QLatin1Char(' '));
    return row.hasKey
        && (itemName(row.item) == key || fingerprint(row) == hex || entryId(row.entry) == key);
}

/// The rows with keys that `key` names.
QVector<StoreRow> rowsNamed(const Stores &stores, const QString &key)
{
    QVector<StoreRow> found;
    for (QCA::KeyStore *store : stores.all()) {
        const QVector<StoreRow> rows = Stores::rowsOf(store);
        std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                     [&](const StoreRow &row) { return isMeant(row, key); });
    }
    return found;
}

/// What the person could have meant.
void complainOf(const QVector<StoreRow> &rows, const QString &key)
{
    if (rows.isEmpty()) {
        //% "No certificate with a key has the name or the fingerprint “%1”. See --list."
        complain(Texts::put(qtTrId("trivex-console-no-such-key"), {key}));
        return;
    }
    //% "Several certificates fit. Name one by its SHA-256 fingerprint, which stands first here, or
    //% by its id:"
    complain(qtTrId("trivex-console-several-keys"));
    for (const StoreRow &row : rows)
        complain(QStringList{fingerprint(row), plainText(entryId(row.entry)), itemDetail(row.item),
                             plainText(entryStoreName(row.entry))}
                     .join(QStringLiteral(", ")));
}

/// The reason that the token gave is told before what follows from it.
void complainOf(const DocumentSigner &signer, const TokenErrors &errors)
{
    if (signer.error() == DocumentSigner::NotSigned && !errors.cause().isEmpty())
        complain(errors.cause());
    complain(signer.message());
}

/// What is in the way of the file of the signature; empty when nothing is.
QString whyNot(const QString &target, bool mayReplace)
{
    if (QFileInfo::exists(target) && !mayReplace) {
        //% "%1 exists; --replace replaces it."
        return qtTrId("trivex-console-exists").arg(target);
    }
    const QString reason = FileSaver().whyNot(target);
    return reason.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(target, reason);
}

void run(DocumentSigner *signer, const StoreRow &row, const Order &order, const QString &target)
{
    QEventLoop loop;
    QObject::connect(signer, &DocumentSigner::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    const auto form = order.isAttached ? DocumentSignature::Attached : DocumentSignature::Detached;
    signer->signWith(entryKeyBundle(row.entry), {order.files.first(), target, form},
                     order.mayReplace);
    loop.exec();
}

} // namespace

ExitCode sign(const Order &order)
{
    const QString document = order.files.first();
    const QString target = order.output.isEmpty()
        ? DocumentSigner::targetFor(
            document, order.isAttached ? DocumentSigner::Attached : DocumentSigner::Detached)
        : order.output;
    // Nobody types a PIN for a signature that has no place.
    const QString problem = whyNot(target, order.mayReplace);
    if (!problem.isEmpty()) {
        complain(problem);
        return Failed;
    }
    useQca();
    const TokenPin pin(order.pinFile);
    if (!pin.problem().isEmpty()) {
        complain(pin.problem());
        return Failed;
    }
    const Stores stores;
    stores.tellWhatIsMissing();
    const QVector<StoreRow> rows = rowsNamed(stores, order.key);
    if (rows.size() != 1) {
        complainOf(rows, order.key);
        return Failed;
    }
    const TokenErrors errors;
    DocumentSigner signer;
    run(&signer, rows.first(), order, target);
    if (signer.error() != DocumentSigner::NoError) {
        complainOf(signer, errors);
        return Failed;
    }
    if (order.isJson) {
        sayJson(QJsonObject{{QStringLiteral("document"), document},
                            {QStringLiteral("signature"), target},
                            {QStringLiteral("sha256"), fingerprint(rows.first())}});
    } else {
        say(target);
    }
    return Done;
}

} // namespace Trivex
