// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

namespace Trivex {

/// The target of the generations that this thread starts while one lives.
class TRIVEX_QCA_EXPORT GenerationTarget {
public:
    GenerationTarget(const QString &keyStoreId, const QString &objectId);
    ~GenerationTarget();
    GenerationTarget(const GenerationTarget &) = delete;
    GenerationTarget &operator=(const GenerationTarget &) = delete;

    static const GenerationTarget *current();

    /// No target is in force on this thread while one lives.
    class TRIVEX_QCA_EXPORT None {
    public:
        None();
        ~None();
        None(const None &) = delete;
        None &operator=(const None &) = delete;

    private:
        const GenerationTarget *m_previous;
    };

    QString keyStoreId() const { return m_keyStoreId; }
    QString objectId() const { return m_objectId; }

private:
    QString m_keyStoreId;
    QString m_objectId;
    const GenerationTarget *m_previous;
};

} // namespace Trivex
