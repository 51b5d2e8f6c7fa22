// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/gostobjects.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace Faulty {
namespace {

constexpr CK_OBJECT_HANDLE FirstHandle = 0x60000000;
constexpr auto Unavailable = CK_ULONG(-1);

std::string hex(const std::string &bytes)
{
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string bytes(const std::string &hex)
{
    std::string result;
    for (size_t i = 0; i + 1 < hex.size(); i += 2)
        result += char(std::stoi(hex.substr(i, 2), nullptr, 16));
    return result;
}

std::optional<GostObject> readObject(const std::string &path)
{
    std::ifstream stream(path);
    if (!stream)
        return std::nullopt;
    GostObject object;
    std::string line;
    while (std::getline(stream, line)) {
        std::istringstream words(line);
        CK_ATTRIBUTE_TYPE type = 0;
        std::string value;
        words >> type >> value;
        object.set(type, bytes(value));
    }
    return object;
}

bool writeObject(const std::string &path, const GostObject &object)
{
    const std::string temporary = path + ".new";
    {
        std::ofstream stream(temporary);
        for (const auto &[type, value] : object.attributes())
            stream << type << ' ' << hex(value) << '\n';
        if (!stream.flush())
            return false;
    }
    return std::rename(temporary.c_str(), path.c_str()) == 0;
}

} // namespace

std::string GostObject::value(CK_ATTRIBUTE_TYPE type) const
{
    const auto found = m_attributes.find(type);
    return found == m_attributes.end() ? std::string() : found->second;
}

CK_ULONG GostObject::number(CK_ATTRIBUTE_TYPE type) const
{
    CK_ULONG result = Unavailable;
    const std::string bytes = value(type);
    if (bytes.size() == sizeof result)
        std::memcpy(&result, bytes.data(), sizeof result);
    return result;
}

bool GostObject::flag(CK_ATTRIBUTE_TYPE type) const
{
    const std::string bytes = value(type);
    return bytes.size() == 1 && bytes.front() != CK_FALSE;
}

void GostObject::setNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG value)
{
    set(type, std::string(reinterpret_cast<const char *>(&value), sizeof value));
}

void GostObject::setFlag(CK_ATTRIBUTE_TYPE type, bool value)
{
    set(type, std::string(1, value ? CK_TRUE : CK_FALSE));
}

void GostObject::setDefaultFlag(CK_ATTRIBUTE_TYPE type, bool value)
{
    if (!has(type))
        setFlag(type, value);
}

bool GostObject::matches(const CK_ATTRIBUTE *wanted, CK_ULONG count) const
{
    return std::all_of(wanted, wanted + count, [this](const CK_ATTRIBUTE &one) {
        return has(one.type)
            && value(one.type)
            == std::string(static_cast<const char *>(one.pValue), one.ulValueLen);
    });
}

CK_RV GostObject::give(CK_ATTRIBUTE *wanted, CK_ULONG count) const
{
    CK_RV result = CKR_OK;
    for (CK_ULONG i = 0; i < count; ++i) {
        CK_ATTRIBUTE &one = wanted[i];
        const bool isSecret = one.type == CKA_VALUE && number(CKA_CLASS) == CKO_PRIVATE_KEY
            && (flag(CKA_SENSITIVE) || !flag(CKA_EXTRACTABLE));
        const std::string bytes = value(one.type);
        if (isSecret || !has(one.type)) {
            result = isSecret ? CKR_ATTRIBUTE_SENSITIVE : CKR_ATTRIBUTE_TYPE_INVALID;
            one.ulValueLen = Unavailable;
        } else if (one.pValue && one.ulValueLen < bytes.size()) {
            result = CKR_BUFFER_TOO_SMALL;
            one.ulValueLen = Unavailable;
        } else {
            if (one.pValue)
                std::memcpy(one.pValue, bytes.data(), bytes.size());
            one.ulValueLen = bytes.size();
        }
    }
    return result;
}

std::optional<GostObject> objectFrom(const CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    GostObject object;
    for (CK_ULONG i = 0; i < count; ++i) {
        const CK_ATTRIBUTE &one = attributes[i];
        if (object.has(one.type) || (!one.pValue && one.ulValueLen > 0))
            return std::nullopt;
        object.set(one.type, std::string(static_cast<const char *>(one.pValue), one.ulValueLen));
    }
    return object;
}

GostStore::GostStore(const std::string &directory)
    : m_directory(directory)
{
    ::mkdir(directory.c_str(), 0700);
}

bool GostStore::isOwn(CK_OBJECT_HANDLE handle)
{
    return handle >= FirstHandle;
}

std::string GostStore::path(CK_OBJECT_HANDLE handle) const
{
    return m_directory + '/' + std::to_string(handle) + ".key";
}

std::map<CK_OBJECT_HANDLE, GostObject> GostStore::all() const
{
    std::map<CK_OBJECT_HANDLE, GostObject> objects;
    DIR *directory = ::opendir(m_directory.c_str());
    while (const dirent *entry = directory ? ::readdir(directory) : nullptr) {
        const CK_OBJECT_HANDLE handle = std::strtoul(entry->d_name, nullptr, 10);
        if (!isOwn(handle) || path(handle) != m_directory + '/' + entry->d_name)
            continue;
        if (const auto object = find(handle))
            objects[handle] = *object;
    }
    if (directory)
        ::closedir(directory);
    return objects;
}

std::optional<GostObject> GostStore::find(CK_OBJECT_HANDLE handle) const
{
    return isOwn(handle) ? readObject(path(handle)) : std::nullopt;
}

CK_OBJECT_HANDLE GostStore::add(const GostObject &object)
{
    const auto present = all();
    const CK_OBJECT_HANDLE handle = present.empty() ? FirstHandle : present.rbegin()->first + 1;
    return writeObject(path(handle), object) ? handle : CK_INVALID_HANDLE;
}

bool GostStore::replace(CK_OBJECT_HANDLE handle, const GostObject &object)
{
    return find(handle) && writeObject(path(handle), object);
}

bool GostStore::remove(CK_OBJECT_HANDLE handle)
{
    return std::remove(path(handle).c_str()) == 0;
}

} // namespace Faulty
