// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Key generation: the choice of algorithm and location, the answers for the token, and the key.
#include "requests/certificaterequest.h"

#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "requests/requestfiles.h"

#include <QDebug>
#include <QDir>

namespace {

constexpr int softwareToken = 2;
constexpr int noLocation = 3;
constexpr int publicExponent = 3;

struct LocationText {
    int location;
    const char *id;
};

constexpr LocationText locationTexts[] = {
    {0, QT_TRID_NOOP("trivex-me-hardware")},
    {1, QT_TRID_NOOP("trivex-me-norvel_tee")},
    {softwareToken, QT_TRID_NOOP("trivex-me-softhsm")},
};

} // namespace

CertificateRequest::CertificateRequest(QObject *parent)
    : Certificate(parent)
    , m_options(QCA::PKCS10)
{
    if (!QDir(Trivex::requestDirectory()).exists())
        QDir().mkpath(Trivex::requestDirectory());
    connect(&m_keyGenerator, &Trivex::KeyGenerator::finished, this,
            &CertificateRequest::keyGenFinished);
    m_keyGenerator.setBlockingEnabled(false);
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

QAbstractListModel *CertificateRequest::prKeyAlgorithm()
{
    return &m_algorithmModel;
}

QAbstractListModel *CertificateRequest::prKeyLocation() const
{
    return m_locationModel;
}

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
    QByteArray text = pin.toLocal8Bit();
    m_pin = QCA::SecureArray(text);
    text.fill('\0');
    Q_EMIT prKeyPinChanged();
}

void CertificateRequest::init()
{
    if (m_keyStoreModel && m_keyStoreModel->isProviderReady() && m_keyStoreModel->provider()) {
        fillAlgorithms(m_keyStoreModel->provider()->features());
        m_locationModel = m_keyStoreModel->certLocationModel();
    }
    m_prKeyAlgorithmId = m_algorithmModel.firstSortedId();
}

void CertificateRequest::fillAlgorithms(const QStringList &features)
{
    const QString rsa = QStringLiteral("rsa");
    const QString ec = QStringLiteral("ec");
    if (features.isEmpty()) {
        qWarning("provider features is empty!");
        return;
    }
    if (features.contains(rsa)) {
        for (const int bits : {RSA2048, RSA3072, RSA4096})
            m_algorithmModel.addRow(bits, qtTrId("trivex-la-rsa").arg(bits), rsa);
    }
    if (features.contains(ec))
        m_algorithmModel.addRow(EC384, qtTrId("trivex-la-ellyptic").arg(int(EC384)), ec);
}

ComboBoxModel::Row CertificateRequest::chosenLocation() const
{
    return m_locationModel ? m_locationModel->rowAt(m_prKeyLocationIndex) : ComboBoxModel::Row();
}

int CertificateRequest::prKeyLocationId()
{
    const ComboBoxModel::Row row = chosenLocation();
    return row.name.isEmpty() && row.type.isEmpty() ? noLocation : row.id;
}

QString CertificateRequest::privateKeyLocation() const
{
    const int location = chosenLocation().id;
    for (const LocationText &text : locationTexts) {
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
    if (location.id != softwareToken)
        return;
    m_keyStore = m_keyStoreModel ? m_keyStoreModel->keyStoreByName(location.type) : nullptr;
    if (!m_keyStore) {
        qWarning() << "void CertificateRequest::createKeyPair()"
                   << "KeyStore is null";
        return;
    }
    const QString storeId = m_keyStore->id();
    storeAnswers(m_pin, m_keyIdentifier, storeId);
    m_keyGenerator.setTarget(storeId, m_keyIdentifier);
    // Without a generation nobody takes the answers, and they must not serve what comes next.
    if (!startGeneration())
        storeAnswers(QCA::SecureArray(""), QString(), QString());
}

void CertificateRequest::storeAnswers(const QCA::SecureArray &pin, const QString &objectId,
                                      const QString &keyStoreId) const
{
    if (QcaHandler *answering = handler()) {
        answering->setPassword(pin);
        answering->setObjectId(objectId);
        answering->setKeyStoreId(keyStoreId);
    }
}

/// False for an algorithm that is none of those offered.
bool CertificateRequest::startGeneration()
{
    switch (m_prKeyAlgorithmId) {
    case RSA2048:
    case RSA3072:
    case RSA4096:
        m_keyGenerator.createRSA(m_prKeyAlgorithmId, publicExponent, Trivex::pkcs11ProviderName());
        return true;
    case EC384:
        m_keyGenerator.createEC(QStringLiteral("ec-secp384r1"), Trivex::gostProviderName());
        return true;
    default:
        return false;
    }
}

void CertificateRequest::keyGenFinished()
{
    const QCA::PrivateKey key = m_keyGenerator.key();
    if (!Trivex::isPrivateKey(key))
        return;
    m_privateKey = key;
    Q_EMIT createKeyPairDone();
}
