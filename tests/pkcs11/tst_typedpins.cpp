// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What reaches the token of the PINs that a person gives through a signer, by the calls of the
// module: each login uses up a try when its PIN is wrong.
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/keygenerator.h"
#include "qca/tokens/tokens.h"
#include "signing/signverify.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/locations.h"
#include "tests/support/needtokens.h"
#include "tests/support/shortpauses.h"
#include "tests/support/testcertificates.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Typed");
const QString BundlePassword = QStringLiteral("x");
constexpr int Patience = 60000; // ms
/// In which a login that nobody asked for would show itself.
constexpr int Silence = 300; // ms

QString pinFor(const QString &answer)
{
    return answer == QLatin1String("right") ? QString::fromLatin1(TestToken::pin())
                                            : QStringLiteral("000000");
}

} // namespace

class TestTypedPins : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void oneLoginForEach_data();
    void oneLoginForEach();
    void aSignersPinIsNoneForWrites_data();
    void aSignersPinIsNoneForWrites();

private:
    /// Does it to the end; true when it succeeded.
    bool perform(const QString &operation);
    bool import(const QString &operation);
    bool removal();
    bool generation();
    bool signature();
    KeyStoreEntry *entry(const QString &name) const;

    QTemporaryDir m_home;
    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<KeyStoreModel> m_model;
    std::unique_ptr<SignVerify> m_signer;
    QString m_storeId;
    QString m_answer; ///< what the person does next: "right", "wrong", "reject"
    int m_asked = 0;
    int m_number = 0;
};

void TestTypedPins::initTestCase()
{
    shortenPauses();
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
    m_token = std::make_unique<FaultyToken>(StoreName);
    TestToken &token = m_token->token();
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.isValid(), qPrintable(token.problem()));
    m_authority = std::make_unique<TestAuthority>();
    QVERIFY(m_authority->isValid());
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                  QStringLiteral("signer")));
    const QByteArray key = token.publicKey(QStringLiteral("01"));
    QVERIFY(token.writeObject(QStringLiteral("cert"),
                              m_authority->issue(key, QStringLiteral("/CN=Signer")),
                              QStringLiteral("01"), QStringLiteral("signer")));
    QVERIFY(token.writeObject(QStringLiteral("cert"),
                              m_authority->issue(key, QStringLiteral("/CN=Spare")),
                              QStringLiteral("02"), QStringLiteral("spare")));
    m_token->useInThisProcess();
    m_qca = std::make_unique<QCA::Initializer>();
    m_model = std::make_unique<KeyStoreModel>();
    QTRY_VERIFY_WITH_TIMEOUT(m_model->keyStoreByName(StoreName) && entry(QStringLiteral("Signer"))
                                 && m_model->certLocation()->rowCount() > 0,
                             Patience);
    QVERIFY(locationOf(*m_model, StoreName) >= 0);
    m_model->setCertLocationId(locationOf(*m_model, StoreName));
    m_storeId = m_model->keyStoreByName(StoreName)->id();
}

/// A token that nobody is logged in to, and that counts its tries.
void TestTypedPins::init()
{
    m_signer = std::make_unique<SignVerify>();
    connect(m_signer.get(), &SignVerify::getPin, this, [this] {
        ++m_asked;
        if (m_answer == QLatin1String("reject"))
            m_signer->pinRejected();
        else
            m_signer->pinAccepted(pinFor(m_answer));
    });
    m_asked = 0;
    m_token->control("remove");
    QTRY_VERIFY_WITH_TIMEOUT(!entry(QStringLiteral("Signer")), Patience);
    m_token->control("tries 3");
    QTRY_VERIFY_WITH_TIMEOUT(
        entry(QStringLiteral("Signer")) && m_model->keyStoreByName(StoreName)->isValid(), Patience);
    m_token->forget();
}

void TestTypedPins::cleanup()
{
    m_signer.reset();
    m_token->control();
}

KeyStoreEntry *TestTypedPins::entry(const QString &name) const
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row);
        if (index.data(KeyStoreModel::NameRole).toString() == name)
            return index.data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
    }
    return nullptr;
}

bool TestTypedPins::perform(const QString &operation)
{
    if (operation == QLatin1String("removal"))
        return removal();
    if (operation == QLatin1String("generation"))
        return generation();
    if (operation == QLatin1String("signature"))
        return signature();
    return import(operation);
}

bool TestTypedPins::import(const QString &operation)
{
    const QString subject = QStringLiteral("/CN=Made %1").arg(++m_number);
    QSignalSpy written(m_model.get(), &KeyStoreModel::entryWrittenChanged);
    if (operation == QLatin1String("bundle")) {
        const QString path =
            m_authority->bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")}, subject,
                                BundlePassword, subject);
        if (!m_model->keyBundleFromFile(path, BundlePassword))
            return false;
        m_model->importKeyBundle();
    } else {
        const QByteArray key = m_token->token().publicKey(QStringLiteral("01"));
        const QString path = m_home.filePath(QString::number(m_number));
        QCA::Certificate::fromDER(m_authority->issue(key, subject)).toPEMFile(path);
        if (!m_model->certificateFromPEMFile(path))
            return false;
        m_model->importCertificate();
    }
    const bool isOver = QTest::qWaitFor([&] { return !written.isEmpty(); }, Patience);
    return isOver && !written.first().first().toBool();
}

bool TestTypedPins::removal()
{
    KeyStoreEntry *spare = entry(QStringLiteral("Spare"));
    if (!spare)
        return false;
    QSignalSpy removed(m_model.get(), &KeyStoreModel::entryRemovedChanged);
    m_model->removeCertificate(spare->entry().id());
    const bool isOver = QTest::qWaitFor([&] { return !removed.isEmpty(); }, Patience);
    return isOver && removed.first().first().toBool();
}

// With the exponent that tokens may refuse, where the provider tries once more.
bool TestTypedPins::generation()
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_storeId, QStringLiteral("made"));
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
    const bool isOver = QTest::qWaitFor([&] { return !finished.isEmpty(); }, Patience);
    return isOver && !generator.key().isNull();
}

bool TestTypedPins::signature()
{
    QSignalSpy isSigned(m_signer.get(), &SignVerify::signSuccess);
    m_signer->setError(0);
    m_signer->sign("data", m_home.filePath(QStringLiteral("a.sig")),
                   entry(QStringLiteral("Signer")));
    const bool isOver =
        QTest::qWaitFor([&] { return !isSigned.isEmpty() || m_signer->error(); }, Patience);
    return isOver && !isSigned.isEmpty();
}

void TestTypedPins::oneLoginForEach_data()
{
    QTest::addColumn<QString>("operation");
    for (const char *operation : {"import", "bundle", "generation", "removal", "signature"})
        QTest::newRow(operation) << QString::fromLatin1(operation);
}

void TestTypedPins::oneLoginForEach()
{
    QFETCH(QString, operation);
    int typed = 0;
    int asked = 0;
    for (const char *answer : {"wrong", "reject", "wrong", "reject", "right"}) {
        m_answer = QString::fromLatin1(answer);
        typed += m_answer == QLatin1String("reject") ? 0 : 1;
        QCOMPARE(perform(operation), m_answer == QLatin1String("right"));
        // No further question must come in this time.
        QTest::qWait(Silence);
        QCOMPARE(m_asked, ++asked);
        QCOMPARE(m_token->count("C_Login"), typed);
        QVERIFY(Trivex::TokenMonitor::token(m_storeId).pinState < Trivex::PinState::Locked);
    }
    QCOMPARE(m_token->countText("CKR_PIN_INCORRECT"), 2);
    QCOMPARE(m_token->countText("CKR_PIN_LOCKED"), 0);
}

void TestTypedPins::aSignersPinIsNoneForWrites_data()
{
    QTest::addColumn<QString>("operation");
    for (const char *operation : {"import", "bundle", "generation"})
        QTest::newRow(operation) << QString::fromLatin1(operation);
}

// A wrong one that was given before anybody asked, and a right one that a signature was made with.
void TestTypedPins::aSignersPinIsNoneForWrites()
{
    QFETCH(QString, operation);
    m_signer->pinAccepted(pinFor(QStringLiteral("wrong")));
    m_answer = QStringLiteral("reject");
    QVERIFY(!perform(operation));
    QCOMPARE(m_asked, 1);
    QCOMPARE(m_token->count("C_Login"), 0);
    m_signer->pinAccepted(pinFor(QStringLiteral("right")));
    QVERIFY(signature());
    QCOMPARE(m_asked, 1);
    QCOMPARE(m_token->count("C_Login"), 1);
    // The session ends, and the login with it, while the token stays.
    m_token->control("tries 3\n"
                     "fail C_GenerateKeyPair * CKR_SESSION_HANDLE_INVALID\n"
                     "fail C_CreateObject * CKR_SESSION_HANDLE_INVALID");
    QVERIFY(!perform(operation));
    m_token->control("tries 3");
    QCOMPARE(m_asked, 1);
    QVERIFY(!perform(operation));
    QCOMPARE(m_asked, 2);
    QCOMPARE(m_token->count("C_Login"), 1);
    // It is still kept for what it is good for.
    QVERIFY(signature());
    QCOMPARE(m_asked, 2);
    QCOMPARE(m_token->count("C_Login"), 2);
}

QTEST_GUILESS_MAIN(TestTypedPins)
#include "tst_typedpins.moc"
