// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/damagedobjects.h"

#include "qca/base/plaintext.h"

#include <QCryptographicHash>
#include <QSet>

#include <mutex>

namespace Trivex {

namespace {

class WarnedObjects {
public:
    /// True for the first caller with that object.
    bool add(const QByteArray &object)
    {
        const std::lock_guard lock(m_mutex);
        const int before = m_objects.size();
        m_objects.insert(object);
        return m_objects.size() > before;
    }

    static WarnedObjects &instance()
    {
        static auto *warned = new WarnedObjects;
        return *warned;
    }

private:
    std::mutex m_mutex;
    QSet<QByteArray> m_objects;
};

} // namespace

void warnOfDamaged(const QString &storeId, const QString &tokenName,
                   const TokenCertificate &certificate)
{
    QCryptographicHash object(QCryptographicHash::Sha1);
    for (const QByteArray &part :
         {storeId.toUtf8(), certificate.id, certificate.label.toUtf8(), certificate.der}) {
        object.addData(QByteArray::number(part.size()) + ':');
        object.addData(part);
    }
    if (!WarnedObjects::instance().add(object.result()))
        return;
    qWarning(
        "Token \"%s\": the certificate \"%s\" (id %s) is damaged or too large; it is not shown",
        qUtf8Printable(tokenName), qUtf8Printable(plainText(certificate.label)),
        certificate.id.toHex().constData());
}

} // namespace Trivex
