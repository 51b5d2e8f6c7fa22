// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/removalundo.h"

#include "qca/adapter/entries.h"
#include "qca/base/atomicfile.h"
#include "qca/base/regularfile.h"
#include "qca/base/savedrequest.h"
#include "qca/tokens/userstore.h"
#include "tools/files.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

#include <QFileInfo>

namespace Trivex {

RemovalUndo::RemovalUndo(QObject *parent)
    : QObject(parent)
{
    connect(&m_writer, &StoreWriter::written, this,
            [this](const QString &entryId) { stepEnded(!entryId.isEmpty()); });
}

RemovalUndo::~RemovalUndo() = default;

int RemovalUndo::count() const
{
    return m_removals.isEmpty() ? 0 : m_removals.last().size();
}

void RemovalUndo::begin()
{
    // What is being brought back stays the last until it is.
    if (m_running || (!m_removals.isEmpty() && m_removals.last().isEmpty()))
        return;
    m_removals.append(Removal());
    Q_EMIT changed();
}

void RemovalUndo::note(EntryModel *entries, const QString &identity)
{
    m_noted = false;
    const int row = entries && !m_running ? entries->rowOfIdentity(identity) : -1;
    if (row < 0)
        return;
    const QModelIndex index = entries->index(row, 0);
    Removed removed;
    if (const QCA::KeyStoreEntry *entry =
            entryAt(*entries, row, roleNamed(*entries, QStringLiteral("keyStoreEntry")))) {
        removed.place = entryStoreId(*entry);
        removed.certificate = entryCertificate(*entry);
        if (entryType(*entry) != QCA::KeyStoreEntry::TypeCertificate
            || removed.certificate.isNull())
            return;
    } else {
        const auto *request = qobject_cast<SavedRequest *>(
            index.data(roleNamed(*entries, QStringLiteral("certificate"))).value<QObject *>());
        removed.place = request ? request->requestFile() : QString();
        removed.contents = readRegularFile(removed.place).value_or(QByteArray());
        if (removed.contents.isEmpty())
            return;
    }
    if (m_removals.isEmpty())
        m_removals.append(Removal());
    m_removals.last().append(removed);
    m_noted = true;
    Q_EMIT changed();
}

void RemovalUndo::forgetLast()
{
    if (!m_noted || m_running || count() == 0)
        return;
    m_noted = false;
    m_removals.last().removeLast();
    Q_EMIT changed();
}

void RemovalUndo::undo()
{
    while (!m_removals.isEmpty() && m_removals.last().isEmpty())
        m_removals.removeLast();
    if (m_running || m_removals.isEmpty())
        return;
    m_noted = false;
    m_running = true;
    m_written = 0;
    Q_EMIT changed();
    QTimer::singleShot(0, this, &RemovalUndo::next);
}

void RemovalUndo::next()
{
    if (count() > 0) {
        if (!start(m_removals.last().constFirst()))
            stepEnded(false);
        return;
    }
    m_removals.removeLast();
    m_running = false;
    Q_EMIT changed();
    Q_EMIT finished(m_written, true, {});
}

bool RemovalUndo::start(const Removed &removed)
{
    if (!removed.certificate.isNull())
        return m_writer.write(removed.place, removed.certificate);
    // What is there as it was is back, whoever wrote it.
    const bool good =
        writeAtomically(removed.place, removed.contents, false) == WriteResult::Written
        || readRegularFile(removed.place) == removed.contents;
    if (good)
        stepEnded(true);
    return good;
}

void RemovalUndo::stepEnded(bool good)
{
    if (!m_running)
        return;
    if (good) {
        m_removals.last().removeFirst();
        ++m_written;
        QTimer::singleShot(0, this, &RemovalUndo::next);
        return;
    }
    m_running = false;
    const QString problem = reason();
    // Tried again once the others are back: they need not wait for what may never work.
    m_removals.prepend(m_removals.takeLast());
    Q_EMIT changed();
    Q_EMIT finished(m_written, false, problem);
}

QString RemovalUndo::reason() const
{
    const Removed &removed = m_removals.constLast().constFirst();
    if (removed.certificate.isNull()) {
        if (QFileInfo::exists(removed.place)) {
            //% "There is another request of this name by now. Rename it and try again."
            return qtTrId("trivex-app-undo-taken");
        }
        return Files().whyNotWritten(QFileInfo(removed.place).absolutePath());
    }
    if (removed.place == userStoreId())
        return Files().whyNotWritten(userStoreDirectory());
    if (!TokenMonitor::token(removed.place).present) {
        //% "The token is not there. Insert it and try again."
        return qtTrId("trivex-app-undo-no-token");
    }
    return {};
}

} // namespace Trivex
