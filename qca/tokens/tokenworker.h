// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/cancellation.h"

#include <QObject>

namespace Trivex {

/// The C++ interface of an object that has tokens work for it and whose own interface has no way to
/// stop that; found by `qobject_cast`. The object's thread.
class TokenWorker {
public:
    /// The task that it works at now, or worked at last; null before the first. For
    /// `cancelTokenTask`.
    virtual CancellationPtr tokenTask() const = 0;

protected:
    ~TokenWorker() = default;
};

} // namespace Trivex

Q_DECLARE_INTERFACE(Trivex::TokenWorker, "org.trivex.TokenWorker/1")
