// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/gostobjects.h"
#include "tests/fakes/pkcs11/gostopenssl.h"

namespace Faulty {

//! What kind of key an object is, by its type and parameters; null when they do not go together.
const GostKind *kindOf(const GostObject &object);
const GostSet *setOf(const GostObject &object);

//! Fills in what C_CreateObject leaves to the token, and refuses what a token refuses.
CK_RV completeCreated(const GostOpenssl &openssl, GostObject *object);

//! The same for the two parts of C_GenerateKeyPair with keys of \p size bytes; makes the numbers.
CK_RV completeGenerated(const GostOpenssl &openssl, size_t size, GostObject *publicPart,
                        GostObject *privatePart);

} // namespace Faulty
