// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/steps.h"
#include "tests/app/windowmain.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/testcertificates.h"

#include <QCryptographicHash>
#include <QDir>
#include <QImage>
#include <QLocale>
#include <QtTest>

using namespace TrivexTest;

namespace {

WindowEnvironment *environment = nullptr;
FaultyToken *token = nullptr;

QString rightPin()
{
    return QString::fromLatin1(TestToken::pin());
}

QString digestOf(const QByteArray &data)
{
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
}

} // namespace

/// The page that signs and checks: what it shows of a document, and each result in its own words.
class TestAppSign : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void documentIsShown();
    void pictureIsShown();
    void pinIsLeft();
    void pinIsWrong();
    void signedAndVerified();
    void changedDocument();
    void missingSignature();
    void signatureCannotBeWritten();
    void keyOfAnotherKind();
    void tokenIsGone();
    void slowTokenIsStopped();
    void pageIsLeft();
    void largeFile();

private:
    QString document(const char *name, const QByteArray &contents);
    QString value(const char *row) const;
    /// The headline of the result, once the work has ended.
    QString result();
    QString detail() const;
    /// Signs, and does something as soon as the token is at work.
    bool signAnd(const std::function<void()> &meanwhile);

    TestAuthority m_authority;
    std::unique_ptr<WindowDriver> m_window;
    std::unique_ptr<Steps> m_steps;
    std::unique_ptr<PinRobot> m_robot;
};

void TestAppSign::initTestCase()
{
    QVERIFY(m_authority.isValid());
    const auto put = [&](const char *type, const QString &id, const char *subject) {
        return token->token().generateKeyPair(QLatin1String(type), id, id)
            && token->token().writeObject(
                QStringLiteral("cert"),
                m_authority.issue(token->token().publicKey(id), QLatin1String(subject)), id, id);
    };
    QVERIFY(put("rsa:2048", QStringLiteral("01"), "/CN=Signer"));
    QVERIFY(put("EC:secp384r1", QStringLiteral("02"), "/CN=Voter"));
    m_window = std::make_unique<WindowDriver>();
    m_steps = std::make_unique<Steps>(*m_window);
    m_robot = std::make_unique<PinRobot>(*m_window);
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + token->token().label()));
    for (const char *name : {"Signer", "Voter"}) {
        QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; }));
    }
}

void TestAppSign::init()
{
    QVERIFY(m_steps->show("sign"));
    m_window->takeWarnings();
    m_robot->answer(rightPin());
}

void TestAppSign::cleanup()
{
    if (QTest::currentTestFailed())
        m_steps->savePicture(QTest::currentTestFunction());
    token->control();
    m_steps->escape();
    QVERIFY(m_steps->show("personal"));
    const QStringList warnings = m_window->takeWarnings();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

void TestAppSign::cleanupTestCase()
{
    m_robot.reset();
    m_window.reset();
}

QString TestAppSign::document(const char *name, const QByteArray &contents)
{
    const QString path = writeTestFile(environment->file(QString::fromUtf8(name)), contents);
    m_steps->openFile(path);
    m_steps->waitEnabled("doSign");
    return path;
}

QString TestAppSign::value(const char *row) const
{
    const QQuickItem *item = m_window->item(QLatin1String(row));
    return item ? item->property("value").toString() : QString();
}

QString TestAppSign::result()
{
    m_window->waitFor([&] {
        return !m_window->item(QStringLiteral("signBusy"))
            && !m_steps->text("signResult").isEmpty();
    });
    return m_steps->text("signResult");
}

QString TestAppSign::detail() const
{
    const QQuickItem *notice = m_window->item(QStringLiteral("signResult"));
    return notice ? notice->property("detail").toString() : QString();
}

bool TestAppSign::signAnd(const std::function<void()> &meanwhile)
{
    bool met = false;
    // From a timer: what the press began returns only when the token has answered.
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        if (!m_window->item(QStringLiteral("signCancel")))
            return;
        watch.stop();
        meanwhile();
        met = true;
    });
    watch.start(100);
    return m_steps->press("doSign") && m_window->waitFor([&] { return met; });
}

void TestAppSign::documentIsShown()
{
    const QByteArray text("Dear all,\n");
    document("Письмо.txt", text);
    QCOMPARE(value("documentName"), QStringLiteral("Письмо.txt"));
    QCOMPARE(value("documentType"), QStringLiteral("text/plain"));
    QCOMPARE(value("documentSize"), QLocale().formattedDataSize(text.size()));
    QCOMPARE(value("documentDigest"), digestOf(text));
    QVERIFY(!m_window->item(QStringLiteral("documentPreview")));
    QCOMPARE(m_window->item(QStringLiteral("signKeyChooser"))->property("displayText").toString(),
             QStringLiteral("Signer"));
}

void TestAppSign::pictureIsShown()
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = environment->file(QStringLiteral("scan #1.png"));
    QVERIFY(image.save(path));
    m_steps->openFile(path);
    QVERIFY(m_window->waitForItem(QStringLiteral("documentPreview")));
    // Loaded, not only asked for: 1 is Image.Ready.
    QVERIFY(m_window->waitFor([&] {
        return m_window->item(QStringLiteral("documentPreview"))->property("status").toInt() == 1;
    }));
    QCOMPARE(value("documentType"), QStringLiteral("image/png"));
}

void TestAppSign::pinIsLeft()
{
    const QString path = document("letter.txt", "Dear all,\n");
    token->forget();
    m_robot->leave();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY(detail().contains(qtTrId("trivex-app-cause-no-pin")));
    QCOMPARE(token->count("C_Login"), 0);
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
}

void TestAppSign::pinIsWrong()
{
    const QString path = document("letter.txt", "Dear all,\n");
    token->forget();
    m_robot->answer(QStringLiteral("999999"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY(detail().contains(qtTrId("trivex-app-cause-wrong-pin")));
    QTest::qWait(500);
    QCOMPARE(token->count("C_Login"), 1);
    QVERIFY(!m_window->isOpen(QStringLiteral("signPinDialog")));
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
}

void TestAppSign::signedAndVerified()
{
    const QString path = document("letter.txt", "Dear all,\n");
    token->forget();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(detail(), path + QStringLiteral(".sig"));
    QCOMPARE(QFileInfo(path + QStringLiteral(".sig")).size(), qint64(256));
    QVERIFY(m_steps->press("doVerify"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-verified"); }));
    QVERIFY(detail().contains(QStringLiteral("Signer")));

    // The PIN is asked for only when it is needed: not again for the next document.
    document("second.txt", "Dear all again,\n");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(token->count("C_Login"), 1);
}

void TestAppSign::changedDocument()
{
    document("letter.txt", "Dear nobody,\n");
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(result(), qtTrId("trivex-app-refused"));
    QVERIFY(!detail().isEmpty());
}

void TestAppSign::missingSignature()
{
    document("unsigned.txt", "Nobody signed this\n");
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(result(), qtTrId("trivex-app-nosignature"));
    QCOMPARE(detail(), qtTrId("trivex-app-read-missing"));
}

void TestAppSign::signatureCannotBeWritten()
{
    // A folder stands where the signature is to go.
    QVERIFY(QDir().mkpath(environment->file(QStringLiteral("blocked.txt.sig/inside"))));
    document("blocked.txt", "No place for it\n");
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->waitFor([&] { return !result().isEmpty(); }));
    QCOMPARE(result(), qtTrId("trivex-app-unwritten"));
    QVERIFY(!detail().isEmpty());
    const QStringList warnings = m_window->takeWarnings();
    QCOMPARE(warnings.filter(QStringLiteral("not written")).size(), warnings.size());
}

/// A key that can't make this signature is not offered for it, neither here nor at its certificate.
void TestAppSign::keyOfAnotherKind()
{
    document("curve.txt", "By another kind of key\n");
    QQuickItem *chooser = m_window->item(QStringLiteral("signKeyChooser"));
    QCOMPARE(chooser->property("count").toInt(), 1);
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Signer"));
    chooser->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Down);
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Signer"));
    QVERIFY(m_steps->show("personal"));
    for (const char *name : {"Signer", "Voter"}) {
        QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; }));
        QVERIFY(m_window->clickRow(m_window->rowNamed(QLatin1String(name))));
        QVERIFY(m_window->waitForItem(QStringLiteral("exportButton")));
        QTest::qWait(100);
        QCOMPARE(m_window->item(QStringLiteral("signButton")) != nullptr,
                 QLatin1String(name) == QLatin1String("Signer"));
    }
    // A search in the list does not narrow the choice.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
    // That a key of the other kind is there is told where somebody looks for it.
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_window->waitForItem(QStringLiteral("signKeyNote")));
    QCOMPARE(m_steps->text("signKeyNote"), qtTrId("trivex-app-only-rsa-keys"));
    QTest::qWait(100);
    chooser = m_window->item(QStringLiteral("signKeyChooser"));
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Signer"));
    QVERIFY(m_steps->show("personal"));
    m_window->key(Qt::Key_F, Qt::ControlModifier);
    m_window->key(Qt::Key_Escape);
}

void TestAppSign::tokenIsGone()
{
    document("gone.txt", "The token is gone\n");
    token->control("remove-at C_Sign *\nremove-at C_SignFinal *\nremove-at C_SignInit *");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY2(detail().contains(qtTrId("trivex-app-cause-removed")), qPrintable(detail()));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // Back in, it signs without a restart.
    QVERIFY(token->replug(m_steps->tokenStoreId()));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
}

void TestAppSign::slowTokenIsStopped()
{
    const QString path = document("slow.txt", "Slowly\n");
    token->control("delay C_Sign * 3000");
    m_window->meter().reset();
    bool startable = true;
    bool stopped = false;
    QVERIFY(signAnd([&] {
        startable = m_window->item(QStringLiteral("doSign"))->isEnabled();
        stopped = m_window->item(QStringLiteral("signBusy")) && m_steps->press("signCancel");
    }));
    QVERIFY(stopped);
    QVERIFY(!startable);
    QVERIFY2(m_window->meter().longestWork() <= 100,
             qPrintable(QString::number(m_window->meter().longestWork())));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY2(detail().contains(qtTrId("trivex-app-cause-cancelled")), qPrintable(detail()));
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
    token->control();
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
}

void TestAppSign::pageIsLeft()
{
    const QString path = document("left.txt", "Left alone\n");
    token->control("delay C_Sign * 1500");
    bool left = false;
    QVERIFY(signAnd([&] { left = m_steps->show("personal"); }));
    QVERIFY(left);
    QTest::qWait(2000);
    // Neither a frozen window nor half a file.
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Signer"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    const QFileInfo signature(path + QStringLiteral(".sig"));
    QVERIFY(!signature.exists() || signature.size() == 256);
}

void TestAppSign::largeFile()
{
    QByteArray block(1 << 20, 'x');
    const QString path = environment->file(QStringLiteral("large.txt"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (int i = 0; i < 96; ++i) {
        file.write(block);
        hash.addData(block);
    }
    file.close();
    m_window->meter().reset();
    m_steps->openFile(path);
    QVERIFY(m_steps->waitEnabled("doSign", 30000));
    QTest::qWait(50);
    QCOMPARE(value("documentDigest"), QString::fromLatin1(hash.result().toHex()));
    qInfo("96 MiB opened: longest work %lld ms", m_window->meter().longestWork());
    m_window->meter().reset();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QVERIFY(m_steps->press("doVerify"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-verified"); }));
    qInfo("96 MiB signed and verified: longest work %lld ms", m_window->meter().longestWork());
}

int main(int argc, char **argv)
{
    WindowEnvironment display;
    FaultyToken faulty(QStringLiteral("Токен Д"));
    return TrivexTest::runWindowTest<TestAppSign>(
        argc, argv, {display.problem(), faulty.token().problem()}, [&] {
            faulty.useInThisProcess();
            environment = &display;
            token = &faulty;
        });
}

#include "tst_app_sign.moc"
