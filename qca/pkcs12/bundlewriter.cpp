// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/bundlewriter.h"

#include "qca/asn1/nativecoding.h"

#include <cstring>

namespace Trivex {

namespace {

/// Guesses cost their maker a tenth of a second each, and so does every opening.
constexpr int Iterations = 100000;

struct FreeBags {
    void operator()(STACK_OF(PKCS12_SAFEBAG) * bags) const noexcept
    {
        sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free);
    }
};
using BagStack = std::unique_ptr<STACK_OF(PKCS12_SAFEBAG), FreeBags>;

struct FreeSafes {
    void operator()(STACK_OF(PKCS7) * safes) const noexcept
    {
        sk_PKCS7_pop_free(safes, PKCS7_free);
    }
};
using SafeStack = std::unique_ptr<STACK_OF(PKCS7), FreeSafes>;

/// libcrypto's functions want the end marked.
class PasswordText {
public:
    explicit PasswordText(const Secret &password)
        : m_text(password.size() + 1)
    {
        std::memcpy(m_text.data(), password.constData(), size_t(password.size()));
        m_text.data()[password.size()] = '\0';
    }
    const char *text() const { return m_text.constData(); }
    int length() const { return m_text.size() - 1; }

private:
    Secret m_text;
};

X509Handle certificateOf(const QByteArray &der)
{
    return decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509);
}

/// By which a reader finds the certificate of a key: the certificate's SHA-1.
QByteArray localIdOf(const X509 *certificate)
{
    QByteArray id(EVP_MAX_MD_SIZE, '\0');
    unsigned int size = 0;
    if (X509_digest(certificate, EVP_sha1(), reinterpret_cast<unsigned char *>(id.data()), &size)
        != 1)
        return {};
    id.truncate(int(size));
    return id;
}

/// As UTF-16, which readers take a BMPString for: libcrypto makes none of UTF-8 with a character
/// beyond 16 bits, such as an emoji.
bool addName(PKCS12_SAFEBAG *bag, const QString &name)
{
    QByteArray utf16;
    for (const QChar unit : name) {
        utf16 += char(unit.row());
        utf16 += char(unit.cell());
    }
    const auto *octets = reinterpret_cast<const unsigned char *>(utf16.constData());
    return name.isEmpty() || PKCS12_add_friendlyname_uni(bag, octets, utf16.size()) == 1;
}

bool addNames(PKCS12_SAFEBAG *bag, const QString &name, const QByteArray &localId)
{
    auto id = localId;
    return PKCS12_add_localkeyid(bag, reinterpret_cast<unsigned char *>(id.data()), id.size()) == 1
        && addName(bag, name);
}

bool push(const BagStack &bags, PKCS12_SAFEBAG *bag)
{
    if (bag && bags && sk_PKCS12_SAFEBAG_push(bags.get(), bag) > 0)
        return true;
    PKCS12_SAFEBAG_free(bag);
    return false;
}

bool addKey(const SafeStack &safes, const BundleParts &parts, const QByteArray &localId,
            const PasswordText &password)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(parts.privateInfo.constData());
    const Pkcs8Handle key(d2i_PKCS8_PRIV_KEY_INFO(nullptr, &bytes, parts.privateInfo.size()));
    const BagStack bags(sk_PKCS12_SAFEBAG_new_null());
    if (!key)
        return false;
    PKCS12_SAFEBAG *bag = PKCS12_SAFEBAG_create_pkcs8_encrypt(
        NID_aes_256_cbc, password.text(), password.length(), nullptr, 0, Iterations, key.get());
    STACK_OF(PKCS7) *all = safes.get();
    return push(bags, bag) && addNames(bag, parts.name, localId)
        && PKCS12_add_safe(&all, bags.get(), -1, 0, nullptr) == 1;
}

bool addCertificates(const SafeStack &safes, const BundleParts &parts, const QByteArray &localId,
                     const PasswordText &password)
{
    const BagStack bags(sk_PKCS12_SAFEBAG_new_null());
    for (int i = 0; i < parts.chain.size(); ++i) {
        const X509Handle certificate = certificateOf(parts.chain.at(i));
        PKCS12_SAFEBAG *bag = certificate ? PKCS12_SAFEBAG_create_cert(certificate.get()) : nullptr;
        if (!push(bags, bag) || (i == 0 && !addNames(bag, parts.name, localId)))
            return false;
    }
    STACK_OF(PKCS7) *all = safes.get();
    return PKCS12_add_safe(&all, bags.get(), NID_aes_256_cbc, Iterations, password.text()) == 1;
}

} // namespace

QByteArray writeBundleFile(const BundleParts &parts, const Secret &password)
{
    const X509Handle own =
        parts.chain.isEmpty() ? nullptr : certificateOf(parts.chain.constFirst());
    // A zero would end it where a person's password does not.
    if (!own || password.isEmpty()
        || std::memchr(password.constData(), 0, size_t(password.size())) != nullptr)
        return {};
    const PasswordText text(password);
    const QByteArray localId = localIdOf(own.get());
    const SafeStack safes(sk_PKCS7_new_null());
    if (!safes || !addCertificates(safes, parts, localId, text)
        || !addKey(safes, parts, localId, text)) {
        ERR_clear_error();
        return {};
    }
    const Pkcs12Handle file(PKCS12_add_safes(safes.get(), 0));
    const bool isSealed = file
        && PKCS12_set_mac(file.get(), text.text(), text.length(), nullptr, 0, Iterations,
                          EVP_sha256())
            == 1;
    const QByteArray encoded = isSealed ? encodeNative(file.get(), i2d_PKCS12) : QByteArray();
    ERR_clear_error();
    return encoded;
}

} // namespace Trivex
