// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/words.h"

#include <iterator>

namespace Trivex {

// The values of extensions in words, each by its definition. Each function takes the value of an
// extension, without the OCTET STRING around it; it adds lines, or returns false for a value that
// does not decode. What it had added by then is not shown.

// Constraints (RFC 5280, 4.2.1 and Netscape).
bool addKeyUsage(Der::Slice value, Lines *lines);
bool addPurposes(Der::Slice value, Lines *lines);
bool addBasicConstraints(Der::Slice value, Lines *lines);
bool addNameConstraints(Der::Slice value, Lines *lines);
bool addPolicyConstraints(Der::Slice value, Lines *lines);
bool addNetscapeType(Der::Slice value, Lines *lines);
bool addKeyPeriod(Der::Slice value, Lines *lines);

// Key identifiers, names and places.
bool addSubjectKeyId(Der::Slice value, Lines *lines);
bool addAuthorityKeyId(Der::Slice value, Lines *lines);
bool addNames(Der::Slice value, Lines *lines);
bool addListPoints(Der::Slice value, Lines *lines);
bool addListScope(Der::Slice value, Lines *lines);
bool addAccess(Der::Slice value, Lines *lines);

// Policies and statements.
bool addPolicies(Der::Slice value, Lines *lines);
bool addPolicyMappings(Der::Slice value, Lines *lines);
bool addApplicationPurposes(Der::Slice value, Lines *lines);
bool addQualifiedStatements(Der::Slice value, Lines *lines);

// Simple values, and what single parties defined.
bool addString(Der::Slice value, Lines *lines);
bool addNumber(Der::Slice value, Lines *lines);
bool addTime(Der::Slice value, Lines *lines);
bool addNull(Der::Slice value, Lines *lines);
bool addReason(Der::Slice value, Lines *lines);
bool addIssuerTools(Der::Slice value, Lines *lines);
bool addIdentification(Der::Slice value, Lines *lines);
bool addTransparency(Der::Slice value, Lines *lines);
bool addTemplate(Der::Slice value, Lines *lines);
bool addTlsFeatures(Der::Slice value, Lines *lines);

/// Calls `add` with the content of each SEQUENCE in a SEQUENCE OF, until there are lines enough;
/// the others are counted. False where a member is no SEQUENCE.
template <class Add> bool addEach(Der::Slice value, Lines *lines, Add add)
{
    Der::Slice content;
    if (!Der::Reader(value).nextList(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    while (!reader.atEnd()) {
        Der::Slice member;
        if (!reader.next(Der::Sequence, &member))
            return false;
        if (lines->isFull())
            lines->skip();
        else if (!add(member))
            return false;
    }
    return true;
}

/// The words, in the order of `ids`, of the bits that are set in the content of a BIT STRING. False
/// when it is damaged. Bits without a word are named by their number.
bool bitWords(Der::Slice content, const char *const *ids, int count, QStringList *words);

template <size_t Count>
bool bitWords(Der::Slice content, const char *const (&ids)[Count], QStringList *words)
{
    return bitWords(content, ids, int(Count), words);
}

/// The reasons of a revocation (RFC 5280, 4.2.1.13), given by the content of ReasonFlags.
QString reasonFlagsText(Der::Slice content);

} // namespace Trivex
