// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/fakekeystorelist.h"

namespace TrivexTest {

namespace {

class FakeEntryContext : public QCA::KeyStoreEntryContext {
public:
    FakeEntryContext(QCA::Provider *provider, const FakeEntry &entry, const FakeStore &store,
                     const std::shared_ptr<FakeStores> &stores)
        : QCA::KeyStoreEntryContext(provider)
        , m_stores(stores)
        , m_entry(entry)
        , m_storeId(store.id)
        , m_storeName(store.name)
    {
    }

    Context *clone() const override { return new FakeEntryContext(*this); }
    QCA::KeyStoreEntry::Type type() const override { return m_entry.type; }
    QString id() const override { return read("id", m_entry.id); }
    QString name() const override { return read("name", m_entry.name); }
    QString storeId() const override { return m_storeId; }
    QString storeName() const override { return m_storeName; }
    QString serialize() const override { return QString(); }
    QCA::KeyBundle keyBundle() const override { return read("keyBundle", m_entry.bundle); }
    QCA::Certificate certificate() const override
    {
        return read("certificate", m_entry.certificate);
    }

private:
    template <class Value> const Value &read(const char *what, const Value &value) const
    {
        m_stores->noteRead(QString::fromLatin1(what));
        return value;
    }

    std::shared_ptr<FakeStores> m_stores;
    FakeEntry m_entry;
    QString m_storeId;
    QString m_storeName;
};

} // namespace

FakeKeyStoreList::FakeKeyStoreList(QCA::Provider *provider,
                                   const std::shared_ptr<FakeStores> &stores)
    : QCA::KeyStoreListContext(provider)
    , m_stores(stores)
{
    connect(stores.get(), &FakeStores::storesChanged, this, &QCA::KeyStoreListContext::updated);
    connect(stores.get(), &FakeStores::entriesChanged, this,
            &QCA::KeyStoreListContext::storeUpdated);
    connect(stores.get(), &FakeStores::busyStart, this, &QCA::KeyStoreListContext::busyStart);
    connect(stores.get(), &FakeStores::busyEnd, this, &QCA::KeyStoreListContext::busyEnd);
}

QCA::Provider::Context *FakeKeyStoreList::clone() const
{
    return nullptr;
}

void FakeKeyStoreList::start()
{
    // QCA counts a provider as busy until then.
    QMetaObject::invokeMethod(this, &QCA::KeyStoreListContext::busyEnd, Qt::QueuedConnection);
}

QList<int> FakeKeyStoreList::keyStores()
{
    QList<int> ids;
    const QList<FakeStore> stores = m_stores->stores();
    for (const FakeStore &store : stores)
        ids.append(store.contextId);
    return ids;
}

QCA::KeyStore::Type FakeKeyStoreList::type(int id) const
{
    return m_stores->store(id).type;
}

QString FakeKeyStoreList::storeId(int id) const
{
    return m_stores->store(id).id;
}

QString FakeKeyStoreList::name(int id) const
{
    return m_stores->store(id).name;
}

QList<QCA::KeyStoreEntry::Type> FakeKeyStoreList::entryTypes(int id) const
{
    Q_UNUSED(id)
    return {QCA::KeyStoreEntry::TypeCertificate, QCA::KeyStoreEntry::TypeKeyBundle};
}

QList<QCA::KeyStoreEntryContext *> FakeKeyStoreList::entryList(int id)
{
    QList<QCA::KeyStoreEntryContext *> list;
    const FakeStore store = m_stores->store(id);
    for (const FakeEntry &entry : store.entries)
        list.append(new FakeEntryContext(provider(), entry, store, m_stores));
    return list;
}

bool FakeKeyStoreList::begin(const FakeCall &call, int id)
{
    FakeCall noted = call;
    noted.storeId = storeId(id);
    m_stores->note(noted);
    m_stores->waitWhileBlocked();
    if (!m_stores->isAsking())
        return true;
    QCA::PasswordAsker asker;
    const FakeStore store = m_stores->store(id);
    asker.ask(QCA::Event::StylePIN, QCA::KeyStoreInfo(store.type, store.id, store.name),
              QCA::KeyStoreEntry(), nullptr);
    m_stores->countQuestion(1);
    asker.waitForResponse();
    m_stores->countQuestion(-1);
    return asker.accepted();
}

QString FakeKeyStoreList::writeEntry(int id, const QCA::KeyBundle &bundle)
{
    FakeCall call;
    call.function = QStringLiteral("writeBundle");
    call.bundle = bundle;
    return begin(call, id) ? m_stores->writeResult() : QString();
}

QString FakeKeyStoreList::writeEntry(int id, const QCA::Certificate &certificate)
{
    FakeCall call;
    call.function = QStringLiteral("writeCertificate");
    call.certificate = certificate;
    return begin(call, id) ? m_stores->writeResult() : QString();
}

bool FakeKeyStoreList::removeEntry(int id, const QString &entryId)
{
    FakeCall call;
    call.function = QStringLiteral("removeEntry");
    call.argument = entryId;
    return begin(call, id) && m_stores->removeResult();
}

} // namespace TrivexTest
