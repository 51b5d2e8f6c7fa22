// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"
#include "tools/exportpath.h"
#include "tools/filesaver.h"
#include "tools/job.h"
#include "tools/portions.h"
#include "tools/rowentry.h"

#include <QPointer>

#include <memory>
#include <vector>

namespace Trivex {

/// Puts rows of a list into the forms in which others take certificates: one text of PEM, the same
/// with the issuers up to the root, and a PKCS#7 collection.
///
///     Exporter {
///         id: exporter
///         onFinished: error === Exporter.NoError ? ask(saver) : tell(message)
///     }
///     ...
///     exporter.stage(entries, identities, saver)
///     ...
///     saver.place(path, false, FileSaver.Collection)
///
/// The rows are those of the moment of the call. They are read in small portions, of which the
/// progress tells; the rest is done in a thread of its own. Private keys are in none of the forms:
/// they don't leave their tokens. GUI thread.
class Exporter : public Job {
    Q_OBJECT
    /// How the last run ended.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// What the last run made, as PEM without issuers.
    Q_PROPERTY(QString text READ text NOTIFY finished)
    /// Whether certificates were among the rows, and nothing else.
    Q_PROPERTY(bool certificatesOnly READ isCertificatesOnly NOTIFY finished)
public:
    enum Error {
        NoError,
        NothingThere, ///< none of the rows holds anything that can be read
        NotWritten, ///< the folder for files that wait could not be written
        Cancelled,
    };
    Q_ENUM(Error)
    /// So many rows are read in one turn of the event loop at most.
    static constexpr int MostInPortion = Portions::Most;

    explicit Exporter(QObject *parent = nullptr);
    ~Exporter() override;

    int error() const { return m_error; }
    QString text() const { return m_text; }
    bool isCertificatesOnly() const { return m_certificatesOnly; }
    QString message() const override;
    double progress() const override;
    void cancel() override;

    /// Makes all forms of the rows of these identities and stages them in `saver`, which may be
    /// null for the text alone. Issuers come into the forms of a single certificate. `finished`
    /// follows. Nothing happens while it runs.
    Q_INVOKABLE void stage(Trivex::EntryModel *entries, const QStringList &identities,
                           Trivex::FileSaver *saver);

private:
    struct Work;
    void makeForms();
    void start();
    void finishWork(const Work &work, int serial);

    Error m_error = NoError;
    QString m_text;
    bool m_certificatesOnly = false;
    std::shared_ptr<Work> m_work; ///< of the last run
    std::vector<HeldRow> m_held; ///< what is to be read
    Portions m_reading;
    QPointer<EntryModel> m_entries;
    QPointer<FileSaver> m_saver;
    ExportPath m_path;
    int m_serial = 0; ///< tells a late result of a run that was given up
};

} // namespace Trivex
