// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/requestmaking.h"

#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/x509/certificatewriter.h"
#include "qca/x509/requestediting.h"

namespace Trivex {

QCA::CertificateRequest madeRequest(QCA::CertificateOptions options, QCA::PrivateKey key)
{
    const auto *context = static_cast<const QCA::PKeyContext *>(key.context());
    return context ? requestFromDer(writeRequest(options, *context)) : QCA::CertificateRequest();
}

QCA::CertificateRequest editedRequest(QCA::CertificateRequest original, RequestedFields fields,
                                      QCA::PrivateKey key)
{
    const auto *context = static_cast<const QCA::PKeyContext *>(key.context());
    const QCA::CertificateRequest own = ownRequest(original);
    if (own.isNull() || !context)
        return {};
    return requestFromDer(editRequest(own.toDER(), requestedFields(own), fields, *context));
}

EditLoss lossOfEdit(const QCA::CertificateRequest &original, const RequestedFields &fields)
{
    const QCA::CertificateRequest own = ownRequest(original);
    return own.isNull() ? EditLoss::None : lossOfEdit(own.toDER(), requestedFields(own), fields);
}

} // namespace Trivex
