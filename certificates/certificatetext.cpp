// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatetext.h"

#include <QCoreApplication>
#include <QtGlobal>

#include <openssl/x509.h>

#include <array>
#include <memory>

namespace Trivex {

namespace {

constexpr int MaxAddressBytes = 1023;

/// Texts by number; "%1" is the translated "with". Null: a text of its own.
constexpr std::array<const char *, 16> SignatureTemplates = {
    nullptr, // unknown
    "SHA1, %1 EMSA1",
    "SHA1, %1 EMSA3",
    "MD5, %1 EMSA3",
    "MD2, %1 EMSA3",
    "RIPEMD160, %1 EMSA3",
    nullptr, // raw
    "SHA224, %1 EMSA3",
    "SHA256, %1 EMSA3",
    "SHA384, %1 EMSA3",
    "SHA512, %1 EMSA3",
    "ECDSA, %1 SHA256",
    "ECDSA, %1 SHA384",
    "GOST R 34.11-94, %1 GOST R 34.10-2001",
    "GOST R 34.10-2012, %1 GOST R 34.11-2012 (256 bit)",
    "GOST R 34.10-2012, %1 GOST R 34.11-2012 (512 bit)",
};
constexpr int RawSignature = 6;

using X509Ptr = std::unique_ptr<X509, decltype(&X509_free)>;

X509Ptr parse(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    return X509Ptr(d2i_X509(nullptr, &data, der.size()), &X509_free);
}

QString signedHex(char byte)
{
    const int value = static_cast<signed char>(byte);
    const QString magnitude = QString::number(qAbs(value), 16);
    return value < 0 ? QLatin1Char('-') + magnitude : magnitude.rightJustified(2, QLatin1Char('0'));
}

QString objectName(const ASN1_OBJECT *object)
{
    const char *name = OBJ_nid2ln(OBJ_obj2nid(object));
    if (OBJ_obj2nid(object) != NID_undef && name)
        return QString::fromUtf8(name);
    std::array<char, 256> oid{};
    OBJ_obj2txt(oid.data(), int(oid.size()), object, 1);
    return QString::fromLatin1(oid.data());
}

} // namespace

QString hexColonText(const QByteArray &bytes, QChar separator)
{
    if (bytes.isEmpty())
        return {};
    const int widthOfTwos = 3 * bytes.size() - 1;
    QString text;
    text.reserve(widthOfTwos + 1);
    for (const char byte : bytes) {
        text += signedHex(byte);
        if (text.size() != widthOfTwos)
            text += separator;
    }
    if (bytes.size() == 1 && text.startsWith(QLatin1Char('0')))
        text.remove(0, 1);
    return text.toUpper();
}

QString signatureAlgorithmText(int number)
{
    if (number == RawSignature)
        return qtTrId("trivex-p-la-without_dest");
    const bool isKnown = number > 0 && number < int(SignatureTemplates.size());
    if (!isKnown)
        return qtTrId("trivex-p-la-unknown_signing_alg");
    return QString::fromLatin1(SignatureTemplates[size_t(number)]).arg(qtTrId("trivex-p-la-with"));
}

QString keyTypeText(int keyType)
{
    // One shared string each: rows are read over and over.
    static const std::array<QString, 4> names = {QStringLiteral("RSA"), QStringLiteral("DSA"),
                                                 QStringLiteral("DH"),
                                                 QStringLiteral("Elliptic Curve")};
    return keyType >= 0 && keyType < int(names.size()) ? names[size_t(keyType)] : QString();
}

QString publicKeyAlgorithmName(const QByteArray &der)
{
    const X509Ptr certificate = parse(der);
    ASN1_OBJECT *algorithm = nullptr;
    if (!certificate
        || X509_PUBKEY_get0_param(&algorithm, nullptr, nullptr, nullptr,
                                  X509_get_X509_PUBKEY(certificate.get()))
            != 1)
        return {};
    if (OBJ_obj2nid(algorithm) == NID_X9_62_id_ecPublicKey)
        return keyTypeText(3);
    return objectName(algorithm);
}

StreetAddress streetAddress(const QByteArray &der)
{
    StreetAddress address;
    const X509Ptr certificate = parse(der);
    const X509_NAME *name = certificate ? X509_get_subject_name(certificate.get()) : nullptr;
    if (!name)
        return address;
    const int position = X509_NAME_get_index_by_NID(name, NID_streetAddress, -1);
    if (position < 0) {
        address.presence = StreetAddress::Absent;
        return address;
    }
    address.presence = StreetAddress::Present;
    const ASN1_STRING *value = X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, position));
    unsigned char *utf8 = nullptr;
    const int length = ASN1_STRING_to_UTF8(&utf8, value);
    if (length >= 0) {
        const auto *text = reinterpret_cast<const char *>(utf8);
        address.text =
            QString::fromUtf8(text, int(qstrnlen(text, uint(qMin(length, MaxAddressBytes)))));
        OPENSSL_free(utf8);
    }
    return address;
}

} // namespace Trivex
