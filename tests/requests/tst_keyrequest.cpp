// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests with all that an authority may want, for keys of a real software token; the openssl
// program says what is in them.
#include "keystores/keystoremodel.h"
#include "qca/keys/keys.h"
#include "qca/questions/storedanswers.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/infotypes.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/requests/home.h"
#include "tests/support/marktranslator.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"
#include "tools/keyrequest.h"
#include "tools/subjectattributes.h"

#include <QSignalSpy>
#include <QTextCodec>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const Home *home = nullptr;
const TestToken *token = nullptr;
const QString OtherToken = QStringLiteral("Other");
const QString CyrillicPin = QStringLiteral("секрет");
constexpr int Patience = 60000; // ms

bool addCyrillicToken(TestToken *beside)
{
    // The tool takes its arguments as they are.
    QTextCodec *const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const bool isMade = beside->addToken(OtherToken)
        && !beside
                ->tool({QStringLiteral("--token-label"), OtherToken, QStringLiteral("--change-pin"),
                        QStringLiteral("--new-pin"), CyrillicPin})
                .isNull();
    QTextCodec::setCodecForLocale(before);
    return isMade;
}

/// What openssl prints of a request, after checking its signature; nothing for a bad one.
QString shown(const QString &path, const char *what = "-text")
{
    const TestAuthority authority;
    return QString::fromUtf8(authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-noout"),
         QString::fromLatin1(what), QStringLiteral("-nameopt"),
         QStringLiteral("oid,utf8,sep_comma_plus_space"), QStringLiteral("-in"), path}));
}

void fill(KeyRequest *request, const char *commonName)
{
    request->clear();
    request->addName(QStringLiteral("commonName"), QString::fromUtf8(commonName));
}

} // namespace

class TestKeyRequest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void refusesWrongContents_data();
    void refusesWrongContents();
    void keyKinds_data();
    void keyKinds();
    void everyAttribute();
    void otherNamesAndUsages();
    void sameListAsAllOthers();
    void existingKeys();
    void withoutKey();
    void notSavedAndAgain();
    void failureForgetsTheKeyBefore();
    void requestAfterAKeyAlone();
    void refusedPinIsForgotten();
    void takesPinInUtf8();
    void droppedMeanwhile();

private:
    QString storeId() const;
    QString make(KeyRequest *request, int kind = KeyRequest::P256);

    std::unique_ptr<KeyStoreModel> m_stores;
    std::unique_ptr<PinPrompt> m_prompt;
};

void TestKeyRequest::initTestCase()
{
    m_stores = std::make_unique<KeyStoreModel>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    QTRY_VERIFY_WITH_TIMEOUT(!storeId().isEmpty(), Patience);
}

void TestKeyRequest::init()
{
    home->clearRequests();
}

QString TestKeyRequest::storeId() const
{
    const QCA::KeyStore *store = m_stores->keyStoreByName(token->label());
    return store ? store->id() : QString();
}

/// The path of the request that it made; empty on failure.
QString TestKeyRequest::make(KeyRequest *request, int kind)
{
    QSignalSpy finished(request, &KeyRequest::finished);
    request->makeKey(storeId(), kind, QStringLiteral("rich"));
    if (finished.isEmpty() && !finished.wait(Patience))
        return {};
    return request->error() == KeyRequest::NoError ? request->path() : QString();
}

void TestKeyRequest::refusesWrongContents_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("field");
    QTest::newRow("nothing") << QByteArray("{}") << QString();
    QTest::newRow("other names alone")
        << QByteArray(R"({"alternativeNames":[{"type":"dns","value":"a.example.org"}]})")
        << QString();
    QTest::newRow("country") << QByteArray(R"({"subject":[{"type":"commonName","value":"A"},
                                              {"type":"country","value":"RUS"}]})")
                             << QStringLiteral("country");
    QTest::newRow("address") << QByteArray(R"({"subject":[{"type":"commonName","value":"A"}],
                                 "alternativeNames":[{"type":"ip","value":"1.2.3"}]})")
                             << QStringLiteral("ip");
    QTest::newRow("usage") << QByteArray(R"({"subject":[{"type":"commonName","value":"A"}],
                                             "keyUsage":["everything"]})")
                           << QStringLiteral("everything");
    QTest::newRow("purpose") << QByteArray(R"({"subject":[{"type":"commonName","value":"A"}],
                                               "extendedKeyUsage":["country"]})")
                             << QStringLiteral("country");
}

void TestKeyRequest::refusesWrongContents()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, field);
    const int objects = token->objectCount();
    KeyRequest request;
    request.setContents(RequestContents::fromJson(QJsonDocument::fromJson(json).object()));
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.makeKey(storeId(), KeyRequest::P256, QStringLiteral("none"));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(request.error(), int(KeyRequest::WrongContents));
    QCOMPARE(request.field(), field);
    QVERIFY(!request.message().isEmpty());
    QVERIFY(!request.isRunning());
    QCOMPARE(token->objectCount(), objects);
    QVERIFY(home->requestFiles().isEmpty());
}

void TestKeyRequest::keyKinds_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("texts");
    const auto row = [](const char *name, int kind, const QStringList &texts) {
        QTest::newRow(name) << kind << texts;
    };
    const QString exponent = QStringLiteral("Exponent: 65537");
    row("RSA 2048", KeyRequest::Rsa2048, {QStringLiteral("(2048 bit)"), exponent});
    row("RSA 3072", KeyRequest::Rsa3072, {QStringLiteral("(3072 bit)"), exponent});
    row("RSA 4096", KeyRequest::Rsa4096, {QStringLiteral("(4096 bit)"), exponent});
    row("P-256", KeyRequest::P256,
        {QStringLiteral("NIST CURVE: P-256"), QStringLiteral("ecdsa-with-SHA256")});
    row("P-384", KeyRequest::P384,
        {QStringLiteral("NIST CURVE: P-384"), QStringLiteral("ecdsa-with-SHA384")});
    row("P-521", KeyRequest::P521,
        {QStringLiteral("NIST CURVE: P-521"), QStringLiteral("ecdsa-with-SHA512")});
    row("Ed25519", KeyRequest::Ed25519,
        {QStringLiteral("Public Key Algorithm: ED25519"),
         QStringLiteral("Signature Algorithm: ED25519")});
}

void TestKeyRequest::keyKinds()
{
    QFETCH(int, kind);
    QFETCH(QStringList, texts);
    KeyRequest request;
    fill(&request, "Kind");
    const int objects = token->objectCount();
    const QString path = make(&request, kind);
    QVERIFY2(!path.isEmpty(), qPrintable(request.message()));
    QCOMPARE(path, home->requests().filePath(QStringLiteral("Kind.csr")));
    QCOMPARE(token->objectCount(), objects + 2);
    const QString text = shown(path);
    for (const QString &wanted : texts)
        QVERIFY2(text.contains(wanted), qPrintable(text));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(request.pem().toLatin1(), file.readAll());
    QVERIFY(request.message().isEmpty());
}

void TestKeyRequest::everyAttribute()
{
    const QMap<ValueRule, QString> samples{
        {ValueRule::Text, QString::fromUtf8("Текст")},
        {ValueRule::Country, QStringLiteral("RU")},
        {ValueRule::Printable, QStringLiteral("+7 1")},
        {ValueRule::Mail, QStringLiteral("a@example.org")},
        {ValueRule::Host, QStringLiteral("example")},
        {ValueRule::Inn, QStringLiteral("500100732259")},
        {ValueRule::Innle, QStringLiteral("7707083893")},
        {ValueRule::Ogrn, QStringLiteral("1027700132195")},
        {ValueRule::Ogrnip, QStringLiteral("304500116000157")},
        {ValueRule::Snils, QStringLiteral("112-233-445 95")},
    };
    KeyRequest request;
    QStringList expected;
    for (const QString &type : KeyRequest::nameTypes()) {
        const SubjectAttribute *attribute = findSubjectAttribute(type);
        const QString value = samples.value(attribute->rule);
        QVERIFY2(!value.isEmpty(), qPrintable(type));
        request.addName(type, value);
        expected.append(QString::fromLatin1(attribute->oid) + QLatin1Char('=')
                        + normalized(attribute->rule, value));
    }
    request.addName(QStringLiteral("1.2.3.4.5"), QStringLiteral("own"));
    expected.append(QStringLiteral("1.2.3.4.5=own"));
    request.addName(QStringLiteral("locality"), QString());
    const QString path = make(&request);
    QVERIFY2(!path.isEmpty(), qPrintable(request.message()));
    const QString subject = shown(path, "-subject").trimmed();
    QCOMPARE(subject.mid(subject.indexOf(QLatin1Char('=')) + 1)
                 .replace(QLatin1String("\\+"), QLatin1String("+"))
                 .split(QStringLiteral(", ")),
             expected);
    const TestAuthority authority;
    const QByteArray parsed =
        authority.openssl({QStringLiteral("asn1parse"), QStringLiteral("-in"), path});
    for (const char *written : {"NUMERICSTRING     :500100732259", "NUMERICSTRING     :11223344595",
                                "NUMERICSTRING     :1027700132195", "PRINTABLESTRING   :RU",
                                "PRINTABLESTRING   :+7 1", "IA5STRING         :a@example.org"})
        QVERIFY2(parsed.contains(written), written);
}

void TestKeyRequest::otherNamesAndUsages()
{
    KeyRequest request;
    fill(&request, "www.example.org");
    request.addAlternativeName(QStringLiteral("dns"), QStringLiteral("www.example.org"));
    request.addAlternativeName(QStringLiteral("dns"), QString::fromUtf8("*.пример.рф"));
    request.addAlternativeName(QStringLiteral("ip"), QStringLiteral("2001:db8::1"));
    request.addAlternativeName(QStringLiteral("email"), QStringLiteral("a@example.org"));
    request.addAlternativeName(QStringLiteral("uri"), QStringLiteral("https://example.org/"));
    request.addAlternativeName(QStringLiteral("dns"), QString());
    request.setKeyUsages({QStringLiteral("digitalSignature"), QStringLiteral("nonRepudiation")});
    request.setPurposes(
        {QStringLiteral("serverAuth"), QStringLiteral("clientAuth"), QStringLiteral("1.2.3.5.8")});
    const QString path = make(&request);
    QVERIFY2(!path.isEmpty(), qPrintable(request.message()));
    const QString text = shown(path);
    for (const char *wanted :
         {"DNS:www.example.org, DNS:*.xn--e1afmkfd.xn--p1ai, IP Address:2001:DB8:0:0:0:0:0:1, "
          "email:a@example.org, URI:https://example.org/",
          "X509v3 Key Usage: critical", "Digital Signature, Non Repudiation",
          "TLS Web Server Authentication, TLS Web Client Authentication, 1.2.3.5.8"})
        QVERIFY2(text.contains(QLatin1String(wanted)), qPrintable(text));
}

void TestKeyRequest::sameListAsAllOthers()
{
    CertificateRequestModel list;
    list.setKeyStoreModel(m_stores.get());
    KeyRequest request;
    fill(&request, "First");
    request.addName(QStringLiteral("inn"), QStringLiteral("500100732259"));
    request.addAlternativeName(QStringLiteral("dns"), QStringLiteral("a.example.org"));
    const QString path = make(&request);
    QVERIFY2(!path.isEmpty(), qPrintable(request.message()));
    QTRY_COMPARE(list.rowCount(), 1);
    auto *saved =
        list.index(0).data(CertificateRequestModel::CertificateRole).value<CertificateRequest *>();
    QCOMPARE(saved->filePath(), path);
    QCOMPARE(saved->commonName(), QStringLiteral("First"));

    // Edited: the rest stays.
    QCA::CertificateInfo info = saved->requestInfo();
    QCOMPARE(infoValue(info, InnInfo), QStringLiteral("500100732259"));
    info.remove(infoType(CommonNameInfo));
    info.insert(infoType(CommonNameInfo), QStringLiteral("Second"));
    saved->setRequestInfo(info);
    saved->setEditMode(true);
    const QString edited = home->requests().filePath(QStringLiteral("Second.csr"));
    QTRY_COMPARE(home->requestFiles(), QStringList{QStringLiteral("Second.csr")});
    QVERIFY(shown(edited).contains(QLatin1String("DNS:a.example.org")));
    QTRY_COMPARE(list.index(0).data(CertificateRequestModel::NameRole).toString(),
                 QStringLiteral("Second"));

    // Matched: the certificate that comes takes it away.
    const TestAuthority authority;
    const QByteArray issued = authority.issueForRequest(edited);
    QVERIFY(!issued.isEmpty());
    Q_EMIT m_stores->keyBundleWritten(
        QCA::Certificate::fromDER(issued, nullptr, QStringLiteral("qca-norvel-openssl"))
            .subjectPublicKey());
    QTRY_COMPARE(list.rowCount(), 0);
    QVERIFY(home->requestFiles().isEmpty());

    // Removed, and numbered where the name is taken.
    fill(&request, "Third");
    QVERIFY(!make(&request).isEmpty());
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.signAgain();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(request.path(), home->requests().filePath(QStringLiteral("Third (1).csr")));
    QTRY_COMPARE(list.rowCount(), 2);
    list.remove(0);
    QTRY_COMPARE(list.rowCount(), 1);
}

/// Of a saved request, and of a certificate.
void TestKeyRequest::existingKeys()
{
    KeyRequest request;
    fill(&request, "Made");
    const QString made = make(&request);
    QVERIFY(!made.isEmpty());
    CertificateRequest saved(made, m_stores.get());
    const int objects = token->objectCount();
    KeyRequest second;
    fill(&second, "Again");
    QSignalSpy finished(&second, &KeyRequest::finished);
    second.useKeyOfRequest(&saved);
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY2(second.error() == KeyRequest::NoError, qPrintable(second.message()));
    QCOMPARE(token->objectCount(), objects);
    QVERIFY(!shown(second.path()).isEmpty());
    QVERIFY(isSamePublicKey(CertificateRequest(second.path(), nullptr).requestPublicKey(),
                            saved.requestPublicKey()));
}

void TestKeyRequest::withoutKey()
{
    KeyRequest request;
    fill(&request, "Nobody");
    QObject nothing;
    const std::vector<std::function<void()>> ways{
        [&] { request.useEntry(nullptr); },
        [&] { request.useEntry(&nothing); },
        [&] { request.useKeyOfRequest(nullptr); },
        [&] { request.useKeyOfRequest(&nothing); },
        [&] { request.signAgain(); },
    };
    for (const auto &way : ways) {
        QSignalSpy finished(&request, &KeyRequest::finished);
        way();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(request.error(), int(KeyRequest::NoKey));
        QVERIFY(!request.message().isEmpty());
    }
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.makeKey(QString(), KeyRequest::P256, {});
    request.makeKey(storeId(), 99, {});
    QTRY_COMPARE(finished.count(), 2);
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(home->requestFiles().isEmpty());
}

void TestKeyRequest::notSavedAndAgain()
{
    KeyRequest request;
    fill(&request, "Late");
    QVERIFY(home->requests().removeRecursively());
    QFile blocker(home->path() + QStringLiteral("/CertificateRequest"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QVERIFY(make(&request).isEmpty());
    QCOMPARE(request.error(), int(KeyRequest::NotSaved));
    QVERIFY(blocker.remove());
    home->clearRequests();
    const int objects = token->objectCount();
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.signAgain();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(request.error(), int(KeyRequest::NoError));
    QCOMPARE(token->objectCount(), objects);
    QCOMPARE(home->requestFiles(), QStringList{QStringLiteral("Late.csr")});
}

/// A request must not be made for a key that was meant for another one.
void TestKeyRequest::failureForgetsTheKeyBefore()
{
    KeyRequest request;
    fill(&request, "First");
    QVERIFY(!make(&request).isEmpty());
    fill(&request, "Second");
    QVERIFY(make(&request, 99).isEmpty());
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(!request.hasKey());
    request.signAgain();
    QCOMPARE(request.error(), int(KeyRequest::NoKey));
    QCOMPARE(home->requestFiles(), QStringList{QStringLiteral("First.csr")});
}

void TestKeyRequest::requestAfterAKeyAlone()
{
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.prepareKey(storeId(), KeyRequest::P256, QStringLiteral("alone"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QCOMPARE(request.error(), int(KeyRequest::NoError));
    QVERIFY(home->requestFiles().isEmpty());
    fill(&request, "Whole");
    QVERIFY(!make(&request).isEmpty());
    QCOMPARE(home->requestFiles(), QStringList{QStringLiteral("Whole.csr")});
}

/// Where nothing is made, nobody takes the PIN that was given for it: it must not stay.
void TestKeyRequest::refusedPinIsForgotten()
{
    KeyRequest request;
    request.prepareKey(storeId(), 99, QStringLiteral("refused"), QStringLiteral("1234"));
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(!takeStoredAnswers(storeId()));
}

/// A token has its PIN in UTF-8, whatever the encoding of the user's locale is.
void TestKeyRequest::takesPinInUtf8()
{
    QTRY_VERIFY_WITH_TIMEOUT(m_stores->keyStoreByName(OtherToken), Patience);
    const QString store = m_stores->keyStoreByName(OtherToken)->id();
    const auto restore = qScopeGuard(
        [before = QTextCodec::codecForLocale()] { QTextCodec::setCodecForLocale(before); });
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("KOI8-R"));
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.prepareKey(store, KeyRequest::P256, QStringLiteral("made"), CyrillicPin);
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QCOMPARE(request.error(), int(KeyRequest::NoError));
}

void TestKeyRequest::droppedMeanwhile()
{
    const int objects = token->objectCount();
    auto request = std::make_unique<KeyRequest>();
    fill(request.get(), "Dropped");
    request->makeKey(storeId(), KeyRequest::Rsa4096, QStringLiteral("dropped"));
    QVERIFY(request->isRunning());
    QTRY_VERIFY(TokenMonitor::token(storeId()).busy); // in the middle of the generation
    request.reset();
    // The token makes the pair all the same, and then takes it away.
    QTRY_VERIFY_WITH_TIMEOUT(!TokenMonitor::token(storeId()).busy, Patience);
    QCOMPARE(token->objectCount(), objects);
    QVERIFY(home->requestFiles().isEmpty());
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    TestToken softwareToken;
    token = &softwareToken;
    if (!softwareToken.isValid()) {
        qInfo("SKIP %s", qPrintable(softwareToken.problem()));
        return 0;
    }
    // SoftHSM looks for its tokens and their PINs when it is loaded.
    if (!addCyrillicToken(&softwareToken))
        return 1;
    softwareToken.useInThisProcess();
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    const MarkTranslator translator;
    qRegisterMetaType<CertificateRequest *>();
    TestKeyRequest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keyrequest.moc"
