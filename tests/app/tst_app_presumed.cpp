// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QtTest>

using namespace TrivexTest;
using Trivex::PinState;
using Trivex::TokenMonitor;

/// What the window says of a token that shows too little: no public key tells which certificate has
/// its key here, or nobody has set a PIN.
class TestAppPresumed : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void missingUserPin();
    void keyMayBeThere();

private:
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    bool pick(const QString &name);
    /// The shown text of a line or a notice; empty when there is none.
    QString textOf(const char *name) const;
};

void TestAppPresumed::prepare()
{
    const TestToken &token = m_token.token();
    const QString id = QStringLiteral("01");
    QVERIFY(token.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("signer")));
    const QByteArray info = token.publicKey(id);
    QVERIFY(token.writeObject(QStringLiteral("cert"),
                              m_authority.issue(info, QStringLiteral("/CN=Signer")), id,
                              QStringLiteral("signer")));
    QVERIFY(token.removeObject(QStringLiteral("pubkey"), id));
}

void TestAppPresumed::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
}

void TestAppPresumed::init()
{
    m_window->window()->resize(1180, 760);
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.token().label()));
    QVERIFY(
        m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
}

bool TestAppPresumed::pick(const QString &name)
{
    return m_window->clickRow(m_window->rowNamed(name))
        && m_window->waitForItem(QStringLiteral("detailsView"));
}

QString TestAppPresumed::textOf(const char *name) const
{
    const QQuickItem *item = m_window->item(QLatin1String(name));
    return item ? item->property("text").toString() : QString();
}

/// And what to do about it.
void TestAppPresumed::missingUserPin()
{
    QCOMPARE(textOf("tokenNotice"), QString());
    QVERIFY(m_token.replug(m_steps->tokenStoreId(), "no-pin-flag"));
    QVERIFY(m_window->waitForItem(QStringLiteral("tokenNotice")));
    const QString said = qtTrId("trivex-app-cause-pin-not-set") + QLatin1Char(' ')
        + qtTrId("trivex-app-advice-pin-not-set");
    QVERIFY2(m_window->waitFor([&] { return textOf("tokenNotice") == said; }),
             qPrintable(textOf("tokenNotice")));
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    QVERIFY(m_window->waitFor([this] { return textOf("tokenNotice").isEmpty(); }));
}

/// Until the login has shown it.
void TestAppPresumed::keyMayBeThere()
{
    QVERIFY(TokenMonitor::token(m_steps->tokenStoreId()).keysPresumed);
    QVERIFY(pick(QStringLiteral("Signer")));
    const QString said = qtTrId("trivex-app-key-presumed");
    QVERIFY2(m_window->waitFor([&] { return textOf("keyNote") == said; }),
             qPrintable(textOf("keyNote")));
    QVERIFY(m_window->click(QStringLiteral("keysNoticeAction")));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QVERIFY(m_steps->answerPin(rightPin()));
    QVERIFY(m_window->waitFor(
        [this] { return !TokenMonitor::token(m_steps->tokenStoreId()).keysPresumed; }));
    QVERIFY(pick(QStringLiteral("Signer")));
    QVERIFY(m_window->waitFor([this] { return textOf("keyNote").isEmpty(); }));
    QVERIFY(m_window->holds([this] { return textOf("keyNote").isEmpty(); }));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppPresumed, FaultyToken>(argc, argv, QStringLiteral("Presumed"));
}

#include "tst_app_presumed.moc"
