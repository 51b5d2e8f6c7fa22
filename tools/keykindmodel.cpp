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
    TokenAbility::Kind ability;
    int bits;
};

constexpr Kind Kinds[] = {
    //% "RSA, %1 bits"
    {KeyRequest::Rsa2048, QT_TRID_NOOP("trivex-app-kind-rsa"), "2048", TokenAbility::Rsa, 2048},
    {KeyRequest::Rsa3072, QT_TRID_NOOP("trivex-app-kind-rsa"), "3072", TokenAbility::Rsa, 3072},
    {KeyRequest::Rsa4096, QT_TRID_NOOP("trivex-app-kind-rsa"), "4096", TokenAbility::Rsa, 4096},
    //% "Elliptic curve %1"
    {KeyRequest::P256, QT_TRID_NOOP("trivex-app-kind-curve"), "P-256", TokenAbility::EllipticCurve,
     256},
    {KeyRequest::P384, QT_TRID_NOOP("trivex-app-kind-curve"), "P-384", TokenAbility::EllipticCurve,
     384},
    {KeyRequest::P521, QT_TRID_NOOP("trivex-app-kind-curve"), "P-521", TokenAbility::EllipticCurve,
     521},
    {KeyRequest::Ed25519, QT_TRID_NOOP("trivex-app-kind-curve"), "Ed25519", TokenAbility::Edwards,
     256},
    //% "GOST R 34.10-2012, %1 bits"
    {KeyRequest::Gost256, QT_TRID_NOOP("trivex-app-kind-gost"), "256", TokenAbility::Gost, 256},
    {KeyRequest::Gost512, QT_TRID_NOOP("trivex-app-kind-gost"), "512", TokenAbility::Gost, 512},
};

/// Modules tell the size of Ed25519 as 255 or 256 bits, so a bit more or less is no matter.
bool makes(const TokenAbility &ability, const Kind &kind)
{
    const bool hasSize = ability.madeLargest == 0
        || (kind.bits >= ability.madeSmallest && kind.bits <= ability.madeLargest + 1);
    return ability.kind == kind.ability && ability.makes && hasSize;
}

bool isOffered(const TokenLook &look, const Kind &kind)
{
    // Until the token has told: what nearly every token makes.
    if (!look.isTaken)
        return kind.ability == TokenAbility::Rsa || kind.ability == TokenAbility::EllipticCurve;
    return std::any_of(look.abilities.cbegin(), look.abilities.cend(),
                       [&kind](const TokenAbility &ability) { return makes(ability, kind); });
}

} // namespace

KeyKindModel::KeyKindModel(QObject *parent)
    : QAbstractListModel(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, [this](const QString &storeId) {
        if (storeId == m_storeId)
            takeLook();
    });
    refresh();
}

void KeyKindModel::setStoreId(const QString &storeId)
{
    if (storeId == m_storeId)
        return;
    m_storeId = storeId;
    m_isAsked = false;
    takeLook();
    Q_EMIT storeIdChanged();
}

/// Once for each time that the token is there; another token may be in its place after that.
void KeyKindModel::takeLook()
{
    const TokenStatus status = TokenMonitor::token(m_storeId);
    const bool isThere = status.present && !status.loading;
    if (isThere && !m_isAsked && !TokenMonitor::look(m_storeId).isTaken)
        TokenMonitor::takeLook(m_storeId);
    m_isAsked = isThere;
    refresh();
}

void KeyKindModel::refresh()
{
    const TokenLook look = TokenMonitor::look(m_storeId);
    QList<int> kinds;
    for (const Kind &one : Kinds) {
        if (isOffered(look, one))
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
