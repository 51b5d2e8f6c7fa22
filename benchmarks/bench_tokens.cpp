// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Tokens: listing, generating, signing, writing, each against the same PKCS#11 calls made directly.
#include "benchmarks/measure.h"
#include "benchmarks/tokenwriting.h"
#include "qca/adapter/keygenerator.h"
#include "qca/base/providers.h"
#include "qca/x509/infotypes.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <cstdio>
#include <memory>

using Measure::Table;
using TrivexTest::TestAuthority;
using TrivexTest::TestToken;

namespace {

constexpr int ListingTimeout = 120000; // ms

void fill(PlainToken &token, int count)
{
    EVP_PKEY *key = EVP_EC_gen("P-256");
    for (int i = 0; i < count; ++i) {
        X509 *certificate = X509_new();
        X509_set_version(certificate, 2);
        ASN1_INTEGER_set(X509_get_serialNumber(certificate), i + 1);
        X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
        X509_gmtime_adj(X509_getm_notAfter(certificate), 31536000L);
        const QByteArray name = "Certificate number " + QByteArray::number(i);
        X509_NAME *subject = X509_get_subject_name(certificate);
        for (const char *field : {"O", "CN"})
            X509_NAME_add_entry_by_txt(subject, field, MBSTRING_UTF8,
                                       reinterpret_cast<const unsigned char *>(name.constData()),
                                       name.size(), -1, 0);
        X509_set_issuer_name(certificate, subject);
        X509_set_pubkey(certificate, key);
        X509_sign(certificate, key, EVP_sha256());
        QByteArray der(i2d_X509(certificate, nullptr), 0);
        auto *out = reinterpret_cast<unsigned char *>(der.data());
        i2d_X509(certificate, &out);
        X509_free(certificate);
        token.writeCertificate(der, "id" + QByteArray::number(i));
    }
    EVP_PKEY_free(key);
}

// ------------------------------------------------- listing, each in a process of its own

/// The time since the timer was started, and what was computed since `before`.
void tell(const QElapsedTimer &timer, double before)
{
    std::printf("%f %f\n", double(timer.nsecsElapsed()) / 1e6, Measure::computed() - before);
}

int listOurs(int count)
{
    if (!QCA::findProvider(Trivex::pkcs11ProviderName())) {
        std::fprintf(stderr, "no token provider\n");
        return 3;
    }
    const double before = Measure::computed();
    QElapsedTimer timer;
    timer.start();
    const Store store(count);
    if (!store.isOpen() || store->entryList().size() < count)
        return 2;
    for (const QCA::KeyStoreEntry &entry : store->entryList()) {
        const QCA::Certificate certificate = entry.certificate();
        Trivex::infoValue(certificate.subjectInfo(), Trivex::CommonNameInfo);
        Trivex::infoValue(certificate.issuerInfo(), Trivex::CommonNameInfo);
    }
    tell(timer, before);
    return 0;
}

int listPlain(int count, const QString &label)
{
    const double before = Measure::computed();
    QElapsedTimer timer;
    timer.start();
    PlainToken token(TestToken::softHsmLibrary(), label);
    if (token.readCertificates() < count)
        return 2;
    tell(timer, before);
    return 0;
}

// A run that fails has no time, and the whole program fails with it.
bool somethingFailed = false;

/// Of one listing, in ms.
struct Times {
    double passed = 0;
    double computed = 0; ///< by all threads: what a busy machine does not lengthen
};

Times timesOfChild(const QStringList &arguments)
{
    QVector<double> passed;
    QVector<double> times;
    for (int round = 0; round < 3; ++round) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(), arguments);
        const bool ended = child.waitForFinished(ListingTimeout);
        const QList<QByteArray> told = child.readAllStandardOutput().trimmed().split(' ');
        bool isTime = false;
        const double time = told.value(1).toDouble(&isTime);
        if (ended && child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0
            && isTime) {
            passed.append(told.value(0).toDouble());
            times.append(time);
            continue;
        }
        somethingFailed = true;
        std::fprintf(stderr, "%s failed: %s, code %d\n", qPrintable(arguments.join(u' ')),
                     !ended                                           ? "no end"
                         : child.exitStatus() == QProcess::NormalExit ? "exit"
                                                                      : "crash",
                     child.exitCode());
        child.kill();
        child.waitForFinished();
    }
    return times.isEmpty() ? Times() : Times{Measure::median(passed), Measure::median(times)};
}

/// `isLarge` adds a token of 50,000 certificates, which takes minutes to fill.
void benchListing(bool isLarge)
{
    Table plain(QStringLiteral("Listing a token's certificates"),
                QStringLiteral("the same reading with plain PKCS#11 and OpenSSL calls"));
    Table tool(QStringLiteral("The same listing against a known tool"),
               QStringLiteral("pkcs11-tool --list-objects --type cert"));
    Table processor(QStringLiteral("The same, processor's time of all threads"),
                    QStringLiteral("the same reading with plain PKCS#11 and OpenSSL calls"));
    QVector<int> counts = {100, 1000, 5000};
    if (isLarge)
        counts.append(50000);
    for (const int count : qAsConst(counts)) {
        const TestToken token(QStringLiteral("Listing"));
        token.useInThisProcess();
        {
            PlainToken writer(TestToken::softHsmLibrary(), token.label());
            writer.login(TestToken::pin());
            fill(writer, count);
        }
        const QString number = QString::number(count);
        const Times ours = timesOfChild({QStringLiteral("--list-ours"), number});
        const Times base = timesOfChild({QStringLiteral("--list-plain"), number, token.label()});
        const double known = Measure::median(1, [&] {
            token.tool({QStringLiteral("-O"), QStringLiteral("--type"), QStringLiteral("cert")},
                       false);
        });
        plain.add(QStringLiteral("store to full list"), count, ours.passed, base.passed);
        processor.add(QStringLiteral("store to full list"), count, ours.computed, base.computed);
        tool.add(QStringLiteral("store to full list"), count, ours.passed, known);
    }
    plain.note(QStringLiteral("Ours counts from the start of the key store manager, plug-in "
                              "loading and announcing in batches included."));
}

// ------------------------------------------------- operations

QCA::PrivateKey generate(Trivex::KeyGenerator &generator, int bits)
{
    QEventLoop loop;
    QObject::connect(&generator, &Trivex::KeyGenerator::finished, &loop, &QEventLoop::quit);
    if (bits == 384)
        generator.createEC(QStringLiteral("ec-secp384r1"), Trivex::gostProviderName());
    else
        generator.createRSA(bits, 3, Trivex::pkcs11ProviderName());
    loop.exec();
    return generator.key();
}

void benchGeneration(Store &store, PlainToken &plain)
{
    Table table(QStringLiteral("Generating key pairs on the token"),
                QStringLiteral("C_GenerateKeyPair on the same token"));
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    struct Kind {
        int bits;
        int rounds;
        const char *name;
    };
    for (const Kind &kind : {Kind{2048, 15, "RSA-2048"}, Kind{384, 31, "P-384"}}) {
        const double ours = Measure::median(kind.rounds, [&] {
            generator.setTarget(store->id(), QStringLiteral("bench"));
            if (generate(generator, kind.bits).isNull())
                std::fprintf(stderr, "generation failed\n");
        });
        const double base =
            Measure::median(kind.rounds, [&] { plain.generate(kind.bits, "bench"); });
        table.add(QString::fromLatin1(kind.name), 0, ours, base);
    }
    table.note(QStringLiteral("The search for primes makes single runs vary by several times."));
}

void benchSigning(Store &store, PlainToken &plain)
{
    Table table(QStringLiteral("Signing on the token"), QStringLiteral("the bare C_Sign"));
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(store->id(), QStringLiteral("signing"));
    QCA::PrivateKey key = generate(generator, 2048);
    const PlainToken::Pair pair = plain.generate(2048, "signing-plain");
    const QByteArray digest(64, 'a');
    const double base =
        Measure::median(200, [&] { plain.sign(pair.privateKey, CKM_RSA_PKCS, digest); });
    QCA::RSAPrivateKey rsa = key.toRSA();
    const double ours = Measure::median(200, [&] {
        rsa.startSign(QCA::EMSA3_Raw, QCA::DefaultFormat);
        rsa.update(digest);
        if (rsa.signature().isEmpty())
            std::fprintf(stderr, "signing failed\n");
    });
    table.add(QStringLiteral("RSA-2048, raw"), 0, ours, base);

    QCA::CertificateOptions options(QCA::PKCS10);
    QCA::CertificateInfo info;
    info.insert(Trivex::infoType(Trivex::CommonNameInfo), QStringLiteral("Bench"));
    options.setInfo(info);
    const double request = Measure::median(100, [&] {
        if (QCA::CertificateRequest(options, key, Trivex::pkcs11ProviderName()).isNull())
            std::fprintf(stderr, "request failed\n");
    });
    table.add(QStringLiteral("PKCS#10 request, RSA-2048"), 0, request, base);
    table.note(QStringLiteral("A request includes its encoding and the check of its signature."));
}

void benchOperations()
{
    const TestToken token(QStringLiteral("Operations"));
    if (!token.isValid()) {
        std::fprintf(stderr, "SKIP %s\n", qPrintable(token.problem()));
        return;
    }
    token.useInThisProcess();
    const TestAuthority authority;
    const QCA::Initializer initializer;
    const Person person;
    Store store(0);
    if (!store.isOpen()) {
        std::fprintf(stderr, "no token store\n");
        return;
    }
    benchWriting(store, authority); // first: what is on the token slows it
    PlainToken plain(TestToken::softHsmLibrary(), token.label());
    plain.login(TestToken::pin());
    benchGeneration(store, plain);
    benchSigning(store, plain);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--list-plain"))
        return listPlain(arguments.value(2).toInt(), arguments.value(3));
    if (arguments.value(1) == QLatin1String("--list-ours")) {
        const QCA::Initializer initializer;
        return listOurs(arguments.value(2).toInt());
    }
    if (arguments.value(1) != QLatin1String("--operations"))
        benchListing(arguments.contains(QLatin1String("--large")));
    benchOperations();
    return somethingFailed ? 1 : 0;
}
