// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/algorithmids.h"
#include "qca/asn1/attributeids.h"
#include "qca/asn1/extensionids.h"
#include "qca/asn1/handles.h"
#include "qca/asn1/oidoctets.h"

#include <QTest>

#include <openssl/objects.h>

namespace Der = Trivex::Der;
namespace Oid = Trivex::Oid;

/// Object identifiers that are encoded when the program is compiled.
class TestObjectIds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodesAsLibcryptoDoes_data();
    void encodesAsLibcryptoDoes();
    void ignoresADotAtTheEnd();
};

void TestObjectIds::encodesAsLibcryptoDoes_data()
{
    QTest::addColumn<QByteArray>("dotted");
    for (const char *dotted :
         {Oid::UserId, Oid::Ed25519, Oid::GostCurve512C, Oid::Prime256v1, Oid::RsaWithSha512Cut256,
          Oid::SigningCertificateV2, Oid::CommonName, Oid::AuthorityInfoAccess,
          Oid::NetscapeComment, Oid::CertificateTransparency, Oid::MlDsa87, Oid::QualifiedInEurope,
          "0.0", "1.39", "2.0", "2.47", "2.48", "2.999.127.128.16383.16384", "1.2.4294967295"})
        QTest::newRow(dotted) << QByteArray(dotted);
}

void TestObjectIds::encodesAsLibcryptoDoes()
{
    QFETCH(QByteArray, dotted);
    const Trivex::ObjectHandle object(OBJ_txt2obj(dotted.constData(), 1));
    QVERIFY(object);
    const QByteArray expected(reinterpret_cast<const char *>(OBJ_get0_data(object.get())),
                              int(OBJ_length(object.get())));

    const Der::OidOctets octets(dotted.constData());
    QCOMPARE(octets.view(), expected);
    QCOMPARE(Der::oidText(octets.slice()), dotted);
}

void TestObjectIds::ignoresADotAtTheEnd()
{
    constexpr Der::OidOctets Arc(Oid::RussianArc);
    QCOMPARE(Arc.view(), Der::OidOctets("1.2.643").view());
}

QTEST_GUILESS_MAIN(TestObjectIds)
#include "tst_objectids.moc"
