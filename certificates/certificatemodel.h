// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/rowfacts.h"
#include "certificates/sortedproxy.h"

#include <QStringList>
#include <QTimer>
#include <QVector>

/// One category of the key store model's rows, sorted by name and narrowed by a search text.
///
/// `filterRole` is the category, a value of `KeyStoreModel::Type`: 0 system, 1 the user's own, 3
/// with a key, 5 requests, 6 imported others, 7 imported roots; anything else shows nothing. The
/// search ignores case and takes the text literally. A row without an entry is in no category but
/// 0 and 5.
///
/// Rows that arrive or change during a search are searched at once; removed rows are forgotten.
/// Texts read from a row are kept until the source announces a change. When a search changes very
/// many runs of rows at once, views get one layout change instead of each run.
///
/// A search that has to read more rows than one turn of the event loop has time for goes on in the
/// next ones, and shows its result as one change at the end; until then the rows stay what they
/// are. Whoever asks for the count in the turn of the new text gets the new one, at the price of
/// the time that it takes: docs/decisions/049. GUI thread only.
///
/// ```qml
/// CertificateModel { sourceModel: KeyStoreModel; filterRole: KeyStoreModel.SmartCard
///                    searchRoles: ["name", "issuer"]; pattern: field.text }
/// ```
class CertificateModel : public Trivex::SortedProxy {
    Q_OBJECT
    /// The names of the source's roles to search; empty at first. A change shows with the next
    /// change of the pattern.
    Q_PROPERTY(
        QStringList searchRoles READ searchRoles WRITE setSearchRoles NOTIFY searchRolesChanged)
    /// The search text; empty shows the whole category.
    Q_PROPERTY(QString pattern READ pattern WRITE setPattern NOTIFY patternChanged)

public:
    /// The source's roles that the model itself reads.
    enum SourceRole {
        NameRole = Trivex::RowFacts::NameRole,
        KeyStoreEntryRole = Trivex::RowFacts::KeyStoreEntryRole,
        TypeRole = Trivex::RowFacts::TypeRole,
    };

    explicit CertificateModel(QObject *parent = nullptr);
    ~CertificateModel() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    QStringList searchRoles() const { return m_searchRoles; }
    void setSearchRoles(const QStringList &roles);
    QString pattern() const;
    void setPattern(const QString &pattern);

Q_SIGNALS:
    void searchRolesChanged();
    void patternChanged();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

    void noteInserted(int first, int last) override;
    void noteRemoved(int first, int last) override;
    void noteChanged(int first, int last) override;
    void noteAll(const QAbstractItemModel *source) override;
    bool matters(const QVector<int> &roles) const override;
    bool belongs(int sourceRow) const override;
    bool isFound(int sourceRow) const override;
    int compare(int sourceRow, int other) const override;

private:
    int roleKey(const QString &roleName) const;
    bool matches(int sourceRow) const;
    void refreshMatches();

    void readSearchKeys() const;
    void beginTests();
    void finishTests();
    bool isDue(int row) const;
    void testAll();
    void testSlice();
    void changeCategory();

    QStringList m_searchRoles;
    QString m_lastPattern;
    mutable Trivex::RowFacts m_facts;

    QString m_needle; ///< the pattern, folded
    mutable bool m_searchKeysKnown = false;
    bool m_rolesChanged = false;

    /// No turn of the event loop has passed since a search in slices began.
    bool m_isFresh = false;
    int m_nextTest = 0; ///< a row of the source
    QTimer m_turn;
};
