// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"

namespace Trivex::Pkcs11 {

/// Owns a running search (PKCS#11 2.40, 5.7) and ends it, because a session can run only one at a
/// time. The session must outlive it.
class ObjectSearch {
public:
    /// Starts the search for objects that match `wanted`. Throws `Error`.
    ObjectSearch(const Session &session, Template &wanted);
    ~ObjectSearch();
    ObjectSearch(const ObjectSearch &) = delete;
    ObjectSearch &operator=(const ObjectSearch &) = delete;

    /// The handles that the search has not returned yet. Throws `Error`.
    std::vector<CK_OBJECT_HANDLE> all();

private:
    const Session &m_session;
};

/// The objects that match `wanted`. Throws `Error`.
TRIVEX_TOKENS_EXPORT std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session,
                                                               Template &wanted);

/// The objects of a class. Throws `Error`.
TRIVEX_TOKENS_EXPORT std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session,
                                                               CK_OBJECT_CLASS objectClass);

} // namespace Trivex::Pkcs11
