// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSet>

#include <atomic>

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

/// Keys without a certificate and what else is told of a token: seen, used for a signature,
/// removed, on a token that hides them and on one that fails in the middle.
class TestBareKeys : public TokenFixture {
    Q_OBJECT
public:
    TestBareKeys()
        : TokenFixture(StoreName)
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
    void keysOfCertificatesStay();
    void certificateOfAnotherProgram();
    void halfARemoval();
    void halfARemovalOfAnotherKind();
    void removalWithoutToken();
    void removalOnReadOnly();
    void removed();
    void factsOfTheToken();
    void abilities();
    void lookThatFails();
    void keysOfOneIdByTheirNames();
    void oldIdNamesNoOtherKey();
    void guessedKeyIsNotUsed();
    void certificateOfAGuessedKey();
    void manyKeys();

private:
    /// Keys on P-256 of that id and those names, whose public halves are not on the token.
    bool makeWithoutPublicHalf(const QString &id, const QStringList &labels);
    bool removeByOthers(const char *type, const QString &id);

    QVector<TokenKeyFacts> bareKeys() const;
    TokenKeyFacts bareKey(const char *label) const;
    TokenStatus status() const { return TokenMonitor::token(m_storeId); }
    bool change(StoreChange::Kind kind, const QString &keyId = {});
    bool remove(const char *label) { return change(StoreChange::RemoveKey, bareKey(label).id); }
    TokenError::Kind lastError() const
    {
        return m_errors.isEmpty() ? TokenError::NoError : m_errors.last().kind;
    }
    /// Keys of this label on the token itself, of both halves.
    int halves(const char *label) const;

    TokenMonitor m_monitor;
    QList<TokenError> m_errors;
    QString m_storeId;
};

void TestBareKeys::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    TestToken &token = m_token->token();
    QVERIFY(addSigner());
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("02"),
                                  QStringLiteral("bare")));
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp384r1"), QStringLiteral("02"),
                                  QStringLiteral("twin")));
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), QStringLiteral("03"),
                                  QStringLiteral("hidden")));
    QVERIFY(!token
                 .tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                        QStringLiteral("pubkey"), QStringLiteral("--id"), QStringLiteral("03")})
                 .isNull());
    m_token->useInThisProcess();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.makeKeys(1, OddLabel, TestToken::pin()));
    }
    connect(&m_monitor, &TokenMonitor::failed, this,
            [this](const TokenError &error) { m_errors.append(error); });
    QVERIFY(start(1));
    m_storeId = m_store->id();
}

void TestBareKeys::init()
{
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    m_prompt->resetCount();
    m_errors.clear();
}

QVector<TokenKeyFacts> TestBareKeys::bareKeys() const
{
    QVector<TokenKeyFacts> bare;
    const QVector<TokenKeyFacts> all = status().keyFacts;
    for (const TokenKeyFacts &key : all) {
        if (key.isBare())
            bare.append(key);
    }
    return bare;
}

TokenKeyFacts TestBareKeys::bareKey(const char *label) const
{
    const QVector<TokenKeyFacts> all = bareKeys();
    for (const TokenKeyFacts &key : all) {
        if (key.label == QLatin1String(label))
            return key;
    }
    return {};
}

bool TestBareKeys::change(StoreChange::Kind kind, const QString &keyId)
{
    struct Outcome {
        std::atomic<bool> isOver = false;
        std::atomic<bool> succeeded = false;
    };
    const auto outcome = std::make_shared<Outcome>();
    StoreChange change;
    change.kind = kind;
    change.entryId = keyId;
    const bool isKnown = Trivex::startStoreChange(
        m_storeId, change, [outcome](const Trivex::StoreChangeResult &result) {
            outcome->succeeded = result.succeeded;
            outcome->isOver = true;
        });
    return isKnown && QTest::qWaitFor([&] { return outcome->isOver.load(); }, 20000)
        && outcome->succeeded;
}

int TestBareKeys::halves(const char *label) const
{
    const QByteArray all = m_token->token().tool({QStringLiteral("--list-objects")});
    return all.count(QByteArray("label:      ") + label + '\n');
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
    QVERIFY(!m_token->token()
                 .tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                        QStringLiteral("cert"), QStringLiteral("--id"), QStringLiteral("02")})
                 .isNull());
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKey("twin").id, before.id);
}

/// A key with a certificate is removed as its entry only.
void TestBareKeys::keysOfCertificatesStay()
{
    const QVector<TokenKeyFacts> all = status().keyFacts;
    const auto owned = std::find_if(all.begin(), all.end(),
                                    [](const TokenKeyFacts &key) { return !key.isBare(); });
    QVERIFY(owned != all.end());
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, owned->id));
    QTRY_COMPARE(lastError(), TokenError::NotFound);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(m_prompt->count(), 0);
}

/// Written since the token was read: the key is not bare any more.
void TestBareKeys::certificateOfAnotherProgram()
{
    TestToken &token = m_token->token();
    const QByteArray der =
        m_authority->issue(bareKey("bare").publicInfo, QStringLiteral("/CN=Foreign"));
    QVERIFY(token.writeObject(QStringLiteral("cert"), der, QStringLiteral("77"),
                              QStringLiteral("foreign")));
    const QString id = bareKey("bare").id;
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_COMPARE(lastError(), TokenError::NotFound);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    // Seen now, because the removal has looked.
    QTRY_COMPARE(m_stores->entries(StoreName).size(), 2);
    const QCA::KeyStoreEntry entry = m_stores->entry(StoreName, QStringLiteral("foreign"));
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(!token
                 .tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                        QStringLiteral("cert"), QStringLiteral("--id"), QStringLiteral("77")})
                 .isNull());
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKey("bare").id, id);
}

void TestBareKeys::halfARemoval()
{
    for (const int call : {1, 2}) {
        m_token->control("fail C_DestroyObject " + QByteArray::number(call)
                         + " CKR_FUNCTION_FAILED");
        QVERIFY(!remove("twin"));
        QTRY_COMPARE(lastError(), TokenError::DeviceFailure);
        QCOMPARE(m_errors.last().purpose, Trivex::Purpose::Remove);
        m_token->control();
        QCOMPARE(halves("twin"), 2);
        QVERIFY(!bareKey("twin").id.isEmpty());
        const QCA::PrivateKey key = Trivex::tokenKeyOfId(m_storeId, bareKey("twin").id);
        QVERIFY(!signature(key).isEmpty());
    }
}

/// A kind that is not imported, but made on tokens.
void TestBareKeys::halfARemovalOfAnotherKind()
{
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("EC:edwards25519"),
                                             QStringLiteral("0a"), QStringLiteral("edwards")));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(change(StoreChange::ShowKeys));
    QTRY_VERIFY(!bareKey("edwards").id.isEmpty());
    const TokenKeyFacts before = bareKey("edwards");
    QVERIFY(!before.publicInfo.isEmpty());
    m_token->control("fail C_DestroyObject 2 CKR_FUNCTION_FAILED");
    QVERIFY(!remove("edwards"));
    m_token->control();
    QCOMPARE(halves("edwards"), 2);
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKey("edwards").publicInfo, before.publicInfo);
    QVERIFY(remove("edwards"));
    QCOMPARE(halves("edwards"), 0);
}

void TestBareKeys::removalWithoutToken()
{
    const QString id = bareKey("twin").id;
    m_token->control("remove-at C_DestroyObject 1");
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_VERIFY(!status().present);
    QVERIFY(status().keyFacts.isEmpty());
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_COMPARE(lastError(), TokenError::TokenRemoved);
    m_token->control();
    QTRY_VERIFY(status().present && !status().loading);
    QCOMPARE(bareKey("twin").id, id);
    QCOMPARE(halves("twin"), 2);
}

void TestBareKeys::removalOnReadOnly()
{
    m_token->control("read-only");
    m_prompt->resetCount();
    QVERIFY(!remove("twin"));
    QTRY_COMPARE(lastError(), TokenError::ReadOnly);
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(halves("twin"), 2);
}

void TestBareKeys::removed()
{
    const int before = m_token->token().objectCount();
    QVERIFY(remove("twin"));
    QTRY_VERIFY(bareKey("twin").id.isEmpty());
    QCOMPARE(halves("twin"), 0);
    QCOMPARE(m_token->token().objectCount(), before - 2);
    // The other one of the same id.
    QCOMPARE(halves("bare"), 2);
    QVERIFY(!bareKey("bare").id.isEmpty());
    QVERIFY(signs());
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

/// Private keys on curves often do not show which public half is theirs.
void TestBareKeys::keysOfOneIdByTheirNames()
{
    TestToken &token = m_token->token();
    for (const char *label : {"left", "middle", "right"})
        QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), QStringLiteral("09"),
                                      QString::fromLatin1(label)));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(change(StoreChange::ShowKeys));
    QTRY_VERIFY(!bareKey("middle").id.isEmpty());
    QVERIFY(remove("left"));
    QCOMPARE(halves("left"), 0);
    QCOMPARE(halves("middle"), 2);
    QCOMPARE(halves("right"), 2);
    for (const char *label : {"middle", "right"}) {
        QCA::PrivateKey key = Trivex::tokenKeyOfId(m_storeId, bareKey(label).id);
        const QByteArray made =
            key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat);
        QVERIFY(key.toPublicKey().verifyMessage(QByteArray("data"), made, QCA::EMSA3_SHA256,
                                                QCA::DefaultFormat));
    }
    QVERIFY(remove("middle"));
    QVERIFY(remove("right"));
}

bool TestBareKeys::removeByOthers(const char *type, const QString &id)
{
    return !m_token->token()
                .tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                       QString::fromLatin1(type), QStringLiteral("--id"), id})
                .isNull();
}

bool TestBareKeys::makeWithoutPublicHalf(const QString &id, const QStringList &labels)
{
    for (const QString &label : labels) {
        if (!m_token->token().generateKeyPair(QStringLiteral("EC:secp256r1"), id, label))
            return false;
    }
    for (int i = 0; i < labels.size(); ++i) {
        if (!removeByOthers("pubkey", id))
            return false;
    }
    return m_token->replug(m_storeId) && change(StoreChange::ShowKeys);
}

void TestBareKeys::oldIdNamesNoOtherKey()
{
    const QString id = QStringLiteral("0a");
    QVERIFY(makeWithoutPublicHalf(id, {QStringLiteral("alike"), QStringLiteral("alike")}));
    QTRY_VERIFY(!bareKey("alike").id.isEmpty());
    QStringList shown;
    const QVector<TokenKeyFacts> both = bareKeys();
    for (const TokenKeyFacts &key : both) {
        if (key.label == QLatin1String("alike"))
            shown += key.id;
    }
    QCOMPARE(shown.size(), 2);
    QVERIFY(shown.first() != shown.last());
    m_token->forget();
    for (const QString &one : qAsConst(shown)) {
        QVERIFY(!change(StoreChange::RemoveKey, one));
        QTRY_COMPARE(lastError(), TokenError::KeyAmbiguous);
    }
    // Another program takes one of them: the other one is not what the list has shown.
    QVERIFY(removeByOthers("privkey", id));
    for (const QString &one : qAsConst(shown)) {
        m_errors.clear();
        QVERIFY(!change(StoreChange::RemoveKey, one));
        QTRY_COMPARE(lastError(), TokenError::NotFound);
    }
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(halves("alike"), 1);
    // As it is shown now, it can be removed.
    QTRY_VERIFY(!shown.contains(bareKey("alike").id) && !bareKey("alike").id.isEmpty());
    const QString alone = bareKey("alike").id;
    QVERIFY(makeWithoutPublicHalf(id, {QStringLiteral("alike")}));
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, alone));
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(halves("alike"), 2);
    QVERIFY(removeByOthers("privkey", id));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(change(StoreChange::ShowKeys));
    QTRY_COMPARE(bareKey("alike").id, alone);
    QVERIFY(remove("alike"));
    QCOMPARE(halves("alike"), 0);
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
    QTRY_COMPARE(lastError(), TokenError::KeyAmbiguous);
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

/// Two keys may be the one of a certificate: removing that takes neither of them.
void TestBareKeys::certificateOfAGuessedKey()
{
    TestToken &token = m_token->token();
    const QString id = QStringLiteral("0b");
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp256r1"), id, QStringLiteral("own")));
    const QByteArray der = m_authority->issue(token.publicKey(id), QStringLiteral("/CN=Guessed"));
    QVERIFY(token.writeObject(QStringLiteral("cert"), der, id, QStringLiteral("guessed")));
    QVERIFY(removeByOthers("pubkey", id));
    QVERIFY(makeWithoutPublicHalf(id, {QStringLiteral("other")}));
    const int before = m_token->token().objectCount();
    QCA::KeyStoreEntry entry;
    // Its key shows with the login.
    QTRY_VERIFY(!(entry = m_stores->entry(StoreName, QStringLiteral("guessed"))).isNull()
                && entry.type() == QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(!m_stores->remove(m_store, entry.id()));
    QTRY_COMPARE(lastError(), TokenError::KeyAmbiguous);
    QCOMPARE(m_token->token().objectCount(), before);
    for (const char *type : {"privkey", "privkey", "cert"})
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
    QTRY_VERIFY_WITH_TIMEOUT(bareKeys().size() >= ManyKeys, 30000);
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
    QTRY_COMPARE(lastError(), TokenError::KeyAmbiguous);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
}

QTEST_GUILESS_MAIN(TestBareKeys)
#include "tst_barekeys.moc"
