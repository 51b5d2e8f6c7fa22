// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/barekeyfixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using Trivex::StoreChange;
using Trivex::TokenError;

namespace {

const QString StoreName = QStringLiteral("Unread");

/// That one call and the next, so that an object counts as one that can't be read.
QByteArray unreadAt(int call)
{
    QByteArray orders;
    for (const int each : {call, call + 1})
        orders += "fail C_GetAttributeValue " + QByteArray::number(each) + " CKR_FUNCTION_FAILED\n";
    return orders;
}

/// The same of the questions after values, which are those of certificates.
QByteArray unreadCertificateAt(int question)
{
    QByteArray orders;
    for (const int each : {question, question + 1})
        orders += "lie CKA_VALUE " + QByteArray::number(each) + " fails\n";
    return orders;
}

} // namespace

/// An object that the module fails to read is left out of the list. It is there all the same:
/// nothing is removed or written a second time because it is not seen.
class TestUnreadObjects : public BareKeyFixture {
    Q_OBJECT
public:
    TestUnreadObjects()
        : BareKeyFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void keyWhoseCertificateIsUnread();
    void keyOfTwoCertificates();
    void certificateThatIsThere();
    void halfThatIsThere();
    void pairBesideAnUnreadKey();
    void keyThatIsReadTheSecondTime();
    void halfThatDoesNotShow();

private:
    /// A certificate of that key, by another program; its bytes.
    QByteArray addCertificate(const QByteArray &publicInfo, const QString &id, const QString &name);
    bool isListed(const QString &name) const { return !m_stores->entry(StoreName, name).isNull(); }
    /// Takes the token out and puts it back, so that this certificate is not read. The question
    /// that has to fail; 0 if none does it.
    int leaveOut(const QString &name, int certificates);
    int objects() const { return m_token->token().objectCount(); }
};

void TestUnreadObjects::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeBareToken());
    m_token->useInThisProcess();
    QVERIFY(startBare());
}

void TestUnreadObjects::init()
{
    resetToken();
}

QByteArray TestUnreadObjects::addCertificate(const QByteArray &publicInfo, const QString &id,
                                             const QString &name)
{
    const QByteArray der = m_authority->issue(publicInfo, QStringLiteral("/CN=") + name);
    return m_token->token().writeObject(QStringLiteral("cert"), der, id, name) ? der : QByteArray();
}

int TestUnreadObjects::leaveOut(const QString &name, int certificates)
{
    for (int question = 1; question <= certificates; ++question) {
        if (!m_token->replug(m_storeId, unreadCertificateAt(question)))
            return 0;
        const auto all = m_stores->currentEntries(StoreName);
        const bool isThere = std::any_of(all.begin(), all.end(),
                                         [&](const auto &entry) { return entry.name() == name; });
        if (all.size() == certificates - 1 && !isThere)
            return question;
    }
    return 0;
}

/// It only looks as if it had none.
void TestUnreadObjects::keyWhoseCertificateIsUnread()
{
    const QString id = QStringLiteral("77");
    const QString name = QStringLiteral("foreign");
    QVERIFY(change(StoreChange::ShowKeys));
    QVERIFY(!addCertificate(bareKey("bare").publicInfo, id, name).isEmpty());
    const int question = leaveOut(name, 2);
    QVERIFY(question > 0);
    QVERIFY(change(StoreChange::ShowKeys));
    QTRY_VERIFY(!bareKey("bare").id.isEmpty());
    const QString keyId = bareKey("bare").id;
    const int before = objects();
    m_token->control(unreadCertificateAt(question));
    m_token->forget();
    QVERIFY(!change(StoreChange::RemoveKey, keyId));
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QTRY_COMPARE(lastError().kind, TokenError::DeviceFailure);
    QCOMPARE(objects(), before);
    // Read again, it is no bare key.
    m_token->control();
    QVERIFY(!change(StoreChange::RemoveKey, keyId));
    QTRY_COMPARE(lastError().kind, TokenError::NotFound);
    QCOMPARE(objects(), before);
    QVERIFY(m_token->token().removeObject(QStringLiteral("cert"), id));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, 1, 30000));
}

/// The one that is removed must not take the key from the one that is not seen.
void TestUnreadObjects::keyOfTwoCertificates()
{
    const QString id = QStringLiteral("01");
    const QByteArray publicInfo = m_token->token().publicKey(id);
    QVERIFY(!publicInfo.isEmpty());
    const QString name = QStringLiteral("second");
    QVERIFY(!addCertificate(publicInfo, id, name).isEmpty());
    const int question = leaveOut(QStringLiteral("signer"), 2);
    QVERIFY(question > 0);
    QTRY_VERIFY(isListed(name));
    QVERIFY(change(StoreChange::ShowKeys)); // so that the first question is that of the removal
    const int before = objects();
    const QString entryId = m_stores->entry(StoreName, name).id();
    m_token->control(unreadCertificateAt(question));
    QVERIFY(!m_stores->remove(m_store, entryId));
    QTRY_COMPARE(lastError().kind, TokenError::DeviceFailure);
    QCOMPARE(objects(), before);
    m_token->control();
    QVERIFY(m_stores->remove(m_store, entryId));
    QCOMPARE(objects(), before - 1);
    QTRY_VERIFY(!isListed(name) && isListed(QStringLiteral("signer")));
    QVERIFY(signs());
}

void TestUnreadObjects::certificateThatIsThere()
{
    const QString id = QStringLiteral("78");
    const QString name = QStringLiteral("there");
    QVERIFY(change(StoreChange::ShowKeys));
    const QByteArray der = addCertificate(bareKey("bare").publicInfo, id, name);
    QVERIFY(leaveOut(name, 2) > 0);
    QVERIFY(change(StoreChange::ShowKeys)); // so that the first call is that of the writing
    const int before = objects();
    m_token->control(unreadAt(1));
    QVERIFY(!m_stores->write(m_store, QCA::Certificate::fromDER(der)).isEmpty());
    QCOMPARE(objects(), before);
    QTRY_VERIFY(isListed(name));
    QVERIFY(m_token->token().removeObject(QStringLiteral("cert"), id));
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, 1, 30000));
}

/// Whatever can't be read while a pair is written once more, nothing is written twice, and nothing
/// of what was there is taken back with what was not written.
void TestUnreadObjects::halfThatIsThere()
{
    const QCA::KeyBundle bundle = makeBundle(
        QStringLiteral("RSA"), QStringLiteral("rsa_keygen_bits:2048"), QStringLiteral("/CN=Pair"));
    QVERIFY(!m_stores->write(m_store, bundle).isEmpty());
    const int before = objects();
    constexpr int Calls = 10;
    for (int call = 1; call <= Calls; ++call) {
        m_token->control(unreadAt(call));
        m_stores->write(m_store, bundle);
        m_token->control();
        QCOMPARE(objects(), before);
    }
    m_token->control(unreadAt(1) + "fail C_CreateObject 2 CKR_FUNCTION_FAILED\n");
    m_stores->write(m_store, bundle);
    m_token->control();
    QCOMPARE(objects(), before);
}

/// What can't be read may be the key that is to be written, under an id that nobody expects.
void TestUnreadObjects::pairBesideAnUnreadKey()
{
    QVERIFY(removeOthers());
    const QCA::KeyBundle bundle = makeBundle(
        QStringLiteral("RSA"), QStringLiteral("rsa_keygen_bits:2048"), QStringLiteral("/CN=New"));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_VERIFY(status().isRead && !status().loading);
    const int before = objects();
    m_token->control("lie CKA_EC_POINT * fails\n"); // of the only key on a curve
    m_token->forget();
    QVERIFY(m_stores->write(m_store, bundle).isEmpty());
    QTRY_COMPARE(lastError().kind, TokenError::DeviceFailure);
    QCOMPARE(m_token->count("C_CreateObject"), 0);
    QCOMPARE(objects(), before);
    // Read at last, it is another key.
    m_token->control();
    QVERIFY(!m_stores->write(m_store, bundle).isEmpty());
    QVERIFY(removeOthers());
}

/// A card that fails once shows its key all the same.
void TestUnreadObjects::keyThatIsReadTheSecondTime()
{
    const QString id = QStringLiteral("79");
    const QString name = QStringLiteral("again");
    QVERIFY(change(StoreChange::ShowKeys));
    QTRY_VERIFY(!bareKey("twin").id.isEmpty());
    QVERIFY(!addCertificate(bareKey("twin").publicInfo, id, name).isEmpty());
    QVERIFY(m_token->replug(m_storeId, "lie CKA_EC_POINT 1 fails\n"));
    QTRY_VERIFY(isListed(name));
    QCOMPARE(m_stores->entry(StoreName, name).type(), QCA::KeyStoreEntry::TypeKeyBundle);
}

/// A module that never tells of a login shows a pair by its public half. Without the other one it
/// is not removed: that may be hidden still, and would stay where nobody sees it.
void TestUnreadObjects::halfThatDoesNotShow()
{
    const QString id = QStringLiteral("0b");
    const QString name = QStringLiteral("half");
    const TestToken &token = m_token->token();
    QVERIFY(token.generateKeyPair(QStringLiteral("EC:secp384r1"), id, name));
    QVERIFY(!addCertificate(token.publicKey(id), id, name).isEmpty());
    QVERIFY(removeByOthers("privkey", id));
    QVERIFY(m_token->replug(m_storeId, "no-login-state\n"));
    QTRY_VERIFY(isListed(name));
    const QCA::KeyStoreEntry entry = m_stores->entry(StoreName, name);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    const int before = objects();
    m_token->forget();
    QVERIFY(!m_stores->remove(m_store, entry.id()));
    QVERIFY(m_token->count("C_Login") > 0);
    QCOMPARE(m_token->count("C_DestroyObject"), 0);
    QTRY_COMPARE(lastError().kind, TokenError::NotLoggedIn);
    QCOMPARE(objects(), before);
}

QTEST_GUILESS_MAIN(TestUnreadObjects)
#include "tst_unreadobjects.moc"
