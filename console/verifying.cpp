// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/verifying.h"

#include "console/report.h"
#include "console/stores.h"
#include "qca/adapter/stores.h"
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
    return {file, DocumentVerifier::documentOf(file)};
}

QVector<ChainCandidate> candidates(const Stores &stores)
{
    QVector<ChainCandidate> known;
    for (QCA::KeyStore *store : stores.all()) {
        const QVector<StoreRow> rows = Stores::rowsOf(store);
        for (const StoreRow &row : rows)
            known += DocumentVerifier::candidate(row.item.certificate(), store->id(),
                                                 store->type() == QCA::KeyStore::System);
    }
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

ExitCode verify(const Order &order)
{
    const Files files = filesOf(order);
    const Stores stores;
    DocumentVerifier verifier;
    QEventLoop loop;
    QObject::connect(&verifier, &DocumentVerifier::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    verifier.verifyWith(files.message, files.document, candidates(stores));
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
