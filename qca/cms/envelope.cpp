// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/envelope.h"

#include "qca/asn1/nativecoding.h"
#include "qca/cms/signercheck.h"

#include <openssl/cms.h>

namespace Trivex {

namespace {

CmsHandle readMessage(const QByteArray &message)
{
    CmsHandle native = decodeNative<CmsHandle>(Der::sliceOf(message), d2i_CMS_ContentInfo);
    const int type = native ? OBJ_obj2nid(CMS_get0_type(native.get())) : NID_undef;
    if (type != NID_pkcs7_enveloped && type != NID_id_smime_ct_authEnvelopedData)
        native.reset();
    return native;
}

} // namespace

QByteArray encryptedFor(const QList<QByteArray> &recipients, const QByteArray &document)
{
    const CertificateStack stack(sk_X509_new_null());
    for (const QByteArray &der : recipients) {
        X509Handle certificate = decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509);
        if (!stack || !certificate || sk_X509_push(stack.get(), certificate.get()) <= 0)
            return {};
        static_cast<void>(certificate.release());
    }
    const BioHandle input(BIO_new_mem_buf(document.constData(), document.size()));
    if (recipients.isEmpty() || !input)
        return {};
    const CmsHandle message(CMS_encrypt(stack.get(), input.get(), EVP_aes_256_cbc(), CMS_BINARY));
    return encodeNative(message.get(), i2d_CMS_ContentInfo);
}

bool isEncryptedMessage(const QByteArray &message)
{
    return readMessage(message) != nullptr;
}

std::optional<QByteArray> decryptedBy(EVP_PKEY *key, const QByteArray &certificate,
                                      const QByteArray &message)
{
    const CmsHandle native = readMessage(message);
    const X509Handle recipient = decodeNative<X509Handle>(Der::sliceOf(certificate), d2i_X509);
    const BioHandle output(BIO_new(BIO_s_mem()));
    const bool isDone = key && native && recipient && output
        && CMS_decrypt(native.get(), key, recipient.get(), nullptr, output.get(), CMS_BINARY) == 1;
    ERR_clear_error();
    if (!isDone)
        return {};
    char *data = nullptr;
    const long size = BIO_get_mem_data(output.get(), &data);
    return QByteArray(data, int(size));
}

} // namespace Trivex
