// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/lightdecoding.h"

namespace Trivex {

namespace {

thread_local int depth = 0;

} // namespace

LightDecoding::LightDecoding()
{
    ++depth;
}

LightDecoding::~LightDecoding()
{
    --depth;
}

bool LightDecoding::isOn()
{
    return depth > 0;
}

} // namespace Trivex
