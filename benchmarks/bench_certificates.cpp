// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Certificates: parsing, reading fields and memory, each against plain OpenSSL doing the same.
#include "benchmarks/measure.h"
#include "qca/asn1/handles.h"
#include "qca/base/providers.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/makecertificate.h"

#include <QCoreApplication>
#include <QtCrypto>

#include <malloc.h>

#include <cstdio>
#include <vector>

using Measure::Table;

namespace {

constexpr int Sizes[] = {100, 1000, 5000};
constexpr int Rounds = 5;

// Results go here, so that nothing is optimised away.
volatile qint64 sink = 0;

QByteArray makeBase()
{
    using namespace Trivex;
    QCA::KeyGenerator generator;
    const QCA::PrivateKey key = generator.createRSA(2048, 65537, opensslProviderName());
    QCA::CertificateOptions options;
    QCA::CertificateInfo info;
    info.insert(infoType(CommonNameInfo), QStringLiteral("Петров Пётр Петрович"));
    info.insert(infoType(OrganizationInfo), QStringLiteral("ООО «Ромашка»"));
    info.insert(infoType(LocalityInfo), QStringLiteral("Москва"));
    info.insert(infoType(CountryInfo), QStringLiteral("RU"));
    info.insert(infoType(EmailLegacyInfo), QStringLiteral("petrov@example.ru"));
    info.insert(infoType(InnInfo), QStringLiteral("123456789012"));
    info.insert(infoType(SnilsInfo), QStringLiteral("12345678901"));
    options.setInfo(info);
    options.setSerialNumber(QCA::BigInteger(1001));
    options.setConstraints({QCA::DigitalSignature, QCA::NonRepudiation, QCA::ClientAuth});
    options.setValidityPeriod(QDateTime::currentDateTimeUtc(),
                              QDateTime::currentDateTimeUtc().addYears(1));
    return QCA::Certificate(options, key, opensslProviderName()).toDER();
}

// Different certificates of one size: the signature is what differs.
std::vector<QByteArray> variants(const QByteArray &base, int count)
{
    std::vector<QByteArray> list(size_t(count), base);
    for (int i = 0; i < count; ++i) {
        QByteArray &der = list[size_t(i)];
        der[der.size() - 8] = char(i);
        der[der.size() - 9] = char(i >> 8);
    }
    return list;
}

Trivex::X509Handle parse(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    return Trivex::X509Handle(d2i_X509(nullptr, &data, der.size()));
}

void readName(X509_NAME *name)
{
    for (int i = 0; i < X509_NAME_entry_count(name); ++i) {
        unsigned char *text = nullptr;
        const int size =
            ASN1_STRING_to_UTF8(&text, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, i)));
        sink = sink + QString::fromUtf8(reinterpret_cast<char *>(text), size).size();
        OPENSSL_free(text);
    }
}

void readFields(X509 *certificate)
{
    readName(X509_get_subject_name(certificate));
    readName(X509_get_issuer_name(certificate));
    struct tm time = {};
    ASN1_TIME_to_tm(X509_get0_notBefore(certificate), &time);
    ASN1_TIME_to_tm(X509_get0_notAfter(certificate), &time);
    sink = sink + ASN1_STRING_length(X509_get0_serialNumber(certificate)) + time.tm_year
        + X509_get_signature_nid(certificate) + int(X509_get_key_usage(certificate));
    if (const ASN1_OCTET_STRING *id = X509_get0_subject_key_id(certificate))
        sink = sink + ASN1_STRING_length(id);
}

void readFields(const QCA::Certificate &certificate)
{
    sink = sink + certificate.subjectInfo().size() + certificate.issuerInfo().size()
        + certificate.notValidBefore().date().year() + certificate.notValidAfter().date().year()
        + certificate.serialNumber().toArray().size() + int(certificate.signatureAlgorithm())
        + certificate.constraints().size() + certificate.subjectKeyId().size();
}

template <class Work> double timeOf(const std::vector<QByteArray> &ders, Work work)
{
    return Measure::median(Rounds, [&] {
        for (const QByteArray &der : ders)
            work(der);
    });
}

void measureTimes(const QByteArray &base)
{
    Table table(QStringLiteral("Time"), QStringLiteral("plain OpenSSL"));
    for (const int size : Sizes) {
        const auto ders = variants(base, size);
        const double names = timeOf(ders, [](const QByteArray &der) {
            const auto certificate = parse(der);
            readName(X509_get_subject_name(certificate.get()));
            readName(X509_get_issuer_name(certificate.get()));
        });
        table.add(QStringLiteral("listed, with its names"), size,
                  timeOf(ders, [](const QByteArray &der) { Trivex::makeCertificate(der); }), names);
        const double fields = timeOf(ders, [](const QByteArray &der) {
            const auto certificate = parse(der);
            readFields(certificate.get());
            sink = sink + X509_verify(certificate.get(), X509_get0_pubkey(certificate.get()));
        });
        table.add(
            QStringLiteral("all fields read and self-signature checked"), size,
            timeOf(ders, [](const QByteArray &der) { readFields(Trivex::makeCertificate(der)); }),
            fields);
        table.add(QStringLiteral("QCA's fromDER, native object included"), size,
                  timeOf(ders, [](const QByteArray &der) { QCA::Certificate::fromDER(der); }),
                  names);
    }
}

qint64 used()
{
    return qint64(mallinfo2().uordblks);
}

void measureMemory(const QByteArray &base)
{
    constexpr int Count = 5000;
    const auto ders = variants(base, Count);
    std::vector<Trivex::X509Handle> native(Count);
    std::vector<QCA::Certificate> ours;
    ours.reserve(Count);
    qint64 before = used();
    for (int i = 0; i < Count; ++i)
        native[size_t(i)] = parse(ders[size_t(i)]);
    const qint64 plain = (used() - before) / Count;
    native.clear();
    before = used();
    for (const QByteArray &der : ders)
        ours.push_back(Trivex::makeCertificate(der));
    const qint64 listed = (used() - before) / Count;
    for (const QCA::Certificate &certificate : ours)
        readFields(certificate);
    const qint64 read = (used() - before) / Count;
    std::printf("\nMemory for each of %d certificates of %d bytes: OpenSSL %lld, listed %lld, all "
                "fields read %lld (the bytes themselves included, ratio %.2f)\n",
                Count, int(base.size()), static_cast<long long>(plain),
                static_cast<long long>(listed), static_cast<long long>(read),
                double(read) / double(plain));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    if (!QCA::findProvider(Trivex::opensslProviderName())) {
        std::printf("SKIP no provider; set QCA_PLUGIN_PATH\n");
        return 1;
    }
    const QByteArray base = makeBase();
    measureTimes(base);
    measureMemory(base);
    return 0;
}
