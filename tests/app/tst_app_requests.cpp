// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/der.h"
#include "qca/asn1/pem.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/derelement.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <QtCrypto>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace TrivexTest;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<QByteArray> elementsOf(const QByteArray &list)
{
    Trivex::Der::Element element;
    Trivex::Der::Reader(Trivex::Der::sliceOf(list)).next(&element);
    Trivex::Der::Reader reader(element.content);
    QList<QByteArray> elements;
    while (reader.next(&element))
        elements += element.whole.bytes();
    return elements;
}

} // namespace

/// A saved request is reopened, changed and signed again; and every way in which that fails leaves
/// the file as it was.
class TestAppRequests : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void folderIsOpened();
    void editedAndSignedAgain();
    void nameChanges();
    void valuesAreReplaced();
    void usagesAreEdited();
    void othersAreKept();
    void wrongValuesAreRefused_data();
    void wrongValuesAreRefused();
    void nothingChanged();
    void diskIsFull();
    void tokenIsGone();
    void signingFails();
    void pinIsLeft();
    void lossIsRefused_data();
    void lossIsRefused();
    void requestOfAnotherKey();
    void removedAfterAQuestion();
    void createdAtTheSecondTry();

public Q_SLOTS:
    /// In place of the desktop's file manager.
    void noteOpened(const QUrl &url) { m_opened += url; }

private:
    void arrive() override;
    void restore() override { m_token.control(); }

    QString requestFile(const char *name) const
    {
        return inHome(QStringLiteral("CertificateRequest/") + QString::fromUtf8(name));
    }
    bool openEditor(const QString &name);
    bool edit(const QString &field, const QString &text);
    /// Changes a box by keyboard, wherever it has been scrolled to.
    bool tick(const char *box);
    /// Subject and signature of a request, as openssl reads them.
    QString subject(const QString &path) const;
    bool isSigned(const QString &path) const;
    /// Every value of the subject, "CN=…", in alphabetical order.
    QStringList values(const QString &path) const;
    /// The editor is still open, with `text` in the field of the organization.
    bool keepsTyped(const QString &text) const;
    bool isTokenThere() const;

    QList<QUrl> m_opened;
};

void TestAppRequests::arrive()
{
    answerPins(rightPin());
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
    QVERIFY(m_steps->startKey(QStringLiteral("edited"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Иванова Мария")));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(QFile::exists(requestFile("Иванова Мария.csr")));
}

void TestAppRequests::folderIsOpened()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "noteOpened");
    QVERIFY(m_steps->press("openFolder"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    const QString folder = QFileInfo(requestFile("Иванова Мария.csr")).absolutePath();
    QCOMPARE(m_opened, QList<QUrl>({QUrl::fromLocalFile(folder)}));
}

void TestAppRequests::init()
{
    answerPins(rightPin());
    // It may have been away.
    QVERIFY(m_window->waitFor([&] { return isTokenThere(); }));
}

bool TestAppRequests::isTokenThere() const
{
    const QQuickItem *item = m_window->item(QStringLiteral("token-") + m_token.token().label());
    return item && item->property("note").toString().isEmpty();
}

bool TestAppRequests::openEditor(const QString &name)
{
    return m_steps->show("requests")
        && m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        && m_window->clickRow(m_window->rowNamed(name))
        && m_window->click(QStringLiteral("editButton")) && m_steps->waitOpen("editRequestDialog");
}

bool TestAppRequests::edit(const QString &field, const QString &text)
{
    return m_window->fill(field, text) && m_window->click(QStringLiteral("editRequestSave"));
}

bool TestAppRequests::tick(const char *box)
{
    if (!m_steps->waitEnabled(box))
        return false;
    m_window->item(QLatin1String(box))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Space);
    return true;
}

QString TestAppRequests::subject(const QString &path) const
{
    return QString::fromUtf8(m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-in"), path, QStringLiteral("-noout"),
         QStringLiteral("-subject"), QStringLiteral("-nameopt"), QStringLiteral("utf8")}));
}

bool TestAppRequests::isSigned(const QString &path) const
{
    return !m_authority
                .openssl({QStringLiteral("req"), QStringLiteral("-in"), path,
                          QStringLiteral("-noout"), QStringLiteral("-verify")})
                .isNull();
}

QStringList TestAppRequests::values(const QString &path) const
{
    const QString lines = QString::fromUtf8(m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-in"), path, QStringLiteral("-noout"),
         QStringLiteral("-subject"), QStringLiteral("-nameopt"),
         QStringLiteral("utf8,sep_multiline,sname")}));
    QStringList result;
    for (const QString &line : lines.split(QLatin1Char('\n'))) {
        if (line.contains(QLatin1Char('=')) && !line.startsWith(QLatin1String("subject")))
            result += line.trimmed();
    }
    result.sort();
    return result;
}

bool TestAppRequests::keepsTyped(const QString &text) const
{
    return m_window->isOpen(QStringLiteral("editRequestDialog"))
        && m_steps->text("organizationInput") == text;
}

void TestAppRequests::editedAndSignedAgain()
{
    const QString file = requestFile("Иванова Мария.csr");
    const QByteArray before = contents(file);
    QVERIFY(openEditor(QStringLiteral("Иванова Мария")));
    // What was saved stands in the fields.
    QCOMPARE(m_steps->text("commonNameInput"), QStringLiteral("Иванова Мария"));
    QVERIFY(edit(QStringLiteral("organizationInput"), QStringLiteral("АО «Пример»")));
    QVERIFY(
        m_window->waitFor([&] { return m_window->item(QStringLiteral("toastText")) != nullptr; }));
    QCOMPARE(m_steps->text("toastText"), qtTrId("trivex-app-saved"));
    QVERIFY(contents(file) != before);
    QVERIFY(subject(file).contains(QStringLiteral("АО «Пример»")));
    QVERIFY(isSigned(file));
    QCOMPARE(QDir(requestFile("")).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void TestAppRequests::nameChanges()
{
    QVERIFY(openEditor(QStringLiteral("Иванова Мария")));
    QVERIFY(edit(QStringLiteral("commonNameInput"), QStringLiteral("Петрова Мария")));
    const QString file = requestFile("Петрова Мария.csr");
    QVERIFY(m_window->waitFor([&] { return QFile::exists(file); }));
    // The old file is replaced, not joined, and nobody is told that a certificate came.
    QVERIFY(!QFile::exists(requestFile("Иванова Мария.csr")));
    QVERIFY(subject(file).contains(QStringLiteral("АО «Пример»")));
    QVERIFY(isSigned(file));
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Петрова Мария")) >= 0; }));
    QCOMPARE(m_window->rowCount(), 1);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-saved"));
    QVERIFY(m_window->holds(
        [&] { return m_steps->text("toastText") == qtTrId("trivex-app-saved"); }, 500));
    // The edited one is the chosen one still.
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    const auto *header =
        m_window->item(QStringLiteral("detailsView"))->property("header").value<QObject *>();
    QCOMPARE(header->property("name").toString(), QStringLiteral("Петрова Мария"));
}

/// A value that is edited takes the place of the one before; an emptied one goes.
void TestAppRequests::valuesAreReplaced()
{
    const QString file = requestFile("Петрова Мария.csr");
    for (const QString &country : {QStringLiteral("ru"), QStringLiteral("KZ")}) {
        const QByteArray before = contents(file);
        QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
        QVERIFY(m_window->fill(QStringLiteral("localityInput"), country));
        QVERIFY(edit(QStringLiteral("countryInput"), country));
        QVERIFY(m_steps->waitClosed("editRequestDialog"));
        QVERIFY(m_window->waitFor([&] { return contents(file) != before; }));
        const QStringList wanted = {
            QStringLiteral("C=") + country.toUpper(), QStringLiteral("CN=Петрова Мария"),
            QStringLiteral("L=") + country, QStringLiteral("O=АО «Пример»")};
        QCOMPARE(values(file), wanted);
        QVERIFY(isSigned(file));
        // What the editor shows next is that.
        QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
        QCOMPARE(m_steps->text("countryInput"), country.toUpper());
        QCOMPARE(m_steps->text("localityInput"), country);
        m_window->key(Qt::Key_Escape);
        QVERIFY(m_steps->waitClosed("editRequestDialog"));
    }
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(m_window->fill(QStringLiteral("localityInput"), QString()));
    QVERIFY(edit(QStringLiteral("countryInput"), QString()));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    const QStringList rest = {QStringLiteral("CN=Петрова Мария"), QStringLiteral("O=АО «Пример»")};
    QTRY_COMPARE(values(file), rest);
}

/// They go and come by their boxes; what has no box stays.
void TestAppRequests::usagesAreEdited()
{
    const QString file = requestFile("Петрова Мария.csr");
    const auto text = [&] {
        return QString::fromUtf8(
            m_authority.openssl({QStringLiteral("req"), QStringLiteral("-in"), file,
                                 QStringLiteral("-noout"), QStringLiteral("-text")}));
    };
    const QByteArray before = contents(file);
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(!m_window->item(QStringLiteral("usage-nonRepudiation")));
    QVERIFY(m_steps->press("unfoldUsages"));
    QVERIFY(tick("usage-nonRepudiation"));
    QVERIFY(tick("usage-emailProtection"));
    QVERIFY(m_window->click(QStringLiteral("editRequestSave")));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    QVERIFY(m_window->waitFor([&] { return contents(file) != before; }));
    QVERIFY2(text().contains(QStringLiteral("Non Repudiation")), qPrintable(text()));
    QVERIFY2(text().contains(QStringLiteral("E-mail Protection")), qPrintable(text()));
    QVERIFY(isSigned(file));
    // The next time they stand there, and go by the same box.
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(m_window->item(QStringLiteral("usage-nonRepudiation"))->property("checked").toBool());
    QVERIFY(tick("usage-nonRepudiation"));
    QVERIFY(m_window->click(QStringLiteral("editRequestSave")));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    QVERIFY(m_window->waitFor([&] { return !text().contains(QStringLiteral("Repudiation")); }));
    QVERIFY(text().contains(QStringLiteral("E-mail Protection")));
    QVERIFY(isSigned(file));
}

/// What the form has no field for is told, and stays in the file.
void TestAppRequests::othersAreKept()
{
    const QByteArray made = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"),
         QStringLiteral("/CN=Several/OU=North/OU=South/1.2.643.3.131.1.1=500100732259")});
    const QString file = writeTestFile(requestFile("Several.csr"), made);
    QVERIFY(openEditor(QStringLiteral("Several")));
    QCOMPARE(m_steps->text("innInput"), QStringLiteral("500100732259"));
    const QString told = m_steps->text("editRequestOthers");
    QVERIFY2(told.contains(QStringLiteral("North")) != told.contains(QStringLiteral("South")),
             qPrintable(told));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Several")) < 0);
}

void TestAppRequests::wrongValuesAreRefused_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("three letters") << QStringLiteral("country") << QStringLiteral("RUS");
    QTest::newRow("Cyrillic letters") << QStringLiteral("country") << QStringLiteral("РФ");
    QTest::newRow("a digit") << QStringLiteral("country") << QStringLiteral("R1");
    QTest::newRow("one letter") << QStringLiteral("country") << QStringLiteral("R");
    for (const char *address : {"petr@@", "petr", "@example.org", "petr@", "petr@exa mple.org",
                                "a@b@c", "pe tr@example.org", "petr@example..org",
                                "petr.@example.org", "petr@-example.org", "пётр@пример.рф"})
        QTest::newRow(address) << QStringLiteral("email") << QString::fromUtf8(address);
}

void TestAppRequests::wrongValuesAreRefused()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    const QString input = field + QStringLiteral("Input");
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(edit(input, text));
    QVERIFY(m_window->holds([&] { return m_window->isOpen(QStringLiteral("editRequestDialog")); }));
    QVERIFY(!m_steps->flag(qPrintable(field + QStringLiteral("Field"))).isEmpty());
    QVERIFY(m_window->item(input)->hasActiveFocus());
    QCOMPARE(contents(file), before);
}

void TestAppRequests::nothingChanged()
{
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    m_token.forget();
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(m_window->click(QStringLiteral("editRequestSave")));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    QCOMPARE(contents(file), before);
    QCOMPARE(m_token.count("C_Sign"), 0);
}

void TestAppRequests::diskIsFull()
{
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QStringLiteral("Full Ltd")));
    // No byte may be written: what a full disk does to a file that could be opened.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit none{0, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    m_window->click(QStringLiteral("editRequestSave"));
    const bool told = m_steps->waitOpen("errorDialog");
    setrlimit(RLIMIT_FSIZE, &limit);
    QVERIFY(told);
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-request-not-saved"));
    QCOMPARE(contents(file), before);
    QCOMPARE(QDir(requestFile("")).entryList(QDir::Files | QDir::Hidden).size(), 1);
    const QStringList warnings = m_window->takeWarnings();
    QCOMPARE(warnings.filter(QStringLiteral("not created")).size(), warnings.size());
    QVERIFY(keepsTyped(QStringLiteral("Full Ltd")));
    QVERIFY(m_steps->discardEdits());
    // The list tells what the file holds, not what was typed in vain.
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    QCOMPARE(m_steps->text("organizationInput"), QStringLiteral("АО «Пример»"));
}

void TestAppRequests::tokenIsGone()
{
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    m_token.control("remove");
    QVERIFY(m_window->waitFor([&] { return !isTokenThere(); }));
    QVERIFY(edit(QStringLiteral("organizationInput"), QStringLiteral("Gone Ltd")));
    const QString cause = m_steps->takeError();
    m_window->takeWarnings();
    QVERIFY2(cause == qtTrId("trivex-app-request-no-key")
                 || cause == qtTrId("trivex-app-cause-removed"),
             qPrintable(cause));
    QCOMPARE(contents(file), before);
    QVERIFY(keepsTyped(QStringLiteral("Gone Ltd")));
}

void TestAppRequests::signingFails()
{
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    m_token.control("fail C_Sign * CKR_DEVICE_ERROR\nfail C_SignFinal * CKR_DEVICE_ERROR");
    QVERIFY(edit(QStringLiteral("organizationInput"), QStringLiteral("Failed Ltd")));
    // The token's own words, not those about a folder that is all right.
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-device"));
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("errorDialog")); }));
    m_window->takeWarnings();
    QCOMPARE(contents(file), before);
    QVERIFY(keepsTyped(QStringLiteral("Failed Ltd")));
}

void TestAppRequests::pinIsLeft()
{
    const QString file = requestFile("Петрова Мария.csr");
    const QByteArray before = contents(file);
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    m_token.forget();
    QVERIFY(openEditor(QStringLiteral("Петрова Мария")));
    m_robot->leave();
    QVERIFY(edit(QStringLiteral("organizationInput"), QStringLiteral("Left Ltd")));
    QVERIFY(m_steps->waitClosed("pinPromptDialog"));
    // Leaving is no failure of a disk.
    QVERIFY(m_window->holds([&] {
        return m_token.count("C_Login") == 0 && !m_window->isOpen(QStringLiteral("errorDialog"));
    }));
    QCOMPARE(contents(file), before);
    m_window->takeWarnings();
    QVERIFY(keepsTyped(QStringLiteral("Left Ltd")));
    // With the PIN the same is saved.
    answerPins(rightPin());
    QVERIFY(m_window->click(QStringLiteral("editRequestSave")));
    QVERIFY(m_steps->waitClosed("editRequestDialog"));
    const QStringList wanted = {QStringLiteral("CN=Петрова Мария"), QStringLiteral("O=Left Ltd")};
    QTRY_COMPARE(values(file), wanted);
}

void TestAppRequests::lossIsRefused_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("advice");
    const QByteArray oid = QByteArray::fromHex("06092a864886f70d01090e");
    const QByteArray usage = QByteArray::fromHex("300b0603551d0f040403020780");
    const auto list = [&](const QByteArray &extensions) {
        return derElement(0xa0,
                          derElement(0x30, oid + derElement(0x31, derElement(0x30, extensions))));
    };
    QTest::newRow("twice") << list(usage + usage) << QStringLiteral("")
                           << qtTrId("trivex-app-edit-doubled");
    QTest::newRow("unread") << list(QByteArray::fromHex("300d0603551d0f0404030207800500"))
                            << QStringLiteral("") << qtTrId("trivex-app-edit-loses-extensions");
    QTest::newRow("name") << list(usage) << QStringLiteral("3005")
                          << qtTrId("trivex-app-edit-loses-name");
}

/// What a save would lose is said, and what to do instead, before a token asks for its PIN.
void TestAppRequests::lossIsRefused()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QString, name);
    QFETCH(QString, advice);
    const QString pem = QString::fromLatin1(
        m_authority.openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-key"),
                             m_authority.file(QStringLiteral("ca.key")), QStringLiteral("-subj"),
                             QStringLiteral("/CN=Odd")}));
    const QList<QByteArray> outer = elementsOf(QCA::CertificateRequest::fromPEM(pem).toDER());
    const QList<QByteArray> body = elementsOf(outer.value(0));
    const QByteArray set = elementsOf(elementsOf(body.value(1)).value(0)).value(0);
    const QByteArray subject =
        derElement(0x30, derElement(0x31, set + QByteArray::fromHex(name.toLatin1())));
    const QByteArray der =
        derElement(0x30,
                   derElement(0x30, body.value(0) + subject + body.value(2) + attributes)
                       + outer.value(1) + outer.value(2));
    const QString file =
        writeTestFile(requestFile("Odd.csr"), Trivex::writePem("CERTIFICATE REQUEST", der));
    const QByteArray before = contents(file);
    m_token.forget();
    QVERIFY(openEditor(QStringLiteral("Odd")));
    if (name.isEmpty()) {
        if (!m_window->item(QStringLiteral("usage-nonRepudiation")))
            QVERIFY(m_steps->press("unfoldUsages"));
        QVERIFY(tick("usage-nonRepudiation"));
        QVERIFY(m_window->click(QStringLiteral("editRequestSave")));
    } else {
        QVERIFY(edit(QStringLiteral("commonNameInput"), QStringLiteral("Other")));
    }
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorAdvice"), advice);
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-request-not-saved"));
    QCOMPARE(contents(file), before);
    QVERIFY(m_window->isOpen(QStringLiteral("editRequestDialog")));
    QVERIFY(m_steps->discardEdits());
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Odd")) < 0);
}

void TestAppRequests::requestOfAnotherKey()
{
    const QByteArray foreign = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Foreign")});
    const QString file = writeTestFile(requestFile("Foreign.csr"), foreign);
    QVERIFY(openEditor(QStringLiteral("Foreign")));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Nobody")));
    QVERIFY(edit(QStringLiteral("organizationInput"), QStringLiteral("Nobody Ltd")));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-request-no-key"));
    m_window->takeWarnings();
    // Neither written nor renamed.
    QCOMPARE(contents(file), foreign);
    QVERIFY(keepsTyped(QStringLiteral("Nobody Ltd")));
}

void TestAppRequests::removedAfterAQuestion()
{
    const QString file = requestFile("Foreign.csr");
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Foreign"))));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    // Left, it changes nothing.
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QVERIFY(QFile::exists(file));
    QVERIFY(m_window->click(QStringLiteral("removeButton")));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QVERIFY(m_window->waitFor([&] { return !QFile::exists(file); }));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 1; }));
}

/// What the first try typed is not in the request of the second.
void TestAppRequests::createdAtTheSecondTry()
{
    QVERIFY(m_steps->startKey(QStringLiteral("second"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_steps->chooseProfile(4));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Ada")));
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QStringLiteral("First Ltd")));
    QVERIFY(m_window->fill(QStringLiteral("countryInput"), QStringLiteral("RUS")));
    QVERIFY(m_window->fill(QStringLiteral("innInput"), QStringLiteral("7707083893")));
    QVERIFY(m_window->fill(QStringLiteral("snilsInput"), QStringLiteral("112-233-445 95")));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(!m_steps->flag("countryField").isEmpty());
    QVERIFY(m_window->item(QStringLiteral("countryInput"))->hasActiveFocus());
    QVERIFY(m_window->fill(QStringLiteral("countryInput"), QStringLiteral("ru")));
    m_token.control("fail C_Sign * CKR_DEVICE_ERROR\nfail C_SignFinal * CKR_DEVICE_ERROR");
    QVERIFY(m_steps->press("createRequest"));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-device"));
    m_window->takeWarnings();
    m_token.control();
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Bob")));
    QVERIFY(m_window->fill(QStringLiteral("organizationInput"), QString()));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    // The numbers that were typed are in it, each as its own attribute.
    QStringList wanted = {QStringLiteral("C=RU"), QStringLiteral("CN=Bob"),
                          QStringLiteral("SNILS=11223344595"),
                          QStringLiteral("1.2.643.100.4=7707083893")};
    wanted.sort();
    QCOMPARE(values(requestFile("Bob.csr")), wanted);
    // The result is in sight, and the keyboard is there.
    const QQuickItem *folder = m_window->item(QStringLiteral("openFolder"));
    QTRY_VERIFY(
        QRectF(0, 0, m_window->window()->width(), m_window->window()->height())
            .contains(folder->mapRectToScene(QRectF(0, 0, folder->width(), folder->height()))));
    QVERIFY(folder->hasActiveFocus());
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppRequests, FaultyToken>(argc, argv, QStringLiteral("Токен В"));
}

#include "tst_app_requests.moc"
