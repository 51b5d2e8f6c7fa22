// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keyoperation.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/digests.h"
#include "qca/keys/signaturenumbers.h"

#include <openssl/err.h>

#include <array>

namespace Trivex {

namespace {

struct AlgorithmDigest {
    int algorithm;
    const char *digest;
};

constexpr std::array<AlgorithmDigest, 14> Digests = {{
    {QCA::EMSA1_SHA1, Sha1Digest.name},
    {QCA::EMSA3_SHA1, Sha1Digest.name},
    {QCA::EMSA3_MD5, "MD5"},
    {QCA::EMSA3_MD2, "MD2"},
    {QCA::EMSA3_RIPEMD160, "RIPEMD160"},
    {QCA::EMSA3_SHA224, "SHA224"},
    {QCA::EMSA3_SHA256, Sha256Digest.name},
    {QCA::EMSA3_SHA384, Sha384Digest.name},
    {QCA::EMSA3_SHA512, Sha512Digest.name},
    {EcdsaSha256Signature, Sha256Digest.name},
    {EcdsaSha384Signature, Sha384Digest.name},
    {Gost2001Signature, Gost94Digest.name},
    {Gost2012Signature256, Streebog256Digest.name},
    {Gost2012Signature512, Streebog512Digest.name},
}};

} // namespace

QByteArray digestOf(int algorithm)
{
    for (const AlgorithmDigest &entry : Digests) {
        if (entry.algorithm == algorithm)
            return QByteArray(entry.digest);
    }
    return {};
}

QByteArray digestInfo(const QByteArray &digestName, const QByteArray &digest)
{
    const int nid = OBJ_txt2nid(digestName.constData());
    const DigestInfoHandle info(X509_SIG_new());
    if (nid == NID_undef || !info)
        return {};
    X509_ALGOR *algorithm = nullptr;
    ASN1_OCTET_STRING *value = nullptr;
    X509_SIG_getm(info.get(), &algorithm, &value);
    X509_ALGOR_set0(algorithm, OBJ_nid2obj(nid), V_ASN1_NULL, nullptr);
    ASN1_OCTET_STRING_set(value, reinterpret_cast<const unsigned char *>(digest.constData()),
                          digest.size());
    return encodeNative(info.get(), i2d_X509_SIG);
}

QByteArray digestOfMessage(const QByteArray &digestName, const QByteArray &message)
{
    KeyOperation operation;
    QByteArray digest;
    operation.start(KeyOperation::Signing, digestName, QCA::DefaultFormat);
    operation.update(QCA::MemoryRegion(message));
    return !digestName.isEmpty() && operation.finish(KeyOperation::Signing, &digest) ? digest
                                                                                     : QByteArray();
}

KeyOperation::KeyOperation(const KeyOperation &other)
    : m_mode(other.m_mode)
    , m_failed(other.m_failed)
    , m_format(other.m_format)
    , m_digestName(other.m_digestName)
    , m_collected(other.m_collected)
{
    if (!other.m_digest)
        return;
    m_digest.reset(EVP_MD_CTX_new());
    if (!m_digest || EVP_MD_CTX_copy_ex(m_digest.get(), other.m_digest.get()) != 1)
        m_failed = true;
}

void KeyOperation::start(Mode mode, const QByteArray &digestName, QCA::SignatureFormat format)
{
    m_mode = mode;
    m_failed = false;
    m_format = format;
    m_digestName = digestName;
    m_collected.clear();
    m_digest.reset();
    if (digestName.isEmpty())
        return;
    const EVP_MD *digest = EVP_get_digestbyname(digestName.constData());
    m_digest.reset(EVP_MD_CTX_new());
    m_failed = !digest || !m_digest || EVP_DigestInit_ex(m_digest.get(), digest, nullptr) != 1;
    ERR_clear_error();
}

void KeyOperation::fail()
{
    m_failed = true;
    m_collected.clear();
    m_digest.reset();
}

void KeyOperation::update(const QCA::MemoryRegion &data)
{
    if (m_mode == Idle || m_failed)
        return;
    if (!m_digest)
        m_collected.append(data.constData(), data.size());
    else if (EVP_DigestUpdate(m_digest.get(), data.constData(), size_t(data.size())) != 1)
        m_failed = true;
}

bool KeyOperation::finish(Mode mode, QByteArray *data)
{
    bool good = m_mode == mode && !m_failed;
    if (good && m_digest) {
        unsigned int size = 0;
        data->resize(EVP_MAX_MD_SIZE);
        good = EVP_DigestFinal_ex(m_digest.get(), reinterpret_cast<unsigned char *>(data->data()),
                                  &size)
            == 1;
        data->resize(good ? int(size) : 0);
    } else if (good) {
        *data = m_collected;
    }
    m_mode = Idle;
    m_collected.clear();
    m_digest.reset();
    return good;
}

} // namespace Trivex
