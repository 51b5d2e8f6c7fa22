// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/certificaterequestmodel.h"

#include "keystores/keystoremodel.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/requestfiles.h"
#include "qca/keys/keys.h"
#include "requests/certificaterequest.h"
#include "requests/requestreading.h"

#include <QDir>
#include <QQmlEngine>

#include <utility>

namespace {

constexpr int RequestType = 5; ///< by which pages tell requests from key store entries
constexpr int ReturnInterval = 1000; // ms

} // namespace

CertificateRequestModel::CertificateRequestModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_watcher(new QFileSystemWatcher(this))
    , m_returnTimer(new QTimer(this))
    , m_nextPart(new QTimer(this))
{
    Trivex::makePrivateDirectory(Trivex::requestDirectory());
    connect(this, &CertificateRequestModel::keyStoreModelChanged, this,
            &CertificateRequestModel::listenKeyStoreModel);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this,
            &CertificateRequestModel::directoryChanged);
    m_returnTimer->setInterval(ReturnInterval);
    connect(m_returnTimer, &QTimer::timeout, this, [this] {
        if (watch())
            update(Trivex::requestDirectory());
    });
    m_nextPart->setInterval(0);
    connect(m_nextPart, &QTimer::timeout, this, &CertificateRequestModel::readPart);
    watch();
}

CertificateRequestModel::~CertificateRequestModel()
{
    qDeleteAll(m_requests);
}

/// A deleted directory takes its watch along, so its return has to be looked for.
bool CertificateRequestModel::watch()
{
    const bool watched = m_watcher->addPath(Trivex::requestDirectory());
    if (watched)
        m_returnTimer->stop();
    else if (!m_returnTimer->isActive())
        m_returnTimer->start();
    return watched;
}

void CertificateRequestModel::directoryChanged(const QString &path)
{
    if (!m_watcher->directories().contains(Trivex::requestDirectory()))
        watch();
    update(path);
}

int CertificateRequestModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_requests.size();
}

QVariant CertificateRequestModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_requests.size())
        return {};
    CertificateRequest *request = m_requests.at(index.row());
    switch (role) {
    case NameRole:
        return request->commonName();
    case CertificateRole:
        return QVariant::fromValue(request);
    case IssuerRole:
        return request->issuer();
    case TypeRole:
        return RequestType;
    default:
        return {};
    }
}

QHash<int, QByteArray> CertificateRequestModel::roleNames() const
{
    static const QHash<int, QByteArray> names{
        {NameRole, "name"},
        {CertificateRole, "certificate"},
        {IssuerRole, "issuer"},
        {TypeRole, "type"},
    };
    return names;
}

KeyStoreModel *CertificateRequestModel::keyStoreModel() const
{
    return m_keyStoreModel;
}

void CertificateRequestModel::setKeyStoreModel(KeyStoreModel *model)
{
    if (!model)
        return;
    m_keyStoreModel = model;
    Q_EMIT keyStoreModelChanged();
}

void CertificateRequestModel::listenKeyStoreModel()
{
    if (m_requests.isEmpty())
        update(Trivex::requestDirectory());
    if (m_keyStoreModel) {
        connect(m_keyStoreModel, &KeyStoreModel::keyBundleWritten, this,
                &CertificateRequestModel::findKeyBundleReq);
    }
}

void CertificateRequestModel::init()
{
    update(Trivex::requestDirectory());
}

void CertificateRequestModel::update(const QString &path)
{
    if (!QDir(path).exists()) {
        m_reading.reset();
        m_arrivedKeys.clear();
        return;
    }
    m_reading = std::make_shared<RequestReading>(path);
    m_readingModel = m_keyStoreModel;
    readPart();
}

/// Whoever hears of a row may begin another reading, or delete the model.
void CertificateRequestModel::readPart()
{
    const QPointer<CertificateRequestModel> self(this);
    const std::shared_ptr<RequestReading> reading = m_reading;
    const auto goesOn = [&] { return self && reading && m_reading == reading; };
    m_nextPart->stop();
    if (reading && !reading->isListed() && reading->list())
        clear();
    if (!goesOn())
        return;
    reading->beginPart();
    while (goesOn() && reading->isListed()) {
        const QString path = reading->next();
        if (path.isEmpty())
            break;
        append(new CertificateRequest(path, m_readingModel));
    }
    if (!goesOn())
        return;
    if (reading->atEnd())
        endReading();
    else
        m_nextPart->start();
}

void CertificateRequestModel::endReading()
{
    m_reading.reset();
    const QList<QCA::PublicKey> keys = std::exchange(m_arrivedKeys, {});
    for (const QCA::PublicKey &key : keys)
        removeMatching(key);
}

void CertificateRequestModel::clear()
{
    if (m_requests.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, m_requests.size() - 1);
    const QList<CertificateRequest *> removed = m_requests;
    m_requests.clear();
    endRemoveRows();
    qDeleteAll(removed);
}

void CertificateRequestModel::append(CertificateRequest *request)
{
    QQmlEngine::setObjectOwnership(request, QQmlEngine::CppOwnership);
    beginInsertRows(QModelIndex(), m_requests.size(), m_requests.size());
    m_requests.append(request);
    endInsertRows();
}

void CertificateRequestModel::findKeyBundleReq(const QCA::PublicKey &pkey)
{
    if (pkey.isNull())
        return;
    if (!removeMatching(pkey) && m_reading)
        m_arrivedKeys.append(pkey);
}

/// Removes the first request for the key; false where no row has it.
bool CertificateRequestModel::removeMatching(const QCA::PublicKey &pkey)
{
    for (int row = 0; row < m_requests.size(); ++row) {
        if (Trivex::isSamePublicKey(m_requests.at(row)->requestPublicKey(), pkey)) {
            remove(row);
            return true;
        }
    }
    return false;
}

void CertificateRequestModel::remove(int index)
{
    if (index < 0 || index >= m_requests.size())
        return;
    QDir directory(Trivex::requestDirectory());
    const QString path = m_requests.at(index)->filePath();
    if (!path.isEmpty() && directory.exists() && QFile::exists(path))
        directory.remove(path);
}
