// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/contents/tokenreader.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QSet>
#include <QtTest>

using namespace TrivexTest;
using Trivex::Pkcs11::AttributeReader;
using Trivex::Pkcs11::Module;
using Trivex::Pkcs11::ModulePtr;
using Trivex::Pkcs11::Session;

namespace {

/// Every attribute that the token library reads, with the buffer that it gives first.
struct Attribute {
    CK_ATTRIBUTE_TYPE type;
    const char *name;
    CK_OBJECT_CLASS objectClass;
    CK_KEY_TYPE keyType;
    size_t buffer;
    bool isFixed;
};

constexpr CK_KEY_TYPE NoKey = CKK_VENDOR_DEFINED;

constexpr Attribute Attributes[] = {
    {CKA_CLASS, "class", CKO_CERTIFICATE, NoKey, sizeof(CK_ULONG), true},
    {CKA_CERTIFICATE_TYPE, "certificate type", CKO_CERTIFICATE, NoKey, sizeof(CK_ULONG), true},
    {CKA_VALUE, "value", CKO_CERTIFICATE, NoKey, 16384, false},
    {CKA_ID, "id", CKO_CERTIFICATE, NoKey, 256, false},
    {CKA_LABEL, "label", CKO_CERTIFICATE, NoKey, 1024, false},
    {CKA_KEY_TYPE, "key type", CKO_PRIVATE_KEY, CKK_RSA, sizeof(CK_ULONG), true},
    {CKA_LOCAL, "made here", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_SIGN, "signs", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_DECRYPT, "decrypts", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_DERIVE, "derives", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_UNWRAP, "unwraps", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_EXTRACTABLE, "leaves", CKO_PRIVATE_KEY, CKK_RSA, 2, true},
    {CKA_MODULUS, "modulus", CKO_PRIVATE_KEY, CKK_RSA, 1024, false},
    {CKA_PUBLIC_EXPONENT, "exponent", CKO_PRIVATE_KEY, CKK_RSA, 64, false},
    {CKA_ALWAYS_AUTHENTICATE, "always authenticate", CKO_PRIVATE_KEY, CKK_RSA, 1, true},
    {CKA_EC_PARAMS, "curve", CKO_PUBLIC_KEY, CKK_EC, 256, false},
    {CKA_EC_POINT, "point", CKO_PUBLIC_KEY, CKK_EC, 256, false},
};

/// What must come of a lie.
enum Outcome { Truth, Padded, Zeros, None, TooLarge };

struct Lie {
    const char *order; ///< count, kind, size
    Outcome outcome;
    Outcome fixed; ///< of an attribute whose size is fixed
};

constexpr int PaddedSize = 40000;

constexpr Lie Lies[] = {
    {"* needs 40000", Padded, None},
    {"* larger 40000", Padded, None},
    {"* needs 1048577", TooLarge, TooLarge},
    {"* larger 4294967297", TooLarge, TooLarge},
    {"1 beyond 1", Truth, Truth},
    {"* beyond 1", None, None},
    {"* beyond 100000", None, None},
    {"* beyond 2000000", TooLarge, TooLarge},
    {"1 huge", Truth, Truth},
    {"* huge", TooLarge, TooLarge},
    {"1 nothing", Truth, Truth},
    {"* nothing", None, None},
    {"* grows", None, None},
    {"* moved", Truth, Truth},
    {"* sensitive", None, None},
    {"1 sensitive", Truth, Truth},
    {"* invalid", None, None},
    {"* empty", None, None},
    {"* untouched", Zeros, Zeros},
    {"* stops", Truth, Truth},
};

QByteArray raw(const Session &session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    QByteArray value(20000, '\0');
    CK_ATTRIBUTE attribute = {type, value.data(), CK_ULONG(value.size())};
    if (session.module()->C_GetAttributeValue(session.handle(), object, &attribute, 1) != CKR_OK)
        return {};
    value.truncate(int(attribute.ulValueLen));
    return value;
}

} // namespace

/// Nothing that a module says of lengths and counts is believed.
class TestAttributes : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { m_token->control(); }
    void lies_data();
    void lies();
    void readers_data();
    void readers();
    void everyAttributeIsInTheTable();
    void searches_data();
    void searches();
    void cleanupTestCase();

private:
    CK_OBJECT_HANDLE objectOf(const Attribute &attribute) const;

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<Session> m_session;
    size_t m_certificates = 0;
    size_t m_keys = 0;
};

void TestAttributes::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(QStringLiteral("Lies"));
    TestToken &token = m_token->token();
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.isValid(), qPrintable(token.problem()));
    TestAuthority authority;
    for (const char *type : {"rsa:2048", "EC:secp384r1"}) {
        const QString id = QStringLiteral("0%1").arg(++m_keys);
        QVERIFY(token.generateKeyPair(QLatin1String(type), id, QStringLiteral("key")));
        QVERIFY(token.writeObject(QStringLiteral("cert"),
                                  authority.issue(token.publicKey(id), QStringLiteral("/CN=One")),
                                  id, QStringLiteral("certificate")));
        ++m_certificates;
    }
    m_token->useInThisProcess();
    Trivex::Pkcs11::ModuleSource source;
    source.key = source.library = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
    const ModulePtr module = Module::open(source);
    CK_SLOT_ID slots[16];
    CK_ULONG count = 16;
    QCOMPARE((*module)->C_GetSlotList(CK_TRUE, slots, &count), CKR_OK);
    m_session = std::make_unique<Session>(module, slots[0], Session::ReadOnly);
    QByteArray pin = TestToken::pin();
    QCOMPARE((*module)->C_Login(m_session->handle(), CKU_USER,
                                reinterpret_cast<CK_UTF8CHAR *>(pin.data()), CK_ULONG(pin.size())),
             CKR_OK);
}

void TestAttributes::cleanupTestCase()
{
    m_session.reset();
}

CK_OBJECT_HANDLE TestAttributes::objectOf(const Attribute &attribute) const
{
    for (const auto object : Trivex::Pkcs11::findObjects(*m_session, attribute.objectClass)) {
        AttributeReader reader({{CKA_KEY_TYPE, sizeof(CK_KEY_TYPE)}});
        reader.read(*m_session, object);
        if (reader.number(0, NoKey) == attribute.keyType)
            return object;
    }
    return CK_INVALID_HANDLE;
}

void TestAttributes::lies_data()
{
    QTest::addColumn<int>("attribute");
    QTest::addColumn<int>("lie");
    for (size_t i = 0; i < std::size(Attributes); ++i) {
        for (size_t j = 0; j < std::size(Lies); ++j)
            QTest::addRow("%s, %s", Attributes[i].name, Lies[j].order) << int(i) << int(j);
    }
}

void TestAttributes::lies()
{
    QFETCH(int, attribute);
    QFETCH(int, lie);
    const Attribute &asked = Attributes[attribute];
    const Lie &told = Lies[lie];
    const CK_OBJECT_HANDLE object = objectOf(asked);
    QVERIFY(object != CK_INVALID_HANDLE);
    const QByteArray truth = raw(*m_session, object, asked.type);
    QVERIFY(!truth.isEmpty());
    AttributeReader reader({{CKA_PRIVATE, sizeof(CK_BBOOL)},
                            {asked.type, asked.buffer},
                            {CKA_TOKEN, sizeof(CK_BBOOL)}});
    // What is left of one object must not show as another one's.
    reader.read(*m_session, object);
    QCOMPARE(reader.value(1), truth);
    m_token->control("lie 0x" + QByteArray::number(quint64(asked.type), 16) + ' ' + told.order);
    reader.read(*m_session, object);
    const Outcome outcome = asked.isFixed ? told.fixed : told.outcome;
    const QByteArray padding(PaddedSize - truth.size(), '\0');
    const QByteArray expected = outcome == Truth ? truth
        : outcome == Padded                      ? truth + padding
        : outcome == Zeros                       ? QByteArray(int(asked.buffer), '\0')
                                                 : QByteArray();
    if (!asked.isFixed || outcome != None)
        QCOMPARE(reader.value(1), expected);
    QCOMPARE(reader.isTooLarge(1), outcome == TooLarge);
    if (asked.isFixed && outcome != Truth && outcome != Zeros) {
        QCOMPARE(reader.number(1, 4711), CK_ULONG(4711));
        QVERIFY(reader.flag(1, true));
    }
    // The others are what they are.
    QCOMPARE(reader.flag(0, asked.objectClass != CKO_PRIVATE_KEY),
             asked.objectClass == CKO_PRIVATE_KEY);
    QCOMPARE(reader.flag(2, false), true);
}

void TestAttributes::readers_data()
{
    lies_data();
}

/// What is made of the attributes: never a certificate or key that is not there, and all of them
/// again afterwards.
void TestAttributes::readers()
{
    QFETCH(int, attribute);
    QFETCH(int, lie);
    const auto before = Trivex::readCertificates(*m_session, Trivex::CertificateChoice::All);
    QCOMPARE(before.size(), m_certificates);
    Trivex::TokenObjects objects;
    m_token->control("lie 0x" + QByteArray::number(quint64(Attributes[attribute].type), 16) + ' '
                     + Lies[lie].order);
    const auto told = Trivex::readCertificates(*m_session, Trivex::CertificateChoice::All);
    Trivex::readKeys(*m_session, &objects);
    for (const Trivex::TokenCertificate &one : told) {
        const bool isTrue =
            std::any_of(before.begin(), before.end(), [&one](const Trivex::TokenCertificate &two) {
                return one.der.startsWith(two.der);
            });
        QVERIFY(isTrue);
    }
    QVERIFY(told.size() <= m_certificates);
    QVERIFY(objects.publicKeys.size() == m_keys && objects.privateKeys.size() == m_keys);
    Trivex::assembleContents(objects, QStringLiteral("store"));
    m_token->control();
    Trivex::readKeys(*m_session, &objects);
    objects.certificates = Trivex::readCertificates(*m_session, Trivex::CertificateChoice::All);
    const auto contents = Trivex::assembleContents(objects, QStringLiteral("store"));
    QCOMPARE(contents->entries.size(), m_certificates);
    for (const auto &entry : contents->entries)
        QVERIFY(entry->key && entry->key->privateObject != CK_INVALID_HANDLE);
}

/// So that an attribute that is read one day is lied about as well.
void TestAttributes::everyAttributeIsInTheTable()
{
    m_token->forget();
    Trivex::TokenObjects objects;
    Trivex::readCertificates(*m_session, Trivex::CertificateChoice::All);
    Trivex::readKeys(*m_session, &objects);
    QSet<QByteArray> known;
    for (const Attribute &one : Attributes)
        known.insert("0x" + QByteArray::number(quint64(one.type), 16));
    const QList<QByteArray> asked = m_token->attributesAsked();
    QVERIFY(asked.size() > 6);
    for (const QByteArray &type : asked)
        QVERIFY2(known.contains(type), type.constData());
}

void TestAttributes::searches_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<bool>("isWhole");
    QTest::newRow("one more than there is room for")
        << QByteArray("report C_FindObjects 1 4097") << true;
    QTest::newRow("huge") << QByteArray("report C_FindObjects 1 18446744073709551614") << true;
    QTest::newRow("never an end") << QByteArray("report C_FindObjects * 4096") << true;
    QTest::newRow("none") << QByteArray("report C_FindObjects * 0") << false;
}

void TestAttributes::searches()
{
    QFETCH(QByteArray, order);
    QFETCH(bool, isWhole);
    const auto truth = Trivex::Pkcs11::findObjects(*m_session, CKO_CERTIFICATE);
    m_token->control(order);
    const auto told = Trivex::Pkcs11::findObjects(*m_session, CKO_CERTIFICATE);
    QCOMPARE(told, isWhole ? truth : std::vector<CK_OBJECT_HANDLE>());
}

QTEST_GUILESS_MAIN(TestAttributes)
#include "tst_attributes.moc"
