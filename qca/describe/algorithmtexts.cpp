// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/algorithmtexts.h"

#include "qca/describe/objectnames.h"

#include <algorithm>

namespace Trivex {

namespace {

struct SignatureWords {
    const char *oid;
    const char *key;
    const char *digest; ///< null for keys that digest by themselves
};

constexpr char RsaPss[] = "1.2.840.113549.1.1.10";

constexpr SignatureWords Signatures[] = {
    {"1.2.840.113549.1.1.2", "RSA", "MD2"},
    {"1.2.840.113549.1.1.3", "RSA", "MD4"},
    {"1.2.840.113549.1.1.4", "RSA", "MD5"},
    {"1.2.840.113549.1.1.5", "RSA", "SHA-1"},
    {"1.3.14.3.2.29", "RSA", "SHA-1"},
    {"1.3.36.3.3.1.2", "RSA", "RIPEMD-160"},
    {"1.2.840.113549.1.1.11", "RSA", "SHA-256"},
    {"1.2.840.113549.1.1.12", "RSA", "SHA-384"},
    {"1.2.840.113549.1.1.13", "RSA", "SHA-512"},
    {"1.2.840.113549.1.1.14", "RSA", "SHA-224"},
    {"1.2.840.113549.1.1.15", "RSA", "SHA-512/224"},
    {"1.2.840.113549.1.1.16", "RSA", "SHA-512/256"},
    {"2.16.840.1.101.3.4.3.13", "RSA", "SHA3-224"},
    {"2.16.840.1.101.3.4.3.14", "RSA", "SHA3-256"},
    {"2.16.840.1.101.3.4.3.15", "RSA", "SHA3-384"},
    {"2.16.840.1.101.3.4.3.16", "RSA", "SHA3-512"},
    {"1.2.840.10045.4.1", "ECDSA", "SHA-1"},
    {"1.2.840.10045.4.3.1", "ECDSA", "SHA-224"},
    {"1.2.840.10045.4.3.2", "ECDSA", "SHA-256"},
    {"1.2.840.10045.4.3.3", "ECDSA", "SHA-384"},
    {"1.2.840.10045.4.3.4", "ECDSA", "SHA-512"},
    {"2.16.840.1.101.3.4.3.9", "ECDSA", "SHA3-224"},
    {"2.16.840.1.101.3.4.3.10", "ECDSA", "SHA3-256"},
    {"2.16.840.1.101.3.4.3.11", "ECDSA", "SHA3-384"},
    {"2.16.840.1.101.3.4.3.12", "ECDSA", "SHA3-512"},
    {"1.2.840.10040.4.3", "DSA", "SHA-1"},
    {"2.16.840.1.101.3.4.3.1", "DSA", "SHA-224"},
    {"2.16.840.1.101.3.4.3.2", "DSA", "SHA-256"},
    {"2.16.840.1.101.3.4.3.3", "DSA", "SHA-384"},
    {"2.16.840.1.101.3.4.3.4", "DSA", "SHA-512"},
    {"1.3.101.112", "Ed25519", nullptr},
    {"1.3.101.113", "Ed448", nullptr},
    {"2.16.840.1.101.3.4.3.17", "ML-DSA-44", nullptr},
    {"2.16.840.1.101.3.4.3.18", "ML-DSA-65", nullptr},
    {"2.16.840.1.101.3.4.3.19", "ML-DSA-87", nullptr},
    {"1.2.156.10197.1.501", "SM2", "SM3"},
    {"1.2.643.2.2.3", "GOST R 34.10-2001", "GOST R 34.11-94"},
    {"1.2.643.2.2.4", "GOST R 34.10-94", "GOST R 34.11-94"},
    {"1.2.643.7.1.1.3.2", "GOST R 34.10-2012", "GOST R 34.11-2012 (256 bit)"},
    {"1.2.643.7.1.1.3.3", "GOST R 34.10-2012", "GOST R 34.11-2012 (512 bit)"},
};

struct DigestWord {
    const char *oid;
    const char *name;
};

constexpr DigestWord Digests[] = {
    {"1.3.14.3.2.26", "SHA-1"},
    {"2.16.840.1.101.3.4.2.1", "SHA-256"},
    {"2.16.840.1.101.3.4.2.2", "SHA-384"},
    {"2.16.840.1.101.3.4.2.3", "SHA-512"},
    {"2.16.840.1.101.3.4.2.4", "SHA-224"},
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
    if (dotted == RsaPss)
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
