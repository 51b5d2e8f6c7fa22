// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

namespace TrivexTest {

/// One way in which one call of a token can fail.
struct Fault {
    QByteArray orders; ///< to the faulty module
    QByteArray result = {}; ///< the code that the call returns instead of its work; empty: it works
    /// The session that this call was about can't be closed by anybody.
    bool losesSession = false;
    /// The call has done its work, whatever it says.
    bool isDone = false;
    /// Another program would have to look for what the token has got.
    bool removesToken = false;
};

/// The faults of the call `number` (from 1) of that name: one code of each class of the standard's
/// return values and of those outside of it, work that was done though the call says otherwise,
/// sessions and logins that end, numbers and lengths that are not so, a token that goes. `turn`
/// counts the calls of a table, and picks another member of each class for each.
///
/// `all` is false for calls that were met with all of them before: then a quarter, by turns.
QVector<Fault> faultsOf(const QByteArray &call, int number, int turn, bool all);

/// The number of return values in the table.
int faultResultCount();

} // namespace TrivexTest
