// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// The attributes by which one object can be told from all others and found again, even after a
/// failed call that made it all the same.
struct ObjectMark {
    CK_OBJECT_CLASS objectClass = CKO_CERTIFICATE;
    QByteArray id; ///< keys: CKA_ID
    QByteArray value; ///< certificates: CKA_VALUE
};

/// All objects with that mark; throws `Pkcs11::Error`.
std::vector<CK_OBJECT_HANDLE> findMarked(const Pkcs11::Session &session, const ObjectMark &mark);

/// Writes objects together, in a session of its own, and destroys them again unless `keep` is
/// called. Throws `Pkcs11::Error`.
class Writing {
public:
    Writing(TokenConnection &connection, Operation &operation);
    /// Writes in `session`. If the login is lost, `operation` asks for it again.
    Writing(TokenConnection &connection, Operation &operation, Pkcs11::Session session);
    ~Writing();
    Writing(const Writing &) = delete;
    Writing &operator=(const Writing &) = delete;

    const Pkcs11::Session &session() const { return m_session; }

    /// `present` lists the objects with that mark that were there before.
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
