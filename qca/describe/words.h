// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace Trivex {

// How values are written for people to read, and how much of them.

/// Lines of one value. What is behind them is counted.
constexpr int MaxShownLines = 1000;
/// Rows of one group. Each is a control of the window, and 200 of them take a tenth of a second.
constexpr int MaxShownRows = 60;
/// Characters of one line.
constexpr int MaxShownCharacters = 16 * 1024;
/// Characters of all values of a description, and of each behind these: laying out more would keep
/// the window waiting.
constexpr int MaxShownText = 64 * 1024;
constexpr int MaxShownBehind = 200;
/// Bytes that are shown as such.
constexpr int MaxShownBytes = 1024;

/// Bytes as two hexadecimal digits each, with colons. Behind `most` bytes an ellipsis and how many
/// there are in all.
QString bytesText(Der::Slice bytes, int most = MaxShownBytes);

/// The value of an INTEGER, given with tag and length, in decimal digits; empty for a malformed one
/// and one of more than 64 bytes.
QString decimalText(Der::Slice integer);

/// The content of an INTEGER: in decimal digits where it is small, else as bytes.
QString numberText(Der::Slice content);

/// The format of a date, with a whole year where the locale writes two digits of it: a certificate
/// may hold for a hundred years.
TRIVEX_QCA_EXPORT QString withWholeYear(QString format);
/// From now on the texts of dates and times are for programs: in UTC, as ISO 8601 has them. Called
/// before the first of them is made.
TRIVEX_QCA_EXPORT void writeTimesForPrograms();
/// The date in the user's locale and time zone, with all of its year; empty for an invalid one.
TRIVEX_QCA_EXPORT QString dateText(const QDateTime &time);
/// Date and time in the user's locale and time zone, with all of the year; empty for an invalid
/// one.
TRIVEX_QCA_EXPORT QString timeText(const QDateTime &time);
/// The same of a Time; what is none is shown as damaged.
QString timeText(const Der::Element &time);

/// A text that strangers chose, as one line of at most `MaxShownCharacters`.
QString lineText(const QString &text);

/// The value of something that does not decode: says so, and has its bytes.
QString damagedText(Der::Slice bytes);

/// "yes" or "no".
QString yesText(bool yes);

/// The reason of a revocation (RFC 5280, 5.3.1) by its number; one that is not known stays a
/// number.
TRIVEX_QCA_EXPORT QString revocationReasonText(int code);

/// "label: value".
QString labeledText(const QString &label, const QString &value);

/// The lines of one value, as many as are shown; counts the others.
class Lines {
public:
    /// Whether further lines are only counted, so that nobody need make them.
    bool isFull() const { return m_lines.size() >= MaxShownLines || m_size >= MaxSize; }
    void add(const QString &line);
    /// Counts a line that was not made.
    void skip() { ++m_skipped; }
    bool isEmpty() const { return m_lines.isEmpty(); }
    /// All lines, with the number of the others behind them.
    QString text() const;

private:
    static constexpr int MaxSize = 48 * 1024;

    QStringList m_lines;
    int m_size = 0;
    int m_skipped = 0;
};

} // namespace Trivex
