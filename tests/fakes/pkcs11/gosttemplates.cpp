// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/gosttemplates.h"

#include <algorithm>
#include <set>

namespace Faulty {
namespace {

using Types = std::set<CK_ATTRIBUTE_TYPE>;

const Types commonTypes = {
    CKA_CLASS,
    CKA_TOKEN,
    CKA_PRIVATE,
    CKA_LABEL,
    CKA_MODIFIABLE,
    CKA_KEY_TYPE,
    CKA_ID,
    CKA_START_DATE,
    CKA_END_DATE,
    CKA_DERIVE,
    CKA_SUBJECT,
    CKA_VALUE,
    CKA_GOSTR3410_PARAMS,
    CKA_GOSTR3411_PARAMS,
    CKA_GOST28147_PARAMS,
};
const Types publicTypes = {CKA_VERIFY, CKA_ENCRYPT, CKA_WRAP, CKA_VERIFY_RECOVER, CKA_TRUSTED};
const Types privateTypes = {CKA_SIGN,
                            CKA_DECRYPT,
                            CKA_UNWRAP,
                            CKA_SIGN_RECOVER,
                            CKA_EXTRACTABLE,
                            CKA_SENSITIVE,
                            CKA_ALWAYS_AUTHENTICATE};

CK_KEY_TYPE typeFor(size_t size)
{
    return size == 64 ? KeyTypeGost512 : CKK_GOSTR3410;
}

bool isPrivate(const GostObject &object)
{
    return object.number(CKA_CLASS) == CKO_PRIVATE_KEY;
}

CK_RV checkTypes(const GostObject &object)
{
    const Types &own = isPrivate(object) ? privateTypes : publicTypes;
    for (const auto &[type, value] : object.attributes()) {
        if (commonTypes.count(type) == 0 && own.count(type) == 0)
            return CKR_ATTRIBUTE_TYPE_INVALID;
    }
    // Keys of a session are not kept here.
    return object.flag(CKA_TOKEN) ? CKR_OK : CKR_TEMPLATE_INCONSISTENT;
}

CK_RV checkParameters(const GostObject &object)
{
    if (!object.has(CKA_GOSTR3410_PARAMS) || !object.has(CKA_GOSTR3411_PARAMS))
        return CKR_TEMPLATE_INCOMPLETE;
    return kindOf(object) && setOf(object) ? CKR_OK : CKR_DOMAIN_PARAMS_INVALID;
}

void addDefaults(GostObject *object, bool isGenerated)
{
    const bool secret = isPrivate(*object);
    object->setDefaultFlag(CKA_PRIVATE, secret);
    object->setDefaultFlag(CKA_MODIFIABLE, true);
    object->setDefaultFlag(CKA_DERIVE, false);
    object->setFlag(CKA_LOCAL, isGenerated);
    for (const CK_ATTRIBUTE_TYPE text : {CKA_ID, CKA_LABEL, CKA_SUBJECT}) {
        if (!object->has(text))
            object->set(text, {});
    }
    if (!secret) {
        object->setDefaultFlag(CKA_VERIFY, true);
        return;
    }
    object->setDefaultFlag(CKA_SIGN, true);
    object->setDefaultFlag(CKA_SENSITIVE, true);
    object->setDefaultFlag(CKA_EXTRACTABLE, false);
    object->setDefaultFlag(CKA_ALWAYS_AUTHENTICATE, false);
    object->setFlag(CKA_ALWAYS_SENSITIVE, isGenerated && object->flag(CKA_SENSITIVE));
    object->setFlag(CKA_NEVER_EXTRACTABLE, isGenerated && !object->flag(CKA_EXTRACTABLE));
}

//! A part of a generation says of itself what the mechanism says too, or nothing.
bool agree(GostObject *part, CK_ATTRIBUTE_TYPE type, CK_ULONG value)
{
    if (part->has(type))
        return part->number(type) == value;
    part->setNumber(type, value);
    return true;
}

} // namespace

const GostKind *kindOf(const GostObject &object)
{
    const GostKind *kind = gostKind(object.value(CKA_GOSTR3411_PARAMS));
    return kind && typeFor(kind->size) == object.number(CKA_KEY_TYPE) ? kind : nullptr;
}

const GostSet *setOf(const GostObject &object)
{
    const GostKind *kind = kindOf(object);
    return kind ? gostSet(object.value(CKA_GOSTR3410_PARAMS), kind->size) : nullptr;
}

CK_RV completeCreated(const GostOpenssl &openssl, GostObject *object)
{
    const CK_ULONG objectClass = object->number(CKA_CLASS);
    if (objectClass != CKO_PUBLIC_KEY && objectClass != CKO_PRIVATE_KEY)
        return CKR_TEMPLATE_INCONSISTENT;
    if (!object->has(CKA_VALUE))
        return CKR_TEMPLATE_INCOMPLETE;
    CK_RV result = checkTypes(*object);
    if (result == CKR_OK)
        result = checkParameters(*object);
    if (result != CKR_OK)
        return result;
    const GostKind &kind = *kindOf(*object);
    const std::string value = object->value(CKA_VALUE);
    const bool isGood = isPrivate(*object)
        ? value.size() == kind.size && !openssl.publicPoint(kind, *setOf(*object), value).empty()
        : value.size() == 2 * kind.size;
    if (!isGood)
        return CKR_ATTRIBUTE_VALUE_INVALID;
    addDefaults(object, false);
    return CKR_OK;
}

CK_RV completeGenerated(const GostOpenssl &openssl, size_t size, GostObject *publicPart,
                        GostObject *privatePart)
{
    const bool isConsistent = agree(publicPart, CKA_CLASS, CKO_PUBLIC_KEY)
        && agree(privatePart, CKA_CLASS, CKO_PRIVATE_KEY)
        && agree(publicPart, CKA_KEY_TYPE, typeFor(size))
        && agree(privatePart, CKA_KEY_TYPE, typeFor(size)) && !publicPart->has(CKA_VALUE)
        && !privatePart->has(CKA_VALUE);
    if (!isConsistent)
        return CKR_TEMPLATE_INCONSISTENT;
    for (const CK_RV result :
         {checkTypes(*publicPart), checkTypes(*privatePart), checkParameters(*publicPart)}) {
        if (result != CKR_OK)
            return result;
    }
    for (const CK_ATTRIBUTE_TYPE type : {CKA_GOSTR3410_PARAMS, CKA_GOSTR3411_PARAMS})
        privatePart->set(type, publicPart->value(type));
    const GostKind &kind = *kindOf(*publicPart);
    const GostSet &set = *setOf(*publicPart);
    privatePart->set(CKA_VALUE, openssl.generate(kind, set));
    publicPart->set(CKA_VALUE, openssl.publicPoint(kind, set, privatePart->value(CKA_VALUE)));
    addDefaults(publicPart, true);
    addDefaults(privatePart, true);
    return publicPart->value(CKA_VALUE).size() == 2 * size ? CKR_OK : CKR_DEVICE_ERROR;
}

} // namespace Faulty
