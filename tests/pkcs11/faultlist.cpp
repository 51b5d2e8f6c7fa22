// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faultlist.h"

namespace TrivexTest {

namespace {

using Class = QVector<QByteArray>;

/// All return values of PKCS#11 2.40 and 3.0, by what they mean to whoever calls; the numbers are
/// those that the module under test has no name for.
const QVector<Class> &resultClasses()
{
    static const QVector<Class> classes = {
        {"CKR_DEVICE_REMOVED", "CKR_TOKEN_NOT_PRESENT", "CKR_SLOT_ID_INVALID"},
        {"CKR_SESSION_HANDLE_INVALID", "CKR_SESSION_CLOSED"},
        {"CKR_DEVICE_ERROR", "CKR_GENERAL_ERROR", "CKR_FUNCTION_FAILED"},
        {"CKR_HOST_MEMORY", "0x9", "0xA", "0x1A0", "0x1A1", "0x1B7"}, // threads, mutexes, libraries
        {"CKR_DEVICE_MEMORY", "0x201", "CKR_SESSION_COUNT"},
        {"CKR_TOKEN_WRITE_PROTECTED", "CKR_SESSION_READ_ONLY", "0x1B", "CKR_ATTRIBUTE_READ_ONLY"},
        {"CKR_PIN_INCORRECT", "CKR_PIN_INVALID", "CKR_PIN_LEN_RANGE", "0x1B8"},
        {"CKR_PIN_LOCKED", "CKR_PIN_EXPIRED", "CKR_USER_PIN_NOT_INITIALIZED", "0x1B0", "0x1B1"},
        {"CKR_USER_NOT_LOGGED_IN", "CKR_USER_TYPE_INVALID", "0x104", "0x105"},
        {"CKR_CANCEL", "CKR_FUNCTION_CANCELED", "CKR_FUNCTION_REJECTED", "0x202", "0x51"},
        {"CKR_ARGUMENTS_BAD", "CKR_FUNCTION_NOT_SUPPORTED", "CKR_MECHANISM_INVALID",
         "CKR_MECHANISM_PARAM_INVALID", "0x130", "0x140", "0x120", "0x121"},
        {"CKR_TEMPLATE_INCOMPLETE", "CKR_TEMPLATE_INCONSISTENT", "CKR_ATTRIBUTE_SENSITIVE",
         "CKR_ATTRIBUTE_TYPE_INVALID", "CKR_ATTRIBUTE_VALUE_INVALID", "0x170", "0x180"},
        {"CKR_KEY_HANDLE_INVALID", "CKR_OBJECT_HANDLE_INVALID", "0x65", "0xF0", "0x113"},
        {"CKR_KEY_SIZE_RANGE", "CKR_KEY_TYPE_INCONSISTENT", "CKR_KEY_FUNCTION_NOT_PERMITTED",
         "CKR_KEY_NOT_WRAPPABLE", "CKR_KEY_UNEXTRACTABLE", "0x64", "0x66", "0x67", "0xF1", "0xF2",
         "CKR_WRAPPING_KEY_SIZE_RANGE", "CKR_WRAPPING_KEY_TYPE_INCONSISTENT", "0x1B9"},
        {"CKR_DATA_INVALID", "CKR_DATA_LEN_RANGE", "0x40", "0x41", "0x42", "CKR_SIGNATURE_INVALID",
         "CKR_SIGNATURE_LEN_RANGE", "0x110", "0x112"},
        {"CKR_OPERATION_ACTIVE", "CKR_OPERATION_NOT_INITIALIZED", "0x160", "CKR_NO_EVENT"},
        {"CKR_BUFFER_TOO_SMALL", "0xB4", "CKR_SESSION_EXISTS", "CKR_SESSION_READ_ONLY_EXISTS",
         "0xB8"},
        {"CKR_TOKEN_NOT_RECOGNIZED", "CKR_CRYPTOKI_NOT_INITIALIZED",
         "CKR_CRYPTOKI_ALREADY_INITIALIZED", "0x1B5", "0x1B6"},
        // A vendor's, a hole of the standard, and what fits into no list.
        {"0x80000001", "0x80000000", "0x3FF", "0x7FFFFFFF", "0xFFFFFFFF", "0xFFFFFFFFFFFFFFFF"},
    };
    return classes;
}

/// What a call says that gives a number: none, one more, one less, more than there can be.
const QVector<QByteArray> Numbers = {"0", "+1", "-1", "4096", "18446744073709551615"};

bool givesNumber(const QByteArray &call)
{
    static const QVector<QByteArray> calls = {
        "C_FindObjects",     "C_Sign",        "C_Decrypt", "C_WrapKey", "C_CreateObject",
        "C_GenerateKeyPair", "C_GenerateKey", "C_Encrypt"};
    return calls.contains(call);
}

/// As an order about the call: "fail C_Sign 3".
QByteArray order(const char *action, const QByteArray &call, int number)
{
    return QByteArray(action) + ' ' + call + ' ' + QByteArray::number(number);
}

void addResults(QVector<Fault> *faults, const QByteArray &call, int number, int turn)
{
    const bool closes = call == "C_CloseSession";
    for (const Class &one : resultClasses()) {
        const QByteArray result = one.at(turn % one.size());
        faults->append({order("fail", call, number) + ' ' + result, result, closes});
    }
    const Class done = {"CKR_DEVICE_ERROR", "CKR_HOST_MEMORY", "CKR_DEVICE_REMOVED", "0x80000001"};
    faults->append({order("fail-after", call, number) + ' ' + done.at(turn % done.size()),
                    {},
                    call == "C_OpenSession",
                    true});
}

void addNumbers(QVector<Fault> *faults, const QByteArray &call, int number)
{
    if (!givesNumber(call))
        return;
    for (const QByteArray &one : Numbers) {
        // Nobody can tell a token that hides objects from one that has none.
        if (call != "C_FindObjects" || (one != "0" && one != "-1"))
            faults->append({order("report", call, number) + ' ' + one, {}, false, true});
    }
    // Without an end: the same number again and again, though nothing new comes.
    faults->append(
        {"report " + call + ' ' + QByteArray::number(number) + "+ 4096", {}, false, true});
    // The length that is needed, as the standard has it for a buffer that is too small.
    faults->append({order("fail", call, number) + " CKR_BUFFER_TOO_SMALL\n"
                        + order("report", call, number) + " 1000000",
                    "CKR_BUFFER_TOO_SMALL"});
}

} // namespace

int faultResultCount()
{
    int count = 0;
    for (const Class &one : resultClasses())
        count += one.size();
    return count;
}

QVector<Fault> faultsOf(const QByteArray &call, int number, int turn, bool all)
{
    QVector<Fault> faults;
    addResults(&faults, call, number, turn);
    addNumbers(&faults, call, number);
    faults.append(Fault{order("end-sessions-at", call, number)});
    faults.append(Fault{order("logout-at", call, number)});
    if (!all) {
        QVector<Fault> some;
        for (int i = turn % 4; i < faults.size(); i += 4)
            some.append(faults.at(i));
        return some;
    }
    if (number == 1)
        faults.append({order("remove-at", call, number), {}, false, false, true});
    return faults;
}

} // namespace TrivexTest
