// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"

namespace TrivexTest {

/// A token fixture that hears of everything that fails on the token.
class FailureFixture : public TokenFixture {
protected:
    explicit FailureFixture(const QString &storeName)
        : TokenFixture(storeName)
    {
        connect(&m_monitor, &Trivex::TokenMonitor::failed, this,
                [this](const Trivex::TokenError &error) { m_errors.append(error); });
    }

    Trivex::TokenError lastError() const { return m_errors.value(m_errors.size() - 1); }
    /// Calls, questions and errors are counted from here on.
    void countAfresh()
    {
        m_token->forget();
        m_prompt->resetCount();
        m_errors.clear();
    }

    QList<Trivex::TokenError> m_errors;

private:
    Trivex::TokenMonitor m_monitor;
};

} // namespace TrivexTest
