// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace TrivexTest {

/// A host as others write them, and how it ends.
struct EndingHost {
    /// "qml": an engine with a page that uses `KeyStoreModel`. "stores": QCA's key stores from C++,
    /// each followed asynchronously, without any engine. "library": the same, started by our
    /// library as the QML module does it.
    QString kind;
    QString way; ///< one of `endingHostWays`
    /// Where the host starts QCA itself: "nowhere", "before" or "after" its application object in
    /// main. By a static object where `StaticQca` is set in the environment.
    QString initialiser;
    int delay = 0; ///< ms from the start of the event loop to the end
};

extern const char *const StaticQca;
/// What a host that ends by `exit` leaves in the buffer of its standard output.
extern const char *const BufferedText;

/// The main part of a process that ends so. The exit status: `ToldStatus` where nothing went wrong.
int runEndingHost(int argc, char *argv[], const EndingHost &host);

} // namespace TrivexTest
