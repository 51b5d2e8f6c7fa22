// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenregistry.h"

namespace TrivexTest {

/// The process's token backend while it lives, which knows no token and does nothing. Tests answer
/// for what they ask about.
class QuietBackend : public Trivex::TokenBackend {
public:
    QuietBackend() { Trivex::setTokenBackend(this); }
    ~QuietBackend() override { Trivex::setTokenBackend(nullptr); }

    QCA::PrivateKey findPrivateKey(const QString &, const QCA::PublicKey &) override { return {}; }
    QCA::PrivateKey keyOfId(const QString &, const QString &) override { return {}; }
    void takeLook(const QString &) override { }
    void cancelOperation(const QString &) override { }
    bool startChange(const QString &, const Trivex::StoreChange &, Trivex::StoreChangeDone) override
    {
        return false;
    }
    Trivex::CancellationPtr startAdministration(const QString &, Trivex::TokenAdministration,
                                                Trivex::TokenAdministrationDone) override
    {
        return {};
    }
    Trivex::CancellationPtr startExtraction(const QString &, const QByteArray &,
                                            Trivex::ExtractionDone) override
    {
        return {};
    }
    void cancelTask(const Trivex::CancellationPtr &) override { }
    void forgetTokens() override { }
    QStringList silentModules() const override { return {}; }
};

} // namespace TrivexTest
