// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A token that answers anything: what is read of it, and what is made of that.
#include "fuzz/scriptedmodule.h"
#include "fuzz/target.h"
#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/tokenidentity.h"
#include "providers/pkcs11/contents/tokenlook.h"
#include "providers/pkcs11/contents/tokenreader.h"

using namespace Trivex;
using Pkcs11::Module;
using Pkcs11::Session;

namespace {

void read(TrivexFuzz::Script *script)
{
    const CK_TOKEN_INFO info = TrivexFuzz::ScriptedModule::tokenInfo();
    const TokenIdentity identity = identityOf(info);
    factsOf(info);
    QVector<TokenAbility> abilities;
    for (int i = script->below(8); i > 0; --i) {
        const CK_MECHANISM_TYPE mechanism = CK_MECHANISM_TYPE(script->number());
        noteAbility(
            mechanism,
            {CK_ULONG(script->number()), CK_ULONG(script->number()), CK_FLAGS(script->number())},
            &abilities);
    }
    Pkcs11::ModuleSource source;
    source.key = QStringLiteral("scripted");
    source.loaded = TrivexFuzz::ScriptedModule::functions();
    const Session session(Module::open(source), 0, Session::ReadOnly);
    TokenObjects objects;
    objects.certificates = readCertificates(
        session, script->flag() ? CertificateChoice::All : CertificateChoice::Trusted);
    readKeys(session, &objects);
    objects.privateKeysHidden = script->flag();
    const TokenContentsPtr contents = assembleContents(objects, identity.storeId);
    for (const TokenEntryPtr &entry : contents->entries)
        TrivexFuzz::check(entry != nullptr, "an entry is there");
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    Script script(input);
    ScriptedModule::follow(&script);
    try {
        read(&script);
    } catch (const Pkcs11::Error &) {
        // What a module refuses ends the reading.
    }
}
