// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/openssl/messagetask.h"

#include <memory>

namespace Trivex {

/// The system behind `QCA::CMS`: what its messages are checked and decrypted with.
class CmsContext : public QCA::SMSContext {
    Q_OBJECT
public:
    explicit CmsContext(QCA::Provider *provider);

    QCA::Provider::Context *clone() const override;

    void setTrustedCertificates(const QCA::CertificateCollection &trusted) override;
    void setUntrustedCertificates(const QCA::CertificateCollection &untrusted) override;
    void setPrivateKeys(const QList<QCA::SecureMessageKey> &keys) override;
    QCA::MessageContext *createMessage() override;

private:
    /// Its messages look here when they work: what is set later counts for them, too.
    std::shared_ptr<MessageMeans> m_means;
};

} // namespace Trivex
