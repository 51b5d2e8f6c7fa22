// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/contentstest.h"
#include "tests/support/userfiles.h"

#include <QtTest>

using namespace TrivexTest;

/// What is in a file goes where the user wants it: to a token, to the user's own files, or among
/// the requests.
class TestAppPlaces : public ContentsTest {
    Q_OBJECT
public:
    using ContentsTest::ContentsTest;

private Q_SLOTS:
    void init() { begin(); }

    void ticksDecide();
    void keyWithItsCertificate();
    void intoMyFilesByKeyboard();
    void rootsAreTrustedFromThenOn();
    void bundleIntoMyFiles();
    void myFilesCannotBeWritten();
    void closedWhileItWrites_data();
    void closedWhileItWrites();
    void escapeStopsTheImport();
    void requestAmongTheRequests();
};

void TestAppPlaces::ticksDecide()
{
    QVERIFY(bring(Drop, make("in/two.pem", certificate("Wanted") + certificate("Unwanted"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(turn(QStringLiteral("Unwanted")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(1).arg(2));
    QVERIFY(turn(QStringLiteral("Wanted")));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    // All of them, and none, at once.
    QVERIFY(m_window->click(QStringLiteral("itemsAll")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(2).arg(2));
    QVERIFY(turn(QStringLiteral("Unwanted")));
    QVERIFY(import());
    QCOMPARE(m_token.objectCount(), 1);
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.label()));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Wanted")) >= 0);
    QCOMPARE(m_window->rowNamed(QStringLiteral("Unwanted")), -1);
}

void TestAppPlaces::keyWithItsCertificate()
{
    const int before = m_token.objectCount();
    QFile key(m_authority.file(QStringLiteral("key.pem")));
    QVERIFY(key.open(QIODevice::ReadOnly));
    QVERIFY(bring(CommandLine, make("in/both.pem", certificate("Both") + key.readAll())));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 1);
    QVERIFY(import());
    QCOMPARE(m_token.objectCount(), before + 3);
    QVERIFY(m_steps->show("personal"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Both")) >= 0);
}

void TestAppPlaces::intoMyFilesByKeyboard()
{
    const int before = m_token.objectCount();
    QVERIFY(bring(CommandLine, make("in/mine.bin", certificate("Мой") + certificate("Skipped"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QQuickItem *list = m_window->item(QStringLiteral("itemList"));
    for (int i = 0; i < 20 && !list->hasActiveFocus(); ++i)
        m_window->key(Qt::Key_Tab);
    QVERIFY(list->hasActiveFocus());
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Space);
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(1).arg(2));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(m_steps->press("importAccept"));
    // Files ask for no PIN.
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QCOMPARE(m_steps->text("toastText"),
             qtTrId("trivex-app-imported")
                 .arg(QString::fromUtf8("Мой"))
                 .arg(qtTrId("trivex-app-category-users")));
    QCOMPARE(files(), QStringList{QString::fromUtf8("Мой.pem")});
    QCOMPARE(m_token.objectCount(), before);
    QVERIFY(m_steps->show("users"));
    QTRY_VERIFY(m_window->rowNamed(QString::fromUtf8("Мой")) >= 0);
    // What is there already is there once.
    QVERIFY(bring(CommandLine, inHome(QStringLiteral("in/mine.bin"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(import());
    QCOMPARE(files().size(), 2);
    removeFiles();
}

void TestAppPlaces::rootsAreTrustedFromThenOn()
{
    QFile root(m_authority.certificateFile());
    QVERIFY(root.open(QIODevice::ReadOnly));
    QVERIFY(bring(CommandLine, make("in/rooted.pem", certificate("Own") + root.readAll())));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 2);
    // On a token it vouches for nothing.
    QVERIFY(choosePlace(m_token.label()));
    QVERIFY(m_steps->text("importRoots").isEmpty());
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QTRY_COMPARE(m_steps->text("importRoots"), qtTrId("trivex-app-import-roots", 2));
    QVERIFY(turn(QStringLiteral("Own")));
    QTRY_COMPARE(m_steps->text("importRoots"), qtTrId("trivex-app-import-roots", 1));
    QVERIFY(turn(QStringLiteral("Test Root")));
    QTRY_VERIFY(m_steps->text("importRoots").isEmpty());
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppPlaces::bundleIntoMyFiles()
{
    const int before = m_token.objectCount();
    const QString bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel"), QStringLiteral("secret"), QStringLiteral("friend"));
    QVERIFY(bring(Drop, bundle));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QTRY_COMPARE(m_steps->text("importProblem"), qtTrId("trivex-app-bundle-ask"));
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("secret")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 2);
    QVERIFY(m_steps->text("importWithoutKey").isEmpty());
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QCOMPARE(m_steps->text("importWithoutKey"), qtTrId("trivex-app-import-without-key"));
    QVERIFY(import());
    QCOMPARE(files().size(), 2);
    QCOMPARE(m_token.objectCount(), before);
    for (const QString &name : files()) {
        QFile file(userFile(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("PRIVATE"));
    }
    removeFiles();
}

void TestAppPlaces::myFilesCannotBeWritten()
{
    // In the place of the folder, so that nobody can write there, whatever he may do.
    const QString aside = userFolder() + QStringLiteral(".aside");
    QVERIFY(QFile::rename(userFolder(), aside));
    writeTestFile(userFolder(), "a file");
    QVERIFY(bring(Drop, make("in/one.pem", certificate("Homeless"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QTRY_COMPARE(m_steps->text("importFailure"), qtTrId("trivex-app-write-no-folder"));
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    QVERIFY(QFile::remove(userFolder()));
    QVERIFY(QFile::rename(aside, userFolder()));
    // Where it is there again, the same step works.
    QVERIFY(import());
    QCOMPARE(files(), QStringList{QStringLiteral("Homeless.pem")});
    removeFiles();
    m_window->takeWarnings();
}

void TestAppPlaces::closedWhileItWrites_data()
{
    QTest::addColumn<bool>("good");
    QTest::newRow("written") << true;
    QTest::newRow("not written") << false;
}

void TestAppPlaces::closedWhileItWrites()
{
    QFETCH(bool, good);
    const QString saved = inHome(QStringLiteral("CertificateRequest/First.csr"));
    const QString aside = userFolder() + QStringLiteral(".aside");
    QVERIFY(bring(Drop,
                  make("in/first.pem",
                       good ? run(QStringLiteral("req -new -key key.pem -subj /CN=First"))
                            : certificate("First"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    if (!good) {
        QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
        QVERIFY(QFile::rename(userFolder(), aside));
        writeTestFile(userFolder(), "a file");
    }
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    const QString next = make("in/next.pem", certificate("Next") + certificate("Last"));
    // In one turn, so that the write can't have ended.
    QMetaObject::invokeMethod(dialog, "write");
    QMetaObject::invokeMethod(dialog, "close");
    m_steps->openFile(next);
    QVERIFY(dialog->property("writing").toBool());
    QVERIFY(m_window->waitFor([&] { return !dialog->property("writing").toBool(); }));
    // Nobody would know otherwise.
    if (!good)
        QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-import-undone"));
    // The next file comes then, and nothing of the one before is left over.
    QVERIFY(m_steps->waitEnabled("importAccept", 5000));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(2).arg(2));
    QVERIFY(m_steps->text("importFailure").isEmpty());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    if (good)
        QVERIFY(QFile::remove(saved));
    else
        QVERIFY(QFile::remove(userFolder()) && QFile::rename(aside, userFolder()));
    m_window->takeWarnings();
}

void TestAppPlaces::escapeStopsTheImport()
{
    QVERIFY(bring(
        Drop, make("in/late.pem", run(QStringLiteral("req -new -key key.pem -subj /CN=Late")))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    // In one turn, so that the write can't have ended.
    QMetaObject::invokeMethod(dialog, "write");
    QVERIFY(dialog->property("writing").toBool());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_window->waitFor([&] { return !dialog->property("writing").toBool(); }));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-import-failed"));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    QVERIFY(!QFile::exists(inHome(QStringLiteral("CertificateRequest/Late.csr"))));
}

void TestAppPlaces::requestAmongTheRequests()
{
    const QByteArray request = run(QStringLiteral("req -new -key key.pem -subj /CN=Elsewhere"));
    QVERIFY(bring(Drop, make("in/elsewhere.txt", request)));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(!m_window->item(QStringLiteral("tokenChooser")));
    QVERIFY(import());
    QVERIFY(m_steps->show("requests"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Elsewhere")) >= 0);
    const QString saved = inHome(QStringLiteral("CertificateRequest/Elsewhere.csr"));
    QFile file(saved);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().simplified(), request.simplified());
    QVERIFY(QFile::remove(saved));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppPlaces, TestToken>(argc, argv, QStringLiteral("Токен Ф"));
}

#include "tst_app_places.moc"
