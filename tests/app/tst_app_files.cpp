// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/singleinstance.h"
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/support/testtoken.h"

#include <QFileDialog>
#include <QMimeData>
#include <QtTest>

using namespace TrivexTest;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Every way in which a file comes to the window: dropped, chosen, named on the command line, sent
/// by a second start. What it is, its content says.
class TestAppFiles : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void dropOne_data();
    void dropOne();
    void dropBundle();
    void dropOnTheSigningPage();
    void dropSeveral();
    void fileThatWaitsComesOnce();
    void leaveTheRest_data();
    void leaveTheRest();
    void dropSeveralDocuments();
    void dropWithoutFiles();
    void dropWhileADialogIsOpen();
    void chooseToImport();
    void chooseWhereToExport();
    void exportOverAFile();
    void exportWhereNothingCanBeWritten();
    void chooseADocument();
    void secondStartHandsOver();
    void commandLine();

private:
    void prepare() override;
    void arrive() override;
    void restore() override;

    QString make(const char *name, const QByteArray &contents) const
    {
        return writeTestFile(inHome(QString::fromUtf8(name)), contents);
    }
    bool answerDialog(const QString &path, bool accept = true);
    /// Exports the chosen row under this name, with one of the filters; -1 for the first.
    bool exportAs(const QString &path, int filter = -1);
    QByteArray derOf(const QString &file) const
    {
        return m_authority.openssl({QStringLiteral("x509"), QStringLiteral("-in"), file,
                                    QStringLiteral("-outform"), QStringLiteral("DER")});
    }

    QString m_certificate;
    QString m_bundle;
};

void TestAppFiles::prepare()
{
    // Named as something else, with a blank and letters that URLs escape.
    m_certificate = make("in/Корневой сертификат.txt", toPem(m_authority.certificate()));
    m_bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel Petrov"), QStringLiteral("secret"), QStringLiteral("Петров"));
    QVERIFY(!m_certificate.isEmpty() && !m_bundle.isEmpty());
}

void TestAppFiles::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

void TestAppFiles::init()
{
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_steps->show("personal"));
}

void TestAppFiles::restore()
{
    if (QFileDialog *dialog = fileDialog())
        dialog->reject();
    m_window->window()->requestActivate();
}

void TestAppFiles::dropOne_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("problem");
    QTest::addColumn<bool>("importable");
    const QByteArray request = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Asker")});
    const QByteArray key = m_authority.openssl(
        {QStringLiteral("genpkey"), QStringLiteral("-algorithm"), QStringLiteral("ed25519")});
    QDir().mkpath(inHome(QStringLiteral("a folder")));
    QTest::newRow("certificate") << m_certificate << QString() << true;
    QTest::newRow("DER certificate")
        << make("in/ca.der", m_authority.certificate()) << QString() << true;
    QTest::newRow("request") << make("in/a.csr", request) << qtTrId("trivex-app-kind-request")
                             << true;
    QTest::newRow("private key") << make("in/key.pem", key) << qtTrId("trivex-app-kind-key")
                                 << false;
    QTest::newRow("folder") << inHome(QStringLiteral("a folder"))
                            << qtTrId("trivex-app-read-folder") << false;
    QTest::newRow("empty") << make("in/empty.pem", {}) << qtTrId("trivex-app-read-empty") << false;
    QTest::newRow("gone") << inHome(QStringLiteral("in/gone.pem"))
                          << qtTrId("trivex-app-read-missing") << false;
    QTest::newRow("damaged certificate")
        << make("in/damaged.pem", "-----BEGIN CERTIFICATE-----\nMIIB\n-----END CERTIFICATE-----\n")
        << qtTrId("trivex-app-read-damaged") << false;
}

void TestAppFiles::dropOne()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    QFETCH(bool, importable);
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(path)}));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QCOMPARE(m_steps->text("importProblem"), problem);
    QCOMPARE(m_steps->waitEnabled("importAccept", importable ? 5000 : 300), importable);
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppFiles::dropBundle()
{
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(m_bundle)}));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("importProblem") == qtTrId("trivex-app-bundle-ask"); }));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("secret")));
    QVERIFY(m_window->click(QStringLiteral("bundleUnlock")));
    QVERIFY(m_steps->waitEnabled("importAccept"));
}

void TestAppFiles::dropOnTheSigningPage()
{
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    const QString document = make("in/Письмо 1.txt", "Dear all,\n");
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(document)}));
    QVERIFY(m_window->waitForItem(QStringLiteral("documentDigest")));
    QCOMPARE(m_window->item(QStringLiteral("documentDigest"))->property("value").toString(),
             QString::fromLatin1(
                 QCryptographicHash::hash("Dear all,\n", QCryptographicHash::Sha256).toHex()));
    // A folder is no document, which is said where the document would stand.
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(home())}));
    QVERIFY(m_window->waitForItem(QStringLiteral("documentProblem")));
    QCOMPARE(m_steps->text("documentProblem"), qtTrId("trivex-app-read-folder"));
    QVERIFY(!m_window->item(QStringLiteral("doSign"))->isEnabled());
}

void TestAppFiles::dropSeveral()
{
    const QString document = make("in/notes.txt", "notes\n");
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(document), QUrl::fromLocalFile(m_certificate),
                           QUrl::fromLocalFile(m_bundle)}));
    // The document waits on its page while the others are asked about, one after the other.
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->item(QStringLiteral("documentDigest")));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(!m_window->item(QStringLiteral("bundlePassword")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
}

/// A double click in a file manager that came twice, and the same file in two drops.
void TestAppFiles::fileThatWaitsComesOnce()
{
    const QUrl certificate = QUrl::fromLocalFile(m_certificate);
    const QUrl bundle = QUrl::fromLocalFile(m_bundle);
    QVERIFY(m_steps->drop({certificate, certificate, bundle, bundle}));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    m_window->application().activate({m_certificate, m_bundle});
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    // Once it has been left, it can be opened again.
    m_window->application().activate({m_bundle});
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
}

void TestAppFiles::leaveTheRest_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("byKey");
    const QList<std::pair<const char *, QByteArray>> kinds = {
        {"certificates", contents(m_certificate)},
        {"locked", contents(m_bundle)},
        {"unreadable", QByteArray()},
    };
    for (const auto &[name, what] : kinds) {
        for (const bool byKey : {false, true})
            QTest::addRow("%s, by %s", name, byKey ? "key" : "mouse") << what << byKey;
    }
}

/// Who let go too many files by mistake leaves them all at once, whatever they are.
void TestAppFiles::leaveTheRest()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, byKey);
    QList<QUrl> urls;
    for (int i = 0; i < 300; ++i)
        urls << QUrl::fromLocalFile(make(qPrintable(QStringLiteral("many/%1.p12").arg(i)), what));
    const auto rest = [](int count) { return qtTrId("trivex-app-import-leave-rest").arg(count); };
    QVERIFY(m_steps->drop(urls));
    QTRY_COMPARE(m_steps->text("importLeaveRest"), rest(299));
    QVERIFY(m_steps->press("importCancel"));
    QTRY_COMPARE(m_steps->text("importLeaveRest"), rest(298));
    QVERIFY(m_window->waitUntilStill());
    const bool locked = m_window->item(QStringLiteral("bundlePassword"));
    if (locked)
        QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("half")));
    QVERIFY(byKey ? m_steps->press("importLeaveRest")
                  : m_window->click(QStringLiteral("importLeaveRest")));
    QTRY_VERIFY(!m_window->item(QStringLiteral("importLeaveRest")));
    // The one that is looked at stays, with what was typed and with the keys.
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    if (locked)
        QCOMPARE(m_steps->text("bundlePassword"), QStringLiteral("half"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
    // What was left can be opened again, alone.
    const QString last = urls.last().toLocalFile();
    QCOMPARE(contents(last), what);
    m_window->application().activate({last});
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(!m_window->item(QStringLiteral("importLeaveRest")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppFiles::dropSeveralDocuments()
{
    const QString one = make("in/one.txt", "one\n");
    const QString two = make("in/two.txt", "two\n");
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(one), QUrl::fromLocalFile(two)}));
    QVERIFY(m_window->waitForItem(QStringLiteral("documentName")));
    // The page holds one document; that the other was left out is said.
    QCOMPARE(m_window->item(QStringLiteral("documentName"))->property("value").toString(),
             QStringLiteral("one.txt"));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QCOMPARE(m_steps->text("toastText"), qtTrId("trivex-app-one-document"));
}

void TestAppFiles::dropWithoutFiles()
{
    QMimeData text;
    text.setText(QStringLiteral("just text"));
    QVERIFY(!m_steps->drop(&text));
    // What lies elsewhere is not fetched.
    m_steps->drop({QUrl(QStringLiteral("https://example.org/ca.pem"))});
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
    QCOMPARE(m_window->window()->property("current").toString(), QStringLiteral("personal"));
}

void TestAppFiles::dropWhileADialogIsOpen()
{
    QVERIFY(m_steps->drop({QUrl::fromLocalFile(m_certificate)}));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    m_window->application().activate({m_bundle});
    QVERIFY(m_window->holds([&] { return !m_window->item(QStringLiteral("bundlePassword")); }));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
}

bool TestAppFiles::answerDialog(const QString &path, bool accept)
{
    return answerFileDialog(*m_window, path, accept);
}

bool TestAppFiles::exportAs(const QString &path, int filter)
{
    if (!m_window->click(QStringLiteral("exportButton"))
        || !m_window->waitFor([] { return fileDialog() != nullptr; }))
        return false;
    QFileDialog *dialog = fileDialog();
    if (filter >= 0) {
        const QString name = dialog->nameFilters().value(filter);
        dialog->selectNameFilter(name);
        Q_EMIT dialog->filterSelected(name);
    }
    return answerDialog(path);
}

void TestAppFiles::chooseToImport()
{
    QVERIFY(m_window->click(QStringLiteral("importButton")));
    QVERIFY(answerDialog({}, false));
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));

    // By keyboard, and a file that its name would not let one expect.
    m_window->key(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QCOMPARE(fileDialog()->windowTitle(), qtTrId("trivex-app-import-title"));
    QCOMPARE(fileDialog()->nameFilters().size(), 2);
    fileDialog()->selectNameFilter(fileDialog()->nameFilters().last());
    QVERIFY(answerDialog(m_certificate));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->answerPinUntil(
        rightPin(), [&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
    QCOMPARE(m_token.objectCount(), 1);
}

void TestAppFiles::chooseWhereToExport()
{
    QVERIFY(m_steps->show("roots"));
    QVERIFY(
        m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Test Root")) >= 0; }));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Test Root"))));
    const QString folder = inHome(QStringLiteral("Папка для них"));
    QVERIFY(QDir().mkpath(folder));
    const QString pem = folder + QStringLiteral("/свой.pem");
    QVERIFY(exportAs(pem));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-exported").arg(pem));
    QVERIFY(QFile::exists(pem));
    QCOMPARE(derOf(pem), m_authority.certificate());

    // The other format, by its filter; the suffix follows it.
    const QString named = folder + QStringLiteral("/binary");
    QVERIFY(exportAs(named, 1));
    QTRY_VERIFY(QFile::exists(named + QStringLiteral(".cer")));
    QCOMPARE(contents(named + QStringLiteral(".cer")), m_authority.certificate());
    QVERIFY(!QFile::exists(named));
    // A suffix that is of one format alone decides.
    const QString der = folder + QStringLiteral("/other.der");
    QVERIFY(exportAs(der));
    QTRY_COMPARE(contents(der), m_authority.certificate());
    // As it is offered, in the folder that was chosen last.
    QVERIFY(m_window->click(QStringLiteral("exportButton")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QCOMPARE(fileDialog()->acceptMode(), QFileDialog::AcceptSave);
    QCOMPARE(fileDialog()->directory().absolutePath(), folder);
    QVERIFY(answerDialog({}));
    QTRY_VERIFY(QFile::exists(folder + QStringLiteral("/Test Root.crt")));
    QCOMPARE(derOf(folder + QStringLiteral("/Test Root.crt")), m_authority.certificate());
}

void TestAppFiles::exportOverAFile()
{
    const QString precious = make("out/precious.crt", "precious");
    QVERIFY(m_steps->show("roots"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Test Root"))));
    // By the name that is typed, and by the one that it gets only with its suffix.
    for (const QString &name : {precious, QString(precious).chopped(4)}) {
        QVERIFY(exportAs(name, 0));
        QVERIFY(m_steps->waitOpen("replaceDialog"));
        QCOMPARE(m_steps->text("replaceName"), QStringLiteral("precious.crt"));
        QVERIFY(m_window->click(QStringLiteral("replaceCancel")));
        QVERIFY(m_steps->waitClosed("replaceDialog"));
        QCOMPARE(contents(precious), QByteArray("precious"));
    }
    QVERIFY(exportAs(precious));
    QVERIFY(m_steps->waitOpen("replaceDialog"));
    QTRY_VERIFY(m_window->item(QStringLiteral("replaceCancel"))->hasActiveFocus());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("replaceDialog"));
    QCOMPARE(contents(precious), QByteArray("precious"));
    QVERIFY(exportAs(precious));
    QVERIFY(m_steps->waitOpen("replaceDialog"));
    QVERIFY(m_window->click(QStringLiteral("replaceConfirm")));
    QTRY_VERIFY(contents(precious).startsWith("-----"));
    QCOMPARE(derOf(precious), m_authority.certificate());
    QCOMPARE(QDir(QFileInfo(precious).absolutePath()).entryList(QDir::Files | QDir::Hidden).size(),
             1);
}

void TestAppFiles::exportWhereNothingCanBeWritten()
{
    QVERIFY(m_steps->show("roots"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Test Root"))));
    const QString folder = inHome(QStringLiteral("taken/name.pem"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/inside")));
    QObject *pane = m_window->object(QStringLiteral("detailsPane"));
    // As root nothing but the kernel's own folders refuses a file.
    const QStringList places = {QStringLiteral("/proc"), folder + QStringLiteral("/gone")};
    for (const QString &place : places) {
        QMetaObject::invokeMethod(pane, "exportTo", Q_ARG(QVariant, place));
        QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-export-failed"));
    }
    m_window->takeWarnings();
}

void TestAppFiles::chooseADocument()
{
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_window->click(QStringLiteral("chooseDocument")));
    QVERIFY(answerDialog(make("in/chosen.txt", "chosen\n")));
    QVERIFY(m_window->waitForItem(QStringLiteral("documentName")));
    QCOMPARE(m_window->item(QStringLiteral("documentName"))->property("value").toString(),
             QStringLiteral("chosen.txt"));
}

void TestAppFiles::secondStartHandsOver()
{
    Trivex::SingleInstance first(QStringLiteral("trivex"));
    connect(&first, &Trivex::SingleInstance::started, &m_window->application(),
            &Trivex::Application::activate);
    QVERIFY(!first.handOver({}));
    QProcess second;
    second.setWorkingDirectory(QFileInfo(m_certificate).absolutePath());
    // A name without its folder, as from a terminal there, and a URL, as from a file manager.
    second.start(QStringLiteral(TRIVEX_PROGRAM),
                 {QFileInfo(m_certificate).fileName(), QUrl::fromLocalFile(m_bundle).toString()});
    QVERIFY(m_window->waitFor([&] { return second.state() == QProcess::NotRunning; }, 30000));
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
}

void TestAppFiles::commandLine()
{
    // A program of its own, which stays open with the file that it was given.
    QProcess program;
    QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    QTemporaryDir runtime;
    own.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    program.setProcessEnvironment(own);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(TRIVEX_PROGRAM), {m_certificate});
    QVERIFY(m_window->waitFor(
        [&] {
            return QFile::exists(runtime.filePath(QStringLiteral("trivex.socket")))
                || program.state() == QProcess::NotRunning;
        },
        30000));
    QVERIFY(!m_window->waitFor([&] { return program.state() == QProcess::NotRunning; }, 2000));
    // Asked to end, it does.
    program.terminate();
    QVERIFY(m_window->waitFor([&] { return program.state() == QProcess::NotRunning; }));
    const QByteArray said = program.readAll();
    QVERIFY2(!said.contains("qml") && !said.contains("QML"), said.constData());
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppFiles, TestToken>(argc, argv, QStringLiteral("Токен Г"));
}

#include "tst_app_files.moc"
