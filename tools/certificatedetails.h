// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/shown.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QVariantList>

namespace Trivex {

/// Everything in a certificate or a request, grouped as cards show it: the rows of its info model,
/// and whatever else its bytes say, extensions and fingerprints included. Rows without a value are
/// left out, dates are in the user's locale, identifiers checked.
///
///     CertificateDetails { info: CertificateInfoModel { certificate: one }; certificate: one }
///
/// A row of the model is known by its place (`CertificateRow`).
class CertificateDetails : public QObject {
    Q_OBJECT
    /// The `CertificateInfoModel` whose rows come first, in their own words. Not owned.
    Q_PROPERTY(QAbstractItemModel *info READ info WRITE setInfo NOTIFY infoChanged)
    Q_PROPERTY(QObject *certificate READ certificate WRITE setCertificate NOTIFY certificateChanged)
    /// Maps with "title" and "rows"; a value has several lines where it is a list. Each row is a
    /// map with "label", "value", "fixed" (show in fixed width) and "flag" (what is wrong with it,
    /// or empty).
    Q_PROPERTY(QVariantList groups READ groups NOTIFY groupsChanged)
    /// Whether `pem` and `structure` have something to show.
    Q_PROPERTY(bool hasEncoding READ hasEncoding NOTIFY groupsChanged)
    /// The PEM text; empty without bytes, and for more than 64 KiB of them.
    Q_PROPERTY(QString pem READ pem NOTIFY groupsChanged)
    /// Its ASN.1 elements as an indented tree, a line each with offset and length. Made when it is
    /// read.
    Q_PROPERTY(QString structure READ structure NOTIFY groupsChanged)
public:
    explicit CertificateDetails(QObject *parent = nullptr);

    QAbstractItemModel *info() const;
    void setInfo(QAbstractItemModel *info);
    /// Where the dates come from; read through its properties.
    QObject *certificate() const;
    void setCertificate(QObject *certificate);
    QVariantList groups() const;
    bool hasEncoding() const;
    QString pem() const;
    QString structure() const;

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
    /// A group as it is put together.
    struct Group {
        int topic; ///< a `ShownTopic`, or -1
        QString title;
        QVector<ShownRow> rows;
    };

    ShownKind kind() const;
    QString value(const QModelIndex &index) const;
    void readEncoding();
    QVector<Group> modelGroups() const;

    QPointer<QAbstractItemModel> m_info;
    QPointer<QObject> m_certificate;
    QVariantList m_groups;
    QByteArray m_encoding;
    QVector<ShownGroup> m_shown;
    QString m_signature; ///< its algorithm in words
    int m_labelRole = -1;
    int m_valueRole = -1;
    int m_sectionRole = -1;
};

} // namespace Trivex
