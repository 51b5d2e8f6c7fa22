// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/extracted.h"

#include <QtTest>

#include <atomic>
#include <memory>

namespace TrivexTest {

Trivex::ExtractedKey extracted(const QString &keyStoreId, const QByteArray &publicInfo)
{
    struct Outcome {
        Trivex::ExtractedKey key;
        std::atomic_bool isOver = false;
    };
    const auto outcome = std::make_shared<Outcome>();
    const auto task = Trivex::startKeyExtraction(keyStoreId, publicInfo,
                                                 [outcome](const Trivex::ExtractedKey &key) {
                                                     outcome->key = key;
                                                     outcome->isOver = true;
                                                 });
    if (task && QTest::qWaitFor([&] { return outcome->isOver.load(); }, 20000))
        return outcome->key;
    Trivex::ExtractedKey none;
    none.error.kind = Trivex::TokenError::NotFound;
    return none;
}

} // namespace TrivexTest
