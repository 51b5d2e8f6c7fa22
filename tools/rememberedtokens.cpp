// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rememberedtokens.h"

#include "qca/tokens/rememberedtokens.h"
#include "tools/rememberedchoice.h"

namespace Trivex {

RememberedTokens::RememberedTokens(QObject *parent)
    : QObject(parent)
{
    connect(&RememberedChoice::instance(), &RememberedChoice::changed, this,
            &RememberedTokens::onChanged);
}

void RememberedTokens::apply()
{
    RememberedChoice::instance().apply();
}

bool RememberedTokens::isOn() const
{
    return tokensAreRemembered();
}

void RememberedTokens::setOn(bool on)
{
    RememberedChoice::instance().choose(on);
}

bool RememberedTokens::isSaved() const
{
    return RememberedChoice::instance().isSaved();
}

} // namespace Trivex
