// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A file of as many bytes as are read, and one with one byte more, by every way in which files
// come: the one is read whole and shown, of the other nothing is read, and it is nothing.
#include "certificates/certificate.h"
#include "keystores/keystoremodel.h"
#include "qca/base/bounds.h"
#include "qca/base/requestfiles.h"
#include "qca/tokens/userstore.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/chains/madechain.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/support/processfacts.h"
#include "tests/support/systemlist.h"
#include "tests/support/testcertificates.h"
#include "tests/support/userfiles.h"
#include "tools/certificatefile.h"
#include "tools/documentverifier.h"
#include "tools/listfolder.h"
#include "tools/rowentry.h"

#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <functional>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const PrivateHome privateHome;

/// What anything else costs: these numbers, locales, Qt's own files.
constexpr qint64 Slack = 1024 * 1024;
constexpr int Patience = 60000;

std::atomic<int> largeFiles{0};
QtMessageHandler otherMessages = nullptr;

void countLargeFiles(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.endsWith(QLatin1String("/above.pem has more than 16 MiB")))
        ++largeFiles;
    else
        otherMessages(type, context, message);
}

bool writeFilled(const QString &path, const QByteArray &contents, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size()
        && file.write(QByteArray(int(size - contents.size()), '\n')) == size - contents.size();
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int kindOf(const QString &path)
{
    CertificateFile file;
    file.setPath(path);
    const bool isKnown =
        QTest::qWaitFor([&] { return file.kind() != CertificateFile::None; }, Patience);
    return isKnown ? file.kind() : CertificateFile::None;
}

} // namespace

class TestFileBounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void chosenFiles_data();
    void chosenFiles();
    void unlockedBundle();
    void checkedMessage();
    void requestFolder();
    void userFolder();
    void listFolder();
    void cleanupTestCase();

private:
    struct Way {
        const char *name;
        QByteArray contents;
        std::function<bool(const QString &path)> isTaken;
        std::function<bool(const QString &path)> isRefused;
    };
    QList<Way> ways();
    QString file(const QString &name) const { return m_directory.filePath(name); }

    QCA::Initializer m_initializer;
    TestAuthority m_authority;
    QTemporaryDir m_directory;
    std::unique_ptr<KeyStoreModel> m_model;
    QByteArray m_certificate;
    QByteArray m_request;
    QByteArray m_bundle;
    QByteArray m_message;
    QByteArray m_list;
};

void TestFileBounds::initTestCase()
{
    otherMessages = qInstallMessageHandler(countLargeFiles);
    QVERIFY(bytesRead() > 0);
    QVERIFY(m_authority.isValid());
    setSystemList();
    m_model = std::make_unique<KeyStoreModel>();
    m_certificate = contentsOf(m_authority.certificateFile());
    const QString key = file(QStringLiteral("key"));
    const QString request = file(QStringLiteral("good.csr"));
    m_authority.openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
                         QStringLiteral("rsa:1024"), QStringLiteral("-nodes"),
                         QStringLiteral("-keyout"), key, QStringLiteral("-subj"),
                         QStringLiteral("/CN=Good"), QStringLiteral("-out"), request});
    m_request = contentsOf(request);
    m_bundle = contentsOf(m_authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                                             QStringLiteral("/CN=Bundled"),
                                             QStringLiteral("secret"), QStringLiteral("friend")));
    m_message = m_authority.openssl(
        {QStringLiteral("cms"), QStringLiteral("-sign"), QStringLiteral("-binary"),
         QStringLiteral("-nodetach"), QStringLiteral("-outform"), QStringLiteral("PEM"),
         QStringLiteral("-in"), m_authority.certificateFile(), QStringLiteral("-signer"),
         m_authority.certificateFile(), QStringLiteral("-inkey"),
         m_authority.file(QStringLiteral("ca.key"))});
    m_list = MadeChain::listPem(MadeChain::list(MadeChain::make({}, nullptr), {}));
    for (const QByteArray &contents : {m_certificate, m_request, m_bundle, m_message, m_list})
        QVERIFY(!contents.isEmpty());
}

void TestFileBounds::cleanupTestCase()
{
    qInstallMessageHandler(otherMessages);
}

QList<TestFileBounds::Way> TestFileBounds::ways()
{
    const auto isOther = [](const QString &path) {
        return kindOf(path) == CertificateFile::OtherKind;
    };
    const auto shows = [](CertificateFile::Kind kind) {
        return [kind](const QString &path) { return kindOf(path) == kind; };
    };
    const auto importsCertificate = [this](const QString &path) {
        m_model->resetImportedCertificate();
        return m_model->certificateFromPEMFile(path);
    };
    const auto importsBundle = [this](const QString &path) {
        return m_model->keyBundleFromFile(path, QStringLiteral("secret"));
    };
    const auto hasName = [](const QString &path) {
        return Certificate(path).commonName() == QLatin1String("Test Root");
    };
    const auto isRequest = [this](const QString &path) {
        return CertificateRequest(path, m_model.get()).commonName() == QLatin1String("Good");
    };
    const auto hasLists = [](const QString &path) { return !ListFile::read(path).lists.isEmpty(); };
    const auto not_ = [](std::function<bool(const QString &)> taken) {
        return [taken](const QString &path) { return !taken(path); };
    };
    return {
        {"certificate", m_certificate, hasName, not_(hasName)},
        {"certificate to import", m_certificate, importsCertificate, not_(importsCertificate)},
        {"bundle to import", m_bundle, importsBundle, not_(importsBundle)},
        {"request", m_request, isRequest, not_(isRequest)},
        {"list", m_list, hasLists, not_(hasLists)},
        {"message", m_message, &DocumentVerifier::isMessage, not_(&DocumentVerifier::isMessage)},
        {"document of a message", m_message, &DocumentVerifier::hasDocument,
         not_(&DocumentVerifier::hasDocument)},
        {"shown certificate", m_certificate, shows(CertificateFile::CertificateKind), isOther},
        {"shown request", m_request, shows(CertificateFile::RequestKind), isOther},
        {"shown list", m_list, shows(CertificateFile::RevocationListKind), isOther},
        {"shown bundle", m_bundle, shows(CertificateFile::BundleKind), isOther},
        {"shown message", m_message, shows(CertificateFile::MessageKind), isOther},
    };
}

void TestFileBounds::chosenFiles_data()
{
    QTest::addColumn<int>("way");
    const QList<Way> all = ways();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(all.at(i).name) << i;
}

void TestFileBounds::chosenFiles()
{
    QFETCH(int, way);
    const Way used = ways().at(way);
    const QString path = file(QStringLiteral("chosen"));
    QVERIFY(writeFilled(path, used.contents, MaxFileBytes));
    qint64 before = bytesRead();
    QVERIFY(used.isTaken(path));
    QVERIFY(bytesRead() - before >= MaxFileBytes);
    QVERIFY(writeFilled(path, used.contents, MaxFileBytes + 1));
    before = bytesRead();
    QVERIFY(used.isRefused(path));
    const qint64 read = bytesRead() - before;
    QVERIFY2(read < Slack, qPrintable(QString::number(read)));
}

// Its password comes later, and the file may have grown by then.
void TestFileBounds::unlockedBundle()
{
    const QString path = file(QStringLiteral("later.p12"));
    QVERIFY(writeFilled(path, m_bundle, m_bundle.size()));
    CertificateFile bundle;
    bundle.setPath(path);
    QTRY_COMPARE_WITH_TIMEOUT(bundle.kind(), int(CertificateFile::BundleKind), Patience);
    QVERIFY(writeFilled(path, m_bundle, MaxFileBytes + 1));
    const qint64 before = bytesRead();
    bundle.unlock(QStringLiteral("secret"));
    QTRY_VERIFY_WITH_TIMEOUT(!bundle.isUnlocking(), Patience);
    QVERIFY(bytesRead() - before < Slack);
    QVERIFY(!bundle.isUnlocked());
    QCOMPARE(bundle.problem(), QStringLiteral("trivex-app-bundle-decode"));
}

void TestFileBounds::checkedMessage()
{
    const QString path = file(QStringLiteral("letter.pem"));
    for (const qint64 size : {qint64(MaxFileBytes), qint64(MaxFileBytes) + 1}) {
        const bool isRead = size == MaxFileBytes;
        QVERIFY(writeFilled(path, m_message, size));
        DocumentVerifier verifier;
        QSignalSpy finished(&verifier, &DocumentVerifier::finished);
        const qint64 before = bytesRead();
        verifier.verify(path);
        QVERIFY(finished.wait(Patience));
        QCOMPARE(verifier.error(),
                 int(isRead ? DocumentVerifier::NoError : DocumentVerifier::NoMessage));
        QCOMPARE(verifier.message().isEmpty(), isRead);
        QCOMPARE(bytesRead() - before >= MaxFileBytes, isRead);
        QVERIFY(isRead || bytesRead() - before < Slack);
    }
}

void TestFileBounds::requestFolder()
{
    const QString folder = requestDirectory();
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(writeFilled(folder + QStringLiteral("1.csr"), m_request, MaxFileBytes + 1));
    QVERIFY(writeFilled(folder + QStringLiteral("3.csr"), m_request, m_request.size()));
    CertificateRequestModel model;
    const auto files = [&] {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row) {
            const auto *request = model.index(row, 0)
                                      .data(CertificateRequestModel::CertificateRole)
                                      .value<CertificateRequest *>();
            all += request->requestFile().section(QLatin1Char('/'), -1);
        }
        all.sort();
        return all;
    };
    const qint64 before = bytesRead();
    model.setKeyStoreModel(m_model.get());
    model.init();
    // A file that holds no request is a row without values.
    QStringList expected = {QString(), QStringLiteral("3.csr")};
    QTRY_COMPARE_WITH_TIMEOUT(files(), expected, Patience);
    QVERIFY(bytesRead() - before < Slack);
    QVERIFY(writeFilled(file(QStringLiteral("2.csr")), m_request, MaxFileBytes));
    QVERIFY(QFile::rename(file(QStringLiteral("2.csr")), folder + QStringLiteral("2.csr")));
    expected.insert(1, QStringLiteral("2.csr"));
    QTRY_COMPARE_WITH_TIMEOUT(files(), expected, Patience);
    // A row's encoding is what the row shows: nothing more is read for it, whatever the file has
    // become.
    const auto encodings = [&model] {
        QList<QByteArray> all;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QByteArray der =
                rowEncoding(model, row, -1, CertificateRequestModel::CertificateRole).der;
            if (!der.isEmpty())
                all.append(der);
        }
        return all;
    };
    const qint64 listed = bytesRead();
    const QList<QByteArray> shown = encodings();
    QCOMPARE(shown.size(), 2);
    QVERIFY(QFile::resize(folder + QStringLiteral("2.csr"), MaxFileBytes + 1));
    QCOMPARE(encodings(), shown);
    QVERIFY(bytesRead() - listed < Slack);
}

void TestFileBounds::userFolder()
{
    QTRY_VERIFY_WITH_TIMEOUT(!m_model->isBusy(), Patience);
    const auto idsOf = [] {
        QStringList files;
        QCA::KeyStoreManager manager;
        QCA::KeyStore store(userStoreId(), &manager);
        const auto entries = store.entryList();
        for (const QCA::KeyStoreEntry &entry : entries)
            files += entry.id().section(QLatin1Char('#'), 0, 0);
        files.sort();
        return files;
    };
    QVERIFY(QDir().mkpath(TrivexTest::userFolder()));
    const qint64 before = bytesRead();
    QVERIFY(writeFilled(file(QStringLiteral("above.pem")), m_certificate, MaxFileBytes + 1));
    QVERIFY(writeFilled(file(QStringLiteral("at.pem")), m_certificate, MaxFileBytes));
    QVERIFY(writeFilled(file(QStringLiteral("small.pem")), m_certificate, m_certificate.size()));
    // Whole from the beginning, so that each is looked at once.
    for (const char *name : {"above.pem", "at.pem", "small.pem"}) {
        const QString fileName = QString::fromLatin1(name);
        QVERIFY(QFile::rename(file(fileName), userFile(fileName)));
    }
    const QStringList expected = {QStringLiteral("at.pem"), QStringLiteral("small.pem")};
    QTRY_COMPARE_WITH_TIMEOUT(idsOf(), expected, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(int(largeFiles), 1, Patience);
    QCOMPARE(idsOf(), expected);
    QVERIFY(bytesRead() - before < 2 * qint64(MaxFileBytes));
}

void TestFileBounds::listFolder()
{
    const QString folder = file(QStringLiteral("lists"));
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/one.crl");
    QVERIFY(writeFilled(path, m_list, MaxFileBytes + 1));
    const qint64 before = bytesRead();
    QVERIFY(ListFolder::listsNow(folder).isEmpty());
    QVERIFY(bytesRead() - before < Slack);
    QVERIFY(writeFilled(path, m_list, MaxFileBytes));
    const QVector<QByteArray> lists = ListFolder::listsNow(folder);
    QCOMPARE(lists.size(), 1);
    // Nobody can say what else it holds, so it stays.
    QVERIFY(writeFilled(path, m_list, MaxFileBytes + 1));
    QCOMPARE(ListFile::remove(path, lists.first()), ListFile::Removal::Changed);
    QVERIFY(writeFilled(path, m_list, MaxFileBytes));
    QCOMPARE(ListFile::remove(path, lists.first()), ListFile::Removal::Done);
}

QTEST_GUILESS_MAIN(TestFileBounds)

#include "tst_filebounds.moc"
