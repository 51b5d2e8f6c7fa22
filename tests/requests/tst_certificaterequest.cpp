// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "tests/requests/home.h"
#include "tests/signing/scriptedkey.h"

#include <QMetaEnum>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <csignal>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

QString filePath(const QString &name)
{
    return home->requests().filePath(name);
}

/// A request file made by the distribution's own provider.
QString makeRequestFile(const QString &name, const QString &commonName,
                        const QString &organization = QString())
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, commonName);
    if (!organization.isEmpty())
        info.insert(QCA::Organization, organization);
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    const QCA::CertificateRequest request(options, softwareKey(), QStringLiteral("qca-ossl"));
    return request.toPEMFile(filePath(name)) ? filePath(name) : QString();
}

QString commonNameOf(const QString &file)
{
    return CertificateRequest(filePath(file), nullptr).commonName();
}

QByteArray contents(const QString &file)
{
    QFile reader(filePath(file));
    reader.open(QIODevice::ReadOnly);
    return reader.readAll();
}

QStringList list(std::initializer_list<const char *> items)
{
    QStringList result;
    for (const char *item : items)
        result << QLatin1String(item);
    return result;
}

void ignoreMissingKey(const char *fileName)
{
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(QStringLiteral("PrivateKey of certificate request: %1 is null")
                                        .arg(QLatin1String(fileName))));
}

/// Saves an edited request for ever, each time under another name.
int editForEver(const QString &path)
{
    CertificateRequest request(path, nullptr);
    for (int i = 0;; ++i) {
        request.setCommonName(QString::number(i % 7));
        request.setEditMode(true);
        if (!QFile::exists(request.filePath()))
            return 1;
    }
}

} // namespace

class TestCertificateRequest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void interface();
    void start();
    void createsTheDirectory();
    void settersNotifyChanges();
    void pinIsWriteOnly();
    void subjectFields();
    void fieldsWithoutEffect();
    void severalValues();
    void callsWithoutModel();
    void creationWithoutSubjectOrKey();
    void savingWithoutRequest();
    void loads();
    void unreadableFiles_data();
    void unreadableFiles();
    void savingAgainMakesNumberedFiles();
    void editWithoutKeyKeepsTheOldSubject();
    void editToTheSameName();
    void editToATakenName();
    void editFailsWholly();
    void unwritableDirectory();
    void foreignNames();
    void exports();
    void exportStaysInItsDirectory();
    void exportFails();
    void killedWhileSaving();
};

void TestCertificateRequest::init()
{
    home->clearRequests();
}

void TestCertificateRequest::interface()
{
    const QMetaObject &meta = CertificateRequest::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    const QStringList expected{QStringLiteral("prKeyAlgorithmChanged()"),
                               QStringLiteral("prKeyAlgorithmIdChanged()"),
                               QStringLiteral("prKeyLocationChanged()"),
                               QStringLiteral("prKeyLocationIndexChanged()"),
                               QStringLiteral("keyIdentifierChanged()"),
                               QStringLiteral("keyMarkerChanged()"),
                               QStringLiteral("createKeyPairDone()"),
                               QStringLiteral("requestCreated()"),
                               QStringLiteral("keyStoreModelChanged()"),
                               QStringLiteral("prKeyPinChanged()"),
                               QStringLiteral("missingPrivateKey()"),
                               QStringLiteral("keyGenFinished()"),
                               QStringLiteral("setPrKeyLocationIndex(int)"),
                               QStringLiteral("init()"),
                               QStringLiteral("createKeyPair()"),
                               QStringLiteral("createRequest()"),
                               QStringLiteral("saveRequest()"),
                               QStringLiteral("prKeyLocationId()"),
                               QStringLiteral("pinRejected()"),
                               QStringLiteral("setCommonName(QString)"),
                               QStringLiteral("setCurname(QString)"),
                               QStringLiteral("setName(QString)"),
                               QStringLiteral("setEmail(QString)"),
                               QStringLiteral("setCountryCode(QString)"),
                               QStringLiteral("setCountry(QString)"),
                               QStringLiteral("setLocality(QString)"),
                               QStringLiteral("setAddress(QString)"),
                               QStringLiteral("setOrganization(QString)"),
                               QStringLiteral("setDepartment(QString)"),
                               QStringLiteral("setPosition(QString)"),
                               QStringLiteral("setSnils(QString)"),
                               QStringLiteral("setPsrn(QString)"),
                               QStringLiteral("setTin(QString)"),
                               QStringLiteral("setEditMode(bool)"),
                               QStringLiteral("requestPath()")};
    QCOMPARE(methods, expected);
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        properties << QStringLiteral("%1 %2%3%4 %5")
                          .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
                               property.isReadable() ? QStringLiteral(" r") : QString(),
                               property.isWritable() ? QStringLiteral(" w") : QString(),
                               property.hasNotifySignal()
                                   ? QString::fromLatin1(property.notifySignal().name())
                                   : QString());
    }
    QCOMPARE(
        properties,
        list({"QAbstractListModel* prKeyAlgorithm r prKeyAlgorithmChanged",
              "QAbstractListModel* prKeyLocation r prKeyLocationChanged",
              "int prKeyAlgorithmId r w prKeyAlgorithmIdChanged",
              "int prKeyLocationIndex r w prKeyLocationIndexChanged",
              "QString keyIdentifier r w keyIdentifierChanged",
              "QString keyMarker r w keyMarkerChanged",
              "KeyStoreModel* keyStoreModel r w keyStoreModelChanged", "QString prKeyPin w "}));
    const auto algorithms = QMetaEnum::fromType<CertificateRequest::KeyAlgorithm>();
    QCOMPARE(algorithms.keyToValue("RSA2048"), 2048);
    QCOMPARE(algorithms.keyToValue("RSA3072"), 3072);
    QCOMPARE(algorithms.keyToValue("RSA4096"), 4096);
    QCOMPARE(algorithms.keyToValue("EC384"), 384);
}

void TestCertificateRequest::start()
{
    CertificateRequest request;
    QCOMPARE(request.prKeyAlgorithmId(), -1);
    QCOMPARE(request.prKeyLocationIndex(), -1);
    QCOMPARE(request.prKeyLocationId(), 3);
    QCOMPARE(request.prKeyLocation(), nullptr);
    QCOMPARE(request.prKeyAlgorithm()->rowCount(), 0);
    QVERIFY(request.isNull());
    for (const QString &text :
         {request.privateKeyAvailability(), request.privateKeyLocation(), request.fileName(),
          request.filePath(), request.publicKeyTypeAlgorithm(), request.commonName(),
          request.subjecAddress(), request.serialNumber(), request.signatureAlgorithm()})
        QCOMPARE(text, QString());
    QVERIFY(request.requestPath().endsWith(QLatin1String("/CertificateRequest/")));
    request.init();
    QCOMPARE(request.prKeyAlgorithmId(), -1);
}

void TestCertificateRequest::createsTheDirectory()
{
    QVERIFY(home->requests().removeRecursively());
    const CertificateRequest saved(filePath(QStringLiteral("a.csr")), nullptr);
    QVERIFY(!home->requests().exists());
    const CertificateRequest request;
    QVERIFY(home->requests().exists());
}

void TestCertificateRequest::settersNotifyChanges()
{
    CertificateRequest request;
    QSignalSpy algorithm(&request, &CertificateRequest::prKeyAlgorithmIdChanged);
    QSignalSpy location(&request, &CertificateRequest::prKeyLocationIndexChanged);
    QSignalSpy identifier(&request, &CertificateRequest::keyIdentifierChanged);
    QSignalSpy marker(&request, &CertificateRequest::keyMarkerChanged);
    QSignalSpy model(&request, &CertificateRequest::keyStoreModelChanged);
    for (int i = 0; i < 2; ++i) {
        request.setPrKeyAlgorithmId(2048);
        request.setPrKeyLocationIndex(4);
        request.setKeyIdentifier(QStringLiteral("key"));
        request.setKeyMarker(QStringLiteral("marker"));
        request.setKeyStoreModel(nullptr);
    }
    QCOMPARE(algorithm.count(), 1);
    QCOMPARE(location.count(), 1);
    QCOMPARE(identifier.count(), 1);
    QCOMPARE(marker.count(), 1);
    QCOMPARE(model.count(), 0);
    QCOMPARE(request.publicKeyId(), QStringLiteral("key"));
    QCOMPARE(request.publicKeyMarker(), QStringLiteral("marker"));
    KeyStoreModel stores;
    request.setKeyStoreModel(&stores);
    request.setKeyStoreModel(&stores);
    QCOMPARE(model.count(), 2);
    request.setKeyStoreModel(nullptr);
    QCOMPARE(model.count(), 2);
    QCOMPARE(request.keyStoreModel(), &stores);
}

void TestCertificateRequest::pinIsWriteOnly()
{
    CertificateRequest request;
    QSignalSpy changed(&request, &CertificateRequest::prKeyPinChanged);
    QVERIFY(request.setProperty("prKeyPin", QStringLiteral("1234")));
    QVERIFY(request.setProperty("prKeyPin", QStringLiteral("1234")));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(request.property("prKeyPin").toString(), QString());
}

void TestCertificateRequest::subjectFields()
{
    CertificateRequest request;
    request.setCommonName(QString::fromUtf8("Иванов"));
    request.setEmail(QStringLiteral("i@example.org"));
    request.setCountryCode(QStringLiteral("RU"));
    request.setCountry(QStringLiteral("Moscow"));
    request.setLocality(QStringLiteral("Zelenograd"));
    request.setOrganization(QStringLiteral("Company"));
    request.setDepartment(QStringLiteral("Office"));
    QCOMPARE(request.commonName(), QString::fromUtf8("Иванов"));
    QCOMPARE(request.subjectName(), QString::fromUtf8("Иванов"));
    QCOMPARE(request.subjectEmail(), QStringLiteral("i@example.org"));
    QCOMPARE(request.subjectCountryCode(), QStringLiteral("RU"));
    QCOMPARE(request.subjectCountry(), QStringLiteral("Moscow"));
    QCOMPARE(request.subjectLocality(), QStringLiteral("Zelenograd"));
    QCOMPARE(request.subjectOrganization(), QStringLiteral("Company"));
    QCOMPARE(request.issuer(), QStringLiteral("Company"));
    QCOMPARE(request.privateKeyManufacturer(), QStringLiteral("Company"));
    QCOMPARE(request.subjectOrganizationalUnit(), QStringLiteral("Office"));
    QCOMPARE(request.subjecAddress(), QString());
}

void TestCertificateRequest::fieldsWithoutEffect()
{
    CertificateRequest request;
    const QString text = QStringLiteral("text");
    request.setCurname(text);
    request.setName(text);
    request.setAddress(text);
    request.setPosition(text);
    request.setSnils(text);
    request.setPsrn(text);
    request.setTin(text);
    request.setCommonName(QString());
    QTest::ignoreMessage(QtWarningMsg, "Certificate request info is empty!");
    request.createRequest();
}

void TestCertificateRequest::severalValues()
{
    CertificateRequest request;
    request.setCommonName(QStringLiteral("A"));
    request.setCommonName(QStringLiteral("B"));
    request.setCommonName(QString());
    QCOMPARE(request.commonName(), QStringLiteral("B"));
}

void TestCertificateRequest::callsWithoutModel()
{
    CertificateRequest request;
    request.pinRejected();
    request.setPrKeyLocationIndex(0);
    request.createKeyPair();
    QCOMPARE(request.prKeyLocationId(), 3);
    {
        KeyStoreModel model;
        request.setKeyStoreModel(&model);
        request.pinRejected();
        request.init();
    }
    // The model is gone.
    request.pinRejected();
    request.createKeyPair();
    request.init();
    QCOMPARE(request.prKeyLocation(), nullptr);
    QCOMPARE(request.keyStoreModel(), nullptr);
}

void TestCertificateRequest::creationWithoutSubjectOrKey()
{
    CertificateRequest request;
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    QTest::ignoreMessage(QtWarningMsg, "Certificate request info is empty!");
    request.createRequest();
    QCOMPARE(missing.count(), 0);
    request.setCommonName(QStringLiteral("A"));
    QTest::ignoreMessage(QtWarningMsg, "Error: missing private key");
    request.createRequest();
    QCOMPARE(missing.count(), 1);
    QCOMPARE(home->requestFiles(), QStringList());
}

void TestCertificateRequest::savingWithoutRequest()
{
    CertificateRequest request;
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    QVERIFY(!request.saveRequest());
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    request.setEditMode(false);
    request.setCommonName(QStringLiteral("A"));
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    request.setEditMode(true);
}

void TestCertificateRequest::loads()
{
    const QString path = makeRequestFile(QStringLiteral("Some name (4).csr"),
                                         QStringLiteral("Ivanov"), QStringLiteral("Company"));
    const CertificateRequest request(path, nullptr);
    QCOMPARE(request.commonName(), QStringLiteral("Ivanov"));
    QCOMPARE(request.issuer(), QStringLiteral("Company"));
    QCOMPARE(request.filePath(), path);
    // Made from the common name, whatever the file is called.
    QCOMPARE(request.fileName(), QStringLiteral("Ivanov.csr"));
    QCOMPARE(request.publicKeyTypeAlgorithm(), QStringLiteral("RSA"));
    QCOMPARE(request.privateKeyAvailability(), QString());
    QVERIFY(request.isNull());
}

void TestCertificateRequest::unreadableFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a request");
    QTest::newRow("cut") << QByteArray("-----BEGIN CERTIFICATE REQUEST-----\nMIIC\n");
    QTest::newRow("broken") << QByteArray("-----BEGIN CERTIFICATE REQUEST-----\nMIICijCCAXICAQ==\n"
                                          "-----END CERTIFICATE REQUEST-----\n");
}

void TestCertificateRequest::unreadableFiles()
{
    QFETCH(QByteArray, content);
    QFile file(filePath(QStringLiteral("bad.csr")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    CertificateRequest request(file.fileName(), nullptr);
    QCOMPARE(request.commonName(), QString());
    QCOMPARE(request.fileName(), QString());
    QCOMPARE(request.filePath(), QString());
    QCOMPARE(request.publicKeyTypeAlgorithm(), QString());
    QTest::ignoreMessage(QtWarningMsg, "Certificate request not created!");
    QVERIFY(!request.saveRequest());
}

void TestCertificateRequest::savingAgainMakesNumberedFiles()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    QVERIFY(request.saveRequest());
    QCOMPARE(request.fileName(), QStringLiteral("Name.csr"));
    request.setEditMode(false);
    QCOMPARE(request.fileName(), QStringLiteral("Name (1).csr"));
    QCOMPARE(request.filePath(), filePath(QStringLiteral("Name (1).csr")));
    QVERIFY(request.saveRequest());
    QCOMPARE(created.count(), 3);
    QCOMPARE(home->requestFiles(), list({"Name (1).csr", "Name (2).csr", "Name.csr", "x.csr"}));
    QCOMPARE(contents(QStringLiteral("Name (2).csr")), contents(QStringLiteral("x.csr")));
}

void TestCertificateRequest::editWithoutKeyKeepsTheOldSubject()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old")),
                               nullptr);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    request.setCommonName(QStringLiteral("New"));
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(missing.count(), 1);
    QCOMPARE(created.count(), 1);
    QCOMPARE(home->requestFiles(), list({"New.csr"}));
    QCOMPARE(commonNameOf(QStringLiteral("New.csr")), QStringLiteral("Old"));
    QCOMPARE(request.fileName(), QStringLiteral("New.csr"));
}

void TestCertificateRequest::editToTheSameName()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old")),
                               nullptr);
    ignoreMissingKey("Old.csr");
    request.setEditMode(true);
    QCOMPARE(home->requestFiles(), list({"Old.csr"}));
    QCOMPARE(request.fileName(), QStringLiteral("Old.csr"));
}

void TestCertificateRequest::editToATakenName()
{
    makeRequestFile(QStringLiteral("New.csr"), QStringLiteral("Other"));
    CertificateRequest request(
        makeRequestFile(QStringLiteral("New (1).csr"), QStringLiteral("New")), nullptr);
    ignoreMissingKey("New.csr");
    request.setEditMode(true);
    // The number is free, for the old file counts as gone.
    QCOMPARE(home->requestFiles(), list({"New (1).csr", "New.csr"}));
    QCOMPARE(commonNameOf(QStringLiteral("New.csr")), QStringLiteral("Other"));
    QCOMPARE(commonNameOf(QStringLiteral("New (1).csr")), QStringLiteral("New"));
}

void TestCertificateRequest::editFailsWholly()
{
    const QString path = makeRequestFile(QStringLiteral("Old.csr"), QStringLiteral("Old"));
    // The request was opened from elsewhere, and the request directory is no directory.
    const QString elsewhere = home->path() + QStringLiteral("/Old.csr");
    QVERIFY(QFile::rename(path, elsewhere));
    home->requests().removeRecursively();
    QFile blocker(home->requests().path());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    CertificateRequest request(elsewhere, nullptr);
    request.setCommonName(QStringLiteral("New"));
    QSignalSpy created(&request, &CertificateRequest::requestCreated);
    ignoreMissingKey("Old.csr");
    QTest::ignoreMessage(QtWarningMsg, "File:  \"New.csr\"  not created!");
    request.setEditMode(true);
    QCOMPARE(created.count(), 0);
    QVERIFY(QFile::exists(elsewhere));
    QCOMPARE(CertificateRequest(elsewhere, nullptr).commonName(), QStringLiteral("Old"));
    QCOMPARE(request.filePath(), elsewhere);
    blocker.remove();
    QFile::remove(elsewhere);
}

void TestCertificateRequest::unwritableDirectory()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    home->requests().removeRecursively();
    QTest::ignoreMessage(QtWarningMsg, "File:  \"Name.csr\"  not created!");
    QVERIFY(!request.saveRequest());
}

void TestCertificateRequest::foreignNames()
{
    const QString evil = QStringLiteral("../../../tmp/evil");
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), evil), nullptr);
    QCOMPARE(request.commonName(), evil);
    QVERIFY(request.saveRequest());
    QCOMPARE(request.fileName(), QStringLiteral("_._.._.._tmp_evil.csr"));
    QCOMPARE(home->requestFiles(), list({"_._.._.._tmp_evil.csr", "x.csr"}));

    const QString long1(300, QChar(0x0416));
    request.setCommonName(long1);
    QVERIFY(request.saveRequest());
    QVERIFY(request.saveRequest());
    QVERIFY(request.fileName().endsWith(QLatin1String(" (1).csr")));
    QCOMPARE(home->requestFiles().size(), 4);
}

void TestCertificateRequest::exports()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    QSignalSpy exported(&request, &Certificate::fileExported);
    QTemporaryDir directory;
    QVERIFY(request.exportToFile(directory.path()));
    QCOMPARE(exported.count(), 1);
    const CertificateRequest copy(directory.filePath(QStringLiteral("Name.csr")), nullptr);
    QCOMPARE(copy.commonName(), QStringLiteral("Name"));
}

void TestCertificateRequest::exportStaysInItsDirectory()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("../up")),
                               nullptr);
    QTemporaryDir directory;
    QVERIFY(request.exportToFile(directory.path()));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), list({"_._up.csr"}));
}

void TestCertificateRequest::exportFails()
{
    CertificateRequest request(makeRequestFile(QStringLiteral("x.csr"), QStringLiteral("Name")),
                               nullptr);
    CertificateRequest empty;
    QSignalSpy exported(&request, &Certificate::fileExported);
    QTest::ignoreMessage(QtWarningMsg, "File:  \"/nonexistent/Name.csr\"  not exported!");
    QVERIFY(!request.exportToFile(QStringLiteral("/nonexistent")));
    QCOMPARE(exported.count(), 0);
    QTest::ignoreMessage(QtWarningMsg, "File:  \"/nonexistent/\"  not exported!");
    QVERIFY(!empty.exportToFile(QStringLiteral("/nonexistent")));
}

void TestCertificateRequest::killedWhileSaving()
{
    for (int round = 0; round < 15; ++round) {
        home->clearRequests();
        const QString path = makeRequestFile(QStringLiteral("0.csr"), QStringLiteral("0"));
        QProcess process;
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--edit"), home->path(), path});
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY(process.state() != QProcess::Running
                    || home->requestFiles() != list({"0.csr"}));
        QTest::qSleep(int(QRandomGenerator::global()->bounded(1, 40)));
        QCOMPARE(process.state(), QProcess::Running);
        ::kill(pid_t(process.processId()), SIGKILL);
        QVERIFY(process.waitForFinished());
        const QStringList files =
            home->requests().entryList({QStringLiteral("*.csr")}, QDir::Files);
        QVERIFY2(files.size() == 1 || files.size() == 2, qPrintable(files.join(QLatin1Char(' '))));
        for (const QString &file : files)
            QCOMPARE(commonNameOf(file), QStringLiteral("0"));
    }
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const QString argument = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const bool edits = argc == 4 && argument == QLatin1String("--edit");
    const Home place(edits ? QString::fromLocal8Bit(argv[2]) : QString());
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    if (edits)
        return editForEver(application.arguments().at(3));
    TestCertificateRequest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_certificaterequest.moc"
