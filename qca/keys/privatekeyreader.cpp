// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/privatekeyreader.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/keys/algorithmerrors.h"
#include "qca/keys/derivationbudget.h"
#include "qca/keys/keybounds.h"
#include "qca/keys/legacylibrary.h"

#include <optional>

#include <openssl/err.h>
#include <openssl/pem.h>

namespace Trivex {

namespace {

constexpr char Begin[] = "-----BEGIN ";
constexpr char End[] = "-----END ";
constexpr char Dashes[] = "-----";
constexpr char PrivateKey[] = "PRIVATE KEY";

struct CipherName {
    QCA::PBEAlgorithm pbe;
    const char *cipher;
};

constexpr CipherName Ciphers[] = {
    {QCA::PBES2_DES_SHA1, "DES-CBC"},        {QCA::PBES2_TripleDES_SHA1, "DES-EDE3-CBC"},
    {QCA::PBES2_AES128_SHA1, "AES-128-CBC"}, {QCA::PBES2_AES192_SHA1, "AES-192-CBC"},
    {QCA::PBES2_AES256_SHA1, "AES-256-CBC"},
};

const EVP_CIPHER *cipherOf(QCA::PBEAlgorithm pbe)
{
    for (const CipherName &entry : Ciphers) {
        if (entry.pbe == pbe)
            return EVP_get_cipherbyname(entry.cipher);
    }
    return nullptr;
}

Der::Slice sliceOf(const QCA::SecureArray &array)
{
    return {array.constData(), array.size()};
}

QCA::ConvertResult readEncrypted(X509_SIG *sig, const QCA::SecureArray &passphrase,
                                 KeyMaterial *material)
{
    const X509_ALGOR *algorithm = nullptr;
    X509_SIG_get0(sig, &algorithm, nullptr);
    if (!DerivationBudget::allows(algorithm))
        return QCA::ErrorDecode;
    ERR_clear_error();
    const Pkcs8Handle info(
        PKCS8_decrypt_ex(sig, passphrase.constData(), passphrase.size(), legacyLibrary(), nullptr));
    if (!info)
        return isAlgorithmAtFault() ? QCA::ErrorDecode : QCA::ErrorPassphrase;
    ERR_clear_error();
    *material =
        KeyMaterial::fromPrivateInfo(encodeNativeSecret(info.get(), i2d_PKCS8_PRIV_KEY_INFO));
    return material->isNull() ? QCA::ErrorDecode : QCA::ConvertGood;
}

struct PassphraseText {
    const QCA::SecureArray &value;
};

int givePassphrase(char *buffer, int size, int, void *text)
{
    const QCA::SecureArray &value = static_cast<PassphraseText *>(text)->value;
    const int count = qMin(size, value.size());
    std::copy(value.constData(), value.constData() + count, buffer);
    return count;
}

// Decrypts the data that the headers of RFC 1421 describe.
QCA::ConvertResult decryptBlock(QByteArray header, QCA::SecureArray *data,
                                const QCA::SecureArray &passphrase)
{
    EVP_CIPHER_INFO info;
    header += '\n';
    if (PEM_get_EVP_CIPHER_INFO(header.data(), &info) != 1)
        return QCA::ErrorDecode;
    if (!info.cipher)
        return QCA::ConvertGood;
    if (passphrase.isEmpty())
        return QCA::ErrorPassphrase;
    PassphraseText text{passphrase};
    long size = data->size();
    if (PEM_do_header(&info, reinterpret_cast<unsigned char *>(data->data()), &size,
                      &givePassphrase, &text)
        != 1)
        return QCA::ErrorPassphrase;
    data->resize(int(size));
    return QCA::ConvertGood;
}

// One block as PEM_read_bio gives it.
struct Block {
    Block() = default;
    Q_DISABLE_COPY(Block)
    ~Block()
    {
        OPENSSL_free(name);
        OPENSSL_free(header);
        OPENSSL_clear_free(data, size_t(size));
    }

    char *name = nullptr;
    char *header = nullptr;
    unsigned char *data = nullptr;
    long size = 0;
};

QCA::ConvertResult readBlock(const Block &block, const QCA::SecureArray &passphrase,
                             KeyMaterial *material)
{
    QCA::SecureArray data(int(block.size));
    std::copy(block.data, block.data + block.size, data.data());
    if (*block.header) {
        const QCA::ConvertResult result = decryptBlock(QByteArray(block.header), &data, passphrase);
        if (result != QCA::ConvertGood)
            return result;
    }
    return readPrivateKey(data, passphrase, material);
}

// The text from the beginning of a block on; nothing when it is no private key's, or has no end.
std::optional<QCA::ConvertResult> readPemBlock(QByteArray *text, const QCA::SecureArray &passphrase,
                                               KeyMaterial *material)
{
    const int label = int(qstrlen(Begin));
    const int labelEnd = text->indexOf(Dashes, label);
    if (labelEnd < 0 || !text->left(labelEnd).endsWith(PrivateKey))
        return std::nullopt;
    if (!text->contains('\n'))
        text->replace('\r', '\n');
    // Text that follows the end in the same line.
    const int end = text->indexOf(Dashes, qMax(labelEnd, text->indexOf(End)) + int(qstrlen(End)));
    const int behind = end + int(qstrlen(Dashes));
    if (end >= 0 && behind < text->size())
        (*text)[behind] = '\n';
    const BioHandle bio(BIO_new_mem_buf(text->constData(), text->size()));
    Block block;
    const bool isRead =
        bio && PEM_read_bio(bio.get(), &block.name, &block.header, &block.data, &block.size) == 1;
    ERR_clear_error();
    if (!isRead)
        return std::nullopt;
    const QCA::ConvertResult result = readBlock(block, passphrase, material);
    ERR_clear_error();
    return result;
}

} // namespace

QCA::ConvertResult readPrivateKey(const QCA::SecureArray &der, const QCA::SecureArray &passphrase,
                                  KeyMaterial *material)
{
    *material = {};
    if (der.size() > MaxFileBytes)
        return QCA::ErrorDecode;
    *material = KeyMaterial::fromPrivateInfo(Secret(der));
    if (!material->isNull())
        return QCA::ConvertGood;
    const auto sig = decodeNative<DigestInfoHandle>(sliceOf(der), d2i_X509_SIG);
    if (sig)
        return readEncrypted(sig.get(), passphrase, material);
    if (!isWithinKeyBounds({der.constData(), der.size()}))
        return QCA::ErrorDecode;
    *material =
        KeyMaterial::fromNative(decodeNative<PKeyHandle>(sliceOf(der), d2i_AutoPrivateKey), true);
    return material->isNull() ? QCA::ErrorDecode : QCA::ConvertGood;
}

QCA::ConvertResult readPrivateKeyPem(const QString &pem, const QCA::SecureArray &passphrase,
                                     KeyMaterial *material)
{
    if (pem.size() > MaxFileBytes)
        return QCA::ErrorDecode;
    QByteArray text = pem.toLatin1();
    std::optional<QCA::ConvertResult> result;
    int position = text.indexOf(Begin);
    while (position >= 0 && !result) {
        const int next = text.indexOf(Begin, position + 1);
        // A block ends before the next one begins.
        QByteArray block = text.mid(position, next < 0 ? -1 : next - position);
        result = readPemBlock(&block, passphrase, material);
        block.fill(0);
        position = next;
    }
    text.fill(0);
    return result.value_or(QCA::ErrorDecode);
}

QCA::SecureArray encryptPrivateKey(const QCA::SecureArray &pkcs8,
                                   const QCA::SecureArray &passphrase, QCA::PBEAlgorithm pbe)
{
    const EVP_CIPHER *cipher = cipherOf(pbe);
    const auto info = decodeNative<Pkcs8Handle>(sliceOf(pkcs8), d2i_PKCS8_PRIV_KEY_INFO);
    if (!cipher || !info)
        return {};
    const DigestInfoHandle sig(PKCS8_encrypt(-1, cipher, passphrase.constData(), passphrase.size(),
                                             nullptr, 0, 0, info.get()));
    ERR_clear_error();
    return encodeNativeSecret(sig.get(), i2d_X509_SIG).toSecureArray();
}

} // namespace Trivex
