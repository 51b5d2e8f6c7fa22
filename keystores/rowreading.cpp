// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/rowreading.h"

#include "certificates/certificate.h"
#include "qca/adapter/entries.h"
#include "qca/keys/keys.h"

namespace {

QString firstOf(const QString &one, const QString &other)
{
    return one.isEmpty() ? other : one;
}

} // namespace

KeyStoreItem::Facts readFacts(const KeyStoreItem &item, const Certificate &certificate)
{
    KeyStoreItem::Facts facts;
    facts.isRead = true;
    const QString name = firstOf(certificate.commonName(), certificate.subjectOrganizationalUnit());
    // Mostly the store has the same string, which then is kept once.
    facts.name = item.facts.name == name ? item.facts.name : name;
    facts.issuer = firstOf(certificate.issuer(), certificate.subjectOrganization());
    // A bundle without a certificate has its key all the same.
    const QCA::KeyBundle bundle =
        certificate.isNull() ? Trivex::entryKeyBundle(item.entry) : certificate.keyBundle();
    facts.origin.hasPrivateKey = !bundle.isNull() && Trivex::isPrivateKey(bundle.privateKey());
    facts.origin.isRoot = !facts.origin.hasPrivateKey && certificate.isRoot();
    return facts;
}

QString shownName(const KeyStoreItem::Facts &facts)
{
    return facts.name.isEmpty() ? qtTrId("trivex-se-unnamed") : facts.name;
}

QString shownIssuer(const KeyStoreItem::Facts &facts)
{
    return facts.issuer.isEmpty() ? qtTrId("trivex-se-unknown_organization") : facts.issuer;
}
