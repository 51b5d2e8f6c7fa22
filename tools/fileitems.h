// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/fileitem.h"

#include <QAbstractListModel>

namespace Trivex {

/// Everything in a file, each with a tick that says whether it is to be imported.
class FileItemModel : public QAbstractListModel {
    Q_OBJECT
    /// How many things the file holds.
    Q_PROPERTY(int count READ rowCount NOTIFY changed)
    /// How many can be imported.
    Q_PROPERTY(int checkableCount READ checkableCount NOTIFY changed)
    /// How many of the things are certificates.
    Q_PROPERTY(int certificateCount READ certificateCount NOTIFY changed)
    /// How many have their tick, of all kinds and of each.
    Q_PROPERTY(int checkedCount READ checkedCount NOTIFY changed)
    /// How many revocation lists have their tick.
    Q_PROPERTY(int checkedLists READ checkedLists NOTIFY changed)
    /// How many certificates are ticked.
    Q_PROPERTY(int checkedCertificates READ checkedCertificates NOTIFY changed)
    Q_PROPERTY(int checkedKeys READ checkedKeys NOTIFY changed)
    /// How many ticked certificates would be trusted among the user's own files, as ends of paths.
    Q_PROPERTY(int checkedRoots READ checkedRoots NOTIFY changed)
public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< QString, whose it is
        DetailRole, ///< QString, its issuer, or what it is
        KindRole, ///< int, a `Kind`
        InitialRole, ///< QString, for the avatar
        FromRole, ///< QDateTime, invalid but for certificates
        UntilRole, ///< QDateTime
        CheckableRole, ///< bool, whether it can be imported at all
        CheckedRole, ///< bool
        HasKeyRole, ///< bool, a certificate whose private key comes with it
    };
    Q_ENUM(Role)
    /// As `FileObject::Kind`.
    enum Kind {
        Certificate,
        Request,
        RevocationList,
        PrivateKey,
        PublicKey,
        AttributeCertificate,
        RevocationAnswer,
        EncryptedMessage,
        SshKey,
    };
    Q_ENUM(Kind)

    explicit FileItemModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QHash<int, QByteArray> roleNames() const override;

    int checkableCount() const;
    int certificateCount() const;
    int checkedCount() const;
    int checkedCertificates() const;
    int checkedLists() const;
    /// Certificates that bring their keys along.
    int checkedKeys() const;
    int checkedRoots() const;
    /// Sets or takes the tick of a row, where it can have one.
    Q_INVOKABLE void setChecked(int row, bool checked);
    /// Several rows at once, with one `changed`: whoever counts the ticks goes through all rows.
    void setChecked(const QVector<int> &rows, bool checked);
    /// Sets or takes the ticks of all rows that can have one.
    Q_INVOKABLE void setAllChecked(bool checked);

    /// Everything in an item, as `CertificateDetails::groups` is made; empty for a row that there
    /// is not.
    Q_INVOKABLE QVariantList details(int row) const;
    /// The same as plain text, for the clipboard.
    Q_INVOKABLE QString detailsText(int row) const;
    /// The PEM text of an item and its structure, of a key only those of the public one.
    Q_INVOKABLE QString pem(int row) const;
    /// Whether `structure` has something to show.
    Q_INVOKABLE bool hasEncoding(int row) const;
    /// Its ASN.1 elements as an indented tree, a line each with offset and length.
    Q_INVOKABLE QString structure(int row) const;
    /// The value of a role, by its number, of a row.
    Q_INVOKABLE QVariant value(int row, int role) const;

    const QVector<FileItem> &items() const { return m_items; }
    /// Replaces all items; those that can be imported get their ticks.
    void setItems(const QVector<FileItem> &items);

Q_SIGNALS:
    /// Rows or ticks have changed.
    void changed();

private:
    template <class Predicate> int countOf(Predicate predicate) const;

    QVector<FileItem> m_items;
};

/// The items that `contents` come to: a private key that belongs to one of its certificates stands
/// with that.
QVector<FileItem> fileItems(const FileContents &contents);
/// Those of a bundle: its chain, the first with the key.
QVector<FileItem> fileItems(const QCA::KeyBundle &bundle);

} // namespace Trivex
