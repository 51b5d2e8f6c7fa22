// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/barekeyfixture.h"

#include "tests/pkcs11/storechange.h"

#include <atomic>

namespace TrivexTest {

using Trivex::StoreChange;
using Trivex::TokenKeyFacts;

BareKeyFixture::BareKeyFixture(const QString &storeName)
    : FailureFixture(storeName)
{
}

bool BareKeyFixture::makeBareToken()
{
    if (!makeToken() || !addSigner())
        return false;
    const TestToken &token = m_token->token();
    const QString id = QStringLiteral("02");
    return token.generateKeyPair(QStringLiteral("rsa:2048"), id, QStringLiteral("bare"))
        && token.generateKeyPair(QStringLiteral("EC:secp384r1"), id, QStringLiteral("twin"));
}

bool BareKeyFixture::startBare()
{
    if (!start(1))
        return false;
    m_storeId = m_store->id();
    return true;
}

void BareKeyFixture::resetToken()
{
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    m_prompt->resetCount();
    m_errors.clear();
}

QVector<TokenKeyFacts> BareKeyFixture::bareKeys() const
{
    QVector<TokenKeyFacts> bare;
    const QVector<TokenKeyFacts> all = status().keyFacts;
    for (const TokenKeyFacts &key : all) {
        if (key.isBare())
            bare.append(key);
    }
    return bare;
}

TokenKeyFacts BareKeyFixture::bareKey(const char *label) const
{
    const QVector<TokenKeyFacts> all = bareKeys();
    for (const TokenKeyFacts &key : all) {
        if (key.label == QLatin1String(label))
            return key;
    }
    return {};
}

bool BareKeyFixture::change(StoreChange::Kind kind, const QString &keyId)
{
    return changeStore(m_storeId, kind, keyId, 20000);
}

int BareKeyFixture::halves(const char *label) const
{
    const QByteArray all = m_token->token().tool({QStringLiteral("--list-objects")});
    return all.count(QByteArray("label:      ") + label + '\n');
}

bool BareKeyFixture::removeByOthers(const char *type, const QString &id)
{
    return m_token->token().removeObject(QString::fromLatin1(type), id);
}

} // namespace TrivexTest
