// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"

#include "certificates/keystoreentry.h"
#include "keystores/providerlookup.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/stores.h"
#include "qca/base/libcrypto.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/qcaaskerthread.h"
#include "qca/questions/qcahandler.h"
#include "qca/questions/question.h"

#include <QDebug>
#include <QQmlEngine>

namespace {

constexpr unsigned long ThreadPatience = 3000; // ms

/// The stores of the application and the user are written elsewhere.
bool isLocationId(const QString &id)
{
    static const QSet<QString> others = {QStringLiteral("APP"), QStringLiteral("USER"),
                                         QStringLiteral("USERAPP")};
    return !others.contains(id);
}

template <typename Object> QVariant handOut(Object *object)
{
    // Script must not collect what belongs to a row.
    if (object)
        QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return QVariant::fromValue(object);
}

} // namespace

KeyStoreModel::KeyStoreModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_keyStoreManager(this)
    , m_askerThread(new QcaAskerThread)
    , m_writer(std::make_unique<Trivex::StoreWriter>())
    , m_importedCertificate(QCA::Certificate(), nullptr)
    , m_certLocationModel(nullptr)
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
    m_nextSlice.setInterval(0);
    connect(&m_nextSlice, &QTimer::timeout, this, &KeyStoreModel::appendSlice);
    m_keyStoreManager.sync();
    m_askerThread->start(QThread::InheritPriority);
    setUpProvider();
    openKnownStores();
    m_certLocationId = m_certLocationModel.firstSortedId();
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

int KeyStoreModel::rowCount(const QModelIndex &) const
{
    return m_items.size();
}

QVariant KeyStoreModel::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    if (row < 0 || row >= m_items.size())
        return {};
    const KeyStoreItem &item = m_items.at(row);
    switch (role) {
    case NameRole:
        return nameText(row);
    case KeyStoreEntryRole:
        return handOut(item.entry.data());
    case CertificateRole:
        return handOut(item.entry->certificate());
    case IssuerRole:
        return issuerText(row);
    case TypeRole:
        return item.keyStore ? int(item.keyStore->type()) : -1;
    case EntryIdRole:
        return Trivex::entryId(item.entry->entry());
    default:
        return {};
    }
}

QString KeyStoreModel::nameText(int row) const
{
    const Certificate *certificate = m_items.at(row).entry->certificate();
    const QString name = certificate->commonName();
    if (!name.isEmpty())
        return name;
    const QString unit = certificate->subjectOrganizationalUnit();
    return unit.isEmpty() ? qtTrId("trivex-se-unnamed") : unit;
}

QString KeyStoreModel::issuerText(int row) const
{
    const Certificate *certificate = m_items.at(row).entry->certificate();
    const QString issuer = certificate->issuer();
    if (!issuer.isEmpty())
        return issuer;
    const QString organization = certificate->subjectOrganization();
    return organization.isEmpty() ? qtTrId("trivex-se-unknown_organization") : organization;
}

QHash<int, QByteArray> KeyStoreModel::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {NameRole, "name"},
        {KeyStoreEntryRole, "keyStoreEntry"},
        {CertificateRole, "certificate"},
        {IssuerRole, "issuer"},
        {TypeRole, "type"},
        {EntryIdRole, "entryId"},
    };
    return names;
}

QAbstractListModel *KeyStoreModel::certLocation()
{
    QQmlEngine::setObjectOwnership(&m_certLocationModel, QQmlEngine::CppOwnership);
    return &m_certLocationModel;
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
    addLocation(*keyStore);
    connectStore(keyStore);
    keyStore->startAsynchronousMode();
    refreshBusy();
}

void KeyStoreModel::addLocation(const QCA::KeyStore &keyStore)
{
    if (!keyStore.isValid())
        return; // it went while its arrival was on its way; it has no properties to ask for
    if (keyStore.name().isEmpty() || keyStore.type() == QCA::KeyStore::System
        || m_certLocationModel.containsType(keyStore.name()) || !isLocationId(keyStore.id()))
        return;
    m_certLocationModel.addRow(SoftHSM, qtTrId("trivex-me-softhsm"), keyStore.name());
    Q_EMIT certLocationChanged();
}

void KeyStoreModel::connectStore(QCA::KeyStore *keyStore)
{
    connect(keyStore, &QCA::KeyStore::updated, this, &KeyStoreModel::ksUpdated);
    // Before the slot: it deletes the store and expects to find no rows of it.
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

void KeyStoreModel::ksUnavailable()
{
    auto *keyStore = qobject_cast<QCA::KeyStore *>(sender());
    int row = 0;
    while (row < rowCount()) {
        if (m_items.at(row).keyStore == keyStore) {
            beginRemoveRows(QModelIndex(), row, row);
            removeRows(row, 1, QModelIndex());
            endRemoveRows();
        } else {
            ++row;
        }
    }
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
