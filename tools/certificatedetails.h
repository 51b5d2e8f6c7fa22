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
/// The info model numbers its rows by a fixed table, which is how the special ones are known: its
/// labels are words of the user's language.
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

    /// Everything as plain text, for the clipboard.
    Q_INVOKABLE QString text() const;

Q_SIGNALS:
    void infoChanged();
    void certificateChanged();
    void groupsChanged();

private Q_SLOTS:
    void rebuild();

private:
    QVariantMap row(int number, const QModelIndex &index) const;
    QString value(int number, const QModelIndex &index) const;

    QPointer<QAbstractItemModel> m_info;
    QPointer<QObject> m_certificate;
    QVariantList m_groups;
};

} // namespace Trivex
