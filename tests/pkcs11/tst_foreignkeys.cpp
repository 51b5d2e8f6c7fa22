// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QRegularExpression>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Foreign");
/// A private and a public key, their certificate and its issuer's.
constexpr int BundleObjects = 4;

} // namespace

/// Somebody else's pair of keys stands under the id that ours would get: it is not taken for ours,
/// and what undoes or removes ours leaves it alone.
class TestForeignKeys : public TokenFixture {
    Q_OBJECT
public:
    TestForeignKeys()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init() { m_token->control(); }
    void cleanup();
    void import_data();
    void import();

private:
    QByteArray list(const char *type) const
    {
        return m_token->token().tool({QStringLiteral("--list-objects"), QStringLiteral("--type"),
                                      QString::fromLatin1(type)});
    }
    /// How many are labelled so; newer tools show the label in an address as well.
    int theirs(const char *type) const
    {
        static const QRegularExpression line(QStringLiteral("\\n *label: *theirs *\\n"));
        return QString::fromUtf8(list(type)).count(line);
    }
    /// The id of the only private key.
    QString onlyId() const;
    int objects() const { return m_token->token().objectCount(); }
    bool removeBundle();
    /// Whether the signatures of the imported key are those of its certificate.
    bool signsRightly(const QString &entryId);
};

void TestForeignKeys::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    m_token->useInThisProcess();
    QVERIFY(start(0));
}

void TestForeignKeys::cleanup()
{
    m_token->control();
    QVERIFY(removeBundle());
    for (const char *type : {"privkey", "pubkey"})
        m_token->token().tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                               QString::fromLatin1(type), QStringLiteral("--label"),
                               QStringLiteral("theirs")});
    QCOMPARE(objects(), 0);
}

QString TestForeignKeys::onlyId() const
{
    const QString listing = QString::fromUtf8(list("privkey"));
    const auto match = QRegularExpression(QStringLiteral("ID: *([0-9a-fA-F]+)")).match(listing);
    return listing.count(QLatin1String("Private Key Object")) == 1 ? match.captured(1) : QString();
}

bool TestForeignKeys::removeBundle()
{
    const auto entries = m_stores->currentEntries(StoreName);
    return std::all_of(entries.begin(), entries.end(), [this](const QCA::KeyStoreEntry &one) {
        return m_stores->remove(m_store, one.id());
    });
}

bool TestForeignKeys::signsRightly(const QString &entryId)
{
    const QCA::KeyStoreEntry entry = withId(m_stores->currentEntries(StoreName), entryId);
    if (entry.type() != QCA::KeyStoreEntry::TypeKeyBundle)
        return false;
    const QByteArray made = signature(entry.keyBundle().privateKey());
    QCA::PublicKey wanted = entry.keyBundle().certificateChain().primary().subjectPublicKey();
    return wanted.verifyMessage(QByteArray("data"), made, QCA::EMSA3_SHA256, QCA::DefaultFormat);
}

void TestForeignKeys::import_data()
{
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("foreignType");
    QTest::newRow("RSA") << "RSA"
                         << "rsa_keygen_bits:2048"
                         << "rsa:2048";
    QTest::newRow("curve") << "EC"
                           << "ec_paramgen_curve:P-256"
                           << "EC:secp256r1";
    QTest::newRow("RSA, a curve's") << "RSA"
                                    << "rsa_keygen_bits:2048"
                                    << "EC:secp256r1";
}

void TestForeignKeys::import()
{
    QFETCH(QString, algorithm);
    QFETCH(QString, option);
    QFETCH(QString, foreignType);
    const QCA::KeyBundle bundle = makeBundle(algorithm, option, QStringLiteral("/CN=Ours"));
    QVERIFY(!m_stores->write(m_store, bundle).isEmpty());
    const QString id = onlyId();
    QVERIFY(!id.isEmpty());
    QVERIFY(removeBundle());
    QCOMPARE(objects(), 0);
    QVERIFY(m_token->token().generateKeyPair(foreignType, id, QStringLiteral("theirs")));
    const QByteArray foreign = m_token->token().publicKey(id);
    QVERIFY(!foreign.isEmpty());
    const int before = objects();
    // Each write has been made, and is undone.
    for (int call = 1; call <= BundleObjects; ++call) {
        m_token->control("fail-after C_CreateObject " + QByteArray::number(call)
                         + " CKR_DEVICE_MEMORY");
        QCOMPARE(m_stores->write(m_store, bundle), QString());
        QCOMPARE(objects(), before);
        // Nothing of it is listed either.
        QVERIFY(m_stores->currentEntries(StoreName).isEmpty());
        QCOMPARE(m_token->token().publicKey(id), foreign);
    }
    // The login ends behind the private half: it can't be told from theirs by its handle then.
    m_token->control("end-sessions-at C_CreateObject 2");
    QCOMPARE(m_stores->write(m_store, bundle), QString());
    QCOMPARE(theirs("privkey"), 1);
    QCOMPARE(theirs("pubkey"), 1);
    m_token->control();
    const QString entryId = m_stores->write(m_store, bundle);
    QVERIFY(!entryId.isEmpty());
    QCOMPARE(objects() - before, BundleObjects);
    QVERIFY(signsRightly(entryId));
    // A second time adds nothing.
    QCOMPARE(m_stores->write(m_store, bundle), entryId);
    QCOMPARE(objects() - before, BundleObjects);
    QVERIFY(removeBundle());
    QCOMPARE(objects(), before);
    QCOMPARE(m_token->token().publicKey(id), foreign);
}

QTEST_GUILESS_MAIN(TestForeignKeys)
#include "tst_foreignkeys.moc"
