// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/exporter.h"

#include "qca/adapter/collectionwriting.h"
#include "qca/asn1/pem.h"
#include "qca/base/atomicfile.h"
#include "qca/questions/background.h"
#include "tools/files.h"
#include "tools/rows.h"

#include <QDir>
#include <QSet>

#include <algorithm>

namespace Trivex {

/// What the thread gets, and what it makes of it.
struct Exporter::Work {
    QVector<RowEncoding> rows;
    ChainInput path; ///< of a single certificate
    QString folder;
    std::shared_ptr<const QTemporaryDir> staging; ///< keeps the folder while it is written to
    std::atomic<bool> isCancelled{false};

    QByteArray pem;
    QString text;
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

/// The certificates, where it is one, with its issuers as far as they are known.
QVector<QByteArray> Exporter::Work::chain() const
{
    if (rows.size() == 1)
        return ExportPath::of(path, isCancelled);
    QVector<QByteArray> all;
    for (const RowEncoding &row : rows)
        all += row.der;
    return all;
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
    text = QString::fromLatin1(pem);
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

Exporter::Exporter(QObject *parent)
    : Job(parent)
    , m_reading(
          [this](int row) {
              const RowEncoding encoding = m_held.at(size_t(row)).encoding();
              if (!encoding.der.isEmpty())
                  m_work->rows += encoding;
          },
          [this] { makeForms(); })
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

double Exporter::progress() const
{
    return m_reading.progress();
}

void Exporter::cancel()
{
    if (!isRunning())
        return;
    ++m_serial;
    m_reading.stop();
    m_held.clear();
    m_path.drop();
    m_work->isCancelled = true;
    m_error = Cancelled;
    end();
}

void Exporter::stage(EntryModel *entries, const QStringList &identities, FileSaver *saver)
{
    if (!begin())
        return;
    m_work = std::make_shared<Work>();
    m_entries = entries;
    m_saver = saver;
    ++m_serial;
    const QSet<QString> wanted(identities.cbegin(), identities.cend());
    const int entryRole = entries ? roleNamed(*entries, QStringLiteral("keyStoreEntry")) : -1;
    const int objectRole = entries ? roleNamed(*entries, QStringLiteral("certificate")) : -1;
    const int rows = entries ? entries->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        if (wanted.contains(entries->identityAt(row)))
            m_held.emplace_back(*entries, row, entryRole, objectRole);
    }
    m_reading.start(int(m_held.size()));
}

void Exporter::makeForms()
{
    m_held.clear();
    if (m_work->rows.isEmpty())
        m_work->error = NothingThere;
    else if (m_saver)
        m_work->stageIn(m_saver);
    const bool hasPath = m_saver && m_work->rows.size() == 1 && m_work->certificatesOnly();
    if (!hasPath)
        return start();
    m_path.gather(m_entries, m_work->rows.first().der, [this](const ChainInput &input) {
        m_work->path = input;
        start();
    });
}

void Exporter::start()
{
    runInBackground([work = m_work] { work->run(); }, this,
                    [this, work = m_work, serial = m_serial] { finishWork(*work, serial); });
}

void Exporter::finishWork(const Work &work, int serial)
{
    if (serial != m_serial || !isRunning())
        return;
    m_error = work.error;
    m_text = work.text;
    m_certificatesOnly = work.certificatesOnly();
    end();
}

} // namespace Trivex
