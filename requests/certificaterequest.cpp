// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/certificaterequest.h"

#include "certificates/enginekeeper.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/base/filenames.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/regularfile.h"
#include "qca/base/requestfiles.h"
#include "qca/base/requestsave.h"
#include "qca/keys/keys.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "requests/requestsigning.h"

#include <QDebug>
#include <QDir>

namespace {

constexpr int SoftwareToken = 2;
constexpr int NoLocation = 3;

struct LocationText {
    int location;
    const char *id;
};

constexpr LocationText LocationTexts[] = {
    {0, QT_TRID_NOOP("trivex-me-hardware")},
    {1, QT_TRID_NOOP("trivex-me-norvel_tee")},
    {SoftwareToken, QT_TRID_NOOP("trivex-me-softhsm")},
};

} // namespace

CertificateRequest::CertificateRequest(QObject *parent)
    : Certificate(parent)
    , m_options(QCA::PKCS10)
{
    Trivex::makePrivateDirectory(Trivex::requestDirectory());
    connect(m_keyPairMaker.generator(), &Trivex::KeyGenerator::finished, this,
            &CertificateRequest::keyGenFinished);
    m_keyPairMaker.generator()->setBlockingEnabled(false);
}

CertificateRequest::CertificateRequest(const QString &path, KeyStoreModel *model, QObject *parent)
    : Certificate(parent)
    , m_options(QCA::PKCS10)
    , m_keyStoreModel(model)
{
    init();
    load(path);
}

CertificateRequest::~CertificateRequest() = default;

void CertificateRequest::setPrKeyAlgorithmId(int id)
{
    if (id == m_prKeyAlgorithmId)
        return;
    m_prKeyAlgorithmId = id;
    Q_EMIT prKeyAlgorithmIdChanged();
}

void CertificateRequest::setPrKeyLocationIndex(int id)
{
    if (id == m_prKeyLocationIndex)
        return;
    m_prKeyLocationIndex = id;
    Q_EMIT prKeyLocationIndexChanged();
}

void CertificateRequest::setKeyIdentifier(const QString &identifier)
{
    if (identifier == m_keyIdentifier)
        return;
    m_keyIdentifier = identifier;
    Q_EMIT keyIdentifierChanged();
}

void CertificateRequest::setKeyMarker(const QString &marker)
{
    if (marker == m_keyMarker)
        return;
    m_keyMarker = marker;
    Q_EMIT keyMarkerChanged();
}

KeyStoreModel *CertificateRequest::keyStoreModel() const
{
    return m_keyStoreModel;
}

void CertificateRequest::setKeyStoreModel(KeyStoreModel *model)
{
    if (!model)
        return;
    m_keyStoreModel = model;
    Q_EMIT keyStoreModelChanged();
}

void CertificateRequest::setPrKeyPin(const QString &pin)
{
    m_keyPairMaker.setPin(pin);
    Q_EMIT prKeyPinChanged();
}

void CertificateRequest::init()
{
    if (m_keyStoreModel && m_keyStoreModel->isProviderReady() && m_keyStoreModel->provider()) {
        KeyPairMaker::listKinds(m_keyStoreModel->provider()->features(), &m_algorithmModel);
        m_locationModel = m_keyStoreModel->certLocationModel();
    }
    m_prKeyAlgorithmId = m_algorithmModel.firstSortedId();
}

ComboBoxModel::Row CertificateRequest::chosenLocation() const
{
    return m_locationModel ? m_locationModel->rowAt(m_prKeyLocationIndex) : ComboBoxModel::Row();
}

int CertificateRequest::prKeyLocationId()
{
    const ComboBoxModel::Row row = chosenLocation();
    return row.name.isEmpty() && row.type.isEmpty() ? NoLocation : row.id;
}

QString CertificateRequest::privateKeyLocation() const
{
    const int location = chosenLocation().id;
    for (const LocationText &text : LocationTexts) {
        if (text.location == location)
            return qtTrId(text.id);
    }
    return {};
}

QcaHandler *CertificateRequest::handler() const
{
    QcaAskerThread *thread = m_keyStoreModel ? m_keyStoreModel->askerThread() : nullptr;
    return thread ? thread->startedHandler() : nullptr;
}

void CertificateRequest::pinRejected()
{
    if (QcaHandler *answering = handler())
        answering->rejectPending();
}

void CertificateRequest::createKeyPair()
{
    const ComboBoxModel::Row location = chosenLocation();
    if (location.id != SoftwareToken)
        return;
    const QCA::KeyStore *keyStore =
        m_keyStoreModel ? m_keyStoreModel->keyStoreByName(location.type) : nullptr;
    if (!keyStore) {
        qWarning() << "void CertificateRequest::createKeyPair()"
                   << "KeyStore is null";
        return;
    }
    m_keyPairMaker.start(m_prKeyAlgorithmId, keyStore->id(), m_keyIdentifier, handler());
}

void CertificateRequest::keyGenFinished()
{
    const QCA::PrivateKey key = m_keyPairMaker.generator()->key();
    if (!Trivex::isPrivateKey(key))
        return;
    m_privateKey = key;
    Q_EMIT createKeyPairDone();
}

QString CertificateRequest::info(int type) const
{
    return Trivex::infoValue(m_fields.info, type);
}

void CertificateRequest::addInfo(QCA::CertificateInfoTypeKnown type, const QString &value)
{
    if (!value.isEmpty())
        m_fields.info.insert(QCA::CertificateInfoType(type), value);
}

QString CertificateRequest::subjectOrganizationalUnit() const
{
    return info(Trivex::OrganizationalUnitInfo);
}

void CertificateRequest::setCommonName(const QString &commonName)
{
    addInfo(QCA::CommonName, commonName);
}

void CertificateRequest::setOrganization(const QString &organization)
{
    addInfo(QCA::Organization, organization);
}

void CertificateRequest::setDepartment(const QString &department)
{
    addInfo(QCA::OrganizationalUnit, department);
}

QString CertificateRequest::publicKeyTypeAlgorithm() const
{
    int type = Trivex::keyType(m_privateKey);
    if (Trivex::publicKeyOf(m_privateKey).isNull())
        type = Trivex::keyType(requestPublicKey());
    return Trivex::keyTypeName(type);
}

QString CertificateRequest::privateKeyAvailability() const
{
    if (m_privateKey.isNull())
        return {};
    return Trivex::isPrivateKey(m_privateKey) ? qtTrId("trivex-p-la-private_available")
                                              : qtTrId("trivex-p-la-private_not_available");
}

QCA::PublicKey CertificateRequest::requestPublicKey() const
{
    return Trivex::requestPublicKey(m_request);
}

QByteArray CertificateRequest::requestKeyInfo() const
{
    return Trivex::encodedPublicKey(requestPublicKey());
}

void CertificateRequest::createRequest()
{
    const EngineKeeper keeper(this);
    if (m_fields.info.isEmpty()) {
        qWarning("Certificate request info is empty!");
        return;
    }
    m_options.setInfo(m_fields.info);
    if (m_privateKey.isNull()) {
        qWarning("Error: missing private key");
        Q_EMIT missingPrivateKey();
        return;
    }
    const QPointer<CertificateRequest> self(this);
    const QCA::CertificateRequest made = Trivex::signedRequest(m_options, m_privateKey);
    if (!self)
        return;
    m_request = made;
    if (QCA::isSupported(qPrintable(Trivex::requestExtension())))
        saveRequest();
    else
        qWarning() << "Error: need'" << Trivex::requestExtension() << "' feature";
}

bool CertificateRequest::saveRequest()
{
    const EngineKeeper keeper(this);
    Trivex::RequestSave save;
    save.request = m_request;
    save.commonName = commonName();
    if (m_request.isNull() || save.commonName.isEmpty()) {
        qWarning("Certificate request not created!");
        return false;
    }
    const QPointer<CertificateRequest> self(this);
    if (m_editMode && !m_path.isEmpty() && QFile::exists(m_path)) {
        save.oldPath = m_path;
        if (!resign(&save))
            return false;
    }
    if (!save.write()) {
        qWarning() << "File: " << save.fileName << " not created!";
        return false;
    }
    if (!self)
        return true;
    m_request = save.request;
    m_path = save.path;
    m_fileName = save.fileName;
    Q_EMIT requestCreated();
    return true;
}

/// Signs what was edited. Without the key the request stays as it was. False when it can't be
/// signed although the key is there; the file stays then.
bool CertificateRequest::resign(Trivex::RequestSave *save)
{
    const QPointer<CertificateRequest> self(this);
    const QString file = m_fileName;
    const Trivex::RequestedFields fields = m_fields;
    QCA::PrivateKey key = m_privateKey;
    const QCA::PrivateKey found = findPrivateKey(save->request);
    if (!found.isNull())
        key = found;
    if (self)
        m_privateKey = key;
    if (key.isNull()) {
        qWarning().noquote()
            << QStringLiteral("PrivateKey of certificate request: %1 is null").arg(file);
        if (self)
            Q_EMIT missingPrivateKey();
        return true;
    }
    const QCA::CertificateRequest made = Trivex::signedAnew(save->request, fields, key);
    if (!made.isNull())
        save->request = made;
    else
        qWarning() << "File: " << Trivex::requestFileName(save->commonName) << " not created!";
    return !made.isNull();
}

QList<QPointer<QCA::KeyStore>> CertificateRequest::locationStores() const
{
    QList<QPointer<QCA::KeyStore>> stores;
    for (int row = 0; m_locationModel && m_keyStoreModel && row < m_locationModel->rowCount();
         ++row) {
        const QModelIndex index = m_locationModel->index(row, 0);
        const QString name = m_locationModel->data(index, ComboBoxModel::TypeRole).toString();
        if (QCA::KeyStore *store = m_keyStoreModel->keyStoreByName(name))
            stores.append(store);
    }
    return stores;
}

QCA::PrivateKey CertificateRequest::findPrivateKey(const QCA::CertificateRequest &request) const
{
    const QCA::PublicKey key = Trivex::requestPublicKey(request);
    if (key.isNull())
        qWarning().noquote()
            << QStringLiteral("PublicKey of certificate request: %1 is null").arg(m_fileName);
    return Trivex::findPrivateKey(key, m_privateKey, locationStores());
}

void CertificateRequest::setEditMode(bool status)
{
    m_editMode = status;
    saveRequest();
}

QString CertificateRequest::requestPath()
{
    return Trivex::requestDirectory();
}

void CertificateRequest::restoreRequestedFields()
{
    m_fields = Trivex::requestedFields(m_request);
}

Trivex::EditLoss CertificateRequest::editLoss() const
{
    return Trivex::lossOfEdit(m_request, m_fields);
}

bool CertificateRequest::hasRequestKey() const
{
    return !findPrivateKey(m_request).isNull();
}

void CertificateRequest::load(const QString &path)
{
    const auto contents = Trivex::readRegularFile(path);
    if (!contents || !QCA::isSupported(qPrintable(Trivex::requestExtension())))
        return;
    m_request = Trivex::requestFromPem(*contents);
    if (m_request.isNull())
        return;
    m_path = path;
    m_fields = Trivex::requestedFields(m_request);
    m_fileName = Trivex::requestFileName(info(Trivex::CommonNameInfo));
}

QByteArray CertificateRequest::encoding() const
{
    return m_request.isNull() ? QByteArray() : m_request.toDER();
}

bool CertificateRequest::exportToFile(const QString &directory)
{
    // One that could not be saved has no file name yet.
    const bool isNamed = m_request.isNull() || !fileName().isEmpty();
    const QString name =
        isNamed ? Trivex::safeFileName(fileName()) : Trivex::requestFileName(commonName());
    const QString path = directory + QDir::separator() + name;
    if (m_request.isNull() || !Trivex::writeFile(path, m_request.toPEM().toUtf8())) {
        qWarning() << "File: " << path << " not exported!";
        return false;
    }
    Q_EMIT fileExported();
    return true;
}
