// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/rowcache.h"

#include <QSortFilterProxyModel>
#include <QStringList>
#include <QVector>

class KeyStoreEntry;

/// One category of the key store model's rows, sorted by name and narrowed by a search text.
///
/// `filterRole` is the category, a value of `KeyStoreModel::Type`: 0 system, 1 the user's own, 3
/// with a key, 5 requests, 6 imported others, 7 imported roots; anything else shows nothing. The
/// search ignores case and takes the text literally. A row without an entry is in no category but
/// 0 and 5.
///
/// Rows that arrive or change during a search are searched at once; removed rows are forgotten.
/// Texts read from a row are kept until the source announces a change. When a search changes very
/// many rows at once, views get one layout change instead of each row. GUI thread only.
///
/// ```qml
/// CertificateModel { sourceModel: KeyStoreModel; filterRole: KeyStoreModel.SmartCard
///                    searchRoles: ["name", "issuer"]; pattern: field.text }
/// ```
class CertificateModel : public QSortFilterProxyModel {
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
        NameRole = Qt::UserRole + 1,
        KeyStoreEntryRole = Qt::UserRole + 2,
        TypeRole = Qt::UserRole + 5,
    };

    explicit CertificateModel(QObject *parent = nullptr);
    ~CertificateModel() override;

    void setSourceModel(QAbstractItemModel *model) override;

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

private:
    int roleKey(const QString &roleName) const;
    bool matches(int sourceRow) const;
    void refreshMatches();

    void follow(QAbstractItemModel *model);
    void forgetAll();
    void refilter(int changes);
    void readSearchKeys() const;
    QString haystack(int sourceRow) const;
    bool passesCategory(int sourceRow, const QModelIndex &sourceParent,
                        Trivex::CachedRow &row) const;
    bool passesEntryCategory(int category, const QModelIndex &index, Trivex::CachedRow &row) const;
    void readEntry(const QModelIndex &index, Trivex::CachedRow &row) const;
    void readOrigin(const QModelIndex &index, Trivex::CachedRow &row) const;
    const KeyStoreEntry *entryAt(const QModelIndex &index) const;
    void readName(const QModelIndex &index, Trivex::CachedRow &row) const;

    QStringList m_searchRoles;
    QString m_lastPattern;
    /// Holds the flags for matched and accepted rows.
    mutable Trivex::RowCache m_rows;

    QVector<QMetaObject::Connection> m_connections;
    /// The category that rows were accepted by; the base class may have a newer one for a moment.
    QString m_pattern;
    QString m_needle; ///< `m_pattern`, folded
    mutable QVector<int> m_searchKeys;
    mutable bool m_searchKeysKnown = false;
    bool m_rolesChanged = false;
};
