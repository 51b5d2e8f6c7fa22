// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/attributes.h"

namespace Trivex::Pkcs11 {

/// A running search (PKCS#11 2.40, 5.7); ended with the object, whatever happens, because a session
/// can run only one. The session must outlive it.
class ObjectSearch {
public:
    /// Throws `Error`.
    ObjectSearch(const Session &session, Template &wanted);
    ~ObjectSearch();
    ObjectSearch(const ObjectSearch &) = delete;
    ObjectSearch &operator=(const ObjectSearch &) = delete;

    /// All that is left; throws `Error`.
    std::vector<CK_OBJECT_HANDLE> all();

private:
    const Session &m_session;
};

/// All objects that match; throws `Error`.
TRIVEX_TOKENS_EXPORT std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session,
                                                               Template &wanted);

/// All objects of a class; throws `Error`.
TRIVEX_TOKENS_EXPORT std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session,
                                                               CK_OBJECT_CLASS objectClass);

} // namespace Trivex::Pkcs11
