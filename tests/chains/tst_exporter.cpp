// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What an export puts beside a certificate, and what it does where nothing can be put anywhere.
#include "certificates/certificate.h"
#include "qca/asn1/pem.h"
#include "qca/base/encodedobject.h"
#include "qca/base/filenames.h"
#include "qca/base/savedrequest.h"
#include "tests/chains/chainrows.h"
#include "tests/chains/madechain.h"
#include "tests/x509/corpus.h"
#include "tools/certificatechain.h"
#include "tools/exporter.h"
#include "tools/rowfiles.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

/// The object of a row that shows a saved request.
class RequestOfARow : public QObject, public Trivex::SavedRequest, public Trivex::EncodedObject {
    Q_OBJECT
    Q_INTERFACES(Trivex::SavedRequest Trivex::EncodedObject)
public:
    using QObject::QObject;
    QByteArray encoding() const override { return "a request"; }
    QString requestFile() const override { return QStringLiteral("request.pem"); }
    RequestedFields requestedFields() const override { return {}; }
    void setRequestedFields(const RequestedFields &) override { }
    void restoreRequestedFields() override { }
    EditLoss editLoss() const override { return {}; }
    QByteArray requestKeyInfo() const override { return {}; }
    bool hasRequestKey() const override { return false; }
};

class TestExporter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void withIssuers();
    void asItIsShown_data();
    void asItIsShown();
    void notWithStrangers();
    void noTemporaryFolder();
    void dragOfTooMany();
    void chainIsOfCertificates();
    void namesOfDraggedFiles();
    void thenTheNext();
    void endsOnce();

private:
    void add(const Party &party, ChainRows::StoreType type = ChainRows::User)
    {
        m_rows->add(type, "Store", party.der());
    }
    /// The subject names of the chain that was staged for the row.
    QStringList staged(int row);

    const Party m_root = make({"Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Leaf", -1, 30}, &m_middle);
    QCA::Initializer m_initializer;
    std::unique_ptr<ChainRows> m_rows;
    std::unique_ptr<EntryModel> m_entries;
    QTemporaryDir m_folder;
    QByteArrayList m_staged; ///< DER
};

void TestExporter::init()
{
    m_rows = std::make_unique<ChainRows>();
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_rows.get());
}

void TestExporter::cleanup()
{
    m_entries.reset();
    m_rows.reset();
}

QStringList TestExporter::staged(int row)
{
    Exporter exporter;
    FileSaver saver;
    exporter.stage(m_entries.get(), {m_entries->identityAt(row)}, &saver);
    if (!QTest::qWaitFor([&] { return !exporter.isRunning(); }, 20000)
        || exporter.error() != Exporter::NoError)
        return {exporter.message()};
    const QString path = m_folder.filePath(QStringLiteral("chain.pem"));
    if (saver.place(path, true, FileSaver::Chain) != FileSaver::Saved)
        return {saver.problem()};
    QFile file(path);
    QStringList names;
    if (file.open(QIODevice::ReadOnly)) {
        m_staged.clear();
        for (const PemBlock &block : readPem(file.readAll())) {
            m_staged += block.data;
            names += makeCertificate(block.data).commonName();
        }
    }
    return names;
}

void TestExporter::withIssuers()
{
    add(m_leaf);
    add(m_root, ChainRows::System);
    add(m_middle);
    QCOMPARE(staged(0).join(QLatin1Char(',')), QStringLiteral("Leaf,Middle,Root"));
    QCOMPARE(staged(2).join(QLatin1Char(',')), QStringLiteral("Middle,Root"));
}

void TestExporter::asItIsShown_data()
{
    QTest::addColumn<bool>("isOwnTrusted");
    QTest::newRow("root of the system") << false;
    QTest::newRow("root among one's own files") << true;
}

// One authority with two certificates, one of which leads nowhere: what is trusted decides, for the
// view and for the file alike.
void TestExporter::asItIsShown()
{
    QFETCH(bool, isOwnTrusted);
    const Party gone = make({"Gone", -10, Year, authority()}, nullptr);
    const Party crossed =
        make({"Twice", -10, Year, authority()}, isOwnTrusted ? &gone : &m_root, curveKey());
    const Party itself = make({"Twice", -10, Year, authority()}, nullptr, share(crossed.key.get()));
    const Party leaf = make({"Leaf", -1, 30}, &crossed);
    m_rows->add(ChainRows::User, "USER", crossed.der());
    QObject *shown = m_rows->add(ChainRows::User, "Store", leaf.der());
    m_rows->add(isOwnTrusted ? ChainRows::User : ChainRows::SmartCard,
                isOwnTrusted ? "USER" : "Token", itself.der());
    add(m_root, ChainRows::System);
    CertificateChain chain;
    chain.setEntries(m_entries.get());
    chain.setCertificate(shown);
    QTRY_VERIFY(chain.isReady() && !chain.isRunning());
    QByteArrayList path;
    for (const FileItem &item : chain.stepItems()->items())
        path += item.der;
    QCOMPARE(path.size(), isOwnTrusted ? 2 : 3);
    QVERIFY(staged(1).size() == path.size());
    QCOMPARE(m_staged, path);
}

// Who only has the name of the issuer has issued nothing, and does not belong to the certificate.
void TestExporter::notWithStrangers()
{
    const Party stranger = make({"Middle", -10, Year, authority(), EVP_sha256(), false}, &m_root);
    const Party real = make({"Middle", -10, Year, authority(), EVP_sha256(), false}, &m_root);
    const Party leaf = make({"Leaf", -1, 30, {}, EVP_sha256(), false}, &real);
    add(leaf);
    add(stranger);
    add(m_root, ChainRows::System);
    QCOMPARE(staged(0).join(QLatin1Char(',')), QStringLiteral("Leaf"));
}

// Files of the folder that the program was started in are nobody's certificate.
void TestExporter::noTemporaryFolder()
{
    add(m_leaf);
    const QString here = QDir::currentPath();
    const QByteArray before = qgetenv("TMPDIR");
    QVERIFY(QDir::setCurrent(m_folder.path()));
    QFile other(m_folder.filePath(QStringLiteral("a-diary")));
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("mine") == 4);
    other.close();
    qputenv("TMPDIR", "/proc"); // not even root can make anything there
    Exporter exporter;
    FileSaver saver;
    exporter.stage(m_entries.get(), {m_entries->identityAt(0)}, &saver);
    const bool ended = QTest::qWaitFor([&] { return !exporter.isRunning(); }, 20000);
    const QString folder = saver.stagingFolder();
    const QString stagedAt = saver.stagedPath(QStringLiteral("signature"));
    const QString problem = saver.problem();
    const QString path = m_folder.filePath(QStringLiteral("cert.crt"));
    const int placed = saver.place(path, false);
    const bool copied = saver.stageCopy(other.fileName());
    RowFiles files;
    QSignalSpy refused(&files, &RowFiles::refused);
    const QStringList urls = files.write(m_entries.get(), {m_entries->identityAt(0)});
    const QStringList found = QDir(m_folder.path()).entryList(QDir::Files);
    qputenv("TMPDIR", before);
    if (before.isEmpty())
        qunsetenv("TMPDIR");
    QVERIFY(QDir::setCurrent(here));
    QVERIFY(ended);
    QCOMPARE(exporter.error(), int(Exporter::NotWritten));
    QVERIFY(folder.isEmpty());
    // Said at once, before anybody works for what can't be placed anywhere.
    QVERIFY(stagedAt.isEmpty());
    QVERIFY(problem.contains(QStringLiteral("temporary")));
    QCOMPARE(placed, int(FileSaver::Failed));
    QVERIFY(!copied);
    QVERIFY(urls.isEmpty());
    QCOMPARE(refused.size(), 1);
    QVERIFY(refused.first().first().toString().contains(QStringLiteral("temporary")));
    QVERIFY(!found.contains(QLatin1String("cert.crt")));
}

void TestExporter::dragOfTooMany()
{
    add(m_leaf);
    RowFiles files;
    QSignalSpy refused(&files, &RowFiles::refused);
    QStringList identities{m_entries->identityAt(0)};
    while (identities.size() < RowFiles::MostRows)
        identities += QString::number(identities.size());
    QCOMPARE(files.write(m_entries.get(), identities).size(), 1);
    QVERIFY(refused.isEmpty());
    identities += QStringLiteral("one more");
    QVERIFY(files.write(m_entries.get(), identities).isEmpty());
    QCOMPARE(refused.size(), 1);
    QVERIFY(!refused.first().first().toString().isEmpty());
    // Nobody asked for anything.
    QVERIFY(files.write(m_entries.get(), {}).isEmpty());
    QCOMPARE(refused.size(), 1);
}

// A request among the rows is exported, and no file of certificates is made of it.
void TestExporter::chainIsOfCertificates()
{
    add(m_leaf);
    auto *item = new QStandardItem;
    item->setData(QVariant::fromValue<QObject *>(new RequestOfARow(m_rows.get())),
                  ChainRows::Certificate);
    item->setData(QStringLiteral("Request"), ChainRows::Name);
    m_rows->appendRow(item);
    Exporter exporter;
    FileSaver saver;
    exporter.stage(m_entries.get(), {m_entries->identityAt(0), m_entries->identityAt(1)}, &saver);
    QVERIFY(QTest::qWaitFor([&] { return !exporter.isRunning(); }, 20000));
    QCOMPARE(exporter.error(), int(Exporter::NoError));
    QVERIFY(exporter.text().contains(QStringLiteral("CERTIFICATE REQUEST")));
    const QString path = m_folder.filePath(QStringLiteral("both.pem"));
    for (const auto form : {FileSaver::Chain, FileSaver::Collection})
        QCOMPARE(saver.place(path, true, form), int(FileSaver::Failed));
    QCOMPARE(saver.place(path, true), int(FileSaver::Saved));
}

// Whatever somebody has called a row: the file is visible, in the folder, and no longer than files
// may be.
void TestExporter::namesOfDraggedFiles()
{
    auto *shown =
        qobject_cast<::Certificate *>(m_rows->add(ChainRows::User, "Store", m_leaf.der()));
    QVERIFY(shown);
    const QString longest = QString(400, QLatin1Char('x')) + QStringLiteral(".crt");
    for (const QString &name : {QStringLiteral(".hidden.crt"), QStringLiteral("one\ntwo.crt"),
                                QStringLiteral("folder\\file.crt"), longest}) {
        shown->setFileName(name);
        RowFiles files;
        const QStringList urls = files.write(m_entries.get(), {m_entries->identityAt(0)});
        QCOMPARE(urls.size(), 1);
        QCOMPARE(QFileInfo(QUrl(urls.first()).toLocalFile()).fileName(), safeFileName(name));
    }
}

// A run that was given up for another leaves nothing in the folder of that one.
void TestExporter::thenTheNext()
{
    add(m_leaf);
    add(m_middle);
    Exporter exporter;
    FileSaver saver;
    exporter.stage(m_entries.get(), {m_entries->identityAt(0)}, &saver);
    exporter.cancel();
    QCOMPARE(exporter.error(), int(Exporter::Cancelled));
    exporter.stage(m_entries.get(), {m_entries->identityAt(1)}, &saver);
    QVERIFY(QTest::qWaitFor([&] { return !exporter.isRunning(); }, 20000));
    QCOMPARE(exporter.error(), int(Exporter::NoError));
    QCOMPARE(readPem(exporter.text().toLatin1()).first().data, m_middle.der());
    const QString path = m_folder.filePath(QStringLiteral("next.pem"));
    QCOMPARE(saver.place(path, true), int(FileSaver::Saved));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), exporter.text().toLatin1());
}

// What the background makes of a run that was given up is neither told nor shown.
void TestExporter::endsOnce()
{
    add(m_leaf);
    add(m_middle);
    Exporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &Exporter::finished);
    // Of several rows no path is looked for: the thread begins at once.
    exporter.stage(m_entries.get(), {m_entries->identityAt(0), m_entries->identityAt(1)}, &saver);
    exporter.cancel();
    QCOMPARE(finished.count(), 1);
    QVERIFY(exporter.text().isEmpty());
    exporter.stage(m_entries.get(), {m_entries->identityAt(1)}, &saver);
    QTRY_COMPARE(finished.count(), 2);
    QTest::qWait(50); // what came too late shows nowhere
    QCOMPARE(finished.count(), 2);
    QCOMPARE(readPem(exporter.text().toLatin1()).first().data, m_middle.der());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestExporter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_exporter.moc"
