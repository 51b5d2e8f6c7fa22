// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rememberedtokens.h"

#include "qca/tokens/rememberedtokens.h"

#include <QSettings>

namespace Trivex {

namespace {

const QString Key = QStringLiteral("rememberTokens");

} // namespace

RememberedTokens::RememberedTokens(QObject *parent)
    : QObject(parent)
{
}

void RememberedTokens::apply()
{
    setTokensRemembered(QSettings().value(Key, false).toBool());
}

bool RememberedTokens::isOn() const
{
    return tokensAreRemembered();
}

void RememberedTokens::setOn(bool on)
{
    if (isOn() == on)
        return;
    setTokensRemembered(on);
    QSettings().setValue(Key, on);
    if (!on)
        forgetTokens();
    Q_EMIT onChanged();
}

} // namespace Trivex
