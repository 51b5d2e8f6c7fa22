// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests for kinds of keys that few tokens make, and what is left of a generation that fails: on
// a token behind the faulty module, which has GOST keys too.
#include "keystores/keystoremodel.h"
#include "qca/adapter/storewriter.h"
#include "qca/base/bounds.h"
#include "qca/keys/keys.h"
#include "requests/certificaterequest.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/requests/home.h"
#include "tests/support/marktranslator.h"
#include "tests/support/testcertificates.h"
#include "tools/keychoicemodel.h"
#include "tools/keykindmodel.h"
#include "tools/keyrequest.h"

#include <QAbstractItemModelTester>
#include <QDirIterator>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

#include <openssl/crypto.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const Home *home = nullptr;
FaultyToken *token = nullptr;
const TestAuthority *authority = nullptr;
constexpr int Patience = 60000; // ms

/// The objects of keys, those of the real token and those of GOST.
int keyObjects()
{
    QDirIterator files(token->token().path() + QStringLiteral("/gost"), {QStringLiteral("*.key")},
                       QDir::Files, QDirIterator::Subdirectories);
    int count = token->token().objectCount();
    for (; files.hasNext(); files.next())
        ++count;
    return count;
}

QString opensslText(const QString &path)
{
    return QString::fromUtf8(authority->openssl(
        {QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-noout"),
         QStringLiteral("-text"), QStringLiteral("-nameopt"),
         QStringLiteral("oid,utf8,sep_comma_plus_space"), QStringLiteral("-in"), path}));
}

QString certtoolText(const QString &path)
{
    QProcess certtool;
    certtool.start(QStringLiteral("certtool"),
                   {QStringLiteral("--crq-info"), QStringLiteral("--infile"), path});
    certtool.waitForFinished(Patience);
    return QString::fromUtf8(certtool.readAllStandardOutput());
}

} // namespace

class TestKeyRequestKinds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void offersWhatTheTokenMakes();
    void requestAndCertificate_data();
    void requestAndCertificate();
    void curveByItsName();
    void curveByNeither();
    void keysThatAreThere();
    void keyOfRequestWhoseFileIsAnother();
    void abandoned_data();
    void abandoned();

private:
    QCA::KeyStore *store() const { return m_stores->keyStoreByName(token->token().label()); }
    void fill(KeyRequest *request, const char *name) const;
    static void kinds();

    std::unique_ptr<KeyStoreModel> m_stores;
    std::unique_ptr<PinPrompt> m_prompt;
};

void TestKeyRequestKinds::initTestCase()
{
    m_stores = std::make_unique<KeyStoreModel>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    QTRY_VERIFY_WITH_TIMEOUT(store(), Patience);
}

void TestKeyRequestKinds::init()
{
    home->clearRequests();
    token->forget();
}

void TestKeyRequestKinds::cleanup()
{
    token->control();
}

void TestKeyRequestKinds::fill(KeyRequest *request, const char *name) const
{
    request->clear();
    request->addName(QStringLiteral("commonName"), QString::fromUtf8(name));
    request->addName(QStringLiteral("inn"), QStringLiteral("500100732259"));
    request->addAlternativeName(QStringLiteral("dns"), QStringLiteral("a.example.org"));
    request->addAlternativeName(QStringLiteral("dns"), QStringLiteral("b.example.org"));
    request->setKeyUsages({QStringLiteral("digitalSignature")});
    request->setPurposes({QStringLiteral("clientAuth")});
}

void TestKeyRequestKinds::kinds()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("Ed25519") << int(KeyRequest::Ed25519)
                             << QStringList{QStringLiteral("Public Key Algorithm: ED25519"),
                                            QStringLiteral("Signature Algorithm: ED25519")};
    if (!hasGostEngine())
        return;
    QTest::newRow("GOST 256") << int(KeyRequest::Gost256)
                              << QStringList{QStringLiteral("GOST R 34.10-2012 with 256 bit"),
                                             QStringLiteral("GOST R 34.11-2012 (256 bit)")};
    QTest::newRow("GOST 512") << int(KeyRequest::Gost512)
                              << QStringList{QStringLiteral("GOST R 34.10-2012 with 512 bit"),
                                             QStringLiteral("GOST R 34.11-2012 (512 bit)")};
}

void TestKeyRequestKinds::offersWhatTheTokenMakes()
{
    KeyKindModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    // Before the token has told.
    QCOMPARE(model.count(), 6);
    model.setStoreId(store()->id());
    QTRY_COMPARE(model.count(), 9);
    QList<int> kinds;
    for (int row = 0; row < model.count(); ++row) {
        kinds += model.index(row).data(KeyKindModel::KindRole).toInt();
        QVERIFY(!model.index(row).data(KeyKindModel::TitleRole).toString().isEmpty());
    }
    const QList<int> all{KeyRequest::Rsa2048, KeyRequest::Rsa3072, KeyRequest::Rsa4096,
                         KeyRequest::P256,    KeyRequest::P384,    KeyRequest::P521,
                         KeyRequest::Ed25519, KeyRequest::Gost256, KeyRequest::Gost512};
    QCOMPARE(kinds, all);
    QVERIFY(KeyKindModel::title(99).isEmpty());
}

void TestKeyRequestKinds::keysThatAreThere()
{
    KeyChoiceModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.count(), 1);
    model.setStoreId(store()->id());
    const auto ids = [&] {
        QStringList all;
        for (int row = 1; row < model.count(); ++row)
            all += model.index(row).data(KeyChoiceModel::KeyIdRole).toString();
        return all;
    };
    const QStringList before = ids();
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    // Without a name: the key comes first.
    request.prepareKey(store()->id(), KeyRequest::P256, QStringLiteral("there"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QVERIFY2(request.hasKey(), qPrintable(request.message()));
    QVERIFY(home->requestFiles().isEmpty());
    request.signAgain();
    QCOMPARE(request.error(), int(KeyRequest::WrongContents));
    const int objects = keyObjects();

    QTRY_COMPARE(model.count(), before.size() + 2);
    QVERIFY(model.index(0).data(KeyChoiceModel::KeyIdRole).toString().isEmpty());
    QStringList added = ids();
    for (const QString &id : before)
        added.removeAll(id);
    QCOMPARE(added.size(), 1);
    KeyRequest other;
    fill(&other, "Other");
    QSignalSpy otherFinished(&other, &KeyRequest::finished);
    other.takeKey(store()->id(), added.first());
    QCOMPARE(otherFinished.count(), 1);
    QVERIFY(other.hasKey());
    other.signAgain();
    QTRY_COMPARE(otherFinished.count(), 2);
    QVERIFY2(other.error() == KeyRequest::NoError, qPrintable(other.message()));
    QVERIFY(opensslText(other.path()).contains(QStringLiteral("2.5.4.3=Other")));
    QCOMPARE(keyObjects(), objects);
    other.takeKey(store()->id(), QStringLiteral("nothing"));
    QCOMPARE(other.error(), int(KeyRequest::NoKey));
    QVERIFY(!other.hasKey());
}

void TestKeyRequestKinds::requestAndCertificate_data()
{
    kinds();
}

/// Another program reads the request, an authority answers it, and the token's key takes the
/// certificate as its own; the request is signed anew by the same key.
void TestKeyRequestKinds::requestAndCertificate()
{
    QFETCH(int, kind);
    QFETCH(QStringList, texts);
    KeyRequest request;
    fill(&request, "Особый");
    const int before = keyObjects();
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.makeKey(store()->id(), kind, QStringLiteral("особый"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QVERIFY2(request.error() == KeyRequest::NoError, qPrintable(request.message()));
    QCOMPARE(keyObjects(), before + 2);
    const QString text = opensslText(request.path());
    texts += {QStringLiteral("2.5.4.3=Особый"), QStringLiteral("1.2.643.3.131.1.1=500100732259"),
              QStringLiteral("DNS:a.example.org, DNS:b.example.org"),
              QStringLiteral("TLS Web Client Authentication"), QStringLiteral("Digital Signature")};
    for (const QString &wanted : qAsConst(texts))
        QVERIFY2(text.contains(wanted), qPrintable(text));
    if (QStandardPaths::findExecutable(QStringLiteral("certtool")).isEmpty())
        qInfo("SKIP certtool is not installed");
    else if (kind == KeyRequest::Ed25519)
        for (const char *wanted :
             {"EdDSA (Ed25519)", "Особый", "DNSname: a.example.org", "DNSname: b.example.org",
              "Digital signature", "TLS WWW Client", "Self signature: verified"})
            QVERIFY2(certtoolText(request.path()).contains(QString::fromUtf8(wanted)), wanted);

    const QByteArray issued = authority->issueForRequest(request.path());
    const auto certificate =
        QCA::Certificate::fromDER(issued, nullptr, QStringLiteral("qca-norvel-openssl"));
    QVERIFY(!certificate.isNull());
    CertificateRequest saved(request.path(), m_stores.get());
    QVERIFY(saved.hasRequestKey());
    StoreWriter writer;
    QSignalSpy written(&writer, &StoreWriter::written);
    QVERIFY(writer.write(store()->id(), certificate));
    QTRY_COMPARE_WITH_TIMEOUT(written.count(), 1, Patience);
    QVERIFY(!written.first().first().toString().isEmpty());
    const auto isOwn = [&] {
        const auto entries = store()->entryList();
        return std::any_of(entries.cbegin(), entries.cend(), [&](const QCA::KeyStoreEntry &one) {
            return one.type() == QCA::KeyStoreEntry::TypeKeyBundle
                && one.certificate() == certificate;
        });
    };
    QTRY_VERIFY_WITH_TIMEOUT(isOwn(), Patience);
    KeyRequest again;
    fill(&again, "Снова");
    QSignalSpy finishedAgain(&again, &KeyRequest::finished);
    again.useKeyOfRequest(&saved);
    QTRY_COMPARE_WITH_TIMEOUT(finishedAgain.count(), 1, Patience);
    QVERIFY2(again.error() == KeyRequest::NoError, qPrintable(again.message()));
    QVERIFY(opensslText(again.path()).contains(QStringLiteral("2.5.4.3=Снова")));
}

/// Older modules know Edwards curves by their names only.
void TestKeyRequestKinds::curveByItsName()
{
    token->control("fail C_GenerateKeyPair 1 0x140"); // CKR_CURVE_NOT_SUPPORTED
    KeyRequest request;
    fill(&request, "Named");
    const int before = keyObjects();
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.makeKey(store()->id(), KeyRequest::Ed25519, QStringLiteral("named"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QVERIFY2(request.error() == KeyRequest::NoError, qPrintable(request.message()));
    QCOMPARE(token->count("C_GenerateKeyPair"), 2);
    QCOMPARE(keyObjects(), before + 2);
    QVERIFY(opensslText(request.path()).contains(QLatin1String("ED25519")));
}

void TestKeyRequestKinds::curveByNeither()
{
    token->control("fail C_GenerateKeyPair * 0x140");
    KeyRequest request;
    fill(&request, "None");
    const int before = keyObjects();
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.makeKey(store()->id(), KeyRequest::Ed25519, QStringLiteral("none"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QCOMPARE(token->count("C_GenerateKeyPair"), 2);
    // A curve with one form is asked for once.
    request.makeKey(store()->id(), KeyRequest::P256, QStringLiteral("none"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 2, Patience);
    QCOMPARE(token->count("C_GenerateKeyPair"), 3);
    QCOMPARE(keyObjects(), before);
    QVERIFY(home->requestFiles().isEmpty());
}

// A request is made anew as it was listed: its file is as large by now as files may be, and full of
// what would have to be looked through on the thread of the window.
void TestKeyRequestKinds::keyOfRequestWhoseFileIsAnother()
{
    KeyRequest first;
    fill(&first, "Listed");
    QSignalSpy made(&first, &KeyRequest::finished);
    first.makeKey(store()->id(), KeyRequest::P256, QStringLiteral("listed"));
    QTRY_COMPARE(made.count(), 1);
    QVERIFY2(first.error() == KeyRequest::NoError, qPrintable(first.message()));
    CertificateRequest listed(first.path(), m_stores.get());
    QFile file(first.path());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    const QByteArray line("-----BEGIN CERTIFICATE REQUEST-----\n");
    QVERIFY(file.write(line.repeated(MaxFileBytes / line.size())) > 0);
    file.close();
    KeyRequest second;
    fill(&second, "Again");
    QSignalSpy finished(&second, &KeyRequest::finished);
    second.useKeyOfRequest(&listed);
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY2(second.error() == KeyRequest::NoError, qPrintable(second.message()));
    QVERIFY(isSamePublicKey(CertificateRequest(second.path(), nullptr).requestPublicKey(),
                            listed.requestPublicKey()));
}

void TestKeyRequestKinds::abandoned_data()
{
    kinds();
}

/// Stopped or dropped while the token works: it keeps nothing.
void TestKeyRequestKinds::abandoned()
{
    QFETCH(int, kind);
    const int before = keyObjects();
    for (const bool isDropped : {false, true}) {
        token->forget();
        token->control("delay C_GenerateKeyPair 1 300");
        auto request = std::make_unique<KeyRequest>();
        fill(request.get(), "Abandoned");
        QSignalSpy finished(request.get(), &KeyRequest::finished);
        request->makeKey(store()->id(), kind, QStringLiteral("abandoned"));
        QVERIFY(token->waitUntilInside("C_GenerateKeyPair"));
        if (isDropped)
            request.reset();
        else
            request->cancel();
        if (!isDropped) {
            QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
            QCOMPARE(request->error(), int(KeyRequest::KeyNotMade));
        }
        QTRY_COMPARE_WITH_TIMEOUT(token->count("C_GenerateKeyPair"), 1, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(token->count("C_DestroyObject") >= 2, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(keyObjects(), before, Patience);
    }
    QVERIFY(home->requestFiles().isEmpty());
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    FaultyToken faulty(QStringLiteral("Kinds"));
    token = &faulty;
    if (!faulty.problem().isEmpty()) {
        qInfo("SKIP %s", qPrintable(faulty.problem()));
        return 0;
    }
    const TestAuthority root;
    authority = &root;
    // The engine is for the openssl programs: this process has read its configuration by then.
    OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CONFIG, nullptr);
    QFile configuration(root.file(QStringLiteral("gost.cnf")));
    if (!configuration.open(QIODevice::WriteOnly))
        return 1;
    configuration.write("openssl_conf = conf\n[conf]\nengines = engines\n[engines]\ngost = gost\n"
                        "[gost]\nengine_id = gost\ndefault_algorithms = ALL\n"
                        "[req]\ndistinguished_name = name\n[name]\n");
    configuration.close();
    qputenv("OPENSSL_CONF", QFile::encodeName(configuration.fileName()));
    qputenv("TRIVEX_FAULTY_GOST",
            QFile::encodeName(faulty.token().path() + QStringLiteral("/gost")));
    faulty.useInThisProcess();
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    const MarkTranslator translator;
    TestKeyRequestKinds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keyrequestkinds.moc"
