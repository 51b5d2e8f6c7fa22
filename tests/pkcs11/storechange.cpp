// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/storechange.h"

#include <QtTest>

#include <atomic>

namespace TrivexTest {

bool changeStore(const QString &storeId, Trivex::StoreChange::Kind kind, const QString &entryId,
                 int patience)
{
    // The token may answer after the test has lost its patience.
    struct Outcome {
        std::atomic<bool> isOver = false;
        std::atomic<bool> succeeded = false;
    };
    const auto outcome = std::make_shared<Outcome>();
    Trivex::StoreChange change;
    change.kind = kind;
    change.entryId = entryId;
    const bool isKnown = Trivex::startStoreChange(
        storeId, change, [outcome](const Trivex::StoreChangeResult &result) {
            outcome->succeeded = result.succeeded;
            outcome->isOver = true;
        });
    return isKnown && QTest::qWaitFor([&] { return outcome->isOver.load(); }, patience)
        && outcome->succeeded;
}

} // namespace TrivexTest
