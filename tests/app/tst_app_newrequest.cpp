// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QClipboard>
#include <QDir>
#include <QtTest>

using namespace TrivexTest;

/// The page of a new request with all that a request can have, by mouse and keyboard; the openssl
/// program says what came of it.
class TestAppNewRequest : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void serverWithSeveralNames();
    void wrongOtherNames_data();
    void wrongOtherNames();
    void anyFieldAndUsage();
    void kindsByKeyboard_data();
    void kindsByKeyboard();
    void kindOfOnesOwn();
    void keyThatIsThere();
    void russianCompany();

private:
    void arrive() override;
    void restore() override { m_token.control(); }

    QString requestFile(const char *name) const
    {
        return inHome(QStringLiteral("CertificateRequest/") + QString::fromUtf8(name));
    }
    /// A request's text, after its signature was checked; empty for a bad one.
    QString shown(const QString &path) const;
    bool makeKey(const char *name);
    /// Adds a value behind the button of a list by its menu.
    bool add(const char *list, const char *type);
    bool fill(const char *field, const char *text)
    {
        return m_window->fill(QLatin1String(field), QString::fromUtf8(text));
    }
    bool create();
};

void TestAppNewRequest::arrive()
{
    answerPins(rightPin());
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
    const QString configuration =
        writeTestFile(inHome(QStringLiteral("gost.cnf")),
                      "openssl_conf = conf\n[conf]\nengines = engines\n[engines]\ngost = gost\n"
                      "[gost]\nengine_id = gost\ndefault_algorithms = ALL\n"
                      "[req]\ndistinguished_name = name\n[name]\n");
    // For the openssl programs that look at the requests; this process has read its own.
    qputenv("OPENSSL_CONF", QFile::encodeName(configuration));
}

void TestAppNewRequest::init()
{
    answerPins(rightPin());
}

QString TestAppNewRequest::shown(const QString &path) const
{
    return QString::fromUtf8(m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-noout"),
         QStringLiteral("-text"), QStringLiteral("-nameopt"),
         QStringLiteral("oid,utf8,sep_comma_plus_space"), QStringLiteral("-in"), path}));
}

bool TestAppNewRequest::makeKey(const char *name)
{
    return m_steps->startKey(QString::fromUtf8(name), rightPin()) && m_steps->waitForKey();
}

bool TestAppNewRequest::add(const char *list, const char *type)
{
    const QString prefix = QLatin1String(list);
    QQuickItem *button = m_window->item(prefix + QStringLiteral("Add"));
    if (!button)
        return false;
    button->forceActiveFocus(Qt::TabFocusReason);
    // The menu would come up under a pointer that rests here, whose entry becomes the current one.
    QTest::mouseMove(m_window->window(), QPoint(1, 1));
    m_window->waitUntilStill();
    m_window->key(Qt::Key_Space);
    const QString item = prefix + QLatin1Char('-') + QLatin1String(type);
    QObject *menu = m_window->object(prefix + QStringLiteral("Menu"));
    if (!m_window->waitFor([&] { return menu->property("opened").toBool(); }))
        return false;
    for (int i = 0; i < 40; ++i) {
        const auto *current = m_window->window()->activeFocusItem();
        if (current && current->objectName() == item) {
            m_window->key(Qt::Key_Return);
            return m_window->waitFor([&] { return !menu->property("visible").toBool(); });
        }
        m_window->key(Qt::Key_Down);
    }
    m_window->key(Qt::Key_Escape);
    return false;
}

bool TestAppNewRequest::create()
{
    return m_steps->press("createRequest") && m_window->waitForItem(QStringLiteral("savedCard"));
}

void TestAppNewRequest::serverWithSeveralNames()
{
    QVERIFY(makeKey("server"));
    QVERIFY(m_steps->chooseProfile(1));
    QVERIFY(fill("commonNameInput", "www.example.org"));
    QVERIFY(fill("dnsInput", "www.example.org"));
    QVERIFY(add("other", "dns"));
    m_window->type(QStringLiteral("*.example.org"));
    QVERIFY(fill("ipInput", "192.0.2.1"));
    QVERIFY(create());
    const QString file = requestFile("www.example.org.csr");
    const QString text = shown(file);
    for (const char *wanted :
         {"2.5.4.3=www.example.org", "DNS:www.example.org", "DNS:*.example.org",
          "IP Address:192.0.2.1", "Digital Signature, Key Encipherment",
          "TLS Web Server Authentication", "(2048 bit)", "Exponent: 65537"})
        QVERIFY2(text.contains(QLatin1String(wanted)), qPrintable(text));

    // The result is in sight and can be copied.
    const QQuickItem *copy = m_window->item(QStringLiteral("copyRequest"));
    QVERIFY(copy);
    QTRY_VERIFY(m_window->isInSight(*copy));
    QVERIFY(m_window->click(QStringLiteral("copyRequest")));
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(QGuiApplication::clipboard()->text().toLatin1(), saved.readAll());
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-copied"));
    // And saved elsewhere, in either form.
    const QString copyPath = inHome(QStringLiteral("to send.der"));
    QVERIFY(m_steps->press("saveRequest"));
    QVERIFY(answerFileDialog(*m_window, copyPath));
    QTRY_VERIFY(QFile::exists(copyPath));
    QVERIFY(m_authority
                .openssl({QStringLiteral("req"), QStringLiteral("-inform"), QStringLiteral("DER"),
                          QStringLiteral("-in"), copyPath, QStringLiteral("-noout"),
                          QStringLiteral("-subject")})
                .contains("www.example.org"));
    // It stands in the list of all requests.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("www.example.org")) >= 0; }));
}

void TestAppNewRequest::wrongOtherNames_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<QString>("right");
    const auto row = [](const char *type, const char *wrong, const char *right) {
        QTest::newRow(type) << QString::fromLatin1(type) << QString::fromUtf8(wrong)
                            << QString::fromUtf8(right);
    };
    row("dns", "a b", "a.example.org");
    row("email", "petr@@", "petr@example.org");
    row("ip", "192.0.2.256", "2001:db8::1");
    row("uri", "example", "urn:uuid:0");
}

/// What is wrong is said while it is typed, and no request is made of it.
void TestAppNewRequest::wrongOtherNames()
{
    QFETCH(QString, type);
    QFETCH(QString, wrong);
    QFETCH(QString, right);
    const QString file =
        requestFile(qPrintable(QStringLiteral("Wrong ") + type + QStringLiteral(".csr")));
    QVERIFY(makeKey("wrong"));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Wrong ") + type));
    QVERIFY(!m_window->item(QStringLiteral("otherAdd")));
    QVERIFY(m_steps->press("unfoldRequest"));
    // The simple kind has a field for an e-mail address of its own, by the same name.
    if (type == QLatin1String("email"))
        QVERIFY(m_steps->chooseProfile(2));
    const QString input = type + QStringLiteral("Input");
    if (type != QLatin1String("email"))
        QVERIFY(add("other", qPrintable(type)));
    QVERIFY(m_window->fill(input, wrong));
    const QByteArray field = (type + QStringLiteral("Field")).toLatin1();
    QVERIFY(!m_steps->flag(field.constData()).isEmpty());
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->holds([&] { return !m_window->item(QStringLiteral("savedCard")); }, 300));
    QVERIFY(m_window->item(input)->hasActiveFocus());
    QVERIFY(!QFile::exists(file));
    QVERIFY(m_window->fill(input, right));
    QVERIFY(m_steps->flag(field.constData()).isEmpty());
    QVERIFY(create());
    QVERIFY2(shown(file).contains(right, Qt::CaseInsensitive)
                 || shown(file).contains(QLatin1String("2001:DB8:0:0:0:0:0:1")),
             qPrintable(shown(file)));
}

/// An attribute that the kind has no field for, one by its number, and a usage of one's own.
void TestAppNewRequest::anyFieldAndUsage()
{
    QVERIFY(makeKey("any"));
    QVERIFY(fill("commonNameInput", "Any"));
    QVERIFY(add("name", "telephone"));
    m_window->type(QStringLiteral("+7 495"));
    QVERIFY(add("name", "number"));
    m_window->type(QStringLiteral("1.2.x"));
    m_window->key(Qt::Key_Return);
    QVERIFY(!m_window->item(QStringLiteral("1.2.xInput")));
    QVERIFY(fill("nameNumber", "1.2.3.4.5"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("1.2.3.4.5Input")));
    m_window->type(QStringLiteral("own"));
    QVERIFY(m_steps->press("unfoldRequest"));
    for (const char *usage : {"usage-keyAgreement", "usage-timeStamping"}) {
        QVERIFY(m_window->item(QLatin1String(usage)));
        m_window->item(QLatin1String(usage))->forceActiveFocus(Qt::TabFocusReason);
        m_window->key(Qt::Key_Space);
    }
    QVERIFY(create());
    const QString text = shown(requestFile("Any.csr"));
    for (const char *wanted :
         {"2.5.4.20=+7 495", "1.2.3.4.5=own", "Key Agreement", "Time Stamping"})
        QVERIFY2(QString(text).remove(QLatin1Char('\\')).contains(QLatin1String(wanted)),
                 qPrintable(text));
}

void TestAppNewRequest::kindsByKeyboard_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("wanted");
    QTest::newRow("P-384") << 4 << QStringLiteral("NIST CURVE: P-384");
    QTest::newRow("Ed25519") << 6 << QStringLiteral("ED25519");
    if (!hasGostEngine())
        return;
    QTest::newRow("GOST 256") << 7 << QStringLiteral("GOST R 34.10-2012 with 256 bit");
    QTest::newRow("GOST 512") << 8 << QStringLiteral("GOST R 34.10-2012 with 512 bit");
}

/// Without the mouse from the side bar to the file.
void TestAppNewRequest::kindsByKeyboard()
{
    QFETCH(int, row);
    QFETCH(QString, wanted);
    QVERIFY(m_steps->show("newRequest"));
    for (const char *over : {"leaveKey", "startOver"}) {
        if (m_window->item(QLatin1String(over)))
            QVERIFY(m_steps->press(over));
    }
    QVERIFY(m_steps->waitEnabled("algorithmChooser"));
    QQuickItem *chooser = m_window->item(QStringLiteral("algorithmChooser"));
    QTRY_COMPARE(chooser->property("count").toInt(), 9);
    chooser->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    for (int i = 0; i < row; ++i)
        m_window->key(Qt::Key_Down);
    QCOMPARE(chooser->property("currentIndex").toInt(), row);
    m_window->item(QStringLiteral("keyNameInput"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->type(QStringLiteral("kind"));
    m_window->key(Qt::Key_Return);
    m_window->type(rightPin());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitForKey());
    QTRY_VERIFY(m_window->item(QStringLiteral("commonNameInput"))->hasActiveFocus());
    const QString name = QStringLiteral("Kind %1").arg(row);
    m_window->type(name);
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    const QString text = shown(requestFile(qPrintable(name + QStringLiteral(".csr"))));
    QVERIFY2(text.contains(wanted), qPrintable(text));
}

void TestAppNewRequest::kindOfOnesOwn()
{
    QVERIFY(makeKey("own"));
    QVERIFY(m_steps->chooseProfile(2));
    QVERIFY(fill("organizationInput", "АО «Пример»"));
    QVERIFY(m_steps->press("saveProfile"));
    QVERIFY(m_steps->waitOpen("profileDialog"));
    QVERIFY(fill("profileName", "Наша почта"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("profileDialog"));
    QQuickItem *chooser = m_window->item(QStringLiteral("profileChooser"));
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Наша почта"));
    // Another start of the page has it.
    QVERIFY(m_steps->press("leaveKey"));
    QVERIFY(makeKey("again"));
    QVERIFY(m_steps->text("organizationInput").isEmpty());
    QVERIFY(m_steps->chooseProfile(5));
    QCOMPARE(m_steps->text("organizationInput"), QStringLiteral("АО «Пример»"));
    QVERIFY(fill("commonNameInput", "Own"));
    QVERIFY(create());
    const QString text = shown(requestFile("Own.csr"));
    QVERIFY2(text.contains(QStringLiteral("2.5.4.10=АО «Пример»"))
                 && text.contains(QLatin1String("E-mail Protection")),
             qPrintable(text));
    QVERIFY(m_steps->press("startOver"));
    QVERIFY(m_steps->waitEnabled("keyNameInput"));
    QVERIFY(m_steps->chooseProfile(5));
    QVERIFY(m_steps->press("removeProfile"));
    QTRY_COMPARE(m_window->item(QStringLiteral("profileChooser"))->property("count").toInt(), 5);
}

/// A key without a certificate serves another request; no key is made.
void TestAppNewRequest::keyThatIsThere()
{
    QVERIFY(makeKey("bare"));
    QVERIFY(m_steps->press("leaveKey"));
    const int objects = m_token.token().objectCount();
    QVERIFY(m_steps->waitEnabled("keyChooser"));
    QQuickItem *chooser = m_window->item(QStringLiteral("keyChooser"));
    chooser->forceActiveFocus(Qt::TabFocusReason);
    for (int i = 1; i < chooser->property("count").toInt()
         && !chooser->property("displayText").toString().contains(QLatin1String("bare"));
         ++i)
        m_window->key(Qt::Key_Down);
    QVERIFY(chooser->property("displayText").toString().contains(QLatin1String("bare")));
    QVERIFY(!m_window->item(QStringLiteral("generateButton")));
    QVERIFY(m_steps->press("takeKeyButton"));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(fill("commonNameInput", "Bare"));
    QVERIFY(create());
    QVERIFY(shown(requestFile("Bare.csr")).contains(QLatin1String("2.5.4.3=Bare")));
    QCOMPARE(m_token.token().objectCount(), objects);
}

void TestAppNewRequest::russianCompany()
{
    QVERIFY(makeKey("company"));
    QVERIFY(m_steps->chooseProfile(4));
    const struct {
        const char *field;
        const char *text;
        const char *wanted;
    } values[] = {
        {"commonNameInput", "АО «Пример»", "2.5.4.3=АО «Пример»"},
        {"surnameInput", "Иванова", "2.5.4.4=Иванова"},
        {"givenNameInput", "Мария Петровна", "2.5.4.42=Мария Петровна"},
        {"titleInput", "Директор", "2.5.4.12=Директор"},
        {"ogrnInput", "1027700132195", "1.2.643.100.1=1027700132195"},
        {"innleInput", "7707083893", "1.2.643.100.4=7707083893"},
        {"innInput", "500100732259", "1.2.643.3.131.1.1=500100732259"},
        {"snilsInput", "112-233-445 95", "1.2.643.100.3=11223344595"},
        {"streetInput", "ул. Ленина, 1", "2.5.4.9=ул. Ленина"},
    };
    for (const auto &value : values)
        QVERIFY2(fill(value.field, value.text), value.field);
    QVERIFY(create());
    const QString text = shown(requestFile("АО «Пример».csr"));
    for (const auto &value : values)
        QVERIFY2(text.contains(QString::fromUtf8(value.wanted)), qPrintable(text));
    QVERIFY(text.contains(QLatin1String("2.5.4.6=RU")));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    FaultyToken token(QStringLiteral("Токен Р"));
    qputenv("TRIVEX_FAULTY_GOST",
            QFile::encodeName(token.token().path() + QStringLiteral("/gost")));
    token.useInThisProcess();
    return runWindowTest<TestAppNewRequest>(argc, argv, display, token);
}

#include "tst_app_newrequest.moc"
