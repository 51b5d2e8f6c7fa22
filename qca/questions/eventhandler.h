// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/questions/question.h"

#include <QHash>

namespace Trivex {

/// `QCA::EventHandler` with the two answers that stock QCA does not know, for the question kinds 2
/// and 4. Everything else is the stock class. Use it on its own thread, like the stock one.
class TRIVEX_QCA_EXPORT EventHandler : public QCA::EventHandler {
    Q_OBJECT
public:
    explicit EventHandler(QObject *parent = nullptr);
    ~EventHandler() override;

    /// Answers question `id` of kind 2 with the id of a key store. Ignored when no such question
    /// waits.
    void submitKeyStoreId(int id, const QString &keyStoreId);

    /// Answers question `id` of kind 4 with the name of a key store entry. Ignored when no such
    /// question waits.
    void submitKeyStoreEntryName(int id, const QString &name);

    /// Answers question `id` with a PIN that a person has just typed and types again if it is
    /// wrong: the operation then asks the same way once more, and does not fail. For a question
    /// that is none of our own providers it is the stock answer.
    void submitTypedPin(int id, const QCA::Event &event, const QCA::SecureArray &pin);

    /// True when `event` is a question of our own that this handler has to leave to another: it is
    /// addressed to another handler, or has been withdrawn. To be rejected at once.
    bool isForAnother(const QCA::Event &event) const;

private:
    void submitText(int id, const QString &text);

    QHash<int, quintptr> m_tickets;
};

} // namespace Trivex
