// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenfactlist.h"

#include "qca/base/plaintext.h"
#include "tools/certificatedetails.h"
#include "tools/detailgroups.h"
#include "tools/texts.h"
#include "tools/tokeninfo.h"

#include <algorithm>

namespace Trivex {

namespace {

struct AbilityName {
    TokenAbility::Kind kind;
    const char *id;
};

constexpr AbilityName AbilityNames[] = {
    //% "RSA"
    {TokenAbility::Rsa, QT_TRID_NOOP("trivex-app-ability-rsa")},
    //% "Elliptic curves"
    {TokenAbility::EllipticCurve, QT_TRID_NOOP("trivex-app-ability-curves")},
    //% "Ed25519"
    {TokenAbility::Edwards, QT_TRID_NOOP("trivex-app-ability-edwards")},
    //% "GOST R 34.10"
    {TokenAbility::Gost, QT_TRID_NOOP("trivex-app-ability-gost")},
};

struct DoneText {
    bool TokenAbility::*does;
    const char *id;
};

constexpr DoneText DoneTexts[] = {
    //% "makes keys"
    {&TokenAbility::makes, QT_TRID_NOOP("trivex-app-ability-makes")},
    //% "signs"
    {&TokenAbility::signs, QT_TRID_NOOP("trivex-app-ability-signs")},
    //% "decrypts"
    {&TokenAbility::decrypts, QT_TRID_NOOP("trivex-app-ability-decrypts")},
};

QString yesOrNo(bool yes)
{
    return yes ? qtTrId("trivex-app-yes") : qtTrId("trivex-app-no");
}

QString spaceText(const TokenFacts &facts)
{
    const Texts texts;
    if (facts.freeSpace >= 0 && facts.totalSpace > 0) {
        //% "%1 free of %2"
        return qtTrId("trivex-app-token-space")
            .arg(texts.size(facts.freeSpace), texts.size(facts.totalSpace));
    }
    if (facts.totalSpace > 0)
        return texts.size(facts.totalSpace);
    //% "%1 free"
    return facts.freeSpace >= 0 ? qtTrId("trivex-app-token-free").arg(texts.size(facts.freeSpace))
                                : QString();
}

void addToken(const TokenStatus &status, DetailGroups *groups)
{
    //% "Token"
    groups->begin(qtTrId("trivex-app-token-group"));
    //% "Name"
    groups->add(qtTrId("trivex-app-token-name"), plainText(status.name));
    if (status.facts.label != status.name) {
        //% "Name on the token"
        groups->add(qtTrId("trivex-app-token-label"), status.facts.label);
    }
    //% "Maker"
    groups->add(qtTrId("trivex-app-token-maker"), status.manufacturer);
    //% "Model"
    groups->add(qtTrId("trivex-app-token-model"), status.model);
    //% "Serial number"
    groups->add(qtTrId("trivex-app-token-serial"), status.serial, DetailGroups::FixedWidth);
    //% "Firmware"
    groups->add(qtTrId("trivex-app-token-firmware"), status.facts.firmware);
    //% "Hardware"
    groups->add(qtTrId("trivex-app-token-hardware"), status.facts.hardware);
}

void addPin(const TokenStatus &status, DetailGroups *groups)
{
    //% "PIN"
    groups->begin(qtTrId("trivex-app-token-pin-group"));
    const bool isGood = status.pinState == PinState::Normal;
    //% "Tries"
    groups->add(qtTrId("trivex-app-token-tries"), TokenFactList::triesText(status),
                DetailGroups::UsualWidth, isGood ? QString() : TokenInfo::pinText(status.pinState));
    //% "Wants a PIN"
    groups->add(qtTrId("trivex-app-token-wants-pin"), yesOrNo(status.facts.needsLogin));
    if (status.hasPinPad) {
        //% "Entered on"
        groups->add(qtTrId("trivex-app-token-pin-where"),
                    //% "the reader's own keys"
                    qtTrId("trivex-app-token-pin-pad"));
    }
    //% "Write-protected"
    groups->add(qtTrId("trivex-app-token-protected"), yesOrNo(status.readOnly));
}

void addContents(const TokenStatus &status, const TokenLook &look, DetailGroups *groups)
{
    //% "On it"
    groups->begin(qtTrId("trivex-app-token-contents"));
    if (status.loading)
        return;
    const auto bare = std::count_if(status.keyFacts.cbegin(), status.keyFacts.cend(),
                                    [](const TokenKeyFacts &key) { return key.isBare(); });
    //% "Certificates"
    groups->add(qtTrId("trivex-app-token-certificates"), QString::number(status.certificates));
    //% "Keys"
    groups->add(qtTrId("trivex-app-token-keys"), QString::number(status.keyFacts.size()),
                DetailGroups::UsualWidth,
                //% "There may be more, which a login shows."
                status.keysHidden ? qtTrId("trivex-app-token-keys-hidden") : QString());
    //% "Keys without certificate"
    groups->add(qtTrId("trivex-app-keys-bare"), QString::number(bare));
    if (look.secretKeys > 0) {
        //% "Secret keys"
        groups->add(qtTrId("trivex-app-token-secrets"), QString::number(look.secretKeys));
    }
    if (look.dataObjects > 0) {
        //% "Other data"
        groups->add(qtTrId("trivex-app-token-data"), QString::number(look.dataObjects));
    }
    //% "Space"
    groups->add(qtTrId("trivex-app-token-space-row"), spaceText(status.facts));
}

void addAbilities(const TokenLook &look, DetailGroups *groups)
{
    //% "What it can do"
    groups->begin(qtTrId("trivex-app-token-abilities"));
    for (const TokenAbility &ability : look.abilities)
        groups->add(TokenFactList::kindText(ability), TokenFactList::abilityText(ability));
    if (look.isTaken && look.abilities.isEmpty()) {
        groups->add(qtTrId("trivex-app-token-keys"),
                    //% "It neither makes keys nor signs."
                    qtTrId("trivex-app-token-no-abilities"));
    }
}

} // namespace

TokenFactList::TokenFactList(QObject *parent)
    : QObject(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, &TokenFactList::follow);
}

QString TokenFactList::storeId() const
{
    return m_storeId;
}

void TokenFactList::setStoreId(const QString &storeId)
{
    if (m_storeId == storeId)
        return;
    m_storeId = storeId;
    m_status = {};
    refresh();
    Q_EMIT storeIdChanged();
}

void TokenFactList::follow(const QString &storeId)
{
    if (storeId == m_storeId)
        refresh();
}

void TokenFactList::refresh()
{
    const bool wasPresent = m_status.present;
    m_status = m_storeId.isEmpty() ? TokenStatus() : TokenMonitor::token(m_storeId);
    m_look = m_storeId.isEmpty() ? TokenLook() : TokenMonitor::look(m_storeId);
    if (m_status.present && !wasPresent)
        TokenMonitor::takeLook(m_storeId);
    Q_EMIT changed();
}

QString TokenFactList::name() const
{
    return plainText(m_status.name);
}

bool TokenFactList::present() const
{
    return m_status.present;
}

bool TokenFactList::keysHidden() const
{
    return m_status.present && m_status.keysHidden;
}

QVariantList TokenFactList::groups() const
{
    DetailGroups groups;
    addToken(m_status, &groups);
    if (m_status.present) {
        addPin(m_status, &groups);
        addContents(m_status, m_look, &groups);
        addAbilities(m_look, &groups);
    }
    return groups.groups();
}

QString TokenFactList::text() const
{
    return CertificateDetails::textOf(groups());
}

QString TokenFactList::triesText(const TokenStatus &status)
{
    switch (status.pinState) {
    case PinState::NotSet:
        //% "no PIN is set"
        return qtTrId("trivex-app-tries-not-set");
    case PinState::Normal:
        //% "no wrong PIN is reported"
        return qtTrId("trivex-app-tries-all");
    case PinState::CountLow:
        //% "fewer than at first"
        return qtTrId("trivex-app-tries-fewer");
    case PinState::FinalTry:
        //% "one"
        return qtTrId("trivex-app-tries-one");
    case PinState::Locked:
        //% "none, the PIN is locked"
        return qtTrId("trivex-app-tries-none");
    }
    return {};
}

QString TokenFactList::kindText(const TokenAbility &ability)
{
    QString kind;
    for (const AbilityName &one : AbilityNames) {
        if (one.kind == ability.kind)
            kind = qtTrId(one.id);
    }
    if (ability.largest <= 0)
        return kind;
    //% "%1, %2 to %3 bits"
    return qtTrId("trivex-app-ability-sizes")
        .arg(kind, QString::number(ability.smallest), QString::number(ability.largest));
}

QString TokenFactList::abilityText(const TokenAbility &ability)
{
    QStringList done;
    for (const DoneText &one : DoneTexts) {
        if (ability.*one.does)
            done << qtTrId(one.id);
    }
    return done.join(QStringLiteral(", "));
}

} // namespace Trivex
