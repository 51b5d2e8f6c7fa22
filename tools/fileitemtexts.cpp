// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/fileitemtexts.h"

#include "qca/base/plaintext.h"
#include "qca/base/providers.h"
#include "qca/describe/keytexts.h"
#include "qca/describe/structure.h"
#include "qca/keys/keys.h"
#include "qca/x509/infotypes.h"
#include "tools/shownvalues.h"

namespace Trivex {

namespace {

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

QCA::CertificateRequest requestOf(const FileItem &item)
{
    return QCA::CertificateRequest::fromDER(item.der, nullptr, opensslProviderName());
}

QCA::CRL listOf(const FileItem &item)
{
    return QCA::CRL::fromDER(item.der, nullptr, opensslProviderName());
}

/// Named, and not looked into.
bool isForeign(const FileItem &item)
{
    return item.kind == FileObject::AttributeCertificate
        || item.kind == FileObject::RevocationAnswer || item.kind == FileObject::EncryptedMessage
        || item.kind == FileObject::SshKey;
}

ShownKind shownKind(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return ShownKind::Certificate;
    case FileObject::Request:
        return ShownKind::Request;
    case FileObject::RevocationList:
        return ShownKind::RevocationList;
    default:
        return ShownKind::PublicKey;
    }
}

} // namespace

QString itemName(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return bestName(item.certificate().subjectInfo());
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
    case FileObject::AttributeCertificate:
        //% "Attribute certificate"
        return qtTrId("trivex-app-item-attributes");
    case FileObject::RevocationAnswer:
        //% "Answer about revocation (OCSP)"
        return qtTrId("trivex-app-item-answer");
    case FileObject::EncryptedMessage:
        //% "Encrypted message"
        return qtTrId("trivex-app-item-encrypted");
    case FileObject::SshKey:
        //% "Private key of SSH"
        return qtTrId("trivex-app-item-ssh-key");
    }
    return {};
}

QString itemDetail(const FileItem &item)
{
    switch (item.kind) {
    case FileObject::Certificate:
        return bestName(item.certificate().issuerInfo());
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
    case FileObject::AttributeCertificate:
    case FileObject::RevocationAnswer:
    case FileObject::EncryptedMessage:
    case FileObject::SshKey:
        //% "Can't be imported"
        return qtTrId("trivex-app-item-foreign");
    }
    return publicKeyText(itemDer(item));
}

QByteArray itemDer(const FileItem &item)
{
    return item.kind == FileObject::PrivateKey ? encodedPublicKey(publicKeyOf(item.key)) : item.der;
}

QDateTime nextUpdateOf(const FileItem &item)
{
    const QCA::CRL list = item.kind == FileObject::RevocationList ? listOf(item) : QCA::CRL();
    return list.isNull() ? QDateTime() : list.nextUpdate();
}

QVariantList itemGroups(const FileItem &item)
{
    const QByteArray der = itemDer(item);
    QVariantList groups;
    const bool isKey = item.kind == FileObject::PrivateKey || item.kind == FileObject::PublicKey;
    if (isKey || isForeign(item)) {
        const QString detail = itemDetail(item);
        if (!detail.isEmpty())
            groups += valueGroup(qtTrId("trivex-app-general"),
                                 {valueRow({}, itemName(item), detail, false)});
    }
    return der.isEmpty() || isForeign(item) ? groups
                                            : groups + valueGroups(describe(shownKind(item), der));
}

QString itemPem(const FileItem &item)
{
    return isForeign(item) ? QString() : pemText(shownKind(item), itemDer(item));
}

QString itemStructure(const FileItem &item)
{
    return structureText(itemDer(item));
}

} // namespace Trivex
