// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/cancellation.h"
#include "qca/questions/question.h"
#include "qca/questions/reply.h"

#include <chrono>

namespace Trivex {

/// Asks the handlers of the process in QCA's order and waits for the answer. Callable on any
/// thread: the GUI thread waits in a nested event loop, so that the window stays alive and its
/// handlers can answer; every other thread blocks. Re-entrant.
///
/// `store` and `entry` are what a plain handler sees in the event. With `cancellation`, the
/// question is withdrawn when that is requested, and not asked when it has been.
TRIVEX_QCA_EXPORT Reply ask(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
                            const QCA::KeyStoreEntry &entry = QCA::KeyStoreEntry(),
                            const CancellationPtr &cancellation = {});

/// Waits until what has been answered is cleaned up, and no longer than until `deadline`. Whoever
/// asks has to call it before QCA ends, because askers can't outlive QCA. Any thread but the
/// question thread.
TRIVEX_QCA_EXPORT void settleQuestions(std::chrono::steady_clock::time_point deadline);

/// Called by `EventHandler`: notes the text that answers the question behind `ticket`.
TRIVEX_QCA_EXPORT void noteTextAnswer(quintptr ticket, const QString &text);

/// Called by `EventHandler`: whoever answers the question behind `ticket` may be asked again.
TRIVEX_QCA_EXPORT void noteAsksAgain(quintptr ticket);

} // namespace Trivex
