// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/description.h"

#include "qca/asn1/handles.h"
#include "qca/describe/groups.h"
#include "qca/describe/keytexts.h"
#include "qca/describe/words.h"
#include "qca/keys/publickeyfields.h"

namespace Trivex {

namespace {

// By libcrypto: lists of some megabytes are looked at in the window's thread, and it is the quicker
// one by far.
ShownRow fingerprintRow(const QString &label, const EVP_MD *digest, const QByteArray &der)
{
    unsigned char bytes[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    if (EVP_Digest(der.constData(), size_t(der.size()), bytes, &size, digest, nullptr) != 1)
        size = 0;
    return {{}, label, bytesText({reinterpret_cast<const char *>(bytes), int(size)}), true};
}

void addFingerprints(const QByteArray &der, Groups *groups)
{
    //% "Fingerprints"
    groups->add(ShownTopic::Fingerprints, qtTrId("trivex-app-fingerprints"),
                {fingerprintRow(QStringLiteral("SHA-256"), EVP_sha256(), der),
                 fingerprintRow(QStringLiteral("SHA-1"), EVP_sha1(), der)});
}

bool addKey(Der::Slice der, Groups *groups)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(der, &fields))
        return false;
    addPublicKey(der, groups);
    return true;
}

bool addKind(ShownKind kind, Der::Slice der, Groups *groups)
{
    switch (kind) {
    case ShownKind::Certificate:
        return addCertificate(der, groups);
    case ShownKind::Request:
        return addRequest(der, groups);
    case ShownKind::RevocationList:
        return addRevocationList(der, groups);
    case ShownKind::PublicKey:
        return addKey(der, groups);
    }
    return false;
}

} // namespace

QVector<ShownGroup> describe(ShownKind kind, const QByteArray &der)
{
    Groups groups;
    if (!addKind(kind, Der::sliceOf(der), &groups)) {
        groups.add(ShownTopic::General, qtTrId("trivex-app-general"),
                   {{{}, qtTrId("trivex-app-damaged-part"), damagedText(Der::sliceOf(der)), true}});
    }
    addFingerprints(der, &groups);
    QVector<ShownGroup> all = groups.all();
    // The bits of a signature are what people look for last.
    const int count = all.size();
    if (count > 1 && all.at(count - 2).topic == ShownTopic::Signature)
        all.swapItemsAt(count - 2, count - 1);
    return all;
}

} // namespace Trivex
