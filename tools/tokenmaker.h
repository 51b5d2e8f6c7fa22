// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenmaking.h"
#include "tools/arrival.h"

namespace Trivex {

/// Makes a software token of the user's own, where SoftHSM is installed.
///
///     TokenMaker {
///         id: maker
///         onFinished: error === TokenAdmin.NoError ? show(name) : tell(message)
///     }
///     ...
///     maker.make("My token", pin.text)
///
/// The PIN is that of its administrator, too, until that one is changed by a `TokenAdmin`. This
/// object may go at any time: the token is made all the same. GUI thread.
class TokenMaker : public QObject {
    Q_OBJECT
    /// Whether a token can be made here at the moment.
    Q_PROPERTY(bool available READ isAvailable NOTIFY availableChanged)
    /// True from `make` until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// How the last making ended, as `TokenAdmin.error` says it.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// The same as a sentence with the next step; empty when all is well.
    Q_PROPERTY(QString message READ message NOTIFY finished)
    /// The token that was made last; empty before.
    Q_PROPERTY(QString name READ name NOTIFY finished)
    /// How long a PIN may be, as a sentence.
    Q_PROPERTY(QString lengthText READ lengthText CONSTANT)
public:
    explicit TokenMaker(QObject *parent = nullptr);
    ~TokenMaker() override;

    bool isAvailable() const;
    bool isRunning() const;
    int error() const;
    QString message() const;
    QString name() const;
    QString lengthText() const;

    /// Whether a PIN may have that length.
    Q_INVOKABLE static bool fits(const QString &pin);
    /// Whether that can be the name of a token.
    Q_INVOKABLE static bool isName(const QString &name);
    /// Makes it; does nothing while one is made.
    Q_INVOKABLE void make(const QString &name, const QString &pin);

Q_SIGNALS:
    void availableChanged();
    void runningChanged();
    /// The work has ended: `error` and `message` say how.
    void finished();

private:
    void end(const TokenError &error);

    QString m_asked;
    QString m_name;
    TokenError m_error;
    bool m_isAvailable = false;
    bool m_isRunning = false;
    const std::shared_ptr<Arrival> m_arrival = std::make_shared<Arrival>();
};

} // namespace Trivex
