// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/plaintoken.h"

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace TrivexTest {

namespace {

using KeyHandle = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using CertificateHandle = std::unique_ptr<X509, decltype(&X509_free)>;

QByteArray makeCertificate(EVP_PKEY *key, int number)
{
    const CertificateHandle certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), number + 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 86400);
    X509_NAME *name = X509_get_subject_name(certificate.get());
    const QByteArray text = "Certificate " + QByteArray::number(number);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(text.constData()), -1, -1,
                               0);
    X509_set_issuer_name(certificate.get(), name);
    X509_set_pubkey(certificate.get(), key);
    X509_sign(certificate.get(), key, EVP_sha256());
    QByteArray der(i2d_X509(certificate.get(), nullptr), '\0');
    auto *out = reinterpret_cast<unsigned char *>(der.data());
    i2d_X509(certificate.get(), &out);
    return der;
}

} // namespace

QList<QByteArray> plainCertificates(int count, int first)
{
    const KeyHandle key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), &EVP_PKEY_free);
    QList<QByteArray> all;
    for (int i = first; key && i < first + count; ++i)
        all.append(makeCertificate(key.get(), i));
    return all;
}

PlainToken::PlainToken(const QString &library)
    : m_library(library)
{
    const auto list =
        reinterpret_cast<CK_C_GetFunctionList>(m_library.resolve("C_GetFunctionList"));
    if (!list || list(&m_module) != CKR_OK)
        return;
    const CK_RV started = m_module->C_Initialize(nullptr);
    m_isStarter = started == CKR_OK;
    if (!m_isStarter && started != CKR_CRYPTOKI_ALREADY_INITIALIZED)
        return;
    CK_SLOT_ID slots[16];
    CK_ULONG count = 16;
    if (m_module->C_GetSlotList(CK_TRUE, slots, &count) == CKR_OK && count > 0)
        m_module->C_OpenSession(slots[0], CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr, nullptr,
                                &m_session);
}

PlainToken::~PlainToken()
{
    if (m_isStarter)
        m_module->C_Finalize(nullptr);
    else if (isOpen())
        m_module->C_CloseSession(m_session);
}

bool PlainToken::write(const QByteArray &der, int number, bool isHidden)
{
    CK_OBJECT_CLASS objectClass = CKO_CERTIFICATE;
    CK_CERTIFICATE_TYPE type = CKC_X_509;
    CK_BBOOL yes = CK_TRUE;
    CK_BBOOL hides = isHidden ? CK_TRUE : CK_FALSE;
    QByteArray id = QByteArray::number(number);
    QByteArray value = der;
    CK_ATTRIBUTE object[] = {
        {CKA_CLASS, &objectClass, sizeof objectClass},
        {CKA_CERTIFICATE_TYPE, &type, sizeof type},
        {CKA_TOKEN, &yes, sizeof yes},
        {CKA_PRIVATE, &hides, sizeof hides},
        {CKA_ID, id.data(), CK_ULONG(id.size())},
        {CKA_LABEL, id.data(), CK_ULONG(id.size())},
        {CKA_SUBJECT, nullptr, 0},
        {CKA_VALUE, value.data(), CK_ULONG(value.size())},
    };
    CK_OBJECT_HANDLE handle = CK_INVALID_HANDLE;
    return m_module->C_CreateObject(m_session, object, sizeof object / sizeof *object, &handle)
        == CKR_OK;
}

bool PlainToken::logIn(const QByteArray &pin)
{
    QByteArray writable = pin;
    return m_module->C_Login(m_session, CKU_USER,
                             reinterpret_cast<unsigned char *>(writable.data()),
                             CK_ULONG(writable.size()))
        == CKR_OK;
}

bool PlainToken::writeCertificates(const QList<QByteArray> &certificates, const QByteArray &pin)
{
    bool isGood = logIn(pin);
    for (int i = 0; isGood && i < certificates.size(); ++i)
        isGood = write(certificates.at(i), i);
    return isGood;
}

bool PlainToken::writeHiddenCertificate(const QByteArray &der, const QByteArray &pin)
{
    return isOpen() && logIn(pin) && write(der, 0, true);
}

bool PlainToken::writeCertificates(int count, const QByteArray &pin, int first)
{
    const KeyHandle key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), &EVP_PKEY_free);
    bool isGood = key && logIn(pin);
    for (int i = first; isGood && i < first + count; ++i)
        isGood = write(makeCertificate(key.get(), i), i);
    return isGood;
}

bool PlainToken::makeKeys(int count, const QByteArray &label, const QByteArray &pin)
{
    CK_MECHANISM mechanism = {CKM_EC_KEY_PAIR_GEN, nullptr, 0};
    CK_BBOOL yes = CK_TRUE;
    CK_BBOOL no = CK_FALSE;
    QByteArray curve("\x06\x08\x2a\x86\x48\xce\x3d\x03\x01\x07", 10);
    QByteArray name = label;
    QByteArray id("\x42");
    CK_ATTRIBUTE publicHalf[] = {{CKA_TOKEN, &yes, sizeof yes},
                                 {CKA_ID, id.data(), CK_ULONG(id.size())},
                                 {CKA_LABEL, name.data(), CK_ULONG(name.size())},
                                 {CKA_EC_PARAMS, curve.data(), CK_ULONG(curve.size())}};
    CK_ATTRIBUTE privateHalf[] = {{CKA_TOKEN, &yes, sizeof yes},
                                  {CKA_PRIVATE, &yes, sizeof yes},
                                  {CKA_SIGN, &yes, sizeof yes},
                                  {CKA_DECRYPT, &no, sizeof no},
                                  {CKA_ID, id.data(), CK_ULONG(id.size())},
                                  {CKA_LABEL, name.data(), CK_ULONG(name.size())}};
    bool isGood = isOpen() && logIn(pin);
    for (int i = 0; isGood && i < count; ++i) {
        CK_OBJECT_HANDLE halves[2] = {};
        isGood = m_module->C_GenerateKeyPair(m_session, &mechanism, publicHalf, 4, privateHalf, 6,
                                             &halves[0], &halves[1])
            == CKR_OK;
    }
    return isGood;
}

int PlainToken::readCertificates()
{
    CK_OBJECT_CLASS objectClass = CKO_CERTIFICATE;
    CK_ATTRIBUTE wanted = {CKA_CLASS, &objectClass, sizeof objectClass};
    if (!isOpen() || m_module->C_FindObjectsInit(m_session, &wanted, 1) != CKR_OK)
        return -1;
    std::vector<CK_OBJECT_HANDLE> objects(100000);
    CK_ULONG count = 0;
    m_module->C_FindObjects(m_session, objects.data(), CK_ULONG(objects.size()), &count);
    m_module->C_FindObjectsFinal(m_session);
    QByteArray value(16384, '\0');
    QByteArray id(256, '\0');
    QByteArray label(1024, '\0');
    int read = 0;
    std::vector<CertificateHandle> certificates;
    for (size_t i = 0; i < std::min(size_t(count), objects.size()); ++i) {
        CK_ATTRIBUTE attributes[] = {{CKA_VALUE, value.data(), CK_ULONG(value.size())},
                                     {CKA_ID, id.data(), CK_ULONG(id.size())},
                                     {CKA_LABEL, label.data(), CK_ULONG(label.size())}};
        if (m_module->C_GetAttributeValue(m_session, objects[i], attributes, 3) != CKR_OK)
            continue;
        const auto *data = reinterpret_cast<const unsigned char *>(value.constData());
        certificates.emplace_back(
            d2i_X509(nullptr, &data,
                     long(std::min(attributes[0].ulValueLen, CK_ULONG(value.size())))),
            &X509_free);
        read += certificates.back() ? 1 : 0;
    }
    return read;
}

} // namespace TrivexTest
