// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokencontents.h"
#include "tests/x509/corpus.h"

#include <QtTest>

#include <random>

using namespace Trivex;

namespace {

const QString Store = QStringLiteral("store");

QStringList idsOf(const TokenContentsPtr &contents)
{
    QStringList ids;
    for (const TokenEntryPtr &entry : contents->entries)
        ids.append(entry->id);
    return ids;
}

/// What shows of a token in the middle of its reading.
TokenContentsPtr partOf(const TokenObjects &objects, size_t read)
{
    TokenObjects part = objects;
    part.certificates.resize(read);
    return assemblePart(part, objects.certificates.size(), Store);
}

QByteArray publicInfoOf(const TokenCertificate &certificate)
{
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    return {info.constData(), info.size()};
}

TokenKey keyOf(const TokenCertificate &certificate)
{
    TokenKey key;
    key.publicInfo = publicInfoOf(certificate);
    key.privateObject = 7;
    return key;
}

} // namespace

/// The rows that a token shows while it is being read: nobody sees one that changes or goes when
/// the rest is read.
class TestTokenParts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void partsAreBeginnings();
    void authorityBeforeItsPerson();
    void authorityWithItsOwnKey();
    void keysOfMany();
    void nothingIsToldOfKeys();

private:
    /// One of few, so that many are alike.
    int any(int count) { return int(m_random() % unsigned(count)); }
    QByteArray anyId() { return any(4) == 0 ? QByteArray() : QByteArray::number(any(3)); }
    TokenKey anyKey(CK_OBJECT_HANDLE TokenKey::*half);
    TokenObjects anyObjects();

    QCA::Initializer m_initializer;
    std::mt19937 m_random{20261123};
    std::vector<TokenCertificate> m_certificates;
};

void TestTokenParts::initTestCase()
{
    const auto all = Corpus::certificates();
    for (const Corpus::Certificate &one : all) {
        TokenCertificate certificate;
        certificate.der = Corpus::read(one.file);
        certificate.parts = certificateParts(certificate.der);
        if (!certificate.parts.isValid())
            continue;
        certificate.parts.isAuthority = m_certificates.size() % 3 == 1;
        m_certificates.push_back(certificate);
        if (m_certificates.size() == 9)
            break;
    }
    QCOMPARE(int(m_certificates.size()), 9);
}

TokenKey TestTokenParts::anyKey(CK_OBJECT_HANDLE TokenKey::*half)
{
    TokenKey key;
    key.type = any(2) ? CKK_EC : CKK_RSA;
    key.id = anyId();
    key.label = QString::number(any(2));
    if (any(2))
        key.publicInfo = publicInfoOf(m_certificates[size_t(any(int(m_certificates.size())))]);
    key.*half = CK_OBJECT_HANDLE(1 + m_random() % 1000000);
    return key;
}

TokenObjects TestTokenParts::anyObjects()
{
    TokenObjects objects;
    objects.privateKeysHidden = any(2);
    objects.keysAreRemembered = objects.privateKeysHidden && any(3) == 0;
    for (int i = any(4); i > 0; --i)
        objects.privateKeys.push_back(anyKey(&TokenKey::privateObject));
    for (int i = any(4); i > 0; --i)
        objects.publicKeys.push_back(anyKey(&TokenKey::publicObject));
    for (int i = 1 + any(12); i > 0; --i) {
        TokenCertificate certificate = m_certificates[size_t(any(int(m_certificates.size())))];
        certificate.id = anyId();
        certificate.label = QString::number(any(2));
        objects.certificates.push_back(certificate);
    }
    return objects;
}

/// The same rows in the same order, with and without a key as in the end.
void TestTokenParts::partsAreBeginnings()
{
    int shown = 0;
    int bundles = 0;
    for (int round = 0; round < 2000; ++round) {
        const TokenObjects objects = anyObjects();
        const QStringList whole = idsOf(assembleContents(objects, Store));
        for (size_t read = 1; read < objects.certificates.size(); ++read) {
            const TokenContentsPtr part = partOf(objects, read);
            const QStringList ids = idsOf(part);
            QVERIFY2(ids == whole.mid(0, ids.size()),
                     qPrintable(QStringLiteral("round %1, %2 read").arg(round).arg(read)));
            shown += ids.size();
            bundles += int(ids.filter(QStringLiteral("-k-")).size());
        }
    }
    QVERIFY2(shown > 2000 && bundles > 500, qPrintable(QString::number(bundles)));
}

/// Of a key that is known by its id alone it can't be said whose it is before all are read.
void TestTokenParts::authorityBeforeItsPerson()
{
    TokenObjects objects;
    objects.certificates = {m_certificates[0], m_certificates[1], m_certificates[2]};
    for (TokenCertificate &one : objects.certificates)
        one.id = QByteArrayLiteral("1");
    TokenKey key;
    key.type = CKK_RSA;
    key.id = QByteArrayLiteral("1");
    key.privateObject = 7;
    objects.privateKeys = {key};
    QCOMPARE(int(partOf(objects, 2)->entries.size()), 1);
    std::swap(objects.certificates[0], objects.certificates[1]);
    QCOMPARE(int(partOf(objects, 2)->entries.size()), 0);
}

void TestTokenParts::authorityWithItsOwnKey()
{
    TokenObjects objects;
    objects.certificates = {m_certificates[1], m_certificates[0]};
    objects.privateKeys = {keyOf(m_certificates[1])};
    const TokenContentsPtr part = partOf(objects, 1);
    QCOMPARE(int(part->entries.size()), 1);
    QVERIFY(part->entries.front()->key);
}

/// A card of a few shows its presumed keys at once, a directory none.
void TestTokenParts::keysOfMany()
{
    TokenObjects objects;
    objects.privateKeysHidden = true;
    objects.certificates = {m_certificates[0], m_certificates[2]};
    for (TokenCertificate &one : objects.certificates)
        one.id = QByteArrayLiteral("1");
    const TokenContentsPtr few = assemblePart(objects, 100, Store);
    QCOMPARE(int(few->entries.size()), 2);
    QVERIFY(few->keysPresumed && few->entries.front()->key);
    QCOMPARE(int(assemblePart(objects, 101, Store)->entries.size()), 0);
    for (TokenCertificate &one : objects.certificates)
        one.id.clear();
    QCOMPARE(int(assemblePart(objects, 101, Store)->entries.size()), 2);
}

/// A key whose certificate comes later would count as one that may be removed alone.
void TestTokenParts::nothingIsToldOfKeys()
{
    TokenObjects objects;
    objects.certificates = {m_certificates[0], m_certificates[2]};
    objects.privateKeys = {keyOf(m_certificates[2])};
    const TokenContentsPtr part = partOf(objects, 1);
    QVERIFY(part->keys.empty() && part->keyFacts.isEmpty());
    QCOMPARE(int(assembleContents(objects, Store)->keyFacts.size()), 1);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestTokenParts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tokenparts.moc"
