// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/lies.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>

namespace Faulty {
namespace {

constexpr auto Unavailable = static_cast<CK_ULONG>(-1);
constexpr CK_ULONG Huge = Unavailable / 2;

struct NamedLie {
    LieKind kind;
    bool hasSize;
};

const std::map<std::string, NamedLie> lieNames = {
    {"needs", {LieKind::Needs, true}},          {"larger", {LieKind::Larger, true}},
    {"beyond", {LieKind::Beyond, true}},        {"huge", {LieKind::Huge, false}},
    {"nothing", {LieKind::Nothing, false}},     {"grows", {LieKind::Grows, false}},
    {"moved", {LieKind::Moved, false}},         {"sensitive", {LieKind::Sensitive, false}},
    {"invalid", {LieKind::Invalid, false}},     {"empty", {LieKind::Empty, false}},
    {"untouched", {LieKind::Untouched, false}}, {"stops", {LieKind::Stops, false}},
    {"fails", {LieKind::Fails, false}},
};

#define A(name)                                                                                    \
    {                                                                                              \
#name, name                                                                                \
    }
const std::map<std::string, CK_ATTRIBUTE_TYPE> attributeNames = {
    A(CKA_CLASS),
    A(CKA_TOKEN),
    A(CKA_PRIVATE),
    A(CKA_LABEL),
    A(CKA_VALUE),
    A(CKA_CERTIFICATE_TYPE),
    A(CKA_ID),
    A(CKA_KEY_TYPE),
    A(CKA_MODULUS),
    A(CKA_PUBLIC_EXPONENT),
    A(CKA_EC_PARAMS),
    A(CKA_EC_POINT),
    A(CKA_GOSTR3410_PARAMS),
    A(CKA_GOSTR3411_PARAMS),
    A(CKA_TRUSTED),
    A(CKA_SUBJECT),
    A(CKA_ALWAYS_AUTHENTICATE),
};
#undef A

//! What the caller gave and what the real module says.
struct Question {
    CK_ATTRIBUTE given;
    std::string truth;
};

std::string trueValue(CK_FUNCTION_LIST *module, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object,
                      CK_ATTRIBUTE_TYPE type)
{
    CK_ATTRIBUTE attribute = {type, nullptr, 0};
    if (module->C_GetAttributeValue(session, object, &attribute, 1) != CKR_OK
        || attribute.ulValueLen == Unavailable)
        return {};
    std::string value(attribute.ulValueLen, '\0');
    attribute.pValue = &value[0];
    module->C_GetAttributeValue(session, object, &attribute, 1);
    return value;
}

//! As if the value were at least so long.
CK_RV tellPadded(const Question &question, const Lie &lie, CK_ATTRIBUTE *answer)
{
    answer->ulValueLen = std::max<size_t>(question.truth.size(), lie.size);
    if (!answer->pValue)
        return CKR_OK;
    if (question.given.ulValueLen >= answer->ulValueLen) {
        std::memset(answer->pValue, 0, answer->ulValueLen);
        std::memcpy(answer->pValue, question.truth.data(), question.truth.size());
        return CKR_OK;
    }
    if (lie.kind == LieKind::Larger)
        answer->ulValueLen = Unavailable;
    return CKR_BUFFER_TOO_SMALL;
}

CK_RV tellLength(CK_ULONG length, CK_RV result, CK_ATTRIBUTE *answer)
{
    answer->ulValueLen = length;
    return result;
}

CK_RV tell(const Question &question, const Lie &lie, CK_ATTRIBUTE *answer)
{
    static char elsewhere[64] = "this is not the value";
    const bool hasRoom = question.given.pValue;
    const CK_ULONG room = question.given.ulValueLen;
    switch (lie.kind) {
    case LieKind::Needs:
    case LieKind::Larger:
        return tellPadded(question, lie, answer);
    case LieKind::Beyond:
        return hasRoom ? tellLength(room + lie.size, CKR_OK, answer) : CKR_OK;
    case LieKind::Huge:
        return tellLength(Huge, CKR_OK, answer);
    case LieKind::Nothing:
        return tellLength(Unavailable, CKR_OK, answer);
    case LieKind::Grows:
        return hasRoom ? tellLength(room + 1, CKR_BUFFER_TOO_SMALL, answer) : CKR_OK;
    case LieKind::Moved:
        answer->type = CKA_VENDOR_DEFINED;
        answer->pValue = elsewhere;
        return CKR_OK;
    case LieKind::Sensitive:
        return tellLength(Unavailable, CKR_ATTRIBUTE_SENSITIVE, answer);
    case LieKind::Invalid:
        return tellLength(Unavailable, CKR_ATTRIBUTE_TYPE_INVALID, answer);
    case LieKind::Empty:
        return tellLength(0, CKR_OK, answer);
    case LieKind::Untouched:
    case LieKind::Stops:
    case LieKind::Fails:
        break;
    }
    return CKR_OK;
}

//! Everything from \p first on as the caller gave it.
void leave(const std::vector<Question> &questions, size_t first, size_t end,
           const std::vector<std::string> &bytes, CK_ATTRIBUTE *attributes)
{
    for (size_t i = first; i < end; ++i) {
        attributes[i] = questions[i].given;
        if (attributes[i].pValue && !bytes[i].empty())
            std::memcpy(attributes[i].pValue, bytes[i].data(), bytes[i].size());
    }
}

} // namespace

bool LieRule::hits(CK_ATTRIBUTE_TYPE asked)
{
    if (type && *type != asked)
        return false;
    ++seen;
    return onwards ? seen >= first : seen == first;
}

std::optional<Lie> lieByName(const std::string &name, const std::string &size)
{
    const auto known = lieNames.find(name);
    if (known == lieNames.end() || known->second.hasSize == size.empty())
        return std::nullopt;
    return Lie{known->second.kind, std::strtoul(size.c_str(), nullptr, 10)};
}

std::optional<CK_ATTRIBUTE_TYPE> attributeByName(const std::string &name)
{
    const auto known = attributeNames.find(name);
    if (known != attributeNames.end())
        return known->second;
    char *end = nullptr;
    const unsigned long value = std::strtoul(name.c_str(), &end, 0);
    if (end == name.c_str() || *end != '\0')
        return std::nullopt;
    return value;
}

CK_RV tellAttributes(CK_FUNCTION_LIST *module, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object,
                     CK_ATTRIBUTE *attributes, CK_ULONG count,
                     const std::vector<std::optional<Lie>> &lies)
{
    std::vector<Question> questions;
    std::vector<std::string> bytes;
    for (CK_ULONG i = 0; i < count; ++i) {
        const CK_ATTRIBUTE &given = attributes[i];
        questions.push_back({given, trueValue(module, session, object, given.type)});
        bytes.emplace_back(static_cast<const char *>(given.pValue ? given.pValue : ""),
                           given.pValue ? given.ulValueLen : 0);
    }
    CK_RV result = module->C_GetAttributeValue(session, object, attributes, count);
    for (CK_ULONG i = 0; i < count; ++i) {
        if (!lies[i])
            continue;
        if (lies[i]->kind == LieKind::Untouched)
            leave(questions, i, i + 1, bytes, attributes);
        if (lies[i]->kind == LieKind::Stops && count > 1) {
            leave(questions, i, count, bytes, attributes);
            return CKR_BUFFER_TOO_SMALL;
        }
        if (lies[i]->kind == LieKind::Fails) {
            leave(questions, 0, count, bytes, attributes);
            return CKR_FUNCTION_FAILED;
        }
        const CK_RV told = tell(questions[i], *lies[i], &attributes[i]);
        result = told == CKR_OK ? result : told;
    }
    return result;
}

} // namespace Faulty
