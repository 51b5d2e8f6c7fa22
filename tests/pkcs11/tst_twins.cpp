// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"

#include <QDir>

using namespace TrivexTest;

namespace {

const QString Label = QStringLiteral("Twin");
const QByteArray OtherPin = QByteArrayLiteral("654321");
constexpr int Patience = 60000;

/// What a person sees of one of the two tokens.
struct Twin {
    QString storeId;
    QString name;
    QByteArray pin;
};

} // namespace

/// Two tokens of the same names, as cards that were copied and cards without serial numbers are:
/// each has its own keys and its own PIN, and nothing of one may be taken for the other's.
class TestTwins : public FailureFixture {
    Q_OBJECT
public:
    TestTwins()
        : FailureFixture(Label)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void bothAreUsed_data();
    void bothAreUsed();

private:
    bool fillOther();
    bool startWith(const QByteArray &orders);
    bool findBoth();
    bool isShown(const Twin &twin, const QString &entry) const;
    bool isPresent(const Twin &twin) const;
    bool signs(const Twin &twin, const QString &entry);
    void use(const Twin &twin, const QString &entry);
    void takeOut(const QByteArray &orders, const QByteArray &slot);

    std::unique_ptr<TestToken> m_other;
    Twin m_first; ///< with the key "first"
    Twin m_second; ///< with the key "second"
};

/// SoftHSM keeps each token in a directory of its own.
bool TestTwins::fillOther()
{
    m_other = std::make_unique<TestToken>(Label);
    const QString id = QStringLiteral("01");
    const QString name = QStringLiteral("second");
    if (!m_other->isValid() || !m_other->generateKeyPair(QStringLiteral("rsa:2048"), id, name))
        return false;
    const QByteArray der = m_authority->issue(m_other->publicKey(id), QStringLiteral("/CN=Second"));
    if (!m_other->writeObject(QStringLiteral("cert"), der, id, name)
        || m_other
               ->tool({QStringLiteral("--change-pin"), QStringLiteral("--new-pin"),
                       QString::fromLatin1(OtherPin)})
               .isNull())
        return false;
    QDir from(m_other->path() + QStringLiteral("/tokens"));
    const QStringList tokens = from.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return tokens.size() == 1
        && QFile::rename(from.filePath(tokens.first()),
                         m_token->token().path() + QStringLiteral("/tokens/") + tokens.first());
}

void TestTwins::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addKey(QStringLiteral("rsa:2048"), QStringLiteral("01"), QStringLiteral("first")));
    QVERIFY(fillOther());
    m_token->useInThisProcess();
}

bool TestTwins::startWith(const QByteArray &orders)
{
    m_token->control(orders);
    m_stores.reset();
    m_prompt.reset();
    m_qca.reset();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    return QTest::qWaitFor([this] { return findBoth(); }, Patience);
}

bool TestTwins::findBoth()
{
    m_first = m_second = {};
    const auto tokens = Trivex::TokenMonitor::tokens();
    for (const Trivex::TokenStatus &token : tokens) {
        if (isShown({token.keyStoreId, token.name, {}}, QStringLiteral("first")))
            m_first = {token.keyStoreId, token.name, TestToken::pin()};
        if (isShown({token.keyStoreId, token.name, {}}, QStringLiteral("second")))
            m_second = {token.keyStoreId, token.name, OtherPin};
    }
    return !m_first.storeId.isEmpty() && !m_second.storeId.isEmpty();
}

bool TestTwins::isPresent(const Twin &twin) const
{
    return Trivex::TokenMonitor::token(twin.storeId).present;
}

/// It and nothing else, of a token that is there: its rows outlive it for a moment.
bool TestTwins::isShown(const Twin &twin, const QString &entry) const
{
    const Trivex::TokenStatus status = Trivex::TokenMonitor::token(twin.storeId);
    const auto entries = m_stores->entries(twin.name);
    return status.present && status.isRead && entries.size() == 1 && entries.first().name() == entry
        && entries.first().storeId() == twin.storeId;
}

bool TestTwins::signs(const Twin &twin, const QString &entry)
{
    m_prompt->setPin(twin.pin);
    const QCA::KeyStoreEntry found = m_stores->entry(twin.name, entry);
    const QByteArray made = signature(found.keyBundle().privateKey());
    QCA::PublicKey key = found.certificate().subjectPublicKey();
    return !made.isEmpty()
        && key.verifyMessage(QByteArray("data"), made, QCA::EMSA3_SHA256, QCA::DefaultFormat);
}

/// One question of its own and one login, whoever was logged in to the other one.
void TestTwins::use(const Twin &twin, const QString &entry)
{
    countAfresh();
    QVERIFY(signs(twin, entry));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().keyStoreId, twin.storeId);
    QCOMPARE(m_prompt->last().tokenName, twin.name);
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_token->countText("CKR_PIN_INCORRECT"), 0);
    QVERIFY(m_errors.isEmpty());
}

void TestTwins::bothAreUsed_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::newRow("copies") << QByteArray("same-names");
    QTest::newRow("no serial numbers") << QByteArray("no-serial");
}

void TestTwins::bothAreUsed()
{
    QFETCH(QByteArray, orders);
    QVERIFY(startWith(orders));
    QVERIFY(m_first.storeId != m_second.storeId);
    QVERIFY(m_first.name != m_second.name);
    use(m_first, QStringLiteral("first"));
    use(m_second, QStringLiteral("second"));

    // What is written to one of them, and removed from it, is so in this one.
    QCA::KeyStore *store = m_stores->byName(m_second.name);
    const QString id = m_stores->write(store, root());
    QTRY_COMPARE_WITH_TIMEOUT(m_stores->entries(m_second.name).size(), 2, Patience);
    QVERIFY(isShown(m_first, QStringLiteral("first")));
    QVERIFY(!m_stores->remove(m_stores->byName(m_first.name), id));
    QCOMPARE(m_stores->currentEntries(m_second.name).size(), 2);
    QVERIFY(m_stores->remove(store, id));
    QTRY_VERIFY_WITH_TIMEOUT(isShown(m_second, QStringLiteral("second")), Patience);

    // Either goes and comes back as itself, and the other one stays logged in.
    for (const QByteArray slot : {"1", "2"})
        takeOut(orders, slot);
    // Both, and the later one comes first.
    m_token->control(orders + "\nremove");
    QTRY_VERIFY_WITH_TIMEOUT(!isPresent(m_first) && !isPresent(m_second), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(m_stores->entries(m_first.name).isEmpty()
                                 && m_stores->entries(m_second.name).isEmpty(),
                             Patience);
    m_token->control(orders + "\nremove 1");
    QTRY_VERIFY_WITH_TIMEOUT(isShown(m_first, QStringLiteral("first"))
                                 || isShown(m_second, QStringLiteral("second")),
                             Patience);
    m_token->control(orders);
    QTRY_VERIFY_WITH_TIMEOUT(isShown(m_first, QStringLiteral("first"))
                                 && isShown(m_second, QStringLiteral("second")),
                             Patience);
    use(m_first, QStringLiteral("first"));
    use(m_second, QStringLiteral("second"));
}

void TestTwins::takeOut(const QByteArray &orders, const QByteArray &slot)
{
    m_token->control(orders + "\nremove " + slot);
    QTRY_VERIFY_WITH_TIMEOUT(isPresent(m_first) != isPresent(m_second), Patience);
    const bool isFirst = !isPresent(m_first);
    const Twin &gone = isFirst ? m_first : m_second;
    const Twin &left = isFirst ? m_second : m_first;
    const QString leftEntry = isFirst ? QStringLiteral("second") : QStringLiteral("first");
    QTRY_VERIFY_WITH_TIMEOUT(m_stores->entries(gone.name).isEmpty(), Patience);
    countAfresh();
    QVERIFY(isShown(left, leftEntry));
    QVERIFY(signs(left, leftEntry));
    QCOMPARE(m_prompt->count(), 0);
    m_token->control(orders);
    const QString goneEntry = isFirst ? QStringLiteral("first") : QStringLiteral("second");
    QTRY_VERIFY_WITH_TIMEOUT(isShown(gone, goneEntry), Patience);
    use(gone, goneEntry);
}

QTEST_GUILESS_MAIN(TestTwins)
#include "tst_twins.moc"
