// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keybounds.h"

#include "qca/base/bounds.h"
#include "qca/keys/keyalgorithms.h"

#include <QVector>

namespace Trivex {

namespace {

// Sequences of factors in the sequence of an RSA key, in the octets of a PrivateKeyInfo.
constexpr int DeepestNumber = 8;

struct Part {
    Der::Slice content;
    int depth;
};

/// Whether the element may hold others. Octets may be a key's, or the encoding of one.
bool holdsElements(const Der::Element &element)
{
    if (element.tag != Der::OctetString)
        return element.tag >= 0 && (element.tag & Der::ConstructedBit);
    const int first = Der::Reader(element.content).peek();
    return first == Der::Sequence || first == Der::Integer;
}

/// One more than what the bits need: the first octet may hold the sign alone.
int octetsOf(int bits)
{
    return bits / 8 + 1;
}

bool isDiscreteLog(const Der::Element &identifier)
{
    const int type = keyTypeOfAlgorithm(Der::oidText(identifier.content));
    return type == DsaKey || type == DhKey;
}

} // namespace

bool isWithinKeyBounds(Der::Slice privateKey)
{
    if (privateKey.size > MaxPrivateKeyBytes)
        return false;
    int largest = 0;
    int most = octetsOf(MaxNumberBits);
    QVector<Part> parts = {{privateKey, 0}};
    while (!parts.isEmpty()) {
        const Part part = parts.takeLast();
        Der::Reader reader(part.content);
        Der::Element element;
        while (reader.next(&element)) {
            if (element.tag == Der::Integer)
                largest = qMax(largest, element.content.size);
            else if (element.tag == Der::ObjectIdentifier && isDiscreteLog(element))
                most = octetsOf(MaxDiscreteLogBits);
            else if (holdsElements(element) && part.depth < DeepestNumber)
                parts.append({element.content, part.depth + 1});
        }
    }
    return largest <= most;
}

} // namespace Trivex
