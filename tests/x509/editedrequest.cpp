// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/editedrequest.h"

#include "qca/adapter/reading.h"
#include "qca/asn1/der.h"
#include "qca/x509/infotypes.h"
#include "tests/x509/corpus.h"
#include "tests/x509/requestsubject.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;

namespace TrivexTest {

const char Configuration[] = R"(
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

const char Plain[] = R"(
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

QCA::CertificateRequest made(const QString &keyFile, const char *configuration)
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

bool isVerified(const QCA::CertificateRequest &request)
{
    return !Corpus::openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                             QStringLiteral("-noout"), QStringLiteral("-subject")},
                            request.toPEM().toLatin1())
                .isEmpty();
}

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

void EditedRequestTest::makeOriginal()
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

} // namespace TrivexTest
