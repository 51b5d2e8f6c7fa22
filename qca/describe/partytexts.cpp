// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/extensionparts.h"

#include "qca/describe/nametexts.h"
#include "qca/describe/objectnames.h"

namespace Trivex {

namespace {

/// A walk over the numbers and vectors of TLS (RFC 8446, 3). Reading past the end gives nothing and
/// marks it damaged.
class TlsReader {
public:
    explicit TlsReader(Der::Slice bytes)
        : m_rest(bytes)
    {
    }
    bool atEnd() const { return m_rest.isEmpty(); }
    bool isDamaged() const { return m_isDamaged; }
    Der::Slice bytes(int count)
    {
        if (count > m_rest.size) {
            m_isDamaged = true;
            m_rest = {};
            return {};
        }
        const Der::Slice taken{m_rest.data, count};
        m_rest = {m_rest.data + count, m_rest.size - count};
        return taken;
    }
    quint64 number(int count)
    {
        const Der::Slice octets = bytes(count);
        quint64 value = 0;
        for (int i = 0; i < octets.size; ++i)
            value = value << 8 | octets.at(i);
        return value;
    }
    /// A vector with two octets of length.
    Der::Slice vector() { return bytes(int(number(2))); }

private:
    Der::Slice m_rest;
    bool m_isDamaged = false;
};

/// SignedCertificateTimestamp (RFC 6962, 3.2).
bool addTimestamp(Der::Slice bytes, Lines *lines)
{
    TlsReader reader(bytes);
    const auto version = int(reader.number(1));
    const Der::Slice log = reader.bytes(32);
    const auto time = qint64(reader.number(8));
    if (reader.isDamaged())
        return false;
    if (version != 0) {
        lines->add(bytesText(bytes));
        return true;
    }
    //% "Log"
    lines->add(labeledText(qtTrId("trivex-app-transparency-log"), bytesText(log)));
    const QString when = timeText(QDateTime::fromMSecsSinceEpoch(time, Qt::UTC));
    //% "Entered"
    lines->add(labeledText(qtTrId("trivex-app-transparency-time"), when));
    return true;
}

} // namespace

bool addString(Der::Slice value, Lines *lines)
{
    Der::Element text;
    if (!Der::Reader(value).next(&text))
        return false;
    lines->add(valueText(text));
    return true;
}

bool addNumber(Der::Slice value, Lines *lines)
{
    Der::Element number;
    if (!Der::Reader(value).next(Der::Integer, &number) || number.content.isEmpty())
        return false;
    const QString digits = decimalText(number.whole);
    lines->add(digits.isEmpty() ? bytesText(number.content) : digits);
    return true;
}

bool addTime(Der::Slice value, Lines *lines)
{
    Der::Element time;
    if (!Der::Reader(value).next(&time))
        return false;
    lines->add(timeText(time));
    return true;
}

bool addNull(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::single(value, Der::Null, &content))
        return false;
    lines->add(yesText(true));
    return true;
}

bool addIssuerTools(Der::Slice value, Lines *lines)
{
    static constexpr const char *Labels[] = {
        //% "Tool"
        QT_TRID_NOOP("trivex-app-tool-signature"),
        //% "Tool of the authority"
        QT_TRID_NOOP("trivex-app-tool-authority"),
        //% "Conformity of the tool"
        QT_TRID_NOOP("trivex-app-tool-signature-proof"),
        //% "Conformity of the authority's tool"
        QT_TRID_NOOP("trivex-app-tool-authority-proof"),
    };
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    for (const char *label : Labels) {
        Der::Element text;
        if (!reader.next(&text))
            return false;
        lines->add(labeledText(qtTrId(label), valueText(text)));
    }
    return reader.atEnd();
}

bool addIdentification(Der::Slice value, Lines *lines)
{
    static constexpr const char *Kinds[] = {
        //% "in person"
        QT_TRID_NOOP("trivex-app-identified-in-person"),
        //% "by a qualified signature"
        QT_TRID_NOOP("trivex-app-identified-by-signature"),
        //% "by a biometric passport"
        QT_TRID_NOOP("trivex-app-identified-by-passport"),
        //% "by the state's systems of identification"
        QT_TRID_NOOP("trivex-app-identified-by-state"),
    };
    Der::Slice number;
    if (!Der::single(value, Der::Integer, &number))
        return false;
    const int kind = Der::smallInteger(number);
    const bool isKnown = kind >= 0 && kind < int(std::size(Kinds));
    const QString digits = numberText(number);
    lines->add(isKnown ? QStringLiteral("%1 (%2)").arg(qtTrId(Kinds[kind]), digits) : digits);
    return true;
}

bool addTransparency(Der::Slice value, Lines *lines)
{
    QByteArray list;
    if (!Der::Reader(value).nextString(Der::OctetString, &list))
        return false;
    TlsReader whole(Der::sliceOf(list));
    TlsReader reader(whole.vector());
    while (!reader.atEnd()) {
        const Der::Slice timestamp = reader.vector();
        if (lines->isFull())
            lines->skip();
        else if (reader.isDamaged() || !addTimestamp(timestamp, lines))
            return false;
    }
    return !whole.isDamaged();
}

bool addTemplate(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    Der::Slice oid;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    if (!reader.next(Der::ObjectIdentifier, &oid))
        return false;
    lines->add(objectText(oid));
    QStringList version;
    Der::Slice number;
    while (version.size() < 2 && reader.next(Der::Integer, &number))
        version += numberText(number);
    if (!version.isEmpty()) {
        //% "Version"
        lines->add(labeledText(qtTrId("trivex-app-version"), version.join(QLatin1Char('.'))));
    }
    return reader.atEnd();
}

bool addTlsFeatures(Der::Slice value, Lines *lines)
{
    Der::Slice content;
    if (!Der::Reader(value).next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    while (!reader.atEnd()) {
        Der::Slice number;
        if (!reader.next(Der::Integer, &number))
            return false;
        // The answer about revocation comes with the connection (RFC 7633).
        lines->add(Der::smallInteger(number) == 5 ? QStringLiteral("OCSP (status_request)")
                                                  : numberText(number));
    }
    return true;
}

} // namespace Trivex
