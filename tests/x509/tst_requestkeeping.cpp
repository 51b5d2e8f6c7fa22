// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests that another program made are edited: what is not changed keeps its bytes, or nothing is
// made.
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/adapter/requestmaking.h"
#include "qca/keys/keys.h"
#include "qca/x509/infotypes.h"
#include "tests/x509/corpus.h"
#include "tests/x509/editedrequest.h"
#include "tests/x509/requestsubject.h"

#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

Q_DECLARE_METATYPE(Trivex::EditLoss)

namespace {

/// An element of fewer than 65536 bytes.
QByteArray tagged(int tag, const QByteArray &content)
{
    QByteArray header(1, char(tag));
    if (content.size() > 127)
        header += QByteArray("\x82") + char(content.size() >> 8);
    return header + char(content.size()) + content;
}

} // namespace

class TestRequestKeeping : public EditedRequestTest {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { makeOriginal(); }
    void nothingChanged_data();
    void nothingChanged();
    void attributesAreSorted();
    void attributesKeepTheirOrder();
    void keyKeepsItsForm_data();
    void keyKeepsItsForm();
    void requestWithoutAttributes();
    void otherKey();
    void nothingIsLost_data();
    void nothingIsLost();
    void refusals();
};

void TestRequestKeeping::nothingChanged_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"rsa.key", "ec-256.key", "ec-384.key", "ed25519.key"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

void TestRequestKeeping::nothingChanged()
{
    QFETCH(QString, file);
    const QCA::CertificateRequest original = made(file);
    QVERIFY(!original.isNull());
    const QCA::CertificateRequest again =
        editedRequest(original, requestedFields(original), key(file));
    QCOMPARE(partsOf(again.toDER()).value(0), partsOf(original.toDER()).value(0));
    QVERIFY(isVerified(again));
}

/// They are a SET OF, and whoever encodes them again before a check encodes them so.
void TestRequestKeeping::attributesAreSorted()
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
void TestRequestKeeping::attributesKeepTheirOrder()
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

void TestRequestKeeping::keyKeepsItsForm_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("the same key") << QStringLiteral("rsa.key") << true;
    QTest::newRow("another key") << QStringLiteral("ec-256.key") << false;
}

/// Its algorithm has no parameters where most programs write a NULL.
void TestRequestKeeping::keyKeepsItsForm()
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

void TestRequestKeeping::requestWithoutAttributes()
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

void TestRequestKeeping::otherKey()
{
    const QCA::PrivateKey other = key(QStringLiteral("ec-256.key"));
    const QCA::CertificateRequest request =
        editedRequest(m_original, {m_info, m_original.constraints()}, other);
    QCOMPARE(differences(bodyOf(m_original), bodyOf(request)), QList<int>{2});
    QVERIFY(isSamePublicKey(requestPublicKey(request), other.toPublicKey()));
    QVERIFY(isVerified(request));
}

void TestRequestKeeping::nothingIsLost_data()
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
void TestRequestKeeping::nothingIsLost()
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

void TestRequestKeeping::refusals()
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
    TestRequestKeeping test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestkeeping.moc"
