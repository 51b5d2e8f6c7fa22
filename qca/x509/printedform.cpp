// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/printedform.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/plaintext.h"

#include <QStringList>

#include <openssl/err.h>

namespace Trivex {

namespace {

/// Names with their letters as they are, one attribute after the other.
constexpr unsigned long NameFlags =
    XN_FLAG_ONELINE & ~static_cast<unsigned long>(ASN1_STRFLGS_ESC_MSB);
/// What libcrypto has no words for, as bytes.
constexpr unsigned long UnknownFlags = X509V3_EXT_DUMP_UNKNOWN;

void printCertificate(BIO *out, const QByteArray &der)
{
    if (const auto certificate = decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509))
        X509_print_ex(out, certificate.get(), NameFlags, UnknownFlags);
}

void printRequest(BIO *out, const QByteArray &der)
{
    if (const auto request = decodeNative<RequestHandle>(Der::sliceOf(der), d2i_X509_REQ))
        X509_REQ_print_ex(out, request.get(), NameFlags, UnknownFlags);
}

void printList(BIO *out, const QByteArray &der)
{
    if (const auto list = decodeNative<CrlHandle>(Der::sliceOf(der), d2i_X509_CRL))
        X509_CRL_print_ex(out, list.get(), NameFlags);
}

void printKey(BIO *out, const QByteArray &der)
{
    if (const auto key = decodeNative<PKeyHandle>(Der::sliceOf(der), d2i_PUBKEY))
        EVP_PKEY_print_public(out, key.get(), 0, nullptr);
}

using Print = void (*)(BIO *, const QByteArray &);

/// In the order of `Printable`.
constexpr Print Prints[] = {printCertificate, printRequest, printList, printKey};

QString readable(const QByteArray &text, bool isCut)
{
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    if (isCut)
        lines.last() = QStringLiteral("…");
    for (QString &line : lines)
        line = plainText(line);
    return lines.join(QLatin1Char('\n')).trimmed();
}

} // namespace

QString printedForm(Printable kind, const QByteArray &der, int most)
{
    const BioHandle out(BIO_new(BIO_s_mem()));
    if (!out)
        return {};
    Prints[int(kind)](out.get(), der);
    ERR_clear_error();
    char *data = nullptr;
    const long size = BIO_get_mem_data(out.get(), &data);
    return size > 0 ? readable(QByteArray(data, int(qMin<long>(size, most))), size > most)
                    : QString();
}

} // namespace Trivex
