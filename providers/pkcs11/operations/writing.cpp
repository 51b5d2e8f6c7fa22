// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/writing.h"

#include <algorithm>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;
using Pkcs11::Session;
using Pkcs11::Template;

std::vector<CK_OBJECT_HANDLE> findMarked(const Session &session, const ObjectMark &mark)
{
    // The most telling attribute comes first: tokens compare in this order and stop at the first
    // difference.
    Template wanted;
    wanted.addNumber(CKA_CLASS, mark.objectClass);
    if (!mark.id.isEmpty())
        wanted.add(CKA_ID, mark.id);
    if (!mark.value.isEmpty())
        wanted.add(CKA_VALUE, mark.value);
    wanted.addFlag(CKA_TOKEN, true);
    return Pkcs11::findObjects(session, wanted);
}

Writing::Writing(TokenConnection &connection, Operation &operation)
    : Writing(connection, operation, connection.open(Session::ReadWrite))
{
}

Writing::Writing(TokenConnection &connection, Operation &operation, Session session)
    : m_connection(connection)
    , m_operation(operation)
    , m_session(std::move(session))
    , m_handleSeries(connection.handleSeries())
{
}

Writing::~Writing()
{
    if (!m_steps.empty())
        undo();
}

CK_OBJECT_HANDLE Writing::create(Template &object, const ObjectMark &mark,
                                 const std::vector<CK_OBJECT_HANDLE> &present)
{
    m_connection.checkCancelled();
    // The step is noted first, because a call may make the object and still fail.
    m_steps.push_back({mark, present});
    CK_OBJECT_HANDLE handle = CK_INVALID_HANDLE;
    const CK_RV result = m_session.module()->C_CreateObject(m_session.handle(), object.data(),
                                                            object.size(), &handle);
    // What has this mark after a refusal was written by another program meanwhile.
    if (Pkcs11::isRefusal(result))
        m_steps.pop_back();
    check(result, "C_CreateObject");
    if (handle == CK_INVALID_HANDLE)
        throw Error(CKR_GENERAL_ERROR, "C_CreateObject");
    return handle;
}

void Writing::undo() noexcept
{
    try {
        // The session that failed may have ended, and the login with it.
        m_session = m_connection.openToUndo(m_operation);
        for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step)
            undo(*step);
    } catch (const Error &) {
        // The token is gone. What it keeps are keys without a certificate, which show nowhere, and
        // a repeated import completes them.
    } catch (const std::exception &) {
        // Out of memory: what stays is to be listed.
        m_connection.noteUnlisted();
    }
}

void Writing::undo(const Step &step)
{
    // When the handles have changed, old objects can't be told from new ones. An object too many
    // does less harm than the loss of somebody's key.
    if (!step.present.empty() && m_handleSeries != m_connection.handleSeries())
        return;
    const auto found = findMarked(m_session, step.mark);
    for (const CK_OBJECT_HANDLE object : found) {
        const bool wasThere =
            std::find(step.present.begin(), step.present.end(), object) != step.present.end();
        if (!wasThere)
            m_session.module()->C_DestroyObject(m_session.handle(), object);
    }
}

} // namespace Trivex
