// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/objectsearch.h"

#include "providers/pkcs11/calls/error.h"

#include <QSet>

#include <algorithm>

namespace Trivex::Pkcs11 {

namespace {

/// Handles asked for at once: large, because each call has its cost in a module.
constexpr CK_ULONG Batch = 4096;
/// More than any token holds. A module that never comes to an end is stopped here.
constexpr int MostObjects = 1 << 20;

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
    QSet<CK_OBJECT_HANDLE> known;
    std::vector<CK_OBJECT_HANDLE> batch(Batch);
    for (;;) {
        std::fill(batch.begin(), batch.end(), CK_OBJECT_HANDLE(CK_INVALID_HANDLE));
        CK_ULONG count = 0;
        check(m_session.module()->C_FindObjects(m_session.handle(), batch.data(), Batch, &count),
              "C_FindObjects");
        const size_t before = found.size();
        // A module may report more handles than it had room for.
        for (size_t i = 0; i < std::min(count, Batch); ++i) {
            if (batch[i] == CK_INVALID_HANDLE || known.contains(batch[i]))
                continue;
            known.insert(batch[i]);
            found.push_back(batch[i]);
        }
        // Fewer than asked for may still be followed by more; only nothing new is the end.
        if (found.size() == before)
            return found;
        if (known.size() > MostObjects)
            throw Error(CKR_GENERAL_ERROR, "C_FindObjects");
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
