// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <optional>

namespace Trivex {

/// The PIN that a signer keeps for its next questions. It answers plain events of any provider, and
/// our own providers' questions for a signature that the signer itself makes, only with the token
/// that it was first used with.
///
/// It is forgotten as soon as any token reports a wrong PIN, and when its own token is taken out or
/// has one try left. Lives on the signer's thread.
class KeptPin : public QObject {
    Q_OBJECT
public:
    /// `signer`: whose signatures may be answered; must outlive this object.
    explicit KeptPin(const QCA::EventHandler *signer);

    /// Keeps a PIN that was given before any question; the first question decides its token.
    void keep(const QCA::SecureArray &pin);
    /// Keeps the answer to that question, if it may be kept.
    void keepAnswer(const std::optional<QuestionInfo> &question, const QCA::SecureArray &pin);
    /// The PIN for that question, bound to its token from here on; empty when a person has to be
    /// asked.
    QCA::SecureArray answerFor(const std::optional<QuestionInfo> &question);
    void forget();

private:
    bool isOwnSignature(const QuestionInfo &question) const;
    bool isOf(const QString &keyStoreId) const { return m_keyStoreId == keyStoreId; }
    void tokenChanged(const QString &keyStoreId);

    const QCA::EventHandler *m_signer;
    TokenMonitor m_monitor;
    QCA::SecureArray m_pin;
    /// The token that the PIN was used with: an empty one after a plain event, none before its
    /// first use.
    std::optional<QString> m_keyStoreId;
};

} // namespace Trivex
