// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keybundlefile.h"

#include <QFile>

#include <openssl/err.h>
#include <openssl/pkcs12.h>

#include <memory>

namespace Trivex {

namespace {

bool needsPassword(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    const std::unique_ptr<PKCS12, decltype(&PKCS12_free)> bundle(
        d2i_PKCS12(nullptr, &data, der.size()), &PKCS12_free);
    // A bundle without a MAC has nothing to check a password against; the provider decides then.
    const bool needs = bundle && PKCS12_mac_present(bundle.get())
        && PKCS12_verify_mac(bundle.get(), "", 0) != 1
        && PKCS12_verify_mac(bundle.get(), nullptr, 0) != 1;
    ERR_clear_error();
    return needs;
}

} // namespace

QCA::KeyBundle readKeyBundle(const QString &path, const QCA::SecureArray &password,
                             QCA::ConvertResult *result, const QString &provider)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *result = QCA::ErrorFile;
        return {};
    }
    if (!QCA::isSupported("pkcs12", provider)) {
        *result = QCA::ErrorDecode;
        return {};
    }
    if (password.isEmpty() && needsPassword(file.readAll())) {
        *result = QCA::ErrorPassphrase;
        return {};
    }
    *result = QCA::ErrorDecode;
    return QCA::KeyBundle::fromFile(path, password, result, provider);
}

} // namespace Trivex
