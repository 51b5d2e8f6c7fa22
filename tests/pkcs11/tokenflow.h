// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>

namespace TrivexTest {

/// What a process of its own does with a token, so that it can be killed in the middle.
struct TokenFlow {
    QString name; ///< one of `tokenFlows`
    QString storeName;
    QString certificateFile; ///< DER
    QString bundleFile; ///< PKCS#12 with the password "x" and the friendly name "bundle"
};

/// "import certificate", "import bundle", "generate RSA", "generate EC", "remove bundle"
extern const char *const tokenFlows[5];

/// The flow, alone in this process. The process's exit code: 0 when it succeeded.
int runFlow(const TokenFlow &flow);

/// What a start after a kill finds: writes one JSON object to standard output. "found" and "left"
/// are the entries before and after the flow is done once more, "succeeded" says how that ended.
/// An entry: "name", "id", "der", "hasKey", and "signs" when its key could be used.
int runFlowAgain(const TokenFlow &flow);

} // namespace TrivexTest
