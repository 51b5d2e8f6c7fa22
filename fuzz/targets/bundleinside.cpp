// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The inside of a PKCS#12 file: the input is its AuthenticatedSafe (RFC 7292, 4), which gets a
// right integrity check around it, because no fuzzer would ever find one.
#include "fuzz/target.h"
#include "qca/asn1/der.h"
#include "qca/asn1/derwriter.h"
#include "qca/pkcs12/pkcs12context.h"

#include <openssl/hmac.h>
#include <openssl/pkcs12.h>

using namespace Trivex;

namespace {

constexpr char Password[] = "secret";

QByteArray macOf(const QByteArray &safe, const QByteArray &salt)
{
    QByteArray key(32, '\0');
    auto *octets = reinterpret_cast<uchar *>(key.data());
    auto *salted = reinterpret_cast<uchar *>(const_cast<char *>(salt.constData()));
    if (!PKCS12_key_gen_utf8(Password, int(qstrlen(Password)), salted, salt.size(), PKCS12_MAC_ID,
                             1, key.size(), octets, EVP_sha256()))
        return {};
    QByteArray mac(32, '\0');
    HMAC(EVP_sha256(), key.constData(), key.size(),
         reinterpret_cast<const uchar *>(safe.constData()), size_t(safe.size()),
         reinterpret_cast<uchar *>(mac.data()), nullptr);
    return mac;
}

QByteArray bundleAround(const QByteArray &safe)
{
    const QByteArray salt("12345678");
    const QByteArray content =
        Der::writeSequence({Der::writeOid("1.2.840.113549.1.7.1"),
                            Der::write(Der::context(0), Der::write(Der::OctetString, safe))});
    const QByteArray digest = Der::writeSequence({Der::writeOid("2.16.840.1.101.3.4.2.1")});
    const QByteArray check = Der::writeSequence(
        {Der::writeSequence({digest, Der::write(Der::OctetString, macOf(safe, salt))}),
         Der::write(Der::OctetString, salt), Der::writeUnsigned(QByteArray(1, 1))});
    return Der::writeSequence({Der::writeUnsigned(QByteArray(1, 3)), content, check});
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    QString name;
    QList<QCA::CertContext *> chain;
    QCA::PKeyContext *key = nullptr;
    const QCA::ConvertResult result = Pkcs12Context(nullptr).fromPKCS12(
        bundleAround(input), QCA::SecureArray(Password), &name, &chain, &key);
    check(result != QCA::ErrorPassphrase || !key, "a refused bundle leaves no key");
    check((result == QCA::ConvertGood) == (key != nullptr), "a bundle that opens has a key");
    qDeleteAll(chain);
    delete key;
}
