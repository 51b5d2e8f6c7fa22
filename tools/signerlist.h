// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/signertrust.h"
#include "tools/fileitem.h"

#include <QAbstractListModel>
#include <QVariantList>

namespace Trivex {

/// The signatures of a document, each with what was found out about it.
class SignerList : public QAbstractListModel {
    Q_OBJECT
    /// How many signatures there are.
    Q_PROPERTY(int count READ rowCount NOTIFY changed)
    /// The worst of all levels; 0 without a signature.
    Q_PROPERTY(int level READ level NOTIFY changed)
public:
    enum Role {
        NameRole =
            Qt::UserRole + 1, ///< QString, whose certificate it is; empty where it is missing
        IssuerRole, ///< QString, who issued it
        LevelRole, ///< int: 1 all is well, 2 be careful, 3 don't rely on it
        HeadlineRole, ///< QString, what was found out, as a sentence
        AdviceRole, ///< QString, what follows from it; may be empty
        TimeRole, ///< QDateTime, as the signature states; invalid where it states none
        VerdictRole, ///< int, a `Verdict`
        TrustRole, ///< int, a `Trust`; only where the verdict is `Good`
        HasCertificateRole, ///< bool
    };
    Q_ENUM(Role)
    /// What became of the signature itself. As `SignerReport::Verdict`.
    enum Verdict {
        Good,
        DocumentChanged,
        Damaged,
        WrongCertificate,
        NoCertificate,
        UnknownAlgorithm,
        Unchecked,
    };
    Q_ENUM(Verdict)
    /// What is known of its certificate. As `SignerTrust`.
    enum Trust { Trusted, ExpiredSince, NotValidThen, NoTrustedRoot, Revoked, Faulty, Expired };
    Q_ENUM(Trust)

    struct Signature {
        SignerReport report;
        SignerTrust trust = SignerTrust::Unknown;
    };

    explicit SignerList(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int level() const;

    /// The value of a role, by its number, of a row.
    Q_INVOKABLE QVariant value(int row, int role) const;
    /// Everything in the certificate of a row, as `CertificateDetails::groups` is made; empty where
    /// there is none.
    Q_INVOKABLE QVariantList details(int row) const;

    void setSignatures(const QVector<Signature> &signatures);

Q_SIGNALS:
    /// The rows have been made anew.
    void changed();

private:
    struct Row {
        Signature signature;
        FileItem certificate;
    };
    QVector<Row> m_rows;
};

} // namespace Trivex
