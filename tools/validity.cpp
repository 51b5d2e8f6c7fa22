// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/validity.h"

#include "qca/describe/words.h"

namespace Trivex {

Validity::Validity(QObject *parent)
    : QObject(parent)
{
}

Validity::State Validity::stateAt(const QDateTime &from, const QDateTime &until,
                                  const QDateTime &now)
{
    if (!until.isValid())
        return Unknown;
    if (now > until)
        return Expired;
    if (from.isValid() && now < from)
        return NotYet;
    return now.addDays(ExpiringDays) > until ? Expiring : Valid;
}

int Validity::state(const QDateTime &from, const QDateTime &until) const
{
    return stateAt(from, until, QDateTime::currentDateTimeUtc());
}

QString Validity::word(int state) const
{
    switch (state) {
    case Valid:
        //% "Valid"
        return qtTrId("trivex-app-validity-valid");
    case Expiring:
        //% "Expires soon"
        return qtTrId("trivex-app-validity-expiring");
    case Expired:
        //% "Expired"
        return qtTrId("trivex-app-validity-expired");
    case NotYet:
        //% "Not yet valid"
        return qtTrId("trivex-app-validity-not-yet");
    default:
        return {};
    }
}

QString Validity::date(const QDateTime &time) const
{
    return dateText(time);
}

QString Validity::dateTime(const QDateTime &time) const
{
    return timeText(time);
}

QString Validity::until(const QDateTime &time) const
{
    //% "until %1"
    return time.isValid() ? qtTrId("trivex-app-until").arg(date(time)) : QString();
}

double Validity::elapsed(const QDateTime &from, const QDateTime &until) const
{
    if (!from.isValid() || !until.isValid() || until <= from)
        return 1;
    const double whole = double(from.secsTo(until));
    return qBound(0.0, double(from.secsTo(QDateTime::currentDateTimeUtc())) / whole, 1.0);
}

int Validity::daysTo(const QDateTime &time) const
{
    return int(QDateTime::currentDateTimeUtc().daysTo(time));
}

} // namespace Trivex
