// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// Whether what tokens show without a login is kept in the user's cache directory, so that a token
/// that was read before shows its rows at once at the next start. Kept with the settings of the
/// application (`QSettings`). One for all objects of this type.
class RememberedTokens : public QObject {
    Q_OBJECT
    /// False unless it was switched on. Switched off, it removes all that was kept.
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY onChanged)
    /// False when the last choice could not be written to the settings. Switched on, it is off
    /// then; switched off, it is off until the process ends, and nothing is kept any longer.
    Q_PROPERTY(bool saved READ isSaved NOTIFY onChanged)
public:
    explicit RememberedTokens(QObject *parent = nullptr);

    /// Puts in force what the settings say: when the QML module is loaded, before the key stores
    /// are started as a rule. A token that is read before is read as ever.
    static void apply();

    bool isOn() const;
    void setOn(bool on);
    bool isSaved() const;

Q_SIGNALS:
    /// Also when another object, perhaps of another QML engine, was used.
    void onChanged();
};

} // namespace Trivex
