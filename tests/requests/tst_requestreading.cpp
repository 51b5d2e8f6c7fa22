// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Large request directories: what is read at each turn of the event loop, and what happens between
// two turns. The model's tester asks for every row at each change, so it watches the smaller ones.
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/requests/home.h"
#include "tests/requests/opencounter.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/marktranslator.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

constexpr int FilesOfATurn = 64;
constexpr qint64 BytesOfATurn = 20 << 20; ///< one file of the largest kind that is read, and little

QByteArray requestText(const QString &commonName, const QCA::PrivateKey &key)
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, commonName);
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    return QCA::CertificateRequest(options, key, QStringLiteral("qca-ossl")).toPEM().toLatin1();
}

QString nameOf(int number)
{
    return QStringLiteral("%1.csr").arg(number, 6, 10, QLatin1Char('0'));
}

void makeFile(const QString &name, const QByteArray &content)
{
    QFile file(home->requests().filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void makeFiles(int count, const QByteArray &content)
{
    for (int i = 0; i < count; ++i)
        makeFile(nameOf(i), content);
}

QStringList names(const CertificateRequestModel &model)
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result << model.data(model.index(row), CertificateRequestModel::NameRole).toString();
    return result;
}

/// One turn of the event loop.
void turn()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace

class TestRequestReading : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void opensFewFilesATurn_data();
    void opensFewFilesATurn();
    void readsFewBytesATurn();
    void sameRowsInTheSameOrder();
    void passesOtherFilesOver();
    void directoryIsTheOwnersAlone();
    void addedWhileListing();
    void changedMeanwhile();
    void goneMeanwhile();
    void directoryGoneMeanwhile();
    void begunAnewBySomebodyWhoListens();
    void deletedBySomebodyWhoListens();
    void certificateArrivesMeanwhile();
    void directoryTakesWhatArrived();

private:
    QByteArray m_request;
};

void TestRequestReading::initTestCase()
{
    m_request = requestText(QStringLiteral("Ivanov"), softwareKey());
    QVERIFY(!m_request.isEmpty());
}

void TestRequestReading::init()
{
    home->clearRequests();
}

void TestRequestReading::opensFewFilesATurn_data()
{
    QTest::addColumn<bool>("areRequests");
    QTest::addColumn<int>("count");
    QTest::newRow("requests") << true << 1000;
    QTest::newRow("anything") << false << 3000;
}

void TestRequestReading::opensFewFilesATurn()
{
    QFETCH(bool, areRequests);
    QFETCH(int, count);
    makeFiles(count, areRequests ? m_request : QByteArray("nothing"));
    CertificateRequestModel model;
    turn();
    OpenCounter opened(home->requests().path());
    int total = 0;
    int most = 0;
    const auto note = [&] {
        const int now = opened.take();
        total += now;
        most = qMax(most, now);
    };
    // The first reading, and one over the rows of it.
    for (int reading = 1; reading <= 2; ++reading) {
        model.init();
        note();
        for (int turns = 0; turns < 2 * count && total < reading * count; ++turns) {
            turn();
            note();
        }
        QCOMPARE(total, reading * count);
        QCOMPARE(model.rowCount(), count);
    }
    QVERIFY2(most <= FilesOfATurn, qPrintable(QString::number(most)));
}

void TestRequestReading::readsFewBytesATurn()
{
    constexpr int Count = 20;
    const QByteArray large(4 << 20, 'x');
    makeFiles(Count, large);
    CertificateRequestModel model;
    OpenCounter opened(home->requests().path());
    model.init();
    QVERIFY(opened.take() * qint64(large.size()) <= BytesOfATurn);
    for (int turns = 0; turns < 2 * Count && model.rowCount() < Count; ++turns) {
        turn();
        QVERIFY(opened.take() * qint64(large.size()) <= BytesOfATurn);
    }
    QCOMPARE(model.rowCount(), Count);
}

void TestRequestReading::sameRowsInTheSameOrder()
{
    constexpr int Count = 1500;
    for (int i = Count - 1; i >= 0; --i)
        makeFile(nameOf(i), i % 10 ? QByteArray("nothing") : m_request);
    // As the library's own listing has them: upper case first, whatever the locale says.
    makeFile(QStringLiteral("a.csr"), m_request);
    makeFile(QStringLiteral("B.CSR"), m_request);
    makeFile(QStringLiteral("Ё.csr"), m_request);
    const QStringList expected =
        home->requests().entryList({QStringLiteral("*.csr")}, QDir::Files, QDir::Name);
    QCOMPARE(expected.size(), Count + 3);
    CertificateRequestModel model;
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.init();
    QTRY_COMPARE(model.rowCount(), expected.size());
    QCOMPARE(inserted.count(), expected.size());
    for (int row = 0; row < expected.size(); ++row) {
        QCOMPARE(inserted.at(row).at(1).toInt(), row);
        const auto *request = model.index(row)
                                  .data(CertificateRequestModel::CertificateRole)
                                  .value<CertificateRequest *>();
        const QString path = home->requests().filePath(expected.at(row));
        const bool isRequest = row >= Count || row % 10 == 0;
        QCOMPARE(request->filePath(), isRequest ? path : QString());
    }
}

void TestRequestReading::passesOtherFilesOver()
{
    for (int i = 0; i < 5000; ++i)
        makeFile(QStringLiteral("%1.txt").arg(i), "notes");
    makeFile(QStringLiteral(".hidden.csr"), m_request);
    makeFile(QStringLiteral("csr"), m_request);
    home->requests().mkdir(QStringLiteral("directory.csr"));
    QVERIFY(QFile::link(QStringLiteral("/nonexistent"),
                        home->requests().filePath(QStringLiteral("nowhere.csr"))));
    makeFile(QStringLiteral("z.csr"), m_request);
    CertificateRequestModel model;
    OpenCounter opened(home->requests().path());
    model.init();
    QTRY_COMPARE(names(model), QStringList{QStringLiteral("Ivanov")});
    QCOMPARE(opened.take(), 1);
}

void TestRequestReading::directoryIsTheOwnersAlone()
{
    const auto access = [] {
        return QFile::permissions(home->requests().path())
            & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    };
    const QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QVERIFY(home->requests().removeRecursively());
    const CertificateRequestModel model;
    QCOMPARE(access(), owner);
    QVERIFY(home->requests().removeRecursively());
    const CertificateRequest request;
    QCOMPARE(access(), owner);
}

/// The directory has been looked through in part.
void TestRequestReading::addedWhileListing()
{
    for (int i = 0; i < 5000; ++i)
        makeFile(QStringLiteral("%1.txt").arg(i), "notes");
    makeFile(QStringLiteral("z.csr"), m_request);
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    OpenCounter opened(home->requests().path());
    model.init();
    turn();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(opened.take(), 0);
    makeFile(QStringLiteral("a.csr"), requestText(QStringLiteral("New"), softwareKey()));
    QVERIFY(opened.take() > 0); // by this test
    // Nothing is read before all is listed, and most of that was still to come.
    int turns = 0;
    for (; turns < 1000 && opened.take() == 0; ++turns)
        turn();
    QVERIFY2(turns >= 3 && turns < 1000, qPrintable(QString::number(turns)));
    QTRY_COMPARE(names(model), QStringList({QStringLiteral("New"), QStringLiteral("Ivanov")}));
}

void TestRequestReading::changedMeanwhile()
{
    constexpr int Count = 150;
    makeFiles(Count, m_request);
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QVERIFY(model.rowCount() < Count);
    QVERIFY(QFile::remove(home->requests().filePath(nameOf(Count - 1))));
    makeFile(QStringLiteral("000000 new.csr"), requestText(QStringLiteral("New"), softwareKey()));
    QTRY_COMPARE(model.rowCount(), Count);
    QCOMPARE(names(model).indexOf(QStringLiteral("New")), 0);
    model.remove(1);
    QTRY_COMPARE(model.rowCount(), Count - 1);
    QCOMPARE(home->requestFiles().size(), Count - 1);
}

void TestRequestReading::goneMeanwhile()
{
    makeFiles(500, m_request);
    auto model = std::make_unique<CertificateRequestModel>();
    model->init();
    const QPointer<CertificateRequest> request = model->index(0)
                                                     .data(CertificateRequestModel::CertificateRole)
                                                     .value<CertificateRequest *>();
    QVERIFY(request);
    OpenCounter opened(home->requests().path());
    model.reset();
    QVERIFY(!request);
    turn();
    turn();
    QCOMPARE(opened.take(), 0);
}

void TestRequestReading::directoryGoneMeanwhile()
{
    makeFiles(150, m_request);
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QVERIFY(home->requests().removeRecursively());
    QTRY_VERIFY(!QDir(home->requests().path()).exists());
    for (int i = 0; i < 50; ++i)
        turn();
    home->clearRequests();
    makeFile(QStringLiteral("a.csr"), m_request);
    QTRY_COMPARE(model.rowCount(), 1);
}

void TestRequestReading::begunAnewBySomebodyWhoListens()
{
    constexpr int Count = 200;
    makeFiles(Count, m_request);
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    int begun = 0;
    connect(&model, &QAbstractItemModel::rowsInserted, &model, [&] {
        if (model.rowCount() == 50 && ++begun < 3)
            model.init();
    });
    model.init();
    QTRY_COMPARE(model.rowCount(), Count);
    QCOMPARE(begun, 3);
    turn();
    QCOMPARE(model.rowCount(), Count);
}

void TestRequestReading::deletedBySomebodyWhoListens()
{
    makeFiles(200, m_request);
    QPointer<CertificateRequestModel> model = new CertificateRequestModel;
    connect(model, &QAbstractItemModel::rowsInserted, this, [&] {
        if (model->rowCount() == 50)
            delete model;
    });
    model->init();
    QTRY_VERIFY(!model);
    turn();
}

void TestRequestReading::certificateArrivesMeanwhile()
{
    constexpr int Count = 150;
    const QCA::PrivateKey key =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    const QCA::PrivateKey other =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    makeFiles(Count, m_request);
    const QByteArray last = requestText(QStringLiteral("Last"), key);
    makeFile(QStringLiteral("w.csr"), requestText(QStringLiteral("Other"), other));
    makeFile(QStringLiteral("x.csr"), last);
    makeFile(QStringLiteral("y.csr"), last);
    KeyStoreModel stores;
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.setKeyStoreModel(&stores);
    QVERIFY(model.rowCount() < Count);
    // Each of them ends a request, and no more than one.
    Q_EMIT stores.keyBundleWritten(key.toPublicKey());
    Q_EMIT stores.keyBundleWritten(other.toPublicKey());
    QCOMPARE(home->requestFiles().size(), Count + 3);
    QTRY_COMPARE(home->requestFiles().size(), Count + 1);
    QVERIFY(!home->requestFiles().contains(QStringLiteral("w.csr")));
    QVERIFY(!home->requestFiles().contains(QStringLiteral("x.csr")));
    QTRY_COMPARE(model.rowCount(), Count + 1);
    QCOMPARE(names(model).last(), QStringLiteral("Last"));
}

// What came for the requests of a directory that is gone is nothing to those of the next one.
void TestRequestReading::directoryTakesWhatArrived()
{
    constexpr int Count = 150;
    const QCA::PrivateKey key =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    makeFiles(Count, m_request);
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    QVERIFY(model.rowCount() < Count);
    Q_EMIT stores.keyBundleWritten(key.toPublicKey());
    QVERIFY(home->requests().removeRecursively());
    model.init();
    home->clearRequests();
    makeFile(QStringLiteral("later.csr"), requestText(QStringLiteral("Later"), key));
    model.init();
    QTRY_COMPARE(names(model), QStringList{QStringLiteral("Later")});
    turn();
    QCOMPARE(home->requestFiles(), QStringList{QStringLiteral("later.csr")});
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    const MarkTranslator translator;
    qRegisterMetaType<CertificateRequest *>();
    TestRequestReading test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestreading.moc"
