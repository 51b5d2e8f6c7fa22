// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/chains/madechain.h"
#include "tests/support/userfiles.h"

#include <QtTest>

using namespace TrivexTest;
using namespace MadeChain;

/// A path that leads over what a token holds, while the token comes and goes.
class TestAppChainToken : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void tokenGoesAndComes();
    void certificateOfTheToken();

private:
    void prepare() override;
    void arrive() override;

    bool pick(const char *category, const char *name);
    bool waitBadge(const char *id);
    int checks() const;

    const Party m_root = make({"Chain Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Chain Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Chain Leaf", -1, 90}, &m_middle);
};

void TestAppChainToken::prepare()
{
    QVERIFY(!writeTestFile(userFile(QStringLiteral("root.pem")), certificatePem(m_root.der()))
                 .isEmpty());
    QVERIFY(!writeTestFile(userFile(QStringLiteral("leaf.pem")), certificatePem(m_leaf.der()))
                 .isEmpty());
    QVERIFY(m_token.writeObject(QStringLiteral("cert"), m_middle.der(), QStringLiteral("07"),
                                QStringLiteral("middle")));
}

void TestAppChainToken::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

bool TestAppChainToken::pick(const char *category, const char *name)
{
    const QString wanted = QString::fromUtf8(name);
    return m_steps->show(category)
        && m_window->waitFor([&] { return m_window->rowNamed(wanted) >= 0; })
        && m_window->clickRow(m_window->rowNamed(wanted));
}

bool TestAppChainToken::waitBadge(const char *id)
{
    const QString wanted = qtTrId(id);
    return m_window->waitFor([&] {
        const QQuickItem *badge = m_window->item(QStringLiteral("chainBadge"));
        return badge && badge->property("text").toString() == wanted;
    });
}

int TestAppChainToken::checks() const
{
    const QQuickItem *view = m_window->item(QStringLiteral("chainView"));
    const auto *chain = view ? view->property("chain").value<QObject *>() : nullptr;
    return chain ? chain->property("checks").toInt() : -1;
}

void TestAppChainToken::tokenGoesAndComes()
{
    QVERIFY(pick("users", "Chain Leaf"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    const QQuickItem *step = m_window->item(QStringLiteral("chainStep1"));
    QVERIFY(step);
    QVERIFY(step->property("about").toString().contains(m_token.label()));
    m_token.removeModule();
    QVERIFY(waitBadge("trivex-app-chain-unknown"));
    m_token.restoreModule();
    QVERIFY(waitBadge("trivex-app-chain-good"));
    // One check for each of the three, and none for what else was read meanwhile.
    QVERIFY2(checks() == 3, qPrintable(QString::number(checks())));
}

void TestAppChainToken::certificateOfTheToken()
{
    QVERIFY(pick("others", "Chain Middle"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(!m_window->item(QStringLiteral("chainStep2")));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppChainToken, TestToken>(argc, argv,
                                                            QStringLiteral("Chain Token"));
}

#include "tst_app_chaintoken.moc"
