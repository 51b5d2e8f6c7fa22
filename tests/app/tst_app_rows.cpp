// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QDir>
#include <QSaveFile>
#include <QThread>
#include <QtTest>

#include <algorithm>
#include <limits>

using namespace TrivexTest;

namespace {

constexpr int Rows = 10000;
/// Between two keys of a fast hand: the window has its turn after each, as it has with a person.
constexpr int HandMs = 20;
/// What a hand feels as at once; a build for inspection is several times slower.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 LimitMs = 1000;
#elif defined(__OPTIMIZE__)
constexpr qint64 LimitMs = 100;
#else
constexpr qint64 LimitMs = 300;
#endif
/// Other programs take the processor and its caches away; the best of these is the window's own.
constexpr int Tries = 3;

QByteArray pem(const QByteArray &der)
{
    const QByteArray text = der.toBase64();
    QByteArray result = "-----BEGIN CERTIFICATE-----\n";
    for (int i = 0; i < text.size(); i += 64)
        result += text.mid(i, 64) + '\n';
    return result + "-----END CERTIFICATE-----\n";
}

} // namespace

/// Ten thousand certificates: nothing that the window does with them may be felt.
class TestAppRows : public WindowTest {
    Q_OBJECT
public:
    using WindowTest::WindowTest;

private Q_SLOTS:
    void loading();
    void opening();
    void searching();
    void scrolling();
    void startingWithAll();

private:
    void prepare() override;
    void arrive() override { show("users"); }

    void show(const char *category);
    void writeAll();
    void removeAll();
    /// Holds to the limit the work between two beats of the event loop, drawing included, by the
    /// processor's time, which other programs don't use up; of the best of the tries.
    void check(const char *what, const std::function<void()> &action);

    QByteArray m_certificate;
};

void TestAppRows::prepare()
{
    // One real certificate, its name overwritten: the signatures do not fit any more, which no
    // list looks at.
    m_certificate = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-subj"), QStringLiteral("/CN=Person 00000"),
         QStringLiteral("-outform"), QStringLiteral("DER"), QStringLiteral("-days"),
         QStringLiteral("900")});
    QVERIFY(m_certificate.contains("Person 00000"));
    QVERIFY(QDir().mkpath(userFolder()));
}

void TestAppRows::show(const char *category)
{
    QMetaObject::invokeMethod(m_window->window(), "show",
                              Q_ARG(QVariant, QString::fromLatin1(category)));
}

void TestAppRows::writeAll()
{
    // In a thread of its own: the window's is measured.
    const std::unique_ptr<QThread> writer(QThread::create([this] {
        for (int i = 0; i < Rows; ++i) {
            const QByteArray number = QByteArray::number(i).rightJustified(5, '0');
            QByteArray one = m_certificate;
            one.replace("Person 00000", "Person " + number);
            // Whole or not at all: the store reads what it sees at once.
            QSaveFile file(userFile(QStringLiteral("person-") + QString::fromLatin1(number)
                                    + QStringLiteral(".pem")));
            if (!file.open(QIODevice::WriteOnly) || file.write(pem(one)) < 1 || !file.commit())
                qFatal("can't write a certificate");
        }
    }));
    writer->start();
    m_window->waitFor([&] { return writer->isFinished(); }, 120000);
    writer->wait();
}

void TestAppRows::removeAll()
{
    // With its directory, so that the list empties at once.
    closeWindow();
    QVERIFY(QDir(userFolder()).removeRecursively());
    QVERIFY(QDir().mkpath(userFolder()));
    openWindow();
    show("users");
}

void TestAppRows::check(const char *what, const std::function<void()> &action)
{
    qint64 work = std::numeric_limits<qint64>::max();
    for (int i = 0; i < Tries && work > LimitMs; ++i) {
        m_window->meter().reset();
        action();
        if (QTest::currentTestFailed())
            return;
        const FrameMeter &meter = m_window->meter();
        QVERIFY2(meter.frames() > 0, "nothing was drawn");
        qInfo("%s: at most %lld ms of work at a time in %d frames", what, meter.longestWork(),
              meter.frames());
        work = std::min(work, meter.longestWork());
    }
    QVERIFY2(work <= LimitMs, qPrintable(QStringLiteral("%1 ms of work").arg(work)));
}

void TestAppRows::loading()
{
    bool first = true;
    check("loading", [&] {
        if (!first)
            removeAll();
        first = false;
        m_window->meter().reset();
        writeAll();
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == Rows; }, 120000));
    });
}

void TestAppRows::opening()
{
    check("opening", [&] {
        show("personal");
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
        QVERIFY(m_window->waitUntilStill());
        show("users");
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == Rows; }));
        QVERIFY(m_window->waitUntilStill());
    });
}

void TestAppRows::searching()
{
    QVERIFY(m_window->click(QStringLiteral("searchField")));
    check("searching", [&] {
        for (const QChar c : QStringLiteral("person 0123")) {
            m_window->type(c);
            // A hand that types, as fast as hands are.
            QTest::qWait(HandMs);
        }
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 10; }));
        for (int i = 0; i < 3; ++i) {
            m_window->key(Qt::Key_Backspace);
            // The same.
            QTest::qWait(HandMs);
        }
        m_window->key(Qt::Key_Escape);
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == Rows; }));
        QVERIFY(m_window->waitUntilStill());
    });
}

void TestAppRows::scrolling()
{
    m_window->item(QStringLiteral("certificateList"))->forceActiveFocus(Qt::TabFocusReason);
    check("scrolling", [&] {
        for (int i = 0; i < 40; ++i) {
            m_window->key(i % 4 == 3 ? Qt::Key_PageUp : Qt::Key_PageDown);
            // A hand that keeps the key down.
            QTest::qWait(HandMs);
        }
        m_window->key(Qt::Key_End);
        QVERIFY(m_window->waitUntilStill());
        m_window->key(Qt::Key_Home);
        QVERIFY(m_window->waitUntilStill());
    });
}

void TestAppRows::startingWithAll()
{
    check("starting with all of them, searched while they come", [&] {
        openWindow();
        show("users");
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
        QVERIFY(m_window->click(QStringLiteral("searchField")));
        m_window->type(QStringLiteral("person 0123"));
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 10; }, 60000));
        m_window->key(Qt::Key_Escape);
        QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == Rows; }, 60000));
    });
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    return runWindowTest<TestAppRows>(argc, argv, display);
}

#include "tst_app_rows.moc"
