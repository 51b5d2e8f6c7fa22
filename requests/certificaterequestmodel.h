// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QFileSystemWatcher>
#include <QList>
#include <QPointer>
#include <QTimer>
#include <QtCrypto>

#include <memory>

class CertificateRequest;
class KeyStoreModel;
class RequestReading;

/// The requests saved in the request directory, one row a file, kept current by watching the
/// directory. A request whose certificate arrives on a token is deleted.
///
///     ListView {
///         model: CertificateRequestModel { keyStoreModel: KeyStoreModel }
///         delegate: Text { text: name + ", " + issuer }
///     }
///
/// | role | name          | type                  |
/// |------|---------------|-----------------------|
/// | 257  | "name"        | QString               |
/// | 259  | "certificate" | CertificateRequest*   |
/// | 260  | "issuer"      | QString               |
/// | 261  | "type"        | int, always 5         |
///
/// The objects behind "certificate" belong to the model and live until the directory changes.
///
/// The directory is read a part at each turn of the event loop: the first part at once, which is
/// all of it where it holds a usual number of requests.
class CertificateRequestModel : public QAbstractListModel {
    Q_OBJECT
    /// Handed to each request, and listened to for arriving certificates. Null is ignored. Not
    /// owned.
    Q_PROPERTY(KeyStoreModel *keyStoreModel READ keyStoreModel WRITE setKeyStoreModel NOTIFY
                   keyStoreModelChanged)
public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        CertificateRole = Qt::UserRole + 3,
        IssuerRole,
        TypeRole,
    };

    /// Creates the request directory where it is missing.
    explicit CertificateRequestModel(QObject *parent = nullptr);
    ~CertificateRequestModel() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    KeyStoreModel *keyStoreModel() const;
    void setKeyStoreModel(KeyStoreModel *model);

    /// Reads the request directory anew.
    Q_INVOKABLE void init();
    /// Deletes the file of row `index`; the row goes when the directory is seen to have changed.
    /// Ignored when there is no such row.
    Q_INVOKABLE void remove(int index);

Q_SIGNALS:
    /// Never emitted.
    void certificateRequestChanged();
    void keyStoreModelChanged();

private Q_SLOTS:
    void update(const QString &path);
    void listenKeyStoreModel();
    void findKeyBundleReq(const QCA::PublicKey &pkey);

private:
    void readPart();
    void endReading();
    bool removeMatching(const QCA::PublicKey &pkey);
    void clear();
    void append(CertificateRequest *request);
    bool watch();
    void directoryChanged(const QString &path);

    QList<CertificateRequest *> m_requests;
    QFileSystemWatcher *m_watcher;
    QTimer *m_returnTimer;
    QPointer<KeyStoreModel> m_keyStoreModel;
    /// While the directory is read.
    std::shared_ptr<RequestReading> m_reading;
    /// For the requests of that reading.
    QPointer<KeyStoreModel> m_readingModel;
    QTimer *m_nextPart;
    /// Keys that arrived during a reading and that no row had so far.
    QList<QCA::PublicKey> m_arrivedKeys;
};
