// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "tests/x509/corpus.h"

#include <QtTest>

class TestLists : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsLists();
    void readsListWithoutNextUpdate();
    void readsCollections();
    void readsFlatFiles();

private:
    QCA::Initializer m_initializer;
};

void TestLists::readsLists()
{
    const QCA::CRL list =
        QCA::CRL::fromPEM(QString::fromLatin1(Corpus::read(QStringLiteral("list.pem"))));
    QCOMPARE(list.provider()->name(), Trivex::opensslProviderName());
    QCOMPARE(list.revoked().size(), 1);
    QCOMPARE(list.revoked().first().serialNumber(), QCA::BigInteger(77));
    QCOMPARE(int(list.revoked().first().reason()), int(QCA::CRLEntry::KeyCompromise));
    QCOMPARE(list.number(), 0x1001);
    QCOMPARE(list.issuerInfo().value(QCA::CommonName), QStringLiteral("All extensions"));
    QCOMPARE(int(list.signatureAlgorithm()), int(QCA::EMSA3_SHA256));
    QCOMPARE(list.thisUpdate().secsTo(list.nextUpdate()), 30 * 24 * 3600);
    QCOMPARE(QCA::CRL::fromDER(list.toDER()), list);
    QCOMPARE(QCA::CRL::fromPEM(list.toPEM()), list);
    QVERIFY(QCA::CRL::fromDER("nothing").isNull());
}

void TestLists::readsListWithoutNextUpdate()
{
    const QByteArray der = Corpus::read(QStringLiteral("crashers/crl-no-nextupdate.der"));
    const QCA::CRL list = QCA::CRL::fromDER(der);
    QVERIFY(!list.isNull());
    QVERIFY(list.thisUpdate().isValid());
    QVERIFY(!list.nextUpdate().isValid());
    QCOMPARE(list.toDER(), der);
}

void TestLists::readsCollections()
{
    QCA::ConvertResult result = QCA::ErrorFile;
    QCA::CertificateCollection collection = QCA::CertificateCollection::fromPKCS7File(
        Corpus::path(QStringLiteral("list.p7b")), &result, Trivex::opensslProviderName());
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QCOMPARE(collection.certificates().size(), 2);
    QCOMPARE(collection.crls().size(), 1);
    const QCA::CertificateCollection broken = QCA::CertificateCollection::fromPKCS7File(
        Corpus::path(QStringLiteral("crashers/badbc.p7b")), &result, Trivex::opensslProviderName());
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QVERIFY(!broken.certificates().isEmpty());
    QCOMPARE(broken.certificates().first().commonName(), QStringLiteral("Тест"));

    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("written.p7b"));
    QVERIFY(collection.toPKCS7File(path, Trivex::opensslProviderName()));
    const QByteArray shown =
        Corpus::openssl({QStringLiteral("pkcs7"), QStringLiteral("-inform"), QStringLiteral("DER"),
                         QStringLiteral("-in"), path, QStringLiteral("-print_certs")});
    QCOMPARE(shown.count("BEGIN CERTIFICATE"), 2);
    QVERIFY(shown.contains("BEGIN X509 CRL"));
}

void TestLists::readsFlatFiles()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("text before\n" + Corpus::read(QStringLiteral("crashers/badbc.pem"))
               + Corpus::certificate(QStringLiteral("ec-384.der")).toPEM().toLatin1()
               + Corpus::read(QStringLiteral("list.pem")));
    file.close();
    const auto collection = QCA::CertificateCollection::fromFlatTextFile(file.fileName());
    QCOMPARE(collection.certificates().size(), 2);
    QCOMPARE(collection.crls().size(), 1);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestLists test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_lists.moc"
