// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "benchmarks/tokenwriting.h"

#include "benchmarks/measure.h"

#include <QFile>

#include <openssl/evp.h>
#include <openssl/x509.h>

using Measure::Table;
using TrivexTest::TestAuthority;
using TrivexTest::TestToken;

namespace {

struct NativeBundle {
    QCA::KeyBundle bundle;
    QVector<QByteArray> chain;
    EVP_PKEY *key = nullptr;
};

/// The same bundle twice: for us, and in the parts that PKCS#11 takes.
NativeBundle makeBundle(const TestAuthority &authority, int number)
{
    NativeBundle made;
    const QString file = authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                                          QStringLiteral("/CN=Bundle %1").arg(number),
                                          QStringLiteral("secret"), QStringLiteral("b"));
    made.bundle = QCA::KeyBundle::fromFile(file, QCA::SecureArray("secret"), nullptr,
                                           Trivex::opensslProviderName());
    for (const QCA::Certificate &certificate : made.bundle.certificateChain())
        made.chain.append(certificate.toDER());
    const QByteArray der = made.bundle.privateKey().toDER().toByteArray();
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    made.key = d2i_AutoPrivateKey(nullptr, &data, der.size());
    return made;
}

/// Objects that are written without a look, and with the one that keeps them from being there
/// twice.
void writePlain(PlainToken &plain, const QVector<QByteArray> &certificates, bool looks)
{
    for (const QByteArray &der : certificates) {
        if (!looks || plain.count(CKO_CERTIFICATE, CKA_VALUE, der) == 0)
            plain.writeCertificate(der, "plain");
    }
}

void writePlain(PlainToken &plain, const NativeBundle &bundle, const QByteArray &id, bool looks)
{
    if (looks
        && plain.count(CKO_PRIVATE_KEY, CKA_ID, id) + plain.count(CKO_PUBLIC_KEY, CKA_ID, id) > 0)
        return;
    plain.writeRsaPair(bundle.key, id);
    writePlain(plain, bundle.chain, looks);
}

QVector<QByteArray> makeCertificates(const TestAuthority &authority, const QString &name, int count)
{
    EVP_PKEY *key = EVP_EC_gen("P-256");
    QByteArray info(i2d_PUBKEY(key, nullptr), 0);
    auto *out = reinterpret_cast<unsigned char *>(info.data());
    i2d_PUBKEY(key, &out);
    EVP_PKEY_free(key);
    QVector<QByteArray> all;
    for (int i = 0; i < count; ++i)
        all.append(authority.issue(info, QStringLiteral("/CN=%1 %2").arg(name).arg(i)));
    return all;
}

/// A token for one way of writing, in a copy of the module that sees no other.
class PlainSide {
public:
    explicit PlainSide(const QString &label)
        : m_place(label)
    {
        const QByteArray previous = qgetenv("SOFTHSM2_CONF");
        qputenv("SOFTHSM2_CONF", QFile::encodeName(m_place.configurationFile()));
        m_token = std::make_unique<PlainToken>(m_place.modulePath(), label);
        qputenv("SOFTHSM2_CONF", previous);
        m_token->login(TestToken::pin());
    }
    PlainToken &token() { return *m_token; }

private:
    TestToken m_place;
    std::unique_ptr<PlainToken> m_token;
};

} // namespace

/// The ways take turns, because every object that is there slows the next.
void benchWriting(Store &store, const TestAuthority &authority)
{
    PlainSide bare(QStringLiteral("Bare"));
    PlainSide looking(QStringLiteral("Looking"));
    Table bareTable(QStringLiteral("Writing to the token"),
                    QStringLiteral("C_CreateObject for the same objects"));
    Table lookingTable(QStringLiteral("Writing what is not there yet"),
                       QStringLiteral("a search for each of these objects and C_CreateObject"));
    constexpr int CertificateRounds = 31;
    constexpr int BundleRounds = 9;
    const auto write = [&](const auto &what) {
        store.run(&QCA::KeyStore::entryWritten, [&] { store->writeEntry(what); });
    };
    Measure::Turns certificate(3);
    const auto certificates =
        makeCertificates(authority, QStringLiteral("Written"), 3 * CertificateRounds);
    for (int i = 0; i < CertificateRounds; ++i) {
        const QVector<QByteArray> one = certificates.mid(3 * i, 3);
        const auto ours = QCA::Certificate::fromDER(one.at(0));
        certificate.time(0, [&] { write(ours); });
        certificate.time(1, [&] { writePlain(bare.token(), {one.at(1)}, false); });
        certificate.time(2, [&] { writePlain(looking.token(), {one.at(2)}, true); });
    }
    Measure::Turns bundle(3);
    for (int i = 0; i < BundleRounds; ++i) {
        const NativeBundle ours = makeBundle(authority, 3 * i);
        const NativeBundle first = makeBundle(authority, 3 * i + 1);
        const NativeBundle second = makeBundle(authority, 3 * i + 2);
        const QByteArray id = QByteArray::number(i);
        bundle.time(0, [&] { write(ours.bundle); });
        bundle.time(1, [&] { writePlain(bare.token(), first, "bare" + id, false); });
        bundle.time(2, [&] { writePlain(looking.token(), second, "looked" + id, true); });
        for (EVP_PKEY *key : {ours.key, first.key, second.key})
            EVP_PKEY_free(key);
    }
    const QString name = QStringLiteral("bundle (2 keys, 2 certificates)");
    bareTable.add(QStringLiteral("certificate"), 0, certificate.median(0), certificate.median(1));
    bareTable.add(name, 0, bundle.median(0), bundle.median(1));
    lookingTable.add(QStringLiteral("certificate"), 0, certificate.median(0),
                     certificate.median(2));
    lookingTable.add(name, 0, bundle.median(0), bundle.median(2));
    lookingTable.note(QStringLiteral(
        "Ours end when QCA has delivered the result. After each change a search makes "
        "SoftHSM read all objects of the token again, in either way of writing."));
}
