// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokeninfo.h"

#include "qca/questions/putquestion.h"
#include "qca/tokens/tokenworker.h"

namespace Trivex {

TokenInfo::TokenInfo(QObject *parent)
    : QObject(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, &TokenInfo::refresh);
}

QString TokenInfo::storeId() const
{
    return m_storeId;
}

void TokenInfo::setStoreId(const QString &storeId)
{
    if (m_storeId == storeId)
        return;
    m_storeId = storeId;
    refresh();
    Q_EMIT storeIdChanged();
}

QString TokenInfo::storeName() const
{
    return m_storeName;
}

void TokenInfo::setStoreName(const QString &name)
{
    if (m_storeName == name)
        return;
    m_storeName = name;
    refresh();
    Q_EMIT storeNameChanged();
}

void TokenInfo::refresh()
{
    m_status = m_storeId.isEmpty() ? TokenStatus() : TokenMonitor::token(m_storeId);
    if (m_storeId.isEmpty() && !m_storeName.isEmpty()) {
        const QVector<TokenStatus> tokens = TokenMonitor::tokens();
        for (const TokenStatus &token : tokens) {
            if (token.name == m_storeName)
                m_status = token;
        }
    }
    Q_EMIT changed();
}

QString TokenInfo::name() const
{
    return m_status.name.isEmpty() ? m_storeName : m_status.name;
}

bool TokenInfo::present() const
{
    return m_status.present;
}

bool TokenInfo::readOnly() const
{
    return m_status.readOnly;
}

bool TokenInfo::keysPresumed() const
{
    return m_status.present && m_status.keysPresumed;
}

bool TokenInfo::keysHidden() const
{
    return m_status.present && !m_status.loading && m_status.keysHidden;
}

bool TokenInfo::busy() const
{
    return m_status.busy || m_status.loading;
}

QString TokenInfo::busyText() const
{
    return busyText(m_status);
}

bool TokenInfo::lastTry() const
{
    return m_status.pinState == PinState::FinalTry;
}

bool TokenInfo::locked() const
{
    return m_status.pinState == PinState::Locked;
}

QString TokenInfo::pinText() const
{
    if (m_status.pinState == PinState::Normal && m_status.pinToBeChanged) {
        //% "The PIN was given out with the token and has to be changed first."
        return qtTrId("trivex-app-pin-to-be-changed");
    }
    return pinText(m_status.pinState);
}

bool TokenInfo::showAsker()
{
    const QuestionInfo *question = PutQuestion::current();
    if (!question)
        return true;
    if (!question->addressee || question->purpose != Purpose::Sign)
        return false;
    setStoreId(question->keyStoreId);
    return true;
}

void TokenInfo::cancel(QObject *worker)
{
    if (const auto *known = qobject_cast<TokenWorker *>(worker))
        cancelTokenTask(known->tokenTask());
}

QString TokenInfo::pinText(PinState state)
{
    if (state == PinState::NotSet)
        return qtTrId("trivex-app-cause-pin-not-set") + QLatin1Char(' ')
            + qtTrId("trivex-app-advice-pin-not-set");
    if (state == PinState::Locked) {
        //% "The PIN is locked. Only the token's administrator can unlock it."
        return qtTrId("trivex-app-pin-locked");
    }
    if (state == PinState::FinalTry) {
        //% "This is the last try: a wrong PIN locks the token."
        return qtTrId("trivex-app-pin-final");
    }
    if (state == PinState::CountLow) {
        //% "A wrong PIN was given before. After several wrong ones the token locks itself."
        return qtTrId("trivex-app-pin-low");
    }
    return {};
}

QString TokenInfo::busyText(const TokenStatus &status)
{
    if (!status.busy) {
        //% "Reading the token…"
        return status.loading ? qtTrId("trivex-app-busy-loading") : QString();
    }
    switch (status.busyWith) {
    case Purpose::Sign:
        //% "Signing…"
        return qtTrId("trivex-app-busy-sign");
    case Purpose::Decrypt:
        //% "Decrypting…"
        return qtTrId("trivex-app-busy-decrypt");
    case Purpose::Write:
        //% "Writing…"
        return qtTrId("trivex-app-busy-write");
    case Purpose::Remove:
        //% "Removing…"
        return qtTrId("trivex-app-busy-remove");
    case Purpose::Generate:
        //% "Making a key…"
        return qtTrId("trivex-app-busy-generate");
    case Purpose::Look:
        return qtTrId("trivex-app-busy-loading");
    case Purpose::Export:
        //% "Copying the private key…"
        return qtTrId("trivex-app-busy-export");
    case Purpose::SetPin:
        //% "Setting the PIN…"
        return qtTrId("trivex-app-busy-set-pin");
    case Purpose::Initialise:
        //% "Initialising the token…"
        return qtTrId("trivex-app-busy-initialise");
    }
    return {};
}

} // namespace Trivex
