// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/pkcs11plugin.h"

#include "providers/pkcs11/pkcs11provider.h"

QCA::Provider *Pkcs11Plugin::createProvider()
{
    return new Trivex::Pkcs11Provider;
}
