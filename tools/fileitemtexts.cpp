// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/fileitemtexts.h"

#include "qca/base/infotypes.h"
#include "qca/base/plaintext.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/x509/printedform.h"
#include "tools/checkdigits.h"
#include "tools/validity.h"

#include <QCryptographicHash>

#include <algorithm>

namespace Trivex {

namespace {

/// An attribute of a name (RFC 4519, and the Russian identifiers) with its word.
struct AttributeText {
    const char *oid;
    const char *id;
};

constexpr AttributeText Attributes[] = {
    //% "Name"
    {"2.5.4.3", QT_TRID_NOOP("trivex-app-attribute-name")},
    //% "Surname"
    {"2.5.4.4", QT_TRID_NOOP("trivex-app-attribute-surname")},
    //% "Given name"
    {"2.5.4.42", QT_TRID_NOOP("trivex-app-attribute-given-name")},
    {"2.5.4.10", "trivex-app-field-organization"},
    {"2.5.4.11", "trivex-app-field-department"},
    //% "Position"
    {"2.5.4.12", QT_TRID_NOOP("trivex-app-attribute-title")},
    {"2.5.4.6", "trivex-app-field-country"},
    {"2.5.4.8", "trivex-app-field-state"},
    {"2.5.4.7", "trivex-app-field-locality"},
    //% "Street"
    {"2.5.4.9", QT_TRID_NOOP("trivex-app-attribute-street")},
    {"1.2.840.113549.1.9.1", "trivex-app-field-email"},
    {"1.2.643.3.131.1.1", "trivex-app-field-inn"},
    {"1.2.643.100.3", "trivex-app-field-snils"},
    //% "OGRN"
    {"1.2.643.100.1", QT_TRID_NOOP("trivex-app-attribute-ogrn")},
    //% "OGRNIP"
    {"1.2.643.100.5", QT_TRID_NOOP("trivex-app-attribute-ogrnip")},
    //% "INN of the organization"
    {"1.2.643.100.4", QT_TRID_NOOP("trivex-app-attribute-innle")},
};

QString attributeName(const QString &oid)
{
    const auto *found =
        std::find_if(std::begin(Attributes), std::end(Attributes),
                     [&oid](const AttributeText &one) { return oid == QLatin1String(one.oid); });
    return found == std::end(Attributes) ? oid : qtTrId(found->id);
}

/// A group of rows that leaves out those without a value.
class Group {
public:
    explicit Group(const QString &title)
        : m_title(title)
    {
    }
    Group &add(const QString &label, const QString &value, bool isFixed = false)
    {
        if (!value.isEmpty())
            m_rows += QVariantMap{{QStringLiteral("label"), label},
                                  {QStringLiteral("value"), value},
                                  {QStringLiteral("fixed"), isFixed},
                                  {QStringLiteral("flag"), QString()}};
        return *this;
    }
    void addTo(QVariantList *groups) const
    {
        if (!m_rows.isEmpty())
            *groups +=
                QVariantMap{{QStringLiteral("title"), m_title}, {QStringLiteral("rows"), m_rows}};
    }

private:
    QString m_title;
    QVariantList m_rows;
};

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(':').toUpper());
}

QString fingerprint(const QByteArray &der, QCryptographicHash::Algorithm algorithm)
{
    return hex(QCryptographicHash::hash(der, algorithm));
}

Group nameGroup(const QString &title, const QCA::CertificateInfoOrdered &name)
{
    Group group(title);
    for (const QCA::CertificateInfoPair &pair : name)
        group.add(attributeName(pair.type().id()), plainText(pair.value()));
    return group;
}

/// The first value of a name that tells whose it is.
QString bestName(const QCA::CertificateInfo &info)
{
    for (const int type : {CommonNameInfo, OrganizationInfo, OrganizationalUnitInfo, EmailInfo}) {
        const QString text = plainText(infoValue(info, type)).trimmed();
        if (!text.isEmpty())
            return text;
    }
    //% "Without a name"
    return qtTrId("trivex-app-item-unnamed");
}

QString publicKeyText(const QCA::PublicKey &key)
{
    return key.isNull() ? QString() : keyText(keyTypeName(keyType(key)), key.bitSize());
}

QCA::CertificateRequest requestOf(const FileItem &item)
{
    return QCA::CertificateRequest::fromDER(item.der, nullptr, opensslProviderName());
}

QCA::CRL listOf(const FileItem &item)
{
    return QCA::CRL::fromDER(item.der, nullptr, opensslProviderName());
}

QCA::PublicKey publicKeyOf(const FileItem &item)
{
    return item.kind == FileObject::PrivateKey
        ? Trivex::publicKeyOf(item.key)
        : QCA::PublicKey::fromDER(item.der, nullptr, opensslProviderName());
}

void addFingerprints(const QByteArray &der, QVariantList *groups)
{
    //% "Fingerprints"
    Group(qtTrId("trivex-app-fingerprints"))
        .add(QStringLiteral("SHA-256"), fingerprint(der, QCryptographicHash::Sha256), true)
        .add(QStringLiteral("SHA-1"), fingerprint(der, QCryptographicHash::Sha1), true)
        .addTo(groups);
}

void addPrinted(Printable kind, const QByteArray &der, QVariantList *groups)
{
    //% "Everything in it"
    Group(qtTrId("trivex-app-everything"))
        .add(QString(), printedForm(kind, der), true)
        .addTo(groups);
}

QVariantList certificateGroups(const FileItem &item)
{
    const QCA::Certificate &certificate = item.certificate;
    const Validity validity;
    QVariantList groups;
    //% "Holder"
    nameGroup(qtTrId("trivex-app-holder"), certificate.subjectInfoOrdered()).addTo(&groups);
    //% "Issuer"
    nameGroup(qtTrId("trivex-app-issuer"), certificate.issuerInfoOrdered()).addTo(&groups);
    Group(qtTrId("trivex-app-general"))
        //% "Valid from"
        .add(qtTrId("trivex-app-valid-from"), validity.dateTime(certificate.notValidBefore()))
        //% "Valid until"
        .add(qtTrId("trivex-app-valid-until"), validity.dateTime(certificate.notValidAfter()))
        //% "Serial number"
        .add(qtTrId("trivex-app-serial"), hex(certificate.serialNumber().toArray().toByteArray()),
             true)
        .add(qtTrId("trivex-app-item-public-key"), publicKeyText(certificate.subjectPublicKey()))
        .addTo(&groups);
    addFingerprints(item.der, &groups);
    addPrinted(Printable::Certificate, item.der, &groups);
    return groups;
}

QVariantList requestGroups(const FileItem &item)
{
    QVariantList groups;
    const QCA::CertificateRequest request = requestOf(item);
    if (!request.isNull()) {
        nameGroup(qtTrId("trivex-app-holder"), request.subjectInfoOrdered()).addTo(&groups);
        Group(qtTrId("trivex-app-general"))
            .add(qtTrId("trivex-app-item-public-key"), publicKeyText(request.subjectPublicKey()))
            .addTo(&groups);
    }
    addFingerprints(item.der, &groups);
    addPrinted(Printable::Request, item.der, &groups);
    return groups;
}

QVariantList listGroups(const FileItem &item)
{
    QVariantList groups;
    const QCA::CRL list = listOf(item);
    const Validity validity;
    if (!list.isNull()) {
        nameGroup(qtTrId("trivex-app-issuer"), list.issuerInfoOrdered()).addTo(&groups);
        Group(qtTrId("trivex-app-general"))
            //% "Issued on"
            .add(qtTrId("trivex-app-list-made"), validity.dateTime(list.thisUpdate()))
            //% "Next update by"
            .add(qtTrId("trivex-app-list-next"), validity.dateTime(list.nextUpdate()))
            //% "Revoked certificates"
            .add(qtTrId("trivex-app-list-count"), QString::number(list.revoked().size()))
            .addTo(&groups);
    }
    addFingerprints(item.der, &groups);
    addPrinted(Printable::RevocationList, item.der, &groups);
    return groups;
}

QVariantList keyGroups(const FileItem &item)
{
    QVariantList groups;
    const QCA::PublicKey key = publicKeyOf(item);
    Group(qtTrId("trivex-app-general")).add(itemName(item), itemDetail(item)).addTo(&groups);
    const QByteArray der = encodedPublicKey(key);
    if (!der.isEmpty()) {
        addFingerprints(der, &groups);
        addPrinted(Printable::PublicKey, der, &groups);
    }
    return groups;
}

} // namespace

QString keyText(const QString &kind, int bits)
{
    if (kind.isEmpty() || bits <= 0)
        return kind;
    //% "%1, %n bits"
    return qtTrId("trivex-app-key-kind", bits).arg(kind);
}

QString itemName(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return bestName(item.certificate.subjectInfo());
    case FileObject::Request: {
        const QCA::CertificateRequest request = requestOf(item);
        return bestName(request.isNull() ? QCA::CertificateInfo() : request.subjectInfo());
    }
    case FileObject::RevocationList: {
        const QCA::CRL list = listOf(item);
        return bestName(list.isNull() ? QCA::CertificateInfo() : list.issuerInfo());
    }
    case FileObject::PrivateKey:
        //% "Private key"
        return qtTrId("trivex-app-item-private-key");
    case FileObject::PublicKey:
        //% "Public key"
        return qtTrId("trivex-app-item-public-key");
    }
    return {};
}

QString itemDetail(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return bestName(item.certificate.issuerInfo());
    case FileObject::Request:
        //% "Certificate request"
        return qtTrId("trivex-app-item-request");
    case FileObject::RevocationList:
        //% "List of revoked certificates"
        return qtTrId("trivex-app-item-list");
    case FileObject::PrivateKey:
        if (item.key.isNull()) {
            //% "Protected by a password"
            return qtTrId("trivex-app-item-protected");
        }
        break;
    case FileObject::PublicKey:
        break;
    }
    return publicKeyText(publicKeyOf(item));
}

QVariantList itemGroups(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return certificateGroups(item);
    case FileObject::Request:
        return requestGroups(item);
    case FileObject::RevocationList:
        return listGroups(item);
    default:
        return keyGroups(item);
    }
}

} // namespace Trivex
