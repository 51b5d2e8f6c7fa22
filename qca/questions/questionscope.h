// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// While one lives, questions raised by operations that this thread starts are addressed to
/// `handler` alone, so that two signers, or a signer and a host's prompt, don't answer for each
/// other. `handler` must outlive the operation or be destroyed through QCA's own rules (it rejects
/// what it has not answered).
class TRIVEX_QCA_EXPORT QuestionScope {
public:
    explicit QuestionScope(const QCA::EventHandler *handler);
    ~QuestionScope();
    QuestionScope(const QuestionScope &) = delete;
    QuestionScope &operator=(const QuestionScope &) = delete;

    /// The addressee in force on this thread, or null.
    static const QCA::EventHandler *current();

private:
    const QCA::EventHandler *m_previous;
};

} // namespace Trivex
