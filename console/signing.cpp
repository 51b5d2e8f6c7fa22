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

/// By what no other certificate has.
bool isMeantAlone(const StoreRow &row, const QString &key)
{
    QString hex = key.toLower();
    hex.remove(QLatin1Char(':')).remove(QLatin1Char(' '));
    return fingerprint(row) == hex || entryId(row.entry) == key;
}

bool isMeant(const StoreRow &row, const QString &key)
{
    return itemName(row.item) == key || isMeantAlone(row, key);
}

/// The rows that a `--key` names.
struct Choice {
    QVector<StoreRow> withKey;
    QVector<StoreRow> withoutKey;
};

Choice choiceOf(const Stores &stores, const QString &key)
{
    Choice choice;
    for (QCA::KeyStore *store : stores.all()) {
        const QVector<StoreRow> rows = Stores::rowsOf(store);
        for (const StoreRow &row : rows) {
            if (isMeant(row, key))
                (row.hasKey ? choice.withKey : choice.withoutKey) += row;
        }
    }
    return choice;
}

void complainOf(const QString &text, const QVector<StoreRow> &rows)
{
    complain(text);
    for (const StoreRow &row : rows)
        complain(QStringList{fingerprint(row), plainText(entryId(row.entry)), itemDetail(row.item),
                             plainText(entryStoreName(row.entry))}
                     .join(QStringLiteral(", ")));
}

/// Complains of a choice that is none, and says what the person could have meant. True when it is
/// of one key, and of no other that may be where nothing could be read.
bool isOneKey(const Choice &choice, const QString &key, bool isComplete)
{
    const QVector<StoreRow> &rows = choice.withKey;
    if (rows.size() == 1 && (isComplete || isMeantAlone(rows.first(), key)))
        return true;
    if (rows.size() == 1) {
        //% "Not signed: “%1” may be the name of a key on what is missing, too. To sign with the
        //% key that is here, name it by its SHA-256 fingerprint, which stands first, or by its id:"
        complainOf(Texts::put(qtTrId("trivex-console-name-unsure"), {key}), rows);
    } else if (!rows.isEmpty()) {
        //% "Several certificates fit. Name one by its SHA-256 fingerprint, which stands first here,
        //% or by its id:"
        complainOf(qtTrId("trivex-console-several-keys"), rows);
    } else if (!choice.withoutKey.isEmpty()) {
        //% "The certificate “%1” is here, but not its key. Insert the token that holds the key, or
        //% choose a certificate that --list shows with its key. Without a key:"
        complainOf(Texts::put(qtTrId("trivex-console-key-elsewhere"), {key}), choice.withoutKey);
    } else {
        //% "No certificate has the name, the fingerprint or the id “%1”. See --list."
        complain(Texts::put(qtTrId("trivex-console-no-such-key"), {key}));
    }
    return false;
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

ExitCode sign(const Order &order, const Patience &patience)
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
    const Stores stores(patience);
    stores.tellWhatIsMissing();
    const Choice choice = choiceOf(stores, order.key);
    if (!isOneKey(choice, order.key, stores.isComplete()))
        return Failed;
    const StoreRow &row = choice.withKey.first();
    const TokenErrors errors;
    DocumentSigner signer;
    run(&signer, row, order, target);
    if (signer.error() != DocumentSigner::NoError) {
        complainOf(signer, errors);
        return Failed;
    }
    if (order.isJson) {
        sayJson(QJsonObject{{QStringLiteral("document"), document},
                            {QStringLiteral("signature"), target},
                            {QStringLiteral("sha256"), fingerprint(row)}});
    } else {
        say(target);
    }
    return Done;
}

} // namespace Trivex
