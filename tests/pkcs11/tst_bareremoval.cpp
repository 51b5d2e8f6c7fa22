// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "tests/pkcs11/barekeyfixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using Trivex::StoreChange;
using Trivex::TokenError;
using Trivex::TokenKeyFacts;

namespace {

const QString StoreName = QStringLiteral("Removal");

} // namespace

/// Keys without a certificate are removed, on a token that fails in the middle, and where nobody
/// knows which halves belong together.
class TestBareRemoval : public BareKeyFixture {
    Q_OBJECT
public:
    TestBareRemoval()
        : BareKeyFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void keysOfCertificatesStay();
    void certificateOfAnotherProgram();
    void halfARemoval();
    void halfARemovalOfAnotherKind();
    void removalWithoutToken();
    void removalOnReadOnly();
    void removed();
    void keysOfOneIdByTheirNames();
    void oldIdNamesNoOtherKey();
    void certificateOfAGuessedKey();

private:
    /// Keys on P-256 of that id and those names, whose public halves are not on the token.
    bool makeWithoutPublicHalf(const QString &id, const QStringList &labels);
};

void TestBareRemoval::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeBareToken());
    m_token->useInThisProcess();
    QVERIFY(startBare());
    QVERIFY(signs()); // which logs in
}

void TestBareRemoval::init()
{
    resetToken();
}

/// A key with a certificate is removed as its entry only.
void TestBareRemoval::keysOfCertificatesStay()
{
    const QVector<TokenKeyFacts> all = status().keyFacts;
    const auto owned = std::find_if(all.begin(), all.end(),
                                    [](const TokenKeyFacts &key) { return !key.isBare(); });
    QVERIFY(owned != all.end());
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, owned->id));
    QTRY_COMPARE(lastError().kind, TokenError::NotFound);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QCOMPARE(m_prompt->count(), 0);
}

/// Written since the token was read: the key is not bare any more.
void TestBareRemoval::certificateOfAnotherProgram()
{
    TestToken &token = m_token->token();
    const QByteArray der =
        m_authority->issue(bareKey("bare").publicInfo, QStringLiteral("/CN=Foreign"));
    QVERIFY(token.writeObject(QStringLiteral("cert"), der, QStringLiteral("77"),
                              QStringLiteral("foreign")));
    const QString id = bareKey("bare").id;
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_COMPARE(lastError().kind, TokenError::NotFound);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    // Seen now, because the removal has looked.
    QTRY_COMPARE(m_stores->entries(StoreName).size(), 2);
    const QCA::KeyStoreEntry entry = m_stores->entry(StoreName, QStringLiteral("foreign"));
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(token.removeObject(QStringLiteral("cert"), QStringLiteral("77")));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(bareKey("bare").id, id);
}

void TestBareRemoval::halfARemoval()
{
    for (const int call : {1, 2}) {
        m_token->control("fail C_DestroyObject " + QByteArray::number(call)
                         + " CKR_FUNCTION_FAILED");
        QVERIFY(!remove("twin"));
        QTRY_COMPARE(lastError().kind, TokenError::DeviceFailure);
        QCOMPARE(lastError().purpose, Trivex::Purpose::Remove);
        m_token->control();
        QCOMPARE(halves("twin"), 2);
        QVERIFY(!bareKey("twin").id.isEmpty());
        const QCA::PrivateKey key = Trivex::tokenKeyOfId(m_storeId, bareKey("twin").id);
        QVERIFY(!signature(key).isEmpty());
    }
}

/// A kind that is not imported, but made on tokens.
void TestBareRemoval::halfARemovalOfAnotherKind()
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

void TestBareRemoval::removalWithoutToken()
{
    const QString id = bareKey("twin").id;
    m_token->control("remove-at C_DestroyObject 1");
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_VERIFY(!status().present);
    QVERIFY(status().keyFacts.isEmpty());
    QVERIFY(!change(StoreChange::RemoveKey, id));
    QTRY_COMPARE(lastError().kind, TokenError::TokenRemoved);
    m_token->control();
    QTRY_VERIFY(status().present && !status().loading);
    QCOMPARE(bareKey("twin").id, id);
    QCOMPARE(halves("twin"), 2);
}

void TestBareRemoval::removalOnReadOnly()
{
    m_token->control("read-only");
    m_prompt->resetCount();
    QVERIFY(!remove("twin"));
    QTRY_COMPARE(lastError().kind, TokenError::ReadOnly);
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(halves("twin"), 2);
}

void TestBareRemoval::removed()
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

/// Private keys on curves often do not show which public half is theirs.
void TestBareRemoval::keysOfOneIdByTheirNames()
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

bool TestBareRemoval::makeWithoutPublicHalf(const QString &id, const QStringList &labels)
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

void TestBareRemoval::oldIdNamesNoOtherKey()
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
        QTRY_COMPARE(lastError().kind, TokenError::KeyAmbiguous);
    }
    // Another program takes one of them: the other one is not what the list has shown.
    QVERIFY(removeByOthers("privkey", id));
    for (const QString &one : qAsConst(shown)) {
        m_errors.clear();
        QVERIFY(!change(StoreChange::RemoveKey, one));
        QTRY_COMPARE(lastError().kind, TokenError::NotFound);
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

/// Two keys may be the one of a certificate: removing that takes neither of them.
void TestBareRemoval::certificateOfAGuessedKey()
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
    QTRY_COMPARE(lastError().kind, TokenError::KeyAmbiguous);
    QCOMPARE(m_token->token().objectCount(), before);
    for (const char *type : {"privkey", "privkey", "cert"})
        QVERIFY(removeByOthers(type, id));
    QVERIFY(m_token->replug(m_storeId));
}

QTEST_GUILESS_MAIN(TestBareRemoval)
#include "tst_bareremoval.moc"
