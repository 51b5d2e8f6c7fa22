// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "benchmarks/plaintoken.h"

#include <QFile>

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr CK_ULONG SearchBatch = 512;
constexpr int ValueBuffer = 16 * 1024;

CK_ATTRIBUTE attribute(CK_ATTRIBUTE_TYPE type, const void *data, size_t size)
{
    return {type, const_cast<void *>(data), CK_ULONG(size)};
}

CK_ATTRIBUTE attribute(CK_ATTRIBUTE_TYPE type, const QByteArray &bytes)
{
    return attribute(type, bytes.constData(), size_t(bytes.size()));
}

struct RsaNumber {
    CK_ATTRIBUTE_TYPE type;
    const char *parameter;
};

constexpr std::array<RsaNumber, 8> RsaNumbers = {{
    {CKA_MODULUS, OSSL_PKEY_PARAM_RSA_N},
    {CKA_PUBLIC_EXPONENT, OSSL_PKEY_PARAM_RSA_E},
    {CKA_PRIVATE_EXPONENT, OSSL_PKEY_PARAM_RSA_D},
    {CKA_PRIME_1, OSSL_PKEY_PARAM_RSA_FACTOR1},
    {CKA_PRIME_2, OSSL_PKEY_PARAM_RSA_FACTOR2},
    {CKA_EXPONENT_1, OSSL_PKEY_PARAM_RSA_EXPONENT1},
    {CKA_EXPONENT_2, OSSL_PKEY_PARAM_RSA_EXPONENT2},
    {CKA_COEFFICIENT, OSSL_PKEY_PARAM_RSA_COEFFICIENT1},
}};
/// The numbers of the public half come first.
constexpr size_t PublicNumbers = 2;

QByteArray numberOf(const EVP_PKEY *key, const char *parameter)
{
    BIGNUM *number = nullptr;
    if (EVP_PKEY_get_bn_param(key, parameter, &number) != 1)
        return {};
    QByteArray bytes(BN_num_bytes(number), 0);
    BN_bn2bin(number, reinterpret_cast<unsigned char *>(bytes.data()));
    BN_clear_free(number);
    return bytes;
}

void parse(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    X509 *certificate = d2i_X509(nullptr, &data, der.size());
    if (!certificate)
        return;
    std::array<char, 256> text{};
    X509_NAME_get_text_by_NID(X509_get_subject_name(certificate), NID_commonName, text.data(),
                              int(text.size()));
    X509_NAME_get_text_by_NID(X509_get_issuer_name(certificate), NID_commonName, text.data(),
                              int(text.size()));
    X509_free(certificate);
}

} // namespace

void PlainToken::check(CK_RV result, const char *call)
{
    if (result == CKR_OK)
        return;
    std::fprintf(stderr, "%s failed: 0x%lx\n", call, result);
    std::exit(2);
}

PlainToken::PlainToken(const QString &library, const QString &label)
    : m_library(dlopen(QFile::encodeName(library).constData(), RTLD_NOW | RTLD_LOCAL))
{
    check(m_library ? CKR_OK : CKR_GENERAL_ERROR, "dlopen");
    const auto getList =
        reinterpret_cast<CK_C_GetFunctionList>(dlsym(m_library, "C_GetFunctionList"));
    check(getList ? getList(&m_calls) : CKR_GENERAL_ERROR, "C_GetFunctionList");
    check(m_calls->C_Initialize(nullptr), "C_Initialize");
    check(openSession(label) ? CKR_OK : CKR_TOKEN_NOT_PRESENT, "the token");
}

PlainToken::~PlainToken()
{
    m_calls->C_Finalize(nullptr);
    dlclose(m_library);
}

bool PlainToken::openSession(const QString &label)
{
    std::array<CK_SLOT_ID, 64> slots{};
    CK_ULONG count = slots.size();
    check(m_calls->C_GetSlotList(CK_TRUE, slots.data(), &count), "C_GetSlotList");
    for (CK_ULONG i = 0; i < count; ++i) {
        CK_TOKEN_INFO info;
        check(m_calls->C_GetTokenInfo(slots[i], &info), "C_GetTokenInfo");
        const auto *text = reinterpret_cast<const char *>(info.label);
        if (QString::fromUtf8(text, sizeof info.label).trimmed() != label)
            continue;
        check(m_calls->C_OpenSession(slots[i], CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr,
                                     nullptr, &m_session),
              "C_OpenSession");
        return true;
    }
    return false;
}

void PlainToken::login(const QByteArray &pin)
{
    QByteArray copy = pin;
    check(m_calls->C_Login(m_session, CKU_USER, reinterpret_cast<CK_UTF8CHAR *>(copy.data()),
                           CK_ULONG(copy.size())),
          "C_Login");
}

int PlainToken::readCertificates()
{
    const CK_OBJECT_CLASS kind = CKO_CERTIFICATE;
    CK_ATTRIBUTE pattern = attribute(CKA_CLASS, &kind, sizeof kind);
    check(m_calls->C_FindObjectsInit(m_session, &pattern, 1), "C_FindObjectsInit");
    QVector<CK_OBJECT_HANDLE> handles;
    std::array<CK_OBJECT_HANDLE, SearchBatch> batch{};
    CK_ULONG found = 0;
    do {
        check(m_calls->C_FindObjects(m_session, batch.data(), SearchBatch, &found),
              "C_FindObjects");
        for (CK_ULONG i = 0; i < std::min(found, SearchBatch); ++i)
            handles.append(batch[i]);
    } while (found > 0);
    check(m_calls->C_FindObjectsFinal(m_session), "C_FindObjectsFinal");

    QByteArray value(ValueBuffer, 0);
    std::array<char, 256> id{};
    std::array<char, 256> label{};
    for (const CK_OBJECT_HANDLE handle : qAsConst(handles)) {
        std::array<CK_ATTRIBUTE, 3> wanted = {attribute(CKA_VALUE, value),
                                              attribute(CKA_ID, id.data(), id.size()),
                                              attribute(CKA_LABEL, label.data(), label.size())};
        check(m_calls->C_GetAttributeValue(m_session, handle, wanted.data(), wanted.size()),
              "C_GetAttributeValue");
        parse(QByteArray(value.constData(),
                         int(std::min(wanted[0].ulValueLen, CK_ULONG(value.size())))));
    }
    return handles.size();
}

CK_OBJECT_HANDLE PlainToken::writeCertificate(const QByteArray &der, const QByteArray &id)
{
    const CK_OBJECT_CLASS kind = CKO_CERTIFICATE;
    const CK_CERTIFICATE_TYPE type = CKC_X_509;
    const CK_BBOOL yes = CK_TRUE;
    const CK_BBOOL no = CK_FALSE;
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    X509 *certificate = d2i_X509(nullptr, &data, der.size());
    unsigned char *subject = nullptr;
    const int length = i2d_X509_NAME(X509_get_subject_name(certificate), &subject);
    std::array<CK_ATTRIBUTE, 8> object = {attribute(CKA_CLASS, &kind, sizeof kind),
                                          attribute(CKA_CERTIFICATE_TYPE, &type, sizeof type),
                                          attribute(CKA_TOKEN, &yes, sizeof yes),
                                          attribute(CKA_PRIVATE, &no, sizeof no),
                                          attribute(CKA_SUBJECT, subject, size_t(length)),
                                          attribute(CKA_ID, id),
                                          attribute(CKA_LABEL, id),
                                          attribute(CKA_VALUE, der)};
    CK_OBJECT_HANDLE handle = 0;
    check(m_calls->C_CreateObject(m_session, object.data(), object.size(), &handle),
          "C_CreateObject");
    OPENSSL_free(subject);
    X509_free(certificate);
    return handle;
}

CK_OBJECT_HANDLE PlainToken::create(QVector<CK_ATTRIBUTE> object)
{
    CK_OBJECT_HANDLE handle = 0;
    check(m_calls->C_CreateObject(m_session, object.data(), CK_ULONG(object.size()), &handle),
          "C_CreateObject");
    return handle;
}

PlainToken::Pair PlainToken::writeRsaPair(const void *nativeKey, const QByteArray &id)
{
    const auto *key = static_cast<const EVP_PKEY *>(nativeKey);
    const CK_OBJECT_CLASS privateClass = CKO_PRIVATE_KEY;
    const CK_OBJECT_CLASS publicClass = CKO_PUBLIC_KEY;
    const CK_KEY_TYPE type = CKK_RSA;
    const CK_BBOOL yes = CK_TRUE;
    const CK_BBOOL no = CK_FALSE;
    const QVector<CK_ATTRIBUTE> common = {attribute(CKA_KEY_TYPE, &type, sizeof type),
                                          attribute(CKA_TOKEN, &yes, sizeof yes),
                                          attribute(CKA_ID, id), attribute(CKA_LABEL, id)};
    std::array<QByteArray, RsaNumbers.size()> numbers;
    QVector<CK_ATTRIBUTE> privateKey = {attribute(CKA_CLASS, &privateClass, sizeof privateClass),
                                        attribute(CKA_PRIVATE, &yes, sizeof yes),
                                        attribute(CKA_SENSITIVE, &yes, sizeof yes),
                                        attribute(CKA_EXTRACTABLE, &no, sizeof no),
                                        attribute(CKA_SIGN, &yes, sizeof yes),
                                        attribute(CKA_DECRYPT, &yes, sizeof yes)};
    QVector<CK_ATTRIBUTE> publicKey = {attribute(CKA_CLASS, &publicClass, sizeof publicClass),
                                       attribute(CKA_PRIVATE, &no, sizeof no),
                                       attribute(CKA_VERIFY, &yes, sizeof yes),
                                       attribute(CKA_ENCRYPT, &yes, sizeof yes)};
    for (size_t i = 0; i < RsaNumbers.size(); ++i) {
        numbers[i] = numberOf(key, RsaNumbers[i].parameter);
        privateKey.append(attribute(RsaNumbers[i].type, numbers[i]));
        if (i < PublicNumbers)
            publicKey.append(attribute(RsaNumbers[i].type, numbers[i]));
    }
    Pair pair;
    pair.privateKey = create(privateKey + common);
    pair.publicKey = create(publicKey + common);
    return pair;
}

CK_ULONG PlainToken::count(CK_OBJECT_CLASS objectClass, CK_ATTRIBUTE_TYPE type,
                           const QByteArray &value)
{
    std::array<CK_ATTRIBUTE, 2> wanted = {attribute(CKA_CLASS, &objectClass, sizeof objectClass),
                                          attribute(type, value)};
    check(m_calls->C_FindObjectsInit(m_session, wanted.data(), wanted.size()), "C_FindObjectsInit");
    std::array<CK_OBJECT_HANDLE, SearchBatch> handles{};
    CK_ULONG found = 0;
    check(m_calls->C_FindObjects(m_session, handles.data(), SearchBatch, &found), "C_FindObjects");
    check(m_calls->C_FindObjectsFinal(m_session), "C_FindObjectsFinal");
    return found;
}

PlainToken::Pair PlainToken::generate(int bits, const QByteArray &id)
{
    const bool isEc = bits == 384;
    CK_MECHANISM mechanism = {
        CK_MECHANISM_TYPE(isEc ? CKM_EC_KEY_PAIR_GEN : CKM_RSA_PKCS_KEY_PAIR_GEN), nullptr, 0};
    const CK_BBOOL yes = CK_TRUE;
    const CK_BBOOL no = CK_FALSE;
    const CK_ULONG modulusBits = CK_ULONG(bits);
    const QByteArray exponent("\x03", 1);
    const QByteArray curve = QByteArray::fromHex("06052b81040022"); // secp384r1 (SEC 2)
    QVector<CK_ATTRIBUTE> publicKey = {
        attribute(CKA_TOKEN, &yes, sizeof yes), attribute(CKA_PRIVATE, &no, sizeof no),
        attribute(CKA_VERIFY, &yes, sizeof yes), attribute(CKA_ID, id), attribute(CKA_LABEL, id)};
    if (isEc)
        publicKey.append(attribute(CKA_EC_PARAMS, curve));
    else
        publicKey += {attribute(CKA_MODULUS_BITS, &modulusBits, sizeof modulusBits),
                      attribute(CKA_PUBLIC_EXPONENT, exponent)};
    std::array<CK_ATTRIBUTE, 7> privateKey = {attribute(CKA_TOKEN, &yes, sizeof yes),
                                              attribute(CKA_PRIVATE, &yes, sizeof yes),
                                              attribute(CKA_SENSITIVE, &yes, sizeof yes),
                                              attribute(CKA_EXTRACTABLE, &no, sizeof no),
                                              attribute(CKA_SIGN, &yes, sizeof yes),
                                              attribute(CKA_ID, id),
                                              attribute(CKA_LABEL, id)};
    Pair pair;
    check(m_calls->C_GenerateKeyPair(m_session, &mechanism, publicKey.data(),
                                     CK_ULONG(publicKey.size()), privateKey.data(),
                                     privateKey.size(), &pair.publicKey, &pair.privateKey),
          "C_GenerateKeyPair");
    return pair;
}

QByteArray PlainToken::sign(CK_OBJECT_HANDLE key, CK_MECHANISM_TYPE mechanism,
                            const QByteArray &data)
{
    CK_MECHANISM how = {mechanism, nullptr, 0};
    check(m_calls->C_SignInit(m_session, &how, key), "C_SignInit");
    QByteArray copy = data;
    QByteArray signature(1024, 0);
    CK_ULONG length = CK_ULONG(signature.size());
    check(m_calls->C_Sign(m_session, reinterpret_cast<CK_BYTE *>(copy.data()),
                          CK_ULONG(copy.size()), reinterpret_cast<CK_BYTE *>(signature.data()),
                          &length),
          "C_Sign");
    signature.truncate(int(std::min(length, CK_ULONG(signature.size()))));
    return signature;
}

void PlainToken::destroy(CK_OBJECT_HANDLE object)
{
    check(m_calls->C_DestroyObject(m_session, object), "C_DestroyObject");
}

void PlainToken::destroy(const Pair &pair)
{
    destroy(pair.publicKey);
    destroy(pair.privateKey);
}
