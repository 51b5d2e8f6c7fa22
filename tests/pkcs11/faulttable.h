// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultlist.h"
#include "tests/pkcs11/tokenfixture.h"

#include <QMap>

namespace TrivexTest {

/// What somebody does with a token.
struct FaultFlow {
    std::function<bool()> run; ///< true when it says that it has succeeded
    int objects = 0; ///< so many more (or less) are on the token after a success
    std::function<void()> restore = [] {}; ///< the token as it was before, after a success
    QString storeId; ///< of the token that it works on
    int logins = 0; ///< with PINs that nobody was asked for, because the flow had them
    QByteArray first = "session"; ///< the calls of which its first one is one
    /// Whatever the outcome: a PIN may be another one afterwards.
    std::function<void()> repair = [] {};
};

/// Has a flow fail at each of its calls in each way, and checks each time what must always hold.
/// Every run begins without a login, so that the calls for one are among those that fail.
class FaultTable : public TokenFixture {
protected:
    explicit FaultTable(const QString &storeName);

    /// As `start`; the errors of all tokens are collected from then on.
    bool startTable(int entries);
    /// Runs the whole table. What did not hold, one line a run; empty when all did.
    QByteArray failuresOf(const FaultFlow &flow);
    /// The event loop has turns while each of the calls takes its time. As above.
    QByteArray stallsOf(const FaultFlow &flow);

    /// For flows whose errors are published nowhere.
    void noteError(const Trivex::TokenError &error);
    /// The files of the token's objects, which cost no process to count.
    int objects() const;
    /// No order is in force, and the token is there and at rest.
    bool settle();

    /// What the module does in the run that is under way.
    const QByteArray &orders() const { return m_orders; }

private:
    /// The flow's calls, each with how often it was made; empty when the flow fails unasked.
    QMap<QByteArray, int> callsOf(const FaultFlow &flow);
    /// What did not hold of one run; empty when all did.
    QByteArray check(const FaultFlow &flow, const QByteArray &call, const Fault &fault);
    QByteArray checkError(const FaultFlow &flow, bool succeeded, const QByteArray &call,
                          const Fault &fault) const;
    /// So many turns has the event loop while the call is held; -1 when the flow fails.
    int turnsDuring(const QByteArray &call, const FaultFlow &flow);
    /// Whether the token works, if need be once it has been looked at again.
    bool worksAgain();
    /// No session of before is left and nobody is logged in once these orders are in force.
    QByteArray startAfresh(const FaultFlow &flow);
    int openSessions() const;

    Trivex::TokenMonitor m_monitor;
    QList<Trivex::TokenError> m_errors;
    QByteArray m_orders;
    int m_rows = 0;
};

} // namespace TrivexTest
