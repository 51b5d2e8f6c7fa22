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

/// A template that owns the bytes of its attributes and wipes them at the end, because keys go
/// through it. The bytes are elements of a deque, which stay put while it grows, so the pointers
/// in the attributes stay valid.
class TRIVEX_TOKENS_EXPORT Template {
public:
    Template() = default;
    ~Template();
    Template(const Template &) = delete;
    Template &operator=(const Template &) = delete;

    Template &add(CK_ATTRIBUTE_TYPE type, const QByteArray &value);
    Template &add(CK_ATTRIBUTE_TYPE type, const void *data, size_t size);
    Template &addNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG value);
    Template &addFlag(CK_ATTRIBUTE_TYPE type, bool value);

    CK_ATTRIBUTE *data() { return m_attributes.data(); }
    CK_ULONG size() const { return CK_ULONG(m_attributes.size()); }

private:
    std::deque<std::string> m_values;
    std::vector<CK_ATTRIBUTE> m_attributes;
};

/// Reads the same attributes of many objects, each object in one call as long as the values fit
/// into the buffers, which are kept and grow.
///
/// Nothing that a module says of lengths is believed: what it claims beyond a buffer is asked for
/// again, alone and with a larger one, up to `LargestValue`. A value that can't be had counts as
/// one that the object does not have.
class TRIVEX_TOKENS_EXPORT AttributeReader {
public:
    struct Wanted {
        CK_ATTRIBUTE_TYPE type;
        size_t expectedSize;
    };

    /// Larger values are not read (bytes): no certificate comes near it.
    static constexpr CK_ULONG LargestValue = 1024 * 1024;

    explicit AttributeReader(std::initializer_list<Wanted> wanted);
    ~AttributeReader();

    /// Throws `Error`; an attribute that the object does not have or show is no error.
    void read(const Session &session, CK_OBJECT_HANDLE object);
    /// False when another program has removed the object since it was found.
    bool readIfThere(const Session &session, CK_OBJECT_HANDLE object);

    /// The value of the attribute at `position` in the list; empty when the object has none.
    QByteArray value(size_t position) const;
    /// The value as a number or flag; `missing` when the object has none of that size.
    CK_ULONG number(size_t position, CK_ULONG missing) const;
    bool flag(size_t position, bool missing) const;
    /// True when the value was not read because it is larger than `LargestValue`.
    bool isTooLarge(size_t position) const;

private:
    struct Value;
    bool readAll(const Session &session, CK_OBJECT_HANDLE object);
    void readAlone(const Session &session, CK_OBJECT_HANDLE object, Value &value);

    std::vector<Value> m_values;
};

} // namespace Trivex::Pkcs11
