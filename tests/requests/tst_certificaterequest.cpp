// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "tests/requests/home.h"
#include "tests/support/textlist.h"

#include <QMetaEnum>
#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

QString filePath(const QString &name)
{
    return home->requests().filePath(name);
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

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestCertificateRequest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_certificaterequest.moc"
