// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/pkcs12/bundlereader.h"

#include <QtCrypto>

namespace Trivex {

/// The contexts made from a bundle. The caller owns them.
void makeContexts(Bundle bundle, QCA::Provider *provider, QList<QCA::CertContext *> *chain,
                  QCA::PKeyContext **key);

/// Key bundles as PKCS#12 files (RFC 7292), with keys of any kind.
class TRIVEX_QCA_EXPORT Pkcs12Context : public QCA::PKCS12Context {
    Q_OBJECT
public:
    explicit Pkcs12Context(QCA::Provider *provider);

    QCA::Provider::Context *clone() const override;

    /// Empty when the chain is empty, or when the key can't be exported or isn't that of the
    /// chain's first certificate.
    QByteArray toPKCS12(const QString &name, const QList<const QCA::CertContext *> &chain,
                        const QCA::PKeyContext &priv,
                        const QCA::SecureArray &passphrase) const override;
    /// See `readBundle` for what the errors mean. Unchanged arguments unless the result is good.
    QCA::ConvertResult fromPKCS12(const QByteArray &in, const QCA::SecureArray &passphrase,
                                  QString *name, QList<QCA::CertContext *> *chain,
                                  QCA::PKeyContext **priv) const override;
};

} // namespace Trivex
