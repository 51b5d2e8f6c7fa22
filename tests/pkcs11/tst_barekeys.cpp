// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "tests/pkcs11/barekeyfixture.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/support/needtokens.h"

#include <QSet>

using namespace TrivexTest;
using Trivex::StoreChange;
using Trivex::TokenError;
using Trivex::TokenKeyFacts;
using Trivex::TokenMonitor;
using Trivex::TokenStatus;

namespace {

const QString StoreName = QStringLiteral("Bare");
const QByteArray OddLabel("caf\xe9 \xff");
constexpr int ManyKeys = 500;

} // namespace

/// Keys without a certificate and what else is told of a token: seen, and used for a signature, on
/// a token that hides them.
class TestBareKeys : public BareKeyFixture {
    Q_OBJECT
public:
    TestBareKeys()
        : BareKeyFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void seenBeforeLogin();
    void theSameAfterLogin();
    void usesAndOrigin();
    void keysAlikeAreTold();
    void signsByItsId();
    void hiddenKeysShowAfterLogin();
    void aRefusedPinShowsNothing();
    void certificateComesAndGoes();
    void factsOfTheToken();
    void abilities();
    void lookThatFails();
    void guessedKeyIsNotUsed();
    void manyKeys();
};

void TestBareKeys::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeBareToken());
    TestToken &token = m_token->token();
    const QString hidden = QStringLiteral("03");
    QVERIFY(
        token.generateKeyPair(QStringLiteral("EC:secp256r1"), hidden, QStringLiteral("hidden")));
    QVERIFY(token.removeObject(QStringLiteral("pubkey"), hidden));
    m_token->useInThisProcess();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.makeKeys(1, OddLabel, TestToken::pin()));
    }
    QVERIFY(startBare());
}

void TestBareKeys::init()
{
    resetToken();
}

void TestBareKeys::seenBeforeLogin()
{
    // The signer is no key without a certificate, and of "hidden" nothing shows yet.
    QCOMPARE(bareKeys().size(), 3);
    QVERIFY(status().keysHidden);
    const TokenKeyFacts bare = bareKey("bare");
    QCOMPARE(bare.keyType, int(Trivex::RsaKey));
    QCOMPARE(bare.bits, 2048);
    QCOMPARE(bare.tokenId, QByteArray("\x02"));
    QVERIFY(!bare.usesKnown);
    const TokenKeyFacts twin = bareKey("twin");
    QCOMPARE(twin.keyType, int(Trivex::EllipticCurveKey));
    QCOMPARE(twin.bits, 384);
    QVERIFY(twin.id != bare.id);
    QCOMPARE(m_prompt->count(), 0);
    // Specified lists have nothing of them.
    QCOMPARE(m_stores->entries(StoreName).size(), 1);
}

void TestBareKeys::theSameAfterLogin()
{
    const QString before = bareKey("bare").id;
    const QString twin = bareKey("twin").id;
    QVERIFY(signs());
    QTRY_COMPARE(bareKeys().size(), 4);
    QCOMPARE(bareKey("bare").id, before);
    QCOMPARE(bareKey("twin").id, twin);
    QVERIFY(!status().keysHidden);
}

void TestBareKeys::usesAndOrigin()
{
    const TokenKeyFacts bare = bareKey("bare");
    QVERIFY(bare.usesKnown);
    QVERIFY(bare.uses & TokenKeyFacts::Signs);
    QVERIFY(bare.uses & TokenKeyFacts::Decrypts);
    QCOMPARE(bare.origin, TokenKeyFacts::MadeHere);
    const QVector<TokenKeyFacts> all = bareKeys();
    QVERIFY(std::any_of(all.begin(), all.end(), [](const TokenKeyFacts &key) {
        return key.usesKnown && !(key.uses & TokenKeyFacts::Decrypts);
    }));
}

void TestBareKeys::keysAlikeAreTold()
{
    QSet<QString> ids;
    const QVector<TokenKeyFacts> all = status().keyFacts;
    for (const TokenKeyFacts &key : all)
        ids.insert(key.id);
    QCOMPARE(ids.size(), all.size());
    // A label that is no UTF-8 shows as text all the same.
    const auto odd = std::find_if(all.begin(), all.end(), [](const TokenKeyFacts &key) {
        return key.label.startsWith(QLatin1String("caf"));
    });
    QVERIFY(odd != all.end());
}

void TestBareKeys::signsByItsId()
{
    QCA::PrivateKey key = Trivex::tokenKeyOfId(m_storeId, bareKey("bare").id);
    QVERIFY(!key.isNull());
    const QByteArray made = signature(key);
    QVERIFY(!made.isEmpty());
    QVERIFY(key.toPublicKey().verifyMessage(QByteArray("data"), made, QCA::EMSA3_SHA256,
                                            QCA::DefaultFormat));
    QVERIFY(Trivex::tokenKeyOfId(m_storeId, QStringLiteral("none")).isNull());
    QVERIFY(Trivex::tokenKeyOfId(QStringLiteral("none"), bareKey("bare").id).isNull());
}

void TestBareKeys::hiddenKeysShowAfterLogin()
{
    QVERIFY(m_token->replug(m_storeId));
    QTRY_VERIFY(status().keysHidden);
    QTRY_COMPARE(bareKeys().size(), 3);
    m_prompt->resetCount();
    QVERIFY(change(StoreChange::ShowKeys));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().purpose, Trivex::Purpose::Look);
    QTRY_COMPARE(bareKeys().size(), 4);
    QVERIFY(!bareKey("hidden").id.isEmpty());
}

void TestBareKeys::aRefusedPinShowsNothing()
{
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKeys().size(), 3);
    m_prompt->setPin({});
    m_token->forget();
    QVERIFY(!change(StoreChange::ShowKeys));
    QVERIFY(!remove("bare"));
    QCOMPARE(m_token->count("C_Login"), 0);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(bareKeys().size(), 3);
    m_prompt->setPin(TestToken::pin());
    QVERIFY(change(StoreChange::ShowKeys));
}

void TestBareKeys::certificateComesAndGoes()
{
    const TokenKeyFacts before = bareKey("twin");
    const QCA::PrivateKey key = Trivex::tokenKeyOfId(m_storeId, before.id);
    const QString entryId = issueAndImport(key, QStringLiteral("/CN=Twin"));
    QVERIFY(!entryId.isEmpty());
    QTRY_VERIFY(bareKey("twin").id.isEmpty());
    const QVector<TokenKeyFacts> all = status().keyFacts;
    const auto owned = std::find_if(all.begin(), all.end(),
                                    [&](const TokenKeyFacts &one) { return one.id == before.id; });
    QVERIFY(owned != all.end());
    QCOMPARE(owned->entryId, entryId);
    // By another program, the key stays.
    QVERIFY(m_token->token().removeObject(QStringLiteral("cert"), QStringLiteral("02")));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKey("twin").id, before.id);
}

void TestBareKeys::factsOfTheToken()
{
    const TokenStatus now = status();
    QCOMPARE(now.facts.label, StoreName);
    QVERIFY(now.facts.needsLogin);
    QVERIFY(now.facts.hasUserPin);
    QVERIFY(!now.facts.hardware.isEmpty());
    QCOMPARE(now.certificates, 1);
}

void TestBareKeys::abilities()
{
    m_token->forget();
    QVERIFY(m_token->replug(m_storeId));
    // Nobody asked: a listing does without.
    QVERIFY(!TokenMonitor::look(m_storeId).isTaken);
    QCOMPARE(m_token->count("C_GetMechanismList"), 0);
    TokenMonitor::takeLook(m_storeId);
    QTRY_VERIFY(TokenMonitor::look(m_storeId).isTaken);
    const Trivex::TokenLook look = TokenMonitor::look(m_storeId);
    QVERIFY(look.mechanisms > 10);
    const auto rsa = std::find_if(
        look.abilities.begin(), look.abilities.end(),
        [](const Trivex::TokenAbility &one) { return one.kind == Trivex::TokenAbility::Rsa; });
    QVERIFY(rsa != look.abilities.end());
    QVERIFY(rsa->makes && rsa->signs && rsa->decrypts);
    QVERIFY(rsa->largest >= 4096);
    QCOMPARE(m_prompt->count(), 0);
    QVERIFY(m_errors.isEmpty());
}

void TestBareKeys::lookThatFails()
{
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(!TokenMonitor::look(m_storeId).isTaken);
    m_token->control("fail C_GetMechanismList * CKR_FUNCTION_FAILED");
    m_token->forget();
    TokenMonitor::takeLook(m_storeId);
    QTRY_VERIFY(m_token->count("C_GetMechanismList") > 0);
    QTRY_VERIFY(!status().busy);
    QVERIFY(!TokenMonitor::look(m_storeId).isTaken);
    QVERIFY(status().present);
    // Nobody is shown an error for what nobody waits for.
    QTest::qWait(50);
    QVERIFY(m_errors.isEmpty());
}

/// Of two pairs that are alike in all but their public halves nobody knows which private half would
/// sign.
void TestBareKeys::guessedKeyIsNotUsed()
{
    TestToken &token = m_token->token();
    const QString id = QStringLiteral("0c");
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), id, QStringLiteral("pair")));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_VERIFY(!bareKey("pair").id.isEmpty());
    QCA::PrivateKey early = Trivex::tokenKeyOfId(m_storeId, bareKey("pair").id);
    QVERIFY(!signature(early).isEmpty());
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), id, QStringLiteral("pair")));
    QVERIFY(m_token->replug(m_storeId));
    // Taken before the login has shown that there are two.
    QTRY_VERIFY(!bareKey("pair").id.isEmpty());
    QVERIFY(signature(early).isEmpty());
    QTRY_COMPARE(lastError().kind, TokenError::KeyAmbiguous);
    const QVector<TokenKeyFacts> all = bareKeys();
    int pairs = 0;
    for (const TokenKeyFacts &key : all) {
        if (key.label != QLatin1String("pair"))
            continue;
        ++pairs;
        QVERIFY(Trivex::tokenKeyOfId(m_storeId, key.id).isNull());
    }
    QCOMPARE(pairs, 2);
    for (const char *type : {"privkey", "privkey", "pubkey", "pubkey"})
        QVERIFY(removeByOthers(type, id));
    QVERIFY(m_token->replug(m_storeId));
}

void TestBareKeys::manyKeys()
{
    // The same library serves this process once.
    m_store = nullptr;
    m_stores.reset();
    m_prompt.reset();
    m_qca.reset();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.makeKeys(ManyKeys, "many", TestToken::pin()));
    }
    m_token->forget();
    QVERIFY(start(1));
    QTRY_VERIFY(bareKeys().size() >= ManyKeys);
    // A certificate is read by one call, a key by two.
    const int objects = 1 + 2 * (int(bareKeys().size()) + 1);
    QCOMPARE(m_token->count("C_GetAttributeValue"), objects);
    QSet<QString> ids;
    const QVector<TokenKeyFacts> all = bareKeys();
    for (const TokenKeyFacts &key : all)
        ids.insert(key.id);
    QCOMPARE(ids.size(), all.size());
    // All alike: the private half of which one would go, nobody can tell.
    m_token->forget();
    QVERIFY(!remove("many"));
    QTRY_COMPARE(lastError().kind, TokenError::KeyAmbiguous);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
}

QTEST_GUILESS_MAIN(TestBareKeys)
#include "tst_barekeys.moc"
