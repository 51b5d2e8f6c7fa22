// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Tokens: listing, generating, signing, writing, each against the same PKCS#11 calls made directly.
#include "benchmarks/measure.h"
#include "benchmarks/plaintoken.h"
#include "qca/adapter/eventhandler.h"
#include "qca/adapter/infotypes.h"
#include "qca/adapter/keygenerator.h"
#include "qca/adapter/providers.h"
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

constexpr int ListingTimeout = 120000;

/// Answers every PIN question, as a person would, at once.
class Person : public QObject {
public:
    Person()
    {
        connect(&m_handler, &QCA::EventHandler::eventReady, this, [this](int id) {
            m_handler.submitPassword(id, QCA::SecureArray(TestToken::pin()));
        });
        m_handler.start();
    }

private:
    Trivex::EventHandler m_handler;
};

/// The one token store of the process, through QCA.
class Store : public QObject {
public:
    explicit Store(int expectedEntries)
    {
        QCA::KeyStoreManager::start(Trivex::pkcs11ProviderName());
        m_manager.sync();
        connect(&m_manager, &QCA::KeyStoreManager::keyStoreAvailable, this, &Store::open);
        for (const QString &id : m_manager.keyStores())
            open(id);
        waitFor([&] { return m_store && m_store->entryList().size() >= expectedEntries; });
    }

    QCA::KeyStore *operator->() const { return m_store.get(); }
    bool isOpen() const { return m_store != nullptr; }

    /// Runs `start` and waits for `signal` of the store.
    template <typename Signal> void run(Signal signal, const std::function<void()> &start)
    {
        QEventLoop loop;
        const auto connection = connect(m_store.get(), signal, &loop, &QEventLoop::quit);
        start();
        loop.exec();
        disconnect(connection);
    }

private:
    void open(const QString &id)
    {
        if (m_store)
            return;
        auto store = std::make_unique<QCA::KeyStore>(id, &m_manager);
        if (store->type() != QCA::KeyStore::SmartCard)
            return;
        m_store = std::move(store);
        connect(m_store.get(), &QCA::KeyStore::updated, &m_loop, &QEventLoop::quit);
        m_store->startAsynchronousMode();
        m_loop.quit();
    }

    void waitFor(const std::function<bool()> &condition)
    {
        QTimer::singleShot(ListingTimeout, &m_loop, [this] { m_loop.exit(1); });
        while (!condition()) {
            if (m_loop.exec() == 1)
                break;
        }
    }

    QEventLoop m_loop;
    QCA::KeyStoreManager m_manager;
    std::unique_ptr<QCA::KeyStore> m_store;
};

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

int listOurs(int count)
{
    if (!QCA::findProvider(Trivex::pkcs11ProviderName())) {
        std::fprintf(stderr, "no token provider\n");
        return 3;
    }
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
    std::printf("%f\n", double(timer.nsecsElapsed()) / 1e6);
    return 0;
}

int listPlain(int count, const QString &label)
{
    QElapsedTimer timer;
    timer.start();
    PlainToken token(TestToken::softHsmLibrary(), label);
    if (token.readCertificates() < count)
        return 2;
    std::printf("%f\n", double(timer.nsecsElapsed()) / 1e6);
    return 0;
}

// A run that fails has no time, and the whole program fails with it.
bool somethingFailed = false;

double timeOfChild(const QStringList &arguments)
{
    QVector<double> times;
    for (int round = 0; round < 3; ++round) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(), arguments);
        const bool ended = child.waitForFinished(ListingTimeout);
        bool isTime = false;
        const double time = child.readAllStandardOutput().trimmed().toDouble(&isTime);
        if (ended && child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0
            && isTime) {
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
    return times.isEmpty() ? 0 : Measure::median(times);
}

void benchListing()
{
    Table plain(QStringLiteral("Listing a token's certificates"),
                QStringLiteral("the same reading with plain PKCS#11 and OpenSSL calls"));
    Table tool(QStringLiteral("The same listing against a known tool"),
               QStringLiteral("pkcs11-tool --list-objects --type cert"));
    for (const int count : {100, 1000, 5000}) {
        const TestToken token(QStringLiteral("Listing"));
        token.useInThisProcess();
        {
            PlainToken writer(TestToken::softHsmLibrary(), token.label());
            writer.login(TestToken::pin());
            fill(writer, count);
        }
        const QString number = QString::number(count);
        const double ours = timeOfChild({QStringLiteral("--list-ours"), number});
        const double base = timeOfChild({QStringLiteral("--list-plain"), number, token.label()});
        const double known = Measure::median(1, [&] {
            token.tool({QStringLiteral("-O"), QStringLiteral("--type"), QStringLiteral("cert")},
                       false);
        });
        plain.add(QStringLiteral("store to full list"), count, ours, base);
        tool.add(QStringLiteral("store to full list"), count, ours, known);
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

void benchWriting(Store &store, PlainToken &plain, const TestAuthority &authority)
{
    Table table(QStringLiteral("Writing to the token"),
                QStringLiteral("C_CreateObject of the same certificate"));
    QVector<QCA::Certificate> certificates;
    EVP_PKEY *key = EVP_EC_gen("P-256");
    QByteArray spki(i2d_PUBKEY(key, nullptr), 0);
    auto *out = reinterpret_cast<unsigned char *>(spki.data());
    i2d_PUBKEY(key, &out);
    EVP_PKEY_free(key);
    for (int i = 0; i < 15; ++i)
        certificates.append(QCA::Certificate::fromDER(
            authority.issue(spki, QStringLiteral("/CN=Written %1").arg(i))));
    int next = 0;
    const double ours = Measure::median(certificates.size(), [&] {
        store.run(&QCA::KeyStore::entryWritten,
                  [&] { store->writeEntry(certificates.at(next++)); });
    });
    next = 0;
    const double base = Measure::median(certificates.size(), [&] {
        plain.writeCertificate(certificates.at(next++).toDER(), "plain");
    });
    table.add(QStringLiteral("certificate"), 0, ours, base);
    QVector<QCA::KeyBundle> bundles;
    for (int i = 0; i < 5; ++i) {
        const QString file = authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                                              QStringLiteral("/CN=Bundle %1").arg(i),
                                              QStringLiteral("secret"), QStringLiteral("b"));
        bundles.append(QCA::KeyBundle::fromFile(file, QCA::SecureArray("secret"), nullptr,
                                                Trivex::opensslProviderName()));
    }
    next = 0;
    const double bundle = Measure::median(bundles.size(), [&] {
        store.run(&QCA::KeyStore::entryWritten, [&] { store->writeEntry(bundles.at(next++)); });
    });
    table.add(QStringLiteral("bundle (2 keys, 2 certificates)"), 0, bundle, 4 * base);
    table.note(QStringLiteral("The bundle is held against four such objects. Ours end when QCA "
                              "has delivered the result."));
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
    PlainToken plain(TestToken::softHsmLibrary(), token.label());
    plain.login(TestToken::pin());
    benchGeneration(store, plain);
    benchSigning(store, plain);
    benchWriting(store, plain, authority);
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
    benchListing();
    benchOperations();
    return somethingFailed ? 1 : 0;
}
