// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/expectedproperties.h"

#include "tests/x509/opensslcertificate.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// What comes last counts, as in a plain look-up of QCA's map.
QString lastOf(const OpensslCertificate::Name &name, const char *oid)
{
    return OpensslCertificate::values(name, text(oid))
        .value(OpensslCertificate::values(name, text(oid)).size() - 1);
}

// QCA lists the addresses of the alternative names first, then the subject's own attribute, which
// it leaves out when it has that address already.
QString emailOf(const OpensslCertificate &certificate)
{
    QStringList emails;
    const QStringList names = certificate.extension(text("X509v3 Subject Alternative Name"))
                                  .split(text(", "), Qt::SkipEmptyParts);
    for (const QString &name : names) {
        if (name.startsWith(text("email:")))
            emails += name.mid(6);
    }
    const auto legacy =
        OpensslCertificate::values(certificate.subject, text("1.2.840.113549.1.9.1"));
    for (const QString &address : legacy) {
        if (!emails.contains(address))
            emails += address;
    }
    return emails.isEmpty() ? QString() : emails.last();
}

// The first street, of 1,023 octets at most, or the locality where there is none.
QString addressOf(const OpensslCertificate &certificate)
{
    const auto streets = OpensslCertificate::values(certificate.subject, text("2.5.4.9"));
    if (streets.isEmpty())
        return lastOf(certificate.subject, "2.5.4.7");
    QString street = streets.first();
    while (street.toUtf8().size() > 1023)
        street.chop(1);
    return street;
}

// Each octet in two hex digits or, from 0x80 on, a minus sign and the magnitude; a colon behind
// each unless the text is as long as all octets would be in two digits.
QString hexColons(const QByteArray &octets)
{
    QString joined;
    for (const char octet : octets) {
        const int value = octet < 0 ? 256 - int(uchar(octet)) : int(octet);
        const QString digits = QString::number(value, 16).toUpper();
        if (octet < 0)
            joined += QLatin1Char('-') + digits;
        else
            joined += digits.rightJustified(2, QLatin1Char('0'));
        if (joined.size() != 3 * octets.size() - 1)
            joined += QLatin1Char(':');
    }
    if (octets.size() == 1 && joined.startsWith(QLatin1Char('0')))
        joined.remove(0, 1);
    return joined;
}

QString signatureOf(const QString &algorithm)
{
    static const QHash<QString, const char *> texts = {
        {text("dsaWithSHA1"), "SHA1, trivex-p-la-with EMSA1"},
        {text("sha1WithRSAEncryption"), "SHA1, trivex-p-la-with EMSA3"},
        {text("md5WithRSAEncryption"), "MD5, trivex-p-la-with EMSA3"},
        {text("md2WithRSAEncryption"), "MD2, trivex-p-la-with EMSA3"},
        {text("ripemd160WithRSA"), "RIPEMD160, trivex-p-la-with EMSA3"},
        {text("sha224WithRSAEncryption"), "SHA224, trivex-p-la-with EMSA3"},
        {text("sha256WithRSAEncryption"), "SHA256, trivex-p-la-with EMSA3"},
        {text("sha384WithRSAEncryption"), "SHA384, trivex-p-la-with EMSA3"},
        {text("sha512WithRSAEncryption"), "SHA512, trivex-p-la-with EMSA3"},
        {text("ecdsa-with-SHA256"), "ECDSA, trivex-p-la-with SHA256"},
        {text("ecdsa-with-SHA384"), "ECDSA, trivex-p-la-with SHA384"},
        {text("GOST R 34.11-94 with GOST R 34.10-2001"),
         "GOST R 34.11-94, trivex-p-la-with GOST R 34.10-2001"},
        {text("GOST R 34.10-2012 with GOST R 34.11-2012 (256 bit)"),
         "GOST R 34.10-2012, trivex-p-la-with GOST R 34.11-2012 (256 bit)"},
        {text("GOST R 34.10-2012 with GOST R 34.11-2012 (512 bit)"),
         "GOST R 34.10-2012, trivex-p-la-with GOST R 34.11-2012 (512 bit)"},
    };
    return text(texts.value(algorithm, "trivex-p-la-unknown_signing_alg"));
}

// Four kinds have a fixed text; others are called what libcrypto calls them, if it does.
QString keyAlgorithmOf(const QString &algorithm)
{
    static const QHash<QString, const char *> texts = {
        {text("rsaEncryption"), "RSA"},
        {text("dsaEncryption"), "DSA"},
        {text("dhKeyAgreement"), "DH"},
        {text("id-ecPublicKey"), "Elliptic Curve"},
    };
    static const QRegularExpression dotted(text("^[0-9.]+$"));
    if (const char *known = texts.value(algorithm))
        return text(known);
    return algorithm.contains(dotted) ? QString() : algorithm;
}

void addNames(const OpensslCertificate &certificate, QVariantMap *expected)
{
    static const QList<QPair<const char *, const char *>> attributes = {
        {"commonName", "2.5.4.3"},
        {"subjectName", "2.5.4.3"},
        {"subjectOrganization", "2.5.4.10"},
        {"publicKeyMarker", "2.5.4.10"},
        {"subjectOrganizationalUnit", "2.5.4.11"},
        {"subjectLocality", "2.5.4.7"},
        {"subjectCountry", "2.5.4.8"},
        {"subjectCountryCode", "2.5.4.6"},
        {"subjectInn", "1.2.643.3.131.1.1"},
        {"subjectOgrn", "1.2.643.100.1"},
        {"subjectSnils", "1.2.643.100.3"},
        {"subjectInnle", "1.2.643.100.4"},
        {"subjectOgrnip", "1.2.643.100.5"},
        {"subjectIdentificationKind", "1.2.643.100.114"},
    };
    for (const auto &attribute : attributes)
        expected->insert(text(attribute.first), lastOf(certificate.subject, attribute.second));
    expected->insert(text("issuer"), lastOf(certificate.issuer, "2.5.4.3"));
    expected->insert(text("subjectEmail"), emailOf(certificate));
    expected->insert(text("subjecAddress"), addressOf(certificate));
}

// All that is shown of a name, in UTF-8 under a type that has no room for it.
QList<PropertyException> utf8Exceptions(const QString &file)
{
    static const QList<QPair<const char *, int>> attributes = {
        {"commonName", 3},           {"subjectName", 3},      {"issuer", 3},
        {"subjectLocality", 7},      {"subjectCountry", 8},   {"subjecAddress", 9},
        {"subjectOrganization", 10}, {"publicKeyMarker", 10}, {"subjectOrganizationalUnit", 11},
    };
    const char *const octets = "openssl takes the octets for Latin-1; many have written UTF-8";
    QList<PropertyException> exceptions;
    for (const auto &attribute : attributes)
        exceptions.append(
            {file, text(attribute.first), QStringLiteral("Ёлка %1").arg(attribute.second), octets});
    exceptions.append({file, text("fileName"), QStringLiteral("Ёлка 3.crt"), octets});
    return exceptions;
}

} // namespace

QVariantMap expectedProperties(const OpensslCertificate &certificate, bool isSelfSigned)
{
    QVariantMap expected;
    addNames(certificate, &expected);
    const QString commonName = lastOf(certificate.subject, "2.5.4.3");
    const QByteArray keyId = certificate.keyId(text("X509v3 Subject Key Identifier"));
    expected.insert(text("serialNumber"), hexColons(certificate.serial));
    expected.insert(text("notValidBefore"), certificate.notBefore);
    expected.insert(text("notValidAfter"), certificate.notAfter);
    expected.insert(text("signatureType"), text("Not qualified")); // always
    expected.insert(text("signatureAlgorithm"), signatureOf(certificate.signatureAlgorithm));
    expected.insert(text("publicKeyId"), hexColons(keyId));
    expected.insert(text("publicKeyTypeAlgorithm"), keyAlgorithmOf(certificate.keyAlgorithm));
    // Nothing came with it that could hold a key.
    expected.insert(text("privateKeyAvailability"), text("trivex-p-la-private_not_available"));
    expected.insert(text("privateKeyLocation"), QString());
    expected.insert(text("privateKeyManufacturer"), QString());
    // The extension alone would be no name.
    expected.insert(text("fileName"),
                    commonName.isEmpty() ? text("certificate.crt")
                                         : QString(commonName + text(".crt")));
    expected.insert(text("isRoot"),
                    !commonName.isEmpty() && commonName == lastOf(certificate.issuer, "2.5.4.3")
                        && isSelfSigned);
    expected.insert(text("isNull"), false);
    return expected;
}

QList<PropertyException> propertyExceptions()
{
    const QString t61 = text("string-t61-utf8.der");
    const QString name = QStringLiteral("Кириллица в T61");
    const char *const octets = "openssl takes T61String for Latin-1; many have written UTF-8 there";
    const char *const extension = "openssl verify wants to decode extensions; its key signed it";
    const char *const portable = "a name that a file can have";
    QList<PropertyException> exceptions = {
        {t61, text("commonName"), name, octets},
        {t61, text("subjectName"), name, octets},
        {t61, text("issuer"), name, octets},
        {t61, text("fileName"), name + text(".crt"), octets},
        {text("string-nul.der"), text("fileName"), text("good.example_.evil.example.crt"),
         portable},
        {text("name-long.der"), text("fileName"), QString(251, QLatin1Char('x')) + text(".crt"),
         portable},
        {text("name-control.der"), text("fileName"), text("two_lines_tab_.crt"), portable},
        {text("name-path.der"), text("fileName"), text("_._.._etc_passwd.crt"), portable},
        {text("extension-bad-constraints.der"), text("isRoot"), text("true"), extension},
        {text("extension-bad-ids.der"), text("isRoot"), text("true"), extension},
        {text("extension-bad-names.der"), text("isRoot"), text("true"), extension},
        {text("extension-unknown-name.der"), text("isRoot"), text("true"), extension},
    };
    for (const char *file : {"name-t61-utf8.der", "name-printable-utf8.der", "name-ia5-utf8.der"})
        exceptions += utf8Exceptions(text(file));
    return exceptions;
}

QList<ShortTimes> shortTimes()
{
    const QTime time(3, 4);
    return {{text("date-no-seconds.der"), QDateTime(QDate(2020, 1, 2), time, Qt::UTC),
             QDateTime(QDate(2050, 1, 2), time, Qt::UTC)},
            {text("date-broken.der"), {}, {}}};
}

bool hasShortTimes(const QString &file)
{
    const auto all = shortTimes();
    return std::any_of(all.begin(), all.end(),
                       [&file](const ShortTimes &times) { return times.file == file; });
}

QList<UnprintableFile> unprintableFiles()
{
    return {
        {text("string-visible.der"), text("Visible ~ text"), "a type that it has no text for"},
        {text("string-bmp-surrogates.der"), QStringLiteral("𝄞 clef"), "UCS-2 has no surrogates"},
        {text("string-bad-utf8.der"), QString::fromUtf8("broken \xff\xfe utf8"), "no UTF-8"},
        {text("string-bmp-odd.der"), QStringLiteral("П"), "half a character at the end"},
        {text("string-universal-bad.der"), QStringLiteral("\uFFFD\uFFFDA"), "no characters"},
    };
}

bool isUnprintable(const QString &file)
{
    for (const UnprintableFile &unprintable : unprintableFiles()) {
        if (unprintable.file == file)
            return true;
    }
    return false;
}
