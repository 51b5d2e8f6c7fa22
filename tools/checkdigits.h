// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// Check digits of the Russian identifiers. A singleton in QML. A wrong one is a reason to flag a
/// value, never to refuse it.
///
/// Sources: Order of the Federal Tax Service MMV-7-6/435 of 2012 (INN), Order of the Ministry of
/// Finance 165n of 2017 (OGRN, OGRNIP), Rules of the Pension Fund on SNILS control numbers.
class CheckDigits : public QObject {
    Q_OBJECT
public:
    enum Kind { Inn, Innle, Ogrn, Ogrnip, Snils };
    Q_ENUM(Kind)
    enum Result { Empty, Good, WrongLength, WrongDigits, NotDigits };
    Q_ENUM(Result)

    explicit CheckDigits(QObject *parent = nullptr);

    /// Blanks and hyphens are skipped, as these numbers are written with them.
    Q_INVOKABLE static int check(int kind, const QString &text);
    /// The sentence that says what is wrong; empty for a good or empty value.
    Q_INVOKABLE static QString explain(int kind, const QString &text);
};

} // namespace Trivex
