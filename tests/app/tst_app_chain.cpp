// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/chains/madechain.h"
#include "tests/support/userfiles.h"

#include <QtTest>

using namespace TrivexTest;
using namespace MadeChain;

/// Whether a certificate is to be trusted, and why, as the window shows it.
class TestAppChain : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void init();

    void shown();
    void revokedMeanwhile();
    void rootGoesAndComes();
    void atADate();
    void dateOfAnother();
    void stepByMouse();
    void stepOfAnotherPath();
    void stepByKeyboard();
    void keysStayOnTheirStep();
    void forAPurpose();
    void listIsImportedAndRemoved();
    void ofAFile();
    void narrow();

private:
    void prepare() override;

    static bool keep(const char *name, const QByteArray &contents)
    {
        return !writeTestFile(userFile(QString::fromUtf8(name)), contents).isEmpty();
    }
    bool pick(const char *name);
    QString badge() const;
    bool waitBadge(const char *id);

    const Party m_root = make({"Chain Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Chain Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Chain Leaf", -1, 90}, &m_middle);
};

void TestAppChain::prepare()
{
    QVERIFY(keep("root.pem", certificatePem(m_root.der())));
    QVERIFY(keep("middle.pem", certificatePem(m_middle.der())));
    QVERIFY(keep("leaf.pem", certificatePem(m_leaf.der())));
}

void TestAppChain::init()
{
    m_window->window()->resize(1180, 760);
    QFile::remove(userFile(QStringLiteral("list.crl")));
    QVERIFY(m_window->waitForItem(QStringLiteral("category-users")));
    QVERIFY(m_steps->show("users"));
    QVERIFY(pick("Chain Leaf"));
}

bool TestAppChain::pick(const char *name)
{
    const QString wanted = QString::fromUtf8(name);
    return m_window->waitFor([&] { return m_window->rowNamed(wanted) >= 0; })
        && m_window->clickRow(m_window->rowNamed(wanted))
        && m_window->waitForItem(QStringLiteral("chainBadge"));
}

QString TestAppChain::badge() const
{
    const QQuickItem *item = m_window->item(QStringLiteral("chainBadge"));
    return item ? item->property("text").toString() : QString();
}

bool TestAppChain::waitBadge(const char *id)
{
    const QString wanted = qtTrId(id);
    return m_window->waitFor([&] { return badge() == wanted; });
}

void TestAppChain::shown()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QCOMPARE(m_steps->text("chainMessage"), qtTrId("trivex-app-chain-all-good"));
    QCOMPARE(m_steps->text("chainAdvice"), qtTrId("trivex-app-chain-not-listed"));
    const char *const names[] = {"Chain Leaf", "Chain Middle", "Chain Root"};
    for (int i = 0; i < 3; ++i) {
        QQuickItem *step = m_window->item(QStringLiteral("chainStep%1").arg(i));
        QVERIFY(step);
        QCOMPARE(step->property("name").toString(), QString::fromLatin1(names[i]));
        QCOMPARE(step->property("trusted").toBool(), i == 2);
    }
}

void TestAppChain::revokedMeanwhile()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(keep("list.crl", list(m_middle, {{&m_leaf, -3, CRL_REASON_KEY_COMPROMISE}})));
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(m_steps->text("chainMessage").contains(qtTrId("trivex-app-reason-key")));
    QCOMPARE(m_steps->text("chainAdvice"), qtTrId("trivex-app-chain-refuse"));
    QVERIFY(keep("list.crl", listPem(list(m_middle, {}))));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(m_steps->text("chainAdvice").isEmpty());
}

void TestAppChain::rootGoesAndComes()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(QFile::remove(userFile(QStringLiteral("root.pem"))));
    QVERIFY(waitBadge("trivex-app-chain-unknown"));
    QVERIFY(m_steps->text("chainMessage").contains(QStringLiteral("Chain Root")));
    QVERIFY(keep("root.pem", certificatePem(m_root.der())));
    QVERIFY(waitBadge("trivex-app-chain-good"));
}

void TestAppChain::atADate()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    const QString late = QDate::currentDate().addDays(120).toString(Qt::ISODate);
    QVERIFY(m_window->fill(QStringLiteral("chainDate"), late));
    m_window->key(Qt::Key_Return);
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(m_window->fill(QStringLiteral("chainDate"), QStringLiteral("someday")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor([&] { return !m_steps->flag("chainDay").isEmpty(); }));
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(m_window->fill(QStringLiteral("chainDate"), QString()));
    m_window->key(Qt::Key_Return);
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(m_steps->flag("chainDay").isEmpty());
}

// A date that was typed for one certificate is not in force for the next, whose field is empty.
void TestAppChain::dateOfAnother()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    const QString late = QDate::currentDate().addDays(2 * Year).toString(Qt::ISODate);
    QVERIFY(m_window->fill(QStringLiteral("chainDate"), late));
    m_window->key(Qt::Key_Return);
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(pick("Chain Middle"));
    QVERIFY(m_window->waitFor([&] {
        const QQuickItem *field = m_window->item(QStringLiteral("chainDate"));
        return field && field->property("text").toString().isEmpty();
    }));
    QVERIFY(waitBadge("trivex-app-chain-good"));
}

// The path was found anew: the row of the dialog may be another certificate.
void TestAppChain::stepOfAnotherPath()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(m_window->click(QStringLiteral("chainStep1")));
    QVERIFY(m_steps->waitOpen("stepDialog"));
    QVERIFY(keep("list.crl", listPem(list(m_middle, {}))));
    QVERIFY(m_steps->waitClosed("stepDialog"));
}

void TestAppChain::stepByMouse()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(m_window->click(QStringLiteral("chainStep1")));
    QVERIFY(m_steps->waitOpen("stepDialog"));
    QCOMPARE(m_window->object(QStringLiteral("stepDialog"))->property("title").toString(),
             QStringLiteral("Chain Middle"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("stepDialog"));
}

void TestAppChain::stepByKeyboard()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QQuickItem *step = m_window->item(QStringLiteral("chainStep2"));
    QVERIFY(step);
    m_window->key(Qt::Key_Return); // from the list to the details
    for (int i = 0; i < 30 && !step->hasActiveFocus(); ++i)
        m_window->key(Qt::Key_Tab);
    QVERIFY(step->hasActiveFocus());
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitOpen("stepDialog"));
    QCOMPARE(m_window->object(QStringLiteral("stepDialog"))->property("title").toString(),
             QStringLiteral("Chain Root"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("stepDialog"));
}

// The path is found anew while somebody goes through it by keyboard.
void TestAppChain::keysStayOnTheirStep()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    const auto focused = [&] {
        const QQuickItem *item = m_window->window()->activeFocusItem();
        return item ? item->objectName() : QString();
    };
    QQuickItem *step = m_window->item(QStringLiteral("chainStep2"));
    QVERIFY(step);
    step->forceActiveFocus(Qt::TabFocusReason);
    // Its step goes: the one before has the keys, and keeps them.
    QVERIFY(QFile::remove(userFile(QStringLiteral("root.pem"))));
    QVERIFY(waitBadge("trivex-app-chain-unknown"));
    QCOMPARE(focused(), QStringLiteral("chainStep1"));
    QVERIFY(keep("root.pem", certificatePem(m_root.der())));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QCOMPARE(focused(), QStringLiteral("chainStep1"));
    QVERIFY(keep("list.crl", list(m_middle, {{&m_leaf, -3, CRL_REASON_KEY_COMPROMISE}})));
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QCOMPARE(focused(), QStringLiteral("chainStep1"));
    QCOMPARE(m_window->item(QStringLiteral("chainStep0"))->property("word").toString(),
             qtTrId("trivex-app-chain-bad"));
}

// What it is to be used for is chosen, and forgotten with the certificate.
void TestAppChain::forAPurpose()
{
    const Party mailer = make(
        {"Chain Mail",
         -1,
         90,
         {{NID_key_usage, "critical,digitalSignature"}, {NID_ext_key_usage, "emailProtection"}}},
        &m_middle);
    QVERIFY(keep("mail.pem", certificatePem(mailer.der())));
    QVERIFY(pick("Chain Mail"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QQuickItem *purposes = m_window->item(QStringLiteral("chainPurpose"));
    QVERIFY(purposes);
    purposes->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Down); // a TLS server
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(m_steps->text("chainMessage").contains(qtTrId("trivex-app-chain-purpose")));
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Down); // mail
    QVERIFY(waitBadge("trivex-app-chain-good"));
    m_window->key(Qt::Key_Down); // code
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    QVERIFY(pick("Chain Leaf"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QCOMPARE(m_window->item(QStringLiteral("chainPurpose"))->property("currentIndex").toInt(), 0);
    QVERIFY(QFile::remove(userFile(QStringLiteral("mail.pem"))));
}

// From a file into one's own files, where it counts; and out of them again.
void TestAppChain::listIsImportedAndRemoved()
{
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QVERIFY(!m_window->item(QStringLiteral("listsNotice")));
    const QByteArray der = list(m_middle, {{&m_leaf, -3, CRL_REASON_KEY_COMPROMISE}});
    m_steps->openFile(writeTestFile(inHome(QStringLiteral("some \"list\".txt")), der));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(m_steps->press("importAccept"));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(waitBadge("trivex-app-chain-bad"));
    const QString path = userFile(QStringLiteral("Chain Middle.crl"));
    QVERIFY(QFile::exists(path));
    QVERIFY(m_window->waitForItem(QStringLiteral("listsNotice")));
    QVERIFY(QMetaObject::invokeMethod(m_window->object(QStringLiteral("listsNotice")), "action"));
    QVERIFY(m_steps->waitOpen("revocationListsDialog"));
    QCOMPARE(m_steps->text("listName"), QStringLiteral("Chain Middle"));
    QVERIFY(m_steps->press("listShow"));
    QVERIFY(m_steps->waitOpen("listView"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("listView"));
    QVERIFY(m_steps->press("listRemove"));
    QCOMPARE(m_steps->text("listRemove"), qtTrId("trivex-app-lists-really"));
    QVERIFY(QFile::exists(path));
    QVERIFY(m_steps->press("listRemove"));
    QTRY_VERIFY(!QFile::exists(path));
    QVERIFY(m_window->waitFor([this] { return !m_window->item(QStringLiteral("listName")); }));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("revocationListsDialog"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
}

// What a file holds is a candidate, its list counts, and what is trusted here is trusted for it
// too.
void TestAppChain::ofAFile()
{
    const Party other = make({"File Middle", -10, Year, authority()}, &m_root);
    const Party leaf = make({"File Leaf", -1, 90}, &other);
    const QString path = writeTestFile(inHome(QStringLiteral("chain.pem")),
                                       certificatePem(leaf.der()) + certificatePem(other.der())
                                           + listPem(list(other, {})));
    m_steps->openFile(path);
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("itemView")));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("itemView")));
    QVERIFY(m_steps->waitOpen("itemDialog"));
    const auto words = [this] {
        QStringList found;
        visitItems(m_window->window()->contentItem(), [&found](QQuickItem *item) {
            if (item->objectName() == QLatin1String("chainBadge") && item->isVisible())
                found += item->property("text").toString();
        });
        return found;
    };
    // That of the page behind it is good, too.
    const QString good = qtTrId("trivex-app-chain-good");
    QVERIFY2(m_window->waitFor(
                 [&] {
                     return words() == (QStringList{good, good});
                 },
                 9000),
             qPrintable(words().join(QLatin1Char(';'))));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("itemDialog"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppChain::narrow()
{
    m_window->window()->resize(400, 700);
    QVERIFY(m_window->waitUntilStill());
    // The details stand instead of the list, or are a click away.
    if (!m_window->item(QStringLiteral("chainBadge")))
        QVERIFY(pick("Chain Leaf"));
    QVERIFY(waitBadge("trivex-app-chain-good"));
    QQuickItem *view = m_window->item(QStringLiteral("chainView"));
    QVERIFY(view);
    visitItems(view, [view](QQuickItem *item) {
        const QRectF place = item->mapRectToItem(view, item->boundingRect());
        QVERIFY2(!item->isVisible() || place.right() <= view->width() + 1,
                 qPrintable(describeItem(item)));
    });
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppChain>(argc, argv, display);
}

#include "tst_app_chain.moc"
