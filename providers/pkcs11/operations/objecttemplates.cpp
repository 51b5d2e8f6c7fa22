// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/objecttemplates.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/gostkeys.h"
#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/base/secret.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/publickeyfields.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/names.h"

#include <openssl/core_names.h>

namespace Trivex {

using Pkcs11::Error;
using Pkcs11::Template;

namespace {

struct Number {
    CK_ATTRIBUTE_TYPE attribute;
    const char *parameter;
};

constexpr Number RsaPublicNumbers[] = {
    {CKA_MODULUS, OSSL_PKEY_PARAM_RSA_N},
    {CKA_PUBLIC_EXPONENT, OSSL_PKEY_PARAM_RSA_E},
};

constexpr Number RsaPrivateNumbers[] = {
    {CKA_PRIVATE_EXPONENT, OSSL_PKEY_PARAM_RSA_D},
    {CKA_PRIME_1, OSSL_PKEY_PARAM_RSA_FACTOR1},
    {CKA_PRIME_2, OSSL_PKEY_PARAM_RSA_FACTOR2},
    {CKA_EXPONENT_1, OSSL_PKEY_PARAM_RSA_EXPONENT1},
    {CKA_EXPONENT_2, OSSL_PKEY_PARAM_RSA_EXPONENT2},
    {CKA_COEFFICIENT, OSSL_PKEY_PARAM_RSA_COEFFICIENT1},
};

/// Big-endian, wiped with the owner; padded to `size` where that is more.
class NumberBytes {
public:
    NumberBytes(const EVP_PKEY *key, const char *parameter, size_t size = 0)
    {
        BIGNUM *number = nullptr;
        if (EVP_PKEY_get_bn_param(key, parameter, &number) != 1)
            throw Error(TokenError::NotSupported);
        const Handle<BIGNUM, BN_clear_free> owner(number);
        m_bytes = Secret(int(std::max(size, size_t(BN_num_bytes(number)))));
        BN_bn2binpad(number, reinterpret_cast<unsigned char *>(m_bytes.data()), m_bytes.size());
    }

    const void *data() const { return m_bytes.constData(); }
    size_t size() const { return size_t(m_bytes.size()); }

private:
    Secret m_bytes;
};

template <size_t count>
void addNumbers(const EVP_PKEY *key, const Number (&numbers)[count], Template *object)
{
    for (const Number &number : numbers) {
        const NumberBytes bytes(key, number.parameter);
        object->add(number.attribute, bytes.data(), bytes.size());
    }
}

/// The curve's parameters and the point in the key's SubjectPublicKeyInfo, valid as long as `key`.
PublicKeyFields ecFieldsOf(const KeyMaterial &key)
{
    PublicKeyFields fields;
    if (!findPublicKeyFields(Der::sliceOf(key.publicInfo()), &fields))
        throw Error(TokenError::NotSupported);
    return fields;
}

void addRsaPublicKey(const KeyMaterial &key, Template *object)
{
    object->addNumber(CKA_KEY_TYPE, CKK_RSA).addFlag(CKA_ENCRYPT, true);
    addNumbers(key.native(), RsaPublicNumbers, object);
}

void addRsaPrivateKey(const KeyMaterial &key, Template *object)
{
    object->addNumber(CKA_KEY_TYPE, CKK_RSA).addFlag(CKA_DECRYPT, true);
    addNumbers(key.native(), RsaPublicNumbers, object);
    addNumbers(key.native(), RsaPrivateNumbers, object);
}

void addEcPublicKey(const KeyMaterial &key, Template *object)
{
    const PublicKeyFields fields = ecFieldsOf(key);
    object->addNumber(CKA_KEY_TYPE, CKK_EC)
        .add(CKA_EC_PARAMS, fields.parameters.view())
        .add(CKA_EC_POINT, Der::write(Der::OctetString, fields.key().view()));
}

void addEcPrivateKey(const KeyMaterial &key, Template *object)
{
    const NumberBytes value(key.native(), OSSL_PKEY_PARAM_PRIV_KEY, size_t(key.bits() + 7) / 8);
    object->addNumber(CKA_KEY_TYPE, CKK_EC)
        .add(CKA_EC_PARAMS, ecFieldsOf(key).parameters.view())
        .add(CKA_VALUE, value.data(), value.size());
}

struct EdwardsCurve {
    int native; ///< of libcrypto
    const char *oid; ///< RFC 8410, 3
};

constexpr EdwardsCurve EdwardsCurves[] = {
    {EVP_PKEY_ED25519, Oid::Ed25519},
    {EVP_PKEY_ED448, Oid::Ed448},
};

/// Named by its OID, as PKCS#11 3.0, 2.3.5 allows; throws for a key of another kind.
QByteArray edwardsParameters(const KeyMaterial &key)
{
    for (const EdwardsCurve &curve : EdwardsCurves) {
        if (EVP_PKEY_is_a(key.native(), OBJ_nid2sn(curve.native)) == 1)
            return Der::writeOid(curve.oid);
    }
    throw Error(TokenError::NotSupported);
}

void addEdwardsPublicKey(const KeyMaterial &key, Template *object)
{
    object->addNumber(CKA_KEY_TYPE, CKK_EC_EDWARDS)
        .add(CKA_EC_PARAMS, edwardsParameters(key))
        .add(CKA_EC_POINT, Der::write(Der::OctetString, ecFieldsOf(key).key().view()));
}

void addEdwardsPrivateKey(const KeyMaterial &key, Template *object)
{
    const QByteArray parameters = edwardsParameters(key);
    size_t size = 0;
    if (EVP_PKEY_get_raw_private_key(key.native(), nullptr, &size) != 1)
        throw Error(TokenError::NotSupported);
    Secret value{int(size)};
    if (EVP_PKEY_get_raw_private_key(key.native(), reinterpret_cast<unsigned char *>(value.data()),
                                     &size)
        != 1)
        throw Error(TokenError::NotSupported);
    object->addNumber(CKA_KEY_TYPE, CKK_EC_EDWARDS)
        .add(CKA_EC_PARAMS, parameters)
        .add(CKA_VALUE, value.constData(), size);
}

/// The functions that write the numbers of one kind of key.
struct KeyKind {
    int keyType; ///< a value of `Trivex::KeyType`
    bool needsNative; ///< the numbers are read by libcrypto
    void (*addPublic)(const KeyMaterial &, Template *);
    void (*addPrivate)(const KeyMaterial &, Template *);
};

constexpr KeyKind KeyKinds[] = {
    {RsaKey, true, addRsaPublicKey, addRsaPrivateKey},
    {EllipticCurveKey, true, addEcPublicKey, addEcPrivateKey},
    {OtherKey, true, addEdwardsPublicKey, addEdwardsPrivateKey},
    {Gost2001Key, false, addGostPublicKey, addGostPrivateKey},
    {Gost2012Key256, false, addGostPublicKey, addGostPrivateKey},
    {Gost2012Key512, false, addGostPublicKey, addGostPrivateKey},
};

/// The attributes that public keys of all kinds have.
constexpr CK_ATTRIBUTE_TYPE PublicNumbers[] = {
    CKA_MODULUS,
    CKA_PUBLIC_EXPONENT,
    CKA_EC_PARAMS,
    CKA_EC_POINT,
    CKA_PRIME,
    CKA_SUBPRIME,
    CKA_BASE,
    CKA_VALUE,
    CKA_GOSTR3410_PARAMS,
    CKA_GOSTR3411_PARAMS,
};

/// False for an object that shows no number.
bool addShown(const Pkcs11::Session &session, CK_OBJECT_HANDLE object, Template *copy)
{
    bool hasNumber = false;
    for (const CK_ATTRIBUTE_TYPE type : PublicNumbers) {
        Pkcs11::AttributeReader reader({{type, 1024}});
        reader.read(session, object);
        const QByteArray value = reader.value(0);
        if (value.isEmpty())
            continue;
        copy->add(type, value);
        hasNumber = true;
    }
    constexpr CK_ATTRIBUTE_TYPE Uses[] = {CKA_VERIFY, CKA_ENCRYPT, CKA_WRAP, CKA_DERIVE};
    for (const CK_ATTRIBUTE_TYPE type : Uses) {
        Pkcs11::AttributeReader reader({{type, sizeof(CK_BBOOL)}});
        reader.read(session, object);
        if (reader.flag(0, false))
            copy->addFlag(type, true);
    }
    return hasNumber;
}

/// Throws for a kind that is not written.
const KeyKind &kindOf(const KeyMaterial &key)
{
    for (const KeyKind &kind : KeyKinds) {
        if (kind.keyType == key.keyType() && (key.native() || !kind.needsNative))
            return kind;
    }
    throw Error(TokenError::NotSupported);
}

} // namespace

void addNames(const QByteArray &id, const QString &label, Template *object)
{
    object->add(CKA_ID, id);
    if (!label.isEmpty())
        object->add(CKA_LABEL, label.toUtf8());
}

void fillCertificate(const TokenCertificate &certificate, Template *object)
{
    const QByteArray &der = certificate.der;
    object->addNumber(CKA_CLASS, CKO_CERTIFICATE)
        .addNumber(CKA_CERTIFICATE_TYPE, CKC_X_509)
        .addFlag(CKA_TOKEN, true)
        .addFlag(CKA_PRIVATE, false)
        .add(CKA_SUBJECT, certificate.parts.subject.in(der))
        .add(CKA_ISSUER, certificate.parts.issuer.in(der))
        .add(CKA_SERIAL_NUMBER, certificate.parts.serial.in(der))
        .add(CKA_VALUE, der);
    addNames(certificate.id, certificate.label, object);
}

void fillPublicKey(const KeyMaterial &key, const QByteArray &id, const QString &label,
                   Template *object)
{
    const KeyKind &kind = kindOf(key);
    object->addNumber(CKA_CLASS, CKO_PUBLIC_KEY)
        .addFlag(CKA_TOKEN, true)
        .addFlag(CKA_PRIVATE, false)
        .addFlag(CKA_VERIFY, true);
    kind.addPublic(key, object);
    addNames(id, label, object);
}

void fillPrivateKey(const KeyMaterial &key, const QByteArray &subject, const QByteArray &id,
                    const QString &label, Template *object)
{
    const KeyKind &kind = kindOf(key);
    object->addNumber(CKA_CLASS, CKO_PRIVATE_KEY)
        .addFlag(CKA_TOKEN, true)
        .addFlag(CKA_PRIVATE, true)
        .addFlag(CKA_SENSITIVE, true)
        .addFlag(CKA_EXTRACTABLE, false)
        .addFlag(CKA_SIGN, true);
    if (!subject.isEmpty())
        object->add(CKA_SUBJECT, subject);
    kind.addPrivate(key, object);
    addNames(id, label, object);
}

std::unique_ptr<Template> publicKeyCopy(const Pkcs11::Session &session, const TokenKey &key)
{
    if (key.publicObject == CK_INVALID_HANDLE)
        return nullptr;
    try {
        auto copy = std::make_unique<Template>();
        fillPublicKey(KeyMaterial::fromPublicInfo(key.publicInfo), key.id, key.label, copy.get());
        return copy;
    } catch (const Error &) {
        // This provider does not import keys of this kind, but the token may have made it.
    }
    auto copy = std::make_unique<Template>();
    copy->addNumber(CKA_CLASS, CKO_PUBLIC_KEY)
        .addNumber(CKA_KEY_TYPE, key.type)
        .addFlag(CKA_TOKEN, true)
        .addFlag(CKA_PRIVATE, false);
    addNames(key.id, key.label, copy.get());
    if (!addShown(session, key.publicObject, copy.get()))
        throw Error(TokenError::NotSupported);
    return copy;
}

QString commonNameOf(const TokenCertificate &certificate)
{
    QString text;
    const QCA::CertificateInfoOrdered names =
        decodeName(certificate.parts.subject.sliceIn(certificate.der));
    for (const QCA::CertificateInfoPair &pair : names) {
        if (pair.type() == infoType(CommonNameInfo) && !pair.value().isEmpty())
            text = pair.value();
    }
    return text;
}

} // namespace Trivex
