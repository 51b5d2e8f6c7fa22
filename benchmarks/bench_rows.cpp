// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// What the GUI thread does where thousands of chosen rows are worked with: the longest turn of the
// event loop, against reading one short text of each row.
#include "benchmarks/measure.h"
#include "certificates/certificatemodel.h"
#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "tools/chainsources.h"
#include "tools/documentverifier.h"
#include "tools/exporter.h"
#include "tools/rowfiles.h"
#include "tools/rowlines.h"
#include "tools/rowselection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

using namespace Trivex;

namespace {

constexpr int Sizes[] = {1000, 10000};
constexpr int Rounds = 3;
constexpr int Quiet = 150; // ms without work
constexpr double Work = 0.6; // ms of a turn in which something was done

/// Fills a folder of the user's own with so many certificates of a usual size.
bool fill(const QString &folder, int count)
{
    const QByteArray place("Holder 00000");
    QCA::KeyGenerator generator;
    const QCA::PrivateKey key = generator.createRSA(2048, 65537, opensslProviderName());
    QCA::CertificateOptions options;
    options.setInfo({{QCA::CommonName, QString::fromLatin1(place)},
                     {QCA::Organization, QStringLiteral("A company of a usual name")},
                     {QCA::Locality, QStringLiteral("A town")},
                     {QCA::Country, QStringLiteral("XX")}});
    options.setSerialNumber(QCA::BigInteger(1001));
    options.setValidityPeriod(QDateTime::currentDateTimeUtc(),
                              QDateTime::currentDateTimeUtc().addYears(1));
    const QByteArray base = QCA::Certificate(options, key, opensslProviderName()).toDER();
    for (int i = 1; i <= count; ++i) {
        QByteArray der = base;
        der.replace(place, "Holder " + QByteArray::number(i).rightJustified(5, '0'));
        QFile file(QStringLiteral("%1/%2.pem").arg(folder).arg(i));
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write("-----BEGIN CERTIFICATE-----\n" + der.toBase64()
                   + "\n-----END CERTIFICATE-----\n");
    }
    return true;
}

/// The longest of a call and the turns behind it, until nothing is done any more.
double measured(const std::function<void()> &call)
{
    double longest = 0;
    const auto turn = [&longest](const std::function<void()> &work) {
        const Measure::CpuTime timer;
        work();
        longest = qMax(longest, timer.milliseconds());
        return timer.milliseconds();
    };
    turn(call);
    QElapsedTimer quiet;
    quiet.start();
    while (quiet.elapsed() < Quiet) {
        if (turn([] { QCoreApplication::processEvents(); }) > Work)
            quiet.start();
    }
    return longest;
}

/// The list of a window over all certificates of the user.
struct Lists {
    KeyStoreModel stores;
    EntryModel entries;
    CertificateModel filter;
    SectionedModel rows;
    RowSelection selection;
    RowLines lines;
    Exporter exporter;
    DocumentVerifier verifier;

    Lists()
    {
        entries.setSourceModel(&stores);
        filter.setFilterRole(KeyStoreModel::Imported);
        filter.setSourceModel(&entries);
        rows.setEntries(&entries);
        rows.setFilter(&filter);
        rows.setSortKey(SectionedModel::SortByName);
        selection.setRows(&rows);
        verifier.setEntries(&entries);
    }
    bool wait(int count)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 60000
               && (rows.count() != count || !ChainSources::of(&entries)->isComplete()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        measured([] {});
        return rows.count() == count;
    }
};

struct Action {
    const char *name;
    std::function<void(Lists &)> run;
};

const std::vector<Action> &actions()
{
    static const std::vector<Action> all = {
        {"choosing all", [](Lists &lists) { lists.selection.chooseAll(); }},
        {"copying", [](Lists &lists) { lists.lines.write(&lists.selection); }},
        {"question before the removal", [](Lists &lists) { lists.selection.summary(8); }},
        {"export",
         [](Lists &lists) {
             lists.exporter.stage(&lists.entries, lists.selection.chosenIdentities(), nullptr);
         }},
        {"drag that is refused",
         [](Lists &lists) {
             RowFiles().write(&lists.entries, lists.selection.chosenIdentities());
         }},
        {"drag of 200",
         [](Lists &lists) {
             RowFiles().write(&lists.entries, lists.selection.chosenIdentities().mid(0, 200));
         }},
        {"check of a signature",
         [](Lists &lists) { lists.verifier.verify(QStringLiteral("/nonexistent/letter.p7s")); }},
        {"another order",
         [](Lists &lists) {
             lists.rows.setSortKey(lists.rows.sortKey() == SectionedModel::SortByEnd
                                       ? SectionedModel::SortByName
                                       : SectionedModel::SortByEnd);
         }},
    };
    return all;
}

double readingOneText(const Lists &lists)
{
    return Measure::median(Rounds, [&lists] {
        for (int row = 0; row < lists.stores.rowCount(); ++row)
            lists.stores.data(lists.stores.index(row), KeyStoreModel::EntryIdRole);
    });
}

} // namespace

int main(int argc, char **argv)
{
    // The texts are not loaded, and each of them warns of it.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    QCA::Initializer initializer;
    const QCoreApplication application(argc, argv);
    rankProviders();
    const QString folder = home.filePath(QStringLiteral("trivex/certificates"));
    QDir().mkpath(folder);
    Measure::Table longest(QStringLiteral("The longest turn of the event loop"),
                           QStringLiteral("one short text of each row"));
    for (const int size : Sizes) {
        Lists lists;
        if (!fill(folder, size) || !lists.wait(size)) {
            std::fprintf(stderr, "%d rows came in place of %d\n", lists.rows.count(), size);
            return 1;
        }
        const double baseline = readingOneText(lists);
        lists.selection.chooseAll();
        for (const Action &action : actions()) {
            QVector<double> turns;
            for (int round = 0; round < Rounds; ++round) {
                turns.append(measured([&] { action.run(lists); }));
            }
            longest.add(QLatin1String(action.name), size, Measure::median(turns), baseline);
        }
    }
    return 0;
}
