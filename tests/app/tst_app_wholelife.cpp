// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/firsthome.h"
#include "tests/app/keyboard.h"
#include "tests/app/windowtest.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

const QString Pin = QStringLiteral("135790");
const QString Name = QStringLiteral("Keyboard");

} // namespace

/// Everything that one does with a certificate, from the first start to its removal, by keyboard
/// alone and on a display without a window manager: no mouse, no property set, no window activated
/// by the test.
class TestAppWholeLife : public WindowTest {
    Q_OBJECT
public:
    TestAppWholeLife(WindowEnvironment &environment, const FirstHome &first)
        : WindowTest(environment)
        , m_first(first)
    {
    }

private Q_SLOTS:
    void tokenIsMade();
    void requestIsMade();
    void certificateIsImported();
    void certificateIsViewed();
    void documentIsSigned();
    void signatureIsChecked();
    void certificateIsExported();
    void keyIsRemoved();
    void removalIsUndone();

private:
    void arrive() override;
    QString saved() const { return inHome(QStringLiteral("CertificateRequest/Keyboard.csr")); }
    QString document() const { return inHome(QStringLiteral("letter.txt")); }
    bool exists(const QString &path) const
    {
        return m_window->waitFor([&] { return QFile::exists(path); });
    }
    bool confirmRemoval();

    const FirstHome &m_first;
    std::unique_ptr<Keyboard> m_keys;
};

void TestAppWholeLife::arrive()
{
    Q_UNUSED(m_first)
    m_keys = std::make_unique<Keyboard>(*m_window);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
}

void TestAppWholeLife::tokenIsMade()
{
    QVERIFY2(m_keys->pressButton("emptySecond"), qPrintable(m_keys->focused()));
    QVERIFY(m_steps->waitOpen("newTokenDialog"));
    QTRY_VERIFY2(m_keys->hasKeys("newTokenName"), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->type(QStringLiteral("Mine")));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(m_keys->press(Qt::Key_Return));
        QVERIFY(m_keys->type(Pin));
    }
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY(m_steps->waitClosed("newTokenDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("token-Mine")));
}

void TestAppWholeLife::requestIsMade()
{
    QVERIFY2(m_keys->go("newRequest"), qPrintable(m_keys->focused()));
    QTRY_VERIFY2(m_keys->hasKeys("keyNameInput"), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->press(Qt::Key_A, Qt::ControlModifier));
    QVERIFY(m_keys->type(QStringLiteral("by keyboard")));
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY(m_keys->type(Pin));
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY(m_steps->waitForKey());
    QVERIFY2(m_window->waitFor([&] { return m_keys->hasKeys("commonNameInput"); }),
             qPrintable(m_keys->focused()));
    QVERIFY(m_keys->type(Name));
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(QFile::exists(saved()));
}

void TestAppWholeLife::certificateIsImported()
{
    const QByteArray issued = m_authority.issueForRequest(saved());
    QVERIFY(!issued.isEmpty());
    const QString path = writeTestFile(inHome(QStringLiteral("issued.crt")), issued);
    QVERIFY(m_keys->press(Qt::Key_O, Qt::ControlModifier));
    QVERIFY(m_keys->givePath(path));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    m_keys->answerPins(Pin);
    QVERIFY2(m_keys->pressButton("importAccept"), qPrintable(m_keys->focused()));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY2(m_keys->go("personal"), qPrintable(m_keys->focused()));
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    // The request has done its work.
    QVERIFY(m_window->waitFor([&] { return !QFile::exists(saved()); }));
}

void TestAppWholeLife::certificateIsViewed()
{
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY2(m_keys->pressButton("pemTab"), qPrintable(m_keys->focused()));
    QVERIFY(m_window->waitFor([&] {
        const QQuickItem *text = m_window->item(QStringLiteral("encodedText"));
        return text
            && text->property("value").toString().contains(QLatin1String("BEGIN CERTIFICATE"));
    }));
    QVERIFY(m_keys->press(Qt::Key_Escape));
    QVERIFY2(m_window->waitFor([&] { return m_keys->hasKeys("certificateList"); }),
             qPrintable(m_keys->focused()));
}

void TestAppWholeLife::documentIsSigned()
{
    QVERIFY(!writeTestFile(document(), "Dear all,\n").isEmpty());
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    QVERIFY2(m_keys->pressButton("signButton"), qPrintable(m_keys->focused()));
    QVERIFY2(m_keys->pressButton("chooseDocument"), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->givePath(document()));
    // One is where one goes on.
    QVERIFY2(m_window->waitFor([&] { return m_keys->hasKeys("doSign"); }),
             qPrintable(m_keys->focused()));
    QVERIFY(m_keys->press(Qt::Key_Return));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }));
    const QString signature = document() + QStringLiteral(".p7s");
    QVERIFY(QFile::exists(signature));
    const QByteArray back = m_authority.openssl(
        {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-binary"),
         QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"), signature,
         QStringLiteral("-content"), document(), QStringLiteral("-CAfile"),
         m_authority.certificateFile(), QStringLiteral("-purpose"), QStringLiteral("any")});
    QCOMPARE(back, QByteArray("Dear all,\n"));
}

void TestAppWholeLife::signatureIsChecked()
{
    QVERIFY2(m_keys->pressButton("doVerify"), qPrintable(m_keys->focused()));
    QVERIFY(m_window->waitForItem(QStringLiteral("signerNotices")));
    // The page keeps the keys where they were.
    QVERIFY2(m_window->waitFor([&] { return m_keys->hasKeys("doVerify"); }),
             qPrintable(m_keys->focused()));
}

void TestAppWholeLife::certificateIsExported()
{
    QVERIFY2(m_keys->go("personal"), qPrintable(m_keys->focused()));
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->press(Qt::Key_Menu));
    QVERIFY(m_steps->waitOpen("rowMenu"));
    const auto isAt = [&] {
        const QQuickItem *line = m_window->item(QStringLiteral("rowMenuExport"));
        return line && line->property("highlighted").toBool();
    };
    for (int i = 0; i < 10 && !isAt(); ++i)
        QVERIFY(m_keys->press(Qt::Key_Down));
    QVERIFY(isAt());
    QVERIFY(m_keys->press(Qt::Key_Return));
    const QString path = inHome(QStringLiteral("exported.crt"));
    QVERIFY(m_keys->givePath(path));
    QVERIFY(exists(path));
    const QByteArray subject =
        m_authority.openssl({QStringLiteral("x509"), QStringLiteral("-noout"),
                             QStringLiteral("-subject"), QStringLiteral("-in"), path});
    QVERIFY2(subject.contains(Name.toLatin1()), subject.constData());
    // The list has the keys again, and goes on from there.
    QVERIFY2(m_window->waitFor([&] { return m_keys->hasKeys("certificateList"); }),
             qPrintable(m_keys->focused()));
}

bool TestAppWholeLife::confirmRemoval()
{
    return m_keys->press(Qt::Key_Delete) && m_steps->waitOpen("removeDialog")
        && m_keys->pressButton("removeConfirm") && m_steps->waitClosed("removeDialog");
}

void TestAppWholeLife::keyIsRemoved()
{
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    QVERIFY2(confirmRemoval(), qPrintable(m_keys->focused()));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(Name) < 0; }));
}

/// A key can't come back; a certificate of the user's own files can.
void TestAppWholeLife::removalIsUndone()
{
    const QString issued = inHome(QStringLiteral("issued.crt"));
    QVERIFY(m_keys->press(Qt::Key_O, Qt::ControlModifier));
    QVERIFY(m_keys->givePath(issued));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY2(m_keys->tabTo("tokenChooser"), qPrintable(m_keys->focused()));
    QVERIFY(m_keys->press(Qt::Key_End));
    QVERIFY(m_keys->press(Qt::Key_Down));
    QVERIFY2(m_keys->pressButton("importAccept"), qPrintable(m_keys->focused()));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY2(m_keys->go("users"), qPrintable(m_keys->focused()));
    QVERIFY2(m_keys->chooseRow(Name), qPrintable(m_keys->focused()));
    QVERIFY2(confirmRemoval(), qPrintable(m_keys->focused()));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(Name) < 0; }));
    QVERIFY(m_keys->press(Qt::Key_Z, Qt::ControlModifier));
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(Name) >= 0; }));
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    FirstHome first(display);
    return runWindowTest<TestAppWholeLife>(argc, argv, display, first);
}

#include "tst_app_wholelife.moc"
