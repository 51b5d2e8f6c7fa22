// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>

namespace Trivex {

/// What a certificate's dates say, as a word. A singleton in QML. Only the dates: whether a
/// certificate was revoked is not looked at.
class Validity : public QObject {
    Q_OBJECT
public:
    enum State { Unknown, Valid, Expiring, Expired, NotYet };
    Q_ENUM(State)

    /// So many days before its end a certificate counts as expiring.
    static constexpr int ExpiringDays = 30;

    explicit Validity(QObject *parent = nullptr);

    /// `Unknown` when `until` is invalid (requests, unreadable dates).
    static State stateAt(const QDateTime &from, const QDateTime &until, const QDateTime &now);

    /// The state of a certificate that is valid between these dates, a `State`, at this moment.
    Q_INVOKABLE int state(const QDateTime &from, const QDateTime &until) const;
    /// The word for a state, for a badge.
    Q_INVOKABLE QString word(int state) const;
    /// The date in the user's locale, short; empty for an invalid one.
    Q_INVOKABLE QString date(const QDateTime &time) const;
    /// Date and time in the user's locale and time zone.
    Q_INVOKABLE QString dateTime(const QDateTime &time) const;
    /// "until 14.03.2027", or "since" for one that has not begun.
    Q_INVOKABLE QString until(const QDateTime &time) const;
    /// The share of the validity period that has passed, 0 to 1.
    Q_INVOKABLE double elapsed(const QDateTime &from, const QDateTime &until) const;
    /// Whole days from now to `time`; negative when past.
    Q_INVOKABLE int daysTo(const QDateTime &time) const;
};

} // namespace Trivex
