// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/userentrycontext.h"

#include "qca/base/threadrecord.h"
#include "qca/x509/makecertificate.h"

#include <QStringList>
#include <QUrl>

namespace Trivex {

namespace {

// Version of the format, then id, name and DER, in forms that don't hold the separator.
const QLatin1String Tag("trivex-user-1");
constexpr QLatin1Char Separator(':');

QString escaped(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString unescaped(const QString &text)
{
    return QUrl::fromPercentEncoding(text.toLatin1());
}

} // namespace

UserEntryContext::UserEntryContext(QCA::Provider *provider, const StoredCertificate &entry)
    : QCA::KeyStoreEntryContext(provider)
    , m_entry(entry)
{
    shareThreadRecord(this);
}

QCA::Provider::Context *UserEntryContext::clone() const
{
    return new UserEntryContext(provider(), m_entry);
}

QCA::Certificate UserEntryContext::certificate() const
{
    return makeCertificate(m_entry.der);
}

QString UserEntryContext::serialize() const
{
    const QStringList parts = {
        Tag, escaped(m_entry.id), escaped(m_entry.name),
        QString::fromLatin1(m_entry.der.toBase64(QByteArray::Base64UrlEncoding))};
    return parts.join(Separator);
}

UserEntryContext *UserEntryContext::deserialize(const QString &text, QCA::Provider *provider)
{
    const QStringList parts = text.split(Separator);
    if (parts.size() != 4 || parts.first() != Tag)
        return nullptr;
    const QCA::Certificate certificate = makeCertificate(
        QByteArray::fromBase64(parts.at(3).toLatin1(), QByteArray::Base64UrlEncoding));
    if (certificate.isNull())
        return nullptr;
    return new UserEntryContext(
        provider, {unescaped(parts.at(1)), unescaped(parts.at(2)), certificate.toDER()});
}

} // namespace Trivex
