// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/fileitems.h"

#include "qca/tokens/userstore.h"
#include "tools/certificatedetails.h"
#include "tools/chainsources.h"
#include "tools/fileitemtexts.h"

#include <QHash>

#include <algorithm>

namespace Trivex {

namespace {

/// An item for `object`, which is no private key.
FileItem itemOf(const FileObject &object)
{
    FileItem item;
    item.kind = object.kind;
    item.der = object.der;
    return item;
}

} // namespace

QVector<FileItem> fileItems(const FileContents &contents)
{
    QVector<FileItem> items;
    QHash<QByteArray, int> known; // chains are often joined with what they end in
    items.reserve(contents.objects.size());
    known.reserve(contents.objects.size());
    for (const FileObject &object : contents.objects) {
        if (object.kind == FileObject::PrivateKey || known.contains(object.der))
            continue;
        known.insert(object.der, items.size());
        items += itemOf(object);
    }
    for (const FileObject &object : contents.objects) {
        if (object.kind != FileObject::PrivateKey)
            continue;
        if (object.certificate >= 0) {
            const QByteArray &owner = contents.objects.at(object.certificate).der;
            items[known.value(owner)].key = privateKeyOf(object);
        } else {
            FileItem item;
            item.kind = object.kind;
            item.key = privateKeyOf(object);
            items += item;
        }
    }
    return items;
}

QVector<FileItem> fileItems(const QCA::KeyBundle &bundle)
{
    QVector<FileItem> items;
    const QCA::CertificateChain chain = bundle.certificateChain();
    for (const QCA::Certificate &certificate : chain) {
        FileItem item;
        item.der = certificate.toDER();
        if (items.isEmpty()) {
            item.key = bundle.privateKey();
            item.label = bundle.name();
        }
        items += item;
    }
    return items;
}

FileItemModel::FileItemModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int FileItemModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_items.size();
}

QHash<int, QByteArray> FileItemModel::roleNames() const
{
    return {{NameRole, QByteArrayLiteral("name")},
            {DetailRole, QByteArrayLiteral("detail")},
            {KindRole, QByteArrayLiteral("kind")},
            {InitialRole, QByteArrayLiteral("initial")},
            {FromRole, QByteArrayLiteral("from")},
            {UntilRole, QByteArrayLiteral("until")},
            {CheckableRole, QByteArrayLiteral("checkable")},
            {CheckedRole, QByteArrayLiteral("checked")},
            {HasKeyRole, QByteArrayLiteral("hasKey")}};
}

QVariant FileItemModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_items.size())
        return {};
    const FileItem &item = m_items.at(index.row());
    switch (role) {
    case NameRole:
        return itemName(item);
    case DetailRole:
        return itemDetail(item);
    case KindRole:
        return int(item.kind);
    case InitialRole:
        return itemName(item).left(1).toUpper();
    case FromRole:
        return item.certificate().isNull() ? QDateTime() : item.certificate().notValidBefore();
    case UntilRole:
        return item.certificate().isNull() ? QDateTime() : item.certificate().notValidAfter();
    case CheckableRole:
        return item.isImportable();
    case CheckedRole:
        return item.isChecked;
    case HasKeyRole:
        return item.kind == FileObject::Certificate && !item.key.isNull();
    default:
        return {};
    }
}

bool FileItemModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != CheckedRole || index.row() < 0 || index.row() >= m_items.size())
        return false;
    FileItem &item = m_items[index.row()];
    if (!item.isImportable() || item.isChecked == value.toBool())
        return false;
    item.isChecked = value.toBool();
    Q_EMIT dataChanged(index, index, {CheckedRole});
    Q_EMIT changed();
    return true;
}

void FileItemModel::setChecked(int row, bool checked)
{
    setData(index(row), checked, CheckedRole);
}

void FileItemModel::setChecked(const QVector<int> &rows, bool checked)
{
    bool isChange = false;
    for (const int row : rows) {
        FileItem *item = row >= 0 && row < m_items.size() ? &m_items[row] : nullptr;
        if (!item || !item->isImportable() || item->isChecked == checked)
            continue;
        item->isChecked = checked;
        isChange = true;
        Q_EMIT dataChanged(index(row), index(row), {CheckedRole});
    }
    if (isChange)
        Q_EMIT changed();
}

void FileItemModel::setAllChecked(bool checked)
{
    bool isChange = false;
    for (FileItem &item : m_items) {
        const bool wanted = checked && item.isImportable();
        isChange = isChange || item.isChecked != wanted;
        item.isChecked = wanted;
    }
    if (!isChange)
        return;
    Q_EMIT dataChanged(index(0), index(m_items.size() - 1), {CheckedRole});
    Q_EMIT changed();
}

template <class Predicate> int FileItemModel::countOf(Predicate predicate) const
{
    return int(std::count_if(m_items.cbegin(), m_items.cend(), predicate));
}

int FileItemModel::checkableCount() const
{
    return countOf([](const FileItem &item) { return item.isImportable(); });
}

int FileItemModel::certificateCount() const
{
    return countOf([](const FileItem &item) { return item.kind == FileObject::Certificate; });
}

int FileItemModel::checkedCount() const
{
    return countOf([](const FileItem &item) { return item.isChecked; });
}

int FileItemModel::checkedCertificates() const
{
    return countOf([](const FileItem &item) {
        return item.isChecked && item.kind == FileObject::Certificate;
    });
}

int FileItemModel::checkedLists() const
{
    return countOf([](const FileItem &item) {
        return item.isChecked && item.kind == FileObject::RevocationList;
    });
}

int FileItemModel::checkedKeys() const
{
    return countOf([](const FileItem &item) { return item.isChecked && !item.key.isNull(); });
}

int FileItemModel::checkedRoots() const
{
    return countOf([](const FileItem &item) {
        return item.isChecked && item.kind == FileObject::Certificate
            && ChainSources::isAnchor(item.der, userStoreId(), false);
    });
}

QVariantList FileItemModel::details(int row) const
{
    return row >= 0 && row < m_items.size() ? itemGroups(m_items.at(row)) : QVariantList();
}

QString FileItemModel::detailsText(int row) const
{
    return CertificateDetails::textOf(details(row));
}

QString FileItemModel::pem(int row) const
{
    return row >= 0 && row < m_items.size() ? itemPem(m_items.at(row)) : QString();
}

bool FileItemModel::hasEncoding(int row) const
{
    return row >= 0 && row < m_items.size() && !itemDer(m_items.at(row)).isEmpty();
}

QString FileItemModel::structure(int row) const
{
    return row >= 0 && row < m_items.size() ? itemStructure(m_items.at(row)) : QString();
}

QVariant FileItemModel::value(int row, int role) const
{
    return data(index(row), role);
}

void FileItemModel::setItems(const QVector<FileItem> &items)
{
    if (items.isEmpty() && m_items.isEmpty())
        return;
    beginResetModel();
    m_items = items;
    for (FileItem &item : m_items)
        item.isChecked = item.isImportable();
    endResetModel();
    Q_EMIT changed();
}

} // namespace Trivex
