// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/exporter.h"

#include "qca/adapter/collectionwriting.h"
#include "qca/adapter/entries.h"
#include "qca/asn1/pem.h"
#include "qca/base/atomicfile.h"
#include "qca/chains/candidateindex.h"
#include "qca/chains/chaincheck.h"
#include "qca/questions/background.h"
#include "tools/files.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

#include <QDir>
#include <QSet>

#include <algorithm>

namespace Trivex {

/// What the thread gets, and what it makes of it.
struct Exporter::Work {
    QVector<RowEncoding> rows;
    QVector<ChainCandidate> candidates; ///< for the issuers of a single certificate
    QString folder;
    std::shared_ptr<const QTemporaryDir> staging; ///< keeps the folder while it is written to
    std::atomic<bool> isCancelled{false};

    QByteArray pem;
    Error error = NoError;

    void stageIn(FileSaver *saver);
    bool certificatesOnly() const;
    QVector<QByteArray> chain() const;
    void run();
    void write(const QString &path, const QByteArray &contents);
};

void Exporter::Work::stageIn(FileSaver *saver)
{
    folder = saver->stagingFolder();
    staging = saver->staging();
    if (folder.isEmpty())
        error = NotWritten;
}

bool Exporter::Work::certificatesOnly() const
{
    return std::all_of(rows.cbegin(), rows.cend(),
                       [](const RowEncoding &row) { return row.kind == ShownKind::Certificate; });
}

namespace {

/// Whether what follows has the name of the issuer alone.
bool hasStranger(const ChainStep &step)
{
    return std::any_of(step.findings.cbegin(), step.findings.cend(), [](const ChainFinding &one) {
        return one.reason == ChainReason::WrongSignature
            || one.reason == ChainReason::IssuerDiffers;
    });
}

} // namespace

/// The certificates, where it is one, with its issuers as far as they are known.
QVector<QByteArray> Exporter::Work::chain() const
{
    QVector<QByteArray> all;
    if (rows.size() != 1) {
        for (const RowEncoding &row : rows)
            all += row.der;
        return all;
    }
    CandidateIndex index;
    for (const ChainCandidate &candidate : candidates)
        index.add(candidate);
    const ChainResult result = checkChain(index.inputFor(rows.first().der), isCancelled);
    for (const ChainStep &step : result.steps) {
        all += step.der;
        if (hasStranger(step))
            break;
    }
    return all.isEmpty() ? QVector<QByteArray>{rows.first().der} : all;
}

void Exporter::Work::write(const QString &path, const QByteArray &contents)
{
    if (error == NoError && !isCancelled
        && writeAtomically(path, contents, true) != WriteResult::Written)
        error = NotWritten;
}

void Exporter::Work::run()
{
    for (const RowEncoding &row : qAsConst(rows)) {
        pem += writePem(row.kind == ShownKind::Request ? "CERTIFICATE REQUEST" : "CERTIFICATE",
                        row.der);
    }
    if (folder.isEmpty() || isCancelled)
        return;
    write(FileSaver::stagedFile(folder, FileSaver::AsIs), pem);
    if (!certificatesOnly())
        return;
    const QVector<QByteArray> members = chain();
    QByteArray chainPem;
    for (const QByteArray &der : members)
        chainPem += writePem("CERTIFICATE", der);
    write(FileSaver::stagedFile(folder, FileSaver::Chain), chainPem);
    write(FileSaver::stagedFile(folder, FileSaver::Collection), writeCollection(members));
}

namespace {

/// Of a key bundle all certificates: its issuers came with it.
void addCandidates(const QCA::KeyStoreEntry &entry, bool isSystem,
                   QVector<ChainCandidate> *candidates)
{
    QList<QCA::Certificate> found = entryKeyBundle(entry).certificateChain();
    if (found.isEmpty())
        found += entryCertificate(entry);
    for (const QCA::Certificate &certificate : qAsConst(found)) {
        if (!certificate.isNull())
            *candidates += {certificate.toDER(), QString(), isSystem};
    }
}

} // namespace

Exporter::Exporter(QObject *parent)
    : Job(parent)
{
}

Exporter::~Exporter()
{
    if (m_work)
        m_work->isCancelled = true;
}

QString Exporter::message() const
{
    switch (m_error) {
    case NothingThere:
        //% "There is nothing to export any more. Select the rows again."
        return qtTrId("trivex-app-export-nothing");
    case NotWritten:
        return Files().whyNotWritten(QDir::tempPath());
    default:
        return {};
    }
}

void Exporter::cancel()
{
    if (!isRunning())
        return;
    ++m_serial;
    m_work->isCancelled = true;
    m_error = Cancelled;
    end();
}

void Exporter::stage(EntryModel *entries, const QStringList &identities, FileSaver *saver)
{
    if (!begin())
        return;
    const auto work = std::make_shared<Work>();
    const QSet<QString> wanted(identities.cbegin(), identities.cend());
    const int entryRole = entries ? roleNamed(*entries, QStringLiteral("keyStoreEntry")) : -1;
    const int objectRole = entries ? roleNamed(*entries, QStringLiteral("certificate")) : -1;
    const int rows = entries ? entries->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = entries->index(row, 0);
        auto *object = index.data(entryRole).value<QObject *>();
        if (wanted.contains(entries->identityAt(row))) {
            const RowEncoding encoding =
                rowEncoding(object, index.data(objectRole).value<QObject *>());
            if (!encoding.der.isEmpty())
                work->rows += encoding;
        }
        const QCA::KeyStoreEntry *entry = wanted.size() == 1 ? wrappedEntry(object) : nullptr;
        if (entry)
            addCandidates(*entry, entries->isSystemStore(entryStoreId(*entry)), &work->candidates);
    }
    if (work->rows.isEmpty())
        work->error = NothingThere;
    else if (saver)
        work->stageIn(saver);
    m_work = work;
    runInBackground([work] { work->run(); }, this,
                    [this, work, serial = ++m_serial] { take(*work, serial); });
}

void Exporter::take(const Work &work, int serial)
{
    if (serial != m_serial || !isRunning())
        return;
    m_error = work.error;
    m_text = QString::fromLatin1(work.pem);
    m_certificatesOnly = work.certificatesOnly();
    end();
}

} // namespace Trivex
