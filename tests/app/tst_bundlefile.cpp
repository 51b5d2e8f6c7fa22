// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/privatehome.h"
#include "tests/support/endingchild.h"
#include "tests/support/loopmeter.h"
#include "tests/support/testcertificates.h"
#include "tools/certificatefile.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QtTest>

using namespace Trivex;
using TrivexTest::LoopMeter;

namespace {

const TrivexTest::PrivateHome privateHome;

/// For seconds of a processor's work, on machines with little left of it; in ms.
constexpr int Patience = 600000;
/// Lets a derivation get under way before the process is told to end; in ms.
constexpr int UnderWay = 600;
/// Of the loop, while a key is derived: derived in the loop, it would be there after the first.
constexpr int ManyTurns = 100;

} // namespace

/// What the window does with bundles whose key takes seconds to derive.
class TestBundleFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void unlocks();
    void laterTryCounts();
    void goesMeanwhile();
    void processEnds_data();
    void processEnds();

private:
    TrivexTest::TestAuthority m_authority;
    QString m_slow;
};

void TestBundleFile::initTestCase()
{
    // The first use of all loads QCA's plugins, as a window's lists have done long before.
    const QString quick = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Quick"), QStringLiteral("secret"), QStringLiteral("friend"));
    CertificateFile file;
    file.setPath(quick);
    file.unlock(QStringLiteral("secret"));
    QTRY_VERIFY_WITH_TIMEOUT(file.isUnlocked(), Patience);
    m_slow = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA"), QStringLiteral("-pkeyopt"),
         QStringLiteral("rsa_keygen_bits:2048")},
        QStringLiteral("/CN=Slow"), QStringLiteral("secret"), QStringLiteral("friend"),
        {QStringLiteral("-iter"), QStringLiteral("9900000"), QStringLiteral("-nomaciter")});
    QVERIFY(!m_slow.isEmpty());
}

void TestBundleFile::unlocks()
{
    CertificateFile file;
    const QAbstractItemModelTester tester(file.items(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    file.setPath(m_slow);
    QCOMPARE(file.kind(), int(CertificateFile::BundleKind));
    LoopMeter meter;
    meter.start();
    file.unlock(QStringLiteral("secret"));
    QVERIFY(file.isUnlocking());
    int turns = 0;
    for (; turns < ManyTurns && file.isUnlocking(); ++turns) {
        QEventLoop turn;
        QTimer::singleShot(0, &turn, &QEventLoop::quit);
        turn.exec();
    }
    QCOMPARE(turns, ManyTurns);
    QTRY_VERIFY_WITH_TIMEOUT(!file.isUnlocking(), Patience);
    meter.stop();
    QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
    QVERIFY(file.isUnlocked());
    QCOMPARE(file.items()->value(0, FileItemModel::NameRole).toString(), QStringLiteral("Slow"));
    QVERIFY(file.items()->value(0, FileItemModel::HasKeyRole).toBool());
    QCOMPARE(file.items()->checkedCount(), file.items()->rowCount());
    file.items()->setAllChecked(false);
    QCOMPARE(file.items()->checkedCount(), 0);
    file.items()->setChecked(0, true);
    QCOMPARE(file.items()->checkedKeys(), 1);
}

void TestBundleFile::laterTryCounts()
{
    CertificateFile file;
    file.setPath(m_slow);
    file.unlock(QStringLiteral("secret"));
    file.unlock(QStringLiteral("wrong"));
    QTRY_VERIFY_WITH_TIMEOUT(!file.isUnlocking(), Patience);
    QVERIFY(!file.isUnlocked());
    QVERIFY(!file.problem().isEmpty());
}

void TestBundleFile::goesMeanwhile()
{
    auto *file = new CertificateFile;
    file->setPath(m_slow);
    file->unlock(QStringLiteral("wrong"));
    delete file;
    // The one that was left behind has ended before this one, which began after it.
    CertificateFile other;
    other.setPath(m_slow);
    other.unlock(QStringLiteral("secret"));
    QTRY_VERIFY_WITH_TIMEOUT(other.isUnlocked(), Patience);
}

void TestBundleFile::processEnds_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"quit", "exit", "thread"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestBundleFile::processEnds()
{
    QFETCH(QString, way);
    const QString problem = TrivexTest::childProblem({QStringLiteral("child"), way, m_slow});
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

namespace {

/// Unlocks `path`, and is told to end in the middle.
int runChild(const QString &way, const QString &path)
{
    CertificateFile file;
    file.setPath(path);
    file.unlock(QStringLiteral("secret"));
    QTimer::singleShot(UnderWay, &file, [&] {
        if (!file.isUnlocking())
            std::exit(EXIT_FAILURE);
        TrivexTest::sayEnding();
        TrivexTest::endProcess(way);
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QCA::Initializer qca;
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("child"))
        return runChild(arguments.value(2), arguments.value(3));
    TestBundleFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundlefile.moc"
