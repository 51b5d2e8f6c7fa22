// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificate.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QVector>

/// The fields of one certificate as labelled rows for a details page.
///
/// Empty until a certificate is set, then always 25 rows in a fixed order. The certificate is
/// not owned and its later changes don't show. GUI thread only.
///
/// | role | number | type |
/// |---|---|---|
/// | label | 257 | string, translated |
/// | value | 258 | string |
/// | section | 259 | string, translated; empty for the first rows |
class CertificateInfoModel : public QAbstractListModel {
    Q_OBJECT
    /// Null at first. Null is ignored when written.
    Q_PROPERTY(
        Certificate *certificate READ certificate WRITE setCertificate NOTIFY certificateChanged)

public:
    enum Role {
        LabelRole = Qt::UserRole + 1,
        ValueRole,
        SectionRole,
    };

    explicit CertificateInfoModel(QObject *parent = nullptr);
    ~CertificateInfoModel() override;

    Certificate *certificate() const { return m_certificate; }
    /// Shows this certificate; null empties the model. Not owned.
    Q_INVOKABLE void setCertificate(Certificate *certificate);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    /// The rows were built anew.
    void infoChanged();
    void certificateChanged();

private:
    struct Row {
        QString section;
        QString label;
        QString value;
    };

    void rebuild();

    QPointer<Certificate> m_certificate;
    QVector<Row> m_rows;
};
