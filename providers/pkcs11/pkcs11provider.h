// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// The QCA provider "qca-norvel-pkcs11": key stores of PKCS#11 tokens, keys on them, and requests
/// that these keys sign.
class Pkcs11Provider : public QCA::Provider {
public:
    void init() override;
    void deinit() override;
    int qcaVersion() const override;
    QString name() const override;
    QStringList features() const override;
    Context *createContext(const QString &type) override;
    /// "allow_load_rootca": list trust anchors as a system store. "modules": see TokenSettings.
    /// "login_lifetime": minutes after which an unused login ends; 0: with the session.
    /// "remember_tokens": keep what tokens show to anybody, to list it at once at the next start.
    QVariantMap defaultConfig() const override;
    void configChanged(const QVariantMap &config) override;
};

} // namespace Trivex
