// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The window over a home in which nobody may write.
#include "tests/app/machine.h"
#include "tests/app/windowtest.h"

#include <QDir>
#include <QStandardPaths>
#include <QtTest>

using namespace TrivexTest;

class TestAppClosedHome : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void settings();
    void ownKindOfRequest();
    void import();

private:
    void prepare() override;
    void restore() override { m_machine.end(); }
    void close();
    static QString profile();

    Machine m_machine{Machine::ForeignHome, home()};
    QByteArray m_certificate;
};

QString TestAppClosedHome::profile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/trivex/request-profiles/Own.json");
}

void TestAppClosedHome::prepare()
{
    QVERIFY(!writeTestFile(profile(), "{}").isEmpty());
    m_certificate = m_authority.certificate();
    QVERIFY(!writeTestFile(inHome(QStringLiteral("root.der")), m_certificate).isEmpty());
}

void TestAppClosedHome::close()
{
    m_machine.begin();
    QVERIFY(!QFileInfo(home()).isWritable());
}

void TestAppClosedHome::settings()
{
    QVERIFY(m_steps->press("settingsButton"));
    QVERIFY(m_steps->waitOpen("settingsDialog"));
    QVERIFY(!m_window->item(QStringLiteral("settingsNotKept")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("settingsDialog"));
    close();
    QVERIFY(m_steps->press("settingsButton"));
    QVERIFY(m_steps->waitOpen("settingsDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("settingsNotKept")));
    // They hold all the same.
    const auto isDark = [&] {
        const QQuickItem *dark = m_window->item(QStringLiteral("colours-2"));
        return dark && dark->property("checked").toBool();
    };
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("colours-2")));
    QVERIFY(m_window->waitFor(isDark));
    QVERIFY(m_window->click(QStringLiteral("colours-1")));
}

void TestAppClosedHome::ownKindOfRequest()
{
    QVERIFY(m_steps->show("newRequest"));
    QVERIFY(m_steps->chooseProfile(5));
    close();
    QVERIFY(m_steps->press("removeProfile"));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-profile-not-removed"));
    const QQuickItem *chooser = m_window->item(QStringLiteral("profileChooser"));
    QCOMPARE(chooser->property("count").toInt(), 6);
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Own"));
    QVERIFY(QFile::exists(profile()));
    // One that is saved keeps its dialog, with its name.
    QVERIFY(m_steps->press("saveProfile"));
    QVERIFY(m_steps->waitOpen("profileDialog"));
    QVERIFY(m_window->fill(QStringLiteral("profileName"), QStringLiteral("Another")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("profileProblem")));
    QCOMPARE(m_steps->text("profileProblem"), qtTrId("trivex-app-profile-unsaved"));
    QCOMPARE(m_steps->text("profileName"), QStringLiteral("Another"));
    // Where it can be written again the same press does it.
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("profileDialog"));
    m_machine.end();
    QVERIFY(m_steps->press("removeProfile"));
    QTRY_VERIFY(!QFile::exists(profile()));
}

void TestAppClosedHome::import()
{
    close();
    m_steps->openFile(inHome(QStringLiteral("root.der")));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_window->waitForItem(QStringLiteral("importFailure")));
    QVERIFY(!m_steps->text("importFailure").isEmpty());
    // The same file, where it can be written again.
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    m_machine.end();
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), 1);
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppClosedHome>(argc, argv, display);
}

#include "tst_app_closedhome.moc"
