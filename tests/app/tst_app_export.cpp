// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"
#include "tests/app/filedialogs.h"
#include "tests/app/samplewindowtest.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

using namespace TrivexTest;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Rows in the forms in which others take certificates.
class TestAppExport : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();
    void nameIsOffered();
    void oneWithItsIssuers();
    void oneAlone();
    void oneAsTextWithIssuers();
    void severalInOneFile_data();
    void severalInOneFile();
    void neverOverAFile();
    void severalToTheClipboard();
    void requestsInOneFile();

private:
    void arrive() override;
    bool chooseAll();
    /// The subjects that the openssl program finds in a collection.
    QByteArray subjectsIn(const QString &path) const;
    bool answer(const QString &path);
};

void TestAppExport::arrive()
{
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария Петровна")) >= 0; }));
}

void TestAppExport::init()
{
    QVERIFY(m_steps->show("personal"));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

/// The first dialog of all, too, comes with a name that one can take.
void TestAppExport::nameIsOffered()
{
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("build.example.org"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
    for (int time = 0; time < 2; ++time) {
        QVERIFY(m_window->click(QStringLiteral("exportButton")));
        QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
        const auto *name = fileDialog()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        QTRY_COMPARE(name->text(), QStringLiteral("build.example.org.crt"));
        QVERIFY(answerFileDialog(*m_window, QString(), false));
    }
}

bool TestAppExport::chooseAll()
{
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    return m_window->waitForItem(QStringLiteral("exportInOne"));
}

QByteArray TestAppExport::subjectsIn(const QString &path) const
{
    return m_authority.openssl({QStringLiteral("pkcs7"), QStringLiteral("-inform"),
                                QStringLiteral("DER"), QStringLiteral("-in"), path,
                                QStringLiteral("-print_certs"), QStringLiteral("-noout")});
}

bool TestAppExport::answer(const QString &path)
{
    const bool answered = answerFileDialog(*m_window, path);
    // The display has no window manager and minds the focus of a dialog that closed.
    m_window->takeWarnings();
    return answered;
}

void TestAppExport::oneWithItsIssuers()
{
    const QString path = inHome(QStringLiteral("one.p7b"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("build.example.org"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
    QVERIFY(m_window->click(QStringLiteral("exportButton")));
    QVERIFY(answer(path));
    QTRY_VERIFY(QFile::exists(path));
    // The certificate, and the root of the same token.
    const QByteArray subjects = subjectsIn(path);
    QCOMPARE(subjects.count("subject="), 2);
    QVERIFY(subjects.contains("build.example.org"));
    const QString certtool = QStandardPaths::findExecutable(QStringLiteral("certtool"));
    if (certtool.isEmpty()) {
        std::printf("SKIP certtool is not installed\n");
        return;
    }
    QProcess other;
    other.start(
        certtool,
        {QStringLiteral("--p7-info"), QStringLiteral("--inder"), QStringLiteral("--infile"), path});
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitCode(), 0);
    QVERIFY(other.readAllStandardOutput().contains("Number of certificates: 2"));
}

void TestAppExport::oneAsTextWithIssuers()
{
    const QString path = inHome(QStringLiteral("chain.pem"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("build.example.org"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
    QVERIFY(m_window->click(QStringLiteral("exportButton")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QFileDialog *dialog = fileDialog();
    auto *types = dialog->findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
    QVERIFY(types);
    const int wanted = types->findText(qtTrId("trivex-app-format-chain"), Qt::MatchStartsWith);
    QVERIFY(wanted > 0);
    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    for (int i = 0; i < wanted; ++i)
        QTest::keyClick(types, Qt::Key_Down);
    QVERIFY(answer(path));
    QTRY_VERIFY(QFile::exists(path));
    const QList<Trivex::PemBlock> blocks = Trivex::readPem(contentsOf(path));
    QCOMPARE(blocks.size(), 2);
    QCOMPARE(m_authority.openssl({QStringLiteral("verify"), QStringLiteral("-no-CApath"),
                                  QStringLiteral("-CAfile"), path, path}),
             path.toUtf8() + ": OK\n");
}

void TestAppExport::oneAlone()
{
    const QString path = inHome(QStringLiteral("alone.pem"));
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("build.example.org"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
    QVERIFY(m_window->click(QStringLiteral("exportButton")));
    QVERIFY(answer(path));
    QTRY_VERIFY(QFile::exists(path));
    QCOMPARE(Trivex::readPem(contentsOf(path)).size(), 1);
    const QString binary = inHome(QStringLiteral("alone.der"));
    QVERIFY(m_window->click(QStringLiteral("exportButton")));
    QVERIFY(answer(binary));
    QTRY_VERIFY(QFile::exists(binary));
    QCOMPARE(contentsOf(binary), Trivex::readPem(contentsOf(path)).first().data);
}

void TestAppExport::severalInOneFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("PEM") << QStringLiteral("all.pem");
    QTest::newRow("P7B") << QStringLiteral("all.p7b");
    QTest::newRow("without a suffix") << QStringLiteral("all");
}

void TestAppExport::severalInOneFile()
{
    QFETCH(QString, name);
    QVERIFY(chooseAll());
    QVERIFY(m_window->click(QStringLiteral("exportInOne")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    const bool isText = !name.endsWith(QLatin1String("p7b"));
    QString path = inHome(name);
    QFile::remove(inHome(QStringLiteral("all.pem")));
    QVERIFY(answer(path));
    if (!path.contains(QLatin1Char('.')) || name == QLatin1String("all"))
        path += QStringLiteral(".pem");
    QTRY_VERIFY(QFile::exists(path));
    if (isText)
        QCOMPARE(Trivex::readPem(contentsOf(path)).size(), 2);
    else
        QCOMPARE(subjectsIn(path).count("subject="), 2);
    QTRY_VERIFY(m_steps->text("toastText").contains(path));
}

void TestAppExport::neverOverAFile()
{
    const QString path = writeTestFile(inHome(QStringLiteral("taken.pem")), "not ours");
    QVERIFY(chooseAll());
    QVERIFY(m_window->click(QStringLiteral("exportInOne")));
    QVERIFY(answer(path));
    QVERIFY(m_steps->waitOpen("togetherReplaceDialog"));
    QVERIFY(m_steps->press("replaceCancel"));
    QVERIFY(m_steps->waitClosed("togetherReplaceDialog"));
    QCOMPARE(contentsOf(path), QByteArray("not ours"));
    QVERIFY(m_window->click(QStringLiteral("exportInOne")));
    QVERIFY(answer(path));
    QVERIFY(m_steps->waitOpen("togetherReplaceDialog"));
    QVERIFY(m_steps->press("replaceConfirm"));
    QTRY_COMPARE(Trivex::readPem(contentsOf(path)).size(), 2);
}

void TestAppExport::severalToTheClipboard()
{
    QGuiApplication::clipboard()->clear();
    QVERIFY(chooseAll());
    m_window->key(Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(m_window->waitForItem(QStringLiteral("rowMenuCopyPem")));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("rowMenuCopyPem")));
    QTRY_COMPARE(Trivex::readPem(QGuiApplication::clipboard()->text().toLatin1()).size(), 2);
}

void TestAppExport::requestsInOneFile()
{
    const QByteArray request = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Another")});
    writeTestFile(inHome(QStringLiteral("CertificateRequest/Another.csr")), request);
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 2);
    QVERIFY(chooseAll());
    QVERIFY(m_window->click(QStringLiteral("exportInOne")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    // A collection holds certificates alone.
    QVERIFY(fileDialog()->nameFilters().filter(QStringLiteral("p7b")).isEmpty());
    const QString path = inHome(QStringLiteral("requests.pem"));
    QVERIFY(answer(path));
    QTRY_VERIFY(QFile::exists(path));
    const QList<Trivex::PemBlock> blocks = Trivex::readPem(contentsOf(path));
    QCOMPARE(blocks.size(), 2);
    QCOMPARE(blocks.first().label, QByteArray("CERTIFICATE REQUEST"));
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppExport>(argc, argv);
}

#include "tst_app_export.moc"
