// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantList>
#include <QVector>

namespace Trivex {

/// Groups of labelled values, put together in the form that `CertificateDetails::groups` has.
class DetailGroups {
public:
    enum Width { UsualWidth, FixedWidth };

    /// The rows that follow belong to it. A group without rows is left out in the end.
    void begin(const QString &title);
    /// One without a value is left out. `flag` says what is wrong with the value.
    void add(const QString &label, const QString &value, Width width = UsualWidth,
             const QString &flag = {});
    QVariantList groups() const;

private:
    struct Group {
        QString title;
        QVariantList rows;
    };

    QVector<Group> m_groups;
};

} // namespace Trivex
