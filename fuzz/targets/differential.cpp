// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What we read of a certificate beside what libcrypto reads of it.
#include "fuzz/target.h"
#include "qca/base/bounds.h"
#include "qca/keys/keys.h"
#include "qca/x509/makecertificate.h"

#include <openssl/bn.h>
#include <openssl/x509.h>

#include <QDateTime>

#include <memory>

using namespace Trivex;

namespace {

struct Free {
    void operator()(X509 *certificate) const { X509_free(certificate); }
    void operator()(BIGNUM *number) const { BN_free(number); }
};

using Theirs = std::unique_ptr<X509, Free>;

/// Only what is DER to the last octet: libcrypto takes more.
Theirs theirs(const QByteArray &der)
{
    const auto *octets = reinterpret_cast<const uchar *>(der.constData());
    Theirs certificate(d2i_X509(nullptr, &octets, der.size()));
    if (!certificate || octets != reinterpret_cast<const uchar *>(der.constEnd()))
        return {};
    uchar *again = nullptr;
    X509_get0_serialNumber(certificate.get());
    const int size = i2d_re_X509_tbs(certificate.get(), &again);
    OPENSSL_free(again);
    return size > 0 ? std::move(certificate) : Theirs();
}

QByteArray serialOf(const X509 *certificate)
{
    const std::unique_ptr<BIGNUM, Free> number(
        ASN1_INTEGER_to_BN(X509_get0_serialNumber(certificate), nullptr));
    if (!number)
        return {};
    char *text = BN_bn2dec(number.get());
    const QByteArray copy(text);
    OPENSSL_free(text);
    return copy;
}

/// Nothing for a time that libcrypto can't read either.
QDateTime timeOf(const ASN1_TIME *time)
{
    tm parts = {};
    if (!ASN1_TIME_to_tm(time, &parts))
        return {};
    return {QDate(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday),
            QTime(parts.tm_hour, parts.tm_min, parts.tm_sec), Qt::UTC};
}

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    const Theirs known = theirs(input);
    const QCA::Certificate ours = makeCertificate(input);
    if (!known || ours.isNull())
        return;
    check(ours.serialNumber().toString().toLatin1() == serialOf(known.get()),
          "the serial number is the same");
    const QDateTime from = timeOf(X509_get0_notBefore(known.get()));
    if (from.isValid() && ours.notValidBefore().isValid())
        check(ours.notValidBefore() == from, "the beginning is the same");
    const QDateTime until = timeOf(X509_get0_notAfter(known.get()));
    if (until.isValid() && ours.notValidAfter().isValid())
        check(ours.notValidAfter() == until, "the end is the same");
    check(ours.subjectInfoOrdered().isEmpty()
              || X509_NAME_entry_count(X509_get_subject_name(known.get())) > 0
              || X509_get_ext_by_NID(known.get(), NID_subject_alt_name, -1) >= 0,
          "nobody is named whom libcrypto does not see");
}
