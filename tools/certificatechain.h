// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chain.h"
#include "tools/chainsources.h"
#include "tools/chainstepmodel.h"
#include "tools/fileitems.h"
#include "tools/job.h"

#include <QPointer>

#include <atomic>
#include <memory>

namespace Trivex {

/// The path from a certificate to a root that is trusted here, checked at each step: signatures,
/// dates, rights, strengths and revocation.
///
///     CertificateChain {
///         id: chain
///         entries: library.entries
///         certificate: row.certificate
///     }
///     Label { text: chain.running ? "..." : chain.word + ": " + chain.message }
///     Repeater { model: chain.steps; Label { text: name + " " + text } }
///
/// Issuers are looked for among all certificates of `entries` and those of the file; a path ends at
/// the system's roots and at roots among the user's own files. The revocation lists of the file
/// and of the folder of the user's own files count. Nothing is asked of the network.
///
/// The check runs in a worker, and again when something that it used came, went or changed, and not
/// otherwise. GUI thread.
class CertificateChain : public Job {
    Q_OBJECT
    /// Where issuers are looked for; may be null.
    Q_PROPERTY(Trivex::EntryModel *entries READ entries WRITE setEntries NOTIFY entriesChanged)
    /// The certificate of one of its rows. A request, and what is in no row, has no path.
    Q_PROPERTY(QObject *certificate READ certificate WRITE setCertificate NOTIFY certificateChanged)
    /// A file whose certificates are candidates and whose lists count. Where there is no
    /// `certificate`, the one to check is its row `itemRow`.
    Q_PROPERTY(Trivex::FileItemModel *items READ items WRITE setItems NOTIFY itemsChanged)
    /// The row of `items` that is checked where there is no `certificate`; -1 for none.
    Q_PROPERTY(int itemRow READ itemRow WRITE setItemRow NOTIFY itemRowChanged)
    /// The time that the check is for; an invalid date is now.
    Q_PROPERTY(QDateTime date READ date WRITE setDate NOTIFY dateChanged)
    /// What the path has to be good for, a `Purpose`.
    Q_PROPERTY(int purpose READ purpose WRITE setPurpose NOTIFY purposeChanged)
    /// Whether there is a result of what is asked now.
    Q_PROPERTY(bool ready READ isReady NOTIFY finished)
    /// A `Verdict`; meaningful while `ready`.
    Q_PROPERTY(int verdict READ verdict NOTIFY finished)
    /// The verdict in a word; `message` has its reason as a sentence, whether good or bad.
    Q_PROPERTY(QString word READ word NOTIFY finished)
    /// What to do about it, as a sentence.
    Q_PROPERTY(QString advice READ advice NOTIFY finished)
    /// What was not looked at, where all is well; else empty.
    Q_PROPERTY(QString note READ note NOTIFY finished)
    /// How many checks were begun, for tests.
    Q_PROPERTY(int checks READ checks NOTIFY finished)
    /// The same object always.
    Q_PROPERTY(Trivex::ChainStepModel *steps READ steps CONSTANT)
    /// The certificates of the steps, to be shown in full; the same object always.
    Q_PROPERTY(Trivex::FileItemModel *stepItems READ stepItems CONSTANT)
public:
    /// As `ChainVerdict`: a later one outweighs an earlier one.
    enum Verdict { Good, Doubtful, Unknown, Bad };
    Q_ENUM(Verdict)

    /// As `ChainPurpose` (RFC 5280, 4.2.1.12).
    enum Purpose { AnyPurpose, TlsServer, TlsClient, EmailProtection, TimeStamps, CodeSigning };
    Q_ENUM(Purpose)

    explicit CertificateChain(QObject *parent = nullptr);
    ~CertificateChain() override;

    EntryModel *entries() const { return m_entries; }
    void setEntries(EntryModel *entries);
    QObject *certificate() const { return m_certificate; }
    void setCertificate(QObject *certificate);
    FileItemModel *items() const { return m_items; }
    void setItems(FileItemModel *items);
    int itemRow() const { return m_itemRow; }
    void setItemRow(int row);
    QDateTime date() const { return m_date; }
    void setDate(const QDateTime &date);
    int purpose() const { return int(m_purpose); }
    /// A number that is no `Purpose` changes nothing.
    void setPurpose(int purpose);

    bool isReady() const { return m_isReady; }
    int verdict() const { return int(m_result.verdict); }
    QString word() const;
    QString message() const override;
    QString advice() const;
    QString note() const;
    ChainStepModel *steps() { return &m_steps; }
    FileItemModel *stepItems() { return &m_stepItems; }

    /// Takes the date that a person typed, in the user's locale or as 2026-12-31; an empty text is
    /// now. False for what is no date, which changes nothing.
    Q_INVOKABLE bool setDateText(const QString &text);
    /// The steps with the numbers of libcrypto's errors, for a report.
    Q_INVOKABLE QString report() const;
    /// Asks what runs to end; `finished` follows, and there is no result until something changes.
    void cancel() override;
    int checks() const { return m_checks; }

Q_SIGNALS:
    void entriesChanged();
    void certificateChanged();
    void itemsChanged();
    void itemRowChanged();
    void dateChanged();
    void purposeChanged();

private:
    /// What the thread of a check and this object share.
    struct Work {
        ChainInput input;
        std::atomic<bool> isCancelled{false};
        ChainResult result;
    };

    void schedule();
    void update();
    void startCheck();
    void clear();
    void showResult(const ChainResult &result);
    ChainInput wantedInput() const;

    QPointer<EntryModel> m_entries;
    QPointer<ChainSources> m_sources;
    QPointer<QObject> m_certificate;
    QPointer<FileItemModel> m_items;
    int m_itemRow = -1;
    QDateTime m_date;
    ChainPurpose m_purpose = ChainPurpose::Any;
    QTimer m_later;
    ChainInput m_input; ///< of what runs, or of the result
    ChainInput m_next; ///< of what is to run after that
    std::shared_ptr<Work> m_work; ///< null where nothing runs
    ChainResult m_result;
    bool m_isReady = false;
    bool m_isStale = false; ///< what runs is for something else than `m_next`
    int m_checks = 0;
    ChainStepModel m_steps;
    FileItemModel m_stepItems;
};

} // namespace Trivex
