// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests that another program made are edited: what is not changed keeps its bytes.
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/asn1/der.h"
#include "qca/keys/keys.h"
#include "qca/x509/infotypes.h"
#include "tests/x509/corpus.h"
#include "tests/x509/requestsubject.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using TrivexTest::requestSubject;

Q_DECLARE_METATYPE(Trivex::EditLoss)

namespace {

constexpr char Configuration[] = R"(
[req]
prompt = no
distinguished_name = name
req_extensions = extensions
attributes = attributes
string_mask = nombstr
utf8 = yes
[name]
0.1.2.3.4.5 = an attribute that nobody knows
1.CN = Old Name
2.OU = North
3.+OU = South
4.OU = Lonely
5.1.2.643.3.131.1.1 = 500100732259
6.emailAddress = old@example.org
7.C = RU
[extensions]
keyUsage = critical, digitalSignature
subjectAltName = critical, @names
extendedKeyUsage = clientAuth, 1.2.3.4.5.6
1.2.3.4.5.7 = critical, ASN1:UTF8String:unknown
basicConstraints = CA:FALSE
[names]
DNS.1 = a.example.org
otherName.1 = 1.2.3.4;UTF8:nobody knows it
email.1 = old@example.org
IP.1 = 192.0.2.1
dirName.1 = directory
URI.1 = https://example.org/
RID.1 = 1.2.3.4
DNS.2 = b.example.org
[directory]
CN = In a directory
[attributes]
challengePassword = challenge
1.2.3.4.5.8 = an attribute of the request that nobody knows
)";

constexpr char Plain[] = R"(
[req]
prompt = no
distinguished_name = name
[name]
CN = Old Name
)";

QCA::PrivateKey key(const QString &file)
{
    return QCA::PrivateKey::fromPEM(QString::fromLatin1(Corpus::read(file)), {}, nullptr,
                                    QStringLiteral("qca-norvel-openssl"));
}

QCA::CertificateRequest made(const QString &keyFile, const char *configuration = Configuration)
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("req.cnf")));
    file.open(QIODevice::WriteOnly);
    file.write(configuration);
    file.close();
    return requestFromDer(
        Corpus::openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-config"),
                         file.fileName(), QStringLiteral("-key"), Corpus::path(keyFile),
                         QStringLiteral("-outform"), QStringLiteral("DER")}));
}

/// The elements in the content of `der`.
QList<QByteArray> partsOf(const QByteArray &der)
{
    QList<QByteArray> parts;
    Der::Element element;
    if (!Der::Reader(Der::sliceOf(der)).next(&element))
        return parts;
    Der::Reader reader(element.content);
    Der::Element part;
    while (reader.next(&part))
        parts.append(part.whole.bytes());
    return parts;
}

/// An element of fewer than 65536 bytes.
QByteArray tagged(int tag, const QByteArray &content)
{
    QByteArray header(1, char(tag));
    if (content.size() > 127)
        header += QByteArray("\x82") + char(content.size() >> 8);
    return header + char(content.size()) + content;
}

/// What is signed: version, name, key, attributes.
QList<QByteArray> bodyOf(const QCA::CertificateRequest &request)
{
    return partsOf(partsOf(request.toDER()).value(0));
}

QList<QByteArray> namesOf(const QCA::CertificateRequest &request)
{
    return partsOf(bodyOf(request).value(1));
}

QList<QByteArray> attributesOf(const QCA::CertificateRequest &request)
{
    return partsOf(bodyOf(request).value(3));
}

QList<QByteArray> extensionsOf(const QCA::CertificateRequest &request)
{
    for (const QByteArray &attribute : attributesOf(request)) {
        const QList<QByteArray> parts = partsOf(attribute);
        if (parts.value(0).toHex() == "06092a864886f70d01090e")
            return partsOf(partsOf(parts.value(1)).value(0));
    }
    return {};
}

QByteArray alternativeNames(const QCA::CertificateRequest &request)
{
    for (const QByteArray &extension : extensionsOf(request)) {
        const QList<QByteArray> parts = partsOf(extension);
        Der::Slice octets;
        if (parts.value(0).toHex() == "0603551d11"
            && Der::Reader(Der::sliceOf(parts.last())).next(Der::OctetString, &octets))
            return octets.bytes();
    }
    return {};
}

void replace(QCA::CertificateInfo *info, int type, const char *before, const char *after)
{
    info->remove(infoType(type), QString::fromUtf8(before));
    if (after)
        info->insert(infoType(type), QString::fromUtf8(after));
}

QByteArray text(const QCA::CertificateRequest &request)
{
    return Corpus::openssl({QStringLiteral("req"), QStringLiteral("-text")},
                           request.toPEM().toLatin1());
}

bool isVerified(const QCA::CertificateRequest &request)
{
    return !Corpus::openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                             QStringLiteral("-noout"), QStringLiteral("-subject")},
                            request.toPEM().toLatin1())
                .isEmpty();
}

/// The places at which two lists differ; -1 for lists of different lengths.
QList<int> differences(const QList<QByteArray> &a, const QList<QByteArray> &b)
{
    if (a.size() != b.size())
        return {-1};
    QList<int> places;
    for (int i = 0; i < a.size(); ++i) {
        if (a.at(i) != b.at(i))
            places.append(i);
    }
    return places;
}

} // namespace

class TestRequestEditing : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void nothingChanged_data();
    void nothingChanged();
    void oneName();
    void nameInASet();
    void removedNames();
    void addedNames();
    void russianIdentifier();
    void mailAddress();
    void alternativeNameAmongOthers();
    void lastAlternativeNames();
    void addedAlternativeNames();
    void attributesAreSorted();
    void attributesKeepTheirOrder();
    void keyKeepsItsForm_data();
    void keyKeepsItsForm();
    void usagesAreReplaced();
    void usagesComeAndGo();
    void unwritableValue();
    void requestWithoutAttributes();
    void otherKey();
    void nothingIsLost_data();
    void nothingIsLost();
    void refusals();

private:
    QCA::CertificateRequest edited(const QCA::CertificateInfo &info);

    QCA::Initializer m_initializer;
    QCA::CertificateRequest m_original;
    QCA::CertificateInfo m_info;
};

void TestRequestEditing::initTestCase()
{
    m_original = made(QStringLiteral("rsa.key"));
    QVERIFY(!m_original.isNull());
    m_info = requestSubject(m_original);
    QCOMPARE(infoValue(m_info, CommonNameInfo), QStringLiteral("Old Name"));
    QCOMPARE(namesOf(m_original).size(), 7);
    QCOMPARE(extensionsOf(m_original).size(), 5);
    QCOMPARE(attributesOf(m_original).size(), 3);
    QVERIFY(!alternativeNames(m_original).isEmpty());
}

QCA::CertificateRequest TestRequestEditing::edited(const QCA::CertificateInfo &info)
{
    return editedRequest(m_original, {info, m_original.constraints()},
                         key(QStringLiteral("rsa.key")));
}

void TestRequestEditing::nothingChanged_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"rsa.key", "ec-256.key", "ec-384.key", "ed25519.key"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

void TestRequestEditing::nothingChanged()
{
    QFETCH(QString, file);
    const QCA::CertificateRequest original = made(file);
    QVERIFY(!original.isNull());
    const QCA::CertificateRequest again =
        editedRequest(original, requestedFields(original), key(file));
    QCOMPARE(partsOf(again.toDER()).value(0), partsOf(original.toDER()).value(0));
    QVERIFY(isVerified(again));
}

void TestRequestEditing::oneName()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, CommonNameInfo, "Old Name", "Новое имя");
    const QCA::CertificateRequest request = edited(info);
    QCOMPARE(differences(bodyOf(m_original), bodyOf(request)), QList<int>{1});
    QCOMPARE(differences(namesOf(m_original), namesOf(request)), QList<int>{1});
    QCOMPARE(infoValue(requestSubject(request), CommonNameInfo), QStringLiteral("Новое имя"));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::nameInASet()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, OrganizationalUnitInfo, "South", "A");
    const QCA::CertificateRequest request = edited(info);
    QCOMPARE(differences(namesOf(m_original), namesOf(request)), QList<int>{2});
    const QList<QByteArray> before = partsOf(namesOf(m_original).at(2));
    const QList<QByteArray> after = partsOf(namesOf(request).at(2));
    QCOMPARE(after.size(), 2);
    // A set is sorted, and the new value is the shorter one.
    QVERIFY(after.at(0).endsWith("A"));
    QVERIFY(before.contains(after.at(1)));
    QVERIFY(after.at(1).endsWith("North"));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::removedNames()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, OrganizationalUnitInfo, "North", nullptr);
    replace(&info, OrganizationalUnitInfo, "Lonely", nullptr);
    const QCA::CertificateRequest request = edited(info);
    QList<QByteArray> expected = namesOf(m_original);
    const QByteArray south = partsOf(expected.at(2)).at(1);
    QVERIFY(south.endsWith("South"));
    expected[2] = QByteArray(1, '\x31') + char(south.size()) + south;
    expected.removeAt(3);
    QCOMPARE(namesOf(request), expected);
    QVERIFY(isVerified(request));
}

void TestRequestEditing::addedNames()
{
    QCA::CertificateInfo info = m_info;
    info.insert(infoType(LocalityInfo), QStringLiteral("Москва"));
    info.insert(infoType(OrganizationalUnitInfo), QStringLiteral("First"));
    info.insert(infoType(OrganizationalUnitInfo), QStringLiteral("Second"));
    const QCA::CertificateRequest request = edited(info);
    const QList<QByteArray> names = namesOf(request);
    QCOMPARE(names.mid(0, 7), namesOf(m_original));
    QCOMPARE(names.size(), 10);
    QCOMPARE(requestSubject(request), info);
    QVERIFY(isVerified(request));
}

void TestRequestEditing::russianIdentifier()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, InnInfo, "500100732259", "773870633720");
    const QCA::CertificateRequest request = edited(info);
    QCOMPARE(differences(namesOf(m_original), namesOf(request)), QList<int>{4});
    const QByteArray attribute = partsOf(namesOf(request).at(4)).at(0);
    QCOMPARE(partsOf(attribute).at(1), QByteArray("\x12\x0c") + "773870633720");
    QVERIFY(isVerified(request));
}

/// It stands in the name and among the alternative names, and is one address.
void TestRequestEditing::mailAddress()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, EmailInfo, "old@example.org", "new@example.org");
    const QCA::CertificateRequest request = edited(info);
    QCOMPARE(differences(namesOf(m_original), namesOf(request)), QList<int>{5});
    QCOMPARE(partsOf(partsOf(namesOf(request).at(5)).at(0)).at(1),
             QByteArray("\x16\x0f") + "new@example.org");
    QCOMPARE(differences(extensionsOf(m_original), extensionsOf(request)), QList<int>{1});
    QCOMPARE(differences(partsOf(alternativeNames(m_original)), partsOf(alternativeNames(request))),
             QList<int>{2});
    QVERIFY(isVerified(request));
}

void TestRequestEditing::alternativeNameAmongOthers()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, QCA::DNS, "b.example.org", "new.example.org");
    replace(&info, QCA::IPAddress, "192.0.2.1", nullptr);
    info.insert(infoType(QCA::URI), QStringLiteral("https://example.net/"));
    const QCA::CertificateRequest request = edited(info);
    QCOMPARE(bodyOf(request).at(1), bodyOf(m_original).at(1));
    QCOMPARE(differences(attributesOf(m_original), attributesOf(request)).size(), 1);
    QCOMPARE(differences(extensionsOf(m_original), extensionsOf(request)), QList<int>{1});
    QList<QByteArray> expected = partsOf(alternativeNames(m_original));
    expected[7] = QByteArray("\x82\x0f") + "new.example.org";
    expected.removeAt(3);
    expected.append(QByteArray("\x86\x14") + "https://example.net/");
    QCOMPARE(partsOf(alternativeNames(request)), expected);
    const QByteArray text = Corpus::openssl({QStringLiteral("req"), QStringLiteral("-text")},
                                            request.toPEM().toLatin1());
    QVERIFY(text.contains("X509v3 Subject Alternative Name: critical"));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::lastAlternativeNames()
{
    QByteArray configuration = Plain;
    configuration.replace("[name]",
                          "req_extensions = ext\n[ext]\nkeyUsage = keyAgreement\n"
                          "subjectAltName = DNS:a.example.org\n[name]");
    const QCA::CertificateRequest original =
        made(QStringLiteral("rsa.key"), configuration.constData());
    QCA::CertificateInfo info = requestSubject(original);
    replace(&info, QCA::DNS, "a.example.org", nullptr);
    const QCA::CertificateRequest request =
        editedRequest(original, {info, original.constraints()}, key(QStringLiteral("rsa.key")));
    QCOMPARE(extensionsOf(original).size(), 2);
    QCOMPARE(extensionsOf(request), extensionsOf(original).mid(0, 1));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::addedAlternativeNames()
{
    const QCA::CertificateRequest original = made(QStringLiteral("rsa.key"), Plain);
    QVERIFY(attributesOf(original).isEmpty());
    QCA::CertificateInfo info = requestSubject(original);
    info.insert(infoType(EmailInfo), QStringLiteral("new@example.org"));
    info.insert(infoType(QCA::DNS), QStringLiteral("a.example.org"));
    const QCA::CertificateRequest request =
        editedRequest(original, {info, original.constraints()}, key(QStringLiteral("rsa.key")));
    QCOMPARE(bodyOf(request).at(1), bodyOf(original).at(1));
    QCOMPARE(requestSubject(request), info);
    QCOMPARE(partsOf(alternativeNames(request)).size(), 2);
    QVERIFY(isVerified(request));
}

/// They are a SET OF, and whoever encodes them again before a check encodes them so.
void TestRequestEditing::attributesAreSorted()
{
    QByteArray configuration = Plain;
    configuration.replace("[name]",
                          "attributes = more\n[more]\nchallengePassword = a challenge that is "
                          "longer than the names that are added\n[name]");
    const QCA::CertificateRequest original =
        made(QStringLiteral("rsa.key"), configuration.constData());
    QCA::CertificateInfo info = requestSubject(original);
    info.insert(infoType(QCA::DNS), QStringLiteral("a.b"));
    const QCA::CertificateRequest request =
        editedRequest(original, {info, original.constraints()}, key(QStringLiteral("rsa.key")));
    QList<QByteArray> sorted = attributesOf(request);
    QCOMPARE(sorted.size(), 2);
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(attributesOf(request), sorted);
    QCOMPARE(sorted.at(1), attributesOf(original).at(0));
    QVERIFY(isVerified(request));
}

/// An order that another program chose is none of an edit's business that changes nothing in them.
void TestRequestEditing::attributesKeepTheirOrder()
{
    const QList<QByteArray> outer = partsOf(m_original.toDER());
    const QList<QByteArray> body = bodyOf(m_original);
    QList<QByteArray> attributes = attributesOf(m_original);
    std::sort(attributes.begin(), attributes.end());
    std::reverse(attributes.begin(), attributes.end());
    QByteArray content;
    for (const QByteArray &attribute : qAsConst(attributes))
        content += attribute;
    const QCA::CertificateRequest original = requestFromDer(
        tagged(0x30,
               tagged(0x30, body.at(0) + body.at(1) + body.at(2) + tagged(0xa0, content))
                   + outer.at(1) + outer.at(2)));
    QCOMPARE(attributesOf(original), attributes);
    const auto edited = [&original](const QCA::CertificateInfo &info) {
        return editedRequest(original, {info, original.constraints()},
                             key(QStringLiteral("rsa.key")));
    };
    QCA::CertificateInfo info = m_info;
    replace(&info, QCA::IPAddress, "192.0.2.1", "nowhere"); // which can't be written
    QCOMPARE(attributesOf(edited(info)), attributes);
    info = m_info;
    replace(&info, CommonNameInfo, "Old Name", "New");
    QCOMPARE(attributesOf(edited(info)), attributes);
    info = m_info;
    replace(&info, QCA::DNS, "a.example.org", "c.example.org");
    QList<QByteArray> after = attributesOf(edited(info));
    QCOMPARE(after.size(), attributes.size());
    QVERIFY(std::is_sorted(after.begin(), after.end()));
}

void TestRequestEditing::keyKeepsItsForm_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("the same key") << QStringLiteral("rsa.key") << true;
    QTest::newRow("another key") << QStringLiteral("ec-256.key") << false;
}

/// Its algorithm has no parameters where most programs write a NULL.
void TestRequestEditing::keyKeepsItsForm()
{
    QFETCH(QString, file);
    QFETCH(bool, isSame);
    const QCA::CertificateRequest plain = made(QStringLiteral("rsa.key"), Plain);
    const QList<QByteArray> outer = partsOf(plain.toDER());
    const QList<QByteArray> body = bodyOf(plain);
    const QList<QByteArray> keyParts = partsOf(body.at(2));
    const QByteArray odd =
        tagged(0x30, tagged(0x30, partsOf(keyParts.at(0)).at(0)) + keyParts.at(1));
    QVERIFY(odd != body.at(2));
    const QCA::CertificateRequest original = requestFromDer(tagged(
        0x30,
        tagged(0x30, body.at(0) + body.at(1) + odd + body.at(3)) + outer.at(1) + outer.at(2)));
    RequestedFields fields = requestedFields(original);
    replace(&fields.info, CommonNameInfo, "Old Name", "New");
    const QCA::CertificateRequest request = editedRequest(original, fields, key(file));
    QVERIFY(!request.isNull());
    QCOMPARE(bodyOf(request).at(2) == odd, isSame);
    QVERIFY(bodyOf(request).at(2) != body.at(2));
    QVERIFY(isSamePublicKey(requestPublicKey(request), key(file).toPublicKey()));
}

/// Each list of usages is edited by itself; its place and whether it is critical stay.
void TestRequestEditing::usagesAreReplaced()
{
    RequestedFields fields = requestedFields(m_original);
    fields.usages.insert(1, QCA::ConstraintType(QCA::NonRepudiation));
    QCA::CertificateRequest request =
        editedRequest(m_original, fields, key(QStringLiteral("rsa.key")));
    QCOMPARE(differences(extensionsOf(m_original), extensionsOf(request)), QList<int>{0});
    QCOMPARE(request.constraints(), fields.usages);
    QVERIFY(text(request).contains("X509v3 Key Usage: critical"));
    QVERIFY(text(request).contains("Digital Signature, Non Repudiation\n"));
    fields = requestedFields(m_original);
    QVERIFY(fields.usages.removeOne(QCA::ConstraintType(QCA::ClientAuth)));
    fields.usages += QCA::ConstraintType(QCA::EmailProtection);
    request = editedRequest(m_original, fields, key(QStringLiteral("rsa.key")));
    QCOMPARE(differences(extensionsOf(m_original), extensionsOf(request)), QList<int>{2});
    QVERIFY(text(request).contains("X509v3 Extended Key Usage: \n"));
    QCOMPARE(request.constraints(), fields.usages);
    QVERIFY(text(request).contains(", E-mail Protection\n"));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::usagesComeAndGo()
{
    const QCA::CertificateRequest plain = made(QStringLiteral("rsa.key"), Plain);
    RequestedFields fields = requestedFields(plain);
    fields.usages += QCA::ConstraintType(QCA::KeyAgreement);
    fields.usages += QCA::ConstraintType(QCA::ServerAuth);
    const QCA::CertificateRequest request =
        editedRequest(plain, fields, key(QStringLiteral("rsa.key")));
    QCOMPARE(extensionsOf(request).size(), 2);
    QVERIFY(text(request).contains("X509v3 Key Usage: critical"));
    QVERIFY(text(request).contains("TLS Web Server Authentication\n"));
    QVERIFY(isVerified(request));
    fields.usages.clear();
    const QCA::CertificateRequest without =
        editedRequest(request, fields, key(QStringLiteral("rsa.key")));
    QCOMPARE(bodyOf(without), bodyOf(plain));
    // With the last usage of a kind goes its list alone.
    fields = requestedFields(m_original);
    fields.usages = {QCA::ConstraintType(QCA::ClientAuth)};
    QCOMPARE(extensionsOf(editedRequest(m_original, fields, key(QStringLiteral("rsa.key")))).size(),
             extensionsOf(m_original).size() - 1);
}

/// An address of a machine that is none takes nothing away.
void TestRequestEditing::unwritableValue()
{
    QCA::CertificateInfo info = m_info;
    replace(&info, QCA::IPAddress, "192.0.2.1", "nowhere");
    QCOMPARE(bodyOf(edited(info)), bodyOf(m_original));
}

void TestRequestEditing::requestWithoutAttributes()
{
    // Some writers leave the empty list out.
    const QCA::CertificateRequest original = made(QStringLiteral("rsa.key"), Plain);
    QList<QByteArray> outer = partsOf(original.toDER());
    QVERIFY(outer.at(0).endsWith(QByteArray("\xa0\x00", 2)));
    QByteArray body = outer.at(0).mid(4);
    body.chop(2);
    const auto sequence = [](const QByteArray &content) {
        QByteArray header = QByteArray::fromHex("3082");
        header += char(content.size() >> 8);
        header += char(content.size());
        return QByteArray(header + content);
    };
    const QCA::CertificateRequest odd =
        requestFromDer(sequence(sequence(body) + outer.at(1) + outer.at(2)));
    QVERIFY(!odd.isNull());
    QCA::CertificateInfo info = requestSubject(odd);
    replace(&info, CommonNameInfo, "Old Name", "New");
    const QCA::CertificateRequest request =
        editedRequest(odd, {info, odd.constraints()}, key(QStringLiteral("rsa.key")));
    QCOMPARE(bodyOf(request).size(), 3);
    QCOMPARE(infoValue(requestSubject(request), CommonNameInfo), QStringLiteral("New"));
}

void TestRequestEditing::otherKey()
{
    const QCA::PrivateKey other = key(QStringLiteral("ec-256.key"));
    const QCA::CertificateRequest request =
        editedRequest(m_original, {m_info, m_original.constraints()}, other);
    QCOMPARE(differences(bodyOf(m_original), bodyOf(request)), QList<int>{2});
    QVERIFY(isSamePublicKey(requestPublicKey(request), other.toPublicKey()));
    QVERIFY(isVerified(request));
}

void TestRequestEditing::nothingIsLost_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<EditLoss>("loss");
    const QByteArray name = QByteArray::fromHex("310c300a06035504030c03") + "Old";
    const QByteArray usage = QByteArray::fromHex("300b0603551d0f040403020780");
    const auto list = [](const QByteArray &extensions) {
        const QByteArray oid = QByteArray::fromHex("06092a864886f70d01090e");
        return tagged(0x30, oid + tagged(0x31, tagged(0x30, extensions)));
    };
    QTest::newRow("whole") << name << list(usage) << EditLoss::None;
    QTest::newRow("a usage twice") << name << list(usage + usage) << EditLoss::Doubled;
    QTest::newRow("bytes behind the value")
        << name << list(QByteArray::fromHex("300d0603551d0f0404030207800500"))
        << EditLoss::Extensions;
    QTest::newRow("no list") << name << QByteArray::fromHex("300d06092a864886f70d01090e0500")
                             << EditLoss::Extensions;
    QTest::newRow("a damaged set")
        << name << QByteArray::fromHex("300f06092a864886f70d01090e31023005")
        << EditLoss::Extensions;
    QTest::newRow("a damaged name")
        << tagged(0x31, name.mid(2) + QByteArray::fromHex("3005")) << list(usage) << EditLoss::Name;
}

/// An edit that would lose bytes which can't be read, or would leave another value in force, is not
/// made.
void TestRequestEditing::nothingIsLost()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, attribute);
    QFETCH(EditLoss, loss);
    const QCA::CertificateRequest plain = made(QStringLiteral("ec-256.key"), Plain);
    const QList<QByteArray> outer = partsOf(plain.toDER());
    const QList<QByteArray> body = bodyOf(plain);
    const QCA::CertificateRequest original = requestFromDer(
        tagged(0x30,
               tagged(0x30, body.at(0) + tagged(0x30, name) + body.at(2) + tagged(0xa0, attribute))
                   + outer.at(1) + outer.at(2)));
    QVERIFY(!original.isNull());
    RequestedFields fields = requestedFields(original);
    fields.usages = {QCA::ConstraintType(QCA::KeyAgreement)};
    replace(&fields.info, CommonNameInfo, "Old", "New");
    const QCA::CertificateRequest request =
        editedRequest(original, fields, key(QStringLiteral("ec-256.key")));
    QCOMPARE(!request.isNull(), loss == EditLoss::None);
    QCOMPARE(lossOfEdit(original, fields), loss);
    // What does not touch them is made.
    const QCA::CertificateRequest again =
        editedRequest(original, requestedFields(original), key(QStringLiteral("ec-256.key")));
    QCOMPARE(bodyOf(again), bodyOf(original));
    QCOMPARE(lossOfEdit(original, requestedFields(original)), EditLoss::None);
}

void TestRequestEditing::refusals()
{
    QVERIFY(
        editedRequest(m_original, {m_info, m_original.constraints()}, QCA::PrivateKey()).isNull());
    QVERIFY(editedRequest(QCA::CertificateRequest(), {m_info, {}}, key(QStringLiteral("rsa.key")))
                .isNull());
    QVERIFY(
        editedRequest(m_original, {m_info, m_original.constraints()}, key(QStringLiteral("dh.key")))
            .isNull());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestRequestEditing test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestediting.moc"
