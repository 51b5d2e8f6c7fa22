// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenkeyinfo.h"

#include "tools/certificatedetails.h"
#include "tools/detailgroups.h"
#include "tools/followed.h"

namespace Trivex {

TokenKeyInfo::TokenKeyInfo(QObject *parent)
    : QObject(parent)
{
}

TokenKeyModel *TokenKeyInfo::keys() const
{
    return m_keys;
}

void TokenKeyInfo::setKeys(TokenKeyModel *keys)
{
    if (!followNext(&m_keys, keys, this))
        return;
    if (keys) {
        connect(keys, &QAbstractItemModel::rowsInserted, this, &TokenKeyInfo::changed);
        connect(keys, &QAbstractItemModel::rowsRemoved, this, &TokenKeyInfo::changed);
        connect(keys, &QAbstractItemModel::dataChanged, this, &TokenKeyInfo::changed);
    }
    Q_EMIT changed();
}

QString TokenKeyInfo::identity() const
{
    return m_identity;
}

void TokenKeyInfo::setIdentity(const QString &identity)
{
    if (m_identity == identity)
        return;
    m_identity = identity;
    Q_EMIT changed();
}

QVariant TokenKeyInfo::value(int role) const
{
    const int row = m_keys ? m_keys->rowOfIdentity(m_identity) : -1;
    return row < 0 ? QVariant() : m_keys->index(row).data(role);
}

bool TokenKeyInfo::present() const
{
    return value(TokenKeyModel::IsKeyRole).toBool();
}

QString TokenKeyInfo::name() const
{
    return value(TokenKeyModel::NameRole).toString();
}

QString TokenKeyInfo::storeId() const
{
    return value(EntryModel::StoreIdRole).toString();
}

QString TokenKeyInfo::storeName() const
{
    return value(EntryModel::StoreNameRole).toString();
}

QString TokenKeyInfo::keyId() const
{
    return value(TokenKeyModel::KeyIdRole).toString();
}

bool TokenKeyInfo::canRequest() const
{
    return value(TokenKeyModel::CanRequestRole).toBool();
}

QString TokenKeyInfo::request() const
{
    return value(TokenKeyModel::RequestRole).toString();
}

QString TokenKeyInfo::requestIdentity() const
{
    return value(TokenKeyModel::RequestIdentityRole).toString();
}

QVariantList TokenKeyInfo::groups() const
{
    if (!present())
        return {};
    DetailGroups groups;
    //% "Key"
    groups.begin(qtTrId("trivex-app-key-group"));
    //% "Kind"
    groups.add(qtTrId("trivex-app-key-row-kind"), value(TokenKeyModel::KindRole).toString());
    //% "Key name"
    groups.add(qtTrId("trivex-app-key-row-name"), name());
    //% "Id on the token"
    groups.add(qtTrId("trivex-app-key-row-id"), value(TokenKeyModel::TokenIdRole).toString(),
               DetailGroups::FixedWidth);
    const QString uses = value(TokenKeyModel::UsesRole).toString();
    //% "May"
    groups.add(qtTrId("trivex-app-key-row-uses"),
               //% "is known after a login"
               uses.isEmpty() ? qtTrId("trivex-app-key-uses-unknown") : uses);
    //% "Origin"
    groups.add(qtTrId("trivex-app-key-row-origin"), value(TokenKeyModel::OriginRole).toString());
    //% "Token"
    groups.add(qtTrId("trivex-app-key-row-token"), storeName());
    //% "Waits for the certificate of"
    groups.add(qtTrId("trivex-app-key-row-request"), request());
    return groups.groups();
}

QString TokenKeyInfo::text() const
{
    return CertificateDetails::textOf(groups());
}

} // namespace Trivex
