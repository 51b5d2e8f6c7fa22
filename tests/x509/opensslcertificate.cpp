// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/opensslcertificate.h"

#include "tests/x509/corpus.h"

#include <QRegularExpression>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// Undoes "esc_ctrl": a backslash and two hex digits for an octet, or a backslash for itself.
QString unescaped(const QByteArray &escaped)
{
    QByteArray plain;
    for (int i = 0; i < escaped.size(); ++i) {
        if (escaped.at(i) != '\\') {
            plain += escaped.at(i);
        } else if (i + 1 < escaped.size() && escaped.at(i + 1) == '\\') {
            plain += escaped.at(++i);
        } else {
            plain += QByteArray::fromHex(escaped.mid(i + 1, 2));
            i += 2;
        }
    }
    return QString::fromUtf8(plain.constData(), plain.size());
}

// The attributes of one line: "oid=value + oid=value".
void readSet(const QString &line, OpensslCertificate::Name *name)
{
    static const QRegularExpression start(text("(?:^| \\+ )((?:\\d+\\.)+\\d+)="));
    QString oid;
    int valueStart = 0;
    const auto take = [&](int end) {
        if (!oid.isEmpty())
            name->append({oid, unescaped(line.mid(valueStart, end - valueStart).toUtf8())});
    };
    auto matches = start.globalMatch(line);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        take(match.capturedStart());
        oid = match.captured(1);
        valueStart = match.capturedEnd();
    }
    take(line.size());
}

OpensslCertificate::Name readName(const QStringList &lines, const QString &title)
{
    OpensslCertificate::Name name;
    int line = lines.indexOf(QRegularExpression(title + text("=.*")));
    while (line >= 0 && ++line < lines.size() && lines.at(line).startsWith(text("    ")))
        readSet(lines.at(line).mid(4), &name);
    return name;
}

// What follows `start` in the last line that has it: the signature's algorithm is given twice, and
// the one beside the signature is the one that counts.
QString valueAfter(const QStringList &lines, const QString &start)
{
    QString value;
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(start))
            value = trimmed.mid(start.size()).trimmed();
    }
    return value;
}

QDateTime readTime(const QString &value)
{
    // "2020-01-02 03:04:05.678Z": whole seconds are all that is kept.
    QDateTime time = QDateTime::fromString(value.left(19), text("yyyy-MM-dd HH:mm:ss"));
    time.setTimeSpec(Qt::UTC);
    return value.endsWith(QLatin1Char('Z')) ? time : QDateTime();
}

// Two's complement of what openssl writes as sign and magnitude.
QByteArray readSerial(const QString &value)
{
    const bool isNegative = value.startsWith(QLatin1Char('-'));
    QByteArray octets = QByteArray::fromHex(value.mid(isNegative ? 1 : 0).toLatin1());
    octets.prepend('\0');
    if (isNegative) {
        int carry = 1;
        for (int i = octets.size() - 1; i >= 0; --i) {
            const int octet = (~octets.at(i) & 0xFF) + carry;
            octets[i] = char(octet & 0xFF);
            carry = octet >> 8;
        }
    }
    const auto isSpare = [&octets] {
        const int first = octets.at(0) & 0xFF;
        const bool nextIsNegative = octets.at(1) & 0x80;
        return (first == 0 && !nextIsNegative) || (first == 0xFF && nextIsNegative);
    };
    while (octets.size() > 1 && isSpare())
        octets.remove(0, 1);
    return octets;
}

QStringList linesOf(const QByteArray &output)
{
    QString lines = QString::fromUtf8(output.constData(), output.size());
    lines.remove(text("\\\n")); // long numbers go on in the next line
    return lines.split(QLatin1Char('\n'));
}

} // namespace

QStringList OpensslCertificate::values(const Name &name, const QString &oid)
{
    QStringList list;
    for (const auto &attribute : name) {
        if (attribute.first == oid)
            list += attribute.second;
    }
    return list;
}

QStringList OpensslCertificate::extensionLines(const QString &title) const
{
    // Titles stand twelve columns in, what belongs to them further.
    const QString indent(12, QLatin1Char(' '));
    int line = text.indexOf(QRegularExpression(QRegularExpression::escape(indent + title)
                                               + QStringLiteral(": ?(critical)?")));
    QStringList lines;
    while (line >= 0 && ++line < text.size()
           && (text.at(line).isEmpty() || text.at(line).startsWith(indent + QLatin1Char(' '))))
        lines += text.at(line).trimmed();
    lines.removeAll(QString());
    return lines;
}

QByteArray OpensslCertificate::keyId(const QString &title) const
{
    QString id = extension(title);
    id.remove(QStringLiteral("keyid:"));
    static const QRegularExpression octets(QStringLiteral("^[0-9A-F]{2}(:[0-9A-F]{2})*$"));
    return id.contains(octets) ? QByteArray::fromHex(id.toLatin1()) : QByteArray();
}

QString OpensslCertificate::extension(const QString &title) const
{
    return extensionLines(title).value(0);
}

bool readWithOpenssl(const QString &path, OpensslCertificate *certificate)
{
    // The command tells DER and PEM apart by itself.
    const QByteArray output =
        Corpus::openssl({text("x509"), text("-in"), path, text("-noout"), text("-serial"),
                         text("-subject"), text("-issuer"), text("-nameopt"),
                         text("oid,sep_multiline,utf8,esc_ctrl,dump_nostr,dump_der"),
                         text("-dates"), text("-dateopt"), text("iso_8601"), text("-text")});
    if (output.isEmpty())
        return false;
    const QStringList lines = linesOf(output);
    certificate->subject = readName(lines, text("subject"));
    certificate->issuer = readName(lines, text("issuer"));
    certificate->serial = readSerial(valueAfter(lines, text("serial=")));
    certificate->notBefore = readTime(valueAfter(lines, text("notBefore=")));
    certificate->notAfter = readTime(valueAfter(lines, text("notAfter=")));
    certificate->signatureAlgorithm = valueAfter(lines, text("Signature Algorithm:"));
    certificate->keyAlgorithm = valueAfter(lines, text("Public Key Algorithm:"));
    certificate->text = lines;
    return true;
}

bool isSelfSignedForOpenssl(const QString &path, bool withGostEngine)
{
    QStringList arguments = {text("verify")};
    if (withGostEngine) // before the certificates, which are read as the options come
        arguments += {text("-engine"), text("gost")};
    arguments += {text("-no-CApath"),    text("-no-CAfile"),     text("-no-CAstore"),
                  text("-check_ss_sig"), text("-no_check_time"), text("-trusted")};
    return !Corpus::openssl(arguments << path << path).isEmpty();
}
