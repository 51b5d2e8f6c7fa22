// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rememberedchoice.h"

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

bool store(bool on)
{
    QSettings settings;
    settings.setValue(Key, on);
    settings.sync();
    const bool isStored = settings.status() == QSettings::NoError;
    // The process would go on reading what it could not write.
    if (!isStored && on)
        settings.setValue(Key, false);
    return isStored;
}

} // namespace

RememberedChoice &RememberedChoice::instance()
{
    static auto *choice = new RememberedChoice;
    return *choice;
}

void RememberedChoice::apply()
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

void RememberedChoice::choose(bool on)
{
    if (tokensAreRemembered() == on && m_isSaved)
        return;
    if (!on)
        setTokensRemembered(false);
    m_isSaved = store(on);
    if (on)
        setTokensRemembered(m_isSaved);
    else
        forgetTokens();
    Q_EMIT changed();
}

} // namespace Trivex
