// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QCryptographicHash>
#include <QDir>
#include <QImage>
#include <QLocale>
#include <QtTest>

using namespace TrivexTest;

namespace {

QString digestOf(const QByteArray &data)
{
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
}

} // namespace

/// The page that signs and checks: what it shows of a document, and each result in its own words.
class TestAppSign : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void documentIsShown();
    void pictureIsShown();
    void pinIsLeft();
    void pinIsWrong();
    void pinIsRightAtLast();
    void pinPadIsAskedOnce();
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
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    QString document(const char *name, const QByteArray &contents);
    QString value(const char *row) const;
    /// The headline of the result, once the work has ended; the cause comes on a way of its own.
    QString result();
    QString detail() const;
    bool isTokenBusy() const;
    /// Signs, and does something as soon as the token is at work.
    bool signAnd(const std::function<void()> &meanwhile);
};

void TestAppSign::prepare()
{
    const auto put = [&](const char *type, const QString &id, const char *subject) {
        return m_token.token().generateKeyPair(QLatin1String(type), id, id)
            && m_token.token().writeObject(
                QStringLiteral("cert"),
                m_authority.issue(m_token.token().publicKey(id), QLatin1String(subject)), id, id);
    };
    QVERIFY(put("rsa:2048", QStringLiteral("01"), "/CN=Signer"));
    QVERIFY(put("EC:secp384r1", QStringLiteral("02"), "/CN=Voter"));
}

void TestAppSign::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
    for (const char *name : {"Signer", "Voter"}) {
        QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; }));
    }
}

void TestAppSign::init()
{
    // From elsewhere, so that the page is a new one.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    answerPins(rightPin());
}

QString TestAppSign::document(const char *name, const QByteArray &contents)
{
    const QString path = writeTestFile(inHome(QString::fromUtf8(name)), contents);
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

bool TestAppSign::isTokenBusy() const
{
    const QQuickItem *entry = m_window->item(QStringLiteral("token-") + m_token.token().label());
    return entry && entry->property("busy").toBool();
}

bool TestAppSign::signAnd(const std::function<void()> &meanwhile)
{
    bool met = false;
    m_window->onceShown(QStringLiteral("signCancel"), [&] {
        meanwhile();
        met = true;
    });
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
    const QString path = inHome(QStringLiteral("scan #1.png"));
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
    m_token.forget();
    m_robot->leave();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QTRY_VERIFY(detail().contains(qtTrId("trivex-app-cause-no-pin")));
    QCOMPARE(m_token.count("C_Login"), 0);
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
}

void TestAppSign::pinIsWrong()
{
    const QString path = document("letter.txt", "Dear all,\n");
    m_token.forget();
    m_robot->answerOnce(QStringLiteral("999999"));
    // The same dialog asks again, says why, and is left.
    bool isSaid = false;
    m_window->once([&] { return m_steps->text("pinWrong") == qtTrId("trivex-app-pin-wrong"); },
                   [&] {
                       isSaid = true;
                       m_robot->leave();
                   });
    QVERIFY(m_steps->press("doSign"));
    QTRY_COMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY(isSaid);
    QTRY_VERIFY(detail().contains(qtTrId("trivex-app-cause-no-pin")));
    // Never sent again.
    QVERIFY(m_window->holds([&] {
        return m_token.count("C_Login") == 1 && !m_window->isOpen(QStringLiteral("signPinDialog"));
    }));
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
}

void TestAppSign::pinIsRightAtLast()
{
    const QString path = document("letter.txt", "Dear all,\n");
    m_token.forget();
    m_robot->answerOnce(QStringLiteral("999999"));
    m_window->once([&] { return m_steps->text("pinWrong") == qtTrId("trivex-app-pin-wrong"); },
                   [&] { m_robot->answer(rightPin()); });
    QVERIFY(m_steps->press("doSign"));
    QTRY_COMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(m_token.count("C_Login"), 2);
    QVERIFY(QFile::remove(path + QStringLiteral(".sig")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // The next one finds a token that nobody is logged in to.
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    QVERIFY(m_steps->show("personal"));
    arrive();
}

/// What is typed at the reader, nobody here has typed: asking again would be sending again.
void TestAppSign::pinPadIsAskedOnce()
{
    QVERIFY(m_token.replug(m_steps->tokenStoreId(), "pin-pad 999999"));
    QVERIFY(m_steps->show("personal"));
    arrive();
    init();
    const QString path = document("pad.txt", "By the keys of the reader,\n");
    m_token.forget();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY(m_window->holds([&] { return m_token.count("C_Login") == 1; }));
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    QVERIFY(m_steps->show("personal"));
    arrive();
}

void TestAppSign::signedAndVerified()
{
    const QString path = document("letter.txt", "Dear all,\n");
    m_token.forget();
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
    QCOMPARE(m_token.count("C_Login"), 1);
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
    QVERIFY(QDir().mkpath(inHome(QStringLiteral("blocked.txt.sig/inside"))));
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
        QVERIFY(m_window->waitUntilStill());
        // Both sign messages; the page offers for each form the keys that can make it.
        QVERIFY(m_window->item(QStringLiteral("signButton")));
    }
    // A search in the list does not narrow the choice.
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("no such name")));
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() == 0; }));
    // That a key of the other kind is there is told where somebody looks for it.
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    QVERIFY(m_window->waitForItem(QStringLiteral("signKeyNote")));
    QCOMPARE(m_steps->text("signKeyNote"), qtTrId("trivex-app-only-rsa-keys"));
    QVERIFY(m_window->waitUntilStill());
    chooser = m_window->item(QStringLiteral("signKeyChooser"));
    QCOMPARE(chooser->property("displayText").toString(), QStringLiteral("Signer"));
    QVERIFY(m_steps->show("personal"));
    m_window->key(Qt::Key_F, Qt::ControlModifier);
    m_window->key(Qt::Key_Escape);
}

void TestAppSign::tokenIsGone()
{
    document("gone.txt", "The token is gone\n");
    m_token.control("remove-at C_Sign *\nremove-at C_SignFinal *\nremove-at C_SignInit *");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QTRY_VERIFY2(detail().contains(qtTrId("trivex-app-cause-removed")), qPrintable(detail()));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    // Back in, it signs without a restart.
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
}

void TestAppSign::slowTokenIsStopped()
{
    const QString path = document("slow.txt", "Slowly\n");
    m_token.control("delay C_Sign * 6000");
    m_window->meter().reset();
    bool lively = false;
    bool startable = true;
    bool stopped = false;
    QVERIFY(signAnd([&] {
        // The window goes on living meanwhile.
        lively = m_window->waitFor([&] { return m_window->meter().frames() >= 10; });
        startable = m_window->item(QStringLiteral("doSign"))->isEnabled();
        stopped = m_window->item(QStringLiteral("signBusy")) && m_steps->press("signCancel");
    }));
    QVERIFY(stopped);
    QVERIFY(!startable);
    QVERIFY(lively);
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QTRY_VERIFY2(detail().contains(qtTrId("trivex-app-cause-cancelled")), qPrintable(detail()));
    QVERIFY(!QFile::exists(path + QStringLiteral(".sig")));
    m_token.control();
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
}

void TestAppSign::pageIsLeft()
{
    const QString path = document("left.txt", "Left alone\n");
    m_token.control("delay C_Sign * 1500");
    bool left = false;
    QVERIFY(signAnd([&] { left = m_steps->show("personal"); }));
    QVERIFY(left);
    QVERIFY(m_window->waitFor([&] { return !isTokenBusy(); }));
    // Neither a frozen window nor half a file.
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Signer"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    const QFileInfo signature(path + QStringLiteral(".sig"));
    QVERIFY(!signature.exists() || signature.size() == 256);
}

void TestAppSign::largeFile()
{
    QByteArray block(1 << 20, 'x');
    const QString path = inHome(QStringLiteral("large.txt"));
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
    QVERIFY(m_steps->waitEnabled("doSign"));
    QTRY_COMPARE(value("documentDigest"), QString::fromLatin1(hash.result().toHex()));
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
    return runTokenWindowTest<TestAppSign, FaultyToken>(argc, argv, QStringLiteral("Токен Д"));
}

#include "tst_app_sign.moc"
