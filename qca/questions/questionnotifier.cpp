// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/questionnotifier.h"

namespace Trivex {

QuestionNotifier::QuestionNotifier()
{
    // So that the signal can be queued.
    qRegisterMetaType<quintptr>("quintptr");
}

QuestionNotifier *QuestionNotifier::instance()
{
    // Never deleted, because a thread that a module holds may come back late.
    static auto *notifier = new QuestionNotifier;
    return notifier;
}

} // namespace Trivex
