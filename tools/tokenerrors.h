// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QDateTime>

namespace Trivex {

/// What went wrong, in words: a cause, a next step, and a report to copy. Listens to the tokens by
/// itself; files and bundles report through `describe...`. A report holds no PIN, no key and no
/// personal data: only names of calls, codes, the token's model and versions.
class TokenErrors : public QObject {
    Q_OBJECT
    /// The last failure; empty texts when there was none.
    Q_PROPERTY(QString cause READ cause NOTIFY changed)
    /// What to do about it, as a sentence.
    Q_PROPERTY(QString advice READ advice NOTIFY changed)
    /// Calls, codes and versions as text, to be copied; without a PIN, a key or a name.
    Q_PROPERTY(QString report READ report NOTIFY changed)
    /// It was a wrong PIN: whoever asked for it may ask again.
    Q_PROPERTY(bool wrongPin READ isWrongPin NOTIFY changed)
public:
    explicit TokenErrors(QObject *parent = nullptr);

    QString cause() const;
    QString advice() const;
    QString report() const;
    bool isWrongPin() const { return m_error.kind == TokenError::WrongPin; }

    /// Forgets the last failure.
    Q_INVOKABLE void clear();

    static QString causeOf(const TokenError &error);
    static QString adviceOf(const TokenError &error);

Q_SIGNALS:
    /// Another failure is the last one, or `clear()` has forgotten it.
    void changed();
    /// A token operation failed. Not sent for one that its user left.
    void failed();
    /// An operation ended because its user left it.
    void left();

private:
    Q_INVOKABLE void take(const Trivex::TokenError &error);

    TokenMonitor m_monitor;
    TokenError m_error;
    QDateTime m_when;
};

} // namespace Trivex
