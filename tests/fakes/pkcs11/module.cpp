// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/dispatch.h"

namespace {

CK_RV getFunctionList(CK_FUNCTION_LIST **list);

CK_FUNCTION_LIST makeList()
{
    CK_FUNCTION_LIST list{};
    list.version = {2, 40};
    list.C_GetFunctionList = getFunctionList;
#define X(name, kind)                                                                              \
    list.name = Faulty::Stub<Faulty::Function::name, &CK_FUNCTION_LIST::name>::call;
    TRIVEX_PKCS11_FUNCTIONS(X)
#undef X
    return list;
}

CK_RV getFunctionList(CK_FUNCTION_LIST **list)
{
    static CK_FUNCTION_LIST functions = makeList();
    if (!list)
        return CKR_ARGUMENTS_BAD;
    if (!Faulty::Device::instance().target())
        return CKR_GENERAL_ERROR;
    *list = &functions;
    return CKR_OK;
}

} // namespace

extern "C" __attribute__((visibility("default"))) CK_RV C_GetFunctionList(CK_FUNCTION_LIST **list)
{
    return getFunctionList(list);
}
