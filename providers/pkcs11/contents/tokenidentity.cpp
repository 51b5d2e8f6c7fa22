// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokenidentity.h"

#include "providers/pkcs11/contents/tokentext.h"

#include <p11-kit/uri.h>

#include <cstdlib>
#include <memory>

namespace Trivex {

namespace {

struct FreeUri {
    void operator()(P11KitUri *uri) const noexcept { p11_kit_uri_free(uri); }
};

struct FreeText {
    void operator()(char *text) const noexcept { std::free(text); }
};

QString uriOf(const CK_TOKEN_INFO &info)
{
    const std::unique_ptr<P11KitUri, FreeUri> uri(p11_kit_uri_new());
    *p11_kit_uri_get_token_info(uri.get()) = info;
    char *formatted = nullptr;
    if (p11_kit_uri_format(uri.get(), P11_KIT_URI_FOR_TOKEN, &formatted) != P11_KIT_URI_OK)
        return {};
    const std::unique_ptr<char, FreeText> owner(formatted);
    return QString::fromLatin1(formatted);
}

} // namespace

TokenIdentity identityOf(const CK_TOKEN_INFO &info)
{
    const QString uri = uriOf(info);
    return {uri,
            uri,
            paddedText(info.label),
            paddedText(info.manufacturerID),
            paddedText(info.model),
            paddedText(info.serialNumber)};
}

QString storeIdInSlot(const QString &uri, CK_SLOT_ID slot)
{
    // RFC 7512, 2.3: an attribute of the path.
    return QStringLiteral("%1;slot-id=%2").arg(uri, QString::number(slot));
}

} // namespace Trivex
