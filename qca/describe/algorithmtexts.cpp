// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/algorithmtexts.h"

#include "qca/asn1/algorithmids.h"
#include "qca/describe/objectnames.h"

#include <algorithm>

namespace Trivex {

namespace {

struct SignatureWords {
    const char *oid;
    const char *key;
    const char *digest; ///< null for keys that digest by themselves
};

constexpr SignatureWords Signatures[] = {
    {Oid::RsaWithMd2, "RSA", "MD2"},
    {Oid::RsaWithMd4, "RSA", "MD4"},
    {Oid::RsaWithMd5, "RSA", "MD5"},
    {Oid::RsaWithSha1, "RSA", "SHA-1"},
    {Oid::RsaWithSha1Old, "RSA", "SHA-1"},
    {Oid::RsaWithRipemd160, "RSA", "RIPEMD-160"},
    {Oid::RsaWithSha256, "RSA", "SHA-256"},
    {Oid::RsaWithSha384, "RSA", "SHA-384"},
    {Oid::RsaWithSha512, "RSA", "SHA-512"},
    {Oid::RsaWithSha224, "RSA", "SHA-224"},
    {Oid::RsaWithSha512Cut224, "RSA", "SHA-512/224"},
    {Oid::RsaWithSha512Cut256, "RSA", "SHA-512/256"},
    {Oid::RsaWithSha3Of224, "RSA", "SHA3-224"},
    {Oid::RsaWithSha3Of256, "RSA", "SHA3-256"},
    {Oid::RsaWithSha3Of384, "RSA", "SHA3-384"},
    {Oid::RsaWithSha3Of512, "RSA", "SHA3-512"},
    {Oid::EcdsaWithSha1, "ECDSA", "SHA-1"},
    {Oid::EcdsaWithSha224, "ECDSA", "SHA-224"},
    {Oid::EcdsaWithSha256, "ECDSA", "SHA-256"},
    {Oid::EcdsaWithSha384, "ECDSA", "SHA-384"},
    {Oid::EcdsaWithSha512, "ECDSA", "SHA-512"},
    {Oid::EcdsaWithSha3Of224, "ECDSA", "SHA3-224"},
    {Oid::EcdsaWithSha3Of256, "ECDSA", "SHA3-256"},
    {Oid::EcdsaWithSha3Of384, "ECDSA", "SHA3-384"},
    {Oid::EcdsaWithSha3Of512, "ECDSA", "SHA3-512"},
    {Oid::DsaWithSha1, "DSA", "SHA-1"},
    {Oid::DsaWithSha224, "DSA", "SHA-224"},
    {Oid::DsaWithSha256, "DSA", "SHA-256"},
    {Oid::DsaWithSha384, "DSA", "SHA-384"},
    {Oid::DsaWithSha512, "DSA", "SHA-512"},
    {Oid::Ed25519, "Ed25519", nullptr},
    {Oid::Ed448, "Ed448", nullptr},
    {Oid::MlDsa44, "ML-DSA-44", nullptr},
    {Oid::MlDsa65, "ML-DSA-65", nullptr},
    {Oid::MlDsa87, "ML-DSA-87", nullptr},
    {Oid::Sm2WithSm3, "SM2", "SM3"},
    {Oid::GostSignature2001, "GOST R 34.10-2001", "GOST R 34.11-94"},
    {Oid::GostSignature94, "GOST R 34.10-94", "GOST R 34.11-94"},
    {Oid::GostSignature256, "GOST R 34.10-2012", "GOST R 34.11-2012 (256 bit)"},
    {Oid::GostSignature512, "GOST R 34.10-2012", "GOST R 34.11-2012 (512 bit)"},
};

struct DigestWord {
    const char *oid;
    const char *name;
};

constexpr DigestWord Digests[] = {
    {Oid::Sha1, "SHA-1"},     {Oid::Sha256, "SHA-256"}, {Oid::Sha384, "SHA-384"},
    {Oid::Sha512, "SHA-512"}, {Oid::Sha224, "SHA-224"},
};

QString withDigest(const QString &key, const QString &digest)
{
    //% "%1 with %2"
    return qtTrId("trivex-app-signature-with").arg(key, digest);
}

/// The digest in RSASSA-PSS-params (RFC 4055, 3.1).
QString pssDigest(Der::Slice parameters)
{
    Der::Slice content;
    Der::Slice wrapped;
    Der::Slice algorithm;
    Der::Slice oid;
    if (!Der::Reader(parameters).next(Der::Sequence, &content)
        || !Der::Reader(content).next(Der::context(0), &wrapped))
        return QStringLiteral("SHA-1");
    if (!Der::single(wrapped, Der::Sequence, &algorithm)
        || !Der::Reader(algorithm).next(Der::ObjectIdentifier, &oid))
        return QStringLiteral("?");
    const QByteArray dotted = Der::oidText(oid);
    const auto *const found =
        std::find_if(std::begin(Digests), std::end(Digests),
                     [&dotted](const DigestWord &one) { return dotted == one.oid; });
    return found == std::end(Digests) ? objectText(oid) : QString::fromLatin1(found->name);
}

} // namespace

QString localizedAlgorithm(const QString &text)
{
    return QString(text)
        //% "GOST R"
        .replace(QStringLiteral("GOST R"), qtTrId("trivex-app-gost"))
        //% "bits"
        .replace(QStringLiteral(" bit)"),
                 QLatin1Char(' ') + qtTrId("trivex-app-bits") + QLatin1Char(')'));
}

QString signatureAlgorithmText(Der::Slice algorithm)
{
    Der::Reader reader(algorithm);
    Der::Slice oid;
    if (!reader.next(Der::ObjectIdentifier, &oid))
        return objectText({});
    const QByteArray dotted = Der::oidText(oid);
    if (dotted == Oid::RsaPss)
        return withDigest(QStringLiteral("RSA-PSS"), pssDigest(reader.rest()));
    const auto *const found =
        std::find_if(std::begin(Signatures), std::end(Signatures),
                     [&dotted](const SignatureWords &one) { return dotted == one.oid; });
    if (found == std::end(Signatures))
        return objectText(oid);
    if (!found->digest)
        return QString::fromLatin1(found->key);
    return localizedAlgorithm(
        withDigest(QString::fromLatin1(found->key), QString::fromLatin1(found->digest)));
}

} // namespace Trivex
