// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/firsthome.h"
#include "tests/app/windowtest.h"

#include <QDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QString Name = QStringLiteral("Мой ключ");
const QString Pin = QStringLiteral("135790");

} // namespace

/// The first start without any token: one's own is made from within, and is there at the next
/// start.
class TestAppFirstToken : public WindowTest {
    Q_OBJECT
public:
    TestAppFirstToken(WindowEnvironment &environment, const FirstHome &first)
        : WindowTest(environment)
        , m_first(first)
    {
    }

private Q_SLOTS:
    void isLeft();
    void refusesWhatDoesNotFit();
    void failureAfterClosingIsTold();
    void isMade();
    void isThereAtTheNextStart();
    void nobodyElseReadsIt();

private:
    bool openDialog();

    const FirstHome &m_first;
};

bool TestAppFirstToken::openDialog()
{
    return m_steps->show("personal") && m_window->waitForItem(QStringLiteral("emptySecond"))
        && m_window->click(QStringLiteral("emptySecond")) && m_steps->waitOpen("newTokenDialog")
        && m_window->waitUntilStill();
}

void TestAppFirstToken::isLeft()
{
    QVERIFY(openDialog());
    // The trust module is nobody's.
    QCOMPARE(m_steps->tokenStoreId(), QString());
    QVERIFY(m_window->fill(QStringLiteral("newPin"), Pin));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("newTokenDialog"));
    QVERIFY(QDir(m_first.folder + QStringLiteral("/tokens"))
                .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                .isEmpty());
    QVERIFY(openDialog());
    QCOMPARE(m_steps->text("newPin"), QString());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("newTokenDialog"));
}

void TestAppFirstToken::refusesWhatDoesNotFit()
{
    QVERIFY(openDialog());
    const auto isEnabled = [&] {
        return m_window->item(QStringLiteral("newTokenConfirm"))->isEnabled();
    };
    QVERIFY(!isEnabled());
    QVERIFY(m_window->fill(QStringLiteral("newPin"), QStringLiteral("123")));
    QVERIFY(m_window->fill(QStringLiteral("newPinAgain"), QStringLiteral("123")));
    QVERIFY(!isEnabled());
    QVERIFY(m_window->fill(QStringLiteral("newPin"), Pin));
    QVERIFY(!isEnabled());
    QVERIFY(m_window->fill(QStringLiteral("newPinAgain"), Pin));
    QVERIFY(isEnabled());
    QVERIFY(m_window->fill(QStringLiteral("newTokenName"), QString(17, QChar(0x416))));
    QVERIFY(!isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("newTokenDialog"));
}

/// Whoever has closed the dialog while the token is made learns that it is not.
void TestAppFirstToken::failureAfterClosingIsTold()
{
    // A file in the place of the folder: not even the administrator can write there.
    const QString tokens = m_first.folder + QStringLiteral("/tokens");
    const QString aside = inHome(QStringLiteral("aside"));
    QVERIFY(QDir().rename(tokens, aside));
    QVERIFY(!writeTestFile(tokens, "no folder").isEmpty());
    QVERIFY(openDialog());
    m_window->type(Name);
    for (int i = 0; i < 2; ++i) {
        m_window->key(Qt::Key_Return);
        m_window->type(Pin);
    }
    m_window->key(Qt::Key_Return);
    m_window->key(Qt::Key_Escape);
    const QString error = m_steps->takeError();
    QVERIFY(QFile::remove(tokens));
    QVERIFY(QDir().rename(aside, tokens));
    QCOMPARE(error, qtTrId("trivex-app-new-token-failed").arg(Name));
    QVERIFY(!m_window->isOpen(QStringLiteral("newTokenDialog")));
}

void TestAppFirstToken::isMade()
{
    QVERIFY(openDialog());
    // By keyboard: the name is selected, Return goes on and at the end makes it.
    m_window->type(Name);
    m_window->key(Qt::Key_Return);
    m_window->type(Pin);
    m_window->key(Qt::Key_Return);
    m_window->type(Pin);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("newTokenDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + Name));
    QVERIFY(m_window->waitFor([&] {
        return m_steps->text("toastText") == qtTrId("trivex-app-new-token-made").arg(Name);
    }));
    // Where there is a token, none is offered.
    QVERIFY(m_window->waitFor([&] { return !m_window->item(QStringLiteral("emptySecond")); }));
    // A key can be made on it at once.
    QVERIFY(m_steps->startKey(QStringLiteral("first"), Pin));
    QVERIFY(m_steps->waitForKey());
}

/// Another process, with nothing but the home.
void TestAppFirstToken::isThereAtTheNextStart()
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SOFTHSM2_CONF"), m_first.configuration());
    environment.remove(QStringLiteral("LD_PRELOAD"));
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("pkcs11-tool"),
               {QStringLiteral("--module"), TestToken::softHsmLibrary(),
                QStringLiteral("--token-label"), Name, QStringLiteral("--login"),
                QStringLiteral("--pin"), Pin, QStringLiteral("--list-objects")});
    QVERIFY(tool.waitForFinished(Patience));
    QCOMPARE(tool.exitCode(), 0);
    QVERIFY(tool.readAllStandardOutput().contains("first"));

    const QByteArray before = qgetenv("SOFTHSM2_CONF");
    qunsetenv("SOFTHSM2_CONF");
    Trivex::usePrivateTokens({});
    QCOMPARE(QFile::decodeName(qgetenv("SOFTHSM2_CONF")), m_first.configuration());
    QCOMPARE(qgetenv("SOFTHSM2_CONF"), before);
}

void TestAppFirstToken::nobodyElseReadsIt()
{
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(m_first.folder) & others));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    FirstHome first(display);
    return runWindowTest<TestAppFirstToken>(argc, argv, display, first);
}

#include "tst_app_firsttoken.moc"
