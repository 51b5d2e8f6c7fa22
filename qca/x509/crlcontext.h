// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/handles.h"

#include <QtCrypto>

#include <memory>

namespace Trivex {

/// The data of one certificate revocation list (RFC 5280, 5). Never changes.
struct RevocationData {
    QByteArray der;
    QCA::CRLContextProps properties{};
};

/// A certificate revocation list. A missing next update is an invalid date.
class TRIVEX_QCA_EXPORT CrlContext : public QCA::CRLContext {
    Q_OBJECT
public:
    explicit CrlContext(QCA::Provider *provider);
    ~CrlContext() override;

    QCA::Provider::Context *clone() const override;

    const QCA::CRLContextProps *props() const override;
    bool compare(const QCA::CRLContext *other) const override;

    QByteArray toDER() const override;
    QString toPEM() const override;
    QCA::ConvertResult fromDER(const QByteArray &der) override;
    QCA::ConvertResult fromPEM(const QString &pem) override;

private:
    CrlContext(const CrlContext &other);

    // Stock code reads the first three members at this place in a foreign context.
    X509 *m_noCertificate = nullptr;
    X509_REQ *m_noRequest = nullptr;
    CrlHandle m_native;
    std::shared_ptr<const RevocationData> m_data;
};

} // namespace Trivex
