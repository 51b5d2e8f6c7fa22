// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/questions/question.h"

#include <optional>

namespace Trivex {

/// While one lives, the question that this thread puts to a person by a signal that has no room for
/// it. Whoever shows the prompt looks here for what it is about.
class TRIVEX_QCA_EXPORT PutQuestion {
public:
    /// `question` must outlive it; nothing where it is not known, as of another provider.
    explicit PutQuestion(const std::optional<QuestionInfo> &question);
    ~PutQuestion();
    PutQuestion(const PutQuestion &) = delete;
    PutQuestion &operator=(const PutQuestion &) = delete;

    /// Null where none is put, or where it is not known.
    static const QuestionInfo *current();

private:
    const QuestionInfo *m_previous;
};

} // namespace Trivex
