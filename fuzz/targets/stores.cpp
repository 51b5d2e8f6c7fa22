// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Stores that come, change and go at random under the models that views work with.
#include "certificates/certificatemodel.h"
#include "fuzz/script.h"
#include "fuzz/target.h"
#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "tests/certificates/flat.h"
#include "tests/fakes/provider/fakeprovider.h"
#include "tests/support/systemlist.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>

using namespace TrivexTest;

namespace {

constexpr int MostSteps = 40;

FakeStores &stores()
{
    static FakeProvider *provider = [] {
        Trivex::rankProviders();
        // The system's own rows stay out: those of the script are to be the only ones.
        setSystemList();
        FakeProvider *made = FakeProvider::install(QStringLiteral("qca-norvel-pkcs11"),
                                                   {QStringLiteral("keystorelist")});
        made->setDefaultConfig({{QStringLiteral("formtype"), QStringLiteral("fuzz")}});
        return made;
    }();
    return *provider->stores;
}

const QList<QCA::Certificate> &pool()
{
    static const QList<QCA::Certificate> made = [] {
        QList<QCA::Certificate> list;
        const QCA::PrivateKey key = QCA::KeyGenerator().createRSA(1024);
        for (const char *name : {"Anna", "Boris", "Äöü", "Иван", ""}) {
            QCA::CertificateOptions options;
            options.setInfo({{QCA::CommonName, QString::fromUtf8(name)},
                             {QCA::Organization, QStringLiteral("O")}});
            options.setValidityPeriod(QDateTime::currentDateTimeUtc(),
                                      QDateTime::currentDateTimeUtc().addYears(1));
            options.setSerialNumber(1);
            list << QCA::Certificate(options, key);
        }
        return list;
    }();
    return made;
}

QList<FakeEntry> entries(TrivexFuzz::Script *script)
{
    QList<FakeEntry> list;
    for (int i = script->below(6); i > 0; --i) {
        const int number = script->below(pool().size() + 1);
        FakeEntry entry;
        entry.id = QString::number(script->below(8));
        entry.name = entry.id;
        if (number < pool().size())
            entry.certificate = pool().at(number);
        list << entry;
    }
    return list;
}

void step(TrivexFuzz::Script *script, CertificateModel *filtered)
{
    const QString id = QStringLiteral("store-%1").arg(script->below(4));
    switch (script->below(8)) {
    case 0:
    case 1:
        // An id names one store at a time: the provider's own rule.
        stores().removeStore(id);
        stores().addStore({id, id, QCA::KeyStore::Type(script->below(5)), entries(script)});
        break;
    case 2:
        stores().removeStore(id);
        break;
    case 3:
    case 4:
        stores().setEntries(id, entries(script));
        break;
    case 5:
        filtered->setPattern(QString::fromUtf8(script->bytes(4)));
        break;
    case 6:
        Q_EMIT stores().busyStart();
        break;
    default:
        Q_EMIT stores().busyEnd();
        break;
    }
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    TrivexFuzz::Script script(input);
    stores();
    pool();
    Flat<KeyStoreModel> model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    Flat<CertificateModel> filtered;
    filtered.setSourceModel(&model);
    const QAbstractItemModelTester filterTester(
        &filtered, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int i = 0; i < MostSteps && !script.atEnd(); ++i) {
        step(&script, &filtered);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
        check(filtered.rowCount() <= model.rowCount(), "a filter adds no rows");
    }
    filtered.setPattern({});
    stores().reset();
    // Hangs, and is found by that, when a row outlives its store. QCA may miss a change that comes
    // while it looks at the one before, so it is told again.
    for (int turn = 1; model.rowCount() > 0; ++turn) {
        if (turn % 20 == 0)
            Q_EMIT stores().storesChanged();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
}
