// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"

#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace Trivex {

/// Rows as files for other programs, as they are dragged out of a list: PEM, each under the name
/// that the row has, below the folder for temporary files. They stay as long as this object, since
/// nobody tells when the other program has read them.
class RowFiles : public QObject {
    Q_OBJECT
public:
    /// So many rows become files at once; who wants more exports them.
    static constexpr int MostRows = 200;

    explicit RowFiles(QObject *parent = nullptr);
    ~RowFiles() override;

    /// Writes the rows of these identities and gives the URLs of their files, in the order of the
    /// entries. Empty when there are none or too many of them, or when they can't be written.
    Q_INVOKABLE QStringList write(Trivex::EntryModel *entries, const QStringList &identities);

Q_SIGNALS:
    /// `write()` gives no files, and why, as a sentence with the next step.
    void refused(const QString &why);

private:
    QStringList refuse(const QString &why);

    std::vector<std::unique_ptr<QTemporaryDir>> m_folders;
};

} // namespace Trivex
