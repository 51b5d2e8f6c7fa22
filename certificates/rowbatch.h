// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// A child of a model that inserts many rows one by one: it tells the filters of that model when a
/// run of insertions starts and ends, so that they can take the rows in at once. A sorted proxy
/// that takes n rows one by one needs time that grows with n * n.
class RowBatch : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// A run of fewer rows is not worth announcing.
    static constexpr int worthwhile = 64;

Q_SIGNALS:
    void begun();
    void ended();
};

} // namespace Trivex
