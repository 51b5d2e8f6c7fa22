// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"

#include "certificates/enginekeeper.h"
#include "certificates/keystoreentry.h"
#include "keystores/providerlookup.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/stores.h"
#include "qca/base/libcrypto.h"
#include "qca/base/providers.h"
#include "qca/base/securedtext.h"
#include "qca/keys/keys.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/question.h"
#include "qca/x509/systemlist.h"

#include <QDebug>
#include <QMetaMethod>
#include <QQmlEngine>

#include <algorithm>

namespace {

constexpr unsigned long ThreadPatience = 3000; // ms

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

KeyStoreModel::KeyStoreModel(QObject *parent)
    : StoreRows(parent)
    , m_keyStoreManager(this)
    , m_askerThread(new QcaAskerThread)
    , m_writer(std::make_unique<Trivex::StoreWriter>())
{
    Trivex::startStores();
    connect(&m_keyStoreManager, &QCA::KeyStoreManager::keyStoreAvailable, this,
            &KeyStoreModel::ksAvailable);
    connect(&m_keyStoreManager, &QCA::KeyStoreManager::busyStarted, this,
            &KeyStoreModel::ksmBusyStarted);
    connect(&m_keyStoreManager, &QCA::KeyStoreManager::busyFinished, this,
            &KeyStoreModel::ksmBusyFinished);
    connect(m_writer.get(), &Trivex::StoreWriter::written, this, &KeyStoreModel::entryWritten);
    connect(m_writer.get(), &Trivex::StoreWriter::removed, this, &KeyStoreModel::entryRemoved);
    connect(&m_arrivals, &BundleArrivals::arrived, this, &KeyStoreModel::announceBundle);
    m_keyStoreManager.sync();
    m_askerThread->start(QThread::InheritPriority);
    setUpProvider();
    openKnownStores();
    m_desk.chooseFirst();
    m_busy = m_keyStoreManager.isBusy();
}

KeyStoreModel::~KeyStoreModel()
{
    // Nothing is waited for that may need a person or a module: what still runs has nobody to hear
    // of it any more, and asks nobody.
    m_writer.reset();
    if (QcaHandler *handler = m_askerThread->handler())
        handler->rejectUnanswered();
    QVector<QCA::KeyStore *> stores;
    for (const QPointer<QCA::KeyStore> &keyStore : qAsConst(m_keyStores))
        stores.append(keyStore);
    Trivex::closeStores(stores);
    QcaAskerThread::letGo(m_askerThread, ThreadPatience);
}

void KeyStoreModel::setUpProvider()
{
    const QString name = Trivex::pkcs11ProviderName();
    m_providerConfig.clear();
    m_provider.reset(Trivex::forwardingProvider(Trivex::lookUpProvider(name, &m_providerConfig)));
    if (m_providerConfig.isEmpty()) {
        qWarning("Provider %s config is empty!", qPrintable(name));
        return;
    }
    if (!m_provider)
        return;
    m_providerReady = true;
    Trivex::initialiseLibcrypto();
    m_providerConfig.insert(QStringLiteral("allow_load_rootca"), QVariant(true));
    QCA::setProviderConfig(m_provider->name(), m_providerConfig);
}

void KeyStoreModel::openKnownStores()
{
    const QStringList ids = m_keyStoreManager.keyStores();
    for (const QString &id : ids)
        ksAvailable(id);
}

QAbstractListModel *KeyStoreModel::certLocation()
{
    QQmlEngine::setObjectOwnership(m_desk.locations(), QQmlEngine::CppOwnership);
    return m_desk.locations();
}

QCA::KeyStore *KeyStoreModel::keyStoreByName(const QString &name) const
{
    for (const QPointer<QCA::KeyStore> &keyStore : m_keyStores) {
        if (keyStore && keyStore->name() == name)
            return keyStore;
    }
    return nullptr;
}

int KeyStoreModel::keyStoreType(int index) const
{
    const QPointer<QCA::KeyStore> keyStore = m_keyStores.value(index);
    return keyStore ? int(keyStore->type()) : -1;
}

QString KeyStoreModel::keyStoreName(int index) const
{
    const QPointer<QCA::KeyStore> keyStore = m_keyStores.value(index);
    return keyStore ? keyStore->name() : QString();
}

void KeyStoreModel::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}

void KeyStoreModel::refreshBusy()
{
    setBusy(m_keyStoreManager.isBusy());
}

void KeyStoreModel::ksAvailable(QString keyStoreId)
{
    auto *keyStore = new QCA::KeyStore(keyStoreId, &m_keyStoreManager);
    m_keyStores.append(keyStore);
    if (m_desk.addLocation(*keyStore, SoftHSM, qtTrId("trivex-me-softhsm")))
        Q_EMIT certLocationChanged();
    connectStore(keyStore);
    startFollowing(keyStore);
    refreshBusy();
}

void KeyStoreModel::startFollowing(QCA::KeyStore *keyStore)
{
    if (Trivex::isSystemList(*keyStore))
        followSystemList(keyStore);
    else
        keyStore->startAsynchronousMode();
}

void KeyStoreModel::followSystemList(QCA::KeyStore *keyStore)
{
    const QPointer<QCA::KeyStore> guarded(keyStore);
    Trivex::readSystemList(keyStore, [this, guarded](const QList<QCA::KeyStoreEntry> &entries) {
        takeEntries(guarded, entries);
    });
}

void KeyStoreModel::connectStore(QCA::KeyStore *keyStore)
{
    connect(keyStore, &QCA::KeyStore::updated, this, &KeyStoreModel::ksUpdated);
    // Before the slot: it deletes the store and expects to find no rows of it, docs/decisions/012.
    connect(keyStore, &QCA::KeyStore::unavailable, this, [this, keyStore] {
        if (!keyStore->id().isEmpty())
            Trivex::cancelQuestions(keyStore->id());
        removeRowsOf(keyStore);
    });
    connect(keyStore, &QCA::KeyStore::unavailable, this, &KeyStoreModel::ksUnavailable);
    connect(keyStore, &QObject::destroyed, this, [this] { removeRowsOf(nullptr); });
    connect(keyStore, &QCA::KeyStore::entryWritten, this, &KeyStoreModel::entryWritten);
    connect(keyStore, &QCA::KeyStore::entryRemoved, this, &KeyStoreModel::entryRemoved);
}

void KeyStoreModel::ksUpdated()
{
    auto *keyStore = static_cast<QCA::KeyStore *>(sender());
    if (keyStore && Trivex::isSystemList(*keyStore))
        followSystemList(keyStore);
    else
        takeEntries(keyStore, keyStore ? keyStore->entryList() : QList<QCA::KeyStoreEntry>());
}

void KeyStoreModel::takeEntries(const QPointer<QCA::KeyStore> &keyStore,
                                const QList<QCA::KeyStoreEntry> &entries)
{
    if (!keyStore || !keyStore->isValid() || keyStore->name().isEmpty()) {
        qWarning() << "Error: KeyStore not valid";
        return;
    }
    refreshBusy();
    follow(keyStore, entries);
}

void KeyStoreModel::announceBundle(const QCA::KeyStoreEntry &entry)
{
    // The public key is costly to make, and without saved requests nobody listens.
    static const QMetaMethod signal = QMetaMethod::fromSignal(&KeyStoreModel::keyBundleWritten);
    if (isSignalConnected(signal))
        Q_EMIT keyBundleWritten(Trivex::publicKeyOf(Trivex::entryKeyBundle(entry).privateKey()));
}

void KeyStoreModel::ksUnavailable()
{
    auto *keyStore = qobject_cast<QCA::KeyStore *>(sender());
    announceRemovalOf(keyStore);
    // Its place stays.
    for (QPointer<QCA::KeyStore> &held : m_keyStores) {
        if (held == keyStore)
            held.clear();
    }
    Trivex::closeStores({keyStore});
}

void KeyStoreModel::ksmBusyStarted()
{
    inTurn([this] {
        Q_EMIT keysNotReady();
        setBusy(true);
    });
}

void KeyStoreModel::ksmBusyFinished()
{
    inTurn([this] {
        Q_EMIT keysReady();
        setBusy(false);
    });
}

void KeyStoreModel::entryWritten(QString entryId)
{
    Q_EMIT entryWrittenChanged(entryId.isEmpty());
}

void KeyStoreModel::entryRemoved(bool success)
{
    Q_EMIT entryRemovedChanged(success);
}

KeyStoreModel::Error KeyStoreModel::error() const
{
    return m_desk.failure() ? errorOf(*m_desk.failure()) : ErrorUnknown;
}

QString KeyStoreModel::importedCertificateFileName() const
{
    return m_desk.loaded().fileName();
}

bool KeyStoreModel::importedCertificateIsRoot() const
{
    return m_desk.loaded().isRoot();
}

QString KeyStoreModel::importedCertificateCommonName() const
{
    return m_desk.loaded().commonName();
}

bool KeyStoreModel::certificateFromPEMFile(QString path)
{
    return m_desk.load(path);
}

bool KeyStoreModel::keyBundleFromFile(QString path, QString password)
{
    const EngineKeeper keeper(this);
    const QPointer<KeyStoreModel> self(this);
    const auto loaded = Trivex::readKeyBundle(path, Trivex::securedText(password.toLocal8Bit()));
    return self && m_desk.load(loaded);
}

void KeyStoreModel::resetImportedCertificate()
{
    m_desk.reset();
}

void KeyStoreModel::resetImportedKeyBundle()
{
    m_desk.resetBundle();
}

void KeyStoreModel::setCertLocationId(int id)
{
    m_desk.choose(id);
}

QCA::KeyStore *KeyStoreModel::importTarget() const
{
    const ComboBoxModel::Row row = m_desk.chosen();
    if (row.id != SoftHSM)
        return nullptr;
    QCA::KeyStore *keyStore = keyStoreByName(row.type);
    const bool isUsable = keyStore && keyStore->isValid()
        && keyStore->type() == QCA::KeyStore::SmartCard && !keyStore->name().isEmpty();
    return isUsable && !m_desk.loaded().isNull() ? keyStore : nullptr;
}

template <typename Content> void KeyStoreModel::importIntoTarget(const Content &content)
{
    QCA::KeyStore *keyStore = importTarget();
    if (!keyStore)
        return;
    if (QcaHandler *answers = handler())
        answers->setKeyStoreId(keyStore->id());
    m_writer->write(keyStore, content);
}

void KeyStoreModel::importCertificate()
{
    importIntoTarget(m_desk.loaded().certificate());
}

void KeyStoreModel::importKeyBundle()
{
    importIntoTarget(m_desk.loaded().keyBundle());
}

void KeyStoreModel::removeCertificate(QString entryId)
{
    if (entryId.isEmpty()) {
        qWarning() << "KeyStore entry ID is empty. Certificate cannot be deleted";
        return;
    }
    if (items().isEmpty()) {
        qWarning() << "KeyStoreModel is empty. Certificate cannot be deleted";
        return;
    }
    const auto item = std::find_if(items().cbegin(), items().cend(), [&](const KeyStoreItem &row) {
        return Trivex::entryId(row.entry) == entryId;
    });
    if (item == items().cend() || !isRemovable(*item))
        return;
    if (QcaHandler *answers = handler()) {
        answers->setKeyStoreId(item->keyStore->id());
        answers->setObjectId(Trivex::entryName(item->entry));
    }
    m_writer->remove(item->keyStore, entryId);
}

bool KeyStoreModel::isRemovable(const KeyStoreItem &item) const
{
    if (item.keyStore->type() == QCA::KeyStore::System) {
        qWarning() << "System certificate cannot be deleted";
        return false;
    }
    if (Trivex::entryName(item.entry).isEmpty()) {
        qWarning() << "KeyStore entry name is empty. Certificate cannot be deleted";
        return false;
    }
    return true;
}

QcaHandler *KeyStoreModel::handler() const
{
    return m_askerThread->startedHandler();
}
