// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/support/userfiles.h"

#include <QClipboard>
#include <QCryptographicHash>
#include <QtTest>

using namespace TrivexTest;

/// Everything in a file is offered, whatever the file is called and however it came: it can be
/// read, and it goes to a token or to the user's own files.
class TestAppContents : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

public Q_SLOTS:
    void noteFileDialog() { m_hadFileDialog = m_hadFileDialog || fileDialog(); }

private Q_SLOTS:
    void init();

    void everyWay_data();
    void everyWay();
    void documentByEveryWay_data();
    void documentByEveryWay();
    void ticksDecide();
    void damagedPartIsLeftOut();
    void keyWithItsCertificate();
    void intoMyFilesByKeyboard();
    void rootsAreTrustedFromThenOn();
    void bundleIntoMyFiles();
    void myFilesCannotBeWritten();
    void closedWhileItWrites_data();
    void closedWhileItWrites();
    void escapeStopsTheImport();
    void opensBehindNoFileDialog();
    void slowFileCanBeLeft();
    void requestAmongTheRequests();
    void readWithoutImport_data();
    void readWithoutImport();

private:
    void prepare() override;
    void arrive() override;
    void restore() override;

    enum Way { CommandLine, Drop, Dialog };

    QString make(const char *name, const QByteArray &contents) const
    {
        return writeTestFile(inHome(QString::fromUtf8(name)), contents);
    }
    QByteArray run(const QString &arguments) const
    {
        return m_authority.openssl(arguments.split(QLatin1Char(' ')));
    }
    QByteArray certificate(const char *name) const;
    bool bring(int way, const QString &path);
    int items() const;
    bool turn(const QString &item);
    bool choosePlace(const QString &name);
    bool import();
    QStringList files() const;
    /// All that the dialog of one thing says.
    QString details() const;
    void removeFiles();

    bool m_hadFileDialog = false;
};

void TestAppContents::prepare()
{
    writeTestFile(m_authority.file(QStringLiteral("key.pem")),
                  run(QStringLiteral("genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048")));
}

void TestAppContents::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

void TestAppContents::init()
{
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_steps->show("personal"));
}

void TestAppContents::restore()
{
    m_window->window()->requestActivate();
}

/// A certificate of its own for that name, PEM.
QByteArray TestAppContents::certificate(const char *name) const
{
    return run(QStringLiteral("req -x509 -key key.pem -days 90 -utf8 -subj /CN=")
               + QString::fromUtf8(name));
}

bool TestAppContents::bring(int way, const QString &path)
{
    switch (way) {
    case CommandLine:
        m_steps->openFile(path);
        return true;
    case Drop:
        return m_steps->drop({QUrl::fromLocalFile(path)});
    default:
        m_window->key(Qt::Key_O, Qt::ControlModifier);
        return answerFileDialog(*m_window, path);
    }
}

int TestAppContents::items() const
{
    const QQuickItem *list = m_window->item(QStringLiteral("itemList"));
    return list ? list->property("count").toInt() : 0;
}

/// Clicks the tick beside that name.
bool TestAppContents::turn(const QString &name)
{
    QQuickItem *tick = nullptr;
    m_window->waitFor([&] {
        visitItems(m_window->item(QStringLiteral("itemList")), [&](QQuickItem *item) {
            if (item->objectName() == QLatin1String("itemTick")
                && item->parentItem()->parentItem()->property("name").toString() == name)
                tick = item;
        });
        return tick != nullptr;
    });
    m_window->waitUntilStill(); // the dialog has its size
    return m_window->clickItem(tick);
}

bool TestAppContents::choosePlace(const QString &name)
{
    QQuickItem *box = m_window->item(QStringLiteral("tokenChooser"));
    if (!box)
        return false;
    box->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    for (int i = 0; i < 5 && box->property("displayText").toString() != name; ++i)
        m_window->key(Qt::Key_Down);
    return box->property("displayText").toString() == name;
}

bool TestAppContents::import()
{
    return m_window->click(QStringLiteral("importAccept"))
        && m_steps->answerPinUntil(
            rightPin(), [&] { return !m_window->isOpen(QStringLiteral("importDialog")); });
}

QStringList TestAppContents::files() const
{
    return QDir(userFolder()).entryList(QDir::Files);
}

QString TestAppContents::details() const
{
    QString text;
    if (QQuickItem *close = m_window->item(QStringLiteral("itemClose"))) {
        QQuickItem *root = close;
        while (root->parentItem() && root->parentItem() != m_window->window()->contentItem())
            root = root->parentItem();
        visitItems(root, [&](QQuickItem *item) {
            text += item->property("text").toString() + QLatin1Char('\n');
        });
    }
    return text;
}

void TestAppContents::removeFiles()
{
    const QStringList names = files();
    for (const QString &name : names)
        QFile::remove(userFile(name));
}

void TestAppContents::everyWay_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("importable");
    const QString three =
        make("in/three.txt", certificate("One") + certificate("Two") + certificate("Three"));
    const QString list = QStringLiteral("crl2pkcs7 -nocrl -certfile %1 -outform DER").arg(three);
    const struct {
        const char *name;
        QString path;
        int count;
        bool importable;
    } found[] = {
        {"three in one", three, 3, true},
        {"P7B named as a picture", make("in/p7b.jpg", run(list)), 3, true},
        {"DER named as a document", make("in/der.pdf", m_authority.certificate()), 1, true},
        {"request, DER",
         make("in/request.bin",
              run(QStringLiteral("req -new -key key.pem -subj /CN=Asker -outform DER"))),
         1, true},
        {"private key, DER",
         make("in/key.dat", run(QStringLiteral("pkey -in key.pem -outform DER"))), 1, false},
        {"public key", make("in/public.crt", run(QStringLiteral("pkey -in key.pem -pubout"))), 1,
         false},
    };
    const char *const ways[] = {"command line", "drop", "dialog"};
    for (const auto &one : found) {
        for (const int way : {CommandLine, Drop, Dialog})
            QTest::addRow("%s, %s", one.name, ways[way])
                << way << one.path << one.count << one.importable;
    }
}

void TestAppContents::everyWay()
{
    QFETCH(int, way);
    QFETCH(QString, path);
    QFETCH(int, count);
    QFETCH(bool, importable);
    QVERIFY(bring(way, path));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QCOMPARE(items(), count);
    QCOMPARE(m_steps->waitEnabled("importAccept", importable ? 5000 : 200), importable);
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.objectCount(), 0);
}

void TestAppContents::documentByEveryWay_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("command line") << int(CommandLine);
    QTest::newRow("drop") << int(Drop);
    QTest::newRow("dialog") << int(Dialog);
}

void TestAppContents::documentByEveryWay()
{
    QFETCH(int, way);
    QVERIFY(bring(way, make("in/letter.txt", "Dear all,\n")));
    QVERIFY(m_window->waitForItem(QStringLiteral("documentName")));
    QCOMPARE(m_window->item(QStringLiteral("documentName"))->property("value").toString(),
             QStringLiteral("letter.txt"));
    QVERIFY(!m_window->isOpen(QStringLiteral("importDialog")));
    // What can't be signed either is no matter for that page.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(bring(way, make("in/letter.crt", "Dear all,\n")));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QCOMPARE(m_steps->text("importProblem"), qtTrId("trivex-app-kind-other"));
    QVERIFY(!m_window->item(QStringLiteral("signPage")));
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
}

void TestAppContents::ticksDecide()
{
    QVERIFY(bring(Drop, make("in/two.pem", certificate("Wanted") + certificate("Unwanted"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(turn(QStringLiteral("Unwanted")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(1).arg(2));
    QVERIFY(turn(QStringLiteral("Wanted")));
    QVERIFY(!m_window->item(QStringLiteral("importAccept"))->isEnabled());
    // All of them, and none, at once.
    QVERIFY(m_window->click(QStringLiteral("itemsAll")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(2).arg(2));
    QVERIFY(turn(QStringLiteral("Unwanted")));
    QVERIFY(import());
    QCOMPARE(m_token.objectCount(), 1);
    QVERIFY(m_window->click(QStringLiteral("token-") + m_token.label()));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Wanted")) >= 0);
    QCOMPARE(m_window->rowNamed(QStringLiteral("Unwanted")), -1);
}

void TestAppContents::damagedPartIsLeftOut()
{
    QByteArray broken = certificate("Broken");
    broken.replace(broken.indexOf("MII"), 40, QByteArray(40, 'A'));
    QVERIFY(bring(CommandLine, make("in/half.pem", broken + certificate("Whole"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 1);
    QCOMPARE(m_steps->text("importBroken"), qtTrId("trivex-app-kind-broken", 1));
}

void TestAppContents::keyWithItsCertificate()
{
    const int before = m_token.objectCount();
    QFile key(m_authority.file(QStringLiteral("key.pem")));
    QVERIFY(key.open(QIODevice::ReadOnly));
    QVERIFY(bring(CommandLine, make("in/both.pem", certificate("Both") + key.readAll())));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 1);
    QVERIFY(import());
    QCOMPARE(m_token.objectCount(), before + 3);
    QVERIFY(m_steps->show("personal"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Both")) >= 0);
}

void TestAppContents::intoMyFilesByKeyboard()
{
    const int before = m_token.objectCount();
    QVERIFY(bring(CommandLine, make("in/mine.bin", certificate("Мой") + certificate("Skipped"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QQuickItem *list = m_window->item(QStringLiteral("itemList"));
    for (int i = 0; i < 20 && !list->hasActiveFocus(); ++i)
        m_window->key(Qt::Key_Tab);
    QVERIFY(list->hasActiveFocus());
    m_window->key(Qt::Key_Down);
    m_window->key(Qt::Key_Space);
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(1).arg(2));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(m_steps->press("importAccept"));
    // Files ask for no PIN.
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(!m_window->isOpen(QStringLiteral("pinPromptDialog")));
    QCOMPARE(m_steps->text("toastText"),
             qtTrId("trivex-app-imported")
                 .arg(QString::fromUtf8("Мой"))
                 .arg(qtTrId("trivex-app-category-users")));
    QCOMPARE(files(), QStringList{QString::fromUtf8("Мой.pem")});
    QCOMPARE(m_token.objectCount(), before);
    QVERIFY(m_steps->show("users"));
    QTRY_VERIFY(m_window->rowNamed(QString::fromUtf8("Мой")) >= 0);
    // What is there already is there once.
    QVERIFY(bring(CommandLine, inHome(QStringLiteral("in/mine.bin"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(import());
    QCOMPARE(files().size(), 2);
    removeFiles();
}

void TestAppContents::rootsAreTrustedFromThenOn()
{
    QFile root(m_authority.certificateFile());
    QVERIFY(root.open(QIODevice::ReadOnly));
    QVERIFY(bring(CommandLine, make("in/rooted.pem", certificate("Own") + root.readAll())));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 2);
    // On a token it vouches for nothing.
    QVERIFY(choosePlace(m_token.label()));
    QVERIFY(m_steps->text("importRoots").isEmpty());
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QTRY_COMPARE(m_steps->text("importRoots"), qtTrId("trivex-app-import-roots", 2));
    QVERIFY(turn(QStringLiteral("Own")));
    QTRY_COMPARE(m_steps->text("importRoots"), qtTrId("trivex-app-import-roots", 1));
    QVERIFY(turn(QStringLiteral("Test Root")));
    QTRY_VERIFY(m_steps->text("importRoots").isEmpty());
    QVERIFY(m_window->click(QStringLiteral("importCancel")));
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppContents::bundleIntoMyFiles()
{
    const int before = m_token.objectCount();
    const QString bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Pavel"), QStringLiteral("secret"), QStringLiteral("friend"));
    QVERIFY(bring(Drop, bundle));
    QVERIFY(m_window->waitForItem(QStringLiteral("bundlePassword")));
    QTRY_COMPARE(m_steps->text("importProblem"), qtTrId("trivex-app-bundle-ask"));
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("secret")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 2);
    QVERIFY(m_steps->text("importWithoutKey").isEmpty());
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QCOMPARE(m_steps->text("importWithoutKey"), qtTrId("trivex-app-import-without-key"));
    QVERIFY(import());
    QCOMPARE(files().size(), 2);
    QCOMPARE(m_token.objectCount(), before);
    for (const QString &name : files()) {
        QFile file(userFile(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("PRIVATE"));
    }
    removeFiles();
}

void TestAppContents::myFilesCannotBeWritten()
{
    // In the place of the folder, so that nobody can write there, whatever he may do.
    const QString aside = userFolder() + QStringLiteral(".aside");
    QVERIFY(QFile::rename(userFolder(), aside));
    writeTestFile(userFolder(), "a file");
    QVERIFY(bring(Drop, make("in/one.pem", certificate("Homeless"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QTRY_COMPARE(m_steps->text("importFailure"), qtTrId("trivex-app-write-no-folder"));
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    QVERIFY(QFile::remove(userFolder()));
    QVERIFY(QFile::rename(aside, userFolder()));
    // Where it is there again, the same step works.
    QVERIFY(import());
    QCOMPARE(files(), QStringList{QStringLiteral("Homeless.pem")});
    removeFiles();
    m_window->takeWarnings();
}

void TestAppContents::closedWhileItWrites_data()
{
    QTest::addColumn<bool>("good");
    QTest::newRow("written") << true;
    QTest::newRow("not written") << false;
}

void TestAppContents::closedWhileItWrites()
{
    QFETCH(bool, good);
    const QString saved = inHome(QStringLiteral("CertificateRequest/First.csr"));
    const QString aside = userFolder() + QStringLiteral(".aside");
    QVERIFY(bring(Drop,
                  make("in/first.pem",
                       good ? run(QStringLiteral("req -new -key key.pem -subj /CN=First"))
                            : certificate("First"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    if (!good) {
        QVERIFY(choosePlace(qtTrId("trivex-app-category-users")));
        QVERIFY(QFile::rename(userFolder(), aside));
        writeTestFile(userFolder(), "a file");
    }
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    const QString next = make("in/next.pem", certificate("Next") + certificate("Last"));
    // In one turn, so that the write can't have ended.
    QMetaObject::invokeMethod(dialog, "write");
    QMetaObject::invokeMethod(dialog, "close");
    m_steps->openFile(next);
    QVERIFY(dialog->property("writing").toBool());
    QVERIFY(m_window->waitFor([&] { return !dialog->property("writing").toBool(); }));
    // Nobody would know otherwise.
    if (!good)
        QCOMPARE(m_steps->takeError(), qtTrId("trivex-app-import-undone"));
    // The next file comes then, and nothing of the one before is left over.
    QVERIFY(m_steps->waitEnabled("importAccept", 5000));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    QCOMPARE(m_steps->text("itemsAll"), qtTrId("trivex-app-items-chosen").arg(2).arg(2));
    QVERIFY(m_steps->text("importFailure").isEmpty());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    if (good)
        QVERIFY(QFile::remove(saved));
    else
        QVERIFY(QFile::remove(userFolder()) && QFile::rename(aside, userFolder()));
    m_window->takeWarnings();
}

void TestAppContents::escapeStopsTheImport()
{
    QVERIFY(bring(
        Drop, make("in/late.pem", run(QStringLiteral("req -new -key key.pem -subj /CN=Late")))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    // In one turn, so that the write can't have ended.
    QMetaObject::invokeMethod(dialog, "write");
    QVERIFY(dialog->property("writing").toBool());
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_window->waitFor([&] { return !dialog->property("writing").toBool(); }));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-import-failed"));
    QVERIFY(!m_window->isOpen(QStringLiteral("errorDialog")));
    QVERIFY(!QFile::exists(inHome(QStringLiteral("CertificateRequest/Late.csr"))));
}

void TestAppContents::opensBehindNoFileDialog()
{
    QObject *dialog = m_window->object(QStringLiteral("importDialog"));
    m_hadFileDialog = false;
    const auto methodOf = [](const QObject *object, const char *name) {
        return object->metaObject()->method(object->metaObject()->indexOfMethod(name));
    };
    QVERIFY(connect(dialog, methodOf(dialog, "aboutToShow()"), this,
                    methodOf(this, "noteFileDialog()")));
    QVERIFY(bring(Dialog, make("in/one.pem", certificate("One"))));
    QVERIFY(m_steps->waitOpen("importDialog"));
    disconnect(dialog, nullptr, this, nullptr);
    QVERIFY(!m_hadFileDialog);
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppContents::slowFileCanBeLeft()
{
    // Distinct ones, by their serial numbers.
    QByteArray der = m_authority.certificate();
    const int serial = der.indexOf(QByteArray::fromHex("a003020102")) + 8;
    QByteArray many;
    for (int i = 0; i < 50000; ++i) {
        for (int byte = 0; byte < 4; ++byte)
            der[serial + byte] = char(i >> (8 * byte));
        many += der;
    }
    const QString slow = make("in/slow.der", many.left(15 * 1024 * 1024));
    QVERIFY(!slow.isEmpty());
    m_steps->openFile(slow);
    QVERIFY(m_steps->waitOpen("importDialog"));
    if (m_steps->text("importBusy").isEmpty()) {
        m_window->key(Qt::Key_Escape);
        QSKIP("This machine has read 15 MB before the dialog is there: nothing is slow");
    }
    QCOMPARE(m_steps->text("importBusy"), qtTrId("trivex-app-reading"));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    // It does not come back, and the next file does not wait for it.
    m_steps->openFile(make("in/next.pem", certificate("Next")));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 1);
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
}

void TestAppContents::requestAmongTheRequests()
{
    const QByteArray request = run(QStringLiteral("req -new -key key.pem -subj /CN=Elsewhere"));
    QVERIFY(bring(Drop, make("in/elsewhere.txt", request)));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(!m_window->item(QStringLiteral("tokenChooser")));
    QVERIFY(import());
    QVERIFY(m_steps->show("requests"));
    QTRY_VERIFY(m_window->rowNamed(QStringLiteral("Elsewhere")) >= 0);
    const QString saved = inHome(QStringLiteral("CertificateRequest/Elsewhere.csr"));
    QFile file(saved);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().simplified(), request.simplified());
    QVERIFY(QFile::remove(saved));
}

void TestAppContents::readWithoutImport_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QStringList>("parts");
    writeTestFile(m_authority.file(QStringLiteral("index.txt")), {});
    writeTestFile(m_authority.file(QStringLiteral("ca.cnf")),
                  "[ca]\ndefault_ca=d\n[d]\ndatabase=index.txt\ndefault_md=sha256\n"
                  "default_crl_days=9\n");
    const QByteArray der = m_authority.certificate();
    const QByteArray digest = QCryptographicHash::hash(der, QCryptographicHash::Sha256);
    QTest::newRow("certificate") << der
                                 << QStringList{QStringLiteral("Test Root"),
                                                QString::fromLatin1(digest.toHex(':').toUpper()),
                                                qtTrId("trivex-app-basic-authority"),
                                                QStringLiteral("RSA")};
    QTest::newRow("request") << run(QStringLiteral("req -new -key key.pem -subj /CN=Asker/O=Firm"))
                             << QStringList{QStringLiteral("Firm"), QStringLiteral("2048")};
    writeTestFile(m_authority.file(QStringLiteral("own.pem")), certificate("Own"));
    QTest::newRow("list of revoked ones")
        << run(QStringLiteral("ca -gencrl -config ca.cnf -keyfile key.pem -cert own.pem"))
        << QStringList{QStringLiteral("Own"), qtTrId("trivex-app-list-count")};
    QTest::newRow("public key") << run(QStringLiteral("pkey -in key.pem -pubout"))
                                << QStringList{QStringLiteral("RSA"), QStringLiteral("2048"),
                                               QStringLiteral("Exponent")};
}

void TestAppContents::readWithoutImport()
{
    QFETCH(QByteArray, contents);
    QFETCH(QStringList, parts);
    const int before = m_token.objectCount();
    QVERIFY(bring(Drop, make("in/read", contents)));
    QVERIFY(m_steps->waitOpen("importDialog"));
    QVERIFY(m_window->click(QStringLiteral("itemView")));
    QVERIFY(m_steps->waitOpen("itemDialog"));
    for (const QString &part : parts)
        QVERIFY2(details().contains(part), qPrintable(part + QLatin1Char('\n') + details()));
    QVERIFY(m_window->click(QStringLiteral("itemCopy")));
    QVERIFY(QGuiApplication::clipboard()->text().contains(parts.first()));
    const auto encoded = [&](const char *tab) {
        if (!m_steps->press(tab) || !m_window->waitForItem(QStringLiteral("encodedText")))
            return QString();
        return m_window->item(QStringLiteral("encodedText"))->property("value").toString();
    };
    QVERIFY(encoded("pemTab").startsWith(QStringLiteral("-----BEGIN ")));
    QVERIFY(encoded("structureTab").contains(QStringLiteral("  SEQUENCE\n")));
    // Escape leaves the reading, and then the file.
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("itemDialog"));
    QVERIFY(m_window->isOpen(QStringLiteral("importDialog")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("importDialog"));
    QCOMPARE(m_token.objectCount(), before);
    QVERIFY(files().isEmpty());
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppContents, TestToken>(argc, argv, QStringLiteral("Токен Ф"));
}

#include "tst_app_contents.moc"
