// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/bundlebuilder.h"

#include "tests/x509/builtcertificate.h"

#include <openssl/ec.h>

using namespace Trivex;

namespace TrivexTest {

namespace {

const unsigned char *octets(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

void setName(X509_NAME *name, const QByteArray &text)
{
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, octets(text), text.size(), -1, 0);
}

} // namespace

PKeyHandle newKey()
{
    return PKeyHandle(EVP_EC_gen("P-256"));
}

X509Handle issued(const QByteArray &subject, EVP_PKEY *key, const QByteArray &issuer,
                  EVP_PKEY *issuerKey, int serial)
{
    X509Handle made(X509_new());
    X509_set_version(made.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), serial);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), 86400);
    setName(X509_get_subject_name(made.get()), subject);
    setName(X509_get_issuer_name(made.get()), issuer);
    X509_set_pubkey(made.get(), key);
    X509_sign(made.get(), issuerKey, EVP_sha256());
    return made;
}

BundleBuilder::~BundleBuilder()
{
    sk_PKCS12_SAFEBAG_pop_free(m_bags, PKCS12_SAFEBAG_free);
}

PKCS12_SAFEBAG *BundleBuilder::last() const
{
    return sk_PKCS12_SAFEBAG_value(m_bags, sk_PKCS12_SAFEBAG_num(m_bags) - 1);
}

BundleBuilder &BundleBuilder::key(EVP_PKEY *key, const char *secret)
{
    PKCS12_add_key(&m_bags, key, 0, 1, secret ? NID_aes_256_cbc : -1, secret);
    return *this;
}

BundleBuilder &BundleBuilder::keyInfo(const QByteArray &privateInfo)
{
    const unsigned char *start = octets(privateInfo);
    sk_PKCS12_SAFEBAG_push(
        m_bags,
        PKCS12_SAFEBAG_create0_p8inf(d2i_PKCS8_PRIV_KEY_INFO(nullptr, &start, privateInfo.size())));
    return *this;
}

BundleBuilder &BundleBuilder::certificate(X509 *certificate)
{
    PKCS12_add_cert(&m_bags, certificate);
    return *this;
}

BundleBuilder &BundleBuilder::identified(const QByteArray &localId)
{
    QByteArray id = localId;
    if (!id.isEmpty())
        PKCS12_add_localkeyid(last(), reinterpret_cast<unsigned char *>(id.data()), id.size());
    return *this;
}

BundleBuilder &BundleBuilder::named(const QByteArray &utf16)
{
    PKCS12_add_friendlyname_uni(last(), octets(utf16), utf16.size());
    return *this;
}

BundleBuilder &BundleBuilder::nested()
{
    unsigned char *data = nullptr;
    const int size = ASN1_item_i2d(reinterpret_cast<ASN1_VALUE *>(m_bags), &data,
                                   ASN1_ITEM_rptr(PKCS12_SAFEBAGS));
    const QByteArray inside(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    const QByteArray bag =
        derElement(0x30, oidElement(hex("2a864886f70d010c0a0106")) + derElement(0xa0, inside));
    sk_PKCS12_SAFEBAG_pop_free(m_bags, PKCS12_SAFEBAG_free);
    m_bags = sk_PKCS12_SAFEBAG_new_null();
    const unsigned char *start = octets(bag);
    sk_PKCS12_SAFEBAG_push(m_bags, d2i_PKCS12_SAFEBAG(nullptr, &start, bag.size()));
    return *this;
}

QByteArray BundleBuilder::sealed(const char *secret, bool isChecked, const QList<QByteArray> &safes)
{
    STACK_OF(PKCS7) *all = nullptr;
    PKCS12_add_safe(&all, m_bags, -1, 1, nullptr);
    for (const QByteArray &safe : safes) {
        const unsigned char *start = octets(safe);
        sk_PKCS7_push(all, d2i_PKCS7(nullptr, &start, safe.size()));
    }
    const Pkcs12Handle bundle(PKCS12_add_safes(all, 0));
    sk_PKCS7_pop_free(all, PKCS7_free);
    if (isChecked)
        PKCS12_set_mac(bundle.get(), secret, -1, nullptr, 0, 1, EVP_sha256());
    unsigned char *data = nullptr;
    const int size = i2d_PKCS12(bundle.get(), &data);
    const QByteArray der(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    return der;
}

} // namespace TrivexTest
