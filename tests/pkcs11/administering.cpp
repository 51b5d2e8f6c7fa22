// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/administering.h"

#include <QtTest>

#include <mutex>
#include <optional>

using namespace Trivex;

namespace TrivexTest {

namespace {

constexpr int Patience = 30000; // ms

} // namespace

Secret secret(const QByteArray &text)
{
    return Secret(QCA::SecureArray(text));
}

TokenAdministration administration(TokenAdministration::Kind kind, const QByteArray &pin,
                                   const QByteArray &newPin)
{
    TokenAdministration task;
    task.kind = kind;
    task.pin = secret(pin);
    task.newPin = secret(newPin);
    return task;
}

TokenAdministrationResult administer(const QString &storeId, TokenAdministration task,
                                     CancellationPtr *started)
{
    struct Shared {
        std::mutex mutex;
        std::optional<TokenAdministrationResult> result;
    };
    const auto shared = std::make_shared<Shared>();
    const CancellationPtr running = startTokenAdministration(
        storeId, std::move(task), [shared](const TokenAdministrationResult &result) {
            const std::lock_guard lock(shared->mutex);
            if (shared->result)
                qFatal("ended twice");
            shared->result = result;
        });
    if (started)
        *started = running;
    TokenAdministrationResult none;
    none.error.kind = TokenError::NotFound;
    if (!running)
        return none;
    const bool hasEnded = QTest::qWaitFor(
        [&] {
            const std::lock_guard lock(shared->mutex);
            return shared->result.has_value();
        },
        Patience);
    return hasEnded ? *shared->result : none;
}

} // namespace TrivexTest
