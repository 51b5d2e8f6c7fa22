// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowtext.h"

#include "qca/asn1/der.h"
#include "qca/base/searchtext.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QSet>

namespace Trivex {

namespace {

/// Fewer letters than these stand in the description of every certificate.
constexpr int LeastLetters = 3;
/// Fewer hex digits than these stand somewhere in every key.
constexpr int LeastDigits = 6;
constexpr int MaxDepth = 16;
constexpr int MaxOids = 500;

/// All identifiers in an encoding, in the octet strings of extensions too: the viewer has words for
/// many, and people look for their numbers.
class Oids {
public:
    void add(Der::Slice encoding, int depth = 0)
    {
        Der::Reader reader(encoding);
        Der::Element element;
        while (m_found.size() < MaxOids && reader.next(&element)) {
            if (element.tag == Der::ObjectIdentifier)
                m_found.insert(Der::oidText(element.content));
            else if (depth < MaxDepth && mayHold(element))
                add(element.content, depth + 1);
        }
    }
    QByteArray text() const { return m_found.values().join('\n'); }

private:
    static bool mayHold(const Der::Element &element)
    {
        return (element.tag & Der::ConstructedBit) != 0 || element.tag == Der::OctetString;
    }

    QSet<QByteArray> m_found;
};

QString withoutSeparators(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[:\\s-]"));
    return QString(text).remove(separators);
}

/// Hex digits, with separators between them or not.
bool isBytes(const QString &text)
{
    static const QRegularExpression bytes(QStringLiteral("^[0-9a-fA-F:\\s-]+$"));
    return bytes.match(text).hasMatch();
}

/// Added as a sum, the text would be allocated anew for each line, to its exact size: a certificate
/// can have a hundred thousand of them.
void addLine(QString *text, const QString &line)
{
    text->append(line);
    text->append(QLatin1Char('\n'));
}

} // namespace

RowText rowText(ShownKind kind, const QByteArray &der)
{
    QString words;
    QString bytes;
    const QVector<ShownGroup> groups = describe(kind, der);
    for (const ShownGroup &group : groups) {
        // Nobody looks for the bits of a signature.
        if (group.topic == ShownTopic::Signature)
            continue;
        for (const ShownRow &row : group.rows) {
            const QStringList lines = row.value.split(QLatin1Char('\n'));
            for (const QString &line : lines) {
                if (!isBytes(line))
                    addLine(&words, line);
                // Bytes stand in a line of words, too, behind what they are.
                if (row.isFixed || line.contains(QLatin1Char(':')))
                    addLine(&bytes, withoutSeparators(line));
                else if (isBytes(line))
                    addLine(&words, line);
            }
        }
    }
    Oids oids;
    oids.add(Der::sliceOf(der));
    return {foldedText(words).toUtf8() + oids.text(), foldedText(bytes).toUtf8()};
}

RowText RowTexts::of(ShownKind kind, const QByteArray &der)
{
    const QByteArray digest = QCryptographicHash::hash(der, QCryptographicHash::Sha256);
    const auto found = m_texts.constFind(digest);
    if (found != m_texts.constEnd())
        return *found;
    return *m_texts.insert(digest, rowText(kind, der));
}

SearchNeedle::SearchNeedle(const QString &pattern)
    : m_isEmpty(pattern.isEmpty())
    , m_isShort(pattern.size() < LeastLetters)
    , m_text(foldedText(pattern).toUtf8())
{
    QString digits = foldedText(pattern);
    if (digits.startsWith(QLatin1String("0x")))
        digits.remove(0, 2);
    if (!isBytes(digits))
        return;
    digits = withoutSeparators(digits);
    m_hasDigits = digits.size() >= LeastDigits;
    m_digits.setPattern(digits.toUtf8());
}

bool SearchNeedle::isIn(const QByteArray &words) const
{
    return m_isEmpty || m_text.indexIn(words) >= 0 || (m_hasDigits && m_digits.indexIn(words) >= 0);
}

bool SearchNeedle::isIn(const RowText &text) const
{
    if (m_isShort)
        return m_isEmpty;
    return isIn(text.words) || (m_hasDigits && m_digits.indexIn(text.bytes) >= 0);
}

} // namespace Trivex
