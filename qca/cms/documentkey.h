// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/cms/cmsscheme.h"

#include <QtCrypto>

namespace Trivex {

/// The signature of `message` by `key`, in the form that signed messages have (RFC 5652, 5.4);
/// empty when the key can't or its token refuses. An event loop runs while a token works or asks
/// for its PIN, when it is called on the GUI thread. The key stays as it is.
TRIVEX_QCA_EXPORT QByteArray signForMessage(QCA::PrivateKey key, const CmsScheme &scheme,
                                            const QByteArray &message);

/// The certificates of a bundle as signed messages carry them, the signer's first, DER.
TRIVEX_QCA_EXPORT QList<QByteArray> signingChain(const QCA::KeyBundle &bundle);

} // namespace Trivex
