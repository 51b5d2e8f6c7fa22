// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/verifying.h"

#include "console/report.h"
#include "console/stores.h"
#include "qca/tokens/userstore.h"
#include "tools/chainsources.h"
#include "tools/documentverifier.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace Trivex {

namespace {

/// The words for `SignerList::Verdict` in JSON.
constexpr const char *VerdictWords[] = {
    "good",           "document-changed",  "damaged",  "wrong-certificate",
    "no-certificate", "unknown-algorithm", "unchecked"};
/// Those for `SignerList::Trust`.
constexpr const char *TrustWords[] = {"trusted",         "expired-since", "not-valid-then",
                                      "no-trusted-root", "revoked",       "faulty"};

struct Files {
    QString message;
    QString document;
};

/// Somebody may name the signature or the document that it lies beside.
Files filesOf(const Order &order)
{
    const QString file = order.files.first();
    if (!order.document.isEmpty())
        return {file, order.document};
    if (!DocumentVerifier::isMessage(file)) {
        for (const char *suffix : {".p7s", ".p7m"}) {
            const QString beside = file + QLatin1String(suffix);
            if (QFileInfo(beside).isFile())
                return {beside, file};
        }
    }
    // The document in a message is the one that was signed.
    if (DocumentVerifier::hasDocument(file))
        return {file, QString()};
    return {file, DocumentVerifier::documentOf(file)};
}

/// What the stores and the user's own lists say of certificates.
struct Known {
    QList<QByteArray> certificates;
    CandidateIndex issuers;
};

Known knownIn(const Stores &stores)
{
    Known known;
    for (QCA::KeyStore *store : stores.all()) {
        const bool isSystem = store->type() == QCA::KeyStore::System;
        const QVector<StoreRow> rows = Stores::rowsOf(store);
        for (const StoreRow &row : rows) {
            const QByteArray &der = row.item.der;
            known.certificates += der;
            known.issuers.add(
                {der, store->name(), ChainSources::isAnchor(der, store->id(), isSystem)});
        }
    }
    const QVector<QByteArray> lists = ListFolder::listsNow(userStoreDirectory());
    for (const QByteArray &list : lists)
        known.issuers.addList(list);
    return known;
}

QVariant valueOf(const SignerList &signers, int row, SignerList::Role role)
{
    return signers.data(signers.index(row), role);
}

QJsonObject jsonOf(const SignerList &signers, int row)
{
    const auto verdict = valueOf(signers, row, SignerList::VerdictRole).toInt();
    const auto time = valueOf(signers, row, SignerList::TimeRole).toDateTime();
    QJsonObject result{
        {QStringLiteral("name"), valueOf(signers, row, SignerList::NameRole).toString()},
        {QStringLiteral("issuer"), valueOf(signers, row, SignerList::IssuerRole).toString()},
        {QStringLiteral("verdict"), QLatin1String(VerdictWords[verdict])},
        {QStringLiteral("text"), valueOf(signers, row, SignerList::HeadlineRole).toString()}};
    if (verdict == SignerList::Good)
        result.insert(
            QStringLiteral("trust"),
            QLatin1String(TrustWords[valueOf(signers, row, SignerList::TrustRole).toInt()]));
    if (time.isValid())
        result.insert(QStringLiteral("time"), time.toUTC().toString(Qt::ISODate));
    return result;
}

void sayLines(const SignerList &signers, int row)
{
    const QString name = valueOf(signers, row, SignerList::NameRole).toString();
    const auto time = valueOf(signers, row, SignerList::TimeRole).toDateTime();
    QStringList parts = {name, valueOf(signers, row, SignerList::IssuerRole).toString()};
    if (time.isValid())
        parts += time.toLocalTime().toString(Qt::ISODate);
    parts.removeAll(QString());
    say(parts.join(QStringLiteral(", ")));
    for (const auto role : {SignerList::HeadlineRole, SignerList::AdviceRole}) {
        const QString text = valueOf(signers, row, role).toString();
        if (!text.isEmpty())
            say(QStringLiteral("  ") + text);
    }
}

} // namespace

ExitCode verify(const Order &order, const Patience &patience)
{
    const Files files = filesOf(order);
    const Stores stores(patience);
    stores.tellWhatIsMissing();
    DocumentVerifier verifier;
    QEventLoop loop;
    QObject::connect(&verifier, &DocumentVerifier::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    const Known known = knownIn(stores);
    verifier.verifyWith(files.message, files.document, known.certificates, known.issuers);
    loop.exec();
    const SignerList &signers = *verifier.signers();
    QJsonArray json;
    for (int row = 0; row < signers.rowCount(); ++row) {
        if (order.isJson)
            json += jsonOf(signers, row);
        else
            sayLines(signers, row);
    }
    if (order.isJson)
        sayJson(QJsonObject{{QStringLiteral("message"), files.message},
                            {QStringLiteral("document"), files.document},
                            {QStringLiteral("attached"), verifier.isAttached()},
                            {QStringLiteral("signatures"), json}});
    if (verifier.error() != DocumentVerifier::NoError) {
        complain(QStringLiteral("%1: %2").arg(files.message, verifier.message()));
        return Failed;
    }
    return signers.level() == 1 ? Done : NotGood;
}

} // namespace Trivex
