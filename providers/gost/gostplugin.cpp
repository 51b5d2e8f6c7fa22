// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/gost/gostplugin.h"

#include "providers/gost/gostprovider.h"

QCA::Provider *GostPlugin::createProvider()
{
    return new Trivex::GostProvider;
}
