// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/question.h"
#include "tests/app/harness.h"
#include "tests/app/looks.h"
#include "tests/controls/host.h"
#include "tests/support/testcertificates.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QPointer>
#include <QQmlContext>
#include <QQuickStyle>
#include <QRegularExpression>
#include <QtTest>

#include <atomic>
#include <future>

using namespace TrivexTest;

namespace {

const QString English = QStringLiteral("en_US");
const QString Russian = QStringLiteral("ru_RU");
constexpr QSize Narrow(400, 640);
constexpr QSize Huge(3840, 2160);

bool hasWidgets()
{
    return qEnvironmentVariable("TRIVEX_TEST_KIND") == QLatin1String("widgets");
}

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

} // namespace

/// Every type of Trivex.Crypto.Controls and Trivex.Crypto.Tools in an application that knows
/// nothing of our style: made, shown, used; narrow and large, in both languages; nothing said on
/// the log.
class TestControls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void everyType_data();
    void everyType();
    void secretsStaySecret();
    void pinDialog_data() { languagesAndSizes(); }
    void pinDialog();
    void pinPrompt();
    void promptOfOneQuestionOnly();
    void withdrawnAlone();
    void enterAtThatMoment();
    void importDialog_data() { languagesAndSizes(); }
    void importDialog();
    void importChosen();
    void smallDialogs_data() { languagesAndSizes(); }
    void smallDialogs();
    void lists_data() { languagesAndSizes(); }
    void lists();
    void forms_data() { languagesAndSizes(); }
    void forms();

private:
    static void languagesAndSizes();
    void looksWell(const Host &host, const QString &name);

    std::unique_ptr<TestAuthority> m_authority;
    QString m_bundle;
};

void TestControls::initTestCase()
{
    Host::collectMessages();
    m_authority = std::make_unique<TestAuthority>();
    m_bundle = m_authority->bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("EC"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:P-256")},
        QStringLiteral("/CN=Мария Иванова"), QStringLiteral("secret"), QStringLiteral("maria"));
    QVERIFY(!m_bundle.isEmpty());
}

void TestControls::cleanup()
{
    const QStringList said = Host::takeMessages();
    QVERIFY2(said.isEmpty(), qPrintable(said.join(QLatin1Char('\n'))));
}

void TestControls::languagesAndSizes()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QSize>("size");
    for (const QString &locale : {English, Russian}) {
        for (const QSize &size : {Narrow, Huge})
            QTest::addRow("%s, %d px", qPrintable(locale), size.width()) << locale << size;
    }
}

void TestControls::looksWell(const Host &host, const QString &name)
{
    host.picture(
        QStringLiteral("%1-%2-%3").arg(name, QLocale().name().left(2)).arg(host.window()->width()));
    QTest::qWait(300);
    const QStringList room = host.lackOfRoom();
    QVERIFY2(room.isEmpty(), qPrintable(name + QLatin1Char('\n') + room.join(QLatin1Char('\n'))));
    const QStringList contrast = host.lackOfContrast();
    QVERIFY2(contrast.isEmpty(),
             qPrintable(name + QLatin1Char('\n') + contrast.join(QLatin1Char('\n'))));
}

void TestControls::everyType_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isSingleton");
    const auto read = [](const char *name) {
        QFile file(QStringLiteral(TRIVEX_MODULE_SOURCES "/") + QLatin1String(name));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll());
    };
    const auto addAll = [](const QString &text, const char *pattern, bool isSingleton) {
        QRegularExpression expression(QLatin1String(pattern), QRegularExpression::MultilineOption);
        auto found = expression.globalMatch(text);
        int count = 0;
        for (; found.hasNext(); ++count) {
            const QString type = found.next().captured(1);
            QTest::newRow(qPrintable(type)) << type << isSingleton;
        }
        return count;
    };
    const QString list = read("controls/qmldir");
    const QString controls = read("controls/controlsplugin.cpp");
    const QString tools = read("tools/toolsplugin.cpp");
    QVERIFY(addAll(list, "^(\\w+) 1\\.0 \\w+\\.qml$", false) > 20);
    QVERIFY(addAll(list, "^singleton (\\w+) 1\\.0", true) > 0);
    QVERIFY(addAll(controls, "^\\s*uri, 1, 0, \"(\\w+)\",$", true) > 0);
    QVERIFY(addAll(tools, "qmlRegisterType<\\w+>\\(uri, 1, 0, \"(\\w+)\"\\)", false) > 5);
    QVERIFY(addAll(tools, "registerHelper<\\w+>\\(uri, \"(\\w+)\"\\)", true) > 1);
}

/// Texts of ours below `item` that would show a stranger's name as rich text, images included.
QStringList richTexts(const QQuickItem *item)
{
    constexpr int AutoText = 2; // Text.AutoText
    QStringList found;
    const QQmlContext *context = qmlContext(item);
    const bool isOurs =
        context && context->baseUrl().path().contains(QLatin1String("/Trivex/Crypto/Controls/"));
    if (isOurs && item->property("textFormat").toInt() == AutoText)
        found += QString::fromLatin1(item->metaObject()->className()) + QLatin1String(" in ")
            + context->baseUrl().fileName();
    const auto children = item->childItems();
    for (const QQuickItem *child : children)
        found += richTexts(child);
    return found;
}

/// By itself and without any property set: nothing may be taken for granted.
void TestControls::everyType()
{
    QFETCH(QString, type);
    QFETCH(bool, isSingleton);
    const Host host(QStringLiteral("property QtObject made: ") + type
                    + (isSingleton ? QString() : QStringLiteral(" {}")));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    auto *made = host.window()->property("made").value<QObject *>();
    QVERIFY(made);
    if (auto *item = qobject_cast<QQuickItem *>(made))
        item->setParentItem(host.window()->contentItem());
    else if (made->metaObject()->indexOfMethod("open()") >= 0)
        QMetaObject::invokeMethod(made, "open");
    QTest::qWait(50);
    const QStringList rich = richTexts(host.window()->contentItem());
    QVERIFY2(rich.isEmpty(), qPrintable(rich.join(QLatin1Char('\n'))));
}

void TestControls::secretsStaySecret()
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

void TestControls::pinDialog()
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

void TestControls::pinPrompt()
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
void TestControls::promptOfOneQuestionOnly()
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

void TestControls::withdrawnAlone()
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
void TestControls::enterAtThatMoment()
{
    Host host(QStringLiteral("PinPromptDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    Question first(QStringLiteral("Token A"));
    QVERIFY(host.waitOpen("pinPromptDialog"));
    Question second(QStringLiteral("Token B"));
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

void TestControls::importDialog()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral("ImportDialog {}"), locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    QMetaObject::invokeMethod(host.object("importDialog"), "start", Q_ARG(QVariant, m_bundle));
    QVERIFY(host.waitOpen("importDialog"));
    QVERIFY(host.waitForItem("bundlePassword"));
    QTRY_VERIFY(host.item("bundleUnlock") && host.item("bundleUnlock")->isEnabled());
    looksWell(host, QStringLiteral("bundle"));
    host.item("bundlePassword")->forceActiveFocus();
    host.type(QStringLiteral("wrong"));
    QVERIFY(host.click("bundleUnlock"));
    QTRY_VERIFY(host.item("importProblem") && host.item("bundleUnlock")->isEnabled());
    QTRY_COMPARE(host.item("importProblem")->property("level").toInt(), 3);
    looksWell(host, QStringLiteral("wrong-password"));
    host.item("bundlePassword")->setProperty("text", QStringLiteral("secret"));
    QVERIFY(host.click("bundleUnlock"));
    QTRY_VERIFY(!host.item("bundlePassword"));
    looksWell(host, QStringLiteral("preview"));
    QVERIFY(host.item("tokenChooser"));
    QVERIFY(!host.item("importAccept")->isEnabled()); // no token is there
    QVERIFY(host.click("importCancel"));
    QVERIFY(host.waitOpen("importDialog", false));
}

/// The dialog that chooses a file: the platform's with widgets, ours without.
void TestControls::importChosen()
{
    Host host(QStringLiteral("ImportDialog {}"));
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    if (hasWidgets()) {
        QMetaObject::invokeMethod(host.object("importDialog"), "choose");
        QFileDialog *dialog = nullptr;
        QTRY_VERIFY((dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) ||
                    [&] {
                        const auto all = QApplication::topLevelWidgets();
                        for (QWidget *one : all) {
                            if (!dialog && one->isVisible())
                                dialog = qobject_cast<QFileDialog *>(one);
                        }
                        return dialog != nullptr;
                    }());
        dialog->selectFile(m_bundle);
        QMetaObject::invokeMethod(dialog, "accept");
    } else {
        // A folder of its own is the user's home.
        qputenv("HOME", QFile::encodeName(QFileInfo(m_bundle).absolutePath()));
        QMetaObject::invokeMethod(host.object("importDialog"), "choose");
        QVERIFY(host.waitForItem("filePath"));
        looksWell(host, QStringLiteral("chooser"));
        host.item("filePath")->setProperty("text", m_bundle);
        host.item("filePath")->forceActiveFocus();
        host.key(Qt::Key_Return);
    }
    QVERIFY(host.waitOpen("importDialog"));
    QVERIFY(host.waitForItem("bundlePassword"));
}

void TestControls::smallDialogs()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(
        QStringLiteral("property int confirmations: 0\n"
                       "RemoveDialog { name: \"Мария Иванова\"; place: \"Token A\"; hasKey: true\n"
                       "onConfirmed: ++confirmations }\n"
                       "ErrorDialog { id: error }\n Toast { id: toast }\n"
                       "function fail() { error.show(qsTrId(\"trivex-app-cause-removed\"),\n"
                       "qsTrId(\"trivex-app-advice-removed\"), \"report\") }\n"
                       "function say() { toast.show(qsTrId(\"trivex-app-saved\")) }"),
        locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    for (const char *button : {"removeCancel", "removeConfirm"}) {
        QMetaObject::invokeMethod(host.object("removeDialog"), "open");
        QVERIFY(host.waitOpen("removeDialog"));
        looksWell(host, QStringLiteral("remove"));
        QVERIFY(host.click(button));
        QVERIFY(host.waitOpen("removeDialog", false));
    }
    QCOMPARE(host.window()->property("confirmations").toInt(), 1);
    QMetaObject::invokeMethod(host.window(), "fail");
    QVERIFY(host.waitOpen("errorDialog"));
    looksWell(host, QStringLiteral("error"));
    QVERIFY(host.click("errorReport"));
    QVERIFY(host.click("errorClose"));
    QVERIFY(host.waitOpen("errorDialog", false));
    QMetaObject::invokeMethod(host.window(), "say");
    QVERIFY(host.waitForItem("toastText"));
    looksWell(host, QStringLiteral("toast"));
}

void TestControls::lists()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral(R"(
        property int chosen: -1
        property int asked: 0
        background: Rectangle { color: Theme.window }
        ListModel {
            id: rows
            Component.onCompleted: {
                for (const name of ["Мария Иванова", "Иван Петров"])
                    append({ name: name, issuer: "Test Root", section: "USER", initial: name[0],
                             until: new Date(Date.now() + 86400000), hasKey: false,
                             validity: Validity.Expiring })
            }
        }
        Column {
            anchors.fill: parent
            SearchField { id: search; objectName: "search"; width: parent.width }
            CertificateList {
                objectName: "list"; model: rows; pattern: search.text
                width: parent.width; height: 200
                onActivated: chosen = index
            }
            DetailsView {
                width: parent.width; height: parent.height - 260
                header.name: "Мария Иванова"; header.place: "USER"
                header.from: new Date(0); header.until: new Date(4e12)
                header.validity: Validity.Valid
                header.canSign: true; header.canRemove: true
                header.onExportAsked: ++asked; header.onRemoveAsked: ++asked
                header.onSignAsked: ++asked; header.onCopyAsked: ++asked
                groups: [{ rows: [{ label: "Issuer", value: "Test Root", flag: "flag" },
                                  { label: "ИНН", value: "7830002294", fixed: true }] }]
            }
        })"),
              locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    looksWell(host, QStringLiteral("list"));
    host.item("certificateList")->forceActiveFocus();
    host.key(Qt::Key_Down);
    host.key(Qt::Key_Return);
    QCOMPARE(host.window()->property("chosen").toInt(), 1);
    QQuickItem *search = host.item("search");
    search->forceActiveFocus();
    host.type(QStringLiteral("root"));
    QCOMPARE(search->property("text").toString(), QStringLiteral("root"));
    looksWell(host, QStringLiteral("search"));
    host.key(Qt::Key_Escape);
    QCOMPARE(search->property("text").toString(), QString());
    for (const char *button : {"signButton", "exportButton", "removeButton", "copyButton"})
        QVERIFY2(host.click(button), button);
    QCOMPARE(host.window()->property("asked").toInt(), 4);
}

void TestControls::forms()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    Host host(QStringLiteral(R"(
        property int acted: 0
        background: Rectangle { color: Theme.window }
        Flickable {
            anchors.fill: parent; contentHeight: column.height
            FillColumn {
                id: column; width: parent.width; spacing: 8
                Notice { objectName: "notice"; level: 3; text: qsTrId("trivex-app-pin-final")
                         actionText: qsTrId("trivex-app-ok"); onAction: ++acted
                         Layout.fillWidth: true }
                EmptyState { height: implicitHeight; icon: "token"; text: qsTrId("trivex-app-no-token")
                             title: qsTrId("trivex-app-no-token"); actionText: "Action"
                             onAction: ++acted; Layout.fillWidth: true }
                TokenChooser { locations: KeyStoreModel.certLocation; Layout.fillWidth: true }
                Card { title: "Card"; Layout.fillWidth: true
                    SubjectForm { objectName: "form"; Layout.fillWidth: true } }
                Row { Badge { validity: Validity.Expired } Avatar { letter: "A" }
                      Icon { name: "key" } }
            }
        })"),
              locale, size);
    QVERIFY2(host.problem().isEmpty(), qPrintable(host.problem()));
    looksWell(host, QStringLiteral("form"));
    QObject *form = host.object("form");
    QVERIFY(!form->property("complete").toBool());
    host.item("commonNameInput")->forceActiveFocus();
    host.type(QStringLiteral("Maria"));
    QVERIFY(form->property("complete").toBool());
    host.item("innInput")->forceActiveFocus();
    host.type(QStringLiteral("123"));
    QVERIFY(!host.item("innField")->property("flag").toString().isEmpty());
    looksWell(host, QStringLiteral("form-flag"));
    QMetaObject::invokeMethod(form, "clear");
    QVERIFY(!form->property("complete").toBool());
    QMetaObject::invokeMethod(host.object("notice"), "action");
    QCOMPARE(host.window()->property("acted").toInt(), 1);
}

static bool isInstalled(const QString &style)
{
    return QQuickStyle::availableStyles().contains(style);
}

int main(int argc, char **argv)
{
    const WindowEnvironment display;
    if (!display.problem().isEmpty()) {
        std::printf("SKIP %s\n", qPrintable(display.problem()));
        return 0;
    }
    QString style = qEnvironmentVariable("TRIVEX_TEST_STYLE", QStringLiteral("Default"));
    if (style == QLatin1String("Trivex"))
        style = QStringLiteral(TRIVEX_CONTROLS_STYLE);
    const std::unique_ptr<QGuiApplication> application(
        hasWidgets() ? new QApplication(argc, argv) : new QGuiApplication(argc, argv));
    if (!QFileInfo(style).isAbsolute() && !isInstalled(style)) {
        std::printf("SKIP the style %s is not installed\n", qPrintable(style));
        return 0;
    }
    if (style.startsWith(QLatin1String("org.kde.desktop")) && !hasWidgets()) {
        std::printf("SKIP the style %s draws with widgets\n", qPrintable(style));
        return 0;
    }
    qputenv("QT_QUICK_CONTROLS_STYLE", style.toUtf8());
    QQuickStyle::setStyle(style);
    // As if somebody listened: it is then that Qt tells fields what they are.
    QAccessible::setActive(true);
    const QCA::Initializer qca;
    TestControls test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_controls.moc"
