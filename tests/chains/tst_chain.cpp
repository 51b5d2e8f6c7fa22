// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What is found on the path of a certificate, each beside what `openssl verify` says of the same
// files.
#include "qca/x509/certificatedata.h"
#include "qca/x509/certificatefields.h"
#include "tests/chains/opensslverify.h"
#include "tests/chains/threeparties.h"
#include "tests/support/derelement.h"
#include "tests/x509/corpus.h"

#include <QStandardPaths>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;
using TrivexTest::derElement;

namespace {

/// What certtool ends with when all is well.
constexpr char CerttoolIsContent[] = "Chain verification output: Verified";

/// A case: what there is, and what comes of it at which step.
struct Case {
    ChainInput input;
    ChainVerdict verdict = ChainVerdict::Good;
    ChainReason reason = ChainReason::None; ///< the gravest of `step`
    int step = 0;
    int length = 3;
    QByteArray opensslSays = {}; ///< a part of it; empty for "OK"
};

void row(const char *name, const Case &one)
{
    QTest::newRow(name) << one;
}

/// ECDSA with SHA-256.
QByteArray signedBy(const Party &signer, const QByteArray &data)
{
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    size_t size = 256;
    QByteArray signature(int(size), '\0');
    const auto *octets = reinterpret_cast<const unsigned char *>(data.constData());
    const bool isGood =
        EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, signer.key.get()) == 1
        && EVP_DigestSign(context.get(), reinterpret_cast<unsigned char *>(signature.data()), &size,
                          octets, size_t(data.size()))
            == 1;
    return isGood ? signature.left(int(size)) : QByteArray();
}

} // namespace

Q_DECLARE_METATYPE(Case)
Q_DECLARE_METATYPE(Trivex::ChainInput)

class TestChain : public ThreePartiesTest {
    Q_OBJECT
private Q_SLOTS:
    void paths_data();
    void paths();
    void authorities_data();
    void authorities();
    void strengths_data();
    void strengths();
    void lists_data();
    void lists();
    void revocation();
    void revokedLater();
    void forgedListHidesNothing();
    void severalFindings();
    void keyOfAnybody();
    void twoAlgorithms();
    void asCerttoolSays_data();
    void asCerttoolSays();

private:
    static void compare();
};

void TestChain::paths_data()
{
    QTest::addColumn<Case>("one");
    const ChainCandidate middle = m_middle.candidate();
    const ChainCandidate root = m_root.anchor();
    row("good", {inputOf(m_leaf, {middle, root})});
    const Party old = make({"Old", -30, -2}, &m_middle);
    row("expired",
        {inputOf(old, {middle, root}), ChainVerdict::Bad, ChainReason::Expired, 0, 3,
         "certificate has expired"});
    ChainInput then = inputOf(old, {middle, root});
    then.date = QDateTime::currentDateTimeUtc().addDays(-5);
    row("not expired then", {then});
    then = inputOf(m_leaf, {middle, root});
    then.date = QDateTime::currentDateTimeUtc().addDays(60);
    row("expired at a date",
        {then, ChainVerdict::Bad, ChainReason::Expired, 0, 3, "certificate has expired"});
    const Party later = make({"Later", 5, 30}, &m_middle);
    row("not yet valid",
        {inputOf(later, {middle, root}), ChainVerdict::Bad, ChainReason::NotYetValid, 0, 3,
         "not yet valid"});
    const Party oldMiddle = make({"Old middle", -30, -2, authority()}, &m_root);
    const Party below = make({"Below", -1, 30}, &oldMiddle);
    row("issuer expired",
        {inputOf(below, {oldMiddle.candidate(), root}), ChainVerdict::Bad, ChainReason::Expired, 1,
         3, "certificate has expired"});
    row("issuer unknown",
        {inputOf(m_leaf, {root}), ChainVerdict::Unknown, ChainReason::IssuerMissing, 0, 1,
         "unable to get local issuer"});
    row("root unknown",
        {inputOf(m_leaf, {middle}), ChainVerdict::Unknown, ChainReason::IssuerMissing, 1, 2,
         "unable to get local issuer"});
    row("root not trusted",
        {inputOf(m_leaf, {middle, m_root.candidate()}), ChainVerdict::Bad,
         ChainReason::RootNotTrusted, 2, 3, "self-signed certificate in"});
    const Party alone = make({"Alone"}, nullptr);
    row("self-signed",
        {inputOf(alone, {}), ChainVerdict::Bad, ChainReason::SelfSigned, 0, 1,
         "self-signed certificate"});
    row("self-signed, trusted",
        {inputOf(alone, {alone.anchor()}), ChainVerdict::Good, ChainReason::None, 0, 1, ""});
    row("a root", {inputOf(m_root, {root}), ChainVerdict::Good, ChainReason::None, 0, 1, ""});
    Party forged = make({"Forged", -1, 30}, &m_middle);
    X509_set_serialNumber(forged.certificate.get(),
                          X509_get_serialNumber(m_root.certificate.get()));
    row("wrong signature",
        {inputOf(forged, {middle, root}), ChainVerdict::Bad, ChainReason::WrongSignature, 0, 3,
         "signature failure"});
    // Whoever trusts a root does so without its own signature.
    const Party sha1Root = make({"SHA-1 root", -10, Year, authority(), EVP_sha1()}, nullptr);
    const Party ofSha1Root = make({"Leaf", -1, 30}, &sha1Root);
    row("trusted root of SHA-1",
        {inputOf(ofSha1Root, {sha1Root.anchor()}), ChainVerdict::Good, ChainReason::None, 0, 2});
    Party spoilt = make({"Spoilt root", -10, Year, authority()}, nullptr);
    const Party ofSpoilt = make({"Leaf", -1, 30, {}, EVP_sha256(), false}, &spoilt);
    X509_sign(spoilt.certificate.get(), m_root.key.get(), EVP_sha256());
    row("trusted root with a wrong signature",
        {inputOf(ofSpoilt, {spoilt.anchor()}), ChainVerdict::Good, ChainReason::None, 0, 2});
    const Party otherMiddle = make({"Middle", -10, Year, authority()}, &m_root);
    row("issuer with another key",
        {inputOf(m_leaf, {otherMiddle.candidate(), root}), ChainVerdict::Unknown,
         ChainReason::IssuerDiffers, 0, 1, "unable to get local issuer"});
}

void TestChain::paths()
{
    compare();
}

void TestChain::authorities_data()
{
    QTest::addColumn<Case>("one");
    const ChainCandidate middle = m_middle.candidate();
    const ChainCandidate root = m_root.anchor();
    const Party person = make({"Person", -10, Year, authority("critical,CA:FALSE")}, &m_root);
    const Party child = make({"Child", -1, 30}, &person);
    row("no authority",
        {inputOf(child, {person.candidate(), root}), ChainVerdict::Bad, ChainReason::NotAuthority,
         1, 3, "invalid CA"});
    auto usages = authority();
    usages += {NID_key_usage, "critical,digitalSignature"};
    const Party noSigning = make({"No signing", -10, Year, usages}, &m_root);
    const Party ofNoSigning = make({"Child", -1, 30}, &noSigning);
    row("may not sign certificates",
        {inputOf(ofNoSigning, {noSigning.candidate(), root}), ChainVerdict::Bad,
         ChainReason::NotAuthority, 1, 3, "error"});
    const Party shortRoot =
        make({"Short", -10, Year, authority("critical,CA:TRUE,pathlen:0")}, nullptr);
    const Party ofShort = make({"Of short", -10, Year, authority()}, &shortRoot);
    const Party leafOfShort = make({"Leaf", -1, 30}, &ofShort);
    row("path length",
        {inputOf(leafOfShort, {ofShort.candidate(), shortRoot.anchor()}), ChainVerdict::Bad,
         ChainReason::TooManyBelow, 2, 3, "path length constraint exceeded"});
    auto narrow = authority();
    narrow += {NID_name_constraints, "critical,permitted;DNS:example.org"};
    const Party narrowRoot = make({"Narrow", -10, Year, narrow}, nullptr);
    const Party outside =
        make({"Outside", -1, 30, {{NID_subject_alt_name, "DNS:www.example.com"}}}, &narrowRoot);
    row("name constraints",
        {inputOf(outside, {narrowRoot.anchor()}), ChainVerdict::Bad, ChainReason::NameNotAllowed, 0,
         2, "permitted subtree violation"});
}

void TestChain::authorities()
{
    compare();
}

void TestChain::strengths_data()
{
    QTest::addColumn<Case>("one");
    const ChainCandidate middle = m_middle.candidate();
    const ChainCandidate root = m_root.anchor();
    const Party rsaRoot = make({"RSA root", -10, Year, authority()}, nullptr, rsaKey(2048));
    for (const auto &weak : std::initializer_list<std::pair<const char *, const EVP_MD *>>{
             {"SHA-1", EVP_sha1()}, {"MD5", EVP_md5()}}) {
        const Party byWeak = make({"Weak", -1, 30, {}, weak.second}, &rsaRoot);
        row(weak.first,
            {inputOf(byWeak, {rsaRoot.anchor()}), ChainVerdict::Bad, ChainReason::WeakSignature, 0,
             2, "too weak"});
    }
    const Party small = make({"Small", -1, 30}, &m_middle, rsaKey(1024));
    row("RSA 1024",
        {inputOf(small, {middle, root}), ChainVerdict::Bad, ChainReason::WeakKey, 0, 3,
         "key too weak"});
    const Party smallRoot = make({"Small root", -10, Year, authority()}, nullptr, rsaKey(1024));
    const Party ofSmall = make({"Of small", -1, 30}, &smallRoot);
    row("RSA 1024 above",
        {inputOf(ofSmall, {smallRoot.anchor()}), ChainVerdict::Bad, ChainReason::WeakKey, 1, 2,
         "key too weak"});
    const Party mailer =
        make({"Mailer", -1, 30, {{NID_ext_key_usage, "emailProtection"}}}, &m_middle);
    ChainInput server = inputOf(mailer, {middle, root});
    row("any purpose", {server});
    server.purpose = ChainPurpose::WebServer;
    row("wrong purpose", {server, ChainVerdict::Bad, ChainReason::WrongPurpose, 0, 3, "purpose"});
    const Party odd = make({"Odd", -1, 30, {{NID_aes_256_cbc, "critical,DER:0500"}}}, &m_middle);
    row("unknown extension",
        {inputOf(odd, {middle, root}), ChainVerdict::Bad, ChainReason::UnknownExtension, 0, 3,
         "unhandled critical extension"});
}

void TestChain::strengths()
{
    compare();
}

void TestChain::lists_data()
{
    QTest::addColumn<Case>("one");
    const ChainCandidate middle = m_middle.candidate();
    const ChainCandidate root = m_root.anchor();
    row("with an empty list", {inputOf(m_leaf, {middle, root}, {list(m_middle, {})})});
    row("a stale list",
        {inputOf(m_leaf, {middle, root}, {list(m_middle, {}, -20, -5)}), ChainVerdict::Doubtful,
         ChainReason::ListExpired, 0, 3, "CRL has expired"});
    row("a list of tomorrow",
        {inputOf(m_leaf, {middle, root}, {list(m_middle, {}, 1, 5)}), ChainVerdict::Doubtful,
         ChainReason::ListNotYetValid, 0, 3, "CRL is not yet valid"});
}

void TestChain::lists()
{
    compare();
}

void TestChain::compare()
{
    QFETCH(Case, one);
    if (QStandardPaths::findExecutable(QStringLiteral("openssl")).isEmpty())
        QSKIP("SKIP: there is no openssl to compare with");
    const QByteArray openssl = verifiedByOpenssl(one.input);
    if (one.opensslSays.isEmpty())
        QVERIFY2(openssl.contains(": OK"), openssl.constData());
    else
        QVERIFY2(openssl.contains(one.opensslSays), openssl.constData());
    const ChainResult result = checkChain(one.input);
    QVERIFY2(result.steps.size() == one.length, described(result).constData());
    QVERIFY2(result.verdict == one.verdict, described(result).constData());
    const ChainStep &step = result.steps.at(one.step);
    QVERIFY2((step.findings.isEmpty() ? ChainReason::None : step.findings.constFirst().reason)
                 == one.reason,
             described(result).constData());
    for (int i = 0; i < result.steps.size(); ++i)
        QVERIFY2(i == one.step || result.steps.at(i).findings.isEmpty(),
                 described(result).constData());
}

void TestChain::revocation()
{
    const QByteArray lists = list(m_middle, {{&m_leaf, -3, CRL_REASON_KEY_COMPROMISE}});
    const ChainInput input = inputOf(m_leaf, {m_middle.candidate(), m_root.anchor()}, {lists});
    if (!QStandardPaths::findExecutable(QStringLiteral("openssl")).isEmpty())
        QVERIFY(verifiedByOpenssl(input).contains("certificate revoked"));
    const ChainResult result = checkChain(input);
    QCOMPARE(result.verdict, ChainVerdict::Bad);
    QVERIFY(result.steps.constFirst().isListed);
    QVERIFY(!result.steps.at(1).isListed);
    const ChainFinding finding = result.steps.constFirst().findings.constFirst();
    QCOMPARE(finding.reason, ChainReason::Revoked);
    QCOMPARE(finding.revocation, CRL_REASON_KEY_COMPROMISE);
    QCOMPARE(finding.code, X509_V_ERR_CERT_REVOKED);
    QCOMPARE(finding.date.date(), QDateTime::currentDateTimeUtc().addDays(-3).date());
    // What is revoked stays so, whether or not the list is still good.
    const QByteArray stale = list(m_middle, {{&m_leaf, -30}}, -29, -20);
    const ChainResult later =
        checkChain(inputOf(m_leaf, {m_middle.candidate(), m_root.anchor()}, {stale}));
    QCOMPARE(later.steps.constFirst().findings.constFirst().reason, ChainReason::Revoked);
    QCOMPARE(later.steps.constFirst().findings.constFirst().revocation, NoRevocationReason);
    QCOMPARE(later.steps.constFirst().findings.constFirst().date.date(),
             QDateTime::currentDateTimeUtc().addDays(-30).date());
    QCOMPARE(later.steps.constFirst().findings.size(), 2);
    // An issuer is revoked by the list of its own issuer.
    const ChainResult above = checkChain(inputOf(m_leaf, {m_middle.candidate(), m_root.anchor()},
                                                 {list(m_root, {{&m_middle, -3}})}));
    QCOMPARE(above.verdict, ChainVerdict::Bad);
    QCOMPARE(above.steps.at(1).findings.constFirst().reason, ChainReason::Revoked);
    QCOMPARE(above.steps.constFirst().verdict, ChainVerdict::Good);
}

void TestChain::revokedLater()
{
    const Party leaf = make({"Leaf", -100, 30}, &m_middle);
    ChainInput input =
        inputOf(leaf, {m_middle.candidate(), m_root.anchor()}, {list(m_middle, {{&leaf, -3}})});
    input.date = QDateTime::currentDateTimeUtc().addDays(-5);
    const ChainResult result = checkChain(input);
    QVERIFY2(result.verdict == ChainVerdict::Doubtful, described(result).constData());
    QCOMPARE(result.steps.constFirst().findings.constFirst().reason, ChainReason::RevokedLater);
    QCOMPARE(result.steps.constFirst().findings.size(), 1);
}

// libcrypto takes the newest list of a name; one that anybody made must not hide the real one.
void TestChain::forgedListHidesNothing()
{
    const Party stranger = make({"Middle", -10, Year, authority()}, nullptr);
    const QByteArray real = list(m_middle, {{&m_leaf, -3}}, -3, 30);
    const QByteArray forged = listSignedBy(m_middle, stranger, {}, -1, 30);
    const QVector<ChainCandidate> candidates = {m_middle.candidate(), m_root.anchor(),
                                                stranger.candidate()};
    const ChainResult result = checkChain(inputOf(m_leaf, candidates, {forged, real}));
    QVERIFY2(result.verdict == ChainVerdict::Bad, described(result).constData());
    QCOMPARE(result.steps.constFirst().findings.constFirst().reason, ChainReason::Revoked);
    // Nor does a forged one revoke.
    const ChainResult spared = checkChain(
        inputOf(m_leaf, candidates, {listSignedBy(m_middle, stranger, {{&m_leaf, -3}}, -1, 30)}));
    QVERIFY2(spared.verdict == ChainVerdict::Doubtful, described(spared).constData());
    QCOMPARE(spared.steps.constFirst().findings.constFirst().reason, ChainReason::ListNotSigned);
    QVERIFY(!spared.steps.constFirst().isListed);
}

void TestChain::severalFindings()
{
    const Party old = make({"Old", -30, -2, {}, EVP_sha1()}, &m_middle);
    const ChainResult result = checkChain(
        inputOf(old, {m_middle.candidate(), m_root.candidate()}, {list(m_middle, {{&old, -3}})}));
    QSet<int> reasons;
    for (const ChainFinding &one : result.steps.constFirst().findings)
        reasons.insert(int(one.reason));
    QCOMPARE(reasons,
             (QSet<int>{int(ChainReason::Expired), int(ChainReason::WeakSignature),
                        int(ChainReason::Revoked)}));
    QCOMPARE(result.steps.last().findings.constFirst().reason, ChainReason::RootNotTrusted);
}

void TestChain::keyOfAnybody()
{
    const PKeyHandle one = [] {
        const Handle<OSSL_PARAM_BLD, OSSL_PARAM_BLD_free> builder(OSSL_PARAM_BLD_new());
        PKeyHandle whole = rsaKey(2048);
        BIGNUM *number = nullptr;
        EVP_PKEY_get_bn_param(whole.get(), "n", &number);
        const BigNumHandle modulus(number);
        const BigNumHandle exponent(BN_new());
        BN_one(exponent.get());
        OSSL_PARAM_BLD_push_BN(builder.get(), "n", modulus.get());
        OSSL_PARAM_BLD_push_BN(builder.get(), "e", exponent.get());
        const ParamsHandle parameters(OSSL_PARAM_BLD_to_param(builder.get()));
        const KeyContextHandle context(EVP_PKEY_CTX_new_from_name(nullptr, "RSA", nullptr));
        EVP_PKEY *key = nullptr;
        EVP_PKEY_fromdata_init(context.get());
        EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_PUBLIC_KEY, parameters.get());
        return PKeyHandle(key);
    }();
    QVERIFY(one);
    // Trusted by mistake, it still vouches for nobody.
    const Party signer = make({"Anybody", -10, Year, authority()}, &m_root);
    Party forgeable = make({"Anybody", -10, Year, authority()}, &m_root, share(signer.key.get()));
    X509_set_pubkey(forgeable.certificate.get(), one.get());
    X509_sign(forgeable.certificate.get(), m_root.key.get(), EVP_sha256());
    const Party leaf = make({"Leaf", -1, 30}, &signer);
    const ChainResult result = checkChain(inputOf(leaf, {forgeable.candidate(), m_root.anchor()}));
    QVERIFY2(result.verdict != ChainVerdict::Good, described(result).constData());
    // Nor is anybody known by it.
    const ChainResult own = checkChain(inputOf(forgeable, {m_root.anchor()}));
    QVERIFY2(own.verdict == ChainVerdict::Bad, described(own).constData());
    QCOMPARE(own.steps.constFirst().findings.constFirst().reason, ChainReason::KeyOfAnybody);
}

// What is signed names the algorithm, and so does what is beside it. Where these differ, whoever
// has changed the outer one has chosen how the signature is looked at.
void TestChain::twoAlgorithms()
{
    const QByteArray ecdsaSha256 = QByteArray::fromHex("06082a8648ce3d040302");
    const QByteArray ecdsaSha384 = QByteArray::fromHex("06082a8648ce3d040303");
    const auto issuer = CertificateData::fromDer(m_middle.der());
    CertificateFields fields;
    const QByteArray leaf = m_leaf.der();
    QVERIFY(findCertificateFields(Der::sliceOf(leaf), &fields));
    QCOMPARE(fields.algorithm.whole.bytes(), derElement(0x30, ecdsaSha256));
    for (const bool differ : {false, true}) {
        QByteArray body = fields.body.whole.bytes();
        if (differ)
            body.replace(body.indexOf(ecdsaSha256), ecdsaSha256.size(), ecdsaSha384);
        const QByteArray der = derElement(0x30,
                                          body + derElement(0x30, ecdsaSha256)
                                              + derElement(0x03, '\0' + signedBy(m_middle, body)));
        const auto issued = CertificateData::fromDer(der);
        QVERIFY(issued);
        QCOMPARE(issuer->checkIssued(*issued), differ ? SignatureState::Bad : SignatureState::Good);
    }
}

void TestChain::asCerttoolSays_data()
{
    QTest::addColumn<ChainInput>("input");
    QTest::addColumn<QByteArray>("word");
    const QVector<ChainCandidate> all = {m_middle.candidate(), m_root.anchor()};
    const Party old = make({"Old", -30, -2}, &m_middle);
    QTest::newRow("good") << inputOf(m_leaf, all) << QByteArray(CerttoolIsContent);
    QTest::newRow("expired") << inputOf(old, all) << QByteArray("expired");
    QTest::newRow("revoked") << inputOf(m_leaf, all, {list(m_middle, {{&m_leaf, -3}})})
                             << QByteArray("revoked");
    QTest::newRow("issuer unknown")
        << inputOf(m_leaf, {m_root.anchor()}) << QByteArray("issuer is unknown");
    const Party weak = make({"Weak", -1, 30, {}, EVP_sha1()}, &m_middle);
    QTest::newRow("SHA-1") << inputOf(weak, all) << QByteArray("insecure algorithm");
}

// Another library finds the same.
void TestChain::asCerttoolSays()
{
    QFETCH(ChainInput, input);
    QFETCH(QByteArray, word);
    if (QStandardPaths::findExecutable(QStringLiteral("certtool")).isEmpty())
        QSKIP("SKIP: there is no certtool to compare with");
    const QByteArray said = verifiedByCerttool(input);
    QVERIFY2(said.contains(word), said.constData());
    QCOMPARE(checkChain(input).verdict == ChainVerdict::Good, said.contains(CerttoolIsContent));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestChain test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chain.moc"
