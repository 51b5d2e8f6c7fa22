// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keykindmodel.h"

#include "tools/keyrequest.h"

#include <algorithm>

namespace Trivex {

namespace {

struct Kind {
    KeyRequest::KeyKind kind;
    const char *id;
    const char *place; ///< in the text
    bool isCommon; ///< every token makes such keys, or is taken to
};

constexpr Kind Kinds[] = {
    //% "RSA, %1 bits"
    {KeyRequest::Rsa2048, QT_TRID_NOOP("trivex-app-kind-rsa"), "2048", true},
    {KeyRequest::Rsa3072, QT_TRID_NOOP("trivex-app-kind-rsa"), "3072", true},
    {KeyRequest::Rsa4096, QT_TRID_NOOP("trivex-app-kind-rsa"), "4096", true},
    //% "Elliptic curve %1"
    {KeyRequest::P256, QT_TRID_NOOP("trivex-app-kind-curve"), "P-256", true},
    {KeyRequest::P384, QT_TRID_NOOP("trivex-app-kind-curve"), "P-384", true},
    {KeyRequest::P521, QT_TRID_NOOP("trivex-app-kind-curve"), "P-521", true},
    {KeyRequest::Ed25519, QT_TRID_NOOP("trivex-app-kind-curve"), "Ed25519", false},
    //% "GOST R 34.10-2012, %1 bits"
    {KeyRequest::Gost256, QT_TRID_NOOP("trivex-app-kind-gost"), "256", false},
    {KeyRequest::Gost512, QT_TRID_NOOP("trivex-app-kind-gost"), "512", false},
};

} // namespace

KeyKindModel::KeyKindModel(QObject *parent)
    : QAbstractListModel(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, [this](const QString &storeId) {
        if (storeId == m_storeId)
            refresh();
    });
    refresh();
}

void KeyKindModel::setStoreId(const QString &storeId)
{
    if (storeId == m_storeId)
        return;
    m_storeId = storeId;
    refresh();
    Q_EMIT storeIdChanged();
}

void KeyKindModel::refresh()
{
    QList<int> kinds;
    for (const Kind &one : Kinds) {
        if (one.isCommon)
            kinds.append(one.kind);
    }
    if (kinds == m_kinds)
        return;
    beginResetModel();
    m_kinds = kinds;
    endResetModel();
    Q_EMIT countChanged();
}

int KeyKindModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant KeyKindModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == KindRole)
        return m_kinds.at(index.row());
    return role == TitleRole || role == Qt::DisplayRole ? title(m_kinds.at(index.row()))
                                                        : QVariant();
}

QHash<int, QByteArray> KeyKindModel::roleNames() const
{
    return {{KindRole, QByteArrayLiteral("kind")}, {TitleRole, QByteArrayLiteral("title")}};
}

QString KeyKindModel::title(int kind)
{
    const auto *const found = std::find_if(std::begin(Kinds), std::end(Kinds),
                                           [kind](const Kind &one) { return one.kind == kind; });
    return found == std::end(Kinds) ? QString()
                                    : qtTrId(found->id).arg(QLatin1String(found->place));
}

} // namespace Trivex
