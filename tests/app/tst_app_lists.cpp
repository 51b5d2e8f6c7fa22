// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/rememberedtokens.h"
#include "tests/app/samplewindowtest.h"
#include "tests/support/userfiles.h"

#include <QClipboard>
#include <QCryptographicHash>
#include <QFontDatabase>
#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScopeGuard>
#include <QSettings>
#include <QtTest>

using namespace TrivexTest;

namespace {

QString personName()
{
    return QStringLiteral("Иванова Мария Петровна");
}

} // namespace

/// Lists, search, details, keys and what the window remembers, over a token and files that have
/// something in each category.
class TestAppLists : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();

    void searchInEveryList_data();
    void searchInEveryList();
    void searchByTaxNumber();
    void searchByWhatTheDetailsShow();
    void hitIsMarked();
    void countsStayWhileSearching();
    void emptyListsSayWhatBelongsThere();
    void rowsTellWhatTheyAre();
    void sectionsByStore();
    void keyboardAlone();
    void shortcuts();
    void valuesAreCopied();
    void identifiersOnDisplay();
    void identifiersOnEntry();
    void removalNamesWhatGoes();
    void widths();
    void windowIsRemembered();
    void tokensAreRememberedOnWish();

private:
    void prepare() override;
    void arrive() override;

    bool addNumbers(const QString &name, const QString &numbers) const;
    QStringList shownTexts() const;
    bool openRow(const char *category, const QString &name);
    QQuickItem *list() const { return m_window->item(QStringLiteral("certificateList")); }
    QAbstractItemModel *rows() const
    {
        return list()->property("model").value<QAbstractItemModel *>();
    }
};

// The openssl program has no name for INNLE; its configuration gives it one.
bool TestAppLists::addNumbers(const QString &name, const QString &numbers) const
{
    const QString configuration = m_authority.file(QStringLiteral("numbers.cnf"));
    writeTestFile(configuration,
                  "oid_section = oids\n[oids]\ninnle = 1.2.643.100.4\n[req]\n"
                  "distinguished_name = dn\n[dn]\n");
    const QByteArray pem = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-config"), configuration, QStringLiteral("-x509"),
         QStringLiteral("-newkey"), QStringLiteral("ed25519"), QStringLiteral("-nodes"),
         QStringLiteral("-keyout"), QStringLiteral("/dev/null"), QStringLiteral("-utf8"),
         QStringLiteral("-subj"), QStringLiteral("/CN=") + name + numbers});
    return !pem.isEmpty() && !writeTestFile(userFile(name + QStringLiteral(".pem")), pem).isEmpty();
}

void TestAppLists::prepare()
{
    QVERIFY(addNumbers(QStringLiteral("Right numbers"),
                       QStringLiteral("/1.2.643.3.131.1.1=500100732259/1.2.643.100.3=11223344595"
                                      "/1.2.643.100.1=1027700132195/innle=7707083893"
                                      "/1.2.643.100.5=304500116000157")));
    QVERIFY(addNumbers(QStringLiteral("Wrong numbers"),
                       QStringLiteral("/1.2.643.3.131.1.1=500100732258/1.2.643.100.3=11223344596"
                                      "/1.2.643.100.1=1027700132196/innle=7707083894"
                                      "/1.2.643.100.5=304500116000158")));
}

void TestAppLists::arrive()
{
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(personName()) >= 0; }));
}

void TestAppLists::init()
{
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
}

QStringList TestAppLists::shownTexts() const
{
    QStringList texts;
    visitItems(m_window->window()->contentItem(),
               [&](QQuickItem *item) { texts += item->property("text").toString(); });
    texts.removeAll(QString());
    return texts;
}

bool TestAppLists::openRow(const char *category, const QString &name)
{
    return m_steps->show(category)
        && m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        && m_window->clickRow(m_window->rowNamed(name))
        && m_window->waitForItem(QStringLiteral("detailsView"));
}

void TestAppLists::searchInEveryList_data()
{
    QTest::addColumn<QString>("category");
    for (const char *category : {"personal", "users", "roots", "others", "system", "requests"})
        QTest::newRow(category) << QString::fromLatin1(category);
}

void TestAppLists::searchInEveryList()
{
    QFETCH(QString, category);
    QVERIFY(m_steps->show(qPrintable(category)));
    const int all = m_window->rowCount();
    // By Ctrl+F from wherever the keyboard is, narrowed with each letter.
    m_window->key(Qt::Key_F, Qt::ControlModifier);
    QQuickItem *field = m_window->item(QStringLiteral("searchField"));
    QVERIFY(field);
    QVERIFY(field->hasActiveFocus());
    m_window->type(QStringLiteral("no such name"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
    QVERIFY(
        m_window->waitFor([&] { return shownTexts().contains(qtTrId("trivex-app-not-found")); }));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->text("searchField").isEmpty());
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == all; }));
    if (all == 0)
        return;
    const QString first = valueOf(*rows(), 0, "name").toString();
    m_window->type(first.toUpper());
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
    QVERIFY(m_window->rowNamed(first) >= 0);
    QVERIFY(m_window->rowCount() <= all);
}

void TestAppLists::searchByTaxNumber()
{
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("5001007322")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 1; }));
    QCOMPARE(m_window->rowNamed(personName()), 0);
}

void TestAppLists::searchByWhatTheDetailsShow()
{
    const QByteArray der = m_authority.openssl({QStringLiteral("x509"), QStringLiteral("-in"),
                                                userFile(QStringLiteral("Right numbers.pem")),
                                                QStringLiteral("-outform"), QStringLiteral("DER")});
    const QByteArray digest = QCryptographicHash::hash(der, QCryptographicHash::Sha256);
    QVERIFY(m_steps->show("users"));
    const int all = m_window->rowCount();
    for (const QByteArray &typed :
         {digest.toHex(), digest.toHex(':').toUpper(), digest.toHex(' ')}) {
        m_window->key(Qt::Key_F, Qt::ControlModifier);
        m_window->type(QString::fromLatin1(typed));
        QTRY_COMPARE(m_window->rowCount(), 1);
        QCOMPARE(m_window->rowNamed(QStringLiteral("Right numbers")), 0);
        m_window->key(Qt::Key_Escape);
        QTRY_COMPARE(m_window->rowCount(), all);
    }
    // The identifier of the kind of key that each of them has.
    m_window->key(Qt::Key_F, Qt::ControlModifier);
    m_window->type(QStringLiteral("1.3.101.112"));
    QVERIFY(m_window->holds([&] { return m_window->rowCount() == all; }));
    m_window->key(Qt::Key_Escape);
}

void TestAppLists::hitIsMarked()
{
    const auto marks = [&] {
        return shownTexts().filter(QStringLiteral("<u>")).filter(QStringLiteral("Иванова"));
    };
    QVERIFY(marks().isEmpty());
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("иванова")));
    QVERIFY(m_window->waitFor([&] { return !marks().isEmpty(); }));
}

void TestAppLists::countsStayWhileSearching()
{
    const auto count = [&](const char *name) {
        return m_window->item(QLatin1String(name))->property("count").toInt();
    };
    QCOMPARE(count("category-personal"), m_window->rowCount());
    QCOMPARE(count("category-users"), 4);
    QCOMPARE(count("category-requests"), 1);
    QCOMPARE(
        m_window->item(QStringLiteral("token-") + m_data.tokenName())->property("count").toInt(),
        3);
    const int before = count("category-personal");
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
    QCOMPARE(count("category-personal"), before);
}

void TestAppLists::emptyListsSayWhatBelongsThere()
{
    QVERIFY(m_steps->show("others"));
    QCOMPARE(m_window->rowCount(), 0);
    QVERIFY(shownTexts().contains(qtTrId("trivex-app-empty")));
    QVERIFY(shownTexts().contains(qtTrId("trivex-app-about-others")));
    // With the button that fills it, or ends the search that emptied it.
    QTRY_COMPARE(m_steps->text("emptyAction"), qtTrId("trivex-app-import"));
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
    QTRY_COMPARE(m_steps->text("emptyAction"), qtTrId("trivex-app-clear-search"));
    QVERIFY(m_window->click(QStringLiteral("emptyAction")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
    QVERIFY(m_steps->show("others"));
    // No empty half beside an empty list.
    QVERIFY(!shownTexts().contains(qtTrId("trivex-app-details-none")));
}

void TestAppLists::rowsTellWhatTheyAre()
{
    QVERIFY(m_steps->show("users"));
    const int row = m_window->rowNamed(QStringLiteral("maria.ivanova@example.org"));
    QVERIFY(row >= 0);
    // Eleven days of life left: a word, the date in the user's way, both without any colour.
    const QStringList texts = shownTexts();
    QVERIFY(texts.contains(qtTrId("trivex-app-validity-expiring")));
    QVERIFY(texts.contains(qtTrId("trivex-app-validity-valid")));
    const QDate end = QDateTime::currentDateTime().addDays(11).date();
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    QVERIFY(texts.contains(QLocale().toString(end, format)));
}

void TestAppLists::sectionsByStore()
{
    const QStringList before = shownTexts();
    // In a category the store heads its rows; on the token's own page it would only repeat it.
    QVERIFY(before.count(m_data.tokenName()) >= 2);
    QVERIFY(m_window->click(QStringLiteral("token-") + m_data.tokenName()));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 3; }));
    QVERIFY(shownTexts().contains(m_data.tokenName()));
}

void TestAppLists::keyboardAlone()
{
    m_window->key(Qt::Key_F, Qt::ControlModifier);
    m_window->type(QStringLiteral("петровна"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 1; }));
    m_window->key(Qt::Key_Down);
    QVERIFY(list()->hasActiveFocus());
    QCOMPARE(list()->property("currentIndex").toInt(), 0);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(shownTexts().contains(personName()));
    m_window->key(Qt::Key_End);
    QCOMPARE(list()->property("currentIndex").toInt(), 0);
}

void TestAppLists::shortcuts()
{
    m_window->key(Qt::Key_N, Qt::ControlModifier);
    QVERIFY(m_window->waitForItem(QStringLiteral("generateButton")));
    // Leaving an untouched page leaves nothing behind.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(!m_window->item(QStringLiteral("generateButton")));
}

void TestAppLists::valuesAreCopied()
{
    QVERIFY(openRow("personal", personName()));
    QVERIFY(m_window->click(QStringLiteral("copyButton")));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QCOMPARE(m_steps->text("toastText"), qtTrId("trivex-app-copied"));
    const QString all = QGuiApplication::clipboard()->text();
    QVERIFY(all.contains(personName()));
    QVERIFY(all.contains(QStringLiteral("500100732259")));

    // One value alone, selected and copied by keyboard; it can't be changed.
    QQuickItem *serial = nullptr;
    QQuickItem *fixedOne = nullptr;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (!item->inherits("QQuickTextEdit") || !item->parentItem())
            return;
        if (item->parentItem()->property("fixedWidth").toBool() && !fixedOne)
            fixedOne = item;
        if (item->property("text").toString() == QLatin1String("500100732259"))
            serial = item;
    });
    QVERIFY(serial);
    QVERIFY(fixedOne);
    QCOMPARE(fixedOne->property("font").value<QFont>().family(),
             QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    serial->forceActiveFocus(Qt::TabFocusReason);
    m_window->type(QStringLiteral("7"));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("500100732259"));
}

void TestAppLists::identifiersOnDisplay()
{
    // Number and flag of each row that has one; a row is told by its label and flag.
    const auto flagged = [&] {
        QStringList values;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            if (item->property("label").isValid() && !item->property("flag").toString().isEmpty())
                values += item->property("value").toString();
        });
        values.sort();
        return values;
    };
    QVERIFY(openRow("users", QStringLiteral("Right numbers")));
    for (const char *number :
         {"500100732259", "11223344595", "1027700132195", "7707083893", "304500116000157"})
        QVERIFY2(shownTexts().contains(QLatin1String(number)), number);
    QCOMPARE(flagged(), QStringList());
    QVERIFY(openRow("users", QStringLiteral("Wrong numbers")));
    QStringList wrong;
    for (const char *number :
         {"500100732258", "11223344596", "1027700132196", "7707083894", "304500116000158"})
        wrong << QLatin1String(number) << QLatin1String(number); // self-signed: its issuer's, too
    wrong.sort();
    QCOMPARE(flagged(), wrong);
    QCOMPARE(shownTexts().count(qtTrId("trivex-app-digits-wrong")), wrong.size());
}

void TestAppLists::identifiersOnEntry()
{
    QVERIFY(m_steps->startKey(QStringLiteral("numbers"), QString::fromLatin1(TestToken::pin())));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_steps->chooseProfile(4));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Numbers")));
    const struct {
        const char *field;
        const char *text;
        const char *flag;
    } entries[] = {
        {"inn", "7707083893", ""},
        {"inn", "7707083894", "trivex-app-digits-wrong"},
        {"inn", "500100732259", ""},
        {"inn", "500100732258", "trivex-app-digits-wrong"},
        {"inn", "77070838", "trivex-app-digits-length"},
        {"inn", "77070838x3", "trivex-app-digits-only"},
        {"snils", "112-233-445 95", ""},
        {"snils", "112-233-445 96", "trivex-app-digits-wrong"},
        {"ogrn", "1027700132195", ""},
        {"ogrn", "1027700132196", "trivex-app-digits-wrong"},
        {"ogrn", "304500116000157", ""},
        {"ogrn", "304500116000158", "trivex-app-digits-wrong"},
    };
    for (const auto &entry : entries) {
        const QString name = QLatin1String(entry.field);
        QQuickItem *input = m_window->item(name + QStringLiteral("Input"));
        QVERIFY2(input, entry.field);
        input->forceActiveFocus(Qt::TabFocusReason);
        m_window->key(Qt::Key_A, Qt::ControlModifier);
        m_window->type(QLatin1String(entry.text));
        const QString wanted = *entry.flag ? qtTrId(entry.flag) : QString();
        QVERIFY2(m_steps->flag(qPrintable(name + QStringLiteral("Field"))) == wanted, entry.text);
        // Said, never refused: the text stays and the request can be made.
        QCOMPARE(input->property("text").toString(), QLatin1String(entry.text));
        QVERIFY(m_window->item(QStringLiteral("createRequest"))->isEnabled());
    }
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
}

void TestAppLists::removalNamesWhatGoes()
{
    QVERIFY(openRow("personal", personName()));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(shownTexts().contains(qtTrId("trivex-app-remove-key-warning")));
    QVERIFY(shownTexts().contains(qtTrId("trivex-app-remove-bundle-text").arg(m_data.tokenName())));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QVERIFY(m_window->rowNamed(personName()) >= 0);
    // Without a key nothing is said of one; what the system holds can't be removed here.
    QVERIFY(openRow("users", QStringLiteral("Сервер обновлений")));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(!shownTexts().contains(qtTrId("trivex-app-remove-key-warning")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QVERIFY(m_steps->show("system"));
    if (m_window->rowCount() > 0) {
        QVERIFY(m_window->clickRow(0));
        QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
        QVERIFY(!m_window->item(QStringLiteral("removeButton")));
    }
}

void TestAppLists::widths()
{
    const auto shows = [&](const char *name) {
        return m_window->item(QLatin1String(name)) != nullptr;
    };
    m_window->window()->resize(780, 700);
    QVERIFY(m_window->waitFor([&] { return !shows("sidebar"); }));
    QVERIFY(shows("certificateList") && shows("detailsPane"));
    m_window->window()->resize(400, 700);
    QVERIFY(m_window->waitFor([&] { return !shows("detailsPane"); }));
    QVERIFY(m_window->clickRow(m_window->rowNamed(personName())));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(!shows("certificateList"));
    // Back by key, and the drawer by its button.
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_window->waitForItem(QStringLiteral("certificateList")));
    QVERIFY(m_window->click(QStringLiteral("menuButton")));
    QVERIFY(m_steps->waitOpen("drawer"));
    QVERIFY(m_steps->show("users"));
    QVERIFY(m_steps->waitClosed("drawer"));
    m_window->window()->resize(1180, 760);
    QVERIFY(m_window->waitFor([&] { return shows("sidebar"); }));
}

void TestAppLists::windowIsRemembered()
{
    m_window->window()->resize(1010, 655);
    m_window->setTheme(2, 1.15);
    QVERIFY(m_window->waitUntilStill());
    openWindow();
    QVERIFY(m_window->waitFor([&] { return m_window->window()->size() == QSize(1010, 655); }));
    QVERIFY(m_window->click(QStringLiteral("settingsButton")));
    QVERIFY(m_steps->waitOpen("settingsDialog"));
    QVERIFY(m_window->item(QStringLiteral("colours-2"))->property("checked").toBool());
    QVERIFY(m_window->click(QStringLiteral("colours-1")));
    m_window->setTheme(1, 1);
}

void TestAppLists::tokensAreRememberedOnWish()
{
    const auto box = [&] { return m_window->item(QStringLiteral("rememberTokens")); };
    const auto isStored = [] {
        return QSettings().value(QStringLiteral("rememberTokens"), false).toBool();
    };
    const auto isTold = [&] {
        const QQuickItem *told = m_window->item(QStringLiteral("rememberTokensProblem"));
        return told && told->isVisible();
    };
    QVERIFY(m_window->click(QStringLiteral("settingsButton")));
    QVERIFY(m_steps->waitOpen("settingsDialog"));
    QVERIFY(!box()->property("checked").toBool());
    QVERIFY(!isTold());
    QVERIFY(m_window->click(QStringLiteral("rememberTokens")));
    QVERIFY(m_window->waitFor([&] { return Trivex::tokensAreRemembered(); }));
    QVERIFY(isStored());
    QVERIFY(box()->property("checked").toBool());
    // A page of another engine of the same process.
    QQmlEngine engine;
    QQmlComponent page(&engine);
    page.setData("import Trivex.Crypto.Tools 1.0\nRememberedTokens {}", QUrl());
    const std::unique_ptr<QObject> other(page.create());
    QVERIFY2(other, qPrintable(page.errorString()));
    QVERIFY(other->setProperty("on", false));
    QVERIFY(m_window->waitFor([&] { return !box()->property("checked").toBool(); }));
    QVERIFY(!isStored());
    // Where settings can't be written the box is off again, and says why.
    const QString organization = QCoreApplication::organizationName();
    const auto reset = qScopeGuard([&] { QCoreApplication::setOrganizationName(organization); });
    const QString name = QStringLiteral("blocked");
    const QString folder = QFileInfo(QFileInfo(QSettings().fileName()).path()).path();
    QFile file(folder + QLatin1Char('/') + name);
    QVERIFY(QDir().mkpath(folder) && file.open(QIODevice::WriteOnly));
    QCoreApplication::setOrganizationName(name);
    QVERIFY(m_window->click(QStringLiteral("rememberTokens")));
    QVERIFY(m_window->waitFor([&] { return isTold(); }));
    QVERIFY(!box()->property("checked").toBool());
    QVERIFY(!Trivex::tokensAreRemembered());
    QVERIFY(file.remove());
    QVERIFY(m_window->click(QStringLiteral("rememberTokens")));
    QVERIFY(m_window->waitFor([&] { return !isTold(); }));
    QVERIFY(box()->property("checked").toBool());
    QVERIFY(m_window->click(QStringLiteral("rememberTokens")));
    QVERIFY(m_window->waitFor([&] { return !Trivex::tokensAreRemembered(); }));
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppLists>(argc, argv);
}

#include "tst_app_lists.moc"
