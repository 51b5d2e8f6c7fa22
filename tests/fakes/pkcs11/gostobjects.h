// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <p11-kit/pkcs11.h>

#include <map>
#include <optional>
#include <string>

namespace Faulty {

//! The numbers of TC26 that the standard does not have.
constexpr CK_ULONG Tc26 = 0xD4321000;
constexpr CK_KEY_TYPE KeyTypeGost512 = Tc26 | 0x003;

//! A key object: what its attributes hold.
class GostObject {
public:
    using Attributes = std::map<CK_ATTRIBUTE_TYPE, std::string>;

    GostObject() = default;
    explicit GostObject(Attributes attributes)
        : m_attributes(std::move(attributes))
    {
    }

    const Attributes &attributes() const { return m_attributes; }
    bool has(CK_ATTRIBUTE_TYPE type) const { return m_attributes.count(type) > 0; }
    //! Empty without one.
    std::string value(CK_ATTRIBUTE_TYPE type) const;
    CK_ULONG number(CK_ATTRIBUTE_TYPE type) const;
    bool flag(CK_ATTRIBUTE_TYPE type) const;
    void set(CK_ATTRIBUTE_TYPE type, std::string value) { m_attributes[type] = std::move(value); }
    void setNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG value);
    void setFlag(CK_ATTRIBUTE_TYPE type, bool value);
    void remove(CK_ATTRIBUTE_TYPE type) { m_attributes.erase(type); }
    //! Sets it unless the object has one.
    void setDefaultFlag(CK_ATTRIBUTE_TYPE type, bool value);

    bool matches(const CK_ATTRIBUTE *wanted, CK_ULONG count) const;
    //! As C_GetAttributeValue answers; the secret of a sensitive key stays inside.
    CK_RV give(CK_ATTRIBUTE *wanted, CK_ULONG count) const;

private:
    Attributes m_attributes;
};

//! Copies a template. Nothing where an attribute stands twice or has no bytes where it says so.
std::optional<GostObject> objectFrom(const CK_ATTRIBUTE *attributes, CK_ULONG count);

//! The key objects of one token, a file each, so that they outlive the process as on a device.
class GostStore {
public:
    //! The directory is made where it is missing.
    explicit GostStore(const std::string &directory);

    std::map<CK_OBJECT_HANDLE, GostObject> all() const;
    std::optional<GostObject> find(CK_OBJECT_HANDLE handle) const;
    CK_OBJECT_HANDLE add(const GostObject &object);
    bool replace(CK_OBJECT_HANDLE handle, const GostObject &object);
    bool remove(CK_OBJECT_HANDLE handle);

    //! Whether \p handle is one of these and not of the real module.
    static bool isOwn(CK_OBJECT_HANDLE handle);

private:
    std::string path(CK_OBJECT_HANDLE handle) const;

    std::string m_directory;
};

} // namespace Faulty
