// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/stores.h"

#include "console/report.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/qcause.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/stores.h"

#include <QEventLoop>
#include <QTimer>

namespace Trivex {

namespace {

constexpr int PatienceMs = 60 * 1000;
constexpr int SilenceMs = 3 * 1000;

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
    const QList<QCA::KeyStoreEntry> entries = store->entryList();
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
