// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "fuzz/scriptedmodule.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace TrivexFuzz {

namespace {

Script *script = nullptr;

CK_RV returnValue()
{
    static constexpr CK_RV Codes[] = {
        CKR_OK,
        CKR_DEVICE_ERROR,
        CKR_DEVICE_REMOVED,
        CKR_TOKEN_NOT_PRESENT,
        CKR_SESSION_HANDLE_INVALID,
        CKR_SESSION_CLOSED,
        CKR_OBJECT_HANDLE_INVALID,
        CKR_ATTRIBUTE_SENSITIVE,
        CKR_ATTRIBUTE_TYPE_INVALID,
        CKR_BUFFER_TOO_SMALL,
        CKR_USER_NOT_LOGGED_IN,
        CKR_HOST_MEMORY,
        CKR_FUNCTION_NOT_SUPPORTED,
        CK_RV(0x80001234),
    };
    const int choice = script->byte();
    // Most calls succeed, or nothing would be reached.
    return choice < 224 ? CKR_OK : Codes[choice % int(std::size(Codes))];
}

CK_RV initialize(void *)
{
    return CKR_OK;
}

CK_RV openSession(CK_SLOT_ID, CK_FLAGS, void *, CK_NOTIFY, CK_SESSION_HANDLE *session)
{
    *session = 1;
    return CKR_OK;
}

CK_RV closeSession(CK_SESSION_HANDLE)
{
    return CKR_OK;
}

CK_RV sessionInfo(CK_SESSION_HANDLE, CK_SESSION_INFO *info)
{
    *info = {};
    info->state = script->below(5);
    return returnValue();
}

CK_RV tokenInfoCall(CK_SLOT_ID, CK_TOKEN_INFO *info)
{
    *info = ScriptedModule::tokenInfo();
    return returnValue();
}

CK_RV findInit(CK_SESSION_HANDLE, CK_ATTRIBUTE *, CK_ULONG)
{
    return returnValue();
}

CK_RV find(CK_SESSION_HANDLE, CK_OBJECT_HANDLE *objects, CK_ULONG most, CK_ULONG *count)
{
    const int kind = script->below(16);
    const CK_ULONG wanted = CK_ULONG(kind < 12 ? kind : 0);
    for (CK_ULONG i = 0; i < qMin(wanted, most); ++i)
        objects[i] = CK_OBJECT_HANDLE(script->byte());
    *count = kind == 15 ? CK_ULONG(script->number()) : qMin(wanted, most);
    return returnValue();
}

CK_RV findFinal(CK_SESSION_HANDLE)
{
    return returnValue();
}

QByteArray number(CK_ULONG value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof(value));
}

QByteArray valueOf(CK_ATTRIBUTE_TYPE type)
{
    static constexpr CK_ULONG Classes[] = {CKO_CERTIFICATE, CKO_PUBLIC_KEY, CKO_PRIVATE_KEY,
                                           CKO_DATA};
    static constexpr CK_ULONG Kinds[] = {CKK_RSA, CKK_EC, CKK_GOSTR3410, CKK_DSA,
                                         CKK_VENDOR_DEFINED};
    if (script->below(8) == 7)
        return script->bytes(4096);
    switch (type) {
    case CKA_CLASS:
        return number(Classes[script->below(int(std::size(Classes)))]);
    case CKA_KEY_TYPE:
        return number(Kinds[script->below(int(std::size(Kinds)))]);
    case CKA_CERTIFICATE_TYPE:
        return number(CKC_X_509);
    case CKA_ID:
        return QByteArray(1, char(script->below(4)));
    case CKA_VALUE:
        return script->bytes(16384);
    case CKA_MODULUS_BITS:
        return number(CK_ULONG(script->number()));
    default:
        return script->bytes(512);
    }
}

void answer(CK_ATTRIBUTE *attribute)
{
    const int kind = script->below(16);
    if (kind == 13) {
        attribute->ulValueLen = CK_UNAVAILABLE_INFORMATION;
        return;
    }
    const QByteArray value = valueOf(attribute->type);
    if (attribute->pValue) {
        std::memcpy(attribute->pValue, value.constData(),
                    std::min(size_t(value.size()), size_t(attribute->ulValueLen)));
    }
    attribute->ulValueLen = kind == 14 ? CK_ULONG(script->number()) : CK_ULONG(value.size());
}

CK_RV attributeValue(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    for (CK_ULONG i = 0; i < count; ++i)
        answer(&attributes[i]);
    return returnValue();
}

} // namespace

void ScriptedModule::follow(Script *newScript)
{
    script = newScript;
}

CK_TOKEN_INFO ScriptedModule::tokenInfo()
{
    CK_TOKEN_INFO info = {};
    const auto fill = [](auto &field) {
        for (auto &octet : field)
            octet = script->byte();
    };
    fill(info.label);
    fill(info.manufacturerID);
    fill(info.model);
    fill(info.serialNumber);
    info.flags = CK_FLAGS(script->number());
    info.ulMaxPinLen = CK_ULONG(script->number());
    info.ulMinPinLen = CK_ULONG(script->number());
    info.ulTotalPublicMemory = CK_ULONG(script->number());
    info.ulFreePublicMemory = CK_ULONG(script->number());
    fill(info.utcTime);
    return info;
}

CK_FUNCTION_LIST *ScriptedModule::functions()
{
    static CK_FUNCTION_LIST list = [] {
        CK_FUNCTION_LIST made = {};
        made.version = {2, 40};
        made.C_Initialize = &initialize;
        made.C_Finalize = &initialize;
        made.C_OpenSession = &openSession;
        made.C_CloseSession = &closeSession;
        made.C_GetSessionInfo = &sessionInfo;
        made.C_GetTokenInfo = &tokenInfoCall;
        made.C_FindObjectsInit = &findInit;
        made.C_FindObjects = &find;
        made.C_FindObjectsFinal = &findFinal;
        made.C_GetAttributeValue = &attributeValue;
        return made;
    }();
    return &list;
}

} // namespace TrivexFuzz
