// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/attributes.h"

#include "providers/pkcs11/calls/error.h"

#include <openssl/crypto.h>

#include <cstring>

namespace Trivex::Pkcs11 {

namespace {

constexpr auto Unavailable = CK_ULONG(-1);
/// The reader asks this often for a value that grows between two calls.
constexpr int Attempts = 4;

// PKCS#11 2.40, 5.7: these still fill in the attributes that can be read.
bool isPartialResult(CK_RV result)
{
    return result == CKR_ATTRIBUTE_TYPE_INVALID || result == CKR_ATTRIBUTE_SENSITIVE
        || result == CKR_BUFFER_TOO_SMALL;
}

} // namespace

bool isOfOneObject(CK_RV result)
{
    return result == CKR_FUNCTION_FAILED || result == CKR_GENERAL_ERROR
        || result == CKR_DATA_INVALID || result == CKR_ATTRIBUTE_VALUE_INVALID
        || result == CKR_FUNCTION_NOT_SUPPORTED;
}

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

/// One attribute, as it is asked for and as it came.
struct AttributeReader::Value {
    CK_ATTRIBUTE_TYPE type;
    std::string buffer;
    /// The size of the value; the rest of the buffer is zero.
    size_t size = 0;
    bool isThere = false;
    bool isTooLarge = false;

    /// Clears the buffer, so that no byte of the previous object shows when a module writes less
    /// than it says.
    CK_ATTRIBUTE request()
    {
        std::memset(buffer.data(), 0, size);
        size = 0;
        isThere = isTooLarge = false;
        return {type, buffer.data(), CK_ULONG(buffer.size())};
    }

    /// False when the answer can't be: longer than the buffer that it was put into.
    bool accept(CK_ULONG length)
    {
        if (length > buffer.size()) {
            size = buffer.size();
            return false;
        }
        size = size_t(length);
        isThere = true;
        return true;
    }

    void reject()
    {
        size = buffer.size();
        isThere = false;
    }
};

AttributeReader::AttributeReader(std::initializer_list<Attribute> attributes)
{
    for (const Attribute &attribute : attributes)
        m_values.push_back({attribute.type, std::string(attribute.expectedSize, '\0')});
}

AttributeReader::~AttributeReader() = default;

void AttributeReader::read(const Session &session, CK_OBJECT_HANDLE object)
{
    if (readAll(session, object))
        return;
    for (Value &value : m_values) {
        if (!value.isThere)
            readAlone(session, object, value);
    }
}

/// The first attribute that the module marks as one that it can't tell; 0 where it marks none.
size_t AttributeReader::firstTrouble(const std::vector<CK_ATTRIBUTE> &attributes,
                                     const std::vector<Value> &values)
{
    for (size_t i = 0; i < attributes.size(); ++i) {
        if (attributes[i].ulValueLen > values[i].buffer.size())
            return i;
    }
    return 0;
}

/// All of them in one call. False when some have to be asked for again.
bool AttributeReader::readAll(const Session &session, CK_OBJECT_HANDLE object)
{
    // The module gets attributes of this call only: it may change whatever it is given.
    std::vector<CK_ATTRIBUTE> attributes;
    for (Value &value : m_values)
        attributes.push_back(value.request());
    const CK_RV result = session.module()->C_GetAttributeValue(
        session.handle(), object, attributes.data(), CK_ULONG(attributes.size()));
    if (result != CKR_OK && !isPartialResult(result))
        throw Error(result, "C_GetAttributeValue");
    const size_t trouble = firstTrouble(attributes, m_values);
    bool isComplete = true;
    for (size_t i = 0; i < m_values.size(); ++i) {
        Value &value = m_values[i];
        const CK_ULONG length = attributes[i].ulValueLen;
        // A module that stops at the first trouble leaves the rest as it was: a full buffer.
        const bool isUntouched = result != CKR_OK && i >= trouble && length == value.buffer.size();
        if (!value.accept(length) || isUntouched) {
            value.reject();
            isComplete = false;
        }
    }
    return isComplete;
}

bool AttributeReader::readIfThere(const Session &session, CK_OBJECT_HANDLE object)
{
    for (int i = 0; i < Readings; ++i) {
        try {
            m_failure = CKR_OK;
            read(session, object);
            return true;
        } catch (const Error &error) {
            if (error.returnValue() == CKR_OBJECT_HANDLE_INVALID)
                return false;
            if (!isOfOneObject(error.returnValue()))
                throw;
            m_failure = error.returnValue();
        }
    }
    return false;
}

void AttributeReader::readAlone(const Session &session, CK_OBJECT_HANDLE object, Value &value)
{
    const auto ask = [&](CK_ATTRIBUTE &attribute) {
        const CK_RV result =
            session.module()->C_GetAttributeValue(session.handle(), object, &attribute, 1);
        if (result != CKR_OK && !isPartialResult(result))
            throw Error(result, "C_GetAttributeValue");
        return result;
    };
    CK_ULONG needed = 0;
    for (int i = 0; i < Attempts; ++i) {
        CK_ATTRIBUTE attribute = {value.type, nullptr, 0};
        ask(attribute);
        if (attribute.ulValueLen == Unavailable)
            return;
        needed = std::max(needed, attribute.ulValueLen);
        if (needed > LargestValue) {
            value.isTooLarge = true;
            return;
        }
        if (needed > value.buffer.size())
            value.buffer.resize(size_t(needed), '\0');
        attribute = value.request();
        if (ask(attribute) == CKR_OK && value.accept(attribute.ulValueLen))
            return;
        value.reject();
        // It has grown meanwhile, or the module tells its length only now.
        if (attribute.ulValueLen != Unavailable)
            needed = std::max(needed, attribute.ulValueLen);
    }
}

QByteArray AttributeReader::value(size_t position) const
{
    const Value &value = m_values[position];
    return value.isThere ? QByteArray(value.buffer.data(), int(value.size)) : QByteArray();
}

CK_ULONG AttributeReader::number(size_t position, CK_ULONG missing) const
{
    const Value &value = m_values[position];
    CK_ULONG result = missing;
    if (value.isThere && value.size == sizeof result)
        std::memcpy(&result, value.buffer.data(), sizeof result);
    return result;
}

bool AttributeReader::flag(size_t position, bool missing) const
{
    const Value &value = m_values[position];
    if (!value.isThere || value.size != sizeof(CK_BBOOL))
        return missing;
    return value.buffer.front() != CK_FALSE;
}

bool AttributeReader::isTooLarge(size_t position) const
{
    return m_values[position].isTooLarge;
}

} // namespace Trivex::Pkcs11
