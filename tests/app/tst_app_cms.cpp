// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/userfiles.h"

#include <QDir>
#include <QtTest>

using namespace TrivexTest;

/// Signatures that others can check, made and checked in the window.
class TestAppCms : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void formsAndKeys();
    void signedAndChecked_data();
    void signedAndChecked();
    void anyFile();
    void pinIsLeft();
    void stopped();
    void overAFile();
    void documentChanges();
    void messageOpened();
    void messageWaitsForItsDocument();
    void strangersMessage();
    void longSaving();
    void tamperedMessage();
    void rawStaysRaw();

private:
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    QString open(const char *name, const QByteArray &contents);
    bool chooseKey(const char *name);
    QString result();
    QString detail() const;
    /// The headline about the first signature, once it is checked.
    QString verdict();
    QString verdictDetail() const;
    bool opensslAccepts(const QString &message, const QString &document = {}) const;
};

void TestAppCms::prepare()
{
    const auto put = [&](const char *type, const QString &id, const char *subject) {
        return m_token.token().generateKeyPair(QLatin1String(type), id, id)
            && m_token.token().writeObject(
                QStringLiteral("cert"),
                m_authority.issue(m_token.token().publicKey(id), QLatin1String(subject)), id, id);
    };
    QVERIFY(put("rsa:2048", QStringLiteral("01"), "/CN=Signer"));
    QVERIFY(put("EC:secp384r1", QStringLiteral("02"), "/CN=Voter"));
    // The user trusts the authority.
    QVERIFY(!writeTestFile(userFile(QStringLiteral("root.pem")), toPem(m_authority.certificate()))
                 .isEmpty());
}

void TestAppCms::arrive()
{
    for (const char *name : {"Signer", "Voter"}) {
        QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QLatin1String(name)) >= 0; }));
    }
}

void TestAppCms::init()
{
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_steps->show("sign"));
    answerPins(rightPin());
}

QString TestAppCms::open(const char *name, const QByteArray &contents)
{
    const QString path = writeTestFile(inHome(QString::fromUtf8(name)), contents);
    for (const char *suffix : {".p7s", ".p7m", ".sig"})
        QFile::remove(path + QLatin1String(suffix));
    m_steps->openFile(path);
    m_steps->waitEnabled("doSign");
    return path;
}

bool TestAppCms::chooseKey(const char *name)
{
    QQuickItem *keys = m_window->item(QStringLiteral("signKeyChooser"));
    keys->forceActiveFocus();
    const auto isIt = [&] {
        return keys->property("displayText").toString() == QLatin1String(name);
    };
    if (!isIt())
        m_window->key(Qt::Key_Down);
    if (!isIt())
        m_window->key(Qt::Key_Up);
    return isIt();
}

QString TestAppCms::result()
{
    m_window->waitFor([&] {
        return !m_window->item(QStringLiteral("signBusy"))
            && !m_steps->text("signResult").isEmpty();
    });
    return m_steps->text("signResult");
}

QString TestAppCms::detail() const
{
    const QQuickItem *notice = m_window->item(QStringLiteral("signResult"));
    return notice ? notice->property("detail").toString() : QString();
}

QString TestAppCms::verdict()
{
    m_window->waitFor([&] {
        return !m_window->item(QStringLiteral("signBusy"))
            && !m_steps->text("signerResult0").isEmpty();
    });
    return m_steps->text("signerResult0");
}

QString TestAppCms::verdictDetail() const
{
    const QQuickItem *notice = m_window->item(QStringLiteral("signerResult0"));
    return notice ? notice->property("detail").toString() : QString();
}

bool TestAppCms::opensslAccepts(const QString &message, const QString &document) const
{
    QStringList arguments = {QStringLiteral("cms"),     QStringLiteral("-verify"),
                             QStringLiteral("-binary"), QStringLiteral("-cades"),
                             QStringLiteral("-inform"), QStringLiteral("DER"),
                             QStringLiteral("-in"),     message,
                             QStringLiteral("-CAfile"), m_authority.certificateFile()};
    if (!document.isEmpty())
        arguments += {QStringLiteral("-content"), document};
    return !m_authority.openssl(arguments).isNull();
}

/// Each form has the keys that can make it.
void TestAppCms::formsAndKeys()
{
    open("letter.txt", "Text\n");
    const auto keys = [&] {
        return m_window->item(QStringLiteral("signKeyChooser"))->property("count").toInt();
    };
    QTRY_COMPARE(keys(), 2);
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    QTRY_COMPARE(keys(), 1);
    QVERIFY(m_steps->chooseForm(Steps::Attached));
    QTRY_COMPARE(keys(), 2);
    const auto name = [&] {
        return m_window->item(QStringLiteral("signatureFile"))->property("value").toString();
    };
    QVERIFY(name().endsWith(QLatin1String("letter.txt.p7m")));
    QVERIFY(m_steps->chooseForm(Steps::Detached));
    QVERIFY(name().endsWith(QLatin1String("letter.txt.p7s")));
}

void TestAppCms::signedAndChecked_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("isAttached");
    for (const char *key : {"Signer", "Voter"}) {
        QTest::addRow("%s, detached", key) << QString::fromLatin1(key) << false;
        QTest::addRow("%s, attached", key) << QString::fromLatin1(key) << true;
    }
}

void TestAppCms::signedAndChecked()
{
    QFETCH(QString, key);
    QFETCH(bool, isAttached);
    const QString path = open("letter.txt", "Dear all,\n");
    QVERIFY(m_steps->chooseForm(isAttached ? Steps::Attached : Steps::Detached));
    QVERIFY(chooseKey(key.toLatin1().constData()));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    const QString message = path + (isAttached ? QStringLiteral(".p7m") : QStringLiteral(".p7s"));
    QVERIFY(detail().startsWith(message));
    QVERIFY(opensslAccepts(message, isAttached ? QString() : path));
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-good"));
    QVERIFY(verdictDetail().contains(key));
    QCOMPARE(m_window->item(QStringLiteral("signerResult0"))->property("level").toInt(), 1);
}

/// Of types and lengths that the bare form refuses.
void TestAppCms::anyFile()
{
    const QString path = open("archive.zip", QByteArray::fromHex("504b0304") + "noise");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QVERIFY(opensslAccepts(path + QStringLiteral(".p7s"), path));
}

void TestAppCms::pinIsLeft()
{
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    const QString path = open("letter.txt", "Dear all,\n");
    m_robot->leave();
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QTRY_VERIFY(detail().contains(qtTrId("trivex-app-cause-no-pin")));
    QVERIFY(!QFile::exists(path + QStringLiteral(".p7s")));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
}

void TestAppCms::stopped()
{
    const QString path = open("letter.txt", "Dear all,\n");
    m_token.control("delay C_Sign * 3000");
    bool met = false;
    m_window->onceShown(QStringLiteral("signCancel"), [&] {
        // When it has come to rest.
        QTimer::singleShot(300, this, [&] {
            QVERIFY(m_window->click(QStringLiteral("signCancel")));
            met = true;
        });
    });
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->waitFor([&] { return met; }));
    QCOMPARE(result(), qtTrId("trivex-app-unsigned"));
    QVERIFY(!QFile::exists(path + QStringLiteral(".p7s")));
}

void TestAppCms::overAFile()
{
    const QString path = open("over.txt", "Text\n");
    const QString file = path + QStringLiteral(".p7s");
    QVERIFY(!writeTestFile(file, "precious").isEmpty());
    m_token.forget();
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("signReplaceDialog"));
    QVERIFY(m_window->click(QStringLiteral("replaceCancel")));
    QVERIFY(m_steps->waitClosed("signReplaceDialog"));
    QCOMPARE(m_token.count("C_Sign"), 0);
    QCOMPARE(QFileInfo(file).size(), qint64(8));
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->click(QStringLiteral("replaceConfirm")));
    QTRY_COMPARE(m_steps->text("signResult"), qtTrId("trivex-app-signed"));
    QVERIFY(opensslAccepts(file, path));
    // A leave is for one signature. One that comes in between is asked about as well.
    QVERIFY(QFile::remove(file));
    m_token.control("delay C_Sign * 1000");
    m_window->onceShown(QStringLiteral("signBusy"), [&] { writeTestFile(file, "precious"); });
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("signReplaceDialog"));
    QCOMPARE(QFileInfo(file).size(), qint64(8));
    QVERIFY(m_window->click(QStringLiteral("replaceConfirm")));
    QTRY_COMPARE(m_steps->text("signResult"), qtTrId("trivex-app-signed"));
    QVERIFY(opensslAccepts(file, path));
}

/// Every check reads the file of that moment.
void TestAppCms::documentChanges()
{
    const QString path = open("moving.txt", "Pay 100\n");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-good"));
    QVERIFY(!writeTestFile(path, "Pay 900\n").isEmpty());
    // "Good" does not stay on the page of another document.
    QTRY_COMPARE(m_steps->text("signResult"), qtTrId("trivex-app-document-reread"));
    QVERIFY(m_steps->text("signerResult0").isEmpty());
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-changed"));
    QCOMPARE(m_window->item(QStringLiteral("signerResult0"))->property("level").toInt(), 3);
}

void TestAppCms::messageOpened()
{
    const QString path = open("opened.txt", "Text\n");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    open("another.txt", "Other\n");
    // It brings its document along and is checked at once, from any page.
    QVERIFY(m_steps->show("personal"));
    m_steps->openFile(path + QStringLiteral(".p7s"));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-good"));
    QCOMPARE(m_window->item(QStringLiteral("documentName"))->property("value").toString(),
             QStringLiteral("opened.txt"));
    QVERIFY(!QFile::exists(path + QStringLiteral(".p7s.p7s")));
    QVERIFY(!m_window->item(QStringLiteral("saveDocument")));
}

void TestAppCms::messageWaitsForItsDocument()
{
    const QString path = open("alone.txt", "Text\n");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    const QString moved = inHome(QStringLiteral("elsewhere.p7s"));
    QFile::remove(moved);
    QVERIFY(QFile::rename(path + QStringLiteral(".p7s"), moved));
    m_steps->openFile(moved);
    QCOMPARE(result(), qtTrId("trivex-app-signature-opened"));
    m_steps->openFile(path);
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-good"));
}

/// Made by another program, by somebody whom nobody here knows, with the document in it.
void TestAppCms::strangersMessage()
{
    const QString document = writeTestFile(inHome(QStringLiteral("strange.txt")), "Strange\n");
    const QString message = inHome(QStringLiteral("strange.p7m"));
    QVERIFY(
        !m_authority
             .openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                       QStringLiteral("rsa:2048"), QStringLiteral("-nodes"),
                       QStringLiteral("-subj"), QStringLiteral("/CN=Stranger"),
                       QStringLiteral("-keyout"), QStringLiteral("strange.key"),
                       QStringLiteral("-out"), QStringLiteral("strange.pem")})
             .isNull());
    QVERIFY(!m_authority
                 .openssl({QStringLiteral("cms"), QStringLiteral("-sign"),
                           QStringLiteral("-binary"), QStringLiteral("-nodetach"),
                           QStringLiteral("-outform"), QStringLiteral("PEM"), QStringLiteral("-in"),
                           document, QStringLiteral("-signer"), QStringLiteral("strange.pem"),
                           QStringLiteral("-inkey"), QStringLiteral("strange.key"),
                           QStringLiteral("-out"), message})
                 .isNull());
    QVERIFY(QFile::remove(document));
    m_steps->openFile(message);
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-untrusted"));
    QVERIFY(verdictDetail().contains(QLatin1String("Stranger")));
    QVERIFY(m_window->waitForItem(QStringLiteral("saveDocument")));
    // Once the user trusts the certificate, the page says so by itself; and no more afterwards.
    const QString trusted = userFile(QStringLiteral("strange.pem"));
    QVERIFY(QFile::copy(m_authority.file(QStringLiteral("strange.pem")), trusted));
    QTRY_COMPARE(verdict(), qtTrId("trivex-app-signer-good"));
    QVERIFY(QFile::remove(trusted));
    QTRY_COMPARE(verdict(), qtTrId("trivex-app-signer-untrusted"));
}

/// What else is asked for has to wait; what was found out stands afterwards.
void TestAppCms::longSaving()
{
    constexpr qint64 Length = 200LL * 1024 * 1024;
    const QString path = open("long.txt", "Text\n");
    QVERIFY(QFile::resize(path, Length));
    QVERIFY(m_steps->chooseForm(Steps::Attached));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signResult") == qtTrId("trivex-app-signed"); }, 60000));
    QVERIFY(m_steps->press("doVerify"));
    QVERIFY(m_window->waitFor(
        [&] { return m_steps->text("signerResult0") == qtTrId("trivex-app-signer-good"); }, 60000));
    const QString saved = inHome(QStringLiteral("saved.txt"));
    bool met = false;
    bool waits = false;
    m_window->onceShown(QStringLiteral("signBusy"), [&] {
        waits = !m_window->item(QStringLiteral("doVerify"))->isEnabled()
            && m_window->item(QStringLiteral("signCancel"));
        met = true;
    });
    QVERIFY(m_steps->press("saveDocument"));
    QVERIFY(answerFileDialog(*m_window, saved));
    QVERIFY(m_window->waitFor([&] { return met; }));
    QVERIFY(waits);
    QVERIFY(m_window->waitFor([&] { return QFileInfo(saved).size() == Length; }, 60000));
    QVERIFY(m_window->waitFor([&] { return !m_window->item(QStringLiteral("signBusy")); }));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-good"));
    for (const QString &file : QStringList{path, saved, path + QStringLiteral(".p7m")})
        QVERIFY(QFile::remove(file));
}

void TestAppCms::tamperedMessage()
{
    const QString path = open("tampered.txt", "Text\n");
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QFile message(path + QStringLiteral(".p7s"));
    QVERIFY(message.open(QIODevice::ReadWrite) && message.seek(message.size() - 1));
    const char last = message.peek(1).at(0);
    QVERIFY(message.putChar(char(last ^ 1)));
    message.close();
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(verdict(), qtTrId("trivex-app-signer-damaged"));
    QVERIFY(!writeTestFile(message.fileName(), "no signature").isEmpty());
    QVERIFY(m_steps->press("doVerify"));
    QCOMPARE(result(), qtTrId("trivex-app-nosignature"));
    QCOMPARE(detail(), qtTrId("trivex-app-verify-no-message"));
}

void TestAppCms::rawStaysRaw()
{
    const QString path = open("raw.txt", "Text\n");
    QVERIFY(m_steps->chooseForm(Steps::Raw));
    QVERIFY(m_steps->waitEnabled("doSign"));
    QVERIFY(m_steps->press("doSign"));
    QCOMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(QFileInfo(path + QStringLiteral(".sig")).size(), qint64(256));
    QVERIFY(!QFile::exists(path + QStringLiteral(".p7s")));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppCms, FaultyToken>(argc, argv, QStringLiteral("Токен CMS"));
}

#include "tst_app_cms.moc"
