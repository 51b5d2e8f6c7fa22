// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// "qca-norvel-gost": elliptic-curve and GOST keys on PKCS#11 tokens; see
/// `TokenEcContext::createPrivate` for the names of curves.
class GostProvider : public QCA::Provider {
public:
    int qcaVersion() const override;
    QString name() const override;
    QStringList features() const override;
    Context *createContext(const QString &type) override;
};

} // namespace Trivex
