// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QtCrypto>

#include <memory>
#include <optional>

namespace Trivex {

/// The answers that an operation on a token needs and that were stored before it.
struct Answers {
    QString keyStoreId;
    QString objectId;
    QCA::SecureArray password = QCA::SecureArray("");
};

/// The answers that a handler holds for the next operation. While the set is registered, an
/// operation of our own providers on the store that the set names takes the whole set when it
/// starts. So separate questions can't tear a set apart, and no answer is left when the operation
/// ends.
///
/// Thread-safe: the thread that starts an operation calls the setters, and a token's thread takes
/// the set.
class TRIVEX_QCA_EXPORT StoredAnswers {
public:
    StoredAnswers();
    /// Unregisters.
    ~StoredAnswers();
    StoredAnswers(const StoredAnswers &) = delete;
    StoredAnswers &operator=(const StoredAnswers &) = delete;

    /// Registers the set: from now on the operations of our providers find it.
    void registerSet();

    void setKeyStoreId(const QString &id);
    void setObjectId(const QString &id);
    void setPassword(const QCA::SecureArray &password);

    /// A copy of the set.
    Answers answers() const;
    /// Sets null strings and an empty (not null) password.
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
