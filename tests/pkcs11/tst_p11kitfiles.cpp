// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/p11kitfiles.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace TrivexTest;
using Trivex::P11KitFiles;

namespace {

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

/// The rules by which p11-kit finds its modules (pkcs11.conf(5)), with directories of the test's
/// own in the places of the machine's.
class TestP11KitFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void whoIsRead_data();
    void whoIsRead();
    void forWhom_data();
    void forWhom();
    void environmentForbids();
    void usersOptionsCount();
    void enabled_data();
    void enabled();
    void refusedFiles_data();
    void refusedFiles();
    void halfWrittenFile();
    void otherFiles();
    void rootsFiles();

private:
    void put(const char *file, const QByteArray &contents);
    P11KitFiles files(bool readsUserFiles = true) const;
    static QByteArrayList names(P11KitFiles files);

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestP11KitFiles::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    for (const char *name : {"user/modules", "system/modules", "package"})
        QVERIFY(QDir(m_directory->path()).mkpath(QString::fromLatin1(name)));
}

void TestP11KitFiles::put(const char *file, const QByteArray &contents)
{
    QVERIFY(writeFile(m_directory->filePath(QString::fromLatin1(file)), contents));
}

P11KitFiles TestP11KitFiles::files(bool readsUserFiles) const
{
    const auto path = [this](const char *name) {
        return m_directory->filePath(QString::fromLatin1(name)).toStdString();
    };
    P11KitFiles::Places places;
    places.systemFile = path("system/pkcs11.conf");
    places.systemModules = path("system/modules");
    places.packageModules = path("package");
    places.userFile = path("user/pkcs11.conf");
    places.userModules = path("user/modules");
    places.readsUserFiles = readsUserFiles;
    return P11KitFiles(places);
}

QByteArrayList TestP11KitFiles::names(P11KitFiles files)
{
    QByteArrayList all;
    for (const auto &[name, module] : files.read())
        all.append(QByteArray::fromStdString(name));
    return all;
}

void TestP11KitFiles::whoIsRead_data()
{
    QTest::addColumn<QByteArray>("system");
    QTest::addColumn<QByteArray>("user");
    QTest::addColumn<bool>("mayReadUser");
    QTest::addColumn<QByteArrayList>("expected");
    const QByteArrayList all = {"p", "s", "u"};
    const QByteArrayList machine = {"p", "s"};
    const QByteArray none = "user-config: none\n";
    const QByteArray only = "user-config: only\n";
    const QByteArray merge = "user-config: merge\n";
    QTest::newRow("nothing said") << QByteArray() << QByteArray() << true << all;
    QTest::newRow("root") << QByteArray() << QByteArray() << false << machine;
    QTest::newRow("root, system: only") << only << QByteArray() << false << machine;
    QTest::newRow("system: none") << none << QByteArray() << true << machine;
    QTest::newRow("system: none, user: merge") << none << merge << true << machine;
    QTest::newRow("system: merge") << merge << QByteArray() << true << all;
    QTest::newRow("system: only") << only << QByteArray() << true << QByteArrayList{"u"};
    QTest::newRow("system: only, user: merge") << only << merge << true << all;
    QTest::newRow("user: none") << QByteArray() << none << true << machine;
    QTest::newRow("user: only") << QByteArray() << only << true << QByteArrayList{"u"};
    QTest::newRow("user: override")
        << QByteArray() << QByteArray("user-config:override") << true << QByteArrayList{"u"};
    QTest::newRow("nonsense") << QByteArray("user-config: sometimes\n") << QByteArray() << true
                              << QByteArrayList();
}

void TestP11KitFiles::whoIsRead()
{
    QFETCH(QByteArray, system);
    QFETCH(QByteArray, user);
    QFETCH(bool, mayReadUser);
    QFETCH(QByteArrayList, expected);
    put("system/pkcs11.conf", system);
    put("user/pkcs11.conf", user);
    put("user/modules/u.module", "module: u.so\n");
    put("system/modules/s.module", "module: s.so\n");
    put("package/p.module", "module: p.so\n");
    QCOMPARE(names(files(mayReadUser)), expected);
}

void TestP11KitFiles::forWhom_data()
{
    QTest::addColumn<bool>("isRoot");
    QTest::addColumn<bool>("hasOthersRights");
    QTest::addColumn<bool>("isForbidden");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("a user") << false << false << false << true;
    QTest::newRow("root") << true << false << false << false;
    QTest::newRow("another's rights") << false << true << false << false;
    QTest::newRow("forbidden") << false << false << true << false;
}

void TestP11KitFiles::forWhom()
{
    QFETCH(bool, isRoot);
    QFETCH(bool, hasOthersRights);
    QFETCH(bool, isForbidden);
    QTEST((P11KitFiles::Reader{isRoot, hasOthersRights, isForbidden}.readsUserFiles()), "isRead");
}

// Whatever it is set to: p11-kit looks for the name alone.
void TestP11KitFiles::environmentForbids()
{
    const char *const name = "P11_KIT_NO_USER_CONFIG";
    const bool isRoot = getuid() == 0;
    for (const char *value : {"1", "0", ""}) {
        qputenv(name, value);
        QVERIFY(P11KitFiles::Reader::ofThisProcess().isForbidden);
        QVERIFY(!P11KitFiles::Places::ofThisProcess().readsUserFiles);
    }
    qunsetenv(name);
    QVERIFY(!P11KitFiles::Reader::ofThisProcess().isForbidden);
    QCOMPARE(P11KitFiles::Reader::ofThisProcess().isRoot, isRoot);
    QCOMPARE(P11KitFiles::Places::ofThisProcess().readsUserFiles, !isRoot);
}

void TestP11KitFiles::usersOptionsCount()
{
    put("user/modules/one.module", "disable-in: here\ntrust-policy: yes\n");
    put("system/modules/one.module", "module: system.so\ntrust-policy: no\n");
    put("package/one.module", "module: package.so\nx-init-reserved: a=b\n");
    auto modules = files().read();
    QCOMPARE(modules.size(), size_t(1));
    const P11KitFiles::Module &module = modules["one"];
    QCOMPARE(module.files.size(), size_t(3));
    QCOMPARE(module.option("module"), std::string("system.so"));
    QCOMPARE(module.option("trust-policy"), std::string("yes"));
    QCOMPARE(module.option("x-init-reserved"), std::string("a=b"));
    QVERIFY(!module.isEnabledIn("here"));
    QVERIFY(module.isEnabledIn("there"));
}

void TestP11KitFiles::enabled_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("expected");
    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("in this") << QByteArray("enable-in: a, program b") << true;
    QTest::newRow("in others") << QByteArray("enable-in: a,programs b") << false;
    QTest::newRow("in none") << QByteArray("enable-in:") << false;
    QTest::newRow("not in this") << QByteArray("disable-in:\tb,program") << false;
    QTest::newRow("not in others") << QByteArray("disable-in: my-program") << true;
    QTest::newRow("not in none") << QByteArray("disable-in:") << true;
    QTest::newRow("both") << QByteArray("disable-in: program\nenable-in: program") << true;
}

void TestP11KitFiles::enabled()
{
    QFETCH(QByteArray, options);
    QFETCH(bool, expected);
    put("user/modules/one.module", options);
    QCOMPARE(files().read()["one"].isEnabledIn("program"), expected);
}

void TestP11KitFiles::refusedFiles_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("no colon") << QByteArray("module: a.so\nremote\n");
    QTest::newRow("section") << QByteArray("[module]\nmodule: a.so\n");
    QTest::newRow("block") << QByteArray("-----BEGIN CERTIFICATE-----\nAA==\n");
}

void TestP11KitFiles::refusedFiles()
{
    QFETCH(QByteArray, contents);
    put("user/modules/bad.module", contents);
    put("user/modules/good.module", "# a module\n\n  module :  a b.so  \n");
    auto modules = files().read();
    QCOMPARE(modules.size(), size_t(1));
    QCOMPARE(modules["good"].option("module"), std::string("a b.so"));
}

// What a file said counts until it can be understood again.
void TestP11KitFiles::halfWrittenFile()
{
    put("user/modules/one.module", "module: a.so\n");
    P11KitFiles all = files();
    QCOMPARE(all.read()["one"].option("module"), std::string("a.so"));
    put("user/modules/one.module", "module: b.so\ntru");
    QCOMPARE(all.read()["one"].option("module"), std::string("a.so"));
    put("user/modules/one.module", "module: b.so\ntrust-policy: no");
    QCOMPARE(all.read()["one"].option("module"), std::string("b.so"));
    QVERIFY(QFile::remove(m_directory->filePath(QStringLiteral("user/modules/one.module"))));
    QVERIFY(all.read().empty());
}

void TestP11KitFiles::otherFiles()
{
    for (const char *name :
         {"user/modules/.hidden.module", "user/modules/one.module~", "user/modules/.module",
          "user/modules/two words.module", "user/modules/one.module.dpkg-new"})
        put(name, "module: a.so\n");
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("user/modules/folder.module")));
    put("user/modules/o-n_e.2.module", "module: a.so\n");
    QCOMPARE(names(files()), QByteArrayList{"o-n_e.2"});
}

// A file that appears in root's own directory while the program runs.
void TestP11KitFiles::rootsFiles()
{
    if (geteuid() != 0)
        QSKIP("only root has files that p11-kit does not read");
    FaultyToken token(QStringLiteral("Root"));
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.token().isValid(), qPrintable(token.token().problem()));
    token.useInThisProcess();
    const QByteArray module = qgetenv("TRIVEX_PKCS11_MODULES");
    qunsetenv("TRIVEX_PKCS11_MODULES");
    qunsetenv("XDG_CONFIG_HOME");
    qputenv("HOME", QFile::encodeName(m_directory->path()));
    const QString directory = m_directory->filePath(QStringLiteral(".config/pkcs11/modules"));
    QVERIFY(QDir().mkpath(directory));
    {
        const QCA::Initializer qca;
        Stores stores;
        QTRY_VERIFY(!stores.manager().isBusy());
        QVERIFY(writeFile(directory + QStringLiteral("/new.module"), "module: " + module + '\n'));
        // Several looks at the files.
        QTest::qWait(2500);
        QCOMPARE(token.count("C_Initialize"), 0);
    }
}

QTEST_GUILESS_MAIN(TestP11KitFiles)
#include "tst_p11kitfiles.moc"
