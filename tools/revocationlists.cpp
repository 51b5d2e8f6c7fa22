// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/revocationlists.h"

#include "qca/base/atomicfile.h"
#include "qca/questions/background.h"
#include "qca/tokens/userstore.h"
#include "tools/fileitemtexts.h"
#include "tools/files.h"

#include <memory>

namespace Trivex {

RevocationLists::RevocationLists(QObject *parent)
    : QObject(parent)
    , m_folder(userStoreDirectory())
{
    connect(&m_folder, &ListFolder::changed, this, &RevocationLists::take);
    take();
}

RevocationLists::~RevocationLists() = default;

void RevocationLists::take()
{
    m_places = m_folder.places();
    QVector<FileItem> items;
    for (const ListFolder::Place &place : qAsConst(m_places)) {
        FileItem item;
        item.kind = FileObject::RevocationList;
        item.der = place.der;
        items += item;
    }
    m_items.setItems(items);
    Q_EMIT changed();
}

bool RevocationLists::canRemove(int row) const
{
    return row >= 0 && row < m_places.size() && m_places.at(row).isAlone;
}

QDateTime RevocationLists::due(int row) const
{
    return row >= 0 && row < m_items.items().size() ? nextUpdateOf(m_items.items().at(row))
                                                    : QDateTime();
}

void RevocationLists::remove(int row)
{
    if (!canRemove(row))
        return;
    const auto isGone = std::make_shared<bool>();
    runInBackground([path = m_places.at(row).path, isGone] { *isGone = removeFile(path); }, this,
                    [this, isGone] {
                        m_folder.look();
                        Q_EMIT removed(*isGone ? QString()
                                               : Files().whyNotWritten(userStoreDirectory()));
                    });
}

} // namespace Trivex
