// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/tokenfixture.h"
#include "tests/pkcs11/tokenflow.h"
#include "tests/support/needtokens.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QProcess>
#include <QTest>

#include <csignal>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Kill");

/// The calls that change the token: killed before and after each of them. Of the others the first
/// and the last stand for all.
const char *const Changing[] = {"C_CreateObject", "C_DestroyObject", "C_GenerateKeyPair",
                                "C_SetAttributeValue"};
const char *const Reading[] = {"C_Initialize",     "C_OpenSession",      "C_GetTokenInfo",
                               "C_Login",          "C_FindObjectsInit",  "C_FindObjects",
                               "C_GetSessionInfo", "C_FindObjectsFinal", "C_GetAttributeValue",
                               "C_CloseSession",   "C_GetMechanismInfo"};

void copyDirectory(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    const auto all =
        QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QFileInfo &one : all) {
        const QString target = to + QLatin1Char('/') + one.fileName();
        if (one.isDir())
            copyDirectory(one.filePath(), target);
        else if (!QFile::copy(one.filePath(), target))
            qFatal("a token can't be copied");
    }
}

QJsonObject entryNamed(const QJsonArray &entries, const char *name)
{
    for (const QJsonValue &one : entries) {
        if (one.toObject().value(QLatin1String("name")) == QLatin1String(name))
            return one.toObject();
    }
    return {};
}

/// An entry that shows a key can use it.
bool isTruthful(const QJsonValue &entry)
{
    const QJsonObject object = entry.toObject();
    return object.value(QLatin1String("hasKey")) == object.value(QLatin1String("signs"));
}

} // namespace

/// A process is killed at the calls of every flow that changes a token. What must hold at the next
/// start: what was there is there, whole and usable; no entry shows a key that it hasn't; the flow
/// can be done again, and then the token holds what it would have held without the kill. What an
/// interrupted flow may leave is a key without a certificate, which shows nowhere.
class TestKill : public TokenFixture {
    Q_OBJECT
public:
    TestKill()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void everyCall_data();
    void everyCall();
    void twoProcesses_data();
    void twoProcesses();
    void endsAfterItsThreads();

private:
    struct Outcome {
        bool wasKilled = false;
        bool succeeded = false;
    };
    QStringList arguments(const char *mode) const;
    Outcome runFlow();
    /// Both are in the first call that changes the token before either goes on.
    bool runTogether(const QString &first, const QString &second);
    bool makeBundle(const QString &keyType);
    QJsonObject runFlowAgain();
    QMap<QByteArray, int> callsOfWholeFlow();
    QList<QByteArray> orders(const QMap<QByteArray, int> &calls) const;
    void check(const QByteArray &order);
    void checkFound(const QJsonArray &found) const;
    void checkLeft(const QJsonArray &left, int interrupted, bool inSearch) const;
    void keep(const QString &state) const { copyDirectory(tokens(), path(state)); }
    void restore() const;
    int objects() const;
    QString path(const QString &name) const
    {
        return m_token->token().path() + QLatin1Char('/') + name;
    }
    QString tokens() const { return path(QStringLiteral("tokens")); }
    bool isRemoval() const { return m_flow == QLatin1String("remove bundle"); }
    bool isGeneration() const { return m_flow.startsWith(QLatin1String("generate")); }

    QString m_flow;
    QString m_bundle;
    QString m_state; ///< the directory of the token as it is before the flow
    int m_kills = 0;
};

void TestKill::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    QFile root(path(QStringLiteral("root.der")));
    QVERIFY(root.open(QIODevice::WriteOnly));
    QVERIFY(root.write(m_authority->certificate()) > 0);
    keep(QStringLiteral("plain"));
}

QStringList TestKill::arguments(const char *mode) const
{
    return {QString::fromLatin1(mode), m_flow, StoreName, path(QStringLiteral("root.der")),
            m_bundle};
}

TestKill::Outcome TestKill::runFlow()
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments("--flow"));
    if (!process.waitForFinished(60000))
        qFatal("a flow did not end");
    Outcome outcome;
    outcome.wasKilled =
        process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGKILL;
    outcome.succeeded = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return outcome;
}

QJsonObject TestKill::runFlowAgain()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments("--again"));
    const bool isGood = process.waitForFinished(60000)
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isGood)
        qWarning() << "after the kill:" << process.exitStatus() << process.exitCode()
                   << process.readAllStandardError();
    return isGood ? QJsonDocument::fromJson(process.readAllStandardOutput()).object()
                  : QJsonObject();
}

/// Each object of SoftHSM is a file, whole or not.
int TestKill::objects() const
{
    const QDir all(tokens());
    const QStringList names = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    const QDir one(all.filePath(names.value(0)));
    return one.entryList({QStringLiteral("*.object")}).size() - 1; // token.object
}

void TestKill::restore() const
{
    if (!QDir(tokens()).removeRecursively())
        qFatal("a token can't be removed");
    copyDirectory(path(m_state), tokens());
}

QMap<QByteArray, int> TestKill::callsOfWholeFlow()
{
    restore();
    m_token->control();
    m_token->forget();
    return runFlow().succeeded ? m_token->callCounts() : QMap<QByteArray, int>();
}

QList<QByteArray> TestKill::orders(const QMap<QByteArray, int> &calls) const
{
    QList<QByteArray> all;
    for (const char *name : Changing) {
        for (int i = 1; i <= calls.value(name); ++i) {
            for (const char *action : {"kill ", "kill-after "})
                all.append(action + QByteArray(name) + ' ' + QByteArray::number(i));
        }
    }
    for (const char *name : Reading) {
        const int count = calls.value(name);
        if (count > 0)
            all.append("kill " + QByteArray(name) + " 1");
        if (count > 1)
            all.append("kill " + QByteArray(name) + ' ' + QByteArray::number(count));
    }
    return all;
}

void TestKill::everyCall_data()
{
    QTest::addColumn<QString>("flow");
    QTest::addColumn<QString>("keyType");
    for (const char *flow : tokenFlows) {
        const QString name = QString::fromLatin1(flow);
        if (!name.endsWith(QLatin1String("bundle"))) {
            QTest::newRow(flow) << name << QString();
            continue;
        }
        QTest::addRow("%s, RSA", flow) << name << QStringLiteral("RSA");
        QTest::addRow("%s, EC", flow) << name << QStringLiteral("EC");
    }
}

void TestKill::everyCall()
{
    QFETCH(QString, flow);
    QFETCH(QString, keyType);
    m_state = QStringLiteral("plain");
    if (!keyType.isEmpty()) {
        QVERIFY(makeBundle(keyType));
    }
    restore();
    m_flow = QStringLiteral("import bundle");
    if (flow == QLatin1String("remove bundle")) {
        QVERIFY(runFlow().succeeded);
        m_state = flow + keyType;
        keep(m_state);
    }
    m_flow = flow;
    const auto calls = callsOfWholeFlow();
    QVERIFY(!calls.isEmpty());
    m_kills = 0;
    const auto all = orders(calls);
    for (const QByteArray &order : all) {
        check(order);
        if (QTest::currentTestFailed())
            return;
    }
    // The calls of the search for tokens come by chance, so that an order may find none; those that
    // change the token never do.
    QVERIFY2(m_kills >= all.size() * 3 / 4, qPrintable(QString::number(m_kills)));
}

void TestKill::check(const QByteArray &order)
{
    restore();
    const int before = objects();
    m_token->control(order);
    const Outcome outcome = runFlow();
    m_token->control();
    QVERIFY2(outcome.wasKilled || outcome.succeeded, order.constData());
    m_kills += outcome.wasKilled ? 1 : 0;
    const bool isChange = std::any_of(std::begin(Changing), std::end(Changing),
                                      [&](const char *name) { return order.contains(name); });
    QVERIFY2(outcome.wasKilled || !isChange, order.constData());
    const int interrupted = objects() - before;
    const QJsonObject report = runFlowAgain();
    QVERIFY2(report.value(QLatin1String("succeeded")).toBool(), order.constData());
    checkFound(report.value(QLatin1String("found")).toArray());
    checkLeft(report.value(QLatin1String("left")).toArray(), interrupted,
              order.contains("C_GetTokenInfo"));
    if (QTest::currentTestFailed())
        qWarning() << order << "objects:" << before << "then" << before + interrupted << "then"
                   << objects() << report;
}

void TestKill::checkFound(const QJsonArray &found) const
{
    QVERIFY(std::all_of(found.begin(), found.end(), isTruthful));
    const QJsonObject signer = entryNamed(found, "signer");
    QVERIFY(signer.value(QLatin1String("signs")).toBool());
    // A bundle shows with its key or not at all: the key comes first and goes last.
    const QJsonObject bundle = entryNamed(found, "bundle");
    QVERIFY(bundle.isEmpty() || bundle.value(QLatin1String("hasKey")).toBool());
    QVERIFY(found.size() <= 3);
}

/// `inSearch`: the search for tokens was killed, on whose thread it is chance what the module was
/// doing for another.
void TestKill::checkLeft(const QJsonArray &left, int interrupted, bool inSearch) const
{
    QVERIFY(std::all_of(left.begin(), left.end(), isTruthful));
    QVERIFY(entryNamed(left, "signer").value(QLatin1String("signs")).toBool());
    constexpr int Plain = 3; // the signer's pair and certificate
    if (isGeneration()) {
        // The pair that nobody was told of stays, and the new one.
        // In the middle of the module's own call half a pair may be written, by nobody here.
        QVERIFY(interrupted == 0 || interrupted == 2 || (inSearch && interrupted == 1));
        QCOMPARE(objects(), Plain + interrupted + 2);
        QCOMPARE(left.size(), 1);
    } else if (isRemoval()) {
        QVERIFY(interrupted <= 0 && interrupted >= -3);
        QCOMPARE(objects(), Plain + 1);
        QCOMPARE(left.size(), 2);
    } else if (m_flow == QLatin1String("import bundle")) {
        QVERIFY(interrupted >= 0 && interrupted <= 4);
        QCOMPARE(objects(), Plain + 4);
        QCOMPARE(left.size(), 3);
        QVERIFY(entryNamed(left, "bundle").value(QLatin1String("signs")).toBool());
    } else {
        QCOMPARE(objects(), Plain + 1);
        QCOMPARE(left.size(), 2);
    }
}

bool TestKill::makeBundle(const QString &keyType)
{
    const QString option = keyType == QLatin1String("EC")
        ? QStringLiteral("ec_paramgen_curve:P-256")
        : QStringLiteral("rsa_keygen_bits:2048");
    m_bundle = m_authority->bundle(
        {QStringLiteral("-algorithm"), keyType, QStringLiteral("-pkeyopt"), option},
        QStringLiteral("/CN=Bundle"), QStringLiteral("x"), QStringLiteral("bundle"));
    return !m_bundle.isEmpty();
}

bool TestKill::runTogether(const QString &first, const QString &second)
{
    QByteArray orders;
    for (const char *call : Changing)
        orders += QByteArray("hold ") + call + " 1\n";
    m_token->control(orders);
    m_token->forget();
    QProcess processes[2];
    for (int i = 0; i < 2; ++i) {
        m_flow = i == 0 ? first : second;
        processes[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
        processes[i].start(QCoreApplication::applicationFilePath(), arguments("--flow"));
    }
    const bool haveMet =
        QTest::qWaitFor([this] { return m_token->countText("waits ") == 2; }, 60000);
    m_token->control();
    bool areGood = haveMet;
    for (QProcess &process : processes) {
        const bool hasEnded =
            process.state() == QProcess::NotRunning || process.waitForFinished(60000);
        areGood = areGood && hasEnded && process.exitStatus() == QProcess::NormalExit
            && process.exitCode() == 0;
    }
    return areGood;
}

void TestKill::twoProcesses_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("objects");
    QTest::addColumn<int>("rows");
    const auto row = [](const char *first, const char *second, int objects, int rows) {
        QTest::addRow("%s, %s", first, second)
            << QString::fromLatin1(first) << QString::fromLatin1(second) << objects << rows;
    };
    // The signer's pair and certificate are there before; a bundle has its root with it.
    row("import bundle", "generate RSA", 3 + 4 + 2, 3);
    row("import certificate", "generate EC", 3 + 1 + 2, 2);
    row("generate RSA", "generate EC", 3 + 2 + 2, 1);
    row("generate RSA", "generate RSA", 3 + 2 + 2, 1);
    row("remove bundle", "generate RSA", 3 + 1 + 2, 2);
}

/// Two programs that change one token at the same time: all of both is there, and nothing by half.
void TestKill::twoProcesses()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, rows);
    QFETCH(int, objects);
    m_state = QStringLiteral("plain");
    m_token->control();
    restore();
    QVERIFY(makeBundle(QStringLiteral("EC")));
    if (first == QLatin1String("remove bundle")) {
        m_flow = QStringLiteral("import bundle");
        QVERIFY(runFlow().succeeded);
    }
    QVERIFY(runTogether(first, second));
    QCOMPARE(this->objects(), objects);
    // What a start after it finds.
    m_flow = QStringLiteral("import certificate");
    const QJsonObject report = runFlowAgain();
    QVERIFY(report.value(QLatin1String("succeeded")).toBool());
    const QJsonArray found = report.value(QLatin1String("found")).toArray();
    QCOMPARE(found.size(), rows);
    QVERIFY(std::all_of(found.begin(), found.end(), isTruthful));
    QVERIFY(entryNamed(found, "signer").value(QLatin1String("signs")).toBool());
    const bool hasBundle = first == QLatin1String("import bundle");
    QCOMPARE(entryNamed(found, "bundle").value(QLatin1String("signs")).toBool(), hasBundle);
}

/// A process that ends by itself closes its sessions first: a call that a thread is still in would
/// meet a module whose globals are gone.
void TestKill::endsAfterItsThreads()
{
    m_flow = QStringLiteral("import certificate");
    m_state = QStringLiteral("plain");
    restore();
    m_token->control("delay C_CloseSession * 400");
    m_token->forget();
    QVERIFY(runFlow().succeeded);
    m_token->control();
    QVERIFY(m_token->count("C_OpenSession") > 1);
    QCOMPARE(m_token->count("C_CloseSession"), m_token->count("C_OpenSession"));
    QCOMPARE(m_token->calls().last(), QByteArray("C_Finalize"));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 6) {
        const TokenFlow flow = {arguments.at(2), arguments.at(3), arguments.at(4), arguments.at(5)};
        if (arguments.at(1) == QLatin1String("--flow"))
            return runFlow(flow);
        if (arguments.at(1) == QLatin1String("--again"))
            return runFlowAgain(flow);
    }
    TestKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_kill.moc"
