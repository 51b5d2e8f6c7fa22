// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

/// The certificate with other dates, each as UTCTime has it ("250101000000Z"). Its signature breaks
/// by that, which nobody here looks at.
QByteArray dated(QByteArray der, const char *from, const char *until)
{
    const QByteArray mark("\x17\x0d", 2);
    int at = der.indexOf(mark);
    for (const char *date : {from, until}) {
        der.replace(at + mark.size(), 13, date);
        at = der.indexOf(mark, at + 1);
    }
    return der;
}

} // namespace

/// A certificate that is valid no more, or not yet, asks before it signs.
class TestAppExpired : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();
    void asksBeforeItSigns_data();
    void asksBeforeItSigns();
    void validOneAsksNothing();

private:
    void prepare() override;
    void arrive() override;
    bool chooseKey(const QString &name);
    QString m_document;
};

void TestAppExpired::prepare()
{
    const auto put = [&](const QString &id, const QString &subject, const char *from,
                         const char *until) {
        if (!m_token.generateKeyPair(QStringLiteral("rsa:2048"), id, id))
            return false;
        QByteArray der = m_authority.issue(m_token.publicKey(id), subject);
        if (from)
            der = dated(der, from, until);
        return m_token.writeObject(QStringLiteral("cert"), der, id, id);
    };
    QVERIFY(put(QStringLiteral("01"), QStringLiteral("/CN=Valid"), nullptr, nullptr));
    QVERIFY(put(QStringLiteral("02"), QStringLiteral("/CN=Old"), "200101000000Z", "210101000000Z"));
    QVERIFY(
        put(QStringLiteral("03"), QStringLiteral("/CN=Young"), "480101000000Z", "490101000000Z"));
    m_document = writeTestFile(inHome(QStringLiteral("letter.txt")), "letter");
}

void TestAppExpired::arrive()
{
    for (const char *name : {"Valid", "Old", "Young"})
        QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; }));
}

void TestAppExpired::init()
{
    QVERIFY(m_steps->show("personal"));
    QFile::remove(m_document + QStringLiteral(".p7s"));
    answerPins(rightPin());
}

/// By the row's own action, as from the list.
bool TestAppExpired::chooseKey(const QString &name)
{
    if (!m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        || !m_window->clickRow(m_window->rowNamed(name))
        || !m_window->waitForItem(QStringLiteral("signButton"))
        || !m_window->click(QStringLiteral("signButton")))
        return false;
    m_steps->openFile(m_document);
    // The keys are led to the page in a later turn of the loop.
    return m_steps->waitEnabled("doSign") && m_window->waitUntilStill();
}

void TestAppExpired::asksBeforeItSigns_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("expired") << QStringLiteral("Old");
    QTest::newRow("not yet valid") << QStringLiteral("Young");
}

void TestAppExpired::asksBeforeItSigns()
{
    QFETCH(QString, name);
    const QString signature = m_document + QStringLiteral(".p7s");
    QVERIFY(chooseKey(name));
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("confirmExpired"));
    QCOMPARE(m_steps->text("expiredName"), name);
    QVERIFY(!m_steps->text("expiredReason").isEmpty());
    // Whoever presses Enter in passing has not said yes.
    QTRY_VERIFY2(m_window->item(QStringLiteral("expiredCancel"))->hasActiveFocus(),
                 qPrintable(describeItem(m_window->window()->activeFocusItem())));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("confirmExpired"));
    QVERIFY(m_window->holds([&] { return !QFile::exists(signature); }));

    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("confirmExpired"));
    QVERIFY(m_steps->press("expiredConfirm"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(signature), Patience);
}

void TestAppExpired::validOneAsksNothing()
{
    QVERIFY(chooseKey(QStringLiteral("Valid")));
    QVERIFY(m_steps->press("doSign"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_document + QStringLiteral(".p7s")), Patience);
    QVERIFY(!m_window->isOpen(QStringLiteral("confirmExpired")));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppExpired, TestToken>(argc, argv, QStringLiteral("Expiring"));
}

#include "tst_app_expired.moc"
