// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keybundlefile.h"

#include "qca/adapter/bundleopening.h"
#include "qca/base/processend.h"
#include "qca/base/providers.h"
#include "qca/pkcs12/pkcs12context.h"

#include <QPointer>

namespace Trivex {

namespace {

/// Nobody notices that a thread stands still for as long; common bundles take a few milliseconds.
constexpr std::chrono::milliseconds UnnoticedPause{40};

QCA::KeyBundle made(const Bundle &read, QCA::Provider *provider)
{
    QList<QCA::CertContext *> certificates;
    QCA::PKeyContext *key = nullptr;
    makeContexts(read, provider, &certificates, &key);
    QCA::CertificateChain chain;
    for (QCA::CertContext *context : qAsConst(certificates)) {
        QCA::Certificate certificate;
        certificate.change(context);
        chain.append(certificate);
    }
    QCA::PrivateKey privateKey;
    privateKey.change(key);
    if (chain.isEmpty())
        return {};
    QCA::KeyBundle bundle;
    bundle.setName(read.name);
    bundle.setCertificateChainAndKey(chain, privateKey);
    return bundle;
}

/// QCA's objects are made by those who asked: the thread that opens may outlive QCA.
LoadedBundle loaded(const BundleOpening &opening)
{
    LoadedBundle loaded;
    loaded.result = opening.result();
    if (loaded.result == QCA::ErrorFile)
        return loaded;
    QCA::Provider *provider = QCA::findProvider(opensslProviderName());
    if (!provider || !provider->features().contains(QStringLiteral("pkcs12")))
        loaded.result = QCA::ErrorDecode;
    if (loaded.result != QCA::ConvertGood)
        return loaded;
    loaded.bundle = made(opening.bundle(), provider);
    if (loaded.bundle.isNull())
        loaded.result = QCA::ErrorDecode;
    return loaded;
}

} // namespace

void openKeyBundle(const QString &path, const QCA::SecureArray &password, QObject *context,
                   const std::function<void(const LoadedBundle &)> &then)
{
    const auto opening = std::make_shared<BundleOpening>(path, Secret(password));
    // The connection keeps the opening, and the opening the connection, until it is used.
    const auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(
        &opening->waiter(), &Waiter::resolved, context,
        [opening, connection, then] {
            QObject::disconnect(*connection);
            then(loaded(*opening));
        },
        Qt::QueuedConnection);
    opening->start();
}

std::optional<LoadedBundle> readKeyBundle(const QString &path, const QCA::SecureArray &password)
{
    const auto opening = std::make_shared<BundleOpening>(path, Secret(password));
    opening->start();
    if (!opening->waiter().settles(UnnoticedPause) && !ProcessEnd::hasBegun())
        opening->waiter().wait();
    if (!opening->waiter().isResolved())
        return std::nullopt;
    return loaded(*opening);
}

} // namespace Trivex
