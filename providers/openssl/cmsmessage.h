// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/messagetask.h"

#include <memory>

namespace Trivex {

/// One message of `QCA::SecureMessage`. The work is done in one go on the thread of the message,
/// from its event loop after `end`, or within `waitForFinished`.
class CmsMessage : public QCA::MessageContext {
    Q_OBJECT
public:
    CmsMessage(QCA::Provider *provider, std::shared_ptr<const MessageMeans> means);

    QCA::Provider::Context *clone() const override;

    bool canSignMultiple() const override { return false; }
    QCA::SecureMessage::Type type() const override { return QCA::SecureMessage::CMS; }

    void reset() override;
    void setupEncrypt(const QCA::SecureMessageKeyList &keys) override;
    void setupSign(const QCA::SecureMessageKeyList &keys, QCA::SecureMessage::SignMode mode,
                   bool bundleSigner, bool smime) override;
    void setupVerify(const QByteArray &detachedSig) override;
    void start(QCA::SecureMessage::Format format, Operation operation) override;
    void update(const QByteArray &in) override;
    /// The part that was not read yet.
    QByteArray read() override;
    int written() override;
    void end() override;
    bool finished() const override { return m_state == Finished; }
    /// The time that is given is not observed: a token or a person may take longer. False where
    /// there is nothing to wait for, and while the same message works further up in the stack.
    bool waitForFinished(int msecs) override;

    bool success() const override { return m_result.isGood; }
    QCA::SecureMessage::Error errorCode() const override { return m_result.error; }
    QByteArray signature() const override { return m_result.signature; }
    QString hashName() const override { return m_result.digest; }
    QCA::SecureMessageSignatureList signers() const override { return m_result.signers; }

private:
    enum State { Idle, Collecting, Waiting, Working, Finished };

    void restart();
    /// False when this object is gone, or was started anew meanwhile.
    bool work();

    const std::shared_ptr<const MessageMeans> m_means;
    MessageTask m_task;
    MessageResult m_result;
    State m_state = Idle;
    int m_written = 0;
    int m_run = 0; ///< counts the messages that were started
};

} // namespace Trivex
