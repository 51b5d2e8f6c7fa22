// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/tokenreader.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/gostkeys.h"
#include "providers/pkcs11/contents/objectsearch.h"
#include "providers/pkcs11/contents/publicinfo.h"
#include "providers/pkcs11/contents/tokentext.h"
#include "qca/asn1/derwriter.h"

namespace Trivex {

namespace {

using Pkcs11::AttributeReader;
using Pkcs11::Session;

std::vector<CK_OBJECT_HANDLE> findCertificates(const Session &session, CertificateChoice choice)
{
    Pkcs11::Template wanted;
    wanted.addNumber(CKA_CLASS, CKO_CERTIFICATE).addFlag(CKA_TOKEN, true);
    if (choice == CertificateChoice::Trusted)
        wanted.addFlag(CKA_TRUSTED, true);
    return Pkcs11::findObjects(session, wanted);
}

/// CKA_EC_POINT is the point in an OCTET STRING (PKCS#11 2.40, 2.3.3); some tokens leave that out.
QByteArray pointIn(const QByteArray &attribute)
{
    Der::Slice content;
    const bool isWrapped = Der::single(Der::sliceOf(attribute), Der::OctetString, &content)
        && !content.isEmpty()
        && Der::write(Der::OctetString, content.bytes()).size() == attribute.size();
    return isWrapped ? content.bytes() : attribute;
}

/// Counts the objects of one search that could be read.
class ReadCount {
public:
    /// Whether `reader` has the object's attributes now.
    bool add(AttributeReader &reader, const Session &session, CK_OBJECT_HANDLE object)
    {
        const bool isThere = reader.readIfThere(session, object);
        m_hasAny = m_hasAny || isThere;
        if (reader.failure() != CKR_OK)
            m_failure = reader.failure();
        return isThere;
    }

    /// False when some were left out. A token of which nothing can be read has a trouble of its
    /// own, which is thrown.
    bool isWhole() const
    {
        if (!m_hasAny)
            Pkcs11::check(m_failure, "C_GetAttributeValue");
        return m_failure == CKR_OK;
    }

private:
    bool m_hasAny = false;
    CK_RV m_failure = CKR_OK;
};

bool isX509(const Session &session, CK_OBJECT_HANDLE object)
{
    AttributeReader reader({{CKA_CERTIFICATE_TYPE, sizeof(CK_CERTIFICATE_TYPE)}});
    return reader.readIfThere(session, object) && reader.number(0, CKC_X_509) == CKC_X_509;
}

/// Room for more than a flag: a full buffer counts as one that the module did not touch, when the
/// object lacks an attribute before this one.
constexpr size_t FlagRoom = 2 * sizeof(CK_BBOOL);
constexpr size_t FirstUse = 4;

struct UseAttribute {
    CK_ATTRIBUTE_TYPE type;
    TokenKeyFacts::Use use;
};

/// In the order in which the reader has them.
constexpr UseAttribute UseAttributes[] = {{CKA_SIGN, TokenKeyFacts::Signs},
                                          {CKA_DECRYPT, TokenKeyFacts::Decrypts},
                                          {CKA_DERIVE, TokenKeyFacts::Derives},
                                          {CKA_UNWRAP, TokenKeyFacts::Unwraps}};

/// The uses are those of a private half.
AttributeReader keyReader(CK_OBJECT_HANDLE TokenKey::*half)
{
    // Exactly: some modules take a larger buffer for bytes in another order.
    const AttributeReader::Attribute type = {CKA_KEY_TYPE, sizeof(CK_KEY_TYPE)};
    if (half == &TokenKey::publicObject)
        return AttributeReader({type, {CKA_ID, 256}, {CKA_LABEL, 1024}, {CKA_LOCAL, FlagRoom}});
    return AttributeReader({type,
                            {CKA_ID, 256},
                            {CKA_LABEL, 1024},
                            {CKA_LOCAL, FlagRoom},
                            {CKA_SIGN, FlagRoom},
                            {CKA_DECRYPT, FlagRoom},
                            {CKA_DERIVE, FlagRoom},
                            {CKA_UNWRAP, FlagRoom},
                            {CKA_EXTRACTABLE, FlagRoom}});
}

TokenKeyFacts::Leave leaveIn(const AttributeReader &reader)
{
    constexpr size_t Extractable = FirstUse + std::size(UseAttributes);
    if (reader.flag(Extractable, false))
        return TokenKeyFacts::Leaves;
    return reader.flag(Extractable, true) ? TokenKeyFacts::LeaveUnknown : TokenKeyFacts::Stays;
}

TokenKeyFacts::Origin originIn(const AttributeReader &reader)
{
    constexpr size_t Local = 3;
    if (reader.flag(Local, false))
        return TokenKeyFacts::MadeHere;
    return reader.flag(Local, true) ? TokenKeyFacts::OriginUnknown : TokenKeyFacts::BroughtHere;
}

/// All but its public half.
TokenKey keyFrom(const AttributeReader &reader, CK_OBJECT_HANDLE object,
                 CK_OBJECT_HANDLE TokenKey::*half)
{
    TokenKey key;
    key.type = reader.number(0, CKK_VENDOR_DEFINED);
    key.id = reader.value(1);
    key.label = tokenText(reader.value(2));
    key.origin = originIn(reader);
    if (half == &TokenKey::privateObject) {
        key.leave = leaveIn(reader);
        for (size_t i = 0; i < std::size(UseAttributes); ++i) {
            if (reader.flag(FirstUse + i, false))
                key.uses |= UseAttributes[i].use;
        }
    }
    key.*half = object;
    return key;
}

/// False when the module can't tell it, so that the key is listed without.
bool addPublicInfo(TokenKey &key, const Session &session, CK_OBJECT_HANDLE object)
{
    for (int i = 0; i < Pkcs11::Readings; ++i) {
        try {
            key.publicInfo = publicInfoOf(session, object, key.type);
            return true;
        } catch (const Pkcs11::Error &error) {
            if (!Pkcs11::isOfOneObject(error.returnValue()))
                throw;
        }
    }
    return false;
}

/// Sets `isWhole` to false when it leaves out anything that is there.
std::vector<TokenKey> readKeys(const Session &session, CK_OBJECT_CLASS objectClass,
                               CK_OBJECT_HANDLE TokenKey::*half, bool *isWhole)
{
    AttributeReader reader = keyReader(half);
    std::vector<TokenKey> keys;
    ReadCount count;
    for (const CK_OBJECT_HANDLE object : Pkcs11::findObjects(session, objectClass)) {
        if (!count.add(reader, session, object))
            continue;
        keys.push_back(keyFrom(reader, object, half));
        *isWhole = addPublicInfo(keys.back(), session, object) && *isWhole;
    }
    *isWhole = count.isWhole() && *isWhole;
    return keys;
}

QByteArray rsaPublicInfoOf(const Session &session, CK_OBJECT_HANDLE object)
{
    AttributeReader reader({{CKA_MODULUS, 1024}, {CKA_PUBLIC_EXPONENT, 64}});
    reader.read(session, object);
    return rsaPublicInfo(reader.value(0), reader.value(1));
}

QByteArray ecPublicInfoOf(const Session &session, CK_OBJECT_HANDLE object)
{
    AttributeReader reader({{CKA_EC_PARAMS, 256}, {CKA_EC_POINT, 256}});
    reader.read(session, object);
    return ecPublicInfo(reader.value(0), pointIn(reader.value(1)));
}

QByteArray edwardsPublicInfoOf(const Session &session, CK_OBJECT_HANDLE object)
{
    AttributeReader reader({{CKA_EC_PARAMS, 256}, {CKA_EC_POINT, 256}});
    reader.read(session, object);
    return edwardsPublicInfo(reader.value(0), reader.value(1));
}

struct PublicInfoReader {
    CK_KEY_TYPE type;
    QByteArray (*read)(const Session &, CK_OBJECT_HANDLE);
};

constexpr PublicInfoReader PublicInfoReaders[] = {
    {CKK_RSA, rsaPublicInfoOf},
    {CKK_EC, ecPublicInfoOf},
    {CKK_EC_EDWARDS, edwardsPublicInfoOf},
    {CKK_GOSTR3410, gostPublicInfoOf},
    {KeyTypeGost512, gostPublicInfoOf},
};

} // namespace

QByteArray publicInfoOf(const Session &session, CK_OBJECT_HANDLE object, CK_KEY_TYPE type)
{
    for (const PublicInfoReader &reader : PublicInfoReaders) {
        if (reader.type == type)
            return reader.read(session, object);
    }
    return {};
}

std::vector<TokenCertificate> readCertificates(const Session &session, CertificateChoice choice,
                                               const DamagedHandler &damaged, bool *isWhole,
                                               const ProgressHandler &progress)
{
    AttributeReader reader({{CKA_VALUE, 16384}, {CKA_ID, 256}, {CKA_LABEL, 1024}});
    std::vector<TokenCertificate> certificates;
    ReadCount count;
    const std::vector<CK_OBJECT_HANDLE> found = findCertificates(session, choice);
    for (const CK_OBJECT_HANDLE object : found) {
        TokenCertificate certificate;
        if (!count.add(reader, session, object)) {
            if (damaged && reader.failure() != CKR_OK)
                damaged(certificate);
            continue;
        }
        certificate.der = reader.value(0);
        certificate.parts = certificateParts(certificate.der);
        certificate.id = reader.value(1);
        certificate.label = tokenText(reader.value(2));
        certificate.objects = {object};
        if (!certificate.parts.isValid()) {
            // A certificate that is stored elsewhere (CKA_URL) has no value, and the value of an
            // attribute certificate has another form.
            const bool hasValue = reader.isTooLarge(0) || !certificate.der.isEmpty();
            if (damaged && hasValue && isX509(session, object))
                damaged(certificate);
            continue;
        }
        certificates.push_back(std::move(certificate));
        if (progress)
            progress(certificates, found.size());
    }
    const bool hasAll = count.isWhole();
    if (isWhole)
        *isWhole = hasAll;
    return certificates;
}

TokenKey readKey(const Session &session, CK_OBJECT_HANDLE object, CK_OBJECT_HANDLE TokenKey::*half)
{
    AttributeReader reader = keyReader(half);
    reader.read(session, object);
    TokenKey key = keyFrom(reader, object, half);
    key.publicInfo = publicInfoOf(session, object, key.type);
    return key;
}

void readKeys(const Session &session, TokenObjects *objects)
{
    objects->keysAreWhole = true;
    bool *isWhole = &objects->keysAreWhole;
    objects->publicKeys = readKeys(session, CKO_PUBLIC_KEY, &TokenKey::publicObject, isWhole);
    objects->privateKeys = readKeys(session, CKO_PRIVATE_KEY, &TokenKey::privateObject, isWhole);
}

} // namespace Trivex
