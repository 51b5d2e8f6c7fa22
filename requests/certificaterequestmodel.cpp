// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/certificaterequestmodel.h"

#include "keystores/keystoremodel.h"
#include "qca/keys/keys.h"
#include "requests/certificaterequest.h"
#include "requests/requestfiles.h"

#include <QDir>
#include <QQmlEngine>

namespace {

constexpr int RequestType = 5; ///< by which pages tell requests from key store entries
constexpr int ReturnInterval = 1000; // ms

} // namespace

CertificateRequestModel::CertificateRequestModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_watcher(new QFileSystemWatcher(this))
    , m_returnTimer(new QTimer(this))
{
    if (!QDir(Trivex::requestDirectory()).exists())
        QDir().mkpath(Trivex::requestDirectory());
    connect(this, &CertificateRequestModel::keyStoreModelChanged, this,
            &CertificateRequestModel::listenKeyStoreModel);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this,
            &CertificateRequestModel::directoryChanged);
    m_returnTimer->setInterval(ReturnInterval);
    connect(m_returnTimer, &QTimer::timeout, this, [this] {
        if (watch())
            update(Trivex::requestDirectory());
    });
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
    const QDir directory(path);
    if (!directory.exists())
        return;
    clear();
    const QStringList names = directory.entryList(
        {QStringLiteral("*.%1").arg(Trivex::requestExtension())}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        append(new CertificateRequest(directory.filePath(name), m_keyStoreModel));
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
    for (int row = 0; row < m_requests.size(); ++row) {
        if (Trivex::isSamePublicKey(m_requests.at(row)->requestPublicKey(), pkey)) {
            remove(row);
            return;
        }
    }
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
