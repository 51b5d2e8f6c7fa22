// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/questions/question.h"

#include <optional>

namespace Trivex {

/// The question behind `event`, when it is one of our own providers and still open. Nothing for a
/// plain event, also when a foreign provider uses the name of ours. Thread-safe.
TRIVEX_QCA_EXPORT std::optional<QuestionInfo> questionInfo(const QCA::Event &event);

/// The kind of `event`: that of our own question, or its QCA type. The event must not be null.
TRIVEX_QCA_EXPORT int questionKind(const QCA::Event &event);

/// Ends every open question about the store `keyStoreId` as if it had been rejected; all of them
/// when it is empty. What asks may ask again: see `refuseQuestions`.
TRIVEX_QCA_EXPORT void cancelQuestions(const QString &keyStoreId = QString());

/// Ends the open questions of the owner's operations as if they had been rejected. Every later one
/// is refused before anybody hears of it. Thread-safe; does not wait.
TRIVEX_QCA_EXPORT void refuseQuestions(const OperationOwnerPtr &owner);

} // namespace Trivex
