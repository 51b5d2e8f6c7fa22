// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"

#include "qca/adapter/entries.h"

#include <QQmlEngine>

KeyStoreEntry::KeyStoreEntry(QObject *parent)
    : QObject(parent)
    , m_hasEntry(false)
{
}

KeyStoreEntry::KeyStoreEntry(const QCA::KeyStoreEntry &entry, QObject *parent)
    : QObject(parent)
    , m_entry(entry)
    , m_hasEntry(true)
{
}

KeyStoreEntry::~KeyStoreEntry() = default;

QString KeyStoreEntry::name() const
{
    return Trivex::entryName(m_entry);
}

Certificate *KeyStoreEntry::certificate() const
{
    if (!m_certificate && m_hasEntry)
        m_certificate = makeCertificate(m_entry);
    // It has no parent, so QML would take it for its own where a call returns it.
    if (m_certificate)
        QQmlEngine::setObjectOwnership(m_certificate.get(), QQmlEngine::CppOwnership);
    return m_certificate.get();
}

void KeyStoreEntry::setCertificate(std::shared_ptr<Certificate> certificate)
{
    if (!m_certificate)
        m_certificate = std::move(certificate);
}

std::unique_ptr<Certificate> KeyStoreEntry::makeCertificate(const QCA::KeyStoreEntry &entry)
{
    switch (Trivex::entryType(entry)) {
    case QCA::KeyStoreEntry::TypeCertificate:
        return std::make_unique<Certificate>(Trivex::entryCertificate(entry));
    case QCA::KeyStoreEntry::TypeKeyBundle: {
        const QCA::KeyBundle bundle = Trivex::entryKeyBundle(entry);
        const QCA::CertificateChain chain = bundle.certificateChain();
        if (!chain.isEmpty())
            return std::make_unique<Certificate>(chain.first(), bundle);
        break;
    }
    default:
        break;
    }
    return std::make_unique<Certificate>();
}
