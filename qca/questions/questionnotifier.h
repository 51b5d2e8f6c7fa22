// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

namespace Trivex {

/// Tells prompts about questions that were ended by somebody else.
class TRIVEX_QCA_EXPORT QuestionNotifier : public QObject {
    Q_OBJECT
public:
    /// The one of the process. The signal comes on any thread, so connect queued.
    static QuestionNotifier *instance();

Q_SIGNALS:
    /// The question with this `QuestionInfo::ticket` needs no answer any more.
    void withdrawn(quintptr ticket);

private:
    QuestionNotifier();
};

} // namespace Trivex
