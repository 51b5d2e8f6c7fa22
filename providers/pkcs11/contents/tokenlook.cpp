// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokenlook.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/gostkeys.h"
#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/contents/tokentext.h"

#include <algorithm>
#include <limits>

namespace Trivex {

using Pkcs11::Session;

namespace {

/// No token knows more mechanisms; a module that says so is not believed.
constexpr CK_ULONG MostMechanisms = 4096;
/// The room is doubled up to this where a module has more than it said.
constexpr size_t LargestList = 2 * MostMechanisms;

/// PKCS#11 2.40, 3.2: a byte for each part.
QString versionText(const CK_VERSION &version)
{
    return version.major == 0 && version.minor == 0
        ? QString()
        : QStringLiteral("%1.%2").arg(int(version.major)).arg(int(version.minor));
}

/// -1 where the token does not tell. That is all bits, some write those of a smaller number.
qint64 spaceIn(CK_ULONG value)
{
    constexpr CK_ULONG UnavailableIn32Bits = 0xFFFFFFFF;
    return value == CK_UNAVAILABLE_INFORMATION || value == UnavailableIn32Bits
            || value > CK_ULONG(std::numeric_limits<qint64>::max())
        ? -1
        : qint64(value);
}

/// Public and private objects share one space on most tokens, and then both numbers are the same.
qint64 spaceOf(CK_ULONG publicSpace, CK_ULONG privateSpace)
{
    return std::max(spaceIn(publicSpace), spaceIn(privateSpace));
}

struct Known {
    CK_MECHANISM_TYPE mechanism;
    TokenAbility::Kind kind;
    bool TokenAbility::*does;
    int bits = 0; ///< of its keys, where they all have that size; else the token tells it
};

/// Keys are made and used by these mechanisms and no others, CKM_RSA_X9_31_KEY_PAIR_GEN or
/// CKM_SHA256_RSA_PKCS, say.
constexpr Known KnownMechanisms[] = {
    {CKM_RSA_PKCS_KEY_PAIR_GEN, TokenAbility::Rsa, &TokenAbility::makes},
    {CKM_RSA_PKCS, TokenAbility::Rsa, &TokenAbility::signs},
    {CKM_EC_KEY_PAIR_GEN, TokenAbility::EllipticCurve, &TokenAbility::makes},
    {CKM_ECDSA, TokenAbility::EllipticCurve, &TokenAbility::signs},
    {CKM_EC_EDWARDS_KEY_PAIR_GEN, TokenAbility::Edwards, &TokenAbility::makes},
    {CKM_EDDSA, TokenAbility::Edwards, &TokenAbility::signs},
    {CKM_GOSTR3410_KEY_PAIR_GEN, TokenAbility::Gost, &TokenAbility::makes, 256},
    {CKM_GOSTR3410, TokenAbility::Gost, &TokenAbility::signs},
    {MechanismGost512Generate, TokenAbility::Gost, &TokenAbility::makes, 512},
    {MechanismGost512Sign, TokenAbility::Gost, &TokenAbility::signs},
};

std::vector<CK_MECHANISM_TYPE> mechanismsOf(const Session &session, CK_SLOT_ID slot)
{
    CK_ULONG count = 0;
    Pkcs11::check(session.module()->C_GetMechanismList(slot, nullptr, &count),
                  "C_GetMechanismList");
    if (count == 0)
        return {};
    CK_RV result = CKR_OK;
    std::vector<CK_MECHANISM_TYPE> all(std::min(count, MostMechanisms));
    for (;;) {
        count = CK_ULONG(all.size());
        result = session.module()->C_GetMechanismList(slot, all.data(), &count);
        // A module may have more of them than it has said, or than it is believed.
        if (result != CKR_BUFFER_TOO_SMALL || all.size() >= LargestList)
            break;
        all.resize(all.size() * 2);
    }
    Pkcs11::check(result, "C_GetMechanismList");
    all.resize(std::min(size_t(count), all.size()));
    return all;
}

TokenAbility &abilityOf(QVector<TokenAbility> &all, TokenAbility::Kind kind)
{
    for (TokenAbility &one : all) {
        if (one.kind == kind)
            return one;
    }
    TokenAbility made;
    made.kind = kind;
    all.append(made);
    return all.last();
}

struct Sizes {
    int smallest = 0;
    int largest = 0; ///< 0: not told
};

/// Sizes of RSA keys are told in bytes by some tokens, which no key in use is short enough for.
Sizes sizesOf(const Known &known, const CK_MECHANISM_INFO &info)
{
    constexpr CK_ULONG ShortestInBits = 128;
    constexpr CK_ULONG LongestInBits = 65536;
    if (known.bits)
        return {known.bits, known.bits};
    if (known.kind == TokenAbility::Gost || info.ulMaxKeySize == 0
        || info.ulMaxKeySize > LongestInBits || info.ulMinKeySize > info.ulMaxKeySize)
        return {};
    const int unit =
        known.kind == TokenAbility::Rsa && info.ulMaxKeySize <= 4 * ShortestInBits ? 8 : 1;
    return {int(info.ulMinKeySize) * unit, int(info.ulMaxKeySize) * unit};
}

void widen(const Sizes &by, int *smallest, int *largest)
{
    if (by.largest == 0)
        return;
    *smallest = *largest == 0 ? by.smallest : std::min(*smallest, by.smallest);
    *largest = std::max(*largest, by.largest);
}

} // namespace

TokenFacts factsOf(const CK_TOKEN_INFO &info)
{
    TokenFacts facts;
    facts.label = paddedText(info.label);
    facts.firmware = versionText(info.firmwareVersion);
    facts.hardware = versionText(info.hardwareVersion);
    facts.totalSpace = spaceOf(info.ulTotalPublicMemory, info.ulTotalPrivateMemory);
    facts.freeSpace = spaceOf(info.ulFreePublicMemory, info.ulFreePrivateMemory);
    facts.needsLogin = info.flags & CKF_LOGIN_REQUIRED;
    facts.hasUserPin = info.flags & CKF_USER_PIN_INITIALIZED;
    return facts;
}

bool isFor(const CK_MECHANISM_INFO &info, CK_FLAGS use)
{
    constexpr CK_FLAGS Uses = CKF_ENCRYPT | CKF_DECRYPT | CKF_DIGEST | CKF_SIGN | CKF_SIGN_RECOVER
        | CKF_VERIFY | CKF_VERIFY_RECOVER | CKF_WRAP | CKF_UNWRAP;
    return info.flags & use || !(info.flags & Uses);
}

void noteAbility(CK_MECHANISM_TYPE mechanism, const CK_MECHANISM_INFO &info,
                 QVector<TokenAbility> *all)
{
    for (const Known &known : KnownMechanisms) {
        if (known.mechanism != mechanism)
            continue;
        TokenAbility &ability = abilityOf(*all, known.kind);
        if (known.does != &TokenAbility::signs || isFor(info, CKF_SIGN))
            ability.*known.does = true;
        if (mechanism == CKM_RSA_PKCS)
            ability.decrypts = info.flags & CKF_DECRYPT;
        const Sizes sizes = sizesOf(known, info);
        widen(sizes, &ability.smallest, &ability.largest);
        if (known.does == &TokenAbility::makes)
            widen(sizes, &ability.madeSmallest, &ability.madeLargest);
    }
}

TokenLook lookAt(const Session &session, CK_SLOT_ID slot)
{
    TokenLook look;
    const std::vector<CK_MECHANISM_TYPE> mechanisms = mechanismsOf(session, slot);
    for (const Known &known : KnownMechanisms) {
        CK_MECHANISM_INFO info = {};
        if (std::find(mechanisms.begin(), mechanisms.end(), known.mechanism) != mechanisms.end()
            && session.module()->C_GetMechanismInfo(slot, known.mechanism, &info) == CKR_OK)
            noteAbility(known.mechanism, info, &look.abilities);
    }
    look.mechanisms = int(mechanisms.size());
    look.secretKeys = int(Pkcs11::findObjects(session, CKO_SECRET_KEY).size());
    look.dataObjects = int(Pkcs11::findObjects(session, CKO_DATA).size());
    look.isTaken = true;
    return look;
}

} // namespace Trivex
