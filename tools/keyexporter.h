// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/keyextraction.h"
#include "tools/arrival.h"
#include "tools/exportpath.h"
#include "tools/fileitems.h"
#include "tools/filesaver.h"
#include "tools/job.h"

namespace Trivex {

/// Makes a PKCS#12 file (".p12") of a private key, its certificate and the issuers, encrypted by a
/// password: of a key that its token gives out, or of one that lies in a file.
///
///     KeyExporter {
///         id: exporter
///         onFinished: error === KeyExporter.NoError ? ask(saver) : tell(message)
///     }
///     ...
///     exporter.stage(entries, identity, password.text, saver)
///     ...
///     saver.place(path, false)
///
/// A token asks for its PIN as for any operation, and `TokenErrors` tells why it refused: `message`
/// is empty then. The password and the key are wiped when the run ends. GUI thread.
class KeyExporter : public Job {
    Q_OBJECT
    /// How the last run ended.
    Q_PROPERTY(int error READ error NOTIFY finished)
public:
    enum Error {
        NoError,
        NothingThere, ///< there is no key with a certificate any more
        NoPassword, ///< it is empty: everybody could read the key
        TokenRefused, ///< `TokenErrors` has told why
        NotMade, ///< the key is of a kind that can't be written
        NotWritten, ///< the folder for files that wait could not be written
        Cancelled,
    };
    Q_ENUM(Error)

    explicit KeyExporter(QObject *parent = nullptr);
    ~KeyExporter() override;

    int error() const { return m_error; }
    QString message() const override;
    void cancel() override;

    // `finished` follows. Nothing happens while a run is on.
    /// Makes the file for the row of this identity and stages it in `saver`.
    Q_INVOKABLE void stage(Trivex::EntryModel *entries, const QString &identity,
                           const QString &password, Trivex::FileSaver *saver);
    /// The same for an item of a file, whose issuers are looked for in `entries` and in the file.
    Q_INVOKABLE void stageItem(Trivex::FileItemModel *items, int row, Trivex::EntryModel *entries,
                               const QString &password, Trivex::FileSaver *saver);

private:
    struct Work;

    void start(const QCA::PrivateKey &key, EntryModel *entries, FileSaver *saver);
    bool askToken(const QString &storeId, const QByteArray &publicInfo);
    void takeKey(const ExtractedKey &key, int serial);
    void gather();
    void makeFile();
    void finish(Error error);

    Error m_error = NoError;
    std::shared_ptr<Work> m_work; ///< of the run; null when none is on
    QPointer<EntryModel> m_entries; ///< of the run
    ExportPath m_path;
    QString m_storeId; ///< of the token that is asked
    CancellationPtr m_task; ///< what the token is asked for
    int m_serial = 0; ///< tells a late result of a run that was given up
    const std::shared_ptr<Arrival> m_arrival = std::make_shared<Arrival>();
};

} // namespace Trivex
