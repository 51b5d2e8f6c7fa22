// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// After a PIN or a password was typed and used, nothing of this process holds it any more: memory,
// freed blocks included, log, clipboard, properties, files.
#include "tests/app/secretsearch.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QMimeData>
#include <QQmlEngine>
#include <QtTest>

#include <atomic>

using namespace TrivexTest;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IsMemoryOurs = false;
#else
constexpr bool IsMemoryOurs = true;
#endif

namespace {

// Masked, so that the program holds them nowhere; of no word that anything else has.
const SecretSearch Pin("\x3e\x03\x62\x24\x2f\x0d\x66\x22\x1f\x6c");
const SecretSearch WrongPin("\x0f\x25\x61\x38\x02\x2c\x6d\x20\x04\x67");
const SecretSearch Password("\x3d\x07\x63\x21\x17\x2d\x1b\x60\x23\x19\x65\x31\x1e");
const SecretSearch WrongPassword("\x32\x01\x67\x36\x18\x22\x1f\x6d\x26\x13\x66\x2c\x05");

std::atomic<int> logged{0};
QtMessageHandler loggedBefore = nullptr;

void watchLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    for (const SecretSearch *secret : {&Pin, &WrongPin, &Password, &WrongPassword})
        logged += secret->isIn(message) || secret->isIn(message.toUtf8()) ? 1 : 0;
    loggedBefore(type, context, message);
}

} // namespace

class TestAppSecrets : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void searchFinds();
    void pinOfASignature();
    void passwordOfABundle();

private:
    void prepare() override;
    void arrive() override;

    /// Types a secret into a field, letter by letter.
    bool type(const char *field, const SecretSearch &secret);
    /// Closes what is closing, deletes what is to be deleted, collects what scripts left.
    void comeToRest();
    /// Fails where the secret still is.
    void expectGone(const SecretSearch &secret);

    QString m_bundle;
};

void TestAppSecrets::prepare()
{
    if (!IsMemoryOurs)
        QSKIP("the sanitizer has terabytes of memory of its own");
    const QString id = QStringLiteral("01");
    QVERIFY(m_token.token().generateKeyPair(QStringLiteral("rsa:2048"), id, id));
    const QByteArray certificate =
        m_authority.issue(m_token.token().publicKey(id), QStringLiteral("/CN=Signer"));
    QVERIFY(m_token.token().writeObject(QStringLiteral("cert"), certificate, id, id));
    QVERIFY(Pin.run(
        QStringLiteral("pkcs11-tool"),
        {QStringLiteral("--module"), TestToken::softHsmLibrary(), QStringLiteral("--token-label"),
         m_token.token().label(), QStringLiteral("--login"), QStringLiteral("--pin"), rightPin(),
         QStringLiteral("--change-pin"), QStringLiteral("--new-pin"), QStringLiteral("@")}));
    const QString plain = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel"), QStringLiteral("secret"), QStringLiteral("friend"));
    const QString pem = inHome(QStringLiteral("bundle.pem"));
    QVERIFY(!m_authority
                 .openssl({QStringLiteral("pkcs12"), QStringLiteral("-in"), plain,
                           QStringLiteral("-passin"), QStringLiteral("pass:secret"),
                           QStringLiteral("-nodes"), QStringLiteral("-out"), pem})
                 .isNull());
    m_bundle = inHome(QStringLiteral("bundle.p12"));
    QVERIFY(Password.run(QStringLiteral("openssl"),
                         {QStringLiteral("pkcs12"), QStringLiteral("-export"),
                          QStringLiteral("-in"), pem, QStringLiteral("-out"), m_bundle,
                          QStringLiteral("-passout"), QStringLiteral("pass:@")}));
}

void TestAppSecrets::arrive()
{
    loggedBefore = qInstallMessageHandler(watchLog);
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
}

bool TestAppSecrets::type(const char *field, const SecretSearch &secret)
{
    if (!m_window->fill(QLatin1String(field), {}))
        return false;
    for (int i = 0; i < secret.size(); ++i)
        m_window->type(QString(secret.letter(i)));
    return true;
}

void TestAppSecrets::comeToRest()
{
    m_window->waitUntilStill();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    qmlEngine(m_window->window())->collectGarbage();
    QCoreApplication::processEvents();
}

void TestAppSecrets::expectGone(const SecretSearch &secret)
{
    // The guard of the field asks for the collection when the dialog is gone.
    QVERIFY(m_window->waitFor([&] {
        comeToRest();
        return secret.inMemory() == 0;
    }));
    QCOMPARE(secret.inMemory(), 0);
    QCOMPARE(secret.inHistories(), 0);
    QCOMPARE(secret.inProperties(m_window->window()), QStringList());
    QCOMPARE(secret.inProperties(qApp), QStringList());
    QCOMPARE(secret.inFiles(home()), QStringList());
    for (const auto mode : {QClipboard::Clipboard, QClipboard::Selection}) {
        const QMimeData *data = QGuiApplication::clipboard()->mimeData(mode);
        for (const QString &format : data ? data->formats() : QStringList())
            QVERIFY(!secret.isIn(data->data(format)));
    }
    QCOMPARE(logged.load(), 0);
}

// Else none of the others says anything.
void TestAppSecrets::searchFinds()
{
    static const SecretSearch probe("\x1f\x66\x02\x30\x6c\x24\x07\x61\x3f\x0d");
    QCOMPARE(probe.inMemory(), 0);
    QString text;
    for (int i = 0; i < probe.size(); ++i)
        text += probe.letter(i);
    QVERIFY(probe.inMemory() > 0);
    QVERIFY(probe.isIn(text));
    QVERIFY(probe.isIn("about " + text.toUtf8()));
    QObject owner;
    owner.setObjectName(text);
    QCOMPARE(probe.inProperties(&owner), QStringList{QStringLiteral("QObject.objectName")});
    QVERIFY(!writeTestFile(inHome(QStringLiteral("probe")), text.toUtf8()).isEmpty());
    QCOMPARE(probe.inFiles(home()), QStringList{inHome(QStringLiteral("probe"))});
    QCOMPARE(Pin.inMemory(), 0);
    QCOMPARE(Password.inMemory(), 0);
}

void TestAppSecrets::pinOfASignature()
{
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    const QString path = writeTestFile(inHome(QStringLiteral("letter.txt")), "Dear all,\n");
    m_steps->openFile(path);
    QVERIFY(m_steps->waitEnabled("doSign"));
    m_token.forget();
    int logins = 0;
    const auto answer = [&](const SecretSearch &secret, int login) {
        m_window->once(
            [this, login] {
                return m_window->isOpen(QStringLiteral("signPinDialog"))
                    && m_token.count("C_Login") == login;
            },
            [this, &secret, &logins] {
                if (type("pinField", secret) && m_window->click(QStringLiteral("pinAccept")))
                    ++logins;
            });
    };
    answer(WrongPin, 0);
    answer(Pin, 1);
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }));
    QCOMPARE(logins, 2);
    QCOMPARE(m_token.count("C_Login"), 2);
    QVERIFY(m_steps->waitClosed("signPinDialog"));
    expectGone(WrongPin);
    // The page keeps the PIN for the signatures that are still to come, in secure memory.
    QVERIFY(m_window->waitFor([&] {
        comeToRest();
        return Pin.inMemory() == 1;
    }));
    QVERIFY(m_steps->show("personal"));
    expectGone(Pin);
}

void TestAppSecrets::passwordOfABundle()
{
    m_steps->openFile(m_bundle);
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QTRY_COMPARE(m_steps->text("importProblem"), qtTrId("trivex-app-bundle-ask"));
    QVERIFY(type("bundlePassword", WrongPassword));
    QVERIFY(m_window->click(QStringLiteral("bundleUnlock")));
    QTRY_COMPARE(m_steps->text("importProblem"), qtTrId("trivex-app-bundle-password"));
    QVERIFY(type("bundlePassword", Password));
    QVERIFY(m_window->click(QStringLiteral("bundleUnlock")));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QObject *field = m_window->window()->findChild<QObject *>(QStringLiteral("bundlePassword"));
    QVERIFY(field);
    // Where the letters are shown, undo would bring back what was cleared.
    QVERIFY(field->setProperty("echoMode", 0)); // TextInput.Normal
    QVERIFY(!field->property("canUndo").toBool());
    expectGone(WrongPassword);
    expectGone(Password);
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppSecrets, FaultyToken>(argc, argv, QStringLiteral("Token S"));
}

#include "tst_app_secrets.moc"
