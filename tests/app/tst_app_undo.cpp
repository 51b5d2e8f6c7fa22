// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"
#include "tests/app/samplewindowtest.h"
#include "tests/support/userfiles.h"

#include <QDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The certificates in the user's folder, whatever their files are called.
QSet<QByteArray> userCertificates()
{
    QSet<QByteArray> found;
    const QFileInfoList files = QDir(userFolder()).entryInfoList(QDir::Files);
    for (const QFileInfo &file : files) {
        const QList<Trivex::PemBlock> blocks = Trivex::readPem(contentsOf(file.filePath()));
        for (const Trivex::PemBlock &block : blocks)
            found += block.data;
    }
    return found;
}

} // namespace

/// What was removed comes back while the window lives, by mouse and by keyboard.
class TestAppUndo : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();
    void certificateOfTheUser();
    void severalByKeyboard();
    void offerCoversNothing_data();
    void offerCoversNothing();
    void secondQuestionIsHarmless();
    void setsComeBackOneByOne();
    void fieldUndoesItsOwnText();
    void request();
    void requestWhoseNameIsTaken();
    void folderThatCannotBeWritten();
    void certificateOnToken();
    void keyCannotComeBack();

private:
    void arrive() override;
    bool remove(const QString &name);
    bool removeAll();
    bool confirm();
    bool pick(const QString &name);

    const QString m_maria = QStringLiteral("maria.ivanova@example.org");
    const QString m_server = QStringLiteral("Сервер обновлений");
    const QString m_authority_ = QStringLiteral("Удостоверяющий центр «Пример»");
};

void TestAppUndo::arrive()
{
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария Петровна")) >= 0; }));
}

void TestAppUndo::init()
{
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

bool TestAppUndo::pick(const QString &name)
{
    return m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        && m_window->clickRow(m_window->rowNamed(name));
}

bool TestAppUndo::confirm()
{
    return m_steps->waitOpen("removeDialog") && m_steps->press("removeConfirm")
        && m_steps->waitClosed("removeDialog");
}

bool TestAppUndo::remove(const QString &name)
{
    if (!pick(name))
        return false;
    m_window->key(Qt::Key_Delete);
    return confirm() && m_window->waitFor([&] { return m_window->rowNamed(name) < 0; });
}

bool TestAppUndo::removeAll()
{
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    m_window->key(Qt::Key_Delete);
    return confirm() && m_window->waitFor([&] { return m_window->rowCount() == 0; });
}

void TestAppUndo::certificateOfTheUser()
{
    const QSet<QByteArray> before = userCertificates();
    QCOMPARE(before.size(), 2);
    QVERIFY(remove(m_maria));
    QCOMPARE(userCertificates().size(), 1);
    QVERIFY(m_window->waitForItem(QStringLiteral("toastAction")));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("toastAction")));
    QTRY_VERIFY(m_window->rowNamed(m_maria) >= 0);
    QCOMPARE(userCertificates(), before);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-undone", 1));
    // There is nothing more to bring back.
    QVERIFY(!m_window->item(QStringLiteral("toastAction")));
}

void TestAppUndo::severalByKeyboard()
{
    const QSet<QByteArray> before = userCertificates();
    QVERIFY(removeAll());
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_COMPARE(m_window->rowCount(), 2);
    QCOMPARE(userCertificates(), before);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-undone", 2));
}

/// What is offered for long lies below the lines of a narrow window, not over them.
void TestAppUndo::offerCoversNothing_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("Russian") << QLocale(QLocale::Russian, QLocale::Russia);
}

void TestAppUndo::offerCoversNothing()
{
    QFETCH(QLocale, locale);
    const QLocale before;
    QLocale::setDefault(locale);
    openWindow();
    QLocale::setDefault(before);
    arrive();
    init();
    QVERIFY(removeAll());
    m_window->window()->resize(400, 760);
    QTRY_COMPARE(m_window->window()->contentItem()->width(), 400.0);
    QVERIFY(m_window->waitForItem(QStringLiteral("toastAction")) && m_window->waitUntilStill());
    const QObject *notice = m_window->object(QStringLiteral("toast"));
    const QQuickItem *page = m_window->item(QStringLiteral("listPage"));
    const auto end = [page] { return page->mapToScene({0, page->height()}).y(); };
    QTRY_VERIFY(end() <= notice->property("y").toReal());
    QVERIFY(end() > 400);
    const qreal short_ = end();
    QVERIFY(m_window->click(QStringLiteral("toastAction")));
    QTRY_COMPARE(m_window->rowCount(), 2);
    // What is told for a moment takes no room.
    QTRY_VERIFY(end() > short_);
    // The next window has the size of this one.
    m_window->window()->resize(1180, 760);
    QTRY_COMPARE(m_window->window()->contentItem()->width(), 1180.0);
    openWindow();
    arrive();
}

/// The harmless answer has the keys, also after the other one was given once.
void TestAppUndo::secondQuestionIsHarmless()
{
    QVERIFY(remove(m_maria));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(m_maria) >= 0);
    QVERIFY(pick(m_maria));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QVERIFY(m_window->holds([&] { return m_window->rowNamed(m_maria) >= 0; }));
}

void TestAppUndo::setsComeBackOneByOne()
{
    QVERIFY(remove(m_maria));
    QVERIFY(remove(m_server));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(m_server) >= 0);
    QVERIFY(m_window->holds([&] { return m_window->rowNamed(m_maria) < 0; }));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(m_maria) >= 0);
    // And no more, however often it is asked for.
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(m_window->holds([&] { return m_window->rowCount() == 2; }));
}

void TestAppUndo::fieldUndoesItsOwnText()
{
    QVERIFY(remove(m_maria));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("abc")));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_steps->text("searchField") != QStringLiteral("abc"));
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    QTRY_COMPARE(m_window->rowCount(), 1);
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(m_maria) >= 0);
}

void TestAppUndo::request()
{
    const QString name = QStringLiteral("Сидоров Павел");
    const QString path = inHome(QStringLiteral("CertificateRequest/Сидоров Павел.csr"));
    const QByteArray before = contentsOf(path);
    QVERIFY(!before.isEmpty());
    QVERIFY(m_steps->show("requests"));
    QVERIFY(remove(name));
    QVERIFY(!QFile::exists(path));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastAction")));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(name) >= 0);
    QCOMPARE(contentsOf(path), before);
}

void TestAppUndo::requestWhoseNameIsTaken()
{
    const QString name = QStringLiteral("Сидоров Павел");
    const QString path = inHome(QStringLiteral("CertificateRequest/Сидоров Павел.csr"));
    const QByteArray before = contentsOf(path);
    QVERIFY(m_steps->show("requests"));
    QVERIFY(remove(name));
    QVERIFY(!writeTestFile(path, "something else").isEmpty());
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-undo-failed"));
    QCOMPARE(contentsOf(path), QByteArray("something else"));
    // It is not lost: when the name is free, it comes back.
    QVERIFY(QFile::remove(path));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(m_window->rowNamed(name) >= 0);
    QCOMPARE(contentsOf(path), before);
}

void TestAppUndo::folderThatCannotBeWritten()
{
    const QSet<QByteArray> before = userCertificates();
    QVERIFY(remove(m_maria));
    // A file in the place of the folder: not even the administrator can write there.
    const QString aside = inHome(QStringLiteral("aside"));
    QVERIFY(QDir().rename(userFolder(), aside));
    QVERIFY(!writeTestFile(userFolder(), "no folder").isEmpty());
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    const QString error = m_steps->takeError();
    QVERIFY(QFile::remove(userFolder()));
    QVERIFY(QDir().rename(aside, userFolder()));
    QCOMPARE(error, qtTrId("trivex-app-undo-failed"));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->rowNamed(m_maria) >= 0, Patience);
    QTRY_COMPARE(userCertificates(), before);
}

void TestAppUndo::certificateOnToken()
{
    answerPins(QString::fromLatin1(TestToken::pin()));
    QVERIFY(m_steps->show("roots"));
    QVERIFY(remove(m_authority_));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastAction")));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("toastAction")));
    QTRY_VERIFY_WITH_TIMEOUT(m_window->rowNamed(m_authority_) >= 0, Patience);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-undone", 1));
}

void TestAppUndo::keyCannotComeBack()
{
    answerPins(QString::fromLatin1(TestToken::pin()));
    QVERIFY(m_steps->show("personal"));
    const QString name = QStringLiteral("build.example.org");
    QVERIFY(pick(name));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QStringList texts;
    visitItems(m_window->window()->contentItem(),
               [&](QQuickItem *item) { texts += item->property("text").toString(); });
    QVERIFY(texts.contains(qtTrId("trivex-app-remove-key-warning")));
    QVERIFY(confirm());
    QTRY_VERIFY_WITH_TIMEOUT(m_window->rowNamed(name) < 0, Patience);
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-removed"));
    QVERIFY(!m_window->item(QStringLiteral("toastAction")));
    m_window->key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(m_window->holds([&] { return m_window->rowCount() == 1; }));
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppUndo>(argc, argv);
}

#include "tst_app_undo.moc"
