// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/tokens.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QtTest>

#include <atomic>

using namespace TrivexTest;

namespace {

const QString First = QStringLiteral("Alpha");
const QString Second = QStringLiteral("Beta");

QString storeIdOf(const QString &name)
{
    const QVector<Trivex::TokenStatus> tokens = Trivex::TokenMonitor::tokens();
    for (const Trivex::TokenStatus &one : tokens) {
        if (one.name == name)
            return one.keyStoreId;
    }
    return {};
}

bool isThere(const QString &name)
{
    const auto status = Trivex::TokenMonitor::token(storeIdOf(name));
    return status.present && !status.loading;
}

} // namespace

/// Two tokens that ask at the same time, in the real window; and what is shown of a key that hides.
class TestAppQuestions : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void rowSaysThatTheKeyIsNotSeen();
    void textBelongsToOneQuestion_data();
    void textBelongsToOneQuestion();
    void withdrawnSignature_data();
    void withdrawnSignature();
    void signPageNamesTheTokenThatAsks();

private:
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    /// Begins to write a certificate to the token with that name.
    void write(const QString &name);
    bool isOpen(const char *dialog) const { return m_window->isOpen(QLatin1String(dialog)); }
    bool isFlagged(const QString &name) const;
    /// Does something, from a timer, as soon as the dialog is open: a signature keeps whoever waits
    /// for it inside its own event loop.
    void whenOpen(const char *dialog, const std::function<void()> &action);
    void startSigning(const char *name);
    void endQuestion(bool byPulling, const QByteArray &orders = {});

    const std::shared_ptr<std::atomic<int>> m_ended = std::make_shared<std::atomic<int>>(0);
};

void TestAppQuestions::prepare()
{
    TestToken &first = m_token.token();
    const QString id = QStringLiteral("01");
    QVERIFY(first.addToken(Second));
    QVERIFY(first.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("key")));
    const QByteArray der = m_authority.issue(first.publicKey(id), QStringLiteral("/CN=Signer"));
    QVERIFY(first.removeObject(QStringLiteral("pubkey"), id));
    QVERIFY(first.writeObject(QStringLiteral("cert"), der, id, QStringLiteral("signer")));
}

void TestAppQuestions::arrive()
{
    for (const QString &name : {First, Second})
        QVERIFY(m_window->waitForItem(QStringLiteral("token-") + name));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
}

void TestAppQuestions::init()
{
    // Neither is logged in.
    m_token.control("remove");
    QVERIFY(m_window->waitFor([] { return !isThere(First) && !isThere(Second); }));
    m_token.control();
    QVERIFY(m_window->waitFor([] { return isThere(First) && isThere(Second); }));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
    m_token.forget();
    *m_ended = 0;
}

void TestAppQuestions::write(const QString &name)
{
    Trivex::StoreChange change;
    change.certificate = QCA::Certificate::fromDER(m_authority.certificate());
    QVERIFY(!change.certificate.isNull());
    QVERIFY(Trivex::startStoreChange(
        storeIdOf(name), change,
        [ended = m_ended](const Trivex::StoreChangeResult &) { ++*ended; }));
}

bool TestAppQuestions::isFlagged(const QString &name) const
{
    const QQuickItem *note = m_window->item(QStringLiteral("rowKeyNote"));
    return m_window->rowNamed(name) >= 0 && note
        && note->property("text").toString() == qtTrId("trivex-app-key-unseen");
}

void TestAppQuestions::whenOpen(const char *dialog, const std::function<void()> &action)
{
    m_window->once(
        [this, dialog] { return isOpen(dialog) && m_window->item(QStringLiteral("pinField")); },
        action);
}

void TestAppQuestions::startSigning(const char *name)
{
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    m_steps->openFile(writeTestFile(inHome(QLatin1String(name)), "Dear all"));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
}

void TestAppQuestions::endQuestion(bool byPulling, const QByteArray &orders)
{
    if (byPulling)
        m_token.control(orders + "remove " + First.toLatin1());
    else
        Trivex::TokenMonitor::cancel(storeIdOf(First));
}

void TestAppQuestions::rowSaysThatTheKeyIsNotSeen()
{
    QVERIFY(m_window->waitFor([&] { return isFlagged(QStringLiteral("Signer")); }));
    write(First);
    QVERIFY(m_steps->answerPin(rightPin()));
    QVERIFY(m_window->waitFor([&] { return *m_ended == 1; }));
    // The login has shown it.
    QVERIFY(m_window->waitFor([&] { return !m_window->item(QStringLiteral("rowKeyNote")); }));
    QVERIFY(m_window->rowNamed(QStringLiteral("Signer")) >= 0);
}

void TestAppQuestions::textBelongsToOneQuestion_data()
{
    QTest::addColumn<bool>("pulled");
    QTest::newRow("the token is taken out") << true;
    QTest::newRow("the operation is stopped") << false;
}

void TestAppQuestions::textBelongsToOneQuestion()
{
    QFETCH(bool, pulled);
    m_token.control("final-try");
    write(First);
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QCOMPARE(m_steps->text("pinTokenName"), First);
    write(Second);
    QVERIFY(m_window->fill(QStringLiteral("pinField"), QStringLiteral("12345")));
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    const QQuickItem *consent = m_window->item(QStringLiteral("pinConsent"));
    QVERIFY(consent && consent->property("checked").toBool());
    endQuestion(pulled, "final-try\n");
    QVERIFY(m_window->waitFor([&] { return m_steps->text("pinTokenName") == Second; }));
    // What is typed on is for the first.
    m_window->type(QStringLiteral("6"));
    m_window->key(Qt::Key_Return);
    QVERIFY(isOpen("pinPromptDialog"));
    QCOMPARE(m_window->item(QStringLiteral("pinField"))->property("text").toString(), QString());
    QVERIFY(!consent->property("checked").toBool());
    QVERIFY(!m_window->item(QStringLiteral("pinAccept"))->isEnabled());
    QCOMPARE(m_steps->text("pinReplaced"), qtTrId("trivex-app-pin-replaced"));
    // What became of the first is said when the second has been answered.
    QVERIFY(m_window->holds([&] { return m_token.count("C_Login") == 0 && !isOpen("errorDialog"); },
                            900));
    // None where the question went before the token.
    const bool hasError =
        !m_window->object(QStringLiteral("errorDialog"))->property("waiting").toList().isEmpty();
    QVERIFY(m_window->fill(QStringLiteral("pinField"), rightPin()));
    QVERIFY(m_window->click(QStringLiteral("pinConsent")));
    QVERIFY(m_window->click(QStringLiteral("pinAccept")));
    QVERIFY(m_window->waitFor([&] { return *m_ended == 2; }));
    if (hasError) {
        QVERIFY(m_steps->waitOpen("errorDialog"));
        QVERIFY(m_window->click(QStringLiteral("errorClose")));
        QVERIFY(m_steps->waitClosed("errorDialog"));
    }
    QCOMPARE(m_token.count("C_Login"), 1);
    QCOMPARE(m_token.countText("C_Login CKR_OK"), 1);
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
}

void TestAppQuestions::withdrawnSignature_data()
{
    textBelongsToOneQuestion_data();
}

void TestAppQuestions::withdrawnSignature()
{
    QFETCH(bool, pulled);
    QString asker;
    whenOpen("signPinDialog", [&] {
        asker = m_steps->text("pinTokenName");
        m_window->fill(QStringLiteral("pinField"), rightPin());
        endQuestion(pulled);
    });
    startSigning("letter.txt");
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-unsigned"); }));
    QCOMPARE(asker, First);
    QVERIFY(m_steps->waitClosed("signPinDialog"));
    // What was typed is kept for nothing: the next signature asks.
    m_token.control();
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor(
        [&] { return isThere(First) && m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
    bool asked = false;
    whenOpen("signPinDialog", [&] {
        asked = m_token.count("C_Login") == 0;
        m_window->click(QStringLiteral("pinCancel"));
    });
    startSigning("letter.txt");
    QVERIFY(m_window->waitFor([&] { return asked && !isOpen("signPinDialog"); }));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-unsigned"); }));
    QCOMPARE(m_token.count("C_Login"), 0);
}

void TestAppQuestions::signPageNamesTheTokenThatAsks()
{
    QStringList asked;
    whenOpen("pinPromptDialog", [&] {
        asked << m_steps->text("pinTokenName")
                + (isOpen("signPinDialog") ? QStringLiteral("!") : QString());
        m_window->click(QStringLiteral("pinCancel"));
    });
    whenOpen("signPinDialog", [&] {
        asked << m_steps->text("pinTokenName")
                + (isOpen("pinPromptDialog") ? QStringLiteral("!") : QString());
        m_window->fill(QStringLiteral("pinField"), rightPin());
        m_window->click(QStringLiteral("pinAccept"));
    });
    startSigning("other.txt");
    // Before the signer asks, a write to the other token does. Declined at the window's prompt, it
    // is not asked again in the signer's name.
    write(Second);
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }));
    QCOMPARE(asked, (QStringList{Second, First}));
    QCOMPARE(int(*m_ended), 1);
    QCOMPARE(m_token.count("C_Login"), 1);
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppQuestions, FaultyToken>(argc, argv, First);
}

#include "tst_app_questions.moc"
