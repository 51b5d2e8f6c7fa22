// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/patience.h"

#include <QTimer>

#include <utility>

namespace Trivex {

Patience aMinute()
{
    return [](QObject *context, std::function<void()> done) {
        QTimer::singleShot(std::chrono::minutes(1), context, std::move(done));
    };
}

} // namespace Trivex
