// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/structure.h"

#include "qca/asn1/strings.h"
#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"

#include <QStringList>

namespace Trivex {

namespace {

constexpr int DeepestShown = 64;
constexpr int ShownValueBytes = 32;
constexpr int ShownValueCharacters = 120;

struct TypeName {
    int tag;
    const char *name;
};

constexpr TypeName TypeNames[] = {
    {Der::Boolean, "BOOLEAN"},
    {Der::Integer, "INTEGER"},
    {Der::BitString, "BIT STRING"},
    {Der::OctetString, "OCTET STRING"},
    {Der::Null, "NULL"},
    {Der::ObjectIdentifier, "OBJECT"},
    {Der::Enumerated, "ENUMERATED"},
    {Der::Utf8String, "UTF8String"},
    {Der::NumericString, "NumericString"},
    {Der::PrintableString, "PrintableString"},
    {Der::T61String, "T61String"},
    {Der::Ia5String, "IA5String"},
    {Der::UtcTime, "UTCTime"},
    {Der::GeneralizedTime, "GeneralizedTime"},
    {Der::VisibleString, "VisibleString"},
    {Der::UniversalString, "UniversalString"},
    {Der::BmpString, "BMPString"},
    {Der::Sequence & ~Der::ConstructedBit, "SEQUENCE"},
    {Der::Set & ~Der::ConstructedBit, "SET"},
};

constexpr int ClassBits = 0xC0;
constexpr int NumberBits = 0x1F;

QString typeName(int tag)
{
    if (tag < 0)
        return QStringLiteral("[long tag]");
    for (const TypeName &type : TypeNames) {
        if ((tag & ~Der::ConstructedBit) == type.tag)
            return QString::fromLatin1(type.name);
    }
    static const char *const classes[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
    return QStringLiteral("[%1%2]")
        .arg(QLatin1String(classes[(tag & ClassBits) >> 6]))
        .arg(tag & NumberBits);
}

QString shortBytes(Der::Slice bytes)
{
    return bytesText(bytes, ShownValueBytes);
}

QString shortText(const QString &text)
{
    const QString line = lineText(text.left(ShownValueCharacters));
    return text.size() > ShownValueCharacters ? line + QStringLiteral("…") : line;
}

QString valueOf(const Der::Element &element)
{
    switch (element.tag) {
    case Der::Null:
        return {};
    case Der::Boolean:
        return element.content.size == 1 ? QLatin1String(element.content.at(0) ? "TRUE" : "FALSE")
                                         : shortBytes(element.content);
    case Der::Integer:
    case Der::Enumerated:
        return element.content.size <= 4 ? numberText(element.content)
                                         : shortBytes(element.content);
    case Der::ObjectIdentifier:
        return objectText(element.content);
    case Der::UtcTime:
    case Der::GeneralizedTime:
        return shortText(QString::fromLatin1(element.content.data, qMin(element.content.size, 64)));
    default:
        return isString(element.tag) ? shortText(decodeString(element))
                                     : shortBytes(element.content);
    }
}

/// Whether `bytes` are elements from their beginning to their end, by their headers alone.
bool looksLikeElements(Der::Slice bytes)
{
    Der::Reader reader(bytes);
    bool hasAny = false;
    while (!reader.atEnd()) {
        Der::Element element;
        const int tag = reader.peek();
        const bool isKnown = tag & ClassBits || !typeName(tag).startsWith(QLatin1Char('['));
        if (!isKnown || !reader.next(&element))
            return false;
        hasAny = true;
    }
    return hasAny;
}

/// The inside of an element: its members, or the DER in a string. Empty if it has neither.
Der::Slice inside(const Der::Element &element)
{
    if (element.tag >= 0 && element.tag & Der::ConstructedBit)
        return element.content;
    Der::Slice bytes;
    if (element.tag == Der::OctetString)
        bytes = element.content;
    else if (element.tag == Der::BitString)
        Der::wholeBits(element.content, &bytes);
    return looksLikeElements(bytes) ? bytes : Der::Slice();
}

class Tree {
public:
    Tree(const QByteArray &der, int most)
        : m_der(der)
        , m_most(most)
        , m_width(QString::number(der.size()).size())
    {
        walk(Der::sliceOf(m_der), 0);
    }
    QString text() const { return m_lines.join(QLatin1Char('\n')); }

private:
    bool isFull() const { return m_lines.size() > m_most; }
    void walk(Der::Slice bytes, int depth);
    void add(Der::Slice whole, int depth, const QString &text);
    void addElement(const Der::Element &element, int depth);

    QByteArray m_der;
    int m_most;
    int m_width; ///< of a number
    QStringList m_lines;
};

void Tree::add(Der::Slice whole, int depth, const QString &text)
{
    const auto offset = int(whole.data - m_der.constData());
    if (m_lines.size() == m_most) {
        m_lines += QStringLiteral("… %1 bytes").arg(m_der.size() - offset);
        return;
    }
    m_lines += QStringLiteral("%1 %2  %3%4")
                   .arg(offset, m_width)
                   .arg(whole.size, m_width)
                   .arg(QString(2 * depth, QLatin1Char(' ')), text);
}

void Tree::addElement(const Der::Element &element, int depth)
{
    const Der::Slice content = inside(element);
    const bool isOpened = !content.isEmpty() && depth < DeepestShown;
    const bool isList = element.tag >= 0 && element.tag & Der::ConstructedBit;
    const QString value = isOpened || (isList && content.isEmpty()) ? QString() : valueOf(element);
    const QString name = typeName(element.tag);
    add(element.whole, depth, value.isEmpty() ? name : name + QStringLiteral("  ") + value);
    if (isOpened)
        walk(content, depth + 1);
}

void Tree::walk(Der::Slice bytes, int depth)
{
    Der::Reader reader(bytes);
    while (!reader.atEnd() && !isFull()) {
        const Der::Slice rest = reader.rest();
        Der::Element element;
        if (reader.next(&element))
            addElement(element, depth);
        else
            add(rest, depth, QStringLiteral("no DER  ") + shortBytes(rest));
    }
}

} // namespace

QString structureText(const QByteArray &der, int most)
{
    return Tree(der, most).text();
}

} // namespace Trivex
