// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/testtoken.h"

#include <QMap>

namespace TrivexTest {

/// A test token behind the faulty module (see tests/fakes/pkcs11), which counts calls and fails on
/// request. The provider sees only that module.
class FaultyToken {
public:
    explicit FaultyToken(const QString &label);

    TestToken &token() { return m_token; }
    QString problem() const { return m_token.problem(); }
    /// Sets the environment of this process; before QCA loads its plugins.
    void useInThisProcess();

    /// Replaces all orders to the module; an empty text takes them back.
    void control(const QByteArray &orders = QByteArray());
    /// The calls of one function since `forget`.
    int count(const char *function) const;
    /// All calls since then, by name, in their order.
    QList<QByteArray> calls() const;
    /// The same: each function that was called, and how often.
    QMap<QByteArray, int> callCounts() const;
    /// Lines of the log that contain `text`.
    int countText(const char *text) const;
    /// The number behind the last `mark` of the whole log; 0 when there is none.
    int lastNumber(const char *mark) const;
    /// Waits until a call that waits by order has begun: it is counted only once it has ended.
    bool waitUntilInside(const char *function, int ms = 30000) const;
    /// The types of the attributes that were asked for since then, each once, in hexadecimal.
    QList<QByteArray> attributesAsked() const;
    void forget();

    /// Takes the token out and puts it back, which ends the login; with `orders` in force from when
    /// it is out. False when the provider does not follow.
    bool replug(const QString &keyStoreId, const QByteArray &orders = QByteArray());

private:
    QByteArray newLog() const;

    TestToken m_token;
    int m_forgotten = 0;
};

} // namespace TrivexTest
