// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/importdesk.h"

namespace {

/// The stores of the application and the user are written elsewhere.
bool isLocationId(const QString &id)
{
    return id != QLatin1String("APP") && id != QLatin1String("USER")
        && id != QLatin1String("USERAPP");
}

} // namespace

bool ImportDesk::load(const std::optional<Trivex::LoadedBundle> &read)
{
    if (!read || read->bundle.isNull()) {
        m_failure = read ? std::make_optional(read->result) : std::nullopt;
        return false;
    }
    const QCA::CertificateChain chain = read->bundle.certificateChain();
    m_loaded.setCertificate(chain.isEmpty() ? QCA::Certificate() : chain.first());
    m_loaded.setKeyBundle(read->bundle);
    return true;
}

void ImportDesk::resetBundle()
{
    reset();
    m_loaded.setKeyBundle(QCA::KeyBundle());
}

bool ImportDesk::addLocation(const QCA::KeyStore &keyStore, int kind, const QString &name)
{
    if (!keyStore.isValid())
        return false; // it went while its arrival was on its way; it has no properties to ask for
    if (keyStore.name().isEmpty() || keyStore.type() == QCA::KeyStore::System
        || m_locations.containsType(keyStore.name()) || !isLocationId(keyStore.id()))
        return false;
    m_locations.addRow(kind, name, keyStore.name());
    return true;
}
