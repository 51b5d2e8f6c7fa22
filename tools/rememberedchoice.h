// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <atomic>

namespace Trivex {

/// What the user has chosen for remembered tokens, one for the process: every `RememberedTokens`
/// shows it. Lives until the process ends; its signal may come on any thread.
class RememberedChoice : public QObject {
    Q_OBJECT
public:
    static RememberedChoice &instance();

    /// Puts in force what the settings of the application say.
    void apply();
    /// Stores the choice and puts it in force. Switched on, it is off again when it can't be
    /// stored: nothing is kept against what other processes read there.
    void choose(bool on);

    /// False after a choice that could not be stored.
    bool isSaved() const { return m_isSaved; }

Q_SIGNALS:
    /// Also after a choice that changes nothing because it could not be stored.
    void changed();

private:
    RememberedChoice() = default;

    std::atomic_bool m_isSaved{true};
};

} // namespace Trivex
