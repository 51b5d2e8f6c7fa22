// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/handsfixture.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QtTest>

using namespace TrivexTest;

/// Several rows of a list: chosen, followed, and acted on together.
class TestAppSeveral : public HandsFixture {
    Q_OBJECT
public:
    using HandsFixture::HandsFixture;

private Q_SLOTS:
    void init() { showPersons(); }

    void severalByMouse();
    void severalByKeyboard();
    void severalAreFollowed();
    void severalWithoutTheCurrent();
    void severalAreExported();
    void severalAreRemoved();
    void requestsAreRemoved();

private:
    void prepare() override;
};

void TestAppSeveral::prepare()
{
    for (const char *name : {"One", "Two", "Three"}) {
        const QByteArray request = m_authority.openssl(
            {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
             QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
             QStringLiteral("/dev/null"), QStringLiteral("-subj"),
             QStringLiteral("/CN=") + QLatin1String(name)});
        QVERIFY(!writeTestFile(
                     inHome(QStringLiteral("CertificateRequest/%1.csr").arg(QLatin1String(name))),
                     request)
                     .isEmpty());
    }
}

void TestAppSeveral::severalByMouse()
{
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna Clara"));
    QTRY_COMPARE(m_steps->text("selectionCount"), qtTrId("trivex-app-chosen", 2));
    // No details of one, with buttons that would act on it alone.
    QVERIFY(!m_window->item(QStringLiteral("detailsView")));
    clickRow("Elena", Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("Clara Dmitri Elena"));
    clickRow("Dmitri", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Clara Elena"));
    clickRow("Clara", Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Elena"));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    clickRow("Anna", Qt::LeftButton, Qt::ControlModifier);
    clickRow("boris");
    QCOMPARE(chosen(), QStringLiteral("boris"));
}

void TestAppSeveral::severalByKeyboard()
{
    clickRow("boris");
    m_window->key(Qt::Key_Down, Qt::ShiftModifier);
    m_window->key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("boris Clara Dmitri"));
    m_window->key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("boris Clara"));
    m_window->key(Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna boris"));
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(chosen(), QStringLiteral("Anna boris Clara Dmitri Elena"));
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QTRY_COMPARE(QGuiApplication::clipboard()->text().split(QLatin1Char('\n')).size(), 5);
    m_window->key(Qt::Key_Escape);
    QCOMPARE(chosen(), QStringLiteral("Anna"));
    m_window->key(Qt::Key_Down);
    QCOMPARE(chosen(), QStringLiteral("boris"));
}

void TestAppSeveral::severalAreFollowed()
{
    clickRow("boris");
    clickRow("Dmitri", Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(addUser({"Bella", "Alpha", 50}));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Bella")) >= 0);
    QTRY_COMPARE(chosen(), QStringLiteral("boris Dmitri"));
    QVERIFY(QFile::remove(userFile(QStringLiteral("Bella"))));
    QTRY_COMPARE(m_window->rowCount(), 5);
    QTRY_COMPARE(chosen(), QStringLiteral("boris Dmitri"));
    // Nothing that is not seen is acted on.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("ri")));
    QTRY_COMPARE(names(), QStringLiteral("boris Dmitri"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("dmi")));
    QTRY_COMPARE(names(), QStringLiteral("Dmitri"));
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QCOMPARE(m_window->object(QStringLiteral("removeDialog"))->property("name").toString(),
             QStringLiteral("Dmitri"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
}

void TestAppSeveral::severalWithoutTheCurrent()
{
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 3);
    clickRow("Two");
    clickRow("One", Qt::LeftButton, Qt::ControlModifier);
    clickRow("Three", Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("o")));
    QTRY_COMPARE(names(), QStringLiteral("One Two"));
    QTRY_COMPARE(chosen(), QStringLiteral("One Two"));
    // What is asked is asked of what is seen.
    QVERIFY(m_window->click(QStringLiteral("removeSeveral")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QCOMPARE(m_window->object(QStringLiteral("removeDialog"))->property("title").toString(),
             qtTrId("trivex-app-remove-requests-title", 2));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    // One that is left is as good as chosen alone.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("tw")));
    QTRY_COMPARE(names(), QStringLiteral("Two"));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    // Those that come back are chosen again.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(chosen(), QStringLiteral("One Three Two"));
}

void TestAppSeveral::severalAreExported()
{
    const QString folder = inHome(QStringLiteral("Несколько"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(!writeTestFile(folder + QStringLiteral("/Anna.crt"), "precious").isEmpty());
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(m_window->click(QStringLiteral("exportSeveral")));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QCOMPARE(fileDialog()->fileMode(), QFileDialog::Directory);
    QVERIFY(answerFileDialog(*m_window, folder));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-exported").arg(folder));
    QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    QCOMPARE(files.join(QLatin1Char(' ')),
             QStringLiteral("Anna (2).crt Anna.crt Clara.crt boris.crt"));
    QFile precious(folder + QStringLiteral("/Anna.crt"));
    QVERIFY(precious.open(QIODevice::ReadOnly));
    QCOMPARE(precious.readAll(), QByteArray("precious"));
    for (const QString &file : {QStringLiteral("Anna (2)"), QStringLiteral("boris")}) {
        const QString subject = QString::fromUtf8(m_authority.openssl(
            {QStringLiteral("x509"), QStringLiteral("-noout"), QStringLiteral("-subject"),
             QStringLiteral("-in"), folder + QLatin1Char('/') + file + QStringLiteral(".crt")}));
        QVERIFY2(subject.contains(file.left(4)), qPrintable(subject));
    }
}

void TestAppSeveral::severalAreRemoved()
{
    clickRow("Anna");
    clickRow("Clara", Qt::LeftButton, Qt::ShiftModifier);
    clickRow("boris", Qt::LeftButton, Qt::ControlModifier);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    const QObject *dialog = m_window->object(QStringLiteral("removeDialog"));
    QCOMPARE(dialog->property("name").toString(), QStringLiteral("Anna\nClara"));
    QCOMPARE(dialog->property("title").toString(), qtTrId("trivex-app-remove-several-title", 2));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_COMPARE(names(), QStringLiteral("boris Dmitri Elena"));
    QVERIFY(!QFile::exists(userFile(QStringLiteral("Anna"))));
    QVERIFY(!QFile::exists(userFile(QStringLiteral("Clara"))));
    QVERIFY(QFile::exists(userFile(QStringLiteral("boris"))));
    QVERIFY(QFile::exists(userFile(QStringLiteral("Dmitri"))));
}

void TestAppSeveral::requestsAreRemoved()
{
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 3);
    QCOMPARE(names(), QStringLiteral("One Three Two"));
    clickRow("One");
    clickRow("Two", Qt::LeftButton, Qt::ControlModifier);
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QTRY_COMPARE(names(), QStringLiteral("Three"));
    QCOMPARE(QDir(inHome(QStringLiteral("CertificateRequest")))
                 .entryList(QDir::Files)
                 .join(QLatin1Char(' ')),
             QStringLiteral("Three.csr"));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppSeveral>(argc, argv, display);
}

#include "tst_app_several.moc"
