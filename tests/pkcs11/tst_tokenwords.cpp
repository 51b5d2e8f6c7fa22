// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/returnvalues.h"
#include "providers/pkcs11/contents/tokenidentity.h"
#include "providers/pkcs11/contents/tokenlook.h"
#include "providers/pkcs11/contents/tokentext.h"
#include "providers/pkcs11/life/tokenflags.h"

#include <QtTest>

#include <algorithm>
#include <cstring>
#include <vector>

using namespace Trivex;

namespace {

struct Code {
    CK_RV value;
    const char *name;
};

#define R(name)                                                                                    \
    {                                                                                              \
        name, #name                                                                                \
    }
// From the header where it has them right, so that numbers and names are not only ours.
const Code Known[] = {
    R(CKR_OK),
    R(CKR_CANCEL),
    R(CKR_HOST_MEMORY),
    R(CKR_SLOT_ID_INVALID),
    R(CKR_GENERAL_ERROR),
    R(CKR_FUNCTION_FAILED),
    R(CKR_ARGUMENTS_BAD),
    R(CKR_NO_EVENT),
    R(CKR_NEED_TO_CREATE_THREADS),
    R(CKR_CANT_LOCK),
    R(CKR_ATTRIBUTE_READ_ONLY),
    R(CKR_ATTRIBUTE_SENSITIVE),
    R(CKR_ATTRIBUTE_TYPE_INVALID),
    R(CKR_ATTRIBUTE_VALUE_INVALID),
    R(CKR_ACTION_PROHIBITED),
    R(CKR_DATA_INVALID),
    R(CKR_DATA_LEN_RANGE),
    R(CKR_DEVICE_ERROR),
    R(CKR_DEVICE_MEMORY),
    R(CKR_DEVICE_REMOVED),
    R(CKR_ENCRYPTED_DATA_INVALID),
    R(CKR_ENCRYPTED_DATA_LEN_RANGE),
    R(CKR_FUNCTION_CANCELED),
    R(CKR_FUNCTION_NOT_PARALLEL),
    R(CKR_FUNCTION_NOT_SUPPORTED),
    R(CKR_KEY_HANDLE_INVALID),
    R(CKR_KEY_SIZE_RANGE),
    R(CKR_KEY_TYPE_INCONSISTENT),
    R(CKR_KEY_NOT_NEEDED),
    R(CKR_KEY_CHANGED),
    R(CKR_KEY_NEEDED),
    R(CKR_KEY_INDIGESTIBLE),
    R(CKR_KEY_FUNCTION_NOT_PERMITTED),
    R(CKR_KEY_NOT_WRAPPABLE),
    R(CKR_KEY_UNEXTRACTABLE),
    R(CKR_MECHANISM_INVALID),
    R(CKR_MECHANISM_PARAM_INVALID),
    R(CKR_OBJECT_HANDLE_INVALID),
    R(CKR_OPERATION_ACTIVE),
    R(CKR_OPERATION_NOT_INITIALIZED),
    R(CKR_PIN_INCORRECT),
    R(CKR_PIN_INVALID),
    R(CKR_PIN_LEN_RANGE),
    R(CKR_PIN_EXPIRED),
    R(CKR_PIN_LOCKED),
    R(CKR_SESSION_CLOSED),
    R(CKR_SESSION_COUNT),
    R(CKR_SESSION_HANDLE_INVALID),
    R(CKR_SESSION_PARALLEL_NOT_SUPPORTED),
    R(CKR_SESSION_READ_ONLY),
    R(CKR_SESSION_EXISTS),
    R(CKR_SESSION_READ_ONLY_EXISTS),
    R(CKR_SESSION_READ_WRITE_SO_EXISTS),
    R(CKR_SIGNATURE_INVALID),
    R(CKR_SIGNATURE_LEN_RANGE),
    R(CKR_TEMPLATE_INCOMPLETE),
    R(CKR_TEMPLATE_INCONSISTENT),
    R(CKR_TOKEN_NOT_PRESENT),
    R(CKR_TOKEN_NOT_RECOGNIZED),
    R(CKR_TOKEN_WRITE_PROTECTED),
    R(CKR_UNWRAPPING_KEY_HANDLE_INVALID),
    R(CKR_UNWRAPPING_KEY_SIZE_RANGE),
    R(CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT),
    R(CKR_USER_ALREADY_LOGGED_IN),
    R(CKR_USER_NOT_LOGGED_IN),
    R(CKR_USER_PIN_NOT_INITIALIZED),
    R(CKR_USER_TYPE_INVALID),
    R(CKR_USER_ANOTHER_ALREADY_LOGGED_IN),
    R(CKR_USER_TOO_MANY_TYPES),
    R(CKR_WRAPPED_KEY_INVALID),
    R(CKR_WRAPPED_KEY_LEN_RANGE),
    R(CKR_WRAPPING_KEY_HANDLE_INVALID),
    R(CKR_WRAPPING_KEY_SIZE_RANGE),
    R(CKR_WRAPPING_KEY_TYPE_INCONSISTENT),
    R(CKR_RANDOM_SEED_NOT_SUPPORTED),
    R(CKR_RANDOM_NO_RNG),
    R(CKR_DOMAIN_PARAMS_INVALID),
    R(CKR_CURVE_NOT_SUPPORTED),
    R(CKR_BUFFER_TOO_SMALL),
    R(CKR_SAVED_STATE_INVALID),
    R(CKR_INFORMATION_SENSITIVE),
    R(CKR_STATE_UNSAVEABLE),
    R(CKR_CRYPTOKI_NOT_INITIALIZED),
    R(CKR_CRYPTOKI_ALREADY_INITIALIZED),
    R(CKR_MUTEX_BAD),
    R(CKR_MUTEX_NOT_LOCKED),
    R(CKR_NEW_PIN_MODE),
    R(CKR_NEXT_OTP),
    {0x1b5, "CKR_EXCEEDED_MAX_ITERATIONS"},
    {0x1b6, "CKR_FIPS_SELF_TEST_FAILED"},
    {0x1b7, "CKR_LIBRARY_LOAD_FAILED"},
    {0x1b8, "CKR_PIN_TOO_WEAK"},
    {0x1b9, "CKR_PUBLIC_KEY_INVALID"},
    R(CKR_FUNCTION_REJECTED),
    {0x42, "CKR_AEAD_DECRYPT_FAILED"},
    {0x201, "CKR_TOKEN_RESOURCE_EXCEEDED"},
    {0x202, "CKR_OPERATION_CANCEL_FAILED"},
};
#undef R

struct Expectation {
    TokenError::Kind kind;
    std::vector<CK_RV> codes;
};

// What a person is told, by what the standard says of each code.
const Expectation Expected[] = {
    {TokenError::NoError, {CKR_OK}},
    // The person, or who acts for him, has refused.
    {TokenError::Cancelled, {CKR_CANCEL, CKR_FUNCTION_CANCELED, CKR_FUNCTION_REJECTED}},
    // What was there is gone, or the module's whole state with it.
    {TokenError::TokenRemoved,
     {CKR_SLOT_ID_INVALID, CKR_DEVICE_REMOVED, CKR_TOKEN_NOT_PRESENT,
      CKR_CRYPTOKI_NOT_INITIALIZED}},
    {TokenError::TokenFull, {CKR_DEVICE_MEMORY}},
    // A limit of sessions or of users, until another program lets go.
    {TokenError::TokenInUse,
     {CKR_SESSION_COUNT, CKR_SESSION_EXISTS, CKR_SESSION_READ_ONLY_EXISTS,
      CKR_SESSION_READ_WRITE_SO_EXISTS, CKR_USER_ANOTHER_ALREADY_LOGGED_IN, CKR_USER_TOO_MANY_TYPES,
      0x201}},
    {TokenError::ReadOnly,
     {CKR_ACTION_PROHIBITED, CKR_SESSION_READ_ONLY, CKR_TOKEN_WRITE_PROTECTED}},
    {TokenError::WrongPin, {CKR_PIN_INCORRECT, CKR_PIN_INVALID, CKR_PIN_LEN_RANGE}},
    {TokenError::PinLocked, {CKR_PIN_LOCKED}},
    // Right, but to be replaced first.
    {TokenError::PinExpired, {CKR_PIN_EXPIRED, CKR_NEW_PIN_MODE, CKR_NEXT_OTP, 0x1b8}},
    {TokenError::PinNotSet, {CKR_USER_PIN_NOT_INITIALIZED}},
    {TokenError::NotLoggedIn, {CKR_USER_NOT_LOGGED_IN}},
    // A handle that names nothing, or no longer the same.
    {TokenError::NotFound,
     {CKR_KEY_HANDLE_INVALID, CKR_KEY_CHANGED, CKR_OBJECT_HANDLE_INVALID,
      CKR_UNWRAPPING_KEY_HANDLE_INVALID, CKR_WRAPPING_KEY_HANDLE_INVALID}},
    // The input, not the key, is at fault.
    {TokenError::DataRefused,
     {CKR_DATA_INVALID, CKR_DATA_LEN_RANGE, CKR_ENCRYPTED_DATA_INVALID,
      CKR_ENCRYPTED_DATA_LEN_RANGE, 0x42, CKR_SIGNATURE_INVALID, CKR_SIGNATURE_LEN_RANGE,
      CKR_WRAPPED_KEY_INVALID, CKR_WRAPPED_KEY_LEN_RANGE}},
    // The token works, and does not do this.
    {TokenError::NotSupported,
     {CKR_ARGUMENTS_BAD,
      CKR_ATTRIBUTE_READ_ONLY,
      CKR_ATTRIBUTE_SENSITIVE,
      CKR_ATTRIBUTE_TYPE_INVALID,
      CKR_ATTRIBUTE_VALUE_INVALID,
      CKR_FUNCTION_NOT_SUPPORTED,
      CKR_KEY_SIZE_RANGE,
      CKR_KEY_TYPE_INCONSISTENT,
      CKR_KEY_NOT_NEEDED,
      CKR_KEY_NEEDED,
      CKR_KEY_INDIGESTIBLE,
      CKR_KEY_FUNCTION_NOT_PERMITTED,
      CKR_KEY_NOT_WRAPPABLE,
      CKR_KEY_UNEXTRACTABLE,
      CKR_MECHANISM_INVALID,
      CKR_MECHANISM_PARAM_INVALID,
      CKR_SESSION_PARALLEL_NOT_SUPPORTED,
      CKR_TEMPLATE_INCOMPLETE,
      CKR_TEMPLATE_INCONSISTENT,
      CKR_UNWRAPPING_KEY_SIZE_RANGE,
      CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT,
      CKR_USER_TYPE_INVALID,
      CKR_WRAPPING_KEY_SIZE_RANGE,
      CKR_WRAPPING_KEY_TYPE_INCONSISTENT,
      CKR_RANDOM_SEED_NOT_SUPPORTED,
      CKR_RANDOM_NO_RNG,
      CKR_DOMAIN_PARAMS_INVALID,
      CKR_CURVE_NOT_SUPPORTED,
      CKR_INFORMATION_SENSITIVE,
      CKR_STATE_UNSAVEABLE,
      0x1b5,
      0x1b9}},
    // The module, the device or the order of calls has failed.
    {TokenError::DeviceFailure,
     {CKR_HOST_MEMORY,
      CKR_GENERAL_ERROR,
      CKR_FUNCTION_FAILED,
      CKR_NO_EVENT,
      CKR_NEED_TO_CREATE_THREADS,
      CKR_CANT_LOCK,
      CKR_DEVICE_ERROR,
      CKR_FUNCTION_NOT_PARALLEL,
      CKR_OPERATION_ACTIVE,
      CKR_OPERATION_NOT_INITIALIZED,
      CKR_SESSION_CLOSED,
      CKR_SESSION_HANDLE_INVALID,
      CKR_TOKEN_NOT_RECOGNIZED,
      CKR_USER_ALREADY_LOGGED_IN,
      CKR_BUFFER_TOO_SMALL,
      CKR_SAVED_STATE_INVALID,
      CKR_CRYPTOKI_ALREADY_INITIALIZED,
      CKR_MUTEX_BAD,
      CKR_MUTEX_NOT_LOCKED,
      0x1b6,
      0x1b7,
      0x202}},
};

} // namespace

/// What a token's codes and texts mean.
class TestTokenWords : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyCodeHasItsName();
    void everyCodeHasOneKind();
    void kinds_data();
    void kinds();
    void texts_data();
    void texts();
    void usable_data();
    void usable();
    void pinLengths_data();
    void pinLengths();
    void statusFollowsFlags();
    void identity();
    void identityIsOnePlainLine();
    void sizesOfMadeKeys();
    void otherGenerationsDoNotCount();
    void otherSignaturesDoNotCount();
};

void TestTokenWords::everyCodeHasItsName()
{
    for (const Code &one : Known)
        QCOMPARE(Pkcs11::returnValueName(one.value), QString::fromLatin1(one.name));
    QCOMPARE(Pkcs11::returnValueName(0x80000001), QStringLiteral("0x80000001"));
    int named = 0;
    for (CK_RV value = 0; value < 0x1000; ++value)
        named += Pkcs11::returnValueName(value).startsWith(QLatin1String("CKR_")) ? 1 : 0;
    QCOMPARE(named, int(std::size(Known)));
}

void TestTokenWords::everyCodeHasOneKind()
{
    for (const Code &one : Known) {
        int count = 0;
        for (const Expectation &expected : Expected)
            count += int(std::count(expected.codes.begin(), expected.codes.end(), one.value));
        QVERIFY2(count == 1, one.name);
    }
}

void TestTokenWords::kinds_data()
{
    QTest::addColumn<unsigned long>("code");
    QTest::addColumn<int>("kind");
    const auto row = [](const char *name, unsigned long code, TokenError::Kind kind) {
        QTest::newRow(name) << code << int(kind);
    };
    for (const Expectation &expected : Expected) {
        for (const CK_RV code : expected.codes)
            row(qPrintable(Pkcs11::returnValueName(code)), code, expected.kind);
    }
    row("maker's own", 0x80000001, TokenError::DeviceFailure);
    row("not of the standard", 0xFFF, TokenError::DeviceFailure);
}

void TestTokenWords::kinds()
{
    QFETCH(unsigned long, code);
    QFETCH(int, kind);
    QCOMPARE(int(Pkcs11::kindOf(code)), kind);
}

void TestTokenWords::texts_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &field, const char *text) {
        QTest::newRow(name) << field << QString::fromUtf8(text);
    };
    row("blanks", "Token     ", "Token");
    row("zeros", QByteArray("Token\0\0\0", 8), "Token");
    row("whole", "Ключ", "Ключ");
    row("half of two", "Клю\xd1", "Клю");
    row("half of two, padded", "Клю\xd1   ", "Клю");
    row("half of two, zeros", QByteArray("Клю\xd1\0\0", 9), "Клю");
    row("one of three", "a\xe2", "a");
    row("two of three", "a\xe2\x82", "a");
    row("three of three", "a\xe2\x82\xac", "a€");
    row("three of four", "a\xf0\x9f\x94", "a");
    row("four of four", "a\xf0\x9f\x94\x91", "a🔑");
    row("nothing but a half", "\xd1", "");
    row("nothing", "", "");
    row("not UTF-8 elsewhere", "\xd1 a", "\xef\xbf\xbd a");
    row("too many ends", "a\x80\x80\x80\x80\x80",
        "a\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd");
}

void TestTokenWords::texts()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, text);
    QCOMPARE(tokenText(field), text);
}

void TestTokenWords::usable_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<unsigned long>("flags");
    QTest::addColumn<unsigned long>("shortestPin");
    QTest::addColumn<unsigned long>("longestPin");
    QTest::addColumn<bool>("isUsable");
    const unsigned long random = CKF_RNG;
    const unsigned long waits = CKF_LOGIN_REQUIRED;
    const unsigned long made = CKF_TOKEN_INITIALIZED;
    QTest::newRow("made") << QByteArray("Card") << (random | waits | made) << 4UL << 8UL << true;
    QTest::newRow("made, without a name")
        << QByteArray() << (random | waits | made) << 4UL << 8UL << true;
    QTest::newRow("database of NSS without a PIN")
        << QByteArray("NSS Certificate DB") << (random | waits) << 0UL << 500UL << true;
    QTest::newRow("blank TPM") << QByteArray() << (random | waits) << 0UL << 128UL << false;
    QTest::newRow("blank TPM, zeros")
        << QByteArray(32, '\0') << (random | waits) << 0UL << 128UL << false;
    QTest::newRow("blank SoftHSM") << QByteArray() << (random | waits) << 4UL << 255UL << false;
}

/// A blank token is none: nobody has given it a name, and it would take an administrator without a
/// PIN.
void TestTokenWords::usable()
{
    QFETCH(QByteArray, label);
    QFETCH(unsigned long, flags);
    QFETCH(unsigned long, shortestPin);
    QFETCH(unsigned long, longestPin);
    CK_TOKEN_INFO info = {};
    std::memset(info.label, ' ', sizeof info.label);
    std::memcpy(info.label, label.constData(), size_t(label.size()));
    std::memset(info.serialNumber, '0', sizeof info.serialNumber);
    info.flags = flags;
    info.ulMinPinLen = shortestPin;
    info.ulMaxPinLen = longestPin;
    QTEST(Trivex::isUsable(info), "isUsable");
}

void TestTokenWords::pinLengths_data()
{
    QTest::addColumn<unsigned long>("told");
    QTest::addColumn<unsigned long>("toldLongest");
    QTest::addColumn<int>("shortest");
    QTest::addColumn<int>("longest");
    QTest::newRow("card") << 4UL << 8UL << 4 << 8;
    QTest::newRow("one length") << 6UL << 6UL << 6 << 6;
    QTest::newRow("longest that is believed") << 4096UL << 4096UL << 4096 << 4096;
    QTest::newRow("one more") << 4097UL << 4097UL << 0 << 0;
    QTest::newRow("no information") << 4UL << CK_ULONG(CK_UNAVAILABLE_INFORMATION) << 4 << 0;
    QTest::newRow("no number at all") << ~0UL << ~0UL << 0 << 0;
    QTest::newRow("the wrong way round") << 8UL << 4UL << 8 << 0;
}

/// A dialog refuses what does not fit, so a token that tells nonsense must not lock one out.
void TestTokenWords::pinLengths()
{
    QFETCH(unsigned long, told);
    QFETCH(unsigned long, toldLongest);
    CK_TOKEN_INFO info = {};
    info.ulMinPinLen = told;
    info.ulMaxPinLen = toldLongest;
    const TokenFlags flags = flagsOf(info);
    QTEST(flags.shortestPin, "shortest");
    QTEST(flags.longestPin, "longest");
}

/// Whatever changes is told of once and shown; nothing else changes with it.
void TestTokenWords::statusFollowsFlags()
{
    TokenStatus status;
    const auto look = [&status](CK_FLAGS tokenFlags, CK_ULONG shortest, CK_ULONG longest) {
        CK_TOKEN_INFO info = {};
        info.flags = tokenFlags | CKF_TOKEN_INITIALIZED | CKF_USER_PIN_INITIALIZED;
        info.ulMinPinLen = shortest;
        info.ulMaxPinLen = longest;
        const bool isOther = applyFlags(flagsOf(info), &status);
        // A second look finds the same.
        return isOther && !applyFlags(flagsOf(info), &status);
    };
    QVERIFY(look(0, 4, 8));
    QCOMPARE(status.shortestPin, 4);
    QCOMPARE(status.longestPin, 8);
    QVERIFY(!status.pinMayBeEmpty && !status.pinToBeChanged && !status.hasPinPad);
    QVERIFY(look(0, 5, 8));
    QCOMPARE(status.shortestPin, 5);
    QVERIFY(look(0, 5, 9));
    QCOMPARE(status.longestPin, 9);
    QVERIFY(look(CKF_USER_PIN_TO_BE_CHANGED, 5, 9));
    QVERIFY(status.pinToBeChanged);
    QVERIFY(look(CKF_PROTECTED_AUTHENTICATION_PATH, 5, 9));
    QVERIFY(status.hasPinPad && !status.pinToBeChanged);
    QVERIFY(look(CKF_USER_PIN_FINAL_TRY, 5, 9));
    QCOMPARE(status.pinState, PinState::FinalTry);
    QCOMPARE(status.officerPinState, PinState::Normal);
    QVERIFY(look(CKF_SO_PIN_LOCKED, 5, 9));
    QCOMPARE(status.pinState, PinState::Normal);
    QCOMPARE(status.officerPinState, PinState::Locked);
    QVERIFY(look(CKF_SO_PIN_LOCKED, 0, 9));
    QVERIFY(status.pinMayBeEmpty);
}

/// Each of the fields of a token, cut by its maker to the width that there is.
void TestTokenWords::identity()
{
    CK_TOKEN_INFO info = {};
    const QByteArray text = "x" + QByteArray("я").repeated(40);
    std::memcpy(info.label, text.constData(), sizeof info.label);
    std::memcpy(info.manufacturerID, text.constData(), sizeof info.manufacturerID);
    std::memcpy(info.model, text.constData(), sizeof info.model);
    std::memcpy(info.serialNumber, text.constData(), sizeof info.serialNumber);
    const TokenIdentity identity = identityOf(info);
    const auto expected = [](int letters) -> QString {
        return QStringLiteral("x") + QString(letters, QChar(0x44f));
    };
    QCOMPARE(identity.label, expected(15));
    QCOMPARE(identity.manufacturer, expected(15));
    QCOMPARE(identity.model, expected(7));
    QCOMPARE(identity.serial, expected(7));
    QVERIFY(!identity.storeId.isEmpty());
}

/// A token's name stands in questions for its PIN, its maker in reports and logs.
void TestTokenWords::identityIsOnePlainLine()
{
    CK_TOKEN_INFO info = {};
    std::memset(info.label, ' ', sizeof info.label);
    const QByteArray label = "Card\nB\x1b[1m\xe2\x80\xae";
    std::memcpy(info.label, label.constData(), size_t(label.size()));
    QCOMPARE(identityOf(info).label, QString::fromUtf8("Card\uFFFDB\uFFFD[1m\uFFFD"));
}

/// Many tokens use larger keys than they make, and smaller ones.
void TestTokenWords::sizesOfMadeKeys()
{
    QVector<TokenAbility> all;
    noteAbility(CKM_RSA_PKCS_KEY_PAIR_GEN, {1024, 2048, CKF_GENERATE_KEY_PAIR}, &all);
    noteAbility(CKM_RSA_PKCS, {512, 4096, CKF_SIGN}, &all);
    noteAbility(CKM_ECDSA, {256, 521, CKF_SIGN}, &all);
    QCOMPARE(all.size(), 2);
    QVERIFY(all.first().makes && all.first().signs && !all.first().decrypts);
    QCOMPARE(all.first().smallest, 512);
    QCOMPARE(all.first().largest, 4096);
    QCOMPARE(all.first().madeSmallest, 1024);
    QCOMPARE(all.first().madeLargest, 2048);
    QVERIFY(!all.last().makes);
    QCOMPARE(all.last().largest, 521);
    QCOMPARE(all.last().madeLargest, 0);
}

void TestTokenWords::otherGenerationsDoNotCount()
{
    QVector<TokenAbility> all;
    noteAbility(CKM_RSA_X9_31_KEY_PAIR_GEN, {1024, 4096, CKF_GENERATE_KEY_PAIR}, &all);
    noteAbility(CKM_RSA_PKCS, {1024, 4096, CKF_SIGN}, &all);
    QCOMPARE(all.size(), 1);
    QVERIFY(!all.first().makes);
}

/// Signatures are made by few mechanisms, whatever else a token has; and some of those a token has
/// for other work.
void TestTokenWords::otherSignaturesDoNotCount()
{
    QVector<TokenAbility> all;
    noteAbility(CKM_SHA256_RSA_PKCS, {1024, 4096, CKF_SIGN}, &all);
    QVERIFY(all.isEmpty());
    noteAbility(CKM_RSA_PKCS, {1024, 4096, CKF_HW | CKF_DECRYPT}, &all);
    QCOMPARE(all.size(), 1);
    QVERIFY(!all.first().signs && all.first().decrypts);
    noteAbility(CKM_ECDSA, {256, 521, CKF_VERIFY}, &all);
    QVERIFY(all.size() == 1 || !all.last().signs);
    // One that does not tell what it is for.
    noteAbility(CKM_EDDSA, {255, 255, CKF_HW}, &all);
    QVERIFY(all.last().kind == TokenAbility::Edwards && all.last().signs);
}

QTEST_GUILESS_MAIN(TestTokenWords)
#include "tst_tokenwords.moc"
