// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QStandardItemModel>

namespace TrivexTest {

/// Stands for a certificate: lists see one only through its properties.
class StandInCertificate : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString commonName MEMBER name CONSTANT)
    Q_PROPERTY(QDateTime notValidBefore MEMBER from CONSTANT)
    Q_PROPERTY(QDateTime notValidAfter MEMBER until CONSTANT)
public:
    QString name;
    QDateTime from, until;
};

/// Rows as a list gets them from the stores.
class RowSource : public QStandardItemModel {
public:
    enum Role { NameRole = Qt::UserRole + 1, CertificateRole, IssuerRole, TypeRole, NumberRole };

    RowSource()
    {
        setItemRoleNames({{NameRole, "name"},
                          {CertificateRole, "certificate"},
                          {IssuerRole, "issuer"},
                          {TypeRole, "type"},
                          {NumberRole, "number"}});
    }
    /// Appends a row. The model owns `certificate` from then on.
    QStandardItem *add(const QString &name, QObject *certificate)
    {
        auto *item = new QStandardItem;
        item->setData(name, NameRole);
        setCertificate(item, certificate);
        appendRow(item);
        return item;
    }
    void setCertificate(QStandardItem *item, QObject *certificate)
    {
        certificate->setParent(this);
        item->setData(QVariant::fromValue(certificate), CertificateRole);
    }
};

} // namespace TrivexTest
