// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/stores.h"

#include "console/report.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/qcause.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/stores.h"
#include "qca/base/plaintext.h"
#include "tools/tokenerrors.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

constexpr int SilenceMs = 3 * 1000;

bool isReading(const TokenStatus &token)
{
    return token.present && token.loading;
}

/// QCA counts its stores as started after some seconds, whatever a slow module has still to tell:
/// it shows none of its tokens by then, or the beginning of what is on one.
bool areTokensRead(const QCA::KeyStoreManager &manager)
{
    if (!TokenMonitor::silentModules().isEmpty())
        return false;
    const QStringList known = manager.keyStores();
    const QVector<TokenStatus> tokens = TokenMonitor::tokens();
    return std::all_of(tokens.begin(), tokens.end(), [&](const TokenStatus &one) {
        // QCA hears of a token that comes late after everybody else. The store of a trust module
        // shows only where it says more than the system's own.
        const bool isKnown = !one.present || one.isTrust || known.contains(one.keyStoreId);
        return isKnown && !isReading(one);
    });
}

/// True when every module has answered in time, and every token.
bool waitForStores(QCA::KeyStoreManager *manager, const Patience &patience)
{
    QEventLoop loop;
    const TokenMonitor monitor;
    const auto isOver = [manager] { return !manager->isBusy() && areTokensRead(*manager); };
    const auto look = [&] {
        if (isOver())
            loop.quit();
    };
    // Later: while it tells of its end it still says that it is busy.
    QObject::connect(manager, &QCA::KeyStoreManager::busyFinished, &loop, look,
                     Qt::QueuedConnection);
    QObject::connect(manager, &QCA::KeyStoreManager::keyStoreAvailable, &loop, look,
                     Qt::QueuedConnection);
    QObject::connect(&monitor, &TokenMonitor::changed, &loop, look);
    QObject::connect(&monitor, &TokenMonitor::moduleAnswered, &loop, look);
    if (isOver())
        return true;
    patience(&loop, [&loop] { loop.quit(); });
    QTimer::singleShot(SilenceMs, &loop, [] {
        //% "Reading the tokens…"
        complain(qtTrId("trivex-console-reading"));
    });
    loop.exec();
    return isOver();
}

QList<QCA::KeyStoreEntry> entriesOf(QCA::KeyStore *store)
{
    const QList<QCA::KeyStoreEntry> entries = store->entryList();
    // Whoever asks for the first time gets the beginning of a large store, for a window to show.
    const bool isWhole = entries.size() >= TokenMonitor::token(store->id()).certificates;
    return isWhole ? entries : store->entryList();
}

/// QCA has the stores in the order in which their providers happened to tell of them.
bool comesBefore(const QCA::KeyStore *a, const QCA::KeyStore *b)
{
    return std::make_pair(a->name(), a->id()) < std::make_pair(b->name(), b->id());
}

/// As much as a report says of it.
QString reasonOf(const TokenError &error)
{
    const QString cause = TokenErrors::causeOf(error);
    return error.returnName.isEmpty()
        ? cause
        : QStringLiteral("%1 (%2: %3)").arg(cause, error.function, error.returnName);
}

/// Why not everything on it can be told; empty when it can.
QString problemOf(const TokenStatus &token)
{
    if (!token.present) {
        TokenError gone;
        gone.kind = TokenError::TokenRemoved;
        return reasonOf(gone);
    }
    if (token.isRead && !token.loading) {
        //% "There are certificates on it that could not be read, and are missing here."
        return token.isWhole ? QString() : qtTrId("trivex-console-token-part");
    }
    if (token.readError.kind != TokenError::NoError)
        return reasonOf(token.readError);
    //% "It has not been read to its end in time."
    return qtTrId("trivex-console-token-unread");
}

/// Before anything of QCA's is made.
void prepareStores()
{
    useQca();
    startStores();
}

} // namespace

Stores::Stores(const Patience &patience)
    : m_manager((prepareStores(), nullptr))
    , m_isOver(waitForStores(&m_manager, patience))
    , m_silentModules(TokenMonitor::silentModules())
    , m_tokens(TokenMonitor::tokens())
{
    const QStringList ids = m_manager.keyStores();
    for (const QString &id : ids)
        m_stores += new QCA::KeyStore(id, &m_manager);
    std::sort(m_stores.begin(), m_stores.end(), &comesBefore);
}

bool Stores::isComplete() const
{
    return m_isOver && m_silentModules.isEmpty()
        && std::all_of(m_tokens.begin(), m_tokens.end(),
                       [](const TokenStatus &one) { return Trivex::problemOf(one).isEmpty(); });
}

void Stores::tellWhatIsMissing() const
{
    for (const QString &module : m_silentModules) {
        //% "The module %1 has not answered within a minute: its tokens are missing here."
        complain(qtTrId("trivex-console-silent-module").arg(plainText(module)));
    }
    bool isTold = !m_silentModules.isEmpty();
    for (const TokenStatus &token : m_tokens) {
        const QString problem = Trivex::problemOf(token);
        if (problem.isEmpty())
            continue;
        //% "The token %1 could not be read: %2"
        complain(qtTrId("trivex-console-unread").arg(plainText(token.name), problem));
        isTold = true;
    }
    if (!isTold && !m_isOver) {
        //% "Not all stores have answered within a minute: certificates may be missing here."
        complain(qtTrId("trivex-console-incomplete"));
    }
}

QString Stores::problemOf(const QCA::KeyStore &store) const
{
    const auto found =
        std::find_if(m_tokens.begin(), m_tokens.end(),
                     [id = store.id()](const TokenStatus &one) { return one.keyStoreId == id; });
    return found == m_tokens.end() ? QString() : Trivex::problemOf(*found);
}

Stores::~Stores()
{
    closeStores(m_stores);
}

QVector<StoreRow> Stores::rowsOf(QCA::KeyStore *store)
{
    QVector<StoreRow> rows;
    const QList<QCA::KeyStoreEntry> entries = entriesOf(store);
    for (const QCA::KeyStoreEntry &entry : entries) {
        const QCA::KeyBundle bundle = entryKeyBundle(entry);
        const QCA::Certificate certificate =
            bundle.isNull() ? entryCertificate(entry) : bundle.certificateChain().primary();
        StoreRow row;
        const QCA::Certificate own = ownCertificate(certificate);
        if (own.isNull())
            continue;
        row.item.der = own.toDER();
        row.entry = entry;
        row.hasKey = !bundle.isNull();
        rows += row;
    }
    return rows;
}

} // namespace Trivex
