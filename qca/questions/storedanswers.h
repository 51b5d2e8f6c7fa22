// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QtCrypto>

#include <memory>
#include <optional>

namespace Trivex {

/// What an operation on a token needs to know and what was stored for it beforehand.
struct Answers {
    QString keyStoreId;
    QString objectId;
    QCA::SecureArray password = QCA::SecureArray("");
};

/// The answers that a handler holds for the next operation. While registered, an operation of our
/// own providers takes the whole set when it starts on the store that the set names; so separate
/// questions can't tear a set apart, and nothing stays behind when the operation ends.
///
/// Thread-safe: the setters are called on the thread that starts an operation, the taking happens
/// on a token's thread.
class TRIVEX_QCA_EXPORT StoredAnswers {
public:
    StoredAnswers();
    /// Unregisters.
    ~StoredAnswers();
    StoredAnswers(const StoredAnswers &) = delete;
    StoredAnswers &operator=(const StoredAnswers &) = delete;

    /// From here on the operations of our providers find this set.
    void registerSet();

    void setKeyStoreId(const QString &id);
    void setObjectId(const QString &id);
    void setPassword(const QCA::SecureArray &password);

    /// A copy of the set.
    Answers answers() const;
    /// Null strings and an empty (not null) password.
    void clear();

private:
    friend class StoredAnswersRegistry;
    class Private;
    std::unique_ptr<Private> m_private;
};

/// Takes the first registered set of stored answers that names `keyStoreId`, and clears it there.
/// With an empty `keyStoreId`, the first set that names any store. Thread-safe.
TRIVEX_QCA_EXPORT std::optional<Answers> takeStoredAnswers(const QString &keyStoreId);

} // namespace Trivex
