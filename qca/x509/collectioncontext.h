// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Lists of certificates and revocation lists in PKCS#7 (RFC 2315) form.
class TRIVEX_QCA_EXPORT CollectionContext : public QCA::CertCollectionContext {
    Q_OBJECT
public:
    explicit CollectionContext(QCA::Provider *provider);

    QCA::Provider::Context *clone() const override;

    /// A degenerate SignedData: lists without a signature.
    QByteArray toPKCS7(const QList<QCA::CertContext *> &certificates,
                       const QList<QCA::CRLContext *> &lists) const override;
    /// Members that don't decode are left out.
    QCA::ConvertResult fromPKCS7(const QByteArray &der, QList<QCA::CertContext *> *certificates,
                                 QList<QCA::CRLContext *> *lists) const override;
};

} // namespace Trivex
