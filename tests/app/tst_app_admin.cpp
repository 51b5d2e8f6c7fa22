// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenadministration.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QtCrypto>
#include <QtTest>

#include <atomic>

using namespace TrivexTest;

namespace {

const QString NewPin = QStringLiteral("0987654321");

} // namespace

/// The menu of a token's page: its PINs and the token anew, by mouse and by keyboard. What the
/// token is left with is asked of another program.
class TestAppAdmin : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void changesPinByKeyboard();
    void wrongPinIsTypedAgain();
    void rulesAreTold();
    void lastTryNeedsConsent();
    void unlocks();
    void officerChangesOwnPin();
    void typedAtTheReader();
    void leftWhileTheTokenWorks();
    void failsAfterItWasLeft();
    void tokenGoesMeanwhile();
    void pinToBeChanged();
    void initialises();
    void initialisesOnlyWithItsName();
    void initialisesAfterItWasLeft();
    void tellsOfUnknownLoss();
    void leavesTheWorkBeforeItAlone();
    void proposesItsOwnLabel();

private:
    void arrive() override;
    void restore() override { m_token.control(); }

    static QString officerPin() { return QString::fromLatin1(TestToken::soPin()); }
    QString tokenItem(const QString &name = {}) const;
    /// Opens that dialog by the token's menu.
    bool choose(const char *item, const char *dialog);
    bool fillNewPin(const QString &pin, const QString &again);
    bool confirm()
    {
        return m_steps->waitEnabled("adminConfirm")
            && m_window->click(QStringLiteral("adminConfirm"));
    }
    /// Fills the dialog in; true when the token may be asked.
    bool fillInitialise(const QString &from, const QString &to);
    bool isTold(const QString &text);
    /// Whether a visible text says that.
    bool isRead(const QString &text) const;
    bool opensWith(const QString &pin, const QString &name = {}) const;
    /// Sets the PIN back, in this process: SoftHSM knows of no other's changes.
    bool setPinBack() const;
    /// The secrets in fields, shown or not.
    QString leftInFields() const;
};

void TestAppAdmin::arrive()
{
    QVERIFY(m_window->waitForItem(tokenItem()));
}

void TestAppAdmin::init()
{
    m_token.control();
    QVERIFY(m_window->waitForItem(tokenItem()));
    QVERIFY(m_window->click(tokenItem()));
    QVERIFY(m_window->waitForItem(QStringLiteral("tokenMenuButton")));
    m_token.forget();
}

QString TestAppAdmin::tokenItem(const QString &name) const
{
    return QStringLiteral("token-") + (name.isEmpty() ? m_token.token().label() : name);
}

bool TestAppAdmin::choose(const char *item, const char *dialog)
{
    return m_window->click(QStringLiteral("tokenMenuButton"))
        && m_window->waitForItem(QLatin1String(item)) && m_window->waitUntilStill()
        && m_window->click(QLatin1String(item)) && m_steps->waitOpen(dialog)
        && m_window->waitUntilStill();
}

bool TestAppAdmin::fillNewPin(const QString &pin, const QString &again)
{
    return m_window->fill(QStringLiteral("newPin"), pin)
        && m_window->fill(QStringLiteral("newPinAgain"), again);
}

bool TestAppAdmin::fillInitialise(const QString &from, const QString &to)
{
    return m_window->fill(QStringLiteral("initialiseName"), to)
        && m_window->fill(QStringLiteral("officerPin"), officerPin())
        && fillNewPin(rightPin(), rightPin())
        && m_window->fill(QStringLiteral("initialiseConsent"), from);
}

bool TestAppAdmin::isTold(const QString &text)
{
    return m_window->waitFor([&] { return m_steps->text("toastText") == text; });
}

bool TestAppAdmin::isRead(const QString &text) const
{
    bool isFound = false;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        isFound = isFound || item->property("text").toString() == text;
    });
    return isFound;
}

bool TestAppAdmin::opensWith(const QString &pin, const QString &name) const
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SOFTHSM2_CONF"), m_token.token().configurationFile());
    environment.remove(QStringLiteral("LD_PRELOAD"));
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("pkcs11-tool"),
               {QStringLiteral("--module"), TestToken::softHsmLibrary(),
                QStringLiteral("--token-label"), name.isEmpty() ? m_token.token().label() : name,
                QStringLiteral("--login"), QStringLiteral("--pin"), pin,
                QStringLiteral("--list-objects")});
    return tool.waitForFinished(Patience) && tool.exitCode() == 0;
}

bool TestAppAdmin::setPinBack() const
{
    Trivex::TokenAdministration task;
    task.kind = Trivex::TokenAdministration::SetPin;
    task.pin = Trivex::Secret(QCA::SecureArray(TestToken::soPin()));
    task.newPin = Trivex::Secret(QCA::SecureArray(TestToken::pin()));
    const auto ended = std::make_shared<std::atomic_int>(-1);
    m_token.control();
    return Trivex::startTokenAdministration(
               m_steps->tokenStoreId(), std::move(task),
               [ended](const Trivex::TokenAdministrationResult &result) {
                   *ended = result.error.kind;
               })
        && m_window->waitFor([&] { return *ended == Trivex::TokenError::NoError; });
}

QString TestAppAdmin::leftInFields() const
{
    QString left;
    const auto all = m_window->window()->findChildren<QObject *>();
    for (const QObject *one : all) {
        static const QStringList fields = {QStringLiteral("oldPin"), QStringLiteral("officerPin"),
                                           QStringLiteral("newPin"), QStringLiteral("newPinAgain")};
        if (fields.contains(one->objectName()))
            left += one->property("text").toString();
    }
    return left;
}

void TestAppAdmin::changesPinByKeyboard()
{
    m_window->item(QStringLiteral("tokenMenuButton"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Space);
    QVERIFY(m_window->waitForItem(QStringLiteral("tokenChangePin")));
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitOpen("changePinDialog"));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->item(QStringLiteral("oldPin"))->hasActiveFocus(); }));
    m_window->type(rightPin());
    m_window->key(Qt::Key_Return);
    m_window->type(NewPin);
    m_window->key(Qt::Key_Return);
    m_window->type(NewPin);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QVERIFY(isTold(qtTrId("trivex-app-pin-changed").arg(m_token.token().label())));
    QCOMPARE(m_token.count("C_SetPIN"), 1);
    QCOMPARE(leftInFields(), QString());
    QVERIFY(opensWith(NewPin));
    QVERIFY(!opensWith(rightPin()));
    QVERIFY(setPinBack());
}

void TestAppAdmin::wrongPinIsTypedAgain()
{
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), QStringLiteral("999999")));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(confirm());
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("adminProblem") == qtTrId("trivex-app-admin-wrong-pin"); }));
    // In the same dialog, and the new one need not be typed again.
    QVERIFY(m_window->isOpen(QStringLiteral("changePinDialog")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    QCOMPARE(m_token.count("C_SetPIN"), 1);
    QVERIFY(m_window->item(QStringLiteral("oldPin"))->hasActiveFocus());
    QCOMPARE(m_steps->text("oldPin"), QString());
    QCOMPARE(m_steps->text("newPin"), NewPin);
    QVERIFY(m_window->holds([&] { return m_token.count("C_SetPIN") == 1; }));
    m_window->type(rightPin());
    QVERIFY(confirm());
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(m_token.count("C_SetPIN"), 2);
    QVERIFY(opensWith(NewPin));
    QVERIFY(setPinBack());
}

void TestAppAdmin::rulesAreTold()
{
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    const QString rule = qtTrId("trivex-app-admin-length").arg(4).arg(255);
    QVERIFY(isRead(rule));
    const auto isEnabled = [&] {
        return m_window->item(QStringLiteral("adminConfirm"))->isEnabled();
    };
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(QStringLiteral("123"), QStringLiteral("123")));
    QVERIFY(!isEnabled());
    QVERIFY(fillNewPin(NewPin, NewPin + QLatin1Char('0')));
    QVERIFY(!isEnabled());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->holds([&] { return m_token.count("C_SetPIN") == 0; }));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(isEnabled());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(leftInFields(), QString());
    QCOMPARE(m_token.count("C_SetPIN"), 0);
}

void TestAppAdmin::lastTryNeedsConsent()
{
    m_token.control("final-try");
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("adminConsent")));
    QCOMPARE(m_steps->text("adminTries"), qtTrId("trivex-app-pin-final"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(!m_window->item(QStringLiteral("adminConfirm"))->isEnabled());
    QVERIFY(m_window->click(QStringLiteral("adminConsent")));
    QVERIFY(confirm());
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QVERIFY(opensWith(NewPin));
    QVERIFY(setPinBack());
}

void TestAppAdmin::unlocks()
{
    m_token.control("tries 1");
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), QStringLiteral("999999")));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(m_window->waitForItem(QStringLiteral("adminConsent")));
    QVERIFY(m_window->click(QStringLiteral("adminConsent")));
    QVERIFY(confirm());
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("adminTries") == qtTrId("trivex-app-pin-locked"); }));
    QVERIFY(!m_window->item(QStringLiteral("adminConfirm"))->isEnabled());
    QVERIFY(m_window->click(QStringLiteral("adminCancel")));
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    // A locked PIN can't be changed, only unlocked.
    QVERIFY(choose("tokenUnblock", "unblockDialog"));
    QVERIFY(m_window->fill(QStringLiteral("officerPin"), QStringLiteral("00000000")));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(confirm());
    QVERIFY(m_window->waitFor([&] {
        return m_steps->text("adminProblem") == qtTrId("trivex-app-admin-wrong-officer-pin");
    }));
    m_window->type(officerPin());
    QVERIFY(confirm());
    QVERIFY(m_steps->waitClosed("unblockDialog"));
    QVERIFY(isTold(qtTrId("trivex-app-pin-was-set").arg(m_token.token().label())));
    QCOMPARE(leftInFields(), QString());
    QVERIFY(opensWith(NewPin));
    QVERIFY(setPinBack());
}

void TestAppAdmin::officerChangesOwnPin()
{
    for (const auto &[before, after] :
         {std::pair(officerPin(), NewPin), std::pair(NewPin, officerPin())}) {
        QVERIFY(choose("tokenChangeOfficerPin", "changeOfficerPinDialog"));
        QVERIFY(m_window->fill(QStringLiteral("oldPin"), before));
        QVERIFY(fillNewPin(after, after));
        QVERIFY(confirm());
        QVERIFY(m_steps->waitClosed("changeOfficerPinDialog"));
    }
    QVERIFY(setPinBack());
    QVERIFY(opensWith(rightPin()));
}

void TestAppAdmin::typedAtTheReader()
{
    m_token.control("pin-pad " + TestToken::pin() + ' ' + NewPin.toLatin1());
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->waitFor([&] { return !m_window->item(QStringLiteral("oldPin")); }));
    QVERIFY(confirm());
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(m_token.countText("C_SetPIN CKR_OK"), 1);
    QCOMPARE(m_token.countText("pin=given"), 0);
    QVERIFY(opensWith(NewPin));
    QVERIFY(setPinBack());
}

void TestAppAdmin::leftWhileTheTokenWorks()
{
    m_token.control("delay C_SetPIN * 1500");
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(NewPin, NewPin));
    m_window->meter().reset();
    QVERIFY(confirm());
    QVERIFY(m_token.waitUntilInside("C_SetPIN"));
    QVERIFY(m_window->item(QStringLiteral("adminBusy")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(leftInFields(), QString());
    QVERIFY(m_window->waitFor([&] { return m_token.count("C_SetPIN") == 1; }));
    QVERIFY(isTold(qtTrId("trivex-app-pin-changed").arg(m_token.token().label())));
    QVERIFY2(m_window->meter().longestStall() < 1000,
             qPrintable(QString::number(m_window->meter().longestStall())));
    QCOMPARE(leftInFields(), QString());
    QVERIFY(opensWith(NewPin));
    QVERIFY(setPinBack());
}

void TestAppAdmin::failsAfterItWasLeft()
{
    m_token.control("delay C_SetPIN * 1000\nfail C_SetPIN * CKR_DEVICE_ERROR");
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(confirm());
    QVERIFY(m_token.waitUntilInside("C_SetPIN"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorAdvice"),
             qtTrId("trivex-app-admin-failed").arg(QStringLiteral("CKR_DEVICE_ERROR")));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-admin-left").arg(m_token.token().label()));
    QCOMPARE(leftInFields(), QString());
    QVERIFY(opensWith(rightPin()));
}

void TestAppAdmin::tokenGoesMeanwhile()
{
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(NewPin, NewPin));
    m_token.control("remove");
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("adminProblem") == qtTrId("trivex-app-admin-gone"); }));
    QVERIFY(!m_window->item(QStringLiteral("adminConfirm"))->isEnabled());
    m_token.control();
    QVERIFY(m_steps->waitEnabled("adminConfirm"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(m_token.count("C_SetPIN"), 0);
}

void TestAppAdmin::pinToBeChanged()
{
    m_token.control("to-be-changed");
    QVERIFY(m_window->waitFor([&] { return isRead(qtTrId("trivex-app-pin-to-be-changed")); }));
}

void TestAppAdmin::initialises()
{
    QVERIFY(m_token.token().generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                            QStringLiteral("lost")));
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    const QString before = m_token.token().label();
    const QString after = QStringLiteral("Токен <b>Я</b> %1");
    for (const auto &[from, to] : {std::pair(before, after), std::pair(after, before)}) {
        QVERIFY(m_window->click(tokenItem(from)));
        QVERIFY(choose("tokenInitialise", "initialiseDialog"));
        // What is lost is told, and nothing goes without the name.
        QVERIFY(m_window->item(QStringLiteral("initialiseWarning")));
        QVERIFY(m_window->fill(QStringLiteral("initialiseName"), to));
        QVERIFY(m_window->fill(QStringLiteral("officerPin"), officerPin()));
        QVERIFY(fillNewPin(rightPin(), rightPin()));
        QVERIFY(!m_window->item(QStringLiteral("adminConfirm"))->isEnabled());
        QVERIFY(m_window->fill(QStringLiteral("initialiseConsent"), from));
        QVERIFY(confirm());
        QVERIFY(m_steps->waitClosed("initialiseDialog"));
        QString told = qtTrId("trivex-app-initialised");
        QVERIFY(isTold(told.replace(QStringLiteral("%1"), to)));
        QVERIFY(m_window->waitForItem(tokenItem(to)));
        QVERIFY(m_window->waitFor([&] { return !m_window->item(tokenItem(from)); }));
        QVERIFY(opensWith(rightPin(), to));
        QCOMPARE(leftInFields(), QString());
    }
    QCOMPARE(m_token.token().objectCount(), 0);
}

void TestAppAdmin::initialisesOnlyWithItsName()
{
    m_token.control("delay C_InitToken * 10");
    QVERIFY(choose("tokenInitialise", "initialiseDialog"));
    QVERIFY(m_window->fill(QStringLiteral("officerPin"), QStringLiteral("00000000")));
    QVERIFY(fillNewPin(NewPin, NewPin));
    for (const QString &typed : {QStringLiteral("another"), m_token.token().label().toUpper()}) {
        QVERIFY(m_window->fill(QStringLiteral("initialiseConsent"), typed));
        QVERIFY(!m_window->item(QStringLiteral("adminConfirm"))->isEnabled());
    }
    QVERIFY(m_window->fill(QStringLiteral("initialiseConsent"), m_token.token().label()));
    QVERIFY(confirm());
    QVERIFY(m_window->waitFor([&] {
        return m_steps->text("adminProblem") == qtTrId("trivex-app-admin-wrong-officer-pin");
    }));
    QCOMPARE(m_token.count("C_InitToken"), 1);
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("initialiseDialog"));
    QVERIFY(opensWith(rightPin()));
}

void TestAppAdmin::initialisesAfterItWasLeft()
{
    const QString before = m_token.token().label();
    const QString after = QStringLiteral("Left alone");
    m_token.control("delay C_InitToken * 1500");
    QVERIFY(choose("tokenInitialise", "initialiseDialog"));
    QVERIFY(fillInitialise(before, after));
    QVERIFY(confirm());
    QVERIFY(m_token.waitUntilInside("C_InitToken"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("initialiseDialog"));
    // The name is the new one, though its field is empty by now.
    QVERIFY(m_window->waitForItem(tokenItem(after)));
    QVERIFY(isTold(qtTrId("trivex-app-initialised").arg(after)));
    m_token.control();
    QVERIFY(m_window->click(tokenItem(after)));
    QVERIFY(choose("tokenInitialise", "initialiseDialog"));
    QVERIFY(fillInitialise(after, before));
    QVERIFY(confirm());
    QVERIFY(m_steps->waitClosed("initialiseDialog"));
    QVERIFY(m_window->waitForItem(tokenItem(before)));
    QVERIFY(opensWith(rightPin()));
}

/// Nobody is told that nothing is lost where nothing could be read.
void TestAppAdmin::tellsOfUnknownLoss()
{
    const auto loss = [&] {
        const QQuickItem *warning = m_window->item(QStringLiteral("initialiseWarning"));
        return warning ? warning->property("detail").toString() : QString();
    };
    QVERIFY(m_token.replug(m_steps->tokenStoreId(), "fail C_FindObjectsInit * CKR_DEVICE_ERROR"));
    QVERIFY(choose("tokenInitialise", "initialiseDialog"));
    const QString unknown = qtTrId("trivex-app-admin-loss-unknown");
    QVERIFY2(m_window->waitFor([&] { return loss() == unknown; }), qPrintable(loss()));
    // Nor later, while it is tried again and again.
    QVERIFY(m_window->holds([&] { return loss() == unknown; }));
    m_token.control();
    QVERIFY(m_window->waitFor([&] {
        return loss().contains(
            qtTrId("trivex-app-admin-loss").arg(QString::number(0), QString::number(0)));
    }));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("initialiseDialog"));
}

/// A task that is left while it waits takes nothing with it.
void TestAppAdmin::leavesTheWorkBeforeItAlone()
{
    m_token.control("delay C_GenerateKeyPair * 5000");
    QVERIFY(m_steps->startKey(QStringLiteral("behind"), rightPin()));
    QVERIFY(m_token.waitUntilInside("C_GenerateKeyPair"));
    QVERIFY(m_window->click(tokenItem()));
    QVERIFY(choose("tokenChangePin", "changePinDialog"));
    QVERIFY(m_window->fill(QStringLiteral("oldPin"), rightPin()));
    QVERIFY(fillNewPin(NewPin, NewPin));
    QVERIFY(confirm());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("changePinDialog"));
    QCOMPARE(m_token.count("C_GenerateKeyPair"), 0); // still at it
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-admin-left").arg(m_token.token().label()));
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->waitForKey());
    QCOMPARE(m_token.count("C_SetPIN"), 0);
    QVERIFY(opensWith(rightPin()));
}

/// Beside another token of that name its own is shown with the number, which is no part of it.
void TestAppAdmin::proposesItsOwnLabel()
{
    const QString label = m_token.token().label();
    m_token.control("other-token");
    QString shown;
    QVERIFY(m_window->waitFor([&] {
        const auto tokens = Trivex::TokenMonitor::tokens();
        for (const Trivex::TokenStatus &one : tokens) {
            if (one.present && one.name != label && one.name.startsWith(label))
                shown = one.name;
        }
        return !shown.isEmpty();
    }));
    QVERIFY(m_window->waitForItem(tokenItem(shown)));
    QVERIFY(m_window->click(tokenItem(shown)));
    QVERIFY(choose("tokenInitialise", "initialiseDialog"));
    QCOMPARE(m_steps->text("initialiseName"), label);
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("initialiseDialog"));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppAdmin, FaultyToken>(argc, argv, QStringLiteral("Токен А"));
}

#include "tst_app_admin.moc"
