// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/sectionedmodel.h"

namespace Trivex {

/// The one chosen row of a list: what is highlighted, shown in detail and acted on.
///
/// The row is known by its identity and followed wherever searches, sorting and rebuilt lists put
/// it. While it is not listed, nothing is chosen, never a neighbour; when it comes back it is
/// chosen again, unless another was chosen meanwhile.
class RowSelection : public QObject {
    Q_OBJECT
    Q_PROPERTY(Trivex::SectionedModel *rows READ rows WRITE setRows NOTIFY rowsChanged)
    /// The chosen row, -1 for none. One that does not exist chooses none.
    Q_PROPERTY(int row READ row WRITE setRow NOTIFY changed)
    /// The chosen row's identity, while it is not listed, too; empty where none was chosen.
    /// Assigning that of a row which is still to come chooses it when it comes.
    Q_PROPERTY(QString identity READ identity WRITE setIdentity NOTIFY changed)
    // What is known of the chosen row; null, empty, false or -1 without one.
    Q_PROPERTY(QObject *certificate READ certificate NOTIFY changed)
    Q_PROPERTY(QString entryId READ entryId NOTIFY changed)
    Q_PROPERTY(QString place READ place NOTIFY changed)
    /// A type of the key store model's `type` role.
    Q_PROPERTY(int type READ type NOTIFY changed)
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY changed)
    /// An `EntryModel::KeyKind`.
    Q_PROPERTY(int keyKind READ keyKind NOTIFY changed)
public:
    explicit RowSelection(QObject *parent = nullptr);
    ~RowSelection() override;

    SectionedModel *rows() const;
    void setRows(SectionedModel *rows);
    int row() const;
    void setRow(int row);
    QString identity() const;
    void setIdentity(const QString &identity);
    QObject *certificate() const;
    QString entryId() const;
    QString place() const;
    int type() const;
    bool hasKey() const;
    int keyKind() const;

    /// Chooses nothing, and forgets what was chosen.
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void rowsChanged();
    void changed();

private:
    void follow();
    int rowOfIdentity() const;
    QVariant value(const char *role) const;

    QPointer<SectionedModel> m_rows;
    int m_row = -1;
    QString m_identity;
    QPointer<QObject> m_certificate;
};

} // namespace Trivex
