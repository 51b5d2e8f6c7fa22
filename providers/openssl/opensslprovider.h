// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// "qca-norvel-openssl": certificates, requests, revocation lists, bundles and software keys, and
/// the user's directory of certificates as the key store "USER".
class OpensslProvider : public QCA::Provider {
public:
    OpensslProvider();
    ~OpensslProvider() override;

    void init() override;
    int qcaVersion() const override;
    QString name() const override;
    QStringList features() const override;
    Context *createContext(const QString &type) override;
    /// Nothing to set so far; QCA needs the form type to store anything at all.
    QVariantMap defaultConfig() const override;
};

} // namespace Trivex
