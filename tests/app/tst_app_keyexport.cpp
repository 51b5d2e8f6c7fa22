// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

using namespace TrivexTest;

namespace {

const QString Password = QStringLiteral("Пароль \"длинный\" 'one' $5");

struct Answer {
    int code = -1;
    QByteArray text;
};

/// What a program says of a file; code -1 where there is no such program.
Answer run(const QString &name, const QStringList &arguments)
{
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        return {};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished())
        return {};
    return {process.exitCode(), process.readAll()};
}

} // namespace

/// Private keys that leave their place, in files that other programs read.
class TestAppKeyExport : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void readByOthers_data();
    void readByOthers();
    void keyThatStays();
    void passwordTwice();
    void pinIsLeft();
    void ofABundle();
    void leftMeanwhile();
    void windowClosesMeanwhile();

private:
    void prepare() override;
    void arrive() override;
    void restore() override;

    bool addKey(const char *kind, const char *id, const QString &name, bool leaves);
    bool openMenu(const QString &row);
    bool ask(const QString &row);
    bool typePassword(const QString &first, const QString &second);
    QByteArray publicKeyIn(const QString &file, const QString &password) const;
};

bool TestAppKeyExport::addKey(const char *kind, const char *id, const QString &name, bool leaves)
{
    const TestToken &token = m_token.token();
    const QString number = QLatin1String(id);
    QStringList arguments = {QStringLiteral("--keypairgen"),
                             QStringLiteral("--key-type"),
                             QLatin1String(kind),
                             QStringLiteral("--id"),
                             number,
                             QStringLiteral("--label"),
                             name,
                             QStringLiteral("--sensitive")};
    if (leaves)
        arguments += QStringLiteral("--extractable");
    return !token.tool(arguments).isNull()
        && token.writeObject(
            QStringLiteral("cert"),
            m_authority.issue(token.publicKey(number), QStringLiteral("/CN=") + name), number,
            name);
}

void TestAppKeyExport::prepare()
{
    QVERIFY(addKey("rsa:2048", "01", QStringLiteral("Stays"), false));
    QVERIFY(addKey("rsa:2048", "02", QString::fromUtf8("Иван \"Ваня\" О'Нил"), true));
    QVERIFY(addKey("EC:secp384r1", "03", QStringLiteral("Curve"), true));
    QVERIFY(m_token.token().writeObject(QStringLiteral("cert"), m_authority.certificate(),
                                        QStringLiteral("09"), QStringLiteral("root")));
}

void TestAppKeyExport::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
}

void TestAppKeyExport::restore()
{
    m_token.control();
    answerPins(rightPin());
}

void TestAppKeyExport::init()
{
    answerPins(rightPin());
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.token().label()));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Curve")) >= 0);
}

bool TestAppKeyExport::openMenu(const QString &row)
{
    if (!m_window->clickRow(m_window->rowNamed(row)))
        return false;
    m_window->key(Qt::Key_F10, Qt::ShiftModifier);
    return m_steps->waitOpen("rowMenu") && m_window->waitUntilStill()
        && m_window->waitForItem(QStringLiteral("rowMenuExportKey"));
}

bool TestAppKeyExport::ask(const QString &row)
{
    return openMenu(row) && m_window->click(QStringLiteral("rowMenuExportKey"))
        && m_steps->waitOpen("keyExportDialog");
}

bool TestAppKeyExport::typePassword(const QString &first, const QString &second)
{
    return m_window->fill(QStringLiteral("exportPassword"), first)
        && m_window->fill(QStringLiteral("exportPasswordAgain"), second);
}

/// PEM of the public half of the key in a bundle.
QByteArray TestAppKeyExport::publicKeyIn(const QString &file, const QString &password) const
{
    const QString key = inHome(QStringLiteral("key.pem"));
    const Answer opened =
        run(QStringLiteral("openssl"),
            {QStringLiteral("pkcs12"), QStringLiteral("-in"), file, QStringLiteral("-passin"),
             QStringLiteral("pass:") + password, QStringLiteral("-nodes"),
             QStringLiteral("-nocerts"), QStringLiteral("-out"), key});
    if (opened.code != 0)
        return opened.text;
    return run(QStringLiteral("openssl"),
               {QStringLiteral("pkey"), QStringLiteral("-in"), key, QStringLiteral("-pubout"),
                QStringLiteral("-outform"), QStringLiteral("DER")})
        .text;
}

void TestAppKeyExport::readByOthers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id");
    QTest::newRow("P-384") << QStringLiteral("Curve") << QStringLiteral("03");
    QTest::newRow("RSA") << QString::fromUtf8("Иван \"Ваня\" О'Нил") << QStringLiteral("02");
}

void TestAppKeyExport::readByOthers()
{
    QFETCH(QString, name);
    QFETCH(QString, id);
    const QString path = inHome(id + QString::fromUtf8(" 'ключ' $5.p12"));
    QVERIFY(ask(name));
    QCOMPARE(m_steps->text("keyExportName"), name);
    QVERIFY(typePassword(Password, Password));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QVERIFY(!m_window->isOpen(QStringLiteral("keyExportDialog")));
    // As it is offered: between double marks Qt would look for one of several names.
    const auto *offered = fileDialog()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    const QString suggestion = offered ? offered->text() : QString();
    QVERIFY(answerFileDialog(*m_window, path));
    m_window->takeWarnings();
    QTRY_VERIFY(QFile::exists(path));
    QVERIFY2(!suggestion.contains(QLatin1Char('"')), qPrintable(suggestion));
    QCOMPARE(publicKeyIn(path, Password), m_token.token().publicKey(id));
    QVERIFY(!(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)));
    // Nobody else's password opens it, and none does not either.
    QVERIFY(publicKeyIn(path, QStringLiteral("wrong")) != m_token.token().publicKey(id));
    const Answer info = run(QStringLiteral("openssl"),
                            {QStringLiteral("pkcs12"), QStringLiteral("-info"),
                             QStringLiteral("-noout"), QStringLiteral("-in"), path,
                             QStringLiteral("-passin"), QStringLiteral("pass:") + Password});
    QVERIFY2(info.text.contains("AES-256-CBC") && info.text.contains("PBKDF2")
                 && info.text.contains("MAC: sha256"),
             info.text.constData());
    const Answer chain =
        run(QStringLiteral("openssl"),
            {QStringLiteral("pkcs12"), QStringLiteral("-nokeys"), QStringLiteral("-in"), path,
             QStringLiteral("-passin"), QStringLiteral("pass:") + Password});
    QCOMPARE(chain.text.count("BEGIN CERTIFICATE"), 2);
    const Answer certtool =
        run(QStringLiteral("certtool"),
            {QStringLiteral("--p12-info"), QStringLiteral("--inder"), QStringLiteral("--password"),
             Password, QStringLiteral("--infile"), path});
    if (certtool.code < 0)
        std::printf("SKIP certtool is not installed\n");
    else
        QVERIFY2(certtool.code == 0 && certtool.text.contains("PRIVATE KEY"),
                 certtool.text.constData());
    const Answer nss = run(QStringLiteral("pk12util"),
                           {QStringLiteral("-l"), path, QStringLiteral("-W"), Password});
    if (nss.code < 0)
        std::printf("SKIP pk12util is not installed\n");
    else
        QVERIFY2(nss.code == 0 && nss.text.contains("Key"), nss.text.constData());
}

/// The token gives such a key to nobody: after a login the menu says so, before it the token.
void TestAppKeyExport::keyThatStays()
{
    QVERIFY(openMenu(QStringLiteral("Stays")));
    QQuickItem *item = m_window->item(QStringLiteral("rowMenuExportKey"));
    QVERIFY(!item->isEnabled());
    QVERIFY(item->property("text").toString().contains(qtTrId("trivex-app-cause-key-stays")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("rowMenu"));
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    m_token.forget();
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Stays")) >= 0);
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(ask(QStringLiteral("Stays")));
    QVERIFY(typePassword(Password, Password));
    QVERIFY(m_steps->press("keyExportAccept"));
    QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-cause-key-stays"));
    QVERIFY(!m_window->isOpen(QStringLiteral("keyExportDialog")));
    QCOMPARE(m_token.count("C_WrapKey"), 0);
}

void TestAppKeyExport::passwordTwice()
{
    QVERIFY(ask(QStringLiteral("Curve")));
    const auto isReady = [this] {
        return m_window->item(QStringLiteral("keyExportAccept"))->isEnabled();
    };
    QVERIFY(!isReady());
    QVERIFY(typePassword(QStringLiteral("one"), QStringLiteral("two")));
    QVERIFY(!isReady());
    QVERIFY(typePassword(QStringLiteral("one"), QStringLiteral("one")));
    QTRY_VERIFY(isReady());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("keyExportDialog"));
    QVERIFY(ask(QStringLiteral("Curve")));
    for (const char *field : {"exportPassword", "exportPasswordAgain"})
        QCOMPARE(m_window->item(QLatin1String(field))->property("text").toString(), QString());
    QVERIFY(!isReady());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("keyExportDialog"));
}

/// Whoever does not type the PIN gets no file and no error, and may try again.
void TestAppKeyExport::pinIsLeft()
{
    QVERIFY(m_token.replug(m_steps->tokenStoreId()));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Curve")) >= 0);
    QVERIFY(m_window->waitUntilStill());
    m_robot->leave();
    QVERIFY(ask(QStringLiteral("Curve")));
    QVERIFY(typePassword(Password, Password));
    QVERIFY(m_steps->press("keyExportAccept"));
    QVERIFY(m_steps->waitEnabled("keyExportAccept"));
    QVERIFY(m_window->isOpen(QStringLiteral("keyExportDialog")));
    QVERIFY(!fileDialog());
    m_robot->answer(rightPin());
    QVERIFY(m_steps->press("keyExportAccept"));
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QVERIFY(answerFileDialog(*m_window, inHome(QStringLiteral("left.p12")), false));
    m_window->takeWarnings();
}

/// From a bundle into one with another password.
void TestAppKeyExport::ofABundle()
{
    const QString bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("ED25519")}, QStringLiteral("/CN=Edwards"),
        QStringLiteral("old"), QStringLiteral("friend"));
    const QString path = inHome(QStringLiteral("new.p12"));
    m_steps->openFile(bundle);
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("old")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitForItem(QStringLiteral("itemView")));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->click(QStringLiteral("itemView")));
    QVERIFY(m_steps->waitOpen("itemDialog"));
    QVERIFY(m_steps->press("itemExportKey"));
    QVERIFY(m_steps->waitOpen("fileKeyExportDialog"));
    QVERIFY(typePassword(Password, Password));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_window->waitFor([] { return fileDialog() != nullptr; }));
    QVERIFY(answerFileDialog(*m_window, path));
    m_window->takeWarnings();
    QTRY_VERIFY(QFile::exists(path));
    const QByteArray before = publicKeyIn(bundle, QStringLiteral("old"));
    QVERIFY(!before.isEmpty());
    QCOMPARE(publicKeyIn(path, Password), before);
    m_steps->escape();
}

/// Whoever leaves while the token wraps the key is not waited for.
void TestAppKeyExport::leftMeanwhile()
{
    QVERIFY(ask(QStringLiteral("Curve")));
    QVERIFY(typePassword(Password, Password));
    m_token.control("hold C_WrapKey *");
    QVERIFY(m_steps->press("keyExportAccept"));
    QVERIFY(m_token.waitUntilInside("C_WrapKey"));
    const QObject *dialog = m_window->object(QStringLiteral("keyExportDialog"));
    QVERIFY(dialog->property("running").toBool());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("keyExportDialog"));
    QVERIFY(!dialog->property("running").toBool());
    m_token.control();
    m_window->takeWarnings();
}

/// The last: it closes the window while the token wraps the key.
void TestAppKeyExport::windowClosesMeanwhile()
{
    QVERIFY(ask(QStringLiteral("Curve")));
    QVERIFY(typePassword(Password, Password));
    m_token.control("delay C_WrapKey * 1500");
    QVERIFY(m_steps->press("keyExportAccept"));
    QVERIFY(m_token.waitUntilInside("C_WrapKey"));
    closeWindow();
    QVERIFY(!m_window);
    openWindow();
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppKeyExport, FaultyToken>(argc, argv,
                                                             QStringLiteral("Ключи наружу"));
}

#include "tst_app_keyexport.moc"
