// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

#include <p11-kit/pkcs11.h>

#include <QElapsedTimer>
#include <QFile>
#include <QLibrary>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const QByteArray pin = QByteArrayLiteral("4711-pin");
const QByteArray officerPin = QByteArrayLiteral("4712-officer");

CK_UTF8CHAR *bytes(const QByteArray &text)
{
    return reinterpret_cast<CK_UTF8CHAR *>(const_cast<char *>(text.constData()));
}

} // namespace

//! The faulty module in front of a private software token.
class TestFaultyModule : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void passesCallsOnAndCountsThem();
    void failsTheCallThatIsNamed();
    void failsAfterTheWorkWasDone();
    void delaysACall();
    void takesTheDeviceAwayAndBringsItBack();
    void takesTheDeviceAwayAtACall();
    void endsSessionsAndLoginsAtACall();
    void exchangesTheToken();
    void leavesOneTryFromACallOn();
    void countsWrongPins();
    void forcesTokenStates();
    void showsSoManySlots();
    void typesThePinOnTheReader();
    void endsTheProcess();
    void liesAboutAttributes();
    void reportsOtherNumbers();
    void hidesMechanisms();
    void hidesThatItWantsALogin();
    void hidesThatSomebodyIsLoggedIn();
    void reportsWhatItDoesNotUnderstand();

private:
    void control(const QByteArray &text);
    QByteArray log() const;
    int count(const char *line) const { return log().count(QByteArray(line) + ' '); }
    QVector<CK_SLOT_ID> slotIds(bool withToken) const;
    CK_TOKEN_INFO tokenInfo() const;
    CK_SESSION_HANDLE open(CK_FLAGS flags = CKF_SERIAL_SESSION | CKF_RW_SESSION);
    CK_RV login(CK_SESSION_HANDLE session, const QByteArray &text);
    CK_RV createData(CK_SESSION_HANDLE session, const QByteArray &label);
    CK_ULONG countData(CK_SESSION_HANDLE session, const QByteArray &label);

    QTemporaryDir m_directory;
    CK_FUNCTION_LIST *m_module = nullptr;
    CK_SLOT_ID m_slot = 0;
};

void TestFaultyModule::initTestCase()
{
    QVERIFY(m_directory.isValid());
    const QString path = m_directory.path();
    QVERIFY(QDir(path).mkdir(QStringLiteral("tokens")));
    QFile configuration(path + QStringLiteral("/softhsm2.conf"));
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    configuration.write("directories.tokendir = " + path.toUtf8() + "/tokens\n");
    configuration.close();
    qputenv("SOFTHSM2_CONF", configuration.fileName().toUtf8());
    qputenv("TRIVEX_FAULTY_LOG", path.toUtf8() + "/log");
    qputenv("TRIVEX_FAULTY_CONTROL", path.toUtf8() + "/control");

    QLibrary library(qEnvironmentVariable("TRIVEX_FAULTY_MODULE"));
    const auto entry = reinterpret_cast<CK_C_GetFunctionList>(library.resolve("C_GetFunctionList"));
    QVERIFY2(entry, qPrintable(library.errorString()));
    QCOMPARE(entry(&m_module), CKR_OK);
    QCOMPARE(m_module->C_Initialize(nullptr), CKR_OK);

    QByteArray label("test token");
    label = label.leftJustified(32, ' ');
    QCOMPARE(m_module->C_InitToken(slotIds(true).constFirst(), bytes(officerPin), officerPin.size(),
                                   bytes(label)),
             CKR_OK);
    m_slot = slotIds(true).constFirst();
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(m_module->C_Login(session, CKU_SO, bytes(officerPin), officerPin.size()), CKR_OK);
    QCOMPARE(m_module->C_InitPIN(session, bytes(pin), pin.size()), CKR_OK);
    QCOMPARE(m_module->C_CloseSession(session), CKR_OK);
}

void TestFaultyModule::init()
{
    control("");
    QFile::remove(m_directory.filePath(QStringLiteral("log")));
}

void TestFaultyModule::cleanup()
{
    control("");
    m_module->C_CloseAllSessions(m_slot);
}

void TestFaultyModule::cleanupTestCase()
{
    QVERIFY(!log().contains(pin));
    QCOMPARE(m_module->C_Finalize(nullptr), CKR_OK);
}

void TestFaultyModule::control(const QByteArray &text)
{
    QSaveFile file(m_directory.filePath(QStringLiteral("control")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    QVERIFY(file.commit());
}

QByteArray TestFaultyModule::log() const
{
    QFile file(m_directory.filePath(QStringLiteral("log")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<CK_SLOT_ID> TestFaultyModule::slotIds(bool withToken) const
{
    CK_ULONG count = 0;
    m_module->C_GetSlotList(withToken, nullptr, &count);
    QVector<CK_SLOT_ID> ids(static_cast<int>(count));
    m_module->C_GetSlotList(withToken, ids.data(), &count);
    return ids;
}

CK_TOKEN_INFO TestFaultyModule::tokenInfo() const
{
    CK_TOKEN_INFO info{};
    m_module->C_GetTokenInfo(m_slot, &info);
    return info;
}

CK_SESSION_HANDLE TestFaultyModule::open(CK_FLAGS flags)
{
    CK_SESSION_HANDLE session = 0;
    m_module->C_OpenSession(m_slot, flags, nullptr, nullptr, &session);
    return session;
}

CK_RV TestFaultyModule::login(CK_SESSION_HANDLE session, const QByteArray &text)
{
    return m_module->C_Login(session, CKU_USER, bytes(text), text.size());
}

CK_RV TestFaultyModule::createData(CK_SESSION_HANDLE session, const QByteArray &label)
{
    CK_OBJECT_CLASS objectClass = CKO_DATA;
    CK_BBOOL onToken = CK_FALSE;
    CK_ATTRIBUTE attributes[] = {
        {CKA_CLASS, &objectClass, sizeof objectClass},
        {CKA_TOKEN, &onToken, sizeof onToken},
        {CKA_LABEL, bytes(label), static_cast<CK_ULONG>(label.size())},
    };
    CK_OBJECT_HANDLE object = 0;
    return m_module->C_CreateObject(session, attributes, 3, &object);
}

CK_ULONG TestFaultyModule::countData(CK_SESSION_HANDLE session, const QByteArray &label)
{
    CK_ATTRIBUTE wanted{CKA_LABEL, bytes(label), static_cast<CK_ULONG>(label.size())};
    CK_OBJECT_HANDLE objects[8];
    CK_ULONG count = 0;
    m_module->C_FindObjectsInit(session, &wanted, 1);
    m_module->C_FindObjects(session, objects, 8, &count);
    m_module->C_FindObjectsFinal(session);
    return count;
}

void TestFaultyModule::passesCallsOnAndCountsThem()
{
    const CK_SESSION_HANDLE session = open();
    QVERIFY(session != 0);
    QCOMPARE(login(session, pin), CKR_OK);
    QCOMPARE(createData(session, "a"), CKR_OK);
    QCOMPARE(countData(session, "a"), 1UL);
    QCOMPARE(count("C_Login CKR_OK"), 1);
    QCOMPARE(count("C_FindObjectsInit CKR_OK"), 1);
    QVERIFY(log().contains(" pin=given\n"));
    QCOMPARE(m_module->C_Login(session, CKU_USER, bytes(pin), 0) == CKR_OK, false);
    QVERIFY(log().contains(" pin=empty\n"));
}

void TestFaultyModule::failsTheCallThatIsNamed()
{
    control("fail C_FindObjectsInit 2 CKR_DEVICE_ERROR\nfail C_SignInit 1+ 0x80000001\n");
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(m_module->C_FindObjectsInit(session, nullptr, 0), CKR_OK);
    QCOMPARE(m_module->C_FindObjectsFinal(session), CKR_OK);
    QCOMPARE(m_module->C_FindObjectsInit(session, nullptr, 0), CKR_DEVICE_ERROR);
    QCOMPARE(m_module->C_FindObjectsInit(session, nullptr, 0), CKR_OK);
    QCOMPARE(m_module->C_FindObjectsFinal(session), CKR_OK);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(m_module->C_SignInit(session, nullptr, 0), 0x80000001UL);
    control("fail session 2 CKR_SESSION_HANDLE_INVALID\n");
    CK_SESSION_INFO info{};
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_OK);
    QCOMPARE(tokenInfo().flags & CKF_TOKEN_INITIALIZED, CKF_TOKEN_INITIALIZED);
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_SESSION_HANDLE_INVALID);
}

void TestFaultyModule::failsAfterTheWorkWasDone()
{
    control("fail-after C_CreateObject 1 CKR_DEVICE_ERROR\n");
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(login(session, pin), CKR_OK);
    QCOMPARE(createData(session, "late"), CKR_DEVICE_ERROR);
    QCOMPARE(countData(session, "late"), 1UL);
}

void TestFaultyModule::delaysACall()
{
    control("delay C_GetSessionInfo 2 300\n");
    const CK_SESSION_HANDLE session = open();
    CK_SESSION_INFO info{};
    m_module->C_GetSessionInfo(session, &info);
    QCOMPARE(log().count("waits "), 0);
    QElapsedTimer timer;
    timer.start();
    m_module->C_GetSessionInfo(session, &info);
    QVERIFY(timer.elapsed() >= 300);
    QCOMPARE(log().count("waits C_GetSessionInfo\nC_GetSessionInfo "), 1);
}

void TestFaultyModule::takesTheDeviceAwayAndBringsItBack()
{
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(login(session, pin), CKR_OK);
    const int tokens = slotIds(true).size();
    control("remove 1\n");
    QCOMPARE(slotIds(true).size(), tokens - 1);
    QCOMPARE(slotIds(false).size(), tokens);
    CK_SLOT_INFO slot{};
    QCOMPARE(m_module->C_GetSlotInfo(m_slot, &slot), CKR_OK);
    QVERIFY(!(slot.flags & CKF_TOKEN_PRESENT));
    CK_TOKEN_INFO token{};
    QCOMPARE(m_module->C_GetTokenInfo(m_slot, &token), CKR_TOKEN_NOT_PRESENT);
    CK_SESSION_INFO info{};
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_DEVICE_REMOVED);
    CK_SESSION_HANDLE other = 0;
    QCOMPARE(m_module->C_OpenSession(m_slot, CKF_SERIAL_SESSION, nullptr, nullptr, &other),
             CKR_TOKEN_NOT_PRESENT);

    control("");
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_SESSION_HANDLE_INVALID);
    other = open();
    QCOMPARE(m_module->C_GetSessionInfo(other, &info), CKR_OK);
    QCOMPARE(info.state, CKS_RW_PUBLIC_SESSION);
}

void TestFaultyModule::takesTheDeviceAwayAtACall()
{
    control("remove-at C_FindObjects 1\n");
    const CK_SESSION_HANDLE session = open();
    CK_OBJECT_HANDLE object = 0;
    CK_ULONG found = 0;
    QCOMPARE(m_module->C_FindObjectsInit(session, nullptr, 0), CKR_OK);
    QCOMPARE(m_module->C_FindObjects(session, &object, 1, &found), CKR_DEVICE_REMOVED);
    QCOMPARE(m_module->C_FindObjectsFinal(session), CKR_DEVICE_REMOVED);
    QVERIFY(!slotIds(true).contains(m_slot));
    control("# back\n");
    QVERIFY(slotIds(true).contains(m_slot));
}

void TestFaultyModule::endsSessionsAndLoginsAtACall()
{
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(login(session, pin), CKR_OK);
    const auto state = [&](CK_SESSION_HANDLE one) {
        CK_SESSION_INFO info{};
        const CK_RV result = m_module->C_GetSessionInfo(one, &info);
        return result == CKR_OK ? info.state : result;
    };
    QCOMPARE(state(session), CK_ULONG(CKS_RW_USER_FUNCTIONS));
    control("logout-at C_GetSessionInfo 2\n");
    QCOMPARE(state(session), CK_ULONG(CKS_RW_USER_FUNCTIONS));
    QCOMPARE(state(session), CK_ULONG(CKS_RW_PUBLIC_SESSION));
    QCOMPARE(login(session, pin), CKR_OK);
    control("end-sessions-at C_GetSessionInfo 1\n");
    QCOMPARE(state(session), CK_ULONG(CKR_SESSION_HANDLE_INVALID));
    const CK_SESSION_HANDLE another = open();
    QCOMPARE(state(another), CK_ULONG(CKS_RW_PUBLIC_SESSION));
    // A call that names neither ends them all.
    control("end-sessions-at C_GetSlotList 1\n");
    QVERIFY(slotIds(true).contains(m_slot));
    QCOMPARE(state(another), CK_ULONG(CKR_SESSION_HANDLE_INVALID));
}

void TestFaultyModule::exchangesTheToken()
{
    const auto serial = [this] {
        const CK_TOKEN_INFO info = tokenInfo();
        return QByteArray(reinterpret_cast<const char *>(info.serialNumber),
                          sizeof info.serialNumber);
    };
    const QByteArray before = serial();
    control("other-token\n");
    QVERIFY(serial() != before);
    control("# back\n");
    QCOMPARE(serial(), before);
}

void TestFaultyModule::leavesOneTryFromACallOn()
{
    control("final-try-at C_GetTokenInfo 2\n");
    QVERIFY(!(tokenInfo().flags & CKF_USER_PIN_FINAL_TRY));
    QVERIFY(tokenInfo().flags & CKF_USER_PIN_FINAL_TRY);
    QVERIFY(tokenInfo().flags & CKF_USER_PIN_FINAL_TRY);
}

void TestFaultyModule::countsWrongPins()
{
    const CK_FLAGS all = CKF_USER_PIN_COUNT_LOW | CKF_USER_PIN_FINAL_TRY | CKF_USER_PIN_LOCKED;
    control("tries 3\n");
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(tokenInfo().flags & all, CK_FLAGS(0));
    QCOMPARE(login(session, "wrong"), CKR_PIN_INCORRECT);
    QCOMPARE(tokenInfo().flags & all, CKF_USER_PIN_COUNT_LOW);
    QCOMPARE(login(session, "wrong"), CKR_PIN_INCORRECT);
    QCOMPARE(tokenInfo().flags & all, CKF_USER_PIN_COUNT_LOW | CKF_USER_PIN_FINAL_TRY);
    QCOMPARE(login(session, "wrong"), CKR_PIN_INCORRECT);
    QCOMPARE(tokenInfo().flags & all, CKF_USER_PIN_COUNT_LOW | CKF_USER_PIN_LOCKED);
    QCOMPARE(login(session, pin), CKR_PIN_LOCKED);
    control("");
    QCOMPARE(login(session, pin), CKR_OK);
}

void TestFaultyModule::forcesTokenStates()
{
    CK_SESSION_HANDLE session = open();
    control("full\n");
    QCOMPARE(createData(session, "x"), CKR_DEVICE_MEMORY);
    control("read-only\n");
    QCOMPARE(createData(session, "x"), CKR_TOKEN_WRITE_PROTECTED);
    QVERIFY(tokenInfo().flags & CKF_WRITE_PROTECTED);
    QCOMPARE(m_module->C_OpenSession(m_slot, CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr, nullptr,
                                     &session),
             CKR_TOKEN_WRITE_PROTECTED);
    control("locked\ncount-low\nfinal-try\n");
    QVERIFY(tokenInfo().flags & CKF_USER_PIN_LOCKED);
    QVERIFY(tokenInfo().flags & CKF_USER_PIN_COUNT_LOW);
    QVERIFY(tokenInfo().flags & CKF_USER_PIN_FINAL_TRY);
    QCOMPARE(login(open(CKF_SERIAL_SESSION), pin), CKR_PIN_LOCKED);
}

void TestFaultyModule::showsSoManySlots()
{
    QVERIFY(slotIds(false).size() > 1);
    control("slots 1\n");
    QCOMPARE(slotIds(false), QVector<CK_SLOT_ID>{m_slot});
    control("slots 1\nremove\n");
    QCOMPARE(slotIds(true).size(), 0);
}

void TestFaultyModule::typesThePinOnTheReader()
{
    control("pin-pad " + pin + "\n");
    const CK_SESSION_HANDLE session = open();
    QVERIFY(tokenInfo().flags & CKF_PROTECTED_AUTHENTICATION_PATH);
    QCOMPARE(m_module->C_Login(session, CKU_USER, nullptr, 0), CKR_OK);
    QVERIFY(log().contains(" pin=none\n"));
}

void TestFaultyModule::endsTheProcess()
{
    control("kill C_GetSessionInfo 1\n");
    const CK_SESSION_HANDLE session = open();
    const pid_t child = fork();
    if (child == 0) {
        CK_SESSION_INFO info{};
        m_module->C_GetSessionInfo(session, &info);
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
}

void TestFaultyModule::liesAboutAttributes()
{
    const CK_SESSION_HANDLE session = open();
    QCOMPARE(login(session, pin), CKR_OK);
    QCOMPARE(createData(session, "label"), CKR_OK);
    CK_OBJECT_HANDLE object = 0;
    CK_ULONG found = 0;
    m_module->C_FindObjectsInit(session, nullptr, 0);
    m_module->C_FindObjects(session, &object, 1, &found);
    m_module->C_FindObjectsFinal(session);
    char room[8] = {};
    const auto ask = [&](void *buffer, CK_ULONG length) {
        CK_ATTRIBUTE label{CKA_LABEL, buffer, length};
        const CK_RV result = m_module->C_GetAttributeValue(session, object, &label, 1);
        return QPair<CK_RV, CK_ULONG>(result, label.ulValueLen);
    };
    const auto none = static_cast<CK_ULONG>(-1);
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), CK_ULONG(5)));
    QVERIFY(log().contains(" attributes=0x3\n"));
    control("lie CKA_LABEL 2+ needs 9\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), CK_ULONG(5)));
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_BUFFER_TOO_SMALL), CK_ULONG(9)));
    QCOMPARE(ask(nullptr, 0), qMakePair(CK_RV(CKR_OK), CK_ULONG(9)));
    control("lie any * larger 9\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_BUFFER_TOO_SMALL), none));
    control("lie 0x3 * beyond 2\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), CK_ULONG(10)));
    control("lie CKA_LABEL * grows\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_BUFFER_TOO_SMALL), CK_ULONG(9)));
    control("lie CKA_LABEL * nothing\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), none));
    control("lie CKA_LABEL * sensitive\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_ATTRIBUTE_SENSITIVE), none));
    room[0] = 'x';
    control("lie CKA_LABEL * untouched\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), CK_ULONG(8)));
    QCOMPARE(room[0], 'x');
    control("lie CKA_ID * huge\n");
    QCOMPARE(ask(room, 8), qMakePair(CK_RV(CKR_OK), CK_ULONG(5)));
}

void TestFaultyModule::reportsOtherNumbers()
{
    const CK_SESSION_HANDLE session = open();
    control("report C_FindObjects 1 77\n");
    QCOMPARE(countData(session, "nobody"), 77UL);
    QCOMPARE(countData(session, "nobody"), 0UL);
    control("report C_FindObjects 1 +2\nreport C_FindObjects 2 -1\n");
    QCOMPARE(countData(session, "nobody"), 2UL);
    QCOMPARE(countData(session, "nobody"), ~0UL);
}

void TestFaultyModule::hidesMechanisms()
{
    const auto listed = [this] {
        CK_ULONG count = 0;
        m_module->C_GetMechanismList(m_slot, nullptr, &count);
        QVector<CK_MECHANISM_TYPE> all(int(count), 0);
        const CK_RV result = m_module->C_GetMechanismList(m_slot, all.data(), &count);
        return result == CKR_OK && int(count) == all.size() ? all : QVector<CK_MECHANISM_TYPE>();
    };
    const QVector<CK_MECHANISM_TYPE> all = listed();
    QVERIFY(all.contains(CKM_SHA256) && all.contains(CKM_RSA_PKCS));
    control("without CKM_RSA_PKCS 0x250");
    QCOMPARE(listed().size(), all.size() - 2);
    QVERIFY(!listed().contains(CKM_SHA256) && !listed().contains(CKM_RSA_PKCS));
    CK_MECHANISM_INFO info{};
    QCOMPARE(m_module->C_GetMechanismInfo(m_slot, CKM_RSA_PKCS, &info), CKR_MECHANISM_INVALID);
    QCOMPARE(m_module->C_GetMechanismInfo(m_slot, CKM_ECDSA, &info), CKR_OK);
    const CK_SESSION_HANDLE session = open();
    CK_MECHANISM mechanism = {CKM_SHA256, nullptr, 0};
    QCOMPARE(m_module->C_DigestInit(session, &mechanism), CKR_MECHANISM_INVALID);
    control("");
    QCOMPARE(m_module->C_DigestInit(session, &mechanism), CKR_OK);
    QCOMPARE(m_module->C_CloseSession(session), CKR_OK);
}

void TestFaultyModule::hidesThatItWantsALogin()
{
    QVERIFY(tokenInfo().flags & CKF_LOGIN_REQUIRED);
    control("no-login-flag\n");
    QVERIFY(!(tokenInfo().flags & CKF_LOGIN_REQUIRED));
}

void TestFaultyModule::hidesThatSomebodyIsLoggedIn()
{
    const CK_SESSION_HANDLE session = open();
    CK_SESSION_INFO info = {};
    QCOMPARE(login(session, pin), CKR_OK);
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_OK);
    const CK_STATE before = info.state;
    control("no-login-state\n");
    QCOMPARE(m_module->C_GetSessionInfo(session, &info), CKR_OK);
    QVERIFY(before == CKS_RO_USER_FUNCTIONS || before == CKS_RW_USER_FUNCTIONS);
    QVERIFY(info.state == CKS_RO_PUBLIC_SESSION || info.state == CKS_RW_PUBLIC_SESSION);
    QCOMPARE(m_module->C_Logout(session), CKR_OK);
}

void TestFaultyModule::reportsWhatItDoesNotUnderstand()
{
    control("fail C_Nonsense 1 CKR_OK\nfail C_Sign 0 CKR_OK\nfail C_Sign 1 CKR_NONSENSE\n"
            "delay C_Sign 1\ntries many\nfull very\nreport C_Sign 1\nlie CKA_ID * needs\n"
            "lie CKA_NONSENSE * huge\nlie CKA_ID * huge 3\ngost\ngost nonsense\n");
    open();
    QCOMPARE(log().count("error control line: "), 12);
}

QTEST_GUILESS_MAIN(TestFaultyModule)
#include "tst_faultymodule.moc"
