// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Whatever writes on behalf of a person, with each fault of the machine. Each fault has a process
// of its own, because it is one of the whole process.
#include "app/privatetokens.h"
#include "qca/adapter/storewriter.h"
#include "qca/base/regularfile.h"
#include "qca/tokens/userstore.h"
#include "requests/certificaterequest.h"
#include "signing/signverify.h"
#include "tests/app/machine.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/endingchild.h"
#include "tests/support/shortpauses.h"
#include "tools/filesaver.h"
#include "tools/keyexporter.h"
#include "tools/rememberedtokens.h"
#include "tools/requestprofiles.h"

#include <QDirIterator>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

#include <cstdio>
#include <functional>

#include <unistd.h>

using namespace TrivexTest;
using Trivex::FileSaver;

namespace {

constexpr int Patience = 30000;
constexpr int Skipped = 77;
const QByteArray Pem = "-----BEGIN CERTIFICATE-----\nwhat stands for several of them\n";

QStringList logged;

void note(QtMsgType, const QMessageLogContext &, const QString &text)
{
    logged += text;
}

/// The first line of the log with that end; empty where there is none.
QString logLine(const char *end)
{
    for (const QString &line : qAsConst(logged)) {
        if (line.endsWith(QLatin1String(end)))
            return line;
    }
    return {};
}

struct Job {
    const char *name;
    /// Why it was not done, as people are told; empty when it was.
    std::function<QString()> run;
    bool isInHome = true;
};

/// The work of a person in the folder `place`.
class Work {
public:
    Work(const QString &place, bool hasEmpty);

    QVector<Job> jobs();
    /// What went away with the fault comes back from now on, and is waited for.
    void noteEnd() { m_isMended = true; }
    /// Each file with what it holds.
    QMap<QString, QByteArray> files() const;

private:
    QString home(const char *name) const
    {
        return m_place + QLatin1String("/home/") + QLatin1String(name);
    }
    QString out(const char *name) const
    {
        return m_place + QLatin1String("/out/") + QLatin1String(name);
    }
    static void put(const QString &path, const QByteArray &text);

    QString saveRequest();
    QString editRequest();
    QString exportObject(Certificate *object);
    QString sign();
    QString addCertificate();
    QString removeCertificate();
    QString saveSeveral();
    QString exportKey();
    QString saveProfile();
    QString makePrivateTokens();
    QString rememberTokens();

    const QString m_place;
    QCA::Initializer m_initializer;
    std::unique_ptr<QCA::KeyStoreManager> m_manager;
    std::unique_ptr<QCA::KeyStore> m_user;
    std::unique_ptr<KeyStoreEntry> m_entry;
    QCA::Certificate m_other;
    bool m_isMended = false;
    QString m_request; ///< the path of one that is not in the home
};

Work::Work(const QString &place, bool hasEmpty)
    : m_place(place)
    , m_entry(bundleEntry(softwareKey()))
    , m_request(place + QStringLiteral("/out/source.csr"))
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QStringLiteral("Old"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    QCA::CertificateRequest(options, softwareKey(), QStringLiteral("qca-ossl"))
        .toPEMFile(m_request);
    QCA::CertificateOptions own;
    own.setInfo(info);
    own.setAsCA();
    own.setValidityPeriod(QDateTime::currentDateTime(), QDateTime::currentDateTime().addDays(1));
    m_other = QCA::Certificate(own, softwareKey(), QStringLiteral("qca-ossl"));
    own.setSerialNumber(2);
    const QCA::Certificate another(own, softwareKey(), QStringLiteral("qca-ossl"));
    const QDir out(m_place + QStringLiteral("/out"));
    // On a full disk a file that has something may have room for more.
    const QByteArray old(hasEmpty ? "" : "an older one");
    const QDir home(m_place + QStringLiteral("/home"));
    home.mkpath(QStringLiteral("CertificateRequest"));
    home.mkpath(QStringLiteral(".config/trivex/request-profiles"));
    home.mkpath(QStringLiteral(".local/share/trivex/certificates"));
    QFile::copy(m_request, home.filePath(QStringLiteral("CertificateRequest/Old.csr")));
    put(out.filePath(QStringLiteral("several.pem")), old);
    put(out.filePath(QStringLiteral("key.p12")), old);
    put(out.filePath(QStringLiteral("a.sig")), old);
    put(out.filePath(QStringLiteral("Old.csr")), old);
    put(home.filePath(QStringLiteral(".config/trivex/request-profiles/mine.json")), "{}");
    put(home.filePath(QStringLiteral(".local/share/trivex/certificates/two.pem")),
        softwareCertificate().toPEM().toLatin1() + another.toPEM().toLatin1());
    QCA::KeyStoreManager::start();
    QCA::KeyStoreManager().waitForBusyFinished();
    m_manager = std::make_unique<QCA::KeyStoreManager>();
    m_user = std::make_unique<QCA::KeyStore>(Trivex::userStoreId(), m_manager.get());
}

void Work::put(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s can't be written", qPrintable(path));
}

QMap<QString, QByteArray> Work::files() const
{
    QMap<QString, QByteArray> all;
    QDirIterator files(m_place, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        file.open(QIODevice::ReadOnly);
        all.insert(file.fileName().mid(m_place.size()), file.readAll());
    }
    return all;
}

QString Work::saveRequest()
{
    CertificateRequest request(m_request, nullptr);
    return request.saveRequest() ? QString() : logLine("not created!");
}

QString Work::editRequest()
{
    CertificateRequest request(home("CertificateRequest/Old.csr"), nullptr);
    // What nobody may read has nothing to be edited.
    if (request.filePath().isEmpty())
        return QStringLiteral("no request is shown");
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    request.setCommonName(QStringLiteral("New"));
    request.setEditMode(true);
    return created.isEmpty() ? logLine("not created!") : QString();
}

QString Work::exportObject(Certificate *object)
{
    return object->exportToFile(m_place + QStringLiteral("/out")) ? QString()
                                                                  : logLine("not exported!");
}

QString Work::sign()
{
    SignVerify signer;
    QSignalSpy success(&signer, &SignVerify::signSuccess);
    signer.sign("What is signed", out("a.sig"), m_entry.get());
    if (!QTest::qWaitFor([&] { return success.count() == 1 || signer.error() != 0; }, Patience))
        qFatal("the signature does not end");
    return signer.error() != 0 ? QStringLiteral("no signature") : logLine("not written");
}

QString Work::addCertificate()
{
    Trivex::StoreWriter writer;
    QSignalSpy written(&writer, &Trivex::StoreWriter::written);
    if (!writer.write(Trivex::userStoreId(), m_other))
        qFatal("nobody keeps the user's files");
    if (!QTest::qWaitFor([&] { return written.count() == 1; }, Patience))
        qFatal("the write does not end");
    return written.first().first().toString().isEmpty() ? QStringLiteral("no entry") : QString();
}

QString Work::removeCertificate()
{
    QString id;
    const auto isListed = [&] {
        const auto entries = m_user->entryList();
        for (const QCA::KeyStoreEntry &entry : entries) {
            if (entry.id().startsWith(QLatin1String("two.pem")))
                id = entry.id();
        }
        return !id.isEmpty();
    };
    if (!QTest::qWaitFor(isListed, m_isMended ? Patience : 1))
        return QStringLiteral("not listed");
    return m_user->removeEntry(id) ? QString() : QStringLiteral("not removed");
}

QString Work::saveSeveral()
{
    FileSaver saver;
    const QString path = saver.stagedPath(QStringLiteral("export.pem"));
    if (path.isEmpty() || !Trivex::writeFile(path, Pem.repeated(100)))
        return QStringLiteral("not staged");
    return saver.place(out("several.pem"), true) == FileSaver::Saved ? QString() : saver.problem();
}

QString Work::exportKey()
{
    Trivex::FileItem item;
    item.der = softwareCertificate().toDER();
    item.key = softwareKey();
    Trivex::FileItemModel items;
    items.setItems({item});
    FileSaver saver;
    Trivex::KeyExporter exporter;
    QSignalSpy finished(&exporter, &Trivex::KeyExporter::finished);
    exporter.stageItem(&items, 0, nullptr, QStringLiteral("secret"), &saver);
    if (!QTest::qWaitFor([&] { return finished.count() == 1; }, Patience))
        qFatal("the export does not end");
    if (exporter.error() != Trivex::KeyExporter::NoError)
        return exporter.message();
    return saver.place(out("key.p12"), true) == FileSaver::Saved ? QString() : saver.problem();
}

QString Work::saveProfile()
{
    Trivex::RequestContents contents;
    contents.purposes = Trivex::RequestContents::knownPurposes();
    Trivex::RequestProfiles profiles;
    return profiles.save(QStringLiteral("mine"), contents, true) == Trivex::RequestProfiles::Saved
        ? QString()
        : QStringLiteral("NotSaved");
}

QString Work::makePrivateTokens()
{
    qunsetenv("SOFTHSM2_CONF");
    Trivex::usePrivateTokens({});
    const bool isSet = qEnvironmentVariableIsSet("SOFTHSM2_CONF");
    const QString file = QFile::decodeName(qgetenv("SOFTHSM2_CONF"));
    if (isSet && !QFileInfo(file).isReadable())
        qFatal("a configuration is named that is not there");
    return isSet ? QString() : QStringLiteral("no private tokens");
}

QString Work::rememberTokens()
{
    Trivex::RememberedTokens tokens;
    const bool on = !tokens.isOn();
    tokens.setOn(on);
    if (tokens.isOn() != (on && tokens.isSaved()))
        qFatal("the choice does not hold");
    const QSettings settings;
    if (settings.value(QStringLiteral("rememberTokens"), !on).toBool() != tokens.isOn())
        qFatal("the settings say something else");
    return tokens.isSaved() ? QString() : QStringLiteral("not saved");
}

QVector<Job> Work::jobs()
{
    return {
        {"saving a request", [this] { return saveRequest(); }},
        {"editing a request", [this] { return editRequest(); }},
        {"adding a certificate", [this] { return addCertificate(); }},
        {"removing a certificate", [this] { return removeCertificate(); }},
        {"a profile", [this] { return saveProfile(); }},
        {"private tokens", [this] { return makePrivateTokens(); }},
        {"settings", [this] { return rememberTokens(); }},
        {"exporting a request",
         [this] {
             CertificateRequest request(m_request, nullptr);
             return exportObject(&request);
         },
         false},
        {"a signature", [this] { return sign(); }, false},
        {"exporting several", [this] { return saveSeveral(); }, false},
        {"exporting a key", [this] { return exportKey(); }, false},
    };
}

QByteArray changes(const QMap<QString, QByteArray> &before, const QMap<QString, QByteArray> &after)
{
    QByteArray text;
    for (auto file = before.begin(); file != before.end(); ++file) {
        if (!after.contains(file.key()))
            text += ' ' + file.key().toUtf8() + " is gone";
        else if (after.value(file.key()) != file.value())
            text += ' ' + file.key().toUtf8() + " is another";
    }
    for (auto file = after.begin(); file != after.end(); ++file) {
        if (!before.contains(file.key()))
            text += ' ' + file.key().toUtf8() + " is left";
    }
    return text;
}

/// What did not hold, one line a job.
QByteArrayList problemsOf(Machine &machine, Work &work)
{
    QByteArrayList problems;
    const auto jobs = work.jobs();
    const auto before = work.files();
    QVector<QString> reasons;
    machine.begin();
    for (const Job &job : jobs) {
        logged.clear();
        reasons += job.run();
    }
    machine.end();
    for (int i = 0; i < jobs.size(); ++i) {
        const bool mustFail = jobs[i].isInHome || !machine.lasts();
        if (mustFail && reasons[i].isEmpty())
            problems += QByteArray(jobs[i].name) + ": no error";
        if (!jobs[i].isInHome && machine.lasts() && !reasons[i].isEmpty())
            problems += QByteArray(jobs[i].name) + " fails: " + reasons[i].toUtf8();
        std::printf("  %s: %s\n", jobs[i].name, qPrintable(reasons[i]));
    }
    if (machine.lasts())
        return problems;
    const QByteArray changed = changes(before, work.files());
    if (!changed.isEmpty())
        problems += "files:" + changed;
    work.noteEnd();
    for (const Job &job : jobs) {
        logged.clear();
        const QString reason = job.run();
        if (!reason.isEmpty())
            problems += QByteArray(job.name) + " still fails: " + reason.toUtf8();
    }
    for (const QString &file : work.files().keys()) {
        if (file.endsWith(QLatin1String(".part")) || file.endsWith(QLatin1String(".lock")))
            problems += file.toUtf8() + " is left";
    }
    return problems;
}

/// Saves a request again and again under one name to the home of the environment; how often it was
/// not.
int saveAsChild(int argc, char **argv)
{
    const QCoreApplication program(argc, argv);
    const QCA::Initializer initializer;
    CertificateRequest makesTheFolder;
    CertificateRequest request(QFile::decodeName(argv[3]), nullptr);
    request.setCommonName(QString::fromUtf8(argv[4]));
    int failed = 0;
    for (int i = 0; i < QByteArray(argv[2]).toInt(); ++i)
        failed += !request.saveRequest();
    return failed;
}

int runAsChild(int argc, char **argv)
{
    const QString place = QFile::decodeName(argv[3]);
    Machine machine(Machine::Fault(QByteArray(argv[2]).toInt()), place);
    const QByteArray reason = machine.prepare();
    if (!reason.isEmpty()) {
        std::puts(reason.constData());
        return Skipped;
    }
    qputenv("TRIVEX_PKCS11_MODULES", "/anywhere/libsofthsm2.so");
    const QCoreApplication program(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("trivex-test"));
    shortenPauses();
    Work work(place, machine.isFull());
    qInstallMessageHandler(note);
    const QByteArrayList problems = problemsOf(machine, work);
    qInstallMessageHandler(nullptr);
    std::puts(problems.join('\n').constData());
    return problems.isEmpty() ? 0 : 1;
}

} // namespace

class TestMachineFaults : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyJob_data();
    void everyJob();
    void oneNameAtOnce();
    void plainLocale();

private:
    /// A request that lies in no home.
    static QString makeRequest(const QTemporaryDir &directory);
    static std::unique_ptr<QProcess> saver(const QTemporaryDir &directory, int count,
                                           const QString &request, const QString &name,
                                           const char *locale);
};

void TestMachineFaults::everyJob_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("no HOME") << int(Machine::NoHome);
    QTest::newRow("the home of another") << int(Machine::ForeignHome);
    QTest::newRow("a read-only disk") << int(Machine::ReadOnly);
    QTest::newRow("a full disk") << int(Machine::FullDisk);
    QTest::newRow("no file may grow") << int(Machine::FileSizes);
    QTest::newRow("no descriptors") << int(Machine::NoDescriptors);
}

void TestMachineFaults::everyJob()
{
    QFETCH(int, fault);
#ifdef __SANITIZE_ADDRESS__
    if (fault == int(Machine::NoDescriptors))
        QSKIP("the sanitizer looks at memory through a pipe, and calls any object damaged without");
#endif
    QTemporaryDir directory;
    QVERIFY(QFile::setPermissions(directory.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                      | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther
                                      | QFile::ExeOther));
    const QString place = directory.filePath(QStringLiteral("place"));
    const QString started = directory.filePath(QStringLiteral("started"));
    QVERIFY(QDir().mkpath(place) && QDir().mkpath(started));
    QProcess child;
    child.setWorkingDirectory(started);
    child.setProcessChannelMode(QProcess::MergedChannels);
    TrivexTest::lookForNoLeaks();
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--child"), QString::number(fault), place});
    QVERIFY2(child.waitForFinished(-1), qPrintable(child.errorString()));
    const QByteArray said = child.readAll();
    if (child.exitStatus() == QProcess::NormalExit && child.exitCode() == Skipped) {
        std::printf("SKIP: %s\n", said.constData());
        QSKIP(said.constData());
    }
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, said.constData());
    // Nothing goes to where the program happened to be started.
    QCOMPARE(QDir(started).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
}

QString TestMachineFaults::makeRequest(const QTemporaryDir &directory)
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QStringLiteral("Source"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    const QString path = directory.filePath(QStringLiteral("source.csr"));
    const bool isMade =
        QCA::CertificateRequest(options, softwareKey(), QStringLiteral("qca-ossl")).toPEMFile(path);
    return isMade ? path : QString();
}

std::unique_ptr<QProcess> TestMachineFaults::saver(const QTemporaryDir &directory, int count,
                                                   const QString &request, const QString &name,
                                                   const char *locale)
{
    auto process = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), directory.path());
    environment.insert(QStringLiteral("LC_ALL"), QLatin1String(locale));
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--save"), QString::number(count), request, name});
    return process;
}

/// Four processes save under one name: all are kept, each whole.
void TestMachineFaults::oneNameAtOnce()
{
    constexpr int Each = 40;
    const QCA::Initializer initializer;
    const QTemporaryDir directory;
    const QString request = makeRequest(directory);
    QVERIFY(!request.isEmpty());
    std::vector<std::unique_ptr<QProcess>> all;
    for (int i = 0; i < 4; ++i)
        all.push_back(saver(directory, Each, request, QStringLiteral("Same"), "C.UTF-8"));
    for (const auto &one : all) {
        QVERIFY(one->waitForFinished(-1));
        QCOMPARE(one->exitStatus(), QProcess::NormalExit);
        QCOMPARE(one->exitCode(), 0);
    }
    QFile source(request);
    QVERIFY(source.open(QIODevice::ReadOnly));
    const QByteArray whole = source.readAll();
    const QDir requests(directory.filePath(QStringLiteral("CertificateRequest")));
    const auto files = requests.entryInfoList(QDir::Files | QDir::Hidden);
    QCOMPARE(files.size(), 4 * Each);
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), whole);
    }
}

/// Names are kept byte for byte where the locale knows ASCII alone.
void TestMachineFaults::plainLocale()
{
    const QCA::Initializer initializer;
    const QTemporaryDir directory;
    const QString name = QString::fromUtf8("Пётр");
    const QString request = makeRequest(directory);
    QVERIFY(!request.isEmpty());
    const auto process = saver(directory, 1, request, name, "C");
    QVERIFY(process->waitForFinished(-1));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 0);
    const QDir requests(directory.filePath(QStringLiteral("CertificateRequest")));
    QCOMPARE(requests.entryList(QDir::Files | QDir::Hidden),
             QStringList(name + QStringLiteral(".csr")));
}

int main(int argc, char **argv)
{
    if (argc == 5 && QByteArray(argv[1]) == "--save")
        return saveAsChild(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--child")
        return runAsChild(argc, argv);
    QCoreApplication program(argc, argv);
    TestMachineFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_machinefaults.moc"
