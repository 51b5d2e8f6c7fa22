// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/objectsearch.h"

#include "providers/pkcs11/core/error.h"

namespace Trivex::Pkcs11 {

namespace {

/// Handles asked for at once: large, because each call has its cost in a module.
constexpr CK_ULONG Batch = 4096;

} // namespace

ObjectSearch::ObjectSearch(const Session &session, Template &wanted)
    : m_session(session)
{
    check(session.module()->C_FindObjectsInit(session.handle(), wanted.data(), wanted.size()),
          "C_FindObjectsInit");
}

ObjectSearch::~ObjectSearch()
{
    m_session.module()->C_FindObjectsFinal(m_session.handle());
}

std::vector<CK_OBJECT_HANDLE> ObjectSearch::all()
{
    std::vector<CK_OBJECT_HANDLE> found;
    for (;;) {
        const size_t before = found.size();
        found.resize(before + Batch);
        CK_ULONG count = 0;
        check(m_session.module()->C_FindObjects(m_session.handle(), found.data() + before, Batch,
                                                &count),
              "C_FindObjects");
        found.resize(before + std::min(count, Batch));
        // Fewer than asked for may still be followed by more; only none is the end.
        if (count == 0)
            return found;
    }
}

std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session, Template &wanted)
{
    return ObjectSearch(session, wanted).all();
}

std::vector<CK_OBJECT_HANDLE> findObjects(const Session &session, CK_OBJECT_CLASS objectClass)
{
    Template wanted;
    wanted.addNumber(CKA_CLASS, objectClass).addFlag(CKA_TOKEN, true);
    return findObjects(session, wanted);
}

} // namespace Trivex::Pkcs11
