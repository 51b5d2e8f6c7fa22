// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"
#include "qca/tokens/tokenregistry.h"

#include <atomic>

namespace Trivex {

/// Answers the adapter's requests for tokens. Thread-safe.
class ProviderBackend : public TokenBackend {
public:
    ProviderBackend(TokenTable &tokens, const FirstScan &scan);

    /// Sets the provider for the keys that are found; null while none is loaded.
    void setProvider(QCA::Provider *provider);

    QCA::PrivateKey findPrivateKey(const QString &keyStoreId,
                                   const QCA::PublicKey &publicKey) override;
    QCA::PrivateKey keyOfId(const QString &keyStoreId, const QString &keyId) override;
    void takeLook(const QString &keyStoreId) override;
    void cancelOperation(const QString &keyStoreId) override;
    bool startChange(const QString &keyStoreId, const StoreChange &change,
                     StoreChangeDone done) override;
    CancellationPtr startAdministration(const QString &keyStoreId, TokenAdministration task,
                                        TokenAdministrationDone done) override;
    CancellationPtr startExtraction(const QString &keyStoreId, const QByteArray &publicInfo,
                                    ExtractionDone done) override;
    void cancelTask(const CancellationPtr &task) override;
    void forgetTokens() override;
    QStringList silentModules() const override;

private:
    QCA::PrivateKey privateKeyOf(const QString &keyStoreId, const TokenKeyPtr &key) const;
    TokenKeyPtr keyIn(const QString &keyStoreId, const QByteArray &publicInfo) const;
    /// Logs in when the token wants it. True when the token may show more keys now.
    bool logIn(const QString &keyStoreId) const;

    TokenTable &m_tokens;
    const FirstScan &m_scan;
    std::atomic<QCA::Provider *> m_provider = nullptr;
};

} // namespace Trivex
