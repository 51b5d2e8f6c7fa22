// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// What tells one object from all others: enough to find it again after a call that failed may have
/// made it all the same.
struct ObjectMark {
    CK_OBJECT_CLASS objectClass = CKO_CERTIFICATE;
    QByteArray id; ///< keys: CKA_ID
    QByteArray value; ///< certificates: CKA_VALUE
};

/// All objects with that mark; throws `Pkcs11::Error`.
std::vector<CK_OBJECT_HANDLE> findMarked(const Pkcs11::Session &session, const ObjectMark &mark);

/// Objects that are written together: destroyed again unless `keep` is called. A session of its
/// own. Throws `Pkcs11::Error`.
class Writing {
public:
    Writing(TokenConnection &connection, Operation &operation);
    /// By a session that there is already; `operation` is asked for a login that was lost.
    Writing(TokenConnection &connection, Operation &operation, Pkcs11::Session session);
    ~Writing();
    Writing(const Writing &) = delete;
    Writing &operator=(const Writing &) = delete;

    const Pkcs11::Session &session() const { return m_session; }

    /// `present`: the objects with that mark that were there before.
    CK_OBJECT_HANDLE create(Pkcs11::Template &object, const ObjectMark &mark,
                            const std::vector<CK_OBJECT_HANDLE> &present);
    void keep() { m_steps.clear(); }

private:
    struct Step {
        ObjectMark mark;
        std::vector<CK_OBJECT_HANDLE> present;
    };

    void undo() noexcept;
    void undo(const Step &step);

    TokenConnection &m_connection;
    Operation &m_operation;
    Pkcs11::Session m_session;
    const int m_handleSeries;
    std::vector<Step> m_steps;
};

} // namespace Trivex
