// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/chosenrows.h"
#include "tools/sectionedmodel.h"

namespace Trivex {

/// The chosen rows of a list: what is highlighted, shown in detail and acted on. One of them is the
/// current row, from which arrow keys go on.
///
/// Rows are known by their identity and followed wherever searches, sorting and rebuilt lists put
/// them. While one is not listed it is not chosen, and no neighbour is in its place; when it comes
/// back it is chosen again, unless another was chosen meanwhile. A key that gets or loses its
/// certificate stays chosen, though another row stands for it then. Where several are chosen and
/// the current one goes, the first that is still listed is current.
class RowSelection : public QObject {
    Q_OBJECT
    /// The list that the rows are chosen in. Not owned.
    Q_PROPERTY(Trivex::SectionedModel *rows READ rows WRITE setRows NOTIFY rowsChanged)
    /// The current row, -1 for none. Assigning it chooses this row alone; one that does not exist
    /// chooses none.
    Q_PROPERTY(int row READ row WRITE setRow NOTIFY changed)
    /// The chosen row's identity, while it is not listed, too; empty where none was chosen.
    /// Assigning that of a row which is still to come chooses it when it comes.
    Q_PROPERTY(QString identity READ identity WRITE setIdentity NOTIFY changed)
    /// The chosen row is not listed, and the one that stands for the same key is about to come.
    Q_PROPERTY(bool awaited READ isAwaited NOTIFY changed)
    /// How many rows are chosen.
    Q_PROPERTY(int count READ count NOTIFY changed)
    // What is known of the current row; null, empty, false or -1 without one.
    /// The `Certificate` or request of the current row.
    Q_PROPERTY(QObject *certificate READ certificate NOTIFY changed)
    /// The id of its entry, unique within its store.
    Q_PROPERTY(QString entryId READ entryId NOTIFY changed)
    /// The name of the store that holds it.
    Q_PROPERTY(QString place READ place NOTIFY changed)
    /// A type of the key store model's `type` role.
    Q_PROPERTY(int type READ type NOTIFY changed)
    /// Its private key is there, or may be.
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY changed)
    /// An `EntryModel::KeyKind`.
    Q_PROPERTY(int keyKind READ keyKind NOTIFY changed)
    /// It is a key without a certificate.
    Q_PROPERTY(bool isKey READ isKey NOTIFY changed)
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
    bool isKey() const;

    bool isAwaited() const;
    int count() const;
    /// Whether that row is one of the chosen.
    Q_INVOKABLE bool isChosen(int row) const;
    /// The chosen rows in the order of the list, for native callers.
    QVector<int> chosen() const;
    /// The chosen rows in the order of the list.
    Q_INVOKABLE QVariantList chosenRows() const;
    /// The identities of the chosen rows that are no keys, in the order of the list.
    Q_INVOKABLE QStringList chosenIdentities() const;
    /// What a question says of the chosen rows: see `summaryOf()`.
    Q_INVOKABLE QVariantMap summary(int names) const;
    /// Adds the row to the chosen ones or takes it from them; it is current in the first case.
    Q_INVOKABLE void toggle(int row);
    /// Chooses the rows from the one that was last chosen by itself to this one.
    Q_INVOKABLE void extendTo(int row);
    /// Chooses every listed row.
    Q_INVOKABLE void chooseAll();
    /// Chooses the current row alone.
    Q_INVOKABLE void chooseCurrent();
    /// Chooses nothing, and forgets what was chosen.
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void rowsChanged();
    /// The choice, or what is known of the current row, has changed.
    void changed();

private:
    KnownRow known(int row) const;
    /// What is known of one among several, without an object being made for it where its identity
    /// is enough.
    KnownRow knownOfSeveral(int row) const;
    QObject *certificateAt(int row) const;
    bool isListed(int row) const;
    int listed() const;
    void makeCurrent(int row);
    void noteInserted(int first, int last);
    void noteRemoved(int first, int last);
    void noteReset();
    /// Tells of a change after which the current row is this one, -1 for none.
    void follow(int row);
    bool takeHeir();
    void recount();
    int rowOf(const KnownRow &wanted) const;
    int rowOf(const KnownRow &wanted, int first, int last) const;
    QVariant value(const char *role) const;

    QPointer<SectionedModel> m_rows;
    int m_row = -1;
    KnownRow m_current;
    KnownRow m_anchor; ///< where an extended choice begins
    ChosenRows m_several; ///< not active while the current row is the only one
    int m_count = 0;
    mutable int m_role = -1; ///< of the certificates, while the list has the same roles
};

} // namespace Trivex
