// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

/*! \file
 * Every PKCS#11 2.40 function once, with the kind of its first argument: what it is about decides
 * which rules and which removed slots touch it.
 */

// clang-format off
#define TRIVEX_PKCS11_FUNCTIONS(X) \
    X(C_Initialize, General) \
    X(C_Finalize, General) \
    X(C_GetInfo, General) \
    X(C_GetSlotList, General) \
    X(C_GetSlotInfo, Slot) \
    X(C_GetTokenInfo, Slot) \
    X(C_WaitForSlotEvent, General) \
    X(C_GetMechanismList, Slot) \
    X(C_GetMechanismInfo, Slot) \
    X(C_InitToken, Slot) \
    X(C_InitPIN, Session) \
    X(C_SetPIN, Session) \
    X(C_OpenSession, Slot) \
    X(C_CloseSession, Session) \
    X(C_CloseAllSessions, Slot) \
    X(C_GetSessionInfo, Session) \
    X(C_GetOperationState, Session) \
    X(C_SetOperationState, Session) \
    X(C_Login, Session) \
    X(C_Logout, Session) \
    X(C_CreateObject, Session) \
    X(C_CopyObject, Session) \
    X(C_DestroyObject, Session) \
    X(C_GetObjectSize, Session) \
    X(C_GetAttributeValue, Session) \
    X(C_SetAttributeValue, Session) \
    X(C_FindObjectsInit, Session) \
    X(C_FindObjects, Session) \
    X(C_FindObjectsFinal, Session) \
    X(C_EncryptInit, Session) \
    X(C_Encrypt, Session) \
    X(C_EncryptUpdate, Session) \
    X(C_EncryptFinal, Session) \
    X(C_DecryptInit, Session) \
    X(C_Decrypt, Session) \
    X(C_DecryptUpdate, Session) \
    X(C_DecryptFinal, Session) \
    X(C_DigestInit, Session) \
    X(C_Digest, Session) \
    X(C_DigestUpdate, Session) \
    X(C_DigestKey, Session) \
    X(C_DigestFinal, Session) \
    X(C_SignInit, Session) \
    X(C_Sign, Session) \
    X(C_SignUpdate, Session) \
    X(C_SignFinal, Session) \
    X(C_SignRecoverInit, Session) \
    X(C_SignRecover, Session) \
    X(C_VerifyInit, Session) \
    X(C_Verify, Session) \
    X(C_VerifyUpdate, Session) \
    X(C_VerifyFinal, Session) \
    X(C_VerifyRecoverInit, Session) \
    X(C_VerifyRecover, Session) \
    X(C_DigestEncryptUpdate, Session) \
    X(C_DecryptDigestUpdate, Session) \
    X(C_SignEncryptUpdate, Session) \
    X(C_DecryptVerifyUpdate, Session) \
    X(C_GenerateKey, Session) \
    X(C_GenerateKeyPair, Session) \
    X(C_WrapKey, Session) \
    X(C_UnwrapKey, Session) \
    X(C_DeriveKey, Session) \
    X(C_SeedRandom, Session) \
    X(C_GenerateRandom, Session) \
    X(C_GetFunctionStatus, Session) \
    X(C_CancelFunction, Session)
// clang-format on

namespace Faulty {

//! What the first argument of a function names.
enum class Kind { General, Slot, Session };

//! One value a function, in the order of the standard's function list.
enum class Function {
#define X(name, kind) name,
    TRIVEX_PKCS11_FUNCTIONS(X)
#undef X
        Count
};

} // namespace Faulty
