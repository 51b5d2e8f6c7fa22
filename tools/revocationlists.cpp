// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/revocationlists.h"

#include "qca/questions/background.h"
#include "qca/tokens/userstore.h"
#include "tools/fileitemtexts.h"
#include "tools/files.h"

#include <memory>

namespace Trivex {

namespace {

QString whyNot(ListFile::Removal removal)
{
    if (removal == ListFile::Removal::Done)
        return {};
    if (removal == ListFile::Removal::Failed)
        return Files().whyNotWritten(userStoreDirectory());
    //% "The file of this list was moved or changed by another program, so it was left alone. Look
    //% at the lists again."
    return qtTrId("trivex-app-lists-changed");
}

} // namespace

RevocationLists::RevocationLists(QObject *parent)
    : QObject(parent)
    , m_folder(userStoreDirectory())
{
    connect(&m_folder, &ListFolder::changed, this, &RevocationLists::readFolder);
    readFolder();
}

RevocationLists::~RevocationLists() = default;

void RevocationLists::readFolder()
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
    const auto removal = std::make_shared<ListFile::Removal>();
    runInBackground(
        [place = m_places.at(row), removal] { *removal = ListFile::remove(place.path, place.der); },
        this,
        [this, removal] {
            m_folder.look();
            Q_EMIT removed(whyNot(*removal));
        });
}

} // namespace Trivex
