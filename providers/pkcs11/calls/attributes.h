// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/session.h"
#include "providers/pkcs11/calls/tokensexport.h"

#include <QByteArray>

#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

namespace Trivex::Pkcs11 {

/// True for what modules return for an object that its directory names and that is damaged or not
/// there, while they read all others. A failure of the device is none of an object.
bool isOfOneObject(CK_RV result);
/// An object that fails so is asked for so often before it counts as one that can't be read.
constexpr int Readings = 2;

/// A template (PKCS#11 2.40, 3.4) that owns the bytes of its attributes. It wipes them at the end,
/// because some are the numbers of private keys. The bytes are elements of a deque, which do not
/// move while the deque grows, so the pointers in the attributes stay valid.
///
/// The functions that add return the template itself, so that calls can be chained.
class TRIVEX_TOKENS_EXPORT Template {
public:
    Template() = default;
    ~Template();
    Template(const Template &) = delete;
    Template &operator=(const Template &) = delete;

    /// Adds a copy of the bytes.
    Template &add(CK_ATTRIBUTE_TYPE type, const QByteArray &value);
    Template &add(CK_ATTRIBUTE_TYPE type, const void *data, size_t size);
    /// Adds a CK_ULONG, in the byte order of this machine.
    Template &addNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG value);
    /// Adds a CK_BBOOL.
    Template &addFlag(CK_ATTRIBUTE_TYPE type, bool value);

    /// Valid until the next attribute is added.
    CK_ATTRIBUTE *data() { return m_attributes.data(); }
    CK_ULONG size() const { return CK_ULONG(m_attributes.size()); }

private:
    std::deque<std::string> m_values;
    std::vector<CK_ATTRIBUTE> m_attributes;
};

/// Reads the same attributes of many objects (C_GetAttributeValue, PKCS#11 2.40, 5.7). An object
/// takes one call as long as its values fit into the buffers, which the reader keeps and enlarges.
/// For the token's thread.
///
/// The reader does not believe a module's lengths: it asks again for a value that is said to be
/// longer than its buffer, alone and with a larger buffer, up to `LargestValue`. A value that the
/// module does not deliver counts as missing.
class TRIVEX_TOKENS_EXPORT AttributeReader {
public:
    struct Attribute {
        CK_ATTRIBUTE_TYPE type;
        size_t expectedSize; ///< bytes; a longer value costs a second call
    };

    /// The reader skips larger values. In bytes; certificates are far smaller.
    static constexpr CK_ULONG LargestValue = 1024 * 1024;

    explicit AttributeReader(std::initializer_list<Attribute> attributes);
    ~AttributeReader();

    /// Reads the attributes of `object`. Throws `Error`; an attribute that the object lacks or
    /// hides is no error.
    void read(const Session &session, CK_OBJECT_HANDLE object);
    /// The same. False, without an error, when another program has removed the object meanwhile,
    /// and when the module fails to read this one object, twice; `failure` tells that then.
    bool readIfThere(const Session &session, CK_OBJECT_HANDLE object);
    /// Of the last `readIfThere`; CKR_OK unless the module has failed.
    CK_RV failure() const { return m_failure; }

    // Each of these is about the attribute at `position` in the constructor's list.
    /// A copy of the value; empty when the object has none.
    QByteArray value(size_t position) const;
    /// The value as a number or flag; `missing` when the object has none of that size.
    CK_ULONG number(size_t position, CK_ULONG missing) const;
    bool flag(size_t position, bool missing) const;
    /// True when the reader skipped the value because it is larger than `LargestValue`.
    bool isTooLarge(size_t position) const;

private:
    struct Value;
    static size_t firstTrouble(const std::vector<CK_ATTRIBUTE> &attributes,
                               const std::vector<Value> &values);
    bool readAll(const Session &session, CK_OBJECT_HANDLE object);
    void readAlone(const Session &session, CK_OBJECT_HANDLE object, Value &value);

    std::vector<Value> m_values;
    CK_RV m_failure = CKR_OK;
};

} // namespace Trivex::Pkcs11
