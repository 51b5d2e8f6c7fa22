// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chain.h"

#include <QAbstractListModel>

namespace Trivex {

/// The certificates of a path, from the checked one to its root, each with what was found.
class ChainStepModel : public QAbstractListModel {
    Q_OBJECT
    /// How many certificates the path has.
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< QString, whose it is
        IssuerRole, ///< QString
        PlaceRole, ///< QString, where it lies; empty where that is not known
        VerdictRole, ///< int, a `CertificateChain::Verdict`
        WordRole, ///< QString, the verdict
        TextRole, ///< QString, all that was found, a sentence each; empty where all is well
        AdviceRole, ///< QString, what to do about the gravest finding
        RootRole, ///< bool, a root that is trusted here
        ListedRole, ///< bool, a revocation list of its issuer was looked at
        CodesRole, ///< list of int: libcrypto's numbers of what was found
    };
    Q_ENUM(Role)

    explicit ChainStepModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The value of a role, by its number, of a row.
    Q_INVOKABLE QVariant value(int row, int role) const;

    const QVector<ChainStep> &steps() const { return m_steps; }
    void setSteps(const QVector<ChainStep> &steps);

Q_SIGNALS:
    void countChanged();

private:
    QVector<ChainStep> m_steps;
};

} // namespace Trivex
