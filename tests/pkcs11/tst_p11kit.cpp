// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/entries.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/leaveroot.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TrivexTest;

namespace {

constexpr int Patience = 60000;

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

QString serverTool()
{
    return QStandardPaths::findExecutable(QStringLiteral("p11-kit"));
}

} // namespace

/// A p11-kit configuration of one's own: modules that come and go as files, and one that runs in a
/// process of its own. What is looked at are the rows of the model.
class TestP11Kit : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void busyEndsThoughTheConfigurationHangs();
    void remoteModuleIsListed();
    void moduleFileComesAndGoes();
    void relativePaths();
    void parametersOfAModule();
    void libraryComesAndGoes();
    void usersFilesAreSwitchedOff();
    void slotListGrows();
    void crashInARemoteModule();
    void crashWhileListing();

private:
    int rowsOf(const QString &store) const;
    bool fill(TestToken &token, int certificates);

    QTemporaryDir m_home;
    QString m_moduleFile;
    QString m_hangingFile;
    QString m_parametersFile;
    QString m_parametersLibrary;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<TestToken> m_plugged;
    std::unique_ptr<FaultyToken> m_isolated;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<KeyStoreModel> m_model;
};

bool TestP11Kit::fill(TestToken &token, int certificates)
{
    for (int i = 1; i <= certificates; ++i) {
        const QString id = QStringLiteral("0%1").arg(i);
        if (!token.generateKeyPair(QStringLiteral("rsa:2048"), id, id)
            || !token.writeObject(QStringLiteral("cert"),
                                  m_authority->issue(token.publicKey(id), QStringLiteral("/CN=C")),
                                  id, id))
            return false;
    }
    return true;
}

int TestP11Kit::rowsOf(const QString &store) const
{
    int rows = 0;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const auto *entry =
            m_model->index(row, 0).data(KeyStoreModel::KeyStoreEntryRole).value<KeyStoreEntry *>();
        if (Trivex::entryStoreName(entry->entry()) == store)
            ++rows;
    }
    return rows;
}

void TestP11Kit::initTestCase()
{
    if (geteuid() == 0)
        QSKIP("p11-kit reads no user's configuration as root, and nobody else may run this test");
    if (serverTool().isEmpty() || !QFile::exists(QStringLiteral(TRIVEX_P11_KIT_REMOTE)))
        QSKIP("p11-kit's remote tool is not installed");
    m_authority = std::make_unique<TestAuthority>();
    m_plugged = std::make_unique<TestToken>(QStringLiteral("Plugged"));
    m_isolated = std::make_unique<FaultyToken>(QStringLiteral("Isolated"));
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_plugged->isValid(), qPrintable(m_plugged->problem()));
    QVERIFY(fill(*m_plugged, 1));
    QVERIFY(fill(m_isolated->token(), 2));

    const QString configuration = m_home.filePath(QStringLiteral(".config/pkcs11"));
    QVERIFY(QDir().mkpath(configuration + QStringLiteral("/modules")));
    qputenv("HOME", QFile::encodeName(m_home.path()));
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "TRIVEX_PKCS11_MODULES"})
        qunsetenv(name);
    // The machine's own modules stay out of it.
    QVERIFY(writeFile(configuration + QStringLiteral("/pkcs11.conf"), "user-config: only\n"));
    // In this process SoftHSM shows one token, in the other one the faulty module the other.
    m_isolated->useInThisProcess();
    qunsetenv("TRIVEX_PKCS11_MODULES");
    qputenv("SOFTHSM2_CONF", QFile::encodeName(m_plugged->configurationFile()));
    QVERIFY(writeFile(configuration + QStringLiteral("/modules/isolated.module"),
                      "remote: |env " TRIVEX_REMOTE_ENVIRONMENT "SOFTHSM2_CONF="
                          + QFile::encodeName(m_isolated->token().configurationFile()) + ' '
                          + QFile::encodeName(serverTool())
                          + " remote " TRIVEX_FAULTY_MODULE "\n"));
    // The same module in this process, which shows nothing.
    m_isolated->control("remove Plugged");
    m_parametersLibrary = m_home.filePath(QStringLiteral("parameters.so"));
    QVERIFY(QFile::copy(QStringLiteral(TRIVEX_FAULTY_MODULE), m_parametersLibrary));
    m_parametersFile = configuration + QStringLiteral("/modules/parameters.module");
    // By a relative path, which p11-kit itself takes at the start.
    const QDir folder(QStringLiteral(TRIVEX_P11_TEST_MODULE_PATH));
    QVERIFY(writeFile(m_parametersFile,
                      "module: " + QFile::encodeName(folder.relativeFilePath(m_parametersLibrary))
                          + '\n'));
    m_moduleFile = configuration + QStringLiteral("/modules/plugged.module");
    // Whoever reads it waits for a writer.
    m_hangingFile = configuration + QStringLiteral("/modules/hanging.module");
    QCOMPARE(mkfifo(QFile::encodeName(m_hangingFile).constData(), 0600), 0);
    m_qca = std::make_unique<QCA::Initializer>();
    m_model = std::make_unique<KeyStoreModel>();
}

// Only the thread that looks for modules could end the waiting, and it is held up.
void TestP11Kit::busyEndsThoughTheConfigurationHangs()
{
    QVERIFY(m_model->isBusy());
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(!m_model->isBusy(), 2 * Patience);
    QVERIFY2(timer.elapsed() > 2000, "nothing has hung");
    const int writer =
        open(QFile::encodeName(m_hangingFile).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY2(writer >= 0, "nobody reads the file");
    QVERIFY(QFile::remove(m_hangingFile));
    close(writer);
}

void TestP11Kit::remoteModuleIsListed()
{
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 2, Patience);
    QCOMPARE(rowsOf(QStringLiteral("Plugged")), 0);
    QVERIFY(!m_model->keyStoreByName(QStringLiteral("Plugged")));
}

void TestP11Kit::moduleFileComesAndGoes()
{
    const QByteArray contents = "module: " + m_plugged->modulePath().toUtf8() + '\n';
    for (int round = 0; round < 3; ++round) {
        QVERIFY(writeFile(m_moduleFile, contents));
        QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
        QVERIFY(m_model->keyStoreByName(QStringLiteral("Plugged")));
        QVERIFY(QFile::remove(m_moduleFile));
        QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 0, Patience);
        QCOMPARE(rowsOf(QStringLiteral("Isolated")), 2);
    }
    QVERIFY(writeFile(m_moduleFile, contents));
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
}

// They begin at p11-kit's folder of modules, wherever the program was started.
void TestP11Kit::relativePaths()
{
    const QDir folder(QStringLiteral(TRIVEX_P11_TEST_MODULE_PATH));
    const QString library = folder.relativeFilePath(m_plugged->modulePath());
    QVERIFY(library.startsWith(QLatin1String("../")) && !QFile::exists(library));
    const QByteArray elsewhere = "module: " + QFile::encodeName(m_home.path()) + "/none.so\n";
    for (const QByteArray &contents : {elsewhere, QByteArray("module: none.so\n")}) {
        QVERIFY(writeFile(m_moduleFile, contents));
        QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 0, Patience);
        QVERIFY(writeFile(m_moduleFile, "module: " + QFile::encodeName(library) + '\n'));
        QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
    }
    QCOMPARE(rowsOf(QStringLiteral("Isolated")), 2);
    QVERIFY(writeFile(m_moduleFile, "module: " + m_plugged->modulePath().toUtf8() + '\n'));
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
}

// "x-init-reserved" goes to the module, and a change of it starts the module anew: one that p11-kit
// has loaded without, too, and one that comes later.
void TestP11Kit::parametersOfAModule()
{
    const auto writeParameters = [this](const QByteArray &parameters) {
        return writeFile(m_parametersFile,
                         "module: " + QFile::encodeName(m_parametersLibrary)
                             + "\nx-init-reserved: " + parameters + '\n');
    };
    const auto started = [this](const QByteArray &parameters) {
        const QByteArray line = "C_Initialize CKR_OK reserved=" + parameters + '\n';
        return m_isolated->countText(line.constData());
    };
    QVERIFY(m_isolated->countText("C_Initialize CKR_OK\n") > 0);
    m_isolated->forget();
    for (const QByteArray parameters : {"first=1", "second=2"}) {
        QVERIFY(writeParameters(parameters));
        QTRY_COMPARE_WITH_TIMEOUT(started(parameters), 1, Patience);
    }
    QCOMPARE(m_isolated->count("C_Finalize"), 2);
    QVERIFY(QFile::remove(m_parametersFile));
    QTRY_COMPARE_WITH_TIMEOUT(m_isolated->count("C_Finalize"), 3, Patience);
    QVERIFY(writeParameters("third=3"));
    QTRY_COMPARE_WITH_TIMEOUT(started("third=3"), 1, Patience);
    QVERIFY(QFile::remove(m_parametersFile));
    QTRY_COMPARE_WITH_TIMEOUT(m_isolated->count("C_Finalize"), 4, Patience);
    m_isolated->control();
}

void TestP11Kit::libraryComesAndGoes()
{
    m_plugged->removeModule();
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 0, Patience);
    m_plugged->restoreModule();
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
    QCOMPARE(rowsOf(QStringLiteral("Isolated")), 2);
}

// By "user-config" in pkcs11.conf, while the program runs.
void TestP11Kit::usersFilesAreSwitchedOff()
{
    const QString file = m_home.filePath(QStringLiteral(".config/pkcs11/pkcs11.conf"));
    QVERIFY(writeFile(file, "user-config: none\n"));
    // The plugged token may show through a module of the machine.
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 0, Patience);
    QVERIFY(writeFile(file, "user-config: only\n"));
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 2, Patience);
    // By a file of the module's own name.
    const QByteArray contents = "module: " + m_plugged->modulePath().toUtf8() + '\n';
    const QByteArray program = QCoreApplication::applicationName().toLocal8Bit();
    QVERIFY(writeFile(m_moduleFile, contents + "disable-in: other, " + program + '\n'));
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 0, Patience);
    QVERIFY(writeFile(m_moduleFile, contents));
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Plugged")), 1, Patience);
}

// A token that comes between the two calls for the list: nothing of the module's is dropped.
void TestP11Kit::slotListGrows()
{
    m_isolated->forget();
    m_isolated->control("fail C_GetSlotList 2 CKR_BUFFER_TOO_SMALL");
    QTRY_VERIFY_WITH_TIMEOUT(m_isolated->count("C_GetSlotList") >= 8, Patience);
    QCOMPARE(m_isolated->countText("CKR_BUFFER_TOO_SMALL"), 1);
    QCOMPARE(m_isolated->count("C_Initialize"), 0);
    QCOMPARE(rowsOf(QStringLiteral("Isolated")), 2);
    m_isolated->control();
}

// The process of the module ends at its next call; this one does not, and nothing else goes.
void TestP11Kit::crashInARemoteModule()
{
    m_isolated->forget();
    m_isolated->control("kill any 1");
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 0, Patience);
    QCOMPARE(rowsOf(QStringLiteral("Plugged")), 1);
    // It may be started again by now, and dies again: no rows while it can't run.
    QTest::qWait(1500); // several looks for tokens, and no row must come
    QCOMPARE(rowsOf(QStringLiteral("Isolated")), 0);
    m_isolated->control();
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 2, Patience);
    QCOMPARE(rowsOf(QStringLiteral("Plugged")), 1);
}

// In the middle of the reading that follows an insertion.
void TestP11Kit::crashWhileListing()
{
    m_isolated->control("remove");
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 0, Patience);
    m_isolated->forget();
    m_isolated->control("kill C_GetAttributeValue 2");
    QTRY_VERIFY_WITH_TIMEOUT(m_isolated->count("C_FindObjectsInit") > 0, Patience);
    QTest::qWait(1500); // several looks for tokens, and no row must come
    QCOMPARE(rowsOf(QStringLiteral("Isolated")), 0);
    m_isolated->control();
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("Isolated")), 2, Patience);
    QCOMPARE(rowsOf(QStringLiteral("Plugged")), 1);
}

int main(int argc, char *argv[])
{
    leaveRoot(TRIVEX_FAULTY_MODULE);
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    QCoreApplication application(argc, argv);
    TestP11Kit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_p11kit.moc"
