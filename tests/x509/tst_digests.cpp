// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/digests.h"
#include "qca/keys/gostengine.h"

#include <QtTest>

#include <openssl/evp.h>
#include <openssl/objects.h>

using namespace Trivex;

Q_DECLARE_METATYPE(Trivex::Digest)

namespace {

QByteArray dotted(int nid)
{
    QByteArray text(80, 0);
    text.truncate(OBJ_obj2txt(text.data(), text.size(), OBJ_nid2obj(nid), 1));
    return text;
}

void rows(std::initializer_list<Digest> digests)
{
    QTest::addColumn<Digest>("digest");
    for (const Digest &one : digests)
        QTest::newRow(one.name) << one;
}

} // namespace

/// The names, identifiers and sizes of digests, each beside libcrypto's.
class TestDigests : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void identifiers_data();
    void identifiers();
    void curveSignatures_data();
    void curveSignatures();
    void sizes_data();
    void sizes();
    void sizesOfGost_data();
    void sizesOfGost();
    void areComparedByName();
};

void TestDigests::identifiers_data()
{
    rows({Sha1Digest, Sha256Digest, Sha384Digest, Sha512Digest, Gost94Digest, Streebog256Digest,
          Streebog512Digest});
}

void TestDigests::identifiers()
{
    QFETCH(Digest, digest);
    const int nid = OBJ_sn2nid(digest.name);
    QVERIFY(nid != NID_undef);
    QCOMPARE(QByteArray(digest.oid), dotted(nid));
}

void TestDigests::curveSignatures_data()
{
    rows({Sha256Digest, Sha384Digest, Sha512Digest});
}

void TestDigests::curveSignatures()
{
    QFETCH(Digest, digest);
    int nid = NID_undef;
    QVERIFY(OBJ_find_sigid_by_algs(&nid, OBJ_sn2nid(digest.name), NID_X9_62_id_ecPublicKey));
    QCOMPARE(QByteArray(digest.curveSignature), dotted(nid));
}

void TestDigests::sizes_data()
{
    rows({Sha1Digest, Sha256Digest, Sha384Digest, Sha512Digest});
}

void TestDigests::sizes()
{
    QFETCH(Digest, digest);
    const EVP_MD *found = EVP_get_digestbyname(digest.name);
    QVERIFY(found);
    QCOMPARE(digest.size, EVP_MD_get_size(found));
}

void TestDigests::sizesOfGost_data()
{
    rows({Gost94Digest, Streebog256Digest, Streebog512Digest});
}

void TestDigests::sizesOfGost()
{
    if (!loadGostEngine())
        QSKIP("libcrypto's engine for GOST is not installed");
    sizes();
}

void TestDigests::areComparedByName()
{
    const QByteArray copied(Sha256Digest.name);
    Digest elsewhere = Sha256Digest;
    elsewhere.name = copied.constData();
    QVERIFY(elsewhere == Sha256Digest);
    QVERIFY(!(elsewhere == Sha384Digest));
}

QTEST_GUILESS_MAIN(TestDigests)
#include "tst_digests.moc"
