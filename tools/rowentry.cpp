// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowentry.h"

#include "qca/adapter/entries.h"
#include "qca/base/encodedobject.h"
#include "qca/base/entryrows.h"
#include "qca/base/savedrequest.h"

#include <QMetaProperty>

namespace Trivex {

// Read past QVariant, which knows the pointer only under the one name that the module registers.
const QCA::KeyStoreEntry *wrappedEntry(QObject *object)
{
    const int index = object ? object->metaObject()->indexOfProperty("data") : -1;
    if (index < 0)
        return nullptr;
    const QByteArray type = object->metaObject()->property(index).typeName();
    if (type != "QCA::KeyStoreEntry*" && type != "QCA_KeyStoreEntry*")
        return nullptr;
    QCA::KeyStoreEntry *entry = nullptr;
    void *arguments[] = {&entry};
    QMetaObject::metacall(object, QMetaObject::ReadProperty, index, arguments);
    return entry;
}

const QCA::KeyStoreEntry *entryAt(const QAbstractItemModel &model, int row, int entryRole)
{
    if (const EntryRows *rows = entryRowsOf(&model))
        return rows->entryOf(row);
    return wrappedEntry(model.index(row, 0).data(entryRole).value<QObject *>());
}

namespace {

QCA::Certificate certificateIn(const QCA::KeyStoreEntry &entry)
{
    return entryType(entry) == QCA::KeyStoreEntry::TypeKeyBundle
        ? entryKeyBundle(entry).certificateChain().primary()
        : entryCertificate(entry);
}

RowEncoding encodingOf(const QCA::KeyStoreEntry &entry)
{
    const QCA::Certificate found = certificateIn(entry);
    return {ShownKind::Certificate, found.isNull() ? QByteArray() : found.toDER()};
}

RowEncoding requestAt(const QAbstractItemModel &model, int row, int certificateRole)
{
    // What the row shows, and not its file: that may have become anything meanwhile, and would be
    // read on the GUI thread.
    auto *const object = model.index(row, 0).data(certificateRole).value<QObject *>();
    const auto *encoded =
        qobject_cast<SavedRequest *>(object) ? qobject_cast<EncodedObject *>(object) : nullptr;
    return {ShownKind::Request, encoded ? encoded->encoding() : QByteArray()};
}

} // namespace

RowEncoding rowEncoding(const QAbstractItemModel &model, int row, int entryRole,
                        int certificateRole)
{
    return HeldRow(model, row, entryRole, certificateRole).encoding();
}

HeldRow::HeldRow(const QAbstractItemModel &model, int row, int entryRole, int certificateRole)
{
    if (const QCA::KeyStoreEntry *entry = entryAt(model, row, entryRole))
        m_entry = *entry;
    else
        m_request = requestAt(model, row, certificateRole);
}

RowEncoding HeldRow::encoding() const
{
    return entryType(m_entry) < 0 ? m_request : encodingOf(m_entry);
}

} // namespace Trivex
