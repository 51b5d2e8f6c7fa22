// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace TrivexTest {

/// While it lives, the text of every identifier is "tr:" and the identifier: what was looked up can
/// be told from what was only written down.
class MarkTranslator : public QTranslator {
public:
    MarkTranslator() { QCoreApplication::installTranslator(this); }
    ~MarkTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *disambiguation,
                      int number) const override
    {
        Q_UNUSED(context)
        Q_UNUSED(disambiguation)
        Q_UNUSED(number)
        return QLatin1String("tr:") + QLatin1String(source);
    }
};

} // namespace TrivexTest
