// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/entries.h"
#include "qca/adapter/keybundlefile.h"
#include "qca/adapter/keygenerator.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokenregistry.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/certificateinfo.h"
#include "qca/x509/infotypes.h"

#include <QtTest>

class TestAdapter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void infoTypes_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("id");
        QTest::newRow("INN") << 15 << QStringLiteral("1.2.643.3.131.1.1");
        QTest::newRow("OGRN") << 16 << QStringLiteral("1.2.643.100.1");
        QTest::newRow("SNILS") << 17 << QStringLiteral("1.2.643.100.3");
        QTest::newRow("INNLE") << 18 << QStringLiteral("1.2.643.100.4");
        QTest::newRow("OGRNIP") << 19 << QStringLiteral("1.2.643.100.5");
        QTest::newRow("IdentificationKind") << 20 << QStringLiteral("1.2.643.100.114");
    }

    void infoTypes()
    {
        QFETCH(int, number);
        QFETCH(QString, id);
        QCOMPARE(Trivex::infoType(number).id(), id);
        QCOMPARE(Trivex::infoType(number).section(), QCA::CertificateInfoType::DN);
        QCA::CertificateInfo info;
        info.insert(Trivex::infoType(number), QStringLiteral("first"));
        info.insert(Trivex::infoType(number), QStringLiteral("last"));
        QCOMPARE(Trivex::infoValue(info, number), QStringLiteral("last"));
    }

    void stockInfoTypes()
    {
        for (int number = 0; number <= 14; ++number)
            QVERIFY(Trivex::infoType(number)
                    == QCA::CertificateInfoType(QCA::CertificateInfoTypeKnown(number)));
        for (int number : {-1, 21, 1000})
            QVERIFY(Trivex::infoType(number).id().isEmpty());
    }

    void emptyValuesAreSafe()
    {
        const QCA::KeyStoreEntry entry;
        QCOMPARE(Trivex::entryType(entry), -1);
        QVERIFY(Trivex::entryId(entry).isEmpty());
        QVERIFY(Trivex::entryName(entry).isEmpty());
        QVERIFY(Trivex::entryStoreId(entry).isEmpty());
        QVERIFY(Trivex::entryStoreName(entry).isEmpty());
        QVERIFY(Trivex::entryKeyBundle(entry).isNull());
        QVERIFY(Trivex::entryCertificate(entry).isNull());
        QVERIFY(Trivex::requestPublicKey(QCA::CertificateRequest()).isNull());
        QVERIFY(Trivex::requestedFields(QCA::CertificateRequest()).info.isEmpty());
        QCOMPARE(Trivex::keyType(QCA::PrivateKey()), int(Trivex::UnknownKey));
        QVERIFY(Trivex::encodedPublicKey(QCA::PublicKey()).isEmpty());
        QVERIFY(!Trivex::isPrivateKey(QCA::PrivateKey()));
        QVERIFY(Trivex::publicKeyOf(QCA::PrivateKey()).isNull());
        QVERIFY(!Trivex::isSamePublicKey(QCA::PublicKey(), QCA::PublicKey()));
        QCOMPARE(Trivex::signatureAlgorithm(QCA::Certificate()), 0);
    }

    void forwardingProviderMayBeDeleted()
    {
        QCA::Provider *own = QCA::findProvider(QStringLiteral("qca-ossl"));
        if (!own)
            QSKIP("SKIP stock OpenSSL provider not installed");
        for (int round = 0; round < 3; ++round) {
            const std::unique_ptr<QCA::Provider> handle(Trivex::forwardingProvider(own));
            QCOMPARE(handle->name(), own->name());
            QCOMPARE(handle->features(), own->features());
            QVERIFY(handle.get() != own);
        }
        QCOMPARE(QCA::findProvider(QStringLiteral("qca-ossl")), own);
        QVERIFY(!Trivex::forwardingProvider(nullptr));
    }

    void generatorFailsOnUnknownProvider()
    {
        Trivex::KeyGenerator generator;
        generator.setBlockingEnabled(false);
        QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
        QVERIFY(generator.createRSA(2048, 65537, QStringLiteral("no-such-provider")).isNull());
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY(generator.key().isNull());
        QVERIFY(
            generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("no-such")).isNull());
        QTRY_COMPARE(finished.count(), 2);
        QVERIFY(!generator.isBusy());
    }

    void missingBundleFile()
    {
        const auto loaded =
            Trivex::readKeyBundle(QStringLiteral("/no/such/file"), QCA::SecureArray("x"));
        QVERIFY(loaded);
        QVERIFY(loaded->bundle.isNull());
        QCOMPARE(loaded->result, QCA::ErrorFile);
    }

    void tokenStatusIsPublished()
    {
        Trivex::TokenMonitor monitor;
        QSignalSpy changed(&monitor, &Trivex::TokenMonitor::changed);
        QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
        Trivex::TokenStatus status;
        status.keyStoreId = QStringLiteral("t");
        status.name = QStringLiteral("Token");
        status.present = true;
        Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(Trivex::TokenMonitor::tokens().size(), 1);
        QVERIFY(Trivex::TokenMonitor::token(QStringLiteral("t")).present);
        Trivex::TokenError error;
        error.kind = Trivex::TokenError::WrongPin;
        Trivex::publishTokenError(error);
        QCOMPARE(failed.count(), 1);
        status.present = false;
        status.name.clear();
        Trivex::publishTokenStatus(status, Trivex::nextStatusNumber());
        QVERIFY(Trivex::TokenMonitor::tokens().isEmpty());
        QVERIFY(Trivex::findTokenKey(QStringLiteral("t"), QCA::PublicKey()).isNull());
    }

private:
    QCA::Initializer m_initializer;
};

QTEST_GUILESS_MAIN(TestAdapter)
#include "tst_adapter.moc"
