// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/chainstepmodel.h"

#include "qca/base/plaintext.h"
#include "tools/chaintexts.h"

#include <algorithm>

namespace Trivex {

namespace {

QString findingsText(const ChainStep &step)
{
    QStringList sentences;
    for (const ChainFinding &finding : step.findings)
        sentences += chainText(finding, step);
    return sentences.join(QLatin1Char(' '));
}

QVariantList codes(const ChainStep &step)
{
    QVariantList list;
    for (const ChainFinding &finding : step.findings)
        list += finding.code;
    return list;
}

} // namespace

ChainStepModel::ChainStepModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int ChainStepModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_steps.size();
}

QHash<int, QByteArray> ChainStepModel::roleNames() const
{
    return {{NameRole, QByteArrayLiteral("name")},     {IssuerRole, QByteArrayLiteral("issuer")},
            {PlaceRole, QByteArrayLiteral("place")},   {VerdictRole, QByteArrayLiteral("verdict")},
            {WordRole, QByteArrayLiteral("word")},     {TextRole, QByteArrayLiteral("text")},
            {AdviceRole, QByteArrayLiteral("advice")}, {RootRole, QByteArrayLiteral("root")},
            {ListedRole, QByteArrayLiteral("listed")}, {CodesRole, QByteArrayLiteral("codes")}};
}

QVariant ChainStepModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ChainStep &step = m_steps.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return plainText(step.subject);
    case IssuerRole:
        return plainText(step.issuer);
    case PlaceRole:
        return step.place;
    case VerdictRole:
        return int(step.verdict);
    case WordRole:
        return chainWord(step.verdict);
    case TextRole:
        return findingsText(step);
    case AdviceRole:
        return step.findings.isEmpty() ? QString() : chainAdvice(step.findings.constFirst().reason);
    case RootRole:
        return step.isAnchor;
    case ListedRole:
        return step.isListed;
    case CodesRole:
        return codes(step);
    default:
        return {};
    }
}

QVariant ChainStepModel::value(int row, int role) const
{
    return data(index(row, 0), role);
}

void ChainStepModel::setSteps(const QVector<ChainStep> &steps)
{
    // Rows that stay keep what is shown for them, and with it the keys of who is there.
    const int before = m_steps.size();
    const int kept = qMin(before, steps.size());
    if (before > kept) {
        beginRemoveRows({}, kept, before - 1);
        m_steps.resize(kept);
        endRemoveRows();
    }
    std::copy_n(steps.cbegin(), kept, m_steps.begin());
    if (kept > 0)
        Q_EMIT dataChanged(index(0), index(kept - 1));
    if (steps.size() > kept) {
        beginInsertRows({}, kept, steps.size() - 1);
        m_steps = steps;
        endInsertRows();
    }
    if (steps.size() != before)
        Q_EMIT countChanged();
}

} // namespace Trivex
