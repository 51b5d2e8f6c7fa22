// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/opensslview.h"

#include "tests/x509/corpus.h"

#include <QtTest>

namespace {

// The lines that follow "<name>=" in openssl's multi-line form of a name, without their indent.
QStringList nameLines(const QStringList &output, const QString &name)
{
    QStringList lines;
    int line = output.indexOf(QRegularExpression(name + QStringLiteral("=.*")));
    while (line >= 0 && ++line < output.size() && output.at(line).startsWith(QLatin1String("    ")))
        lines += output.at(line).mid(4);
    lines.removeAll(QString());
    return lines;
}

QStringList nameLines(const QCA::CertificateInfoOrdered &info)
{
    QStringList lines;
    for (const QCA::CertificateInfoPair &pair : info) {
        if (pair.type().section() == QCA::CertificateInfoType::DN)
            lines += pair.type().id() + QLatin1Char('=') + pair.value();
    }
    return lines;
}

QString value(const QStringList &output, const QString &name)
{
    for (const QString &line : output) {
        if (line.startsWith(name + QLatin1Char('=')))
            return line.mid(name.size() + 1);
    }
    return {};
}

// Digits of a serial number as openssl has them: sign and magnitude, whole octets.
QString serialText(const QCA::BigInteger &serial)
{
    const bool isNegative = serial < QCA::BigInteger(0);
    const QCA::BigInteger magnitude = isNegative ? QCA::BigInteger(0) -= serial : serial;
    QByteArray octets = magnitude.toArray().toByteArray();
    while (octets.size() > 1 && octets.at(0) == 0)
        octets.remove(0, 1);
    return (isNegative ? QStringLiteral("-") : QString())
        + QString::fromLatin1(octets.toHex()).toUpper();
}

// What follows the extension's title in openssl's text, without colons.
QString keyIdText(const QStringList &output, const QString &title)
{
    const int line =
        output.indexOf(QRegularExpression(QStringLiteral(".*") + title + QStringLiteral(":.*")));
    if (line < 0 || line + 1 >= output.size())
        return {};
    QString text = output.at(line + 1).trimmed();
    text.remove(QStringLiteral("keyid:"));
    return text.remove(QLatin1Char(':'));
}

} // namespace

QStringList opensslX509(const QString &file, const QStringList &arguments)
{
    const QByteArray text = Corpus::openssl(
        QStringList{QStringLiteral("x509"), QStringLiteral("-inform"), QStringLiteral("DER"),
                    QStringLiteral("-in"), Corpus::path(file), QStringLiteral("-noout")}
        << arguments);
    QString lines = QString::fromUtf8(text.constData(), text.size());
    // Long numbers go on in the next line.
    lines.remove(QStringLiteral("\\\n"));
    return lines.isEmpty() ? QStringList() : lines.split(QLatin1Char('\n'));
}

bool isUnreadableName(const QString &file)
{
    for (const char *name : {"visible", "bmp-surrogates", "bad-utf8", "bmp-odd", "universal-bad"}) {
        if (file == QStringLiteral("string-%1.der").arg(QLatin1String(name)))
            return true;
    }
    return false;
}

void compareNames(const QCA::Certificate &certificate, const QString &file)
{
    const QStringList output = opensslX509(file,
                                           {QStringLiteral("-serial"), QStringLiteral("-subject"),
                                            QStringLiteral("-issuer"), QStringLiteral("-nameopt"),
                                            QStringLiteral("oid,sep_multiline,utf8")});
    QCOMPARE(serialText(certificate.serialNumber()), value(output, QStringLiteral("serial")));
    // openssl reads T61String as Latin-1 always, and joins the values of one set.
    if (file.contains(QLatin1String("t61-utf8")) || file.contains(QLatin1String("multi-valued")))
        return;
    QCOMPARE(nameLines(certificate.subjectInfoOrdered()),
             nameLines(output, QStringLiteral("subject")));
    QCOMPARE(nameLines(certificate.issuerInfoOrdered()),
             nameLines(output, QStringLiteral("issuer")));
}

void compareDates(const QCA::Certificate &certificate, const QString &file)
{
    if (file.startsWith(QLatin1String("date-")))
        return; // not all of them are dates for openssl; compared with what was written, below
    const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss'Z'");
    const QStringList output = opensslX509(
        file, {QStringLiteral("-dates"), QStringLiteral("-dateopt"), QStringLiteral("iso_8601")});
    QCOMPARE(certificate.notValidBefore().toString(format),
             value(output, QStringLiteral("notBefore")));
    QCOMPARE(certificate.notValidAfter().toString(format),
             value(output, QStringLiteral("notAfter")));
}

void compareKeys(const QCA::Certificate &certificate, const QString &file)
{
    const QString key = opensslX509(file, {QStringLiteral("-pubkey")}).join(QLatin1Char('\n'));
    if (key.startsWith(QLatin1String("-----")))
        QCOMPARE(certificate.subjectPublicKey().toPEM(), key);
    if (file.contains(QLatin1String("bad-ids")))
        return;
    const QStringList ids = opensslX509(
        file,
        {QStringLiteral("-ext"), QStringLiteral("subjectKeyIdentifier,authorityKeyIdentifier")});
    QCOMPARE(QString::fromLatin1(certificate.subjectKeyId().toHex()).toUpper(),
             keyIdText(ids, QStringLiteral("Subject Key Identifier")));
    QCOMPARE(QString::fromLatin1(certificate.issuerKeyId().toHex()).toUpper(),
             keyIdText(ids, QStringLiteral("Authority Key Identifier")));
}
