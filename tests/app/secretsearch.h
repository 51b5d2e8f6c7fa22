// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class QObject;

namespace TrivexTest {

/// A secret that this process has never held in one piece, and the search for its copies: it is
/// kept masked, typed letter by letter, and handed to programs by a child process only. ASCII, so
/// that UTF-8 and Latin-1 are the same.
class SecretSearch {
public:
    /// Each letter of the secret exclusive-or `Mask`.
    static constexpr char Mask = 0x55;
    explicit SecretSearch(const char *masked)
        : m_masked(masked)
    {
    }

    int size() const { return m_masked.size(); }
    QChar letter(int i) const { return QLatin1Char(char(m_masked.at(i) ^ Mask)); }

    /// The copies of the secret, whole or without its last two letters, in this process's writable
    /// memory: live and freed, heaps and stacks, in UTF-8 and in UTF-16. Where each lies is
    /// printed.
    int inMemory() const;
    /// The same for its letters as a field's history of changes has them: one in each record.
    int inHistories() const;
    bool isIn(const QString &text) const;
    bool isIn(const QByteArray &bytes) const;
    /// The files below `folder` that hold it.
    QStringList inFiles(const QString &folder) const;
    /// The text properties that hold it, of all that `root` owns or shows.
    QStringList inProperties(const QObject *root) const;

    /// Runs a program with the secret in place of each "@" of its arguments; true when it ended
    /// well. The arguments are put together in the child.
    bool run(const QString &program, const QStringList &arguments) const;

private:
    /// The places where the first `letters` of it stand `step` bytes apart.
    int count(int step, int letters) const;

    QByteArray m_masked;
};

} // namespace TrivexTest
