// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/question.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/app/looks.h"
#include "tests/controls/controlstest.h"
#include "tests/support/quietbackend.h"

#include <QAccessible>
#include <QtTest>

#include <atomic>
#include <future>

using namespace TrivexTest;

namespace {

/// One question of a token, put from a thread of its own as an operation would.
class Question {
public:
    explicit Question(const QString &token, Trivex::PinState state = Trivex::PinState::Normal)
        : m_store(QStringLiteral("store of ") + token)
    {
        Trivex::QuestionInfo info;
        info.purpose = Trivex::Purpose::Write;
        info.keyStoreId = m_store;
        info.tokenName = token;
        info.pinState = state;
        m_reply = std::async(std::launch::async, [info] {
            return Trivex::ask(
                info, QCA::KeyStoreInfo(QCA::KeyStore::SmartCard, info.keyStoreId, info.tokenName));
        });
    }
    ~Question()
    {
        withdraw();
        isOver();
    }

    void withdraw() const { Trivex::cancelQuestions(m_store); }
    bool isOver(int ms = 5000)
    {
        return QTest::qWaitFor(
            [this] {
                return !m_reply.valid()
                    || m_reply.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
            },
            ms);
    }
    /// The PIN that it was answered with; null when it was declined.
    QByteArray pin()
    {
        const Trivex::Reply reply = m_reply.get();
        return reply.accepted ? reply.password.toByteArray() : QByteArray();
    }

private:
    QString m_store;
    std::future<Trivex::Reply> m_reply;
};

/// Notes what it is asked to do, and is never done.
class Tokens : public QuietBackend {
public:
    Trivex::CancellationPtr startAdministration(const QString &, Trivex::TokenAdministration wanted,
                                                Trivex::TokenAdministrationDone) override
    {
        asked += std::move(wanted);
        return std::make_shared<Trivex::Cancellation>();
    }

    QVector<Trivex::TokenAdministration> asked;
};

/// A token whose PIN and administrator's PIN are in these states.
void publish(const QString &storeId, Trivex::PinState pin, Trivex::PinState officerPin)
{
    Trivex::TokenStatus status;
    status.keyStoreId = status.name = storeId;
    status.present = true;
    status.shortestPin = 4;
    status.longestPin = 8;
    status.pinState = pin;
    status.officerPinState = officerPin;
    Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
}

} // namespace

/// PINs in a foreign application: asked for, sent for the question that they were typed for and no
/// other, and told to nobody.
class TestControlsPins : public ControlsTest {
    Q_OBJECT
private Q_SLOTS:
    void secretsStaySecret();
    void pinDialog_data() { languagesAndSizes(); }
    void pinDialog();
    void answeredOnce();
    void consentIsGivenByWhoTicks_data();
    void consentIsGivenByWhoTicks();
    void pinPrompt();
    void promptOfOneQuestionOnly();
    void withdrawnAlone();
    void enterAtThatMoment();
};

void TestControlsPins::secretsStaySecret()
{
    Host host(QStringLiteral("PasswordField { objectName: \"secret\"; width: 300\n"
                             "placeholderText: \"PIN\"; Accessible.name: \"PIN of A\" }"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QQuickItem *field = host.item("secret");
    QVERIFY(field);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(field);
    QVERIFY(accessible);
    QCOMPARE(accessible->role(), QAccessible::EditableText);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("PIN of A"));
    QVERIFY(accessible->state().passwordEdit);
    const Announcements announcements;
    field->forceActiveFocus(Qt::TabFocusReason);
    host.type(QStringLiteral("4711"));
    QCOMPARE(field->property("text").toString(), QStringLiteral("4711"));
    QStringList told = whatIsTold(field);
    // The button in it shows the secret on the screen, and to nobody else.
    QQuickItem *eye = nullptr;
    const auto children = field->childItems();
    for (QQuickItem *child : children) {
        if (child->inherits("QQuickToolButton"))
            eye = child;
    }
    QVERIFY(eye && host.clickItem(eye));
    QTRY_COMPARE(field->property("echoMode").toInt(), 0);
    QVERIFY(accessible->text(QAccessible::Name) == QLatin1String("PIN of A"));
    field->forceActiveFocus(Qt::TabFocusReason);
    host.type(QStringLiteral("4711"));
    QCOMPARE(field->property("text").toString().size(), 8);
    told += whatIsTold(field);
    QVERIFY(told.contains(QStringLiteral("PIN of A")));
    told += announcements.texts();
    for (const QString &text : qAsConst(told)) {
        for (const QChar digit : QStringLiteral("471"))
            QVERIFY2(!text.contains(digit), qPrintable(text));
    }
    QVERIFY(host.clickItem(eye));
    QTRY_COMPARE(field->property("echoMode").toInt(), 2);
}

void TestControlsPins::pinDialog()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral("property string got; property int leftCount: 0\n"
                             "PinDialog { tokenName: \"Токен бухгалтерии № 17\"\n"
                             "purposeText: qsTrId(\"trivex-app-purpose-generate\")\n"
                             "pinText: qsTrId(\"trivex-app-pin-final\"); lastTry: true\n"
                             "onSubmitted: got = pin; onLeft: ++leftCount }"),
              locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QMetaObject::invokeMethod(host.object("pinDialog"), "ask");
    QVERIFY(host.waitOpen("pinDialog"));
    looksWell(host, QStringLiteral("pin"));
    // The last try: no PIN without consent.
    host.type(QStringLiteral("1234"));
    host.key(Qt::Key_Return);
    QVERIFY(host.isOpen("pinDialog"));
    QVERIFY(!host.click("pinAccept"));
    QVERIFY(host.click("pinConsent"));
    QVERIFY(host.click("pinAccept"));
    QVERIFY(host.waitOpen("pinDialog", false));
    QCOMPARE(host.window()->property("got").toString(), QStringLiteral("1234"));
    QCOMPARE(host.window()->property("leftCount").toInt(), 0);
    // And left, by key and by button; nothing of the last time is there.
    for (int i = 0; i < 2; ++i) {
        QMetaObject::invokeMethod(host.object("pinDialog"), "ask");
        QVERIFY(host.waitOpen("pinDialog"));
        QVERIFY(host.item("pinField")->property("text").toString().isEmpty());
        QVERIFY(!host.item("pinConsent")->property("checked").toBool());
        if (i == 0)
            host.key(Qt::Key_Escape);
        else
            QVERIFY(host.click("pinCancel"));
        QVERIFY(host.waitOpen("pinDialog", false));
        QCOMPARE(host.window()->property("leftCount").toInt(), i + 1);
    }
}

/// Enter twice, or Enter after the question has ended, while the dialog goes.
void TestControlsPins::answeredOnce()
{
    Host host(QStringLiteral("property int sent: 0; property int leftCount: 0\n"
                             "PinDialog { onSubmitted: ++sent; onLeft: ++leftCount }"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QObject *dialog = host.object("pinDialog");
    const auto type = [&] {
        QMetaObject::invokeMethod(dialog, "ask");
        return host.waitOpen("pinDialog")
            && host.item("pinField")->setProperty("text", QStringLiteral("1234"));
    };
    QVERIFY(type());
    QMetaObject::invokeMethod(dialog, "submit");
    // Whatever is typed while the dialog goes.
    host.object("pinField")->setProperty("text", QStringLiteral("1234"));
    QMetaObject::invokeMethod(dialog, "submit");
    QVERIFY(host.waitOpen("pinDialog", false));
    QCOMPARE(host.window()->property("sent").toInt(), 1);
    QVERIFY(type());
    QMetaObject::invokeMethod(dialog, "withdraw");
    host.object("pinField")->setProperty("text", QStringLiteral("1234"));
    QMetaObject::invokeMethod(dialog, "submit");
    QVERIFY(host.waitOpen("pinDialog", false));
    QCOMPARE(host.window()->property("sent").toInt(), 1);
    QCOMPARE(host.window()->property("leftCount").toInt(), 0);
    // Nor is anything typed for a token that takes no PIN any more.
    QMetaObject::invokeMethod(dialog, "ask");
    QVERIFY(host.waitOpen("pinDialog") && host.item("pinField")->isEnabled());
    dialog->setProperty("locked", true);
    QVERIFY(!host.item("pinField")->isEnabled());
}

void TestControlsPins::consentIsGivenByWhoTicks_data()
{
    using Trivex::PinState;
    QTest::addColumn<bool>("byOfficer");
    QTest::addColumn<int>("pin");
    QTest::addColumn<int>("officerPin");
    QTest::addColumn<bool>("isAsked");
    const auto row = [](const char *name, bool byOfficer, PinState pin, PinState officerPin,
                        bool isAsked) {
        QTest::newRow(name) << byOfficer << int(pin) << int(officerPin) << isAsked;
    };
    row("nothing to consent to", false, PinState::Normal, PinState::Normal, false);
    row("few tries", false, PinState::CountLow, PinState::Normal, false);
    row("the administrator's last try", false, PinState::Normal, PinState::FinalTry, false);
    row("the last try", false, PinState::FinalTry, PinState::Normal, true);
    row("administrator, the user's last try", true, PinState::FinalTry, PinState::Normal, false);
    row("administrator, the last try", true, PinState::Normal, PinState::FinalTry, true);
}

/// The token may come to its last try between the dialog's look at it and the task: without a tick
/// that try is not made.
void TestControlsPins::consentIsGivenByWhoTicks()
{
    QFETCH(bool, byOfficer);
    QFETCH(int, pin);
    QFETCH(int, officerPin);
    QFETCH(bool, isAsked);
    const QString storeId = QStringLiteral("administered");
    publish(storeId, Trivex::PinState(pin), Trivex::PinState(officerPin));
    Tokens tokens;
    Host host(QStringLiteral("TokenAdminDialog { id: made; objectName: \"made\"; complete: true\n"
                             "byOfficer: %1\n"
                             "onStarted: admin.changePin(\"1234\", \"5678\", mayBeLastTry) }")
                  .arg(byOfficer ? QStringLiteral("true") : QStringLiteral("false")));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QMetaObject::invokeMethod(host.object("made"), "ask", Q_ARG(QVariant, storeId));
    QVERIFY(host.waitOpen("made"));
    QCOMPARE(host.item("adminConsent") != nullptr, isAsked);
    if (isAsked) {
        QVERIFY(!host.item("adminConfirm")->isEnabled());
        QMetaObject::invokeMethod(host.object("made"), "submit");
        QVERIFY(tokens.asked.isEmpty());
        QVERIFY(host.click("adminConsent"));
    }
    QVERIFY(host.click("adminConfirm"));
    QTRY_COMPARE(tokens.asked.size(), 1);
    QCOMPARE(tokens.asked.first().mayBeLastTry, isAsked);
    QMetaObject::invokeMethod(host.object("made"), "close");
    QVERIFY(host.waitOpen("made", false));
}

void TestControlsPins::pinPrompt()
{
    Host host(QStringLiteral("PinPromptDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    Question accepted(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    QCOMPARE(host.item("pinTokenName")->property("text").toString(), QStringLiteral("Token A"));
    host.type(QStringLiteral("4711"));
    host.key(Qt::Key_Return);
    QVERIFY(accepted.isOver());
    QCOMPARE(accepted.pin(), QByteArray("4711"));
    QVERIFY(host.waitOpen("pinPromptDialog", false));
    Question declined(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    host.type(QStringLiteral("4711"));
    host.key(Qt::Key_Escape);
    QVERIFY(declined.isOver());
    QVERIFY(declined.pin().isNull());
    QVERIFY(host.waitOpen("pinPromptDialog", false));
}

/// The question of A ends while one types for it, and B's comes: text and consent were for A.
void TestControlsPins::promptOfOneQuestionOnly()
{
    Host host(QStringLiteral("PinPromptDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    Question first(QStringLiteral("Token A"), Trivex::PinState::FinalTry);
    QVERIFY(host.waitOpen("pinPromptDialog"));
    Question second(QStringLiteral("Token B"), Trivex::PinState::FinalTry);
    QVERIFY(host.click("pinConsent"));
    QVERIFY(host.click("pinField"));
    host.type(QStringLiteral("12"));
    QTest::qWait(200); // B's question waits in line
    QCOMPARE(host.item("pinTokenName")->property("text").toString(), QStringLiteral("Token A"));
    first.withdraw();
    QTRY_COMPARE(host.item("pinTokenName")->property("text").toString(), QStringLiteral("Token B"));
    // Who types on has not read the name yet.
    host.type(QStringLiteral("34"));
    host.key(Qt::Key_Return);
    QVERIFY(host.isOpen("pinPromptDialog")); // nothing was sent
    QQuickItem *field = host.item("pinField");
    QCOMPARE(field->property("text").toString(), QString());
    QVERIFY(!host.item("pinConsent")->property("checked").toBool());
    QVERIFY(!host.item("pinAccept")->isEnabled());
    QVERIFY(host.item("pinReplaced")); // and is told
    QVERIFY(first.isOver());
    QVERIFY(first.pin().isNull());
    QVERIFY(!second.isOver(300));
    // Once the keyboard has been still it is B's.
    for (int i = 0; i < 5 && field->property("text").toString().isEmpty(); ++i) {
        QTest::qWait(900);
        host.type(QStringLiteral("5"));
    }
    host.type(QStringLiteral("678"));
    QVERIFY(host.click("pinConsent"));
    QVERIFY(host.click("pinAccept"));
    QVERIFY(second.isOver());
    QCOMPARE(second.pin(), QByteArray("5678"));
    QVERIFY(host.waitOpen("pinPromptDialog", false));
}

void TestControlsPins::withdrawnAlone()
{
    Host host(QStringLiteral("PinPromptDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    Question question(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    host.type(QStringLiteral("12"));
    question.withdraw();
    QVERIFY(host.waitOpen("pinPromptDialog", false));
    QVERIFY(question.isOver());
    QVERIFY(question.pin().isNull());
    // The next one starts without it, and without a word about the one before.
    Question next(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    QCOMPARE(host.item("pinField")->property("text").toString(), QString());
    QVERIFY(!host.item("pinReplaced"));
}

/// Enter in the moment between the end of A's question and its news.
void TestControlsPins::enterAtThatMoment()
{
    Host host(QStringLiteral("PinPromptDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    Question first(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    Question second(QStringLiteral("Token B"));
    // B's question waits in line, which shows nowhere.
    QTest::qWait(200);
    host.type(QStringLiteral("1234"));
    first.withdraw();
    host.key(Qt::Key_Return);
    QVERIFY(first.isOver());
    QVERIFY(first.pin().isNull());
    QVERIFY(!second.isOver(500));
    QTRY_COMPARE(host.item("pinTokenName")->property("text").toString(), QStringLiteral("Token B"));
    QCOMPARE(host.item("pinField")->property("text").toString(), QString());
    // A host that hands in late what it was asked before reaches nobody either.
    auto *prompt = host.object("pinPromptDialog")->property("prompt").value<QObject *>();
    const int now = prompt->property("question").toInt();
    QMetaObject::invokeMethod(prompt, "submit", Q_ARG(int, now - 1),
                              Q_ARG(QString, QStringLiteral("1234")));
    QMetaObject::invokeMethod(prompt, "reject", Q_ARG(int, now - 1));
    QVERIFY(!second.isOver(300));
    QMetaObject::invokeMethod(prompt, "submit", Q_ARG(int, now),
                              Q_ARG(QString, QStringLiteral("5678")));
    QVERIFY(second.isOver());
    QCOMPARE(second.pin(), QByteArray("5678"));
}

int main(int argc, char **argv)
{
    return runControlsTest<TestControlsPins>(argc, argv);
}

#include "tst_controls_pins.moc"
