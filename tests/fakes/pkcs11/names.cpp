// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/names.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace Faulty {
namespace {

struct FunctionEntry {
    const char *name;
    Kind kind;
};

const FunctionEntry functionTable[] = {
#define X(name, kind) {#name, Kind::kind},
    TRIVEX_PKCS11_FUNCTIONS(X)
#undef X
};

struct ResultEntry {
    const char *name;
    CK_RV value;
};

#define R(name)                                                                                    \
    {                                                                                              \
#name, name                                                                                \
    }
const ResultEntry resultTable[] = {
    R(CKR_OK),
    R(CKR_CANCEL),
    R(CKR_HOST_MEMORY),
    R(CKR_SLOT_ID_INVALID),
    R(CKR_GENERAL_ERROR),
    R(CKR_FUNCTION_FAILED),
    R(CKR_ARGUMENTS_BAD),
    R(CKR_NO_EVENT),
    R(CKR_ATTRIBUTE_READ_ONLY),
    R(CKR_ATTRIBUTE_SENSITIVE),
    R(CKR_ATTRIBUTE_TYPE_INVALID),
    R(CKR_ATTRIBUTE_VALUE_INVALID),
    R(CKR_DATA_INVALID),
    R(CKR_DATA_LEN_RANGE),
    R(CKR_DEVICE_ERROR),
    R(CKR_DEVICE_MEMORY),
    R(CKR_DEVICE_REMOVED),
    R(CKR_FUNCTION_CANCELED),
    R(CKR_FUNCTION_NOT_SUPPORTED),
    R(CKR_KEY_HANDLE_INVALID),
    R(CKR_KEY_SIZE_RANGE),
    R(CKR_KEY_TYPE_INCONSISTENT),
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
    R(CKR_SESSION_READ_ONLY),
    R(CKR_SESSION_EXISTS),
    R(CKR_SESSION_READ_ONLY_EXISTS),
    R(CKR_SIGNATURE_INVALID),
    R(CKR_SIGNATURE_LEN_RANGE),
    R(CKR_TEMPLATE_INCOMPLETE),
    R(CKR_TEMPLATE_INCONSISTENT),
    R(CKR_TOKEN_NOT_PRESENT),
    R(CKR_TOKEN_NOT_RECOGNIZED),
    R(CKR_TOKEN_WRITE_PROTECTED),
    R(CKR_USER_ALREADY_LOGGED_IN),
    R(CKR_USER_NOT_LOGGED_IN),
    R(CKR_USER_PIN_NOT_INITIALIZED),
    R(CKR_USER_TYPE_INVALID),
    R(CKR_WRAPPING_KEY_SIZE_RANGE),
    R(CKR_WRAPPING_KEY_TYPE_INCONSISTENT),
    R(CKR_BUFFER_TOO_SMALL),
    R(CKR_CRYPTOKI_NOT_INITIALIZED),
    R(CKR_CRYPTOKI_ALREADY_INITIALIZED),
    R(CKR_FUNCTION_REJECTED),
};
#undef R

struct MechanismEntry {
    const char *name;
    CK_MECHANISM_TYPE value;
};

const MechanismEntry mechanismTable[] = {
    {"CKM_RSA_PKCS", CKM_RSA_PKCS},
    {"CKM_RSA_PKCS_PSS", CKM_RSA_PKCS_PSS},
    {"CKM_SHA256_RSA_PKCS", CKM_SHA256_RSA_PKCS},
    {"CKM_ECDSA", CKM_ECDSA},
    {"CKM_EDDSA", CKM_EDDSA},
};

// A value of a table by its name, or the number that stands in the name's place.
template <typename Table>
std::optional<unsigned long> valueByName(const Table &table, const std::string &name)
{
    for (const auto &entry : table) {
        if (name == entry.name)
            return entry.value;
    }
    char *end = nullptr;
    const unsigned long value = std::strtoul(name.c_str(), &end, 0);
    if (end == name.c_str() || *end != '\0')
        return std::nullopt;
    return value;
}

} // namespace

const char *functionName(Function function)
{
    return functionTable[static_cast<int>(function)].name;
}

Kind functionKind(Function function)
{
    return functionTable[static_cast<int>(function)].kind;
}

std::optional<Function> functionByName(const std::string &name)
{
    for (int i = 0; i < static_cast<int>(Function::Count); ++i) {
        if (name == functionTable[i].name)
            return static_cast<Function>(i);
    }
    return std::nullopt;
}

std::string resultName(CK_RV result)
{
    for (const ResultEntry &entry : resultTable) {
        if (entry.value == result)
            return entry.name;
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%lx", result);
    return text.data();
}

std::optional<CK_RV> resultByName(const std::string &name)
{
    return valueByName(resultTable, name);
}

std::optional<CK_MECHANISM_TYPE> mechanismByName(const std::string &name)
{
    return valueByName(mechanismTable, name);
}

} // namespace Faulty
