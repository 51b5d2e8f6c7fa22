// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QCryptographicHash>
#include <QDir>
#include <QtTest>

#include <cstdio>

using namespace TrivexTest;

namespace {

QString digestOf(const QByteArray &data)
{
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
}

/// What an editor does that saves: another file under the same name.
bool replace(const QString &path, const QByteArray &contents)
{
    const QString other = writeTestFile(path + QStringLiteral(".new"), contents);
    return !other.isEmpty()
        && std::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData())
        == 0;
}

} // namespace

/// The document that is signed or checked is the file of that moment, whatever was done to it since
/// it was opened.
class TestAppDocuments : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void changedBeforeItIsChecked_data();
    void changedBeforeItIsChecked();
    void changedBeforeItIsSigned_data();
    void changedBeforeItIsSigned();
    void changedWhileItIsChecked();
    void changedWhileItIsSigned();
    void openedAgain();
    void emptyAtFirst();
    void resultGoesWithTheDocument_data();
    void resultGoesWithTheDocument();
    void signatureOverAFile();
    void signatureOpened();
    void signatureWhereNothingCanBeWritten();

private:
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    QString open(const char *name, const QByteArray &contents);
    QString digest() const;
    /// Changes the file in one of the ways in which files change.
    bool change(const QString &how, const QString &path, const QByteArray &contents);
    /// Presses a button and waits for the headline of the result.
    QString work(const char *button);
    QString result() const { return m_steps->text("signResult"); }
    /// What a signature was made of: the digest in words, as its key reads it back.
    QString signedText(const QString &signature) const;
};

void TestAppDocuments::prepare()
{
    const QString id = QStringLiteral("01");
    QVERIFY(m_token.token().generateKeyPair(QStringLiteral("rsa:2048"), id, id));
    QVERIFY(m_token.token().writeObject(
        QStringLiteral("cert"),
        m_authority.issue(m_token.token().publicKey(id), QStringLiteral("/CN=Signer")), id, id));
    QVERIFY(!writeTestFile(m_authority.file(QStringLiteral("signer.der")),
                           m_token.token().publicKey(id))
                 .isEmpty());
}

void TestAppDocuments::arrive()
{
    answerPins(rightPin());
    QVERIFY(m_window->waitFor([&] { return m_window->rowNamed(QStringLiteral("Signer")) >= 0; }));
}

void TestAppDocuments::init()
{
    // From elsewhere, so that the page is a new one.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_steps->show("sign"));
    QVERIFY(m_steps->chooseForm(Steps::Raw));
}

QString TestAppDocuments::open(const char *name, const QByteArray &contents)
{
    const QString path = writeTestFile(inHome(QString::fromUtf8(name)), contents);
    QFile::remove(path + QStringLiteral(".sig"));
    m_steps->openFile(path);
    m_steps->waitEnabled("doSign");
    return path;
}

QString TestAppDocuments::digest() const
{
    const QQuickItem *item = m_window->item(QStringLiteral("documentDigest"));
    return item ? item->property("value").toString() : QString();
}

bool TestAppDocuments::change(const QString &how, const QString &path, const QByteArray &contents)
{
    if (how == QLatin1String("replaced"))
        return replace(path, contents);
    if (how == QLatin1String("removed and written anew"))
        return QFile::remove(path) && !writeTestFile(path, contents).isEmpty();
    return !writeTestFile(path, contents).isEmpty();
}

QString TestAppDocuments::work(const char *button)
{
    if (!m_steps->press(button))
        return {};
    m_window->waitForItem(QStringLiteral("signBusy"), 500);
    m_window->waitFor(
        [&] { return !m_window->item(QStringLiteral("signBusy")) && !result().isEmpty(); });
    return result();
}

QString TestAppDocuments::signedText(const QString &signature) const
{
    return QString::fromLatin1(m_authority.openssl(
        {QStringLiteral("pkeyutl"), QStringLiteral("-verifyrecover"), QStringLiteral("-pubin"),
         QStringLiteral("-keyform"), QStringLiteral("DER"), QStringLiteral("-inkey"),
         m_authority.file(QStringLiteral("signer.der")), QStringLiteral("-in"), signature}));
}

void TestAppDocuments::changedBeforeItIsChecked_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"replaced", "removed and written anew", "written over"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestAppDocuments::changedBeforeItIsChecked()
{
    QFETCH(QString, how);
    const QString path = open("contract.txt", "Pay 100 to Mary\n");
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-verified"));
    QVERIFY(change(how, path, "Pay 900 to Mary\n"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-refused"));
    QCOMPARE(digest(), digestOf("Pay 900 to Mary\n"));
    // As it was, the signature is good again, without opening anything.
    QVERIFY(change(how, path, "Pay 100 to Mary\n"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-verified"));
}

void TestAppDocuments::changedBeforeItIsSigned_data()
{
    changedBeforeItIsChecked_data();
}

void TestAppDocuments::changedBeforeItIsSigned()
{
    QFETCH(QString, how);
    const QString path = open("draft.txt", "The first draft\n");
    QVERIFY(change(how, path, "The last word\n"));
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    // What was signed is what lies there and what the page shows.
    QCOMPARE(signedText(path + QStringLiteral(".sig")), digestOf("The last word\n"));
    QCOMPARE(digest(), digestOf("The last word\n"));
}

void TestAppDocuments::changedWhileItIsChecked()
{
    const QString path = open("moving.txt", "Here\n");
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    m_window->onceShown(QStringLiteral("signBusy"), [&] { QVERIFY(replace(path, "There\n")); });
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-document-changed"));
    QCOMPARE(digest(), digestOf("There\n"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-refused"));
}

void TestAppDocuments::changedWhileItIsSigned()
{
    const QString path = open("moving.txt", "Here\n");
    m_window->onceShown(QStringLiteral("signBusy"), [&] { QVERIFY(replace(path, "There\n")); });
    QCOMPARE(work("doSign"), qtTrId("trivex-app-document-changed"));
    QCOMPARE(digest(), digestOf("There\n"));
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    QCOMPARE(signedText(path + QStringLiteral(".sig")), digestOf("There\n"));
}

void TestAppDocuments::openedAgain()
{
    const QString path = open("again.txt", "One\n");
    QVERIFY(replace(path, "Two\n"));
    m_steps->openFile(path);
    QCOMPARE(digest(), digestOf("Two\n"));
    QVERIFY(m_steps->waitEnabled("doSign"));
}

void TestAppDocuments::emptyAtFirst()
{
    const QString path = writeTestFile(inHome(QStringLiteral("empty")), {});
    m_steps->openFile(path);
    QVERIFY(m_window->waitForItem(QStringLiteral("documentProblem")));
    QVERIFY(!m_window->item(QStringLiteral("doSign"))->isEnabled());
    // Filled, it is read without another word, and by opening it again too.
    QVERIFY(!writeTestFile(path, "Filled\n").isEmpty());
    QTRY_COMPARE(digest(), digestOf("Filled\n"));
    QVERIFY(!writeTestFile(path, {}).isEmpty());
    QVERIFY(m_window->waitForItem(QStringLiteral("documentProblem")));
    QVERIFY(replace(path, "Filled again\n"));
    m_steps->openFile(path);
    QCOMPARE(digest(), digestOf("Filled again\n"));
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
}

void TestAppDocuments::resultGoesWithTheDocument_data()
{
    changedBeforeItIsChecked_data();
    QTest::newRow("removed") << QStringLiteral("removed");
}

void TestAppDocuments::resultGoesWithTheDocument()
{
    QFETCH(QString, how);
    const QString path = open("shown.txt", "Signed\n");
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-verified"));
    if (how == QLatin1String("removed")) {
        QVERIFY(QFile::remove(path));
        QTRY_COMPARE(m_steps->text("documentProblem"), qtTrId("trivex-app-read-missing"));
        QVERIFY(result().isEmpty());
        return;
    }
    QVERIFY(change(how, path, "Other\n"));
    // "Good" does not stay on the page of another document.
    QTRY_COMPARE(digest(), digestOf("Other\n"));
    QCOMPARE(result(), qtTrId("trivex-app-document-reread"));
}

void TestAppDocuments::signatureOverAFile()
{
    const QString path = open("over.txt", "Text\n");
    const QString file = path + QStringLiteral(".sig");
    QVERIFY(!writeTestFile(file, "precious").isEmpty());
    m_token.forget();
    // Asked before the token is; left, nothing has happened.
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("signReplaceDialog"));
    QVERIFY(m_window->click(QStringLiteral("replaceCancel")));
    QVERIFY(m_steps->waitClosed("signReplaceDialog"));
    QVERIFY(m_window->holds([&] {
        return !m_window->item(QStringLiteral("signBusy")) && m_token.count("C_Sign") == 0;
    }));
    QCOMPARE(QFileInfo(file).size(), qint64(8));
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_window->click(QStringLiteral("replaceConfirm")));
    QTRY_COMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(signedText(file), digestOf("Text\n"));
    // A leave is for one signature. One that comes in between is asked about as well.
    QVERIFY(QFile::remove(file));
    m_window->onceShown(QStringLiteral("signBusy"), [&] { writeTestFile(file, "precious"); });
    QVERIFY(m_steps->press("doSign"));
    QVERIFY(m_steps->waitOpen("signReplaceDialog"));
    QCOMPARE(QFileInfo(file).size(), qint64(8));
    QCOMPARE(result(), qtTrId("trivex-app-unwritten"));
    QVERIFY(m_window->click(QStringLiteral("replaceConfirm")));
    QTRY_COMPARE(result(), qtTrId("trivex-app-signed"));
    QCOMPARE(signedText(file), digestOf("Text\n"));
}

void TestAppDocuments::signatureOpened()
{
    const QString path = open("letter.txt", "Text\n");
    QCOMPARE(work("doSign"), qtTrId("trivex-app-signed"));
    open("another.txt", "Other\n");
    // A signature brings its document along, and gets none of its own.
    m_steps->openFile(path + QStringLiteral(".sig"));
    QCOMPARE(digest(), digestOf("Text\n"));
    QCOMPARE(m_window->item(QStringLiteral("signatureFile"))->property("value").toString(),
             path + QStringLiteral(".sig"));
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-verified"));
    // Without its document it waits for one.
    const QString moved = inHome(QStringLiteral("elsewhere.sig"));
    QVERIFY(QFile::rename(path + QStringLiteral(".sig"), moved));
    m_steps->openFile(moved);
    QCOMPARE(result(), qtTrId("trivex-app-signature-opened"));
    m_steps->openFile(path);
    QCOMPARE(work("doVerify"), qtTrId("trivex-app-verified"));
    const QString twice = QStringLiteral(".sig.sig");
    QVERIFY(!QFile::exists(path + twice));
}

void TestAppDocuments::signatureWhereNothingCanBeWritten()
{
    const QString path = open("blocked.txt", "Text\n");
    QVERIFY(QDir().mkpath(path + QStringLiteral(".sig/inside")));
    m_token.forget();
    QCOMPARE(work("doSign"), qtTrId("trivex-app-unwritten"));
    QCOMPARE(m_window->item(QStringLiteral("signResult"))->property("detail").toString(),
             qtTrId("trivex-app-write-is-folder"));
    QCOMPARE(m_token.count("C_Sign"), 0);
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppDocuments, FaultyToken>(argc, argv, QStringLiteral("Токен Е"));
}

#include "tst_app_documents.moc"
