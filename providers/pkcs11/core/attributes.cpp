// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/attributes.h"

#include "providers/pkcs11/core/error.h"

#include <openssl/crypto.h>

#include <cstring>

namespace Trivex::Pkcs11 {

namespace {

constexpr auto Unavailable = CK_ULONG(-1);

// PKCS#11 2.40, 5.7: these still fill in the attributes that can be read.
bool isPartialResult(CK_RV result)
{
    return result == CKR_ATTRIBUTE_TYPE_INVALID || result == CKR_ATTRIBUTE_SENSITIVE
        || result == CKR_BUFFER_TOO_SMALL;
}

} // namespace

Template::~Template()
{
    for (std::string &value : m_values)
        OPENSSL_cleanse(value.data(), value.size());
}

Template &Template::add(CK_ATTRIBUTE_TYPE type, const void *data, size_t size)
{
    std::string &value = m_values.emplace_back(static_cast<const char *>(data), size);
    m_attributes.push_back({type, value.data(), CK_ULONG(value.size())});
    return *this;
}

Template &Template::add(CK_ATTRIBUTE_TYPE type, const QByteArray &value)
{
    return add(type, value.constData(), size_t(value.size()));
}

Template &Template::addNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG value)
{
    return add(type, &value, sizeof value);
}

Template &Template::addFlag(CK_ATTRIBUTE_TYPE type, bool value)
{
    const CK_BBOOL flag = value ? CK_TRUE : CK_FALSE;
    return add(type, &flag, sizeof flag);
}

AttributeReader::AttributeReader(std::initializer_list<Wanted> wanted)
{
    for (const Wanted &one : wanted) {
        m_buffers.emplace_back(one.expectedSize, '\0');
        m_attributes.push_back({one.type, nullptr, 0});
    }
}

void AttributeReader::prepare()
{
    for (size_t i = 0; i < m_attributes.size(); ++i) {
        m_attributes[i].pValue = m_buffers[i].data();
        m_attributes[i].ulValueLen = CK_ULONG(m_buffers[i].size());
    }
}

void AttributeReader::read(const Session &session, CK_OBJECT_HANDLE object)
{
    prepare();
    const CK_RV result = session.module()->C_GetAttributeValue(
        session.handle(), object, m_attributes.data(), CK_ULONG(m_attributes.size()));
    if (result == CKR_OK)
        return;
    if (!isPartialResult(result))
        throw Error(result, "C_GetAttributeValue");
    for (size_t i = 0; i < m_attributes.size(); ++i) {
        if (m_attributes[i].ulValueLen == Unavailable)
            readOne(session, object, i);
    }
}

bool AttributeReader::readIfThere(const Session &session, CK_OBJECT_HANDLE object)
{
    try {
        read(session, object);
        return true;
    } catch (const Error &error) {
        if (error.returnValue() != CKR_OBJECT_HANDLE_INVALID)
            throw;
        return false;
    }
}

void AttributeReader::readOne(const Session &session, CK_OBJECT_HANDLE object, size_t position)
{
    CK_ATTRIBUTE &attribute = m_attributes[position];
    attribute.pValue = nullptr;
    attribute.ulValueLen = 0;
    CK_RV result = session.module()->C_GetAttributeValue(session.handle(), object, &attribute, 1);
    if (result == CKR_OK && attribute.ulValueLen != Unavailable) {
        std::string &buffer = m_buffers[position];
        buffer.resize(std::max(buffer.size(), size_t(attribute.ulValueLen)));
        attribute.pValue = buffer.data();
        attribute.ulValueLen = CK_ULONG(buffer.size());
        result = session.module()->C_GetAttributeValue(session.handle(), object, &attribute, 1);
    }
    if (result == CKR_OK)
        return;
    attribute.ulValueLen = Unavailable;
    if (!isPartialResult(result))
        throw Error(result, "C_GetAttributeValue");
}

QByteArray AttributeReader::value(size_t position) const
{
    const CK_ATTRIBUTE &attribute = m_attributes[position];
    if (attribute.ulValueLen == Unavailable)
        return {};
    return QByteArray(m_buffers[position].data(), int(attribute.ulValueLen));
}

CK_ULONG AttributeReader::number(size_t position, CK_ULONG missing) const
{
    CK_ULONG result = missing;
    if (m_attributes[position].ulValueLen == sizeof result)
        std::memcpy(&result, m_buffers[position].data(), sizeof result);
    return result;
}

bool AttributeReader::flag(size_t position, bool missing) const
{
    if (m_attributes[position].ulValueLen != sizeof(CK_BBOOL))
        return missing;
    return m_buffers[position].front() != CK_FALSE;
}

} // namespace Trivex::Pkcs11
