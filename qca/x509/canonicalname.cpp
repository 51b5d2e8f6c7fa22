// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/canonicalname.h"

#include "qca/asn1/strings.h"

#include <algorithm>
#include <vector>

namespace Trivex {

namespace {

/// Marks the kind of the value that follows, so that no value passes for one of another kind.
constexpr char TextMark = 't';
constexpr char OtherMark = 'o';

// The digits of a NumericString need no folding, and libcrypto compares them as they are, too.
bool isText(int tag)
{
    const int type = tag & ~Der::ConstructedBit;
    return type != Der::NumericString && isString(type);
}

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Trims spaces at both ends, makes one of several and turns the text into lower case.
QByteArray folded(const QByteArray &text)
{
    QByteArray result;
    result.reserve(text.size() + 1);
    bool isGap = false;
    for (const char c : text) {
        if (isSpace(c)) {
            isGap = !result.isEmpty();
            continue;
        }
        if (std::exchange(isGap, false))
            result += ' ';
        result += c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
    }
    return result;
}

void appendSized(const QByteArray &part, QByteArray *whole)
{
    whole->append(QByteArray::number(part.size())).append(':').append(part);
}

QByteArray canonicalAttribute(Der::Slice attribute)
{
    Der::Reader reader(attribute);
    Der::Slice oid;
    Der::Element value;
    QByteArray result;
    if (!reader.next(Der::ObjectIdentifier, &oid) || !reader.next(&value))
        return result;
    appendSized(oid.view(), &result);
    if (isText(value.tag))
        result.append(TextMark).append(folded(decodeString(value).toUtf8()));
    else
        result.append(OtherMark).append(value.whole.data, value.whole.size);
    return result;
}

// The members of a set have no order.
QByteArray canonicalSet(Der::Slice set)
{
    std::vector<QByteArray> attributes;
    Der::Reader reader(set);
    Der::Slice attribute;
    while (reader.next(Der::Sequence, &attribute))
        attributes.push_back(canonicalAttribute(attribute));
    std::sort(attributes.begin(), attributes.end());
    QByteArray result;
    for (const QByteArray &one : attributes)
        appendSized(one, &result);
    return result;
}

} // namespace

QByteArray canonicalName(Der::Slice name)
{
    QByteArray result(1, TextMark);
    Der::Slice content;
    if (!Der::singleList(name, Der::Sequence, &content))
        return QByteArray(1, OtherMark).append(name.data, name.size);
    Der::Reader reader(content);
    Der::Slice set;
    while (reader.nextList(Der::Set, &set))
        appendSized(canonicalSet(set), &result);
    // Bytes that are no set are compared as they are.
    return result.append(reader.rest().data, reader.rest().size);
}

bool isSameName(Der::Slice a, Der::Slice b)
{
    return a == b || canonicalName(a) == canonicalName(b);
}

} // namespace Trivex
