// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests that another program made are edited: what is changed, and nothing beside it.
#include "qca/adapter/entries.h"
#include "qca/adapter/requestmaking.h"
#include "qca/x509/infotypes.h"
#include "tests/x509/corpus.h"
#include "tests/x509/editedrequest.h"
#include "tests/x509/requestsubject.h"

#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

QByteArray text(const QCA::CertificateRequest &request)
{
    return Corpus::openssl({QStringLiteral("req"), QStringLiteral("-text")},
                           request.toPEM().toLatin1());
}

} // namespace

class TestRequestEditing : public EditedRequestTest {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { makeOriginal(); }
    void oneName();
    void nameInASet();
    void removedNames();
    void addedNames();
    void russianIdentifier();
    void mailAddress();
    void alternativeNameAmongOthers();
    void lastAlternativeNames();
    void addedAlternativeNames();
    void usagesAreReplaced();
    void usagesComeAndGo();
    void unwritableValue();

private:
    QCA::CertificateRequest edited(const QCA::CertificateInfo &info);
};

QCA::CertificateRequest TestRequestEditing::edited(const QCA::CertificateInfo &info)
{
    return editedRequest(m_original, {info, m_original.constraints()},
                         key(QStringLiteral("rsa.key")));
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

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestRequestEditing test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestediting.moc"
