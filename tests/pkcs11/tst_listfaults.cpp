// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenconnection.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultlist.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QMap>

using namespace TrivexTest;
using Trivex::CertificateChoice;
using Trivex::TokenConnection;
using Trivex::TokenContentsPtr;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Listed");
constexpr int Patience = 60000;
constexpr int MostProblems = 20;

/// What the rows are made of: an entry's id says which certificate it is and whether it has a key.
/// `keysAside`: as if none had one.
QSet<QString> idsOf(const TokenContentsPtr &contents, bool keysAside = false)
{
    QSet<QString> ids;
    for (size_t i = 0; contents && i < contents->entries.size(); ++i)
        ids.insert(keysAside ? QString(contents->entries[i]->id)
                                   .replace(QLatin1String("-k-"), QLatin1String("-c-"))
                             : contents->entries[i]->id);
    return ids;
}

/// An object that says that it is gone, or an attribute that lies, is left out of what is read.
bool mayBeLess(const QByteArray &call, const Fault &fault)
{
    return call == "C_GetAttributeValue" || (call == "C_FindObjects" && fault.result.isEmpty());
}

} // namespace

/// Every call of listing a token with every fault. What must always hold: nothing is listed that is
/// not there, no session is left open, no PIN is sent, the reading ends, and once the fault is over
/// everything is listed again.
class TestListFaults : public TokenFixture {
    Q_OBJECT
public:
    TestListFaults()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void everyFault_data();
    void everyFault();
    void storeFollows_data();
    void storeFollows();
    void cleanupTestCase();

private:
    std::unique_ptr<TokenConnection> connection() const;
    QMap<QByteArray, int> callsOf(bool isAnew);
    /// True when it was read.
    static bool read(TokenConnection &connection);
    QByteArray check(const QByteArray &call, const Fault &fault, bool isAnew);

    Trivex::Pkcs11::ModulePtr m_module;
    CK_SLOT_ID m_slot = 0;
    QSet<QString> m_ids;
    QSet<QString> m_plainIds; ///< with the keys aside
};

void TestListFaults::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    TestToken &token = m_token->token();
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), QStringLiteral("02"),
                                  QStringLiteral("bare")));
    QVERIFY(token.writeObject(QStringLiteral("cert"), m_authority->certificate(),
                              QStringLiteral("0a"), QStringLiteral("root")));
    m_token->useInThisProcess();
    Trivex::Pkcs11::ModuleSource source;
    source.key = source.library = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
    m_module = Trivex::Pkcs11::Module::open(source);
    CK_SLOT_ID slots[16];
    CK_ULONG count = 16;
    QCOMPARE((*m_module)->C_GetSlotList(CK_TRUE, slots, &count), CKR_OK);
    m_slot = slots[0];
    const auto first = connection();
    QVERIFY(read(*first));
    m_ids = idsOf(first->contents());
    m_plainIds = idsOf(first->contents(), true);
    QCOMPARE(m_ids.size(), 2);
}

void TestListFaults::cleanupTestCase()
{
    if (m_token)
        m_token->control();
    m_module.reset();
}

std::unique_ptr<TokenConnection> TestListFaults::connection() const
{
    CK_TOKEN_INFO info = {};
    if ((*m_module)->C_GetTokenInfo(m_slot, &info) != CKR_OK)
        qFatal("no token");
    const auto identity = Trivex::identityOf(info);
    const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, identity.storeId, identity.label);
    return std::make_unique<TokenConnection>(m_module, m_slot, identity, store,
                                             CertificateChoice::All);
}

bool TestListFaults::read(TokenConnection &connection)
{
    try {
        connection.read();
        connection.noteSuccess();
        return true;
    } catch (const Trivex::Pkcs11::Error &error) {
        connection.noteFailure(error);
        return false;
    }
}

QMap<QByteArray, int> TestListFaults::callsOf(bool isAnew)
{
    m_token->control();
    const auto tried = connection();
    if (isAnew)
        read(*tried);
    m_token->forget();
    return read(*tried) ? m_token->callCounts() : QMap<QByteArray, int>();
}

QByteArray TestListFaults::check(const QByteArray &call, const Fault &fault, bool isAnew)
{
    m_token->control();
    auto tried = connection();
    if (isAnew && !read(*tried))
        return "the token can't be read";
    const int before = m_token->lastNumber(" open=");
    m_token->control(fault.orders);
    m_token->forget();
    const bool wasRead = read(*tried);
    const QSet<QString> shown = idsOf(tried->contents());
    const int logins = m_token->count("C_Login");
    m_token->control();
    // A key that says that it is gone leaves its certificate behind.
    const bool keysAside = mayBeLess(call, fault);
    if (!(keysAside ? m_plainIds : m_ids).contains(idsOf(tried->contents(), keysAside)))
        return "what is not there is listed";
    if (wasRead && shown != m_ids && !mayBeLess(call, fault))
        return "counts as read, with " + QByteArray::number(shown.size()) + " entries";
    if (isAnew && !wasRead && shown != m_ids)
        return "a failed reading changes what is known";
    if (!isAnew && !wasRead && !shown.isEmpty())
        return "half a reading is shown";
    if (logins > 0)
        return "a PIN was sent";
    if (!read(*tried) || idsOf(tried->contents()) != m_ids)
        return "is not read again";
    tried.reset();
    const bool losesSession = fault.losesSession || call == "C_CloseSession";
    const int left = m_token->lastNumber(" open=");
    if (!losesSession && left > before)
        return QByteArray::number(left) + " sessions are open, before "
            + QByteArray::number(before);
    return {};
}

void TestListFaults::everyFault_data()
{
    QTest::addColumn<bool>("isAnew");
    QTest::newRow("for the first time") << false;
    QTest::newRow("anew") << true;
}

void TestListFaults::everyFault()
{
    QFETCH(bool, isAnew);
    const auto calls = callsOf(isAnew);
    QVERIFY(calls.contains("C_FindObjects") && calls.contains("C_GetAttributeValue"));
    QByteArrayList problems;
    int turn = 0;
    int runs = 0;
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        for (int number = 1; number <= call.value() && problems.size() < MostProblems; ++number) {
            const auto faults = faultsOf(call.key(), number, turn++, true);
            for (const Fault &fault : faults) {
                ++runs;
                const QByteArray problem = check(call.key(), fault, isAnew);
                if (!problem.isEmpty())
                    problems.append(QByteArray(fault.orders).replace('\n', ", ") + ": " + problem);
            }
        }
    }
    qInfo("%d calls of %d functions, %d runs", turn, int(calls.size()), runs);
    QVERIFY2(problems.isEmpty(), problems.join('\n').constData());
    QVERIFY(runs > turn);
}

void TestListFaults::storeFollows_data()
{
    QTest::addColumn<QByteArray>("orders");
    // From the first reading on, and every one after it: the store has no rows until the fault
    // ends.
    for (const char *call : {"C_GetSlotList", "C_GetTokenInfo", "C_OpenSession", "C_GetSessionInfo",
                             "C_FindObjectsInit", "C_FindObjects", "C_GetAttributeValue"})
        QTest::newRow(call) << "fail " + QByteArray(call) + " * CKR_DEVICE_ERROR";
}

/// The whole way, from the module to the key store that an application has.
void TestListFaults::storeFollows()
{
    QFETCH(QByteArray, orders);
    // Held here, it could not be started anew.
    m_module.reset();
    m_token->control(orders);
    m_token->forget();
    const QCA::Initializer qca;
    PinPrompt prompt(TestToken::pin());
    Stores stores;
    const auto call = orders.split(' ').at(1);
    QVERIFY(QTest::qWaitFor([&] { return m_token->count(call.constData()) >= 3; }, Patience));
    QVERIFY(stores.entries(StoreName).isEmpty());
    m_token->control();
    QVERIFY(stores.waitForEntries(StoreName, m_ids.size(), Patience));
    QSet<QString> shown;
    const auto entries = stores.entries(StoreName);
    for (const QCA::KeyStoreEntry &entry : entries)
        shown.insert(entry.id());
    QCOMPARE(shown, m_ids);
    const auto tokens = TokenMonitor::tokens();
    QCOMPARE(tokens.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!TokenMonitor::tokens().first().loading, Patience);
    QCOMPARE(prompt.count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    QVERIFY(signs(stores, StoreName));
}

QTEST_GUILESS_MAIN(TestListFaults)
#include "tst_listfaults.moc"
