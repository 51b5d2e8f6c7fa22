// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/elements.h"

namespace Trivex::Der {

QList<QByteArray> elementsOf(Slice content, QByteArray *rest)
{
    QList<QByteArray> elements;
    Reader reader(content);
    Element element;
    int size = 0;
    while (reader.next(&element)) {
        elements.append(element.whole.bytes());
        size += element.whole.size;
    }
    *rest = Slice{content.data + size, content.size - size}.bytes();
    return elements;
}

} // namespace Trivex::Der
