// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"
#include "tests/app/samplewindowtest.h"

#include <QtTest>

using namespace TrivexTest;

/// Rows that are dragged out of a list, as files.
class TestAppDrag : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void init();
    void oneRow();
    void severalRows();
    void rowsOfOneName();
    void upAndDownDragsNothing();
    void dropInTheWindowItself();
    void refusalIsTold();

private:
    void arrive() override;
    QQuickItem *rowItem(int row) const;
    /// Drags the row by so much, and leaves it; the files that were offered.
    QStringList drag(int row, const QPoint &by, bool letGo = false);
};

void TestAppDrag::arrive()
{
    QVERIFY(m_window->waitFor(
        [&] { return m_window->rowNamed(QStringLiteral("Иванова Мария Петровна")) >= 0; }));
}

void TestAppDrag::init()
{
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), 2);
}

QQuickItem *TestAppDrag::rowItem(int row) const
{
    QQuickItem *item = nullptr;
    QMetaObject::invokeMethod(m_window->item(QStringLiteral("certificateList")), "itemAtIndex",
                              Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, row));
    return item;
}

QStringList TestAppDrag::drag(int row, const QPoint &by, bool letGo)
{
    QObject *source = m_window->object(QStringLiteral("rowDrag"));
    source->setProperty("files", QVariant::fromValue(QStringList()));
    // A notice that comes above the list moves the rows.
    m_window->waitUntilStill();
    const QQuickItem *item = rowItem(row);
    QQuickWindow *window = m_window->window();
    const QPoint from = item->mapToScene(QPointF(item->width() / 3, item->height() / 2)).toPoint();
    // The drag has a loop of its own, which ends with Escape or where it is let go.
    QTimer end;
    end.setInterval(200);
    QObject::connect(&end, &QTimer::timeout, window, [=] {
        if (letGo)
            QTest::mouseRelease(window, Qt::LeftButton, {}, from + by);
        else
            QTest::keyClick(window, Qt::Key_Escape);
    });
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    end.start();
    for (int step = 1; step <= 4; ++step)
        QTest::mouseMove(window, from + by * step / 4);
    // The drag is announced once the pointer rests, which shows nowhere.
    QTest::qWait(50);
    end.stop();
    QTest::mouseRelease(window, Qt::LeftButton, {}, from + by);
    return source->property("files").toStringList();
}

void TestAppDrag::oneRow()
{
    const int row = m_window->rowNamed(QStringLiteral("maria.ivanova@example.org"));
    const QStringList urls = drag(row, QPoint(80, 5));
    QCOMPARE(urls.size(), 1);
    QFile file(QUrl(urls.first()).toLocalFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(Trivex::readPem(file.readAll()).size(), 1);
    // It was picked by that.
    QTRY_VERIFY(rowItem(row)->property("highlighted").toBool());
}

void TestAppDrag::severalRows()
{
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    const QStringList urls = drag(1, QPoint(80, 0));
    QCOMPARE(urls.size(), 2);
    for (const QString &url : urls)
        QVERIFY(QFile::exists(QUrl(url).toLocalFile()));
    QVERIFY(urls.first() != urls.last());
}

void TestAppDrag::rowsOfOneName()
{
    const auto make = [&](const char *file) {
        const QByteArray request = m_authority.openssl(
            {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
             QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
             QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Same")});
        return writeTestFile(inHome(QStringLiteral("CertificateRequest/") + QLatin1String(file)),
                             request);
    };
    QVERIFY(!make("Same.csr").isEmpty());
    QVERIFY(!make("Same (1).csr").isEmpty());
    QVERIFY(m_steps->show("requests"));
    QTRY_COMPARE(m_window->rowCount(), 3);
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_A, Qt::ControlModifier);
    const QStringList urls = drag(0, QPoint(80, 0));
    QCOMPARE(QSet<QString>(urls.cbegin(), urls.cend()).size(), 3);
}

void TestAppDrag::upAndDownDragsNothing()
{
    QVERIFY(drag(0, QPoint(3, 90)).isEmpty());
    QVERIFY(drag(0, QPoint(2, 1)).isEmpty());
}

void TestAppDrag::dropInTheWindowItself()
{
    QCOMPARE(drag(0, QPoint(120, 0), true).size(), 1);
    QVERIFY(m_window->holds([&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
}

void TestAppDrag::refusalIsTold()
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/proc"); // not even root can make anything there
    const QStringList files = drag(0, QPoint(120, 0));
    if (before.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);
    QVERIFY(files.isEmpty());
    QVERIFY(m_steps->waitOpen("errorDialog"));
    QCOMPARE(m_steps->text("errorCause"), qtTrId("trivex-app-drag-refused"));
    QVERIFY(!m_steps->text("errorAdvice").isEmpty());
    QVERIFY(m_window->click(QStringLiteral("errorClose")));
    QVERIFY(m_steps->waitClosed("errorDialog"));
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppDrag>(argc, argv);
}

#include "tst_app_drag.moc"
