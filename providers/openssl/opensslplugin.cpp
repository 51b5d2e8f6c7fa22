// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/opensslplugin.h"

#include "providers/openssl/opensslprovider.h"

QCA::Provider *OpensslPlugin::createProvider()
{
    return new Trivex::OpensslProvider;
}
