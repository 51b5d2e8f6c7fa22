// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/job.h"
#include "tools/portions.h"
#include "tools/rowselection.h"
#include "tools/validity.h"

namespace Trivex {

/// The chosen rows of a list as text, one line for each, of what it shows.
///
///     RowLines {
///         id: lines
///         onFinished: if (text) Desktop.copy(text)
///     }
///     ...
///     lines.write(selection)
///
/// Rows that go meanwhile are left out. They are read in portions, so that the window goes on. GUI
/// thread.
class RowLines : public Job {
    Q_OBJECT
    /// What the last run wrote; empty where it was stopped.
    Q_PROPERTY(QString text READ text NOTIFY finished)
public:
    /// So many rows are read in one turn of the event loop at most.
    static constexpr int MostInPortion = Portions::Most;

    explicit RowLines(QObject *parent = nullptr);
    ~RowLines() override;

    QString text() const { return m_text; }
    QString message() const override { return {}; }
    double progress() const override;
    void cancel() override;

    /// Writes the rows that are chosen now; `finished` follows, for a few of them at once. A run
    /// that goes on is given up for it.
    Q_INVOKABLE void write(Trivex::RowSelection *selection);

private:
    /// A row and where it was.
    struct Wanted {
        QString identity;
        int row = -1;
        bool isKey = false;
    };

    /// Those of the entries, known by their names.
    struct Roles {
        int name = -1;
        int issuer = -1;
        int type = -1;
    };

    void finish();
    void add(const Wanted &wanted);
    QString lineOf(const QAbstractItemModel &model, int row) const;

    QPointer<SectionedModel> m_list;
    Roles m_roles;
    QVector<Wanted> m_wanted;
    QStringList m_lines;
    QString m_text;
    Validity m_validity;
    Portions m_reading;
};

} // namespace Trivex
