// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/handles.h"

#include <QtCrypto>

#include <memory>

namespace Trivex {

/// The data of one certification request. Never changes.
class RequestData {
public:
    /// From PKCS#10; null when the bytes are no request.
    static std::shared_ptr<const RequestData> fromDer(const QByteArray &der);
    /// From SPKAC, as base64 text with or without "SPKAC="; null when the text is none.
    static std::shared_ptr<const RequestData> fromSpkac(const QByteArray &text);

    const QByteArray &der() const { return m_der; }
    const QCA::CertContextProps &properties() const { return m_properties; }
    const QByteArray &publicInfo() const { return m_publicInfo; }
    /// Null for SPKAC and for a request that libcrypto can't read.
    RequestHandle native() const;

private:
    RequestData() = default;

    QByteArray m_der;
    QByteArray m_publicInfo;
    QCA::CertContextProps m_properties{};
};

} // namespace Trivex
