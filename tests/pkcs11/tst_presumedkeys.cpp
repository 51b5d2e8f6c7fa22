// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using Trivex::TokenError;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Presumed");
const QString CurveId = QStringLiteral("02");
constexpr int Certificates = 6;

} // namespace

/// Tokens without public key objects, as cards and other programs leave them: what is shown before
/// a login, and what the login makes of it.
class TestPresumedKeys : public FailureFixture {
    Q_OBJECT
public:
    TestPresumedKeys()
        : FailureFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void beforeLogin();
    void afterLogin();
    void noKeyAfterAll();
    void removalOfOneWithoutKey();
    void unannouncedHiding();
    void nothingIsHidden();
    void unannouncedHidingOfAPair();
    void hidingAgain();
    void publicKeysTell();

private:
    bool addKey(const QString &type, const QString &id, QByteArray *publicInfo);
    bool addCertificate(const QByteArray &der, const QString &id, const char *label);
    bool addCertificates();
    QCA::KeyStoreEntry entry(const char *name) const;
    bool isBundle(const char *name) const;
    /// One letter a certificate: "k" with a key, "c" without, "-" when it is not there.
    QString shown() const;
    bool sign(const char *name) const;

    QString m_storeId;
    QByteArray m_elsewhere;
};

bool TestPresumedKeys::addKey(const QString &type, const QString &id, QByteArray *publicInfo)
{
    TestToken &token = m_token->token();
    if (!token.generateKeyPair(type, id, QStringLiteral("key")))
        return false;
    *publicInfo = token.publicKey(id);
    return token.removeObject(QStringLiteral("pubkey"), id);
}

bool TestPresumedKeys::addCertificate(const QByteArray &der, const QString &id, const char *label)
{
    return !der.isEmpty()
        && m_token->token().writeObject(QStringLiteral("cert"), der, id,
                                        QString::fromLatin1(label));
}

bool TestPresumedKeys::addCertificates()
{
    QByteArray rsa;
    QByteArray curve;
    if (!addKey(QStringLiteral("rsa:2048"), QStringLiteral("01"), &rsa)
        || !addKey(QStringLiteral("EC:secp384r1"), CurveId, &curve))
        return false;
    // Under the id of a person's key, and before that person's certificate.
    const QByteArray authority = m_authority->openssl(
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:P-384"), QStringLiteral("-nodes"),
         QStringLiteral("-keyout"), m_authority->file(QStringLiteral("other.key")),
         QStringLiteral("-subj"), QStringLiteral("/CN=Authority"), QStringLiteral("-outform"),
         QStringLiteral("DER")});
    // Its key is not here.
    m_elsewhere = m_authority->openssl({QStringLiteral("pkey"), QStringLiteral("-in"),
                                        m_authority->file(QStringLiteral("other.key")),
                                        QStringLiteral("-pubout"), QStringLiteral("-outform"),
                                        QStringLiteral("DER")});
    const auto issue = [this](const QByteArray &info, const char *subject) {
        return m_authority->issue(info, QString::fromLatin1(subject));
    };
    return addCertificate(authority, CurveId, "authority")
        && addCertificate(issue(rsa, "/CN=Rsa"), QStringLiteral("01"), "rsa")
        && addCertificate(issue(curve, "/CN=Curve"), CurveId, "curve")
        && addCertificate(issue(curve, "/CN=Renewed"), CurveId, "renewed")
        && addCertificate(m_authority->certificate(), QStringLiteral("04"), "root")
        && addCertificate(issue(m_elsewhere, "/CN=Elsewhere"), QStringLiteral("05"), "elsewhere");
}

void TestPresumedKeys::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addCertificates());
    m_token->useInThisProcess();
    QVERIFY(start(Certificates));
    m_storeId = m_store->id();
}

void TestPresumedKeys::init()
{
    QVERIFY(m_token->replug(m_storeId));
    QVERIFY(m_stores->waitForEntries(StoreName, Certificates));
    countAfresh();
}

QCA::KeyStoreEntry TestPresumedKeys::entry(const char *name) const
{
    return m_stores->entry(StoreName, QString::fromLatin1(name));
}

bool TestPresumedKeys::isBundle(const char *name) const
{
    const QCA::KeyStoreEntry found = entry(name);
    return !found.isNull() && found.type() == QCA::KeyStoreEntry::TypeKeyBundle;
}

QString TestPresumedKeys::shown() const
{
    QString all;
    for (const char *name : {"rsa", "curve", "renewed", "elsewhere", "authority", "root"})
        all += entry(name).isNull() ? QLatin1Char('-') : QLatin1Char(isBundle(name) ? 'k' : 'c');
    return all;
}

bool TestPresumedKeys::sign(const char *name) const
{
    QCA::PrivateKey key = entry(name).keyBundle().privateKey();
    const QByteArray signature =
        key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat);
    return !signature.isEmpty()
        && key.toPublicKey().verifyMessage(QByteArray("data"), signature, QCA::EMSA3_SHA256,
                                           QCA::DefaultFormat);
}

/// Whoever may have a key is usable, and the token says that it is not known yet.
void TestPresumedKeys::beforeLogin()
{
    QTRY_COMPARE(shown(), QStringLiteral("kkkkcc"));
    QVERIFY(TokenMonitor::token(m_storeId).keysPresumed);
    QCOMPARE(m_token->count("C_Login"), 0);
    QCOMPARE(entry("curve").keyBundle().certificateChain().size(), 2);
}

void TestPresumedKeys::afterLogin()
{
    QTRY_COMPARE(shown(), QStringLiteral("kkkkcc"));
    const QString rsaId = entry("rsa").id();
    QVERIFY(sign("rsa"));
    // The one without a key is none any more; of two with one id the authority never had it.
    QTRY_COMPARE(shown(), QStringLiteral("kkkccc"));
    QVERIFY(!TokenMonitor::token(m_storeId).keysPresumed);
    QCOMPARE(entry("rsa").id(), rsaId);
    QVERIFY(sign("curve"));
    QVERIFY(sign("renewed"));
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(m_errors.isEmpty());
}

void TestPresumedKeys::noKeyAfterAll()
{
    QTRY_COMPARE(shown(), QStringLiteral("kkkkcc"));
    QVERIFY(!sign("elsewhere"));
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(m_errors.last().kind, TokenError::NoKey);
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_SignInit"), 0);
    QTRY_COMPARE(shown(), QStringLiteral("kkkccc"));
}

/// Nothing but the certificate goes.
void TestPresumedKeys::removalOfOneWithoutKey()
{
    QTRY_COMPARE(shown(), QStringLiteral("kkkkcc"));
    const QByteArray der = entry("elsewhere").certificate().toDER();
    const int before = m_token->token().objectCount();
    QVERIFY(m_stores->remove(m_stores->byName(StoreName), entry("elsewhere").id()));
    QCOMPARE(m_token->token().objectCount(), before - 1);
    QTRY_COMPARE(shown(), QStringLiteral("kkk-cc"));
    QVERIFY(addCertificate(der, QStringLiteral("05"), "elsewhere"));
}

/// The token hides its keys before a login that its flags say nothing of.
void TestPresumedKeys::unannouncedHiding()
{
    QVERIFY(m_token->replug(m_storeId, "no-login-flag"));
    QTRY_COMPARE(shown(), QStringLiteral("kkkkcc"));
    QVERIFY(TokenMonitor::token(m_storeId).keysPresumed);
    // What is no key needs no login.
    QCA::KeyStore *store = m_stores->byName(StoreName);
    const QByteArray other = m_authority->issue(m_elsewhere, QStringLiteral("/CN=Other"));
    QVERIFY(!m_stores->write(store, QCA::Certificate::fromDER(other)).isEmpty());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    QVERIFY(sign("rsa"));
    QCOMPARE(m_prompt->count(), 1);
    QTRY_COMPARE(shown(), QStringLiteral("kkkccc"));
    QVERIFY(!TokenMonitor::token(m_storeId).keysPresumed);
    QVERIFY(sign("curve"));
    QVERIFY(m_stores->remove(store, entry("Other").id()));
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(m_errors.isEmpty());
}

/// A token that has no PIN can't hide anything behind one.
void TestPresumedKeys::nothingIsHidden()
{
    QVERIFY(m_token->replug(m_storeId, "no-login-flag\nno-pin-flag"));
    QTRY_COMPARE(shown(), QStringLiteral("cccccc"));
    QVERIFY(!TokenMonitor::token(m_storeId).keysPresumed);
}

/// Its public half is all that shows of a pair; a removal takes the other half along.
void TestPresumedKeys::unannouncedHidingOfAPair()
{
    TestToken &token = m_token->token();
    const QString id = QStringLiteral("09");
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("pair")));
    QVERIFY(addCertificate(m_authority->issue(token.publicKey(id), QStringLiteral("/CN=Pair")), id,
                           "pair"));
    QVERIFY(m_token->replug(m_storeId, "no-login-flag"));
    QTRY_VERIFY(isBundle("pair"));
    QVERIFY(!TokenMonitor::token(m_storeId).keysPresumed);
    QVERIFY(sign("pair"));
    QVERIFY(m_token->replug(m_storeId, "no-login-flag"));
    QTRY_VERIFY(isBundle("pair"));
    const int before = token.objectCount();
    QVERIFY(m_stores->remove(m_stores->byName(StoreName), entry("pair").id()));
    QCOMPARE(token.objectCount(), before - 3);
    QCOMPARE(m_prompt->count(), 2);
    QVERIFY(m_errors.isEmpty());
}

/// What a login has shown hides when that ends, and is asked for again.
void TestPresumedKeys::hidingAgain()
{
    TestToken &token = m_token->token();
    const QString id = QStringLiteral("0a");
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("again")));
    QVERIFY(addCertificate(m_authority->issue(token.publicKey(id), QStringLiteral("/CN=Again")), id,
                           "again"));
    QVERIFY(m_token->replug(m_storeId, "no-login-flag"));
    QTRY_VERIFY(isBundle("again"));
    QVERIFY(sign("again"));
    const int before = token.objectCount();
    m_token->control("no-login-flag\nlogout-at C_GetSessionInfo 1");
    QVERIFY(m_stores->remove(m_stores->byName(StoreName), entry("again").id()));
    QCOMPARE(token.objectCount(), before - 3);
    QCOMPARE(m_prompt->count(), 2);
    QVERIFY(m_errors.isEmpty());
}

/// Where any key has a public key object, a certificate without one stays what it is.
void TestPresumedKeys::publicKeysTell()
{
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("09"),
                                             QStringLiteral("bare")));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_COMPARE(shown(), QStringLiteral("cccccc"));
    QVERIFY(!TokenMonitor::token(m_storeId).keysPresumed);
}

QTEST_GUILESS_MAIN(TestPresumedKeys)
#include "tst_presumedkeys.moc"
