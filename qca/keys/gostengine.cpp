// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/gostengine.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/oidoctets.h"

#include <QtGlobal>

// Engines are the only way to GOST that distributions ship; the interface is deprecated.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/engine.h>
#include <openssl/err.h>

namespace Trivex {

namespace {

bool load()
{
    // Lets tests run without an engine.
    if (qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"))
        return false;
    ENGINE_load_dynamic();
    ENGINE *engine = ENGINE_by_id("gost");
    const bool loaded = engine && ENGINE_init(engine)
        && ENGINE_set_default(engine,
                              ENGINE_METHOD_PKEY_METHS | ENGINE_METHOD_PKEY_ASN1_METHS
                                  | ENGINE_METHOD_DIGESTS | ENGINE_METHOD_CIPHERS);
    // The functional reference is kept for the life of the process.
    ENGINE_free(engine);
    ERR_clear_error();
    return loaded;
}

} // namespace

bool loadGostEngine()
{
    static const bool loaded = load();
    return loaded;
}

bool mayMentionGost(const QByteArray &der)
{
    static constexpr Der::OidOctets Russia(Oid::RussianArc);
    return der.contains(Russia.view());
}

} // namespace Trivex
