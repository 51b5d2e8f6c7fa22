// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QClipboard>
#include <QCryptographicHash>
#include <QDesktopServices>
#include <QFileDialog>
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

QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

} // namespace

/// Everything in a certificate can be seen, copied, printed and kept.
class TestAppViewer : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void everyExtension_data();
    void everyExtension();
    void crowdedCertificate();
    void requestInFull();
    void copyByKeyboard();
    void copyByMenu_data();
    void copyByMenu();
    void octetsInLines_data();
    void octetsInLines();
    void pemAndStructure();
    void pemInANarrowWindow();
    void tabsByKeyboard();
    void saveAsPdf();
    void pdfWithoutRoom();
    void printByTheDesktop();
    void printWhileADocumentIsMade_data();
    void printWhileADocumentIsMade();
    void nothingWaits();

private:
    void prepare() override;
    void arrive() override;
    void restore() override;

    QByteArray crowded() const;
    QByteArray run(const QStringList &arguments) const { return m_authority.openssl(arguments); }
    bool choose(const QString &name);
    /// The values of the details, by their labels.
    QString value(const QString &label) const;
    QQuickItem *field(const QString &label) const;

    QByteArray m_pem;
    QByteArray m_der;
};

/// Stands for the desktop's program for PDF files.
class FakeViewer : public QObject {
    Q_OBJECT
public:
    FakeViewer() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FakeViewer() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QByteArray shown;

public Q_SLOTS:
    void open(const QUrl &url) { shown = contents(url.toLocalFile()); }
};

void TestAppViewer::prepare()
{
    m_pem =
        run(QStringLiteral("req -x509 -newkey rsa:2048 -nodes -keyout /dev/null -sha384 -subj "
                           "/O=Example/CN=Web/GN=Vera -set_serial 0x0102030405 -addext "
                           "subjectAltName=DNS:example.org,otherName:1.2.3.4;UTF8:other -addext "
                           "keyUsage=critical,keyAgreement -addext 1.2.3.4.5.6=DER:c0ffee "
                           "-addext nameConstraints=permitted;DNS:.example.org")
                .split(QLatin1Char(' ')));
    QVERIFY(!writeTestFile(userFile(QStringLiteral("web.pem")), m_pem).isEmpty());
    writeTestFile(inHome(QStringLiteral("web.pem")), m_pem);
    m_der = run({QStringLiteral("x509"), QStringLiteral("-in"), inHome(QStringLiteral("web.pem")),
                 QStringLiteral("-outform"), QStringLiteral("DER")});
    QVERIFY(m_token.writeObject(QStringLiteral("cert"), m_der, QStringLiteral("05"),
                                QStringLiteral("web")));
    QVERIFY(!writeTestFile(userFile(QStringLiteral("crowded.pem")), crowded()).isEmpty());
    const QByteArray request = run(
        QStringLiteral("req -new -newkey ed25519 -nodes -keyout /dev/null -subj /CN=Asker/GN=Olga "
                       "-addext subjectAltName=DNS:asked.example.org")
            .split(QLatin1Char(' ')));
    QVERIFY(
        !writeTestFile(inHome(QStringLiteral("CertificateRequest/asker.csr")), request).isEmpty());
}

void TestAppViewer::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

void TestAppViewer::init()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("category-users")));
    // The details from their beginning.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("users"));
    QVERIFY(choose(QStringLiteral("Web")));
}

void TestAppViewer::restore()
{
    if (QFileDialog *dialog = fileDialog())
        dialog->reject();
    m_window->window()->requestActivate();
    m_window->window()->resize(1180, 760);
}

bool TestAppViewer::choose(const QString &name)
{
    return m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        && m_window->clickRow(m_window->rowNamed(name))
        && m_window->waitForItem(QStringLiteral("detailsView"));
}

QQuickItem *TestAppViewer::field(const QString &label) const
{
    QQuickItem *found = nullptr;
    visitItems(m_window->item(QStringLiteral("detailsView")), [&](QQuickItem *item) {
        if (item->property("label").toString() == label && item->property("fixedWidth").isValid())
            found = item;
    });
    return found;
}

QString TestAppViewer::value(const QString &label) const
{
    const QQuickItem *item = field(label);
    return item ? item->property("value").toString() : QStringLiteral("nothing");
}

void TestAppViewer::everyExtension_data()
{
    QTest::addColumn<bool>("onToken");
    QTest::newRow("file") << false;
    QTest::newRow("token") << true;
}

void TestAppViewer::everyExtension()
{
    QFETCH(bool, onToken);
    if (onToken) {
        QVERIFY(m_window->click(QStringLiteral("token-") + m_token.label()));
        QVERIFY(choose(QStringLiteral("Web")));
    }
    QCOMPARE(value(qtTrId("trivex-app-ext-critical").arg(qtTrId("trivex-app-ext-key-usage"))),
             qtTrId("trivex-app-usage-agreement"));
    QCOMPARE(value(qtTrId("trivex-app-ext-holder-names")),
             QStringLiteral("DNS: example.org\nOther name 1.2.3.4: other"));
    QCOMPARE(value(qtTrId("trivex-app-ext-name-constraints")),
             QStringLiteral("Permitted: DNS: .example.org"));
    QCOMPARE(value(QStringLiteral("1.2.3.4.5.6")), QStringLiteral("C0:FF:EE"));
    QCOMPARE(value(qtTrId("trivex-app-serial-decimal")), QStringLiteral("4328719365"));
    QCOMPARE(value(qtTrId("trivex-app-attribute-given-name")), QStringLiteral("Vera"));
    QCOMPARE(value(qtTrId("trivex-app-key-kind-and-size")), QStringLiteral("RSA, 2048 bits"));
    QCOMPARE(value(qtTrId("trivex-app-signature-algorithm")), QStringLiteral("RSA with SHA-384"));
    const auto digest = [&](QCryptographicHash::Algorithm algorithm) {
        return QString::fromLatin1(QCryptographicHash::hash(m_der, algorithm).toHex(':').toUpper());
    };
    QCOMPARE(value(QStringLiteral("SHA-256")), digest(QCryptographicHash::Sha256));
    QCOMPARE(value(QStringLiteral("SHA-1")), digest(QCryptographicHash::Sha1));
    // What the model shows is there once, and stays where it was.
    QStringList serials;
    visitItems(m_window->item(QStringLiteral("detailsView")), [&](QQuickItem *item) {
        if (item->property("value").toString() == QLatin1String("01:02:03:04:05"))
            serials += item->property("label").toString();
    });
    QCOMPARE(serials.size(), 1);
}

/// A certificate with more of everything than anybody wants to read.
QByteArray TestAppViewer::crowded() const
{
    QByteArray names;
    for (int i = 0; i < 3000; ++i)
        names += ",DNS:host" + QByteArray::number(i) + ".example.org";
    QByteArray configuration = "[req]\ndistinguished_name=d\nprompt=no\nx509_extensions=e\n[d]\n"
                               "CN=Crowded\n";
    for (int i = 0; i < 150; ++i)
        configuration += QByteArray::number(i) + ".OU=Unit " + QByteArray::number(i) + '\n';
    configuration += "[e]\nsubjectAltName=" + names.mid(1) + '\n';
    for (int i = 1; i < 150; ++i)
        configuration += "1.2.3." + QByteArray::number(i) + "=DER:" + QByteArray(2000, '7') + '\n';
    const QString file =
        writeTestFile(m_authority.file(QStringLiteral("crowded.cnf")), configuration);
    return run({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                QStringLiteral("/dev/null"), QStringLiteral("-config"), file});
}

void TestAppViewer::crowdedCertificate()
{
    m_window->meter().reset();
    QVERIFY(choose(QStringLiteral("Crowded")));
    QVERIFY(m_window->waitUntilStill());
    const qint64 work = m_window->meter().longestWork();
    qInfo("the longest step took %lld ms", work);
    QVERIFY(
        value(qtTrId("trivex-app-ext-holder-names")).endsWith(qtTrId("trivex-app-and-more", 2000)));
    QVERIFY(work < 100);
}

void TestAppViewer::requestInFull()
{
    QVERIFY(m_steps->show("requests"));
    QVERIFY(choose(QStringLiteral("Asker")));
    QCOMPARE(value(qtTrId("trivex-app-ext-holder-names")),
             QStringLiteral("DNS: asked.example.org"));
    QCOMPARE(value(qtTrId("trivex-app-attribute-given-name")), QStringLiteral("Olga"));
    QCOMPARE(value(qtTrId("trivex-app-key-kind-and-size")), QStringLiteral("Ed25519, 256 bits"));
    QVERIFY(m_window->click(QStringLiteral("pemTab")));
    QVERIFY(m_window->waitForItem(QStringLiteral("encodedText")));
    QVERIFY(m_window->item(QStringLiteral("encodedText"))
                ->property("value")
                .toString()
                .startsWith(QStringLiteral("-----BEGIN CERTIFICATE REQUEST-----")));
}

namespace {

/// The part of a row that has the text and takes the keys.
QQuickItem *editOf(QQuickItem *row)
{
    QQuickItem *found = nullptr;
    visitItems(row, [&](QQuickItem *item) {
        if (item->inherits("QQuickTextEdit"))
            found = item;
    });
    return found;
}

} // namespace

void TestAppViewer::copyByKeyboard()
{
    QQuickItem *row = field(QStringLiteral("SHA-1"));
    QVERIFY(row);
    QQuickItem *edit = editOf(row);
    edit->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), row->property("value").toString());
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-copied"));
    // A part, where one is selected.
    QVERIFY(QMetaObject::invokeMethod(edit, "select", Q_ARG(int, 0), Q_ARG(int, 5)));
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), row->property("value").toString().left(5));
}

void TestAppViewer::copyByMenu_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("keyboard") << false;
}

void TestAppViewer::copyByMenu()
{
    QFETCH(bool, byMouse);
    QQuickItem *row = field(QStringLiteral("SHA-256"));
    QVERIFY(row);
    QQuickItem *edit = editOf(row);
    edit->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(m_window->waitUntilStill());
    QGuiApplication::clipboard()->clear();
    if (byMouse) {
        const QPointF place = edit->mapToScene(QPointF(20, edit->height() / 2));
        QTest::mouseClick(m_window->window(), Qt::RightButton, {}, place.toPoint());
        QVERIFY(m_window->waitForItem(QStringLiteral("detailCopy")));
        QVERIFY(m_window->click(QStringLiteral("detailCopy")));
        QTRY_COMPARE(clipboard(), row->property("value").toString());
    } else {
        m_window->key(Qt::Key_Menu);
        QVERIFY(m_window->waitForItem(QStringLiteral("detailCopyLabel")));
        m_window->key(Qt::Key_Down);
        m_window->key(Qt::Key_Return);
        QTRY_COMPARE(clipboard(), QStringLiteral("SHA-256: ") + row->property("value").toString());
    }
    QTRY_VERIFY(!m_window->item(QStringLiteral("detailCopy")));
}

void TestAppViewer::octetsInLines_data()
{
    QTest::addColumn<int>("width");
    for (int width : {1180, 1203, 1500})
        QTest::newRow(qPrintable(QString::number(width))) << width;
}

/// Long numbers fill their lines, and no octet is torn apart.
void TestAppViewer::octetsInLines()
{
    QFETCH(int, width);
    const QSize before = m_window->window()->size();
    m_window->window()->resize(width, before.height());
    QVERIFY(m_window->waitUntilStill());
    QQuickItem *row = field(qtTrId("trivex-app-key-modulus"));
    QVERIFY(row);
    QQuickItem *edit = editOf(row);
    const int letters = row->property("value").toString().size();
    QCOMPARE(letters, 3 * 257 - 1);
    QVector<int> lines;
    double line = -1;
    for (int i = 0; i < letters; ++i) {
        QRectF place;
        QMetaObject::invokeMethod(edit, "positionToRectangle", Q_RETURN_ARG(QRectF, place),
                                  Q_ARG(int, i));
        if (place.y() > line)
            lines += 0;
        line = place.y();
        ++lines.last();
    }
    m_window->window()->resize(before);
    QVERIFY(lines.size() > 2);
    QVERIFY(lines.takeLast() <= lines.first());
    QCOMPARE(lines.count(lines.first()), lines.size());
    QCOMPARE(lines.first() % 3, 0);
}

void TestAppViewer::pemAndStructure()
{
    QVERIFY(m_window->click(QStringLiteral("pemTab")));
    QVERIFY(m_window->waitForItem(QStringLiteral("encodedText")));
    const auto text = [&] {
        return m_window->item(QStringLiteral("encodedText"))->property("value").toString();
    };
    QCOMPARE(text().simplified(), QString::fromLatin1(m_pem).simplified());
    QVERIFY(!field(QStringLiteral("SHA-1")));
    // Each line of the text is one on the screen.
    const QQuickItem *pem = editOf(m_window->item(QStringLiteral("encodedText")));
    QTRY_COMPARE(pem->property("lineCount").toInt(), text().count(QLatin1Char('\n')) + 1);
    QVERIFY(m_window->click(QStringLiteral("structureTab")));
    QTRY_VERIFY(
        text().contains(QStringLiteral("OBJECT  sha384WithRSAEncryption (1.2.840.113549.1.1.12)")));
    // Another certificate begins with its values.
    QVERIFY(m_steps->show("requests"));
    QVERIFY(choose(QStringLiteral("Asker")));
    QVERIFY(field(QStringLiteral("SHA-1")));
}

/// Where no line has room, all have the same length: none ends with a few letters of its own.
void TestAppViewer::pemInANarrowWindow()
{
    m_window->window()->resize(400, 760);
    QVERIFY(m_window->waitForItem(QStringLiteral("backButton")));
    QVERIFY(m_steps->press("pemTab"));
    QVERIFY(m_window->waitForItem(QStringLiteral("encodedText")));
    QQuickItem *pem = editOf(m_window->item(QStringLiteral("encodedText")));
    const int start = pem->property("text").toString().indexOf(QLatin1Char('\n')) + 1;
    const auto top = [&](int letter) {
        QRectF place;
        QMetaObject::invokeMethod(pem, "positionToRectangle", Q_RETURN_ARG(QRectF, place),
                                  Q_ARG(int, start + letter));
        return place.top();
    };
    QTRY_COMPARE(top(31), top(0));
    QTRY_VERIFY(top(33) > top(0));
    QCOMPARE(top(63), top(33));
    m_window->window()->resize(1180, 760);
    QTRY_COMPARE(top(63), top(0));
}

void TestAppViewer::tabsByKeyboard()
{
    QQuickItem *tab = m_window->item(QStringLiteral("structureTab"));
    QVERIFY(tab);
    tab->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Space);
    QVERIFY(m_window->waitForItem(QStringLiteral("encodedText")));
    QVERIFY(tab->property("checked").toBool());
    QVERIFY(!m_window->item(QStringLiteral("detailsTab"))->property("checked").toBool());
    // Once more changes nothing.
    m_window->key(Qt::Key_Space);
    QVERIFY(tab->property("checked").toBool());
    m_window->key(Qt::Key_Tab, Qt::ShiftModifier);
    m_window->key(Qt::Key_Tab, Qt::ShiftModifier);
    m_window->key(Qt::Key_Space);
    QTRY_VERIFY(!m_window->item(QStringLiteral("encodedText")));
}

void TestAppViewer::saveAsPdf()
{
    QVERIFY(m_window->click(QStringLiteral("pdfButton")));
    const QString path = inHome(QStringLiteral("web.pdf"));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QVERIFY(answerFileDialog(*m_window, path));
    QTRY_VERIFY(QFile::exists(path));
    QVERIFY(contents(path).startsWith("%PDF-"));
    QVERIFY(contents(path).size() > 5000);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-exported").arg(path));
    QVERIFY(contents(path).trimmed().endsWith("%%EOF"));
}

// A document of which the disk takes only the beginning is not offered as a whole one.
void TestAppViewer::pdfWithoutRoom()
{
    rlimit before = {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit little = before;
    little.rlim_cur = 2048;
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &little), 0);
    const bool clicked = m_window->click(QStringLiteral("pdfButton"));
    const bool ended = m_window->waitFor([this] {
        return fileDialog() != nullptr || m_window->isOpen(QStringLiteral("errorDialog"));
    });
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    signal(SIGXFSZ, handler);
    QVERIFY(clicked && ended);
    QVERIFY(fileDialog() == nullptr);
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("errorDialog"));
}

void TestAppViewer::printByTheDesktop()
{
    FakeViewer viewer;
    QVERIFY(m_window->click(QStringLiteral("printButton")));
    QTRY_VERIFY(viewer.shown.startsWith("%PDF-"));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
}

void TestAppViewer::printWhileADocumentIsMade_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("printed") << QStringLiteral("printButton");
    QTest::newRow("saved") << QStringLiteral("pdfButton");
}

/// One document at a time: who wants another one hears of it, and gets the first.
void TestAppViewer::printWhileADocumentIsMade()
{
    QFETCH(QString, button);
    FakeViewer viewer;
    QVERIFY(m_window->waitForItem(QStringLiteral("printButton")));
    QVERIFY(m_window->waitForItem(button));
    QMetaObject::invokeMethod(m_window->object(QStringLiteral("toast")), "close");
    QVERIFY(m_steps->waitClosed("toast"));
    // In one turn of the loop: the first document can't be finished in between.
    QMetaObject::invokeMethod(m_window->item(QStringLiteral("printButton")), "clicked");
    QMetaObject::invokeMethod(m_window->item(button), "clicked");
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-print-busy"));
    QTRY_VERIFY(viewer.shown.startsWith("%PDF-"));
    QVERIFY(!fileDialog());
}

void TestAppViewer::nothingWaits()
{
    QVERIFY(m_steps->show("others"));
    QVERIFY(m_steps->show("users"));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Web")) >= 0; }));
    m_window->meter().reset();
    QVERIFY(choose(QStringLiteral("Web")));
    QVERIFY(m_window->click(QStringLiteral("structureTab")));
    QVERIFY(m_window->waitForItem(QStringLiteral("encodedText")));
    qInfo("the longest step took %lld ms", m_window->meter().longestWork());
    QVERIFY(m_window->meter().longestWork() < 100);
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppViewer, TestToken>(argc, argv, QStringLiteral("Токен В"));
}

#include "tst_app_viewer.moc"
