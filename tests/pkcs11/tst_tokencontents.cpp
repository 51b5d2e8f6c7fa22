// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokencontents.h"
#include "providers/pkcs11/operations/objecttemplates.h"
#include "qca/base/bounds.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/extensions.h"
#include "tests/support/allocations.h"
#include "tests/support/derelement.h"
#include "tests/support/processortime.h"
#include "tests/x509/corpus.h"

#include <QSet>
#include <QtTest>

#include <limits>

using namespace Trivex;
using TrivexTest::processorTime;

/// What the token provider makes of the certificates on a token, which come as they were written.
class TestTokenContents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void labels_data();
    void labels();
    void presumesKeysOfAFew();
    void readsTheSameIdentifiers_data();
    void readsTheSameIdentifiers();
    void findsIssuersByMeaning_data();
    void findsIssuersByMeaning();
    void endsKnots();
    void pairsInOrder();
    void pairsNothingWithoutAnId();
    void growsWithTheNumberOfKeys();
    void directoryCostsLittle();

private:
    QCA::Initializer m_initializer;
};

namespace {

/// The certificate, its entry, both with their reference counts, the digest and the entry's id.
constexpr qint64 MostAllocations = 16;

TokenCertificate certificateOf(const QByteArray &der)
{
    TokenCertificate certificate;
    certificate.der = der;
    certificate.parts = certificateParts(der);
    return certificate;
}

TokenCertificate certificateIn(const char *file)
{
    return certificateOf(Corpus::read(QString::fromLatin1(file)));
}

/// A certificate of one of two names, by its number and that of its issuer.
QByteArray knotted(int number, int issuer)
{
    using TrivexTest::derElement;
    const auto name = [](int of) {
        const QByteArray value = derElement(0x0C, of % 2 ? "odd" : "even");
        const QByteArray type = derElement(0x06, QByteArray::fromHex("550403"));
        return derElement(0x30, derElement(0x31, derElement(0x30, type + value)));
    };
    const auto extension = [](const char *oid, const QByteArray &value) {
        return derElement(0x30,
                          derElement(0x06, QByteArray::fromHex(oid)) + derElement(0x04, value));
    };
    const QByteArray algorithm = derElement(0x30, derElement(0x06, QByteArray::fromHex("2a03")));
    const QByteArray time = derElement(0x17, "200101000000Z");
    const QByteArray extensions = extension("551d0e", derElement(0x04, QByteArray::number(number)))
        + extension("551d23", derElement(0x30, derElement(0x80, QByteArray::number(issuer))));
    const QByteArray body = derElement(0x02, QByteArray::number(number)) + algorithm + name(issuer)
        + derElement(0x30, time + time) + name(number)
        + derElement(0x30, algorithm + derElement(0x03, QByteArray(4, '\0')))
        + derElement(0xA3, derElement(0x30, extensions));
    return derElement(0x30,
                      derElement(0x30, body) + algorithm + derElement(0x03, QByteArray(4, '\0')));
}

/// The key of a certificate, as a token shows it.
TokenKey keyOf(const TokenCertificate &certificate)
{
    TokenKey key;
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    key.publicInfo = QByteArray(info.constData(), info.size());
    return key;
}

} // namespace

// A card has a few certificates whose keys may hide; thousands are a directory of other people's.
void TestTokenContents::presumesKeysOfAFew()
{
    const QByteArray der = Corpus::read(QStringLiteral("string-utf8.der"));
    const auto withKeys = [&der](int number) {
        TokenObjects objects;
        objects.privateKeysHidden = true;
        for (int i = 0; i < number; ++i) {
            QByteArray another = der;
            another[another.size() - 1] = char(i); // of the signature
            another[another.size() - 2] = char(i >> 8);
            objects.certificates.push_back(certificateOf(another));
            objects.certificates.back().id = QByteArray::number(i);
        }
        const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
        return std::count_if(contents->entries.begin(), contents->entries.end(),
                             [](const auto &entry) { return entry->key != nullptr; });
    };
    QCOMPARE(int(withKeys(1)), 1);
    QCOMPARE(int(withKeys(100)), 100);
    QCOMPARE(int(withKeys(101)), 0);
}

void TestTokenContents::labels_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("label");
    const auto row = [](const char *file, const QString &label) {
        QTest::newRow(file) << QString::fromLatin1(file) << label;
    };
    row("string-utf8.der", QStringLiteral("Иванов Пётр €"));
    row("string-bmp.der", QStringLiteral("Иванов 日本"));
    row("string-t61.der", QStringLiteral("Müller Ärger"));
    row("string-t61-utf8.der", QStringLiteral("Кириллица в T61"));
    row("name-printable-utf8.der", QStringLiteral("Ёлка 3"));
    row("name-ia5-utf8.der", QStringLiteral("Ёлка 3"));
    row("string-bmp-surrogates.der", QStringLiteral("𝄞 clef"));
    row("string-visible.der", QStringLiteral("Visible ~ text"));
    row("name-primitive.der", QStringLiteral("Whole"));
    row("name-pieces.der", QStringLiteral("TwoPieces"));
    row("name-several.der", QStringLiteral("Third"));
    row("name-none.der", QString());
}

// The same text as QCA shows for the certificate.
void TestTokenContents::labels()
{
    QFETCH(QString, file);
    QFETCH(QString, label);
    const TokenCertificate certificate = certificateOf(Corpus::read(file));
    QVERIFY(certificate.parts.isValid());
    QCOMPARE(commonNameOf(certificate), label);
}

void TestTokenContents::readsTheSameIdentifiers_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file :
         {"extension-value-piece.der", "extension-value-pieces.der", "extension-pieces.der"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

// As the certificate's row shows them, also where they are written in pieces.
void TestTokenContents::readsTheSameIdentifiers()
{
    QFETCH(QString, file);
    const TokenCertificate certificate = certificateOf(Corpus::read(file));
    QVERIFY(certificate.parts.isValid());
    const auto shown = CertificateData::fromDer(certificate.der);
    QVERIFY(!shown->properties().subjectId.isEmpty());
    const Der::Slice extensions = certificate.parts.extensions.sliceIn(certificate.der);
    QCOMPARE(subjectKeyIdIn(extensions), shown->properties().subjectId);
    QCOMPARE(authorityKeyIdIn(extensions), shown->properties().issuerId);
    QCOMPARE(certificate.parts.isAuthority, shown->properties().isCA);
}

void TestTokenContents::findsIssuersByMeaning_data()
{
    QTest::addColumn<QString>("issuer");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("same octets") << QStringLiteral("name-issuer-same.der") << true;
    QTest::newRow("another type") << QStringLiteral("name-issuer-type.der") << true;
    QTest::newRow("other letters") << QStringLiteral("name-issuer-case.der") << true;
    QTest::newRow("another name") << QStringLiteral("name-issuer-other.der") << false;
}

void TestTokenContents::findsIssuersByMeaning()
{
    QFETCH(QString, issuer);
    QFETCH(bool, isFound);
    TokenObjects objects;
    objects.certificates = {certificateIn("name-issued.der"), certificateOf(Corpus::read(issuer))};
    objects.privateKeys = {keyOf(objects.certificates.front())};
    const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
    QCOMPARE(int(contents->entries.size()), 2);
    const TokenEntryPtr own = contents->entries.front();
    QVERIFY(own->key);
    QCOMPARE(int(own->issuers.size()), isFound ? 1 : 0);
    if (isFound)
        QCOMPARE(own->issuers.front()->der, objects.certificates.back().der);
}

// Each is the issuer of the next, in a circle, and all have the key that is there.
void TestTokenContents::endsKnots()
{
    constexpr int Count = 400;
    TokenObjects objects;
    for (int i = 0; i < Count; ++i)
        objects.certificates.push_back(certificateOf(knotted(i, (i + 1) % Count)));
    objects.privateKeys = {keyOf(objects.certificates.front())};
    const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
    QCOMPARE(int(contents->entries.size()), Count);
    for (const TokenEntryPtr &entry : contents->entries) {
        QVERIFY(entry->key);
        QCOMPARE(int(entry->issuers.size()), MaxChainLength - 1);
    }
    QCOMPARE(contents->entries.front()->issuers.front()->der, objects.certificates.at(1).der);
    // A circle that is shorter ends where it began.
    objects.certificates = {certificateOf(knotted(0, 1)), certificateOf(knotted(1, 0))};
    QCOMPARE(int(assembleContents(objects, QStringLiteral("store"))->entries[0]->issuers.size()),
             1);
}

namespace {

/// A pair of halves with one CKA_ID, as `count` of them may be on a token.
TokenObjects namesakes(int count)
{
    TokenObjects objects;
    const TokenCertificate certificate = certificateIn("name-issued.der");
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    for (int i = 0; i < count; ++i) {
        TokenKey half;
        half.id = QByteArray("id");
        half.privateObject = CK_OBJECT_HANDLE(1000000 + i);
        objects.privateKeys.push_back(half);
        half.privateObject = CK_INVALID_HANDLE;
        half.publicObject = CK_OBJECT_HANDLE(1 + i);
        half.publicInfo = info + QByteArray::number(i);
        objects.publicKeys.push_back(half);
    }
    return objects;
}

/// What it takes at best, of three times.
qint64 assembling(int count)
{
    const TokenObjects objects = namesakes(count);
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        const qint64 start = processorTime();
        assembleContents(objects, QStringLiteral("store"));
        best = std::min(best, processorTime() - start);
    }
    return best;
}

} // namespace

// Each public half finds a private one of its own, and what has none stays without.
void TestTokenContents::pairsInOrder()
{
    TokenObjects objects = namesakes(3);
    objects.publicKeys.erase(objects.publicKeys.begin());
    objects.privateKeys.front().type = CKK_EC;
    const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
    QCOMPARE(int(contents->keys.size()), 3);
    QSet<CK_OBJECT_HANDLE> publicHalves;
    for (const TokenKeyPtr &key : contents->keys)
        publicHalves.insert(key->publicObject);
    QCOMPARE(publicHalves, (QSet<CK_OBJECT_HANDLE>{CK_INVALID_HANDLE, 2, 3}));
}

// No id is no id in common: that key may be any other one's.
void TestTokenContents::pairsNothingWithoutAnId()
{
    TokenObjects objects;
    objects.certificates = {certificateIn("string-utf8.der")};
    TokenCertificate &certificate = objects.certificates.front();
    TokenKey key;
    key.type = CKK_RSA;
    key.privateObject = 1;
    objects.privateKeys = {key};
    const auto ownKey = [&objects] {
        return assembleContents(objects, QStringLiteral("store"))->entries.front()->key;
    };
    QVERIFY(!ownKey());
    certificate.id = objects.privateKeys.front().id = "7";
    QVERIFY(ownKey());
}

// Eight times the keys of one CKA_ID take about eight times as long; the square would be 64.
void TestTokenContents::growsWithTheNumberOfKeys()
{
    const qint64 few = assembling(4000);
    const qint64 many = assembling(32000);
    QVERIFY2(many < 24 * few,
             qPrintable(QStringLiteral("%1 and %2 us").arg(few / 1000).arg(many / 1000)));
}

// The certificates of other people, as a directory has them by the thousand: none has a key, so no
// name and no key is looked at.
void TestTokenContents::directoryCostsLittle()
{
    if (TrivexTest::allocations() < 0)
        QSKIP("the sanitizers count no allocations");
    constexpr int Certificates = 1000;
    TokenObjects objects;
    for (int i = 0; i < Certificates; ++i)
        objects.certificates.push_back(certificateOf(knotted(i, i + 1)));
    const qint64 before = TrivexTest::allocations();
    const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
    const qint64 each = (TrivexTest::allocations() - before) / Certificates;
    QCOMPARE(int(contents->entries.size()), Certificates);
    qInfo("%lld allocations a certificate", each);
    QVERIFY2(each <= MostAllocations, qPrintable(QString::number(each)));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestTokenContents test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tokencontents.moc"
