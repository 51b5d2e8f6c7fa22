// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokenadministration.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/pkcs11/extracted.h"
#include "tests/pkcs11/faulttable.h"
#include "tests/pkcs11/storechange.h"
#include "tests/support/needtokens.h"

#include <atomic>

using namespace TrivexTest;
using Trivex::StoreChange;
using Trivex::TokenAdministration;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Table");
const QString OtherName = QStringLiteral("Other");
const QByteArray NewPin = QByteArrayLiteral("0987654321");
const QByteArray Plain = QByteArrayLiteral("what nobody else may read");
constexpr int Patience = 30000;

Trivex::Secret secret(const QByteArray &text)
{
    return Trivex::Secret(QCA::SecureArray(text));
}

} // namespace

/// Every call of every flow with every fault. ctest runs each flow as a test of its own.
class TestFaultTable : public FaultTable {
    Q_OBJECT
public:
    TestFaultTable()
        : FaultTable(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void everyFault_data() { flows(); }
    void everyFault();
    void staysAlive_data() { flows(); }
    void staysAlive();
    void cleanupTestCase();

private:
    static void flows();
    FaultFlow flow(const QByteArray &name);
    FaultFlow useFlow(const QByteArray &name);
    FaultFlow writeFlow(const QByteArray &name);
    FaultFlow generationFlow(const QByteArray &name);
    FaultFlow removalFlow(const QByteArray &name);
    FaultFlow administrationFlow(const QByteArray &name);

    template <class What> bool write(const What &what)
    {
        m_written = m_stores->write(m_store, what);
        return !m_written.isEmpty();
    }
    bool remove(StoreChange::Kind kind, const QString &id);
    /// Every key without a certificate that a flow has made.
    void removeBare(const QString &label);
    bool administer(TokenAdministration::Kind kind, const QByteArray &pin,
                    const QByteArray &newPin);
    /// The ids of the keys of that label that have no certificate.
    QStringList bareKeys(const QString &label) const;
    QString entryId(const QString &name);

    QString m_otherId;
    QString m_written;
    QCA::Certificate m_root;
    QCA::KeyBundle m_bundle;
    QByteArray m_encrypted;
    QByteArray m_leaving; ///< the public half of a key that may leave
};

void TestFaultTable::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    TestToken &token = m_token->token();
    QVERIFY(addSigner());
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), QStringLiteral("02"),
                                  QStringLiteral("bare")));
    QVERIFY(!token
                 .tool({QStringLiteral("--keypairgen"), QStringLiteral("--key-type"),
                        QStringLiteral("rsa:2048"), QStringLiteral("--id"), QStringLiteral("03"),
                        QStringLiteral("--label"), QStringLiteral("leaving"),
                        QStringLiteral("--sensitive"), QStringLiteral("--extractable")})
                 .isNull());
    m_leaving = token.publicKey(QStringLiteral("03"));
    QVERIFY(token.addToken(OtherName));
    m_token->useInThisProcess();
    QVERIFY(startTable(1));
    const QCA::KeyStore *other = m_stores->waitFor(OtherName);
    QVERIFY(other);
    m_otherId = other->id();
    m_root = root();
    m_bundle = makeCurveBundle(QStringLiteral("/CN=Bundle"));
    QVERIFY(!m_root.isNull() && !m_bundle.isNull());
    m_encrypted = encryptedTo(
        m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey(), Plain);
    QVERIFY(!m_encrypted.isEmpty());
}

void TestFaultTable::cleanupTestCase()
{
    if (m_token)
        m_token->control();
}

void TestFaultTable::flows()
{
    QTest::addColumn<QByteArray>("name");
    for (const QByteArray &name : QByteArray(TRIVEX_FAULT_FLOWS).split(' '))
        QTest::newRow(name.constData()) << name;
}

QStringList TestFaultTable::bareKeys(const QString &label) const
{
    QStringList ids;
    const auto all = TokenMonitor::token(m_store->id()).keyFacts;
    for (const auto &key : all) {
        if (key.isBare() && key.label == label)
            ids.append(key.id);
    }
    return ids;
}

QString TestFaultTable::entryId(const QString &name)
{
    const auto all = m_stores->currentEntries(StoreName);
    for (const auto &entry : all) {
        if (entry.name() == name)
            return entry.id();
    }
    return {};
}

bool TestFaultTable::remove(StoreChange::Kind kind, const QString &id)
{
    return changeStore(m_store->id(), kind, id, Patience);
}

void TestFaultTable::removeBare(const QString &label)
{
    const auto ids = bareKeys(label);
    for (const QString &id : ids) {
        if (!remove(StoreChange::RemoveKey, id))
            qFatal("a key can't be removed");
    }
}

bool TestFaultTable::administer(TokenAdministration::Kind kind, const QByteArray &pin,
                                const QByteArray &newPin)
{
    struct Outcome {
        Trivex::TokenAdministrationResult result;
        std::atomic<bool> isOver = false;
    };
    const auto outcome = std::make_shared<Outcome>();
    TokenAdministration task;
    task.kind = kind;
    task.pin = secret(pin);
    task.newPin = secret(newPin);
    task.name = OtherName;
    const bool isOfOther = kind == TokenAdministration::Initialise;
    const auto started = Trivex::startTokenAdministration(
        isOfOther ? m_otherId : m_store->id(), std::move(task),
        [outcome](const Trivex::TokenAdministrationResult &result) {
            outcome->result = result;
            outcome->isOver = true;
        });
    if (!started || !QTest::qWaitFor([&] { return outcome->isOver.load(); }, Patience))
        qFatal("a task did not end");
    noteError(outcome->result.error);
    return outcome->result.error.kind == Trivex::TokenError::NoError;
}

FaultFlow TestFaultTable::useFlow(const QByteArray &name)
{
    FaultFlow flow;
    if (name == "sign")
        flow.run = [this] { return signs(); };
    if (name == "sign-bare")
        flow.run = [this] {
            const QString id = bareKeys(QStringLiteral("bare")).value(0);
            return !signature(Trivex::tokenKeyOfId(m_store->id(), id)).isEmpty();
        };
    if (name == "decrypt")
        flow.run = [this] {
            QCA::PrivateKey key =
                m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey();
            QCA::SecureArray plain;
            return key.decrypt(m_encrypted, &plain, QCA::EME_PKCS1v15);
        };
    if (name == "export")
        flow.run = [this] { return !extracted(m_store->id(), m_leaving).privateInfo.isEmpty(); };
    return flow;
}

FaultFlow TestFaultTable::writeFlow(const QByteArray &name)
{
    FaultFlow flow;
    flow.restore = [this] {
        if (!m_stores->remove(m_store, m_written))
            qFatal("what was written can't be removed");
        const QString rootId = entryId(QStringLiteral("Test Root"));
        if (!rootId.isEmpty())
            m_stores->remove(m_store, rootId);
    };
    const bool isBundle = name == "import-bundle";
    flow.objects = isBundle ? 4 : 1; // with its chain: the root is an entry of its own
    flow.run = [this, isBundle] { return isBundle ? write(m_bundle) : write(m_root); };
    if (name == "write-certificate")
        flow.restore = [this] { m_stores->remove(m_store, m_written); };
    return flow;
}

FaultFlow TestFaultTable::generationFlow(const QByteArray &name)
{
    const QString label = QStringLiteral("made");
    FaultFlow flow;
    flow.objects = 2;
    flow.restore = [this, label] {
        // What the token kept of a failed run shows after a login only.
        if (!QTest::qWaitFor([&] { return signs() && !bareKeys(label).isEmpty(); }, Patience))
            qFatal("the key is not shown");
        removeBare(label);
    };
    if (name == "generate-rsa") {
        flow.run = [this, label] { return !generateRsa(1024, 65537, label).isNull(); };
        return flow;
    }
    const bool signsToo = name == "generate-and-sign";
    flow.run = [this, label, signsToo] {
        const QCA::PrivateKey key = generateCurve(QStringLiteral("ec-secp384r1"), label);
        if (key.isNull() || !signsToo || !signature(key).isEmpty())
            return !key.isNull();
        // As a request does that can't be signed.
        settle();
        removeBare(label);
        return false;
    };
    return flow;
}

FaultFlow TestFaultTable::removalFlow(const QByteArray &name)
{
    FaultFlow flow;
    if (name == "remove-bare") {
        const QString label = QStringLiteral("doomed");
        const auto make = [this, label] {
            if (generateCurve(QStringLiteral("ec-secp384r1"), label).isNull())
                qFatal("no key to remove");
        };
        make();
        flow.objects = -2;
        flow.run = [this, label] {
            return remove(StoreChange::RemoveKey, bareKeys(label).value(0));
        };
        flow.restore = make;
        return flow;
    }
    if (!write(m_bundle))
        qFatal("no bundle to remove");
    flow.objects = -3;
    flow.run = [this] { return m_stores->remove(m_store, entryId(QStringLiteral("bundle"))); };
    flow.restore = [this] {
        removeBare(QStringLiteral("bundle"));
        if (!write(m_bundle))
            qFatal("the bundle can't be written again");
    };
    return flow;
}

FaultFlow TestFaultTable::administrationFlow(const QByteArray &name)
{
    const QByteArray officer = TestToken::soPin();
    const QByteArray user = TestToken::pin();
    FaultFlow flow;
    flow.logins = 1;
    flow.first = "C_OpenSession"; // they begin with a session of their own
    const auto change = [this, &flow](TokenAdministration::Kind kind, const QByteArray &pin,
                                      const QByteArray &newPin) {
        flow.run = [=] { return administer(kind, pin, newPin); };
    };
    if (name == "change-pin") {
        change(TokenAdministration::ChangePin, user, NewPin);
        flow.repair = [=] { administer(TokenAdministration::ChangePin, NewPin, user); };
    } else if (name == "change-officer-pin") {
        change(TokenAdministration::ChangeOfficerPin, officer, NewPin);
        flow.repair = [=] { administer(TokenAdministration::ChangeOfficerPin, NewPin, officer); };
    } else if (name == "set-pin") {
        change(TokenAdministration::SetPin, officer, NewPin);
        flow.repair = [=] { administer(TokenAdministration::SetPin, officer, user); };
    } else {
        // Of the other token, which stays empty.
        change(TokenAdministration::Initialise, officer, user);
        flow.storeId = m_otherId;
        flow.repair = [=] {
            // A token that was made anew is taken in by the next look.
            const bool isRemade = m_token->count("C_InitToken") > 0;
            const int looks = m_token->count("C_GetSlotList") + (isRemade ? 2 : 0);
            const auto isThere = [&] {
                return TokenMonitor::token(m_otherId).present
                    && m_token->count("C_GetSlotList") >= looks;
            };
            if (!QTest::qWaitFor(isThere, Patience))
                qFatal("the other token does not come back");
        };
    }
    return flow;
}

FaultFlow TestFaultTable::flow(const QByteArray &name)
{
    FaultFlow flow;
    if (name.startsWith("sign") || name == "decrypt" || name == "export")
        flow = useFlow(name);
    else if (name.startsWith("generate"))
        flow = generationFlow(name);
    else if (name.startsWith("remove"))
        flow = removalFlow(name);
    else if (name == "write-certificate" || name == "import-bundle")
        flow = writeFlow(name);
    else
        flow = administrationFlow(name);
    if (flow.storeId.isEmpty())
        flow.storeId = m_store->id();
    return flow;
}

void TestFaultTable::everyFault()
{
    QFETCH(QByteArray, name);
    const QByteArray failures = failuresOf(flow(name));
    QVERIFY2(failures.isEmpty(), failures.constData());
}

void TestFaultTable::staysAlive()
{
    QFETCH(QByteArray, name);
    const QByteArray stalls = stallsOf(flow(name));
    QVERIFY2(stalls.isEmpty(), stalls.constData());
}

QTEST_GUILESS_MAIN(TestFaultTable)
#include "tst_faulttable.moc"
