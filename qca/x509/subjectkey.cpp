// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/subjectkey.h"

#include "qca/keys/eckeycontext.h"
#include "qca/keys/pkeycontainer.h"

namespace Trivex {

QCA::PKeyContext *makeSubjectKey(const QByteArray &publicInfo, QCA::Provider *provider)
{
    QCA::PKeyBase *key = makePublicKeyContext(publicInfo, provider);
    return new PKeyContainer(provider, key ? key : new EcKeyContext(provider));
}

} // namespace Trivex
