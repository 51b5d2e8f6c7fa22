// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/modulehealth.h"

namespace Trivex::Pkcs11 {

bool ModuleHealth::isFault(CK_RV result)
{
    return result == CKR_DEVICE_ERROR || result == CKR_GENERAL_ERROR
        || result == CKR_FUNCTION_FAILED;
}

void ModuleHealth::noteOperation(CK_RV result)
{
    note(&m_operations, result);
    if (result == CKR_OK)
        m_looks = 0;
}

void ModuleHealth::note(std::atomic<int> *faults, CK_RV result)
{
    if (result == CKR_OK)
        *faults = 0;
    else if (isFault(result))
        ++*faults;
}

} // namespace Trivex::Pkcs11
