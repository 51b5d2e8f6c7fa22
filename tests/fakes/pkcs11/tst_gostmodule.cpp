// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QDir>
#include <QLibrary>
#include <QProcess>
#include <QtTest>

#include <p11-kit/pkcs11.h>

#include <deque>

using namespace TrivexTest;

namespace {

constexpr CK_ULONG Tc26 = 0xD4321000;
const QByteArray CryptoProA = QByteArray::fromHex("06072a850302022301");
const QByteArray Set512A = QByteArray::fromHex("06092a8503070102010201");
const QByteArray Digest256 = QByteArray::fromHex("06082a85030701010202");
const QByteArray Digest512 = QByteArray::fromHex("06082a85030701010203");

/// A template that owns its bytes.
class Template {
public:
    Template &add(CK_ATTRIBUTE_TYPE type, const QByteArray &value)
    {
        m_values.push_back(value);
        m_attributes.push_back({type, m_values.back().data(), CK_ULONG(value.size())});
        return *this;
    }
    Template &number(CK_ATTRIBUTE_TYPE type, CK_ULONG value)
    {
        return add(type, QByteArray(reinterpret_cast<const char *>(&value), sizeof value));
    }
    Template &flag(CK_ATTRIBUTE_TYPE type, bool value)
    {
        return add(type, QByteArray(1, char(value)));
    }
    CK_ATTRIBUTE *data() { return m_attributes.data(); }
    CK_ULONG size() const { return CK_ULONG(m_attributes.size()); }

private:
    std::deque<QByteArray> m_values;
    std::vector<CK_ATTRIBUTE> m_attributes;
};

} // namespace

/// The GOST keys of the faulty module: what a real module refuses, it refuses.
class TestGostModule : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void listsItsMechanisms();
    void generatesForTheUserOnly();
    void refusesTemplates();
    void hidesPrivateObjects();
    void keepsTheSecret();
    void signsAsAsked();
    void importsKeys();

private:
    CK_SESSION_HANDLE open(bool writable = true);
    CK_RV logIn(CK_SESSION_HANDLE session);
    CK_RV generate(CK_SESSION_HANDLE session, const QByteArray &curve, const QByteArray &digest);
    QVector<CK_OBJECT_HANDLE> find(CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass);
    CK_RV beginSign(CK_SESSION_HANDLE session, CK_MECHANISM_TYPE type,
                    QByteArray parameter = QByteArray());

    std::unique_ptr<TestToken> m_token;
    CK_FUNCTION_LIST *m_module = nullptr;
    CK_SLOT_ID m_slot = 0;
    CK_OBJECT_HANDLE m_public = 0;
    CK_OBJECT_HANDLE m_private = 0;
};

void TestGostModule::initTestCase()
{
    if (!hasGostEngine())
        QSKIP("the openssl engine gost is not installed");
    m_token = std::make_unique<TestToken>(QStringLiteral("gost"));
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
    m_token->useInThisProcess();
    qputenv("TRIVEX_FAULTY_TARGET", TestToken::softHsmLibrary().toUtf8());
    qputenv("TRIVEX_FAULTY_GOST", m_token->path().toUtf8().append("/gost"));
    QLibrary library(qEnvironmentVariable("TRIVEX_FAULTY_MODULE"));
    const auto entry = reinterpret_cast<CK_C_GetFunctionList>(library.resolve("C_GetFunctionList"));
    QVERIFY(entry);
    QCOMPARE(entry(&m_module), CKR_OK);
    QCOMPARE(m_module->C_Initialize(nullptr), CKR_OK);
    CK_SLOT_ID slotIds[16];
    CK_ULONG count = 16;
    QCOMPARE(m_module->C_GetSlotList(CK_TRUE, slotIds, &count), CKR_OK);
    m_slot = slotIds[0];
}

void TestGostModule::cleanup()
{
    if (!m_module)
        return;
    const CK_SESSION_HANDLE session = open();
    logIn(session);
    for (const CK_OBJECT_CLASS objectClass : {CKO_PUBLIC_KEY, CKO_PRIVATE_KEY}) {
        const auto objects = find(session, objectClass);
        for (const CK_OBJECT_HANDLE object : objects)
            QCOMPARE(m_module->C_DestroyObject(session, object), CKR_OK);
    }
    QCOMPARE(m_module->C_CloseAllSessions(m_slot), CKR_OK);
}

void TestGostModule::cleanupTestCase()
{
    if (m_module)
        QCOMPARE(m_module->C_Finalize(nullptr), CKR_OK);
}

CK_SESSION_HANDLE TestGostModule::open(bool writable)
{
    CK_SESSION_HANDLE session = 0;
    m_module->C_OpenSession(m_slot, CKF_SERIAL_SESSION | (writable ? CKF_RW_SESSION : 0), nullptr,
                            nullptr, &session);
    return session;
}

CK_RV TestGostModule::logIn(CK_SESSION_HANDLE session)
{
    QByteArray pin = TestToken::pin();
    return m_module->C_Login(session, CKU_USER, reinterpret_cast<CK_UTF8CHAR *>(pin.data()),
                             CK_ULONG(pin.size()));
}

CK_RV TestGostModule::generate(CK_SESSION_HANDLE session, const QByteArray &curve,
                               const QByteArray &digest)
{
    Template publicPart;
    publicPart.flag(CKA_TOKEN, true).add(CKA_ID, "id");
    if (!curve.isEmpty())
        publicPart.add(CKA_GOSTR3410_PARAMS, curve);
    if (!digest.isEmpty())
        publicPart.add(CKA_GOSTR3411_PARAMS, digest);
    Template privatePart;
    privatePart.flag(CKA_TOKEN, true).flag(CKA_PRIVATE, true).add(CKA_ID, "id");
    const CK_MECHANISM_TYPE type =
        digest == Digest512 ? Tc26 | 0x005 : CK_MECHANISM_TYPE(CKM_GOSTR3410_KEY_PAIR_GEN);
    CK_MECHANISM mechanism = {type, nullptr, 0};
    return m_module->C_GenerateKeyPair(session, &mechanism, publicPart.data(), publicPart.size(),
                                       privatePart.data(), privatePart.size(), &m_public,
                                       &m_private);
}

QVector<CK_OBJECT_HANDLE> TestGostModule::find(CK_SESSION_HANDLE session,
                                               CK_OBJECT_CLASS objectClass)
{
    Template wanted;
    wanted.number(CKA_CLASS, objectClass);
    QVector<CK_OBJECT_HANDLE> objects(16);
    CK_ULONG count = 0;
    m_module->C_FindObjectsInit(session, wanted.data(), wanted.size());
    m_module->C_FindObjects(session, objects.data(), 16, &count);
    m_module->C_FindObjectsFinal(session);
    objects.resize(int(count));
    return objects;
}

CK_RV TestGostModule::beginSign(CK_SESSION_HANDLE session, CK_MECHANISM_TYPE type,
                                QByteArray parameter)
{
    CK_MECHANISM mechanism = {type, parameter.data(), CK_ULONG(parameter.size())};
    return m_module->C_SignInit(session, &mechanism, m_private);
}

void TestGostModule::listsItsMechanisms()
{
    CK_ULONG count = 0;
    QCOMPARE(m_module->C_GetMechanismList(m_slot, nullptr, &count), CKR_OK);
    QVector<CK_MECHANISM_TYPE> types(int{100});
    CK_ULONG room = count - 1;
    QCOMPARE(m_module->C_GetMechanismList(m_slot, types.data(), &room), CKR_BUFFER_TOO_SMALL);
    room = 100;
    QCOMPARE(m_module->C_GetMechanismList(m_slot, types.data(), &room), CKR_OK);
    QCOMPARE(room, count);
    CK_MECHANISM_INFO info{};
    for (const CK_MECHANISM_TYPE type : {Tc26 | 0x005, Tc26 | 0x006, Tc26 | 0x012}) {
        QVERIFY(types.contains(type));
        QCOMPARE(m_module->C_GetMechanismInfo(m_slot, type, &info), CKR_OK);
    }
    QVERIFY(types.contains(CKM_RSA_PKCS));
    QCOMPARE(m_module->C_GetMechanismInfo(m_slot, Tc26, &info), CKR_MECHANISM_INVALID);
}

void TestGostModule::generatesForTheUserOnly()
{
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(generate(session, CryptoProA, Digest256), CKR_USER_NOT_LOGGED_IN);
    QCOMPARE(logIn(session), CKR_OK);
    QCOMPARE(generate(open(false), CryptoProA, Digest256), CKR_SESSION_READ_ONLY);
    QCOMPARE(generate(session, CryptoProA, Digest256), CKR_OK);
    QCOMPARE(generate(session, Set512A, Digest512), CKR_OK);
    QCOMPARE(find(session, CKO_PRIVATE_KEY).size(), 2);
}

void TestGostModule::refusesTemplates()
{
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(logIn(session), CKR_OK);
    QCOMPARE(generate(session, {}, Digest256), CKR_TEMPLATE_INCOMPLETE);
    QCOMPARE(generate(session, CryptoProA, {}), CKR_TEMPLATE_INCOMPLETE);
    QCOMPARE(generate(session, "nonsense", Digest256), CKR_DOMAIN_PARAMS_INVALID);
    QCOMPARE(generate(session, Set512A, Digest256), CKR_DOMAIN_PARAMS_INVALID);
    Template key;
    key.number(CKA_CLASS, CKO_PUBLIC_KEY)
        .number(CKA_KEY_TYPE, CKK_GOSTR3410)
        .flag(CKA_TOKEN, true)
        .add(CKA_GOSTR3410_PARAMS, CryptoProA)
        .add(CKA_GOSTR3411_PARAMS, Digest256);
    const auto create = [&] {
        return m_module->C_CreateObject(session, key.data(), key.size(), &m_public);
    };
    QCOMPARE(create(), CKR_TEMPLATE_INCOMPLETE);
    key.add(CKA_VALUE, QByteArray(63, 'x'));
    QCOMPARE(create(), CKR_ATTRIBUTE_VALUE_INVALID);
    key.add(CKA_EC_PARAMS, CryptoProA);
    QCOMPARE(create(), CKR_ATTRIBUTE_TYPE_INVALID);
    QVERIFY(find(session, CKO_PUBLIC_KEY).isEmpty());
}

void TestGostModule::hidesPrivateObjects()
{
    const CK_SESSION_HANDLE session = open();
    logIn(session);
    QCOMPARE(generate(session, CryptoProA, Digest256), CKR_OK);
    QCOMPARE(m_module->C_Logout(session), CKR_OK);
    QCOMPARE(find(session, CKO_PUBLIC_KEY).size(), 1);
    QVERIFY(find(session, CKO_PRIVATE_KEY).isEmpty());
    CK_ATTRIBUTE id = {CKA_ID, nullptr, 0};
    QCOMPARE(m_module->C_GetAttributeValue(session, m_private, &id, 1), CKR_OBJECT_HANDLE_INVALID);
    QCOMPARE(m_module->C_DestroyObject(session, m_private), CKR_OBJECT_HANDLE_INVALID);
    QCOMPARE(beginSign(session, CKM_GOSTR3410), CKR_KEY_HANDLE_INVALID);
}

void TestGostModule::keepsTheSecret()
{
    const CK_SESSION_HANDLE session = open();
    logIn(session);
    QCOMPARE(generate(session, CryptoProA, Digest256), CKR_OK);
    QByteArray buffer(200, '\0');
    CK_ATTRIBUTE attributes[] = {{CKA_VALUE, buffer.data(), CK_ULONG(buffer.size())},
                                 {CKA_MODULUS, nullptr, 0}};
    QCOMPARE(m_module->C_GetAttributeValue(session, m_private, attributes, 1),
             CKR_ATTRIBUTE_SENSITIVE);
    QCOMPARE(attributes[0].ulValueLen, CK_ULONG(-1));
    QCOMPARE(m_module->C_GetAttributeValue(session, m_public, attributes + 1, 1),
             CKR_ATTRIBUTE_TYPE_INVALID);
    attributes[0].ulValueLen = 63;
    QCOMPARE(m_module->C_GetAttributeValue(session, m_public, attributes, 1), CKR_BUFFER_TOO_SMALL);
    attributes[0].ulValueLen = 200;
    QCOMPARE(m_module->C_GetAttributeValue(session, m_public, attributes, 1), CKR_OK);
    QCOMPARE(attributes[0].ulValueLen, CK_ULONG(64));
    Template change;
    change.flag(CKA_SENSITIVE, false);
    QCOMPARE(m_module->C_SetAttributeValue(session, m_private, change.data(), 1),
             CKR_ATTRIBUTE_READ_ONLY);
}

void TestGostModule::signsAsAsked()
{
    const CK_SESSION_HANDLE session = open();
    logIn(session);
    QCOMPARE(generate(session, CryptoProA, Digest256), CKR_OK);
    QCOMPARE(beginSign(session, Tc26 | 0x006), CKR_KEY_TYPE_INCONSISTENT);
    QCOMPARE(beginSign(session, CKM_GOSTR3410_WITH_GOSTR3411), CKR_KEY_TYPE_INCONSISTENT);
    QCOMPARE(beginSign(session, CKM_ECDSA), CKR_MECHANISM_INVALID);
    QCOMPARE(beginSign(session, CKM_GOSTR3410, Digest256), CKR_MECHANISM_PARAM_INVALID);
    QCOMPARE(beginSign(session, Tc26 | 0x008, Digest512), CKR_MECHANISM_PARAM_INVALID);
    QByteArray data(33, 'x');
    QByteArray signature(64, '\0');
    CK_ULONG size = 64;
    const auto sign = [&](int count, char *result) {
        return m_module->C_Sign(session, reinterpret_cast<CK_BYTE *>(data.data()), CK_ULONG(count),
                                reinterpret_cast<CK_BYTE *>(result), &size);
    };
    QCOMPARE(sign(32, signature.data()), CKR_OPERATION_NOT_INITIALIZED);
    QCOMPARE(beginSign(session, CKM_GOSTR3410), CKR_OK);
    QCOMPARE(sign(33, signature.data()), CKR_DATA_LEN_RANGE);
    QCOMPARE(beginSign(session, CKM_GOSTR3410), CKR_OK);
    size = 63;
    QCOMPARE(sign(32, signature.data()), CKR_BUFFER_TOO_SMALL);
    QCOMPARE(size, CK_ULONG(64));
    QCOMPARE(sign(32, nullptr), CKR_OK);
    QCOMPARE(sign(32, signature.data()), CKR_OK);
    QCOMPARE(sign(32, signature.data()), CKR_OPERATION_NOT_INITIALIZED);
    QCOMPARE(beginSign(session, Tc26 | 0x008, Digest256), CKR_OK);
    QCOMPARE(sign(33, signature.data()), CKR_OK);
}

void TestGostModule::importsKeys()
{
    const CK_SESSION_HANDLE session = open();
    Template key;
    key.number(CKA_CLASS, CKO_PRIVATE_KEY)
        .number(CKA_KEY_TYPE, Tc26 | 0x003)
        .flag(CKA_TOKEN, true)
        .add(CKA_GOSTR3410_PARAMS, Set512A)
        .add(CKA_GOSTR3411_PARAMS, Digest512)
        .add(CKA_VALUE, QByteArray(63, 'k').append('\x01'));
    const auto create = [&](CK_SESSION_HANDLE where) {
        return m_module->C_CreateObject(where, key.data(), key.size(), &m_private);
    };
    QCOMPARE(create(session), CKR_USER_NOT_LOGGED_IN);
    logIn(session);
    QCOMPARE(create(open(false)), CKR_SESSION_READ_ONLY);
    QCOMPARE(create(session), CKR_OK);
    CK_BBOOL isLocal = CK_TRUE;
    CK_ATTRIBUTE local = {CKA_LOCAL, &isLocal, sizeof isLocal};
    QCOMPARE(m_module->C_GetAttributeValue(session, m_private, &local, 1), CKR_OK);
    QCOMPARE(isLocal, CK_BBOOL(CK_FALSE));
    QCOMPARE(beginSign(session, Tc26 | 0x006), CKR_OK);
}

QTEST_GUILESS_MAIN(TestGostModule)
#include "tst_gostmodule.moc"
