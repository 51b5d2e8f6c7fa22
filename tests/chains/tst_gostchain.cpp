// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Paths of GOST certificates, where the engine is there and where it is not. The engine counts for
// a whole process, so each part runs in one of its own.
#include "qca/base/libcrypto.h"
#include "qca/chains/chaincheck.h"
#include "qca/keys/gostengine.h"
#include "tests/chains/madechain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

namespace {

const char *const Names[] = {"leaf", "middle", "root"};

PKeyHandle gostKey()
{
    const KeyContextHandle context(EVP_PKEY_CTX_new_id(NID_id_GostR3410_2012_256, nullptr));
    EVP_PKEY *key = nullptr;
    if (context && EVP_PKEY_keygen_init(context.get()) > 0
        && EVP_PKEY_CTX_ctrl_str(context.get(), "paramset", "A") > 0)
        EVP_PKEY_keygen(context.get(), &key);
    return PKeyHandle(key);
}

void write(const QDir &folder, const char *name, const Party &party)
{
    QFile file(folder.filePath(QString::fromUtf8(name)));
    if (file.open(QIODevice::WriteOnly))
        file.write(party.der());
}

QByteArray read(const QDir &folder, const char *name)
{
    QFile file(folder.filePath(QString::fromUtf8(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// 1 where there is no engine to make them by.
int makeFiles(const QDir &folder)
{
    initialiseLibcrypto();
    if (!loadGostEngine())
        return 1;
    const EVP_MD *digest = EVP_get_digestbyname("md_gost12_256");
    const Party root = make({"Корень", -10, Year, authority(), digest}, nullptr, gostKey());
    const Party middle = make({"Центр", -10, Year, authority(), digest}, &root, gostKey());
    const Party leaf = make({"Лист", -1, 30, {}, digest}, &middle, gostKey());
    write(folder, Names[0], leaf);
    write(folder, Names[1], middle);
    write(folder, Names[2], root);
    return 0;
}

int check(const QDir &folder, bool isDamaged)
{
    ChainInput input;
    input.certificate = read(folder, Names[0]);
    if (isDamaged)
        input.certificate.data()[input.certificate.size() - 1] ^= 1;
    input.candidates = {{read(folder, Names[1]), QStringLiteral("file"), false},
                        {read(folder, Names[2]), QStringLiteral("system"), true}};
    const ChainResult result = checkChain(input);
    printf("%d:", int(result.verdict));
    for (const ChainStep &step : result.steps) {
        printf(" %s", qUtf8Printable(step.subject));
        for (const ChainFinding &finding : step.findings)
            printf("/%d", int(finding.reason));
    }
    return 0;
}

/// What a process of its own prints; nothing when it fails.
QByteArray run(const QStringList &arguments, bool withEngine)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("TRIVEX_NO_GOST_ENGINE"));
    if (!withEngine)
        environment.insert(QStringLiteral("TRIVEX_NO_GOST_ENGINE"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? "done " + process.readAllStandardOutput() : QByteArray();
}

} // namespace

class TestGostChain : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void withEngine();
    void withoutEngine();

private:
    QTemporaryDir m_folder;
};

void TestGostChain::initTestCase()
{
    if (run({QStringLiteral("make"), m_folder.path()}, true).isEmpty())
        QSKIP("SKIP: there is no GOST engine here");
}

void TestGostChain::withEngine()
{
    QCOMPARE(run({QStringLiteral("check"), m_folder.path()}, true), "done 0: Лист Центр Корень");
    const QByteArray wrong = QByteArray("done 3: Лист/")
        + QByteArray::number(int(ChainReason::WrongSignature)) + " Центр Корень";
    QCOMPARE(run({QStringLiteral("damaged"), m_folder.path()}, true), wrong);
}

// The path is shown; that its signatures can't be checked is said where it is so.
void TestGostChain::withoutEngine()
{
    const QByteArray unknown = "/" + QByteArray::number(int(ChainReason::AlgorithmUnknown));
    QCOMPARE(run({QStringLiteral("check"), m_folder.path()}, false),
             "done 2: Лист" + unknown + " Центр" + unknown + " Корень");
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("make"))
        return makeFiles(QDir(arguments.at(2)));
    if (arguments.size() == 3)
        return check(QDir(arguments.at(2)), arguments.at(1) == QLatin1String("damaged"));
    TestGostChain test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_gostchain.moc"
