// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/gostlayer.h"

#include "tests/fakes/pkcs11/device.h"
#include "tests/fakes/pkcs11/gosttemplates.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace Faulty {

struct GostMechanism {
    CK_MECHANISM_TYPE type;
    CK_FLAGS use;
    size_t size; //!< of a number of the key, in bytes
    const char *digest; //!< that it computes; none where it takes one
    const char *habit; //!< the order that hides it
};

//! A session as the real module has it.
struct GostSession {
    std::string directory; //!< of its token's keys
    bool isUser = false;
    bool isWritable = false;

    bool sees(const GostObject &object) const { return isUser || !object.flag(CKA_PRIVATE); }
};

namespace {

constexpr char TakesMessages[] = "message-only";
constexpr char TakesDigests[] = "digest-only";
constexpr char DigestsNothing[] = "no-digest";

const GostMechanism mechanisms[] = {
    {CKM_GOSTR3410_KEY_PAIR_GEN, CKF_GENERATE_KEY_PAIR, 32, nullptr, ""},
    {Tc26 | 0x005, CKF_GENERATE_KEY_PAIR, 64, nullptr, ""},
    {CKM_GOSTR3410, CKF_SIGN, 32, nullptr, TakesMessages},
    {Tc26 | 0x006, CKF_SIGN, 64, nullptr, TakesMessages},
    {CKM_GOSTR3410_WITH_GOSTR3411, CKF_SIGN, 32, "md_gost94", TakesDigests},
    {Tc26 | 0x008, CKF_SIGN, 32, "md_gost12_256", TakesDigests},
    {Tc26 | 0x009, CKF_SIGN, 64, "md_gost12_512", TakesDigests},
    {CKM_GOSTR3411, CKF_DIGEST, 32, "md_gost94", DigestsNothing},
    {Tc26 | 0x012, CKF_DIGEST, 32, "md_gost12_256", DigestsNothing},
    {Tc26 | 0x013, CKF_DIGEST, 64, "md_gost12_512", DigestsNothing},
};

CK_FUNCTION_LIST &target()
{
    return *Device::instance().target();
}

CK_RV giveBytes(const std::string &bytes, CK_BYTE *result, CK_ULONG *room)
{
    if (bytes.empty())
        return CKR_DEVICE_ERROR;
    std::memcpy(result, bytes.data(), bytes.size());
    *room = bytes.size();
    return CKR_OK;
}

std::string text(const CK_BYTE *data, CK_ULONG size)
{
    return {reinterpret_cast<const char *>(data), size};
}

} // namespace

GostLayer::GostLayer(std::string directory)
    : m_directory(std::move(directory))
{
    ::mkdir(m_directory.c_str(), 0700);
}

GostLayer *GostLayer::instance()
{
    static GostLayer *const layer = [] {
        const char *directory = std::getenv("TRIVEX_FAULTY_GOST");
        return directory && *directory ? new GostLayer(directory) : nullptr;
    }();
    return layer;
}

const GostMechanism *GostLayer::offered(CK_MECHANISM_TYPE type, CK_FLAGS use) const
{
    for (const GostMechanism &one : mechanisms) {
        if (one.type == type && (one.use & use) && !Device::instance().hasGostHabit(one.habit))
            return &one;
    }
    return nullptr;
}

GostObject GostLayer::shown(GostObject object) const
{
    const Device &device = Device::instance();
    const std::string value = object.value(CKA_VALUE);
    if (device.hasGostHabit("wrapped") && object.number(CKA_CLASS) == CKO_PUBLIC_KEY) {
        const std::string header = value.size() < 0x80 ? "\x04" : "\x04\x81";
        object.set(CKA_VALUE, header + char(value.size()) + value);
    }
    if (device.hasGostHabit("no-digest-parameters"))
        object.remove(CKA_GOSTR3411_PARAMS);
    return object;
}

CK_RV GostLayer::look(CK_SESSION_HANDLE session, GostSession *result) const
{
    CK_SESSION_INFO info{};
    CK_TOKEN_INFO token{};
    CK_RV error = target().C_GetSessionInfo(session, &info);
    if (error == CKR_OK)
        error = target().C_GetTokenInfo(info.slotID, &token);
    std::string serial(reinterpret_cast<const char *>(token.serialNumber),
                       sizeof token.serialNumber);
    std::replace(serial.begin(), serial.end(), '/', '_');
    result->directory = m_directory + '/' + serial;
    result->isUser = info.state == CKS_RO_USER_FUNCTIONS || info.state == CKS_RW_USER_FUNCTIONS;
    result->isWritable = info.flags & CKF_RW_SESSION;
    return error;
}

CK_RV GostLayer::lookFor(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle, GostSession *result,
                         GostObject *object) const
{
    const CK_RV error = look(session, result);
    if (error != CKR_OK)
        return error;
    const auto found = GostStore(result->directory).find(handle);
    if (!found || !result->sees(*found))
        return CKR_OBJECT_HANDLE_INVALID;
    *object = *found;
    return CKR_OK;
}

CK_RV GostLayer::mechanismList(CK_SLOT_ID slot, CK_MECHANISM_TYPE *types, CK_ULONG *count)
{
    const CK_ULONG room = *count;
    CK_ULONG others = 0;
    const CK_RV error = target().C_GetMechanismList(slot, nullptr, &others);
    if (error != CKR_OK)
        return error;
    std::vector<CK_MECHANISM_TYPE> all(others);
    target().C_GetMechanismList(slot, all.data(), &others);
    all.resize(others);
    for (const GostMechanism &one : mechanisms) {
        if (offered(one.type, one.use))
            all.push_back(one.type);
    }
    *count = all.size();
    if (types && room < all.size())
        return CKR_BUFFER_TOO_SMALL;
    if (types)
        std::copy(all.begin(), all.end(), types);
    return CKR_OK;
}

CK_RV GostLayer::mechanismInfo(CK_SLOT_ID slot, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO *info)
{
    const GostMechanism *own = offered(type, ~CK_FLAGS(0));
    if (!own) {
        const CK_RV result = target().C_GetMechanismInfo(slot, type, info);
        const bool isVague = Device::instance().hasGostHabit("vague");
        return result != CKR_OK && isVague ? CKR_FUNCTION_FAILED : result;
    }
    const CK_ULONG bits = 8 * own->size;
    *info = {bits, bits, own->use | CKF_HW};
    return CKR_OK;
}

CK_RV GostLayer::createObject(CK_SESSION_HANDLE session, CK_ATTRIBUTE *attributes, CK_ULONG count,
                              CK_OBJECT_HANDLE *handle)
{
    auto object = objectFrom(attributes, count);
    const CK_ULONG type = object ? object->number(CKA_KEY_TYPE) : CK_ULONG(-1);
    if (type != CKK_GOSTR3410 && type != KeyTypeGost512)
        return target().C_CreateObject(session, attributes, count, handle);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    CK_RV error = look(session, &known);
    if (error == CKR_OK)
        error = completeCreated(GostOpenssl(m_directory), &*object);
    if (error != CKR_OK)
        return error;
    if (!known.isWritable)
        return CKR_SESSION_READ_ONLY;
    if (!known.sees(*object))
        return CKR_USER_NOT_LOGGED_IN;
    *handle = GostStore(known.directory).add(*object);
    return *handle == CK_INVALID_HANDLE ? CKR_DEVICE_ERROR : CKR_OK;
}

CK_RV GostLayer::destroyObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle)
{
    if (!GostStore::isOwn(handle))
        return target().C_DestroyObject(session, handle);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    GostObject object;
    const CK_RV error = lookFor(session, handle, &known, &object);
    if (error != CKR_OK)
        return error;
    if (!known.isWritable)
        return CKR_SESSION_READ_ONLY;
    return GostStore(known.directory).remove(handle) ? CKR_OK : CKR_DEVICE_ERROR;
}

CK_RV GostLayer::getAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle,
                               CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    if (!GostStore::isOwn(handle))
        return target().C_GetAttributeValue(session, handle, attributes, count);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    GostObject object;
    const CK_RV error = lookFor(session, handle, &known, &object);
    return error == CKR_OK ? shown(object).give(attributes, count) : error;
}

CK_RV GostLayer::setAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle,
                               CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    if (!GostStore::isOwn(handle))
        return target().C_SetAttributeValue(session, handle, attributes, count);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    GostObject object;
    const CK_RV error = lookFor(session, handle, &known, &object);
    if (error != CKR_OK)
        return error;
    if (!known.isWritable)
        return CKR_SESSION_READ_ONLY;
    for (CK_ULONG i = 0; i < count; ++i) {
        if (attributes[i].type != CKA_ID && attributes[i].type != CKA_LABEL)
            return CKR_ATTRIBUTE_READ_ONLY;
        object.set(
            attributes[i].type,
            text(static_cast<const CK_BYTE *>(attributes[i].pValue), attributes[i].ulValueLen));
    }
    return GostStore(known.directory).replace(handle, object) ? CKR_OK : CKR_DEVICE_ERROR;
}

CK_RV GostLayer::findInit(CK_SESSION_HANDLE session, CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    CK_RV error = target().C_FindObjectsInit(session, attributes, count);
    if (error != CKR_OK)
        return error;
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    error = look(session, &known);
    if (error != CKR_OK)
        return error;
    auto &found = m_works[session].found;
    found.clear();
    for (const auto &[handle, object] : GostStore(known.directory).all()) {
        if (known.sees(object) && shown(object).matches(attributes, count))
            found.push_back(handle);
    }
    return CKR_OK;
}

CK_RV GostLayer::find(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE *handles, CK_ULONG room,
                      CK_ULONG *count)
{
    CK_ULONG own = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        auto &found = m_works[session].found;
        own = std::min<CK_ULONG>(room, found.size());
        std::copy_n(found.begin(), own, handles);
        found.erase(found.begin(), found.begin() + long(own));
    }
    CK_ULONG others = 0;
    const CK_RV error =
        own == room ? CKR_OK : target().C_FindObjects(session, handles + own, room - own, &others);
    *count = own + others;
    return error;
}

CK_RV GostLayer::findFinal(CK_SESSION_HANDLE session)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_works[session].found.clear();
    return target().C_FindObjectsFinal(session);
}

CK_RV GostLayer::generatePair(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism,
                              CK_ATTRIBUTE *publicPart, CK_ULONG publicCount,
                              CK_ATTRIBUTE *privatePart, CK_ULONG privateCount,
                              CK_OBJECT_HANDLE *publicHandle, CK_OBJECT_HANDLE *privateHandle)
{
    const GostMechanism *own = offered(mechanism->mechanism, CKF_GENERATE_KEY_PAIR);
    if (!own)
        return target().C_GenerateKeyPair(session, mechanism, publicPart, publicCount, privatePart,
                                          privateCount, publicHandle, privateHandle);
    auto publicObject = objectFrom(publicPart, publicCount);
    auto privateObject = objectFrom(privatePart, privateCount);
    if (!publicObject || !privateObject)
        return CKR_TEMPLATE_INCONSISTENT;
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    CK_RV error = look(session, &known);
    if (error == CKR_OK && !known.isWritable)
        error = CKR_SESSION_READ_ONLY;
    if (error == CKR_OK && !known.isUser)
        error = CKR_USER_NOT_LOGGED_IN;
    if (error == CKR_OK)
        error =
            completeGenerated(GostOpenssl(m_directory), own->size, &*publicObject, &*privateObject);
    if (error != CKR_OK)
        return error;
    GostStore store(known.directory);
    *publicHandle = store.add(*publicObject);
    *privateHandle = store.add(*privateObject);
    return *publicHandle && *privateHandle ? CKR_OK : CKR_DEVICE_ERROR;
}

CK_RV GostLayer::digestInit(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism)
{
    const GostMechanism *own = offered(mechanism->mechanism, CKF_DIGEST);
    if (!own)
        return target().C_DigestInit(session, mechanism);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    const CK_RV error = look(session, &known);
    if (error == CKR_OK)
        m_works[session].digest = own;
    return error;
}

CK_RV GostLayer::digest(CK_SESSION_HANDLE session, CK_BYTE *data, CK_ULONG size, CK_BYTE *result,
                        CK_ULONG *room)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const GostMechanism *&own = m_works[session].digest;
    if (!own) {
        lock.unlock();
        return target().C_Digest(session, data, size, result, room);
    }
    if (!result || *room < own->size) {
        *room = own->size;
        return result ? CKR_BUFFER_TOO_SMALL : CKR_OK;
    }
    const std::string name = own->digest;
    own = nullptr;
    return giveBytes(GostOpenssl(m_directory).digest(name.c_str(), text(data, size)), result, room);
}

CK_RV GostLayer::signInit(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism, CK_OBJECT_HANDLE key)
{
    if (!GostStore::isOwn(key))
        return target().C_SignInit(session, mechanism, key);
    const std::lock_guard<std::mutex> lock(m_mutex);
    GostSession known;
    GostObject object;
    const CK_RV error = lookFor(session, key, &known, &object);
    if (error != CKR_OK)
        return error == CKR_OBJECT_HANDLE_INVALID ? CKR_KEY_HANDLE_INVALID : error;
    const GostMechanism *own = offered(mechanism->mechanism, CKF_SIGN);
    if (!own)
        return CKR_MECHANISM_INVALID;
    if (object.number(CKA_CLASS) != CKO_PRIVATE_KEY || !object.flag(CKA_SIGN))
        return CKR_KEY_FUNCTION_NOT_PERMITTED;
    const GostKind &kind = *kindOf(object);
    if (kind.size != own->size || (own->digest && std::strcmp(own->digest, kind.digest) != 0))
        return CKR_KEY_TYPE_INCONSISTENT;
    // The digest's parameters may stand there where there is a digest.
    const std::string parameter =
        text(static_cast<const CK_BYTE *>(mechanism->pParameter), mechanism->ulParameterLen);
    if (!parameter.empty() && (!own->digest || parameter != kind.digestOid))
        return CKR_MECHANISM_PARAM_INVALID;
    Work &work = m_works[session];
    work.sign = own;
    work.key = object;
    return CKR_OK;
}

CK_RV GostLayer::sign(CK_SESSION_HANDLE session, CK_BYTE *data, CK_ULONG size, CK_BYTE *result,
                      CK_ULONG *room)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    Work &work = m_works[session];
    if (!work.sign) {
        lock.unlock();
        return target().C_Sign(session, data, size, result, room);
    }
    const GostMechanism &own = *work.sign;
    const CK_ULONG needed = 2 * own.size;
    if (!result || *room < needed) {
        *room = needed;
        return result ? CKR_BUFFER_TOO_SMALL : CKR_OK;
    }
    work.sign = nullptr;
    if (!own.digest && size != own.size)
        return CKR_DATA_LEN_RANGE;
    const GostOpenssl openssl(m_directory);
    const std::string digest =
        own.digest ? openssl.digest(own.digest, text(data, size)) : text(data, size);
    return giveBytes(
        openssl.sign(*kindOf(work.key), *setOf(work.key), work.key.value(CKA_VALUE), digest),
        result, room);
}

} // namespace Faulty
