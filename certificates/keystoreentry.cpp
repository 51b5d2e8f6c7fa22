// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"

#include "certificates/certificate.h"
#include "qca/adapter/entries.h"

#include <QQmlEngine>

KeyStoreEntry::KeyStoreEntry(QObject *parent)
    : QObject(parent)
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

Certificate *KeyStoreEntry::certificate()
{
    if (m_hasEntry && !m_certificate) {
        m_certificate.reset(makeCertificate());
        QQmlEngine::setObjectOwnership(m_certificate.get(), QQmlEngine::CppOwnership);
    }
    return m_certificate.get();
}

Certificate *KeyStoreEntry::makeCertificate() const
{
    switch (Trivex::entryType(m_entry)) {
    case QCA::KeyStoreEntry::TypeCertificate:
        return new Certificate(Trivex::entryCertificate(m_entry));
    case QCA::KeyStoreEntry::TypeKeyBundle: {
        const QCA::KeyBundle bundle = Trivex::entryKeyBundle(m_entry);
        const QCA::CertificateChain chain = bundle.certificateChain();
        return chain.isEmpty() ? new Certificate : new Certificate(chain.first(), bundle);
    }
    default:
        return new Certificate;
    }
}
