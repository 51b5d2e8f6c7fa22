// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QPointer>
#include <QVariantList>

namespace Trivex {

/// The rows of a certificate's info model grouped as cards show them: rows without a value left
/// out, dates in the user's locale, identifiers checked.
///
/// A row is known by its place (`CertificateRow`).
class CertificateDetails : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel *info READ info WRITE setInfo NOTIFY infoChanged)
    Q_PROPERTY(QObject *certificate READ certificate WRITE setCertificate NOTIFY certificateChanged)
    /// Maps with "title" and "rows"; each row a map with "label", "value", "fixed" (show in fixed
    /// width) and "flag" (what is wrong with it, or empty).
    Q_PROPERTY(QVariantList groups READ groups NOTIFY groupsChanged)
public:
    explicit CertificateDetails(QObject *parent = nullptr);

    QAbstractItemModel *info() const;
    void setInfo(QAbstractItemModel *info);
    /// Where the dates come from; read through its properties.
    QObject *certificate() const;
    void setCertificate(QObject *certificate);
    QVariantList groups() const;

    /// To be called when the rows of the info model have been built anew.
    Q_INVOKABLE void rebuild();
    /// Everything as plain text, for the clipboard.
    Q_INVOKABLE QString text() const;
    /// The same of any groups of that form.
    static QString textOf(const QVariantList &groups);

Q_SIGNALS:
    void infoChanged();
    void certificateChanged();
    void groupsChanged();

private:
    QVariantMap row(const QModelIndex &index) const;
    QString value(const QModelIndex &index) const;

    QPointer<QAbstractItemModel> m_info;
    QPointer<QObject> m_certificate;
    QVariantList m_groups;
    int m_labelRole = -1;
    int m_valueRole = -1;
    int m_sectionRole = -1;
};

} // namespace Trivex
