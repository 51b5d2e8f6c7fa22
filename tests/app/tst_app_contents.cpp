// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/contentstest.h"
#include "tests/app/filedialogs.h"

#include <QClipboard>
#include <QCryptographicHash>
#include <QtTest>

using namespace TrivexTest;

/// Everything in a file is offered and can be read, whatever the file is called and however it
/// came.
class TestAppContents : public ContentsTest {
    Q_OBJECT
public:
    using ContentsTest::ContentsTest;

public Q_SLOTS:
    void noteFileDialog() { m_hadFileDialog = m_hadFileDialog || fileDialog(); }

private Q_SLOTS:
    void init() { begin(); }

    void everyWay_data();
    void everyWay();
    void documentByEveryWay_data();
    void documentByEveryWay();
    void damagedPartIsLeftOut();
    void opensBehindNoFileDialog();
    void slowFileCanBeLeft();
    void readWithoutImport_data();
    void readWithoutImport();

private:
    /// All that the dialog of one thing says.
    QString details() const;

    bool m_hadFileDialog = false;
};

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

void TestAppContents::damagedPartIsLeftOut()
{
    QByteArray broken = certificate("Broken");
    broken.replace(broken.indexOf("MII"), 40, QByteArray(40, 'A'));
    QVERIFY(bring(CommandLine, make("in/half.pem", broken + certificate("Whole"))));
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QCOMPARE(items(), 1);
    QCOMPARE(m_steps->text("importBroken"), qtTrId("trivex-app-kind-broken", 1));
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
