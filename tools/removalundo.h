// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/storewriter.h"
#include "tools/entrymodel.h"

namespace Trivex {

/// Brings back what was removed, from memory, as long as this object lives: certificates to their
/// token or to the user's files, requests to their folder. What was removed together comes back
/// together, the last first. A private key is nowhere but on its token: a certificate that was
/// removed with one is not kept, because alone it would look as if all were back.
class RemovalUndo : public QObject {
    Q_OBJECT
    /// How many of the last removal can be brought back.
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// True from `undo()` until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
public:
    explicit RemovalUndo(QObject *parent = nullptr);
    /// Refuses the questions of what still runs, and waits for nothing.
    ~RemovalUndo() override;

    int count() const;
    bool isRunning() const { return m_running; }

    /// What is noted from now on is undone together.
    Q_INVOKABLE void begin();
    /// Remembers the row of this identity, which is about to be removed. Nothing for one with a
    /// key.
    Q_INVOKABLE void note(Trivex::EntryModel *entries, const QString &identity);
    /// The row that was noted last stays: it could not be removed.
    Q_INVOKABLE void forgetLast();
    /// Writes the last removal back, one after the other; `finished` follows. Asks for PINs as any
    /// write does. Where one fails, it and those behind it can be tried again, after all other
    /// removals. Nothing happens
    /// while an undo runs or when there is nothing to undo.
    Q_INVOKABLE void undo();

Q_SIGNALS:
    /// `count` or `running` has changed.
    void changed();
    /// So many were written back; `problem` says why not all, with a next step, where the token did
    /// not say it already.
    void finished(int count, bool good, const QString &problem);

private:
    /// A certificate with its store, or the contents of a request's file with its path.
    struct Removed {
        QString place;
        QCA::Certificate certificate;
        QByteArray contents;
    };
    using Removal = QVector<Removed>;

    void next();
    bool start(const Removed &removed);
    void stepEnded(bool good);
    QString reason() const;

    QVector<Removal> m_removals; ///< the last one may be empty still
    bool m_noted = false; ///< the last call of `note` remembered something
    StoreWriter m_writer;
    bool m_running = false;
    int m_written = 0;
};

} // namespace Trivex
