// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Import and removal: the part of KeyStoreModel that writes to stores.
#include "keystores/keystoremodel.h"

#include "certificates/enginekeeper.h"
#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/keybundlefile.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"

#include <QDebug>

#include <algorithm>

namespace {

KeyStoreModel::Error errorOf(QCA::ConvertResult result)
{
    switch (result) {
    case QCA::ErrorDecode:
        return KeyStoreModel::ErrorDecode;
    case QCA::ErrorPassphrase:
        return KeyStoreModel::ErrorPassphrase;
    case QCA::ErrorFile:
        return KeyStoreModel::ErrorFile;
    default:
        return KeyStoreModel::ErrorUnknown;
    }
}

} // namespace

QString KeyStoreModel::importedCertificateFileName() const
{
    return m_importedCertificate.fileName();
}

bool KeyStoreModel::importedCertificateIsRoot() const
{
    return m_importedCertificate.isRoot();
}

QString KeyStoreModel::importedCertificateCommonName() const
{
    return m_importedCertificate.commonName();
}

bool KeyStoreModel::certificateFromPEMFile(QString path)
{
    return m_importedCertificate.loadFromFile(path);
}

bool KeyStoreModel::keyBundleFromFile(QString path, QString password)
{
    const EngineKeeper keeper(this);
    const QPointer<KeyStoreModel> self(this);
    const auto loaded =
        Trivex::readKeyBundle(path, QCA::SecureArray(password.toLocal8Bit().constData()));
    if (!self)
        return false;
    if (!loaded || loaded->bundle.isNull()) {
        m_error = loaded ? errorOf(loaded->result) : ErrorUnknown;
        return false;
    }
    const QCA::CertificateChain chain = loaded->bundle.certificateChain();
    m_importedCertificate.setCertificate(chain.isEmpty() ? QCA::Certificate() : chain.first());
    m_importedCertificate.setKeyBundle(loaded->bundle);
    return true;
}

void KeyStoreModel::resetImportedCertificate()
{
    m_importedCertificate.setCertificate(QCA::Certificate());
}

void KeyStoreModel::resetImportedKeyBundle()
{
    m_importedCertificate.setCertificate(QCA::Certificate());
    m_importedCertificate.setKeyBundle(QCA::KeyBundle());
}

void KeyStoreModel::setCertLocationId(int id)
{
    m_certLocationId = id;
}

QCA::KeyStore *KeyStoreModel::importTarget() const
{
    const ComboBoxModel::Row row = m_certLocationModel.rowAt(m_certLocationId);
    if (row.id != SoftHSM)
        return nullptr;
    QCA::KeyStore *keyStore = keyStoreByName(row.type);
    const bool isUsable = keyStore && keyStore->isValid()
        && keyStore->type() == QCA::KeyStore::SmartCard && !keyStore->name().isEmpty();
    return isUsable && !m_importedCertificate.isNull() ? keyStore : nullptr;
}

void KeyStoreModel::importCertificate()
{
    QCA::KeyStore *keyStore = importTarget();
    if (!keyStore)
        return;
    if (QcaHandler *answers = handler())
        answers->setKeyStoreId(keyStore->id());
    m_writer->write(keyStore, m_importedCertificate.certificate());
}

void KeyStoreModel::importKeyBundle()
{
    QCA::KeyStore *keyStore = importTarget();
    if (!keyStore)
        return;
    if (QcaHandler *answers = handler())
        answers->setKeyStoreId(keyStore->id());
    m_writer->write(keyStore, m_importedCertificate.keyBundle());
}

void KeyStoreModel::removeCertificate(QString entryId)
{
    if (entryId.isEmpty()) {
        qWarning() << "KeyStore entry ID is empty. Certificate cannot be deleted";
        return;
    }
    if (m_items.isEmpty()) {
        qWarning() << "KeyStoreModel is empty. Certificate cannot be deleted";
        return;
    }
    const auto item = std::find_if(m_items.cbegin(), m_items.cend(), [&](const KeyStoreItem &row) {
        return Trivex::entryId(row.entry->entry()) == entryId;
    });
    if (item == m_items.cend() || !isRemovable(*item))
        return;
    if (QcaHandler *answers = handler()) {
        answers->setKeyStoreId(item->keyStore->id());
        answers->setObjectId(item->entry->name());
    }
    m_writer->remove(item->keyStore, entryId);
}

bool KeyStoreModel::isRemovable(const KeyStoreItem &item) const
{
    if (item.keyStore->type() == QCA::KeyStore::System) {
        qWarning() << "System certificate cannot be deleted";
        return false;
    }
    if (item.entry->name().isEmpty()) {
        qWarning() << "KeyStore entry name is empty. Certificate cannot be deleted";
        return false;
    }
    return true;
}

QcaHandler *KeyStoreModel::handler() const
{
    return m_askerThread->startedHandler();
}
