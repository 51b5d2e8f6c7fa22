// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/stores.h"

#include "console/report.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/qcause.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/stores.h"
#include "qca/tokens/tokens.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

constexpr int PatienceMs = 60 * 1000;
constexpr int SilenceMs = 3 * 1000;

/// QCA counts its stores as started after some seconds, whatever a slow token has still to tell:
/// what it shows by then is the beginning of its list.
bool areTokensRead()
{
    const QVector<TokenStatus> tokens = TokenMonitor::tokens();
    return std::none_of(tokens.begin(), tokens.end(),
                        [](const TokenStatus &one) { return one.present && one.loading; });
}

/// True when every module has answered in time, and every token.
bool waitForStores(QCA::KeyStoreManager *manager)
{
    QEventLoop loop;
    const TokenMonitor monitor;
    const auto isOver = [manager] { return !manager->isBusy() && areTokensRead(); };
    const auto look = [&] {
        if (isOver())
            loop.quit();
    };
    // Later: while it tells of its end it still says that it is busy.
    QObject::connect(manager, &QCA::KeyStoreManager::busyFinished, &loop, look,
                     Qt::QueuedConnection);
    QObject::connect(&monitor, &TokenMonitor::changed, &loop, look);
    if (isOver())
        return true;
    QTimer::singleShot(PatienceMs, &loop, &QEventLoop::quit);
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

/// Before anything of QCA's is made.
void prepareStores()
{
    useQca();
    startStores();
}

} // namespace

Stores::Stores()
    : m_manager((prepareStores(), nullptr))
    , m_isComplete(waitForStores(&m_manager))
{
    const QStringList ids = m_manager.keyStores();
    for (const QString &id : ids)
        m_stores += new QCA::KeyStore(id, &m_manager);
    std::sort(m_stores.begin(), m_stores.end(), &comesBefore);
}

void Stores::tellWhatIsMissing() const
{
    if (m_isComplete)
        return;
    //% "A module has not answered within a minute: its tokens are missing here."
    complain(qtTrId("trivex-console-incomplete"));
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
