// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rememberedtokens.h"

#include "qca/tokens/rememberedtokens.h"

#include <QFileInfo>
#include <QSettings>

namespace Trivex {

namespace {

const QString Key = QStringLiteral("rememberTokens");

/// Reads the file anew when another process has changed it. The names of the application are those
/// of now: a token's thread must not ask the application for them.
RememberedSetting storedSetting(const QSettings &settings)
{
    return [format = settings.format(), scope = settings.scope(),
            organization = settings.organizationName(), application = settings.applicationName()] {
        return QSettings(format, scope, organization, application).value(Key, false).toBool();
    };
}

} // namespace

RememberedTokens::RememberedTokens(QObject *parent)
    : QObject(parent)
{
}

void RememberedTokens::apply()
{
    const QSettings settings;
    const bool on = settings.value(Key, false).toBool();
    setRememberedSetting(storedSetting(settings));
    setTokensRemembered(on);
    // The process in which it was switched off may have ended first, or another one was writing.
    // Who has never chosen leaves alone what other programs of the user keep.
    if (!on && settings.contains(Key) && QFileInfo::exists(rememberedTokensDirectory()))
        forgetTokens();
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
