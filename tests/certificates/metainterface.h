// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaEnum>
#include <QMetaObject>
#include <QMetaProperty>
#include <QStringList>

namespace TrivexTest {

/// What a class adds to its base, in order, a line each: "signal x()", "slot x()", "method bool
/// x(QString)", "property QString x read constant", "enum E A=0 B=1".
inline QStringList metaInterface(const QMetaObject &object)
{
    static const char *const kinds[] = {"method", "signal", "slot", "constructor"};
    QStringList lines;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        const QMetaMethod method = object.method(i);
        QString line = QLatin1String(kinds[method.methodType()]) + QLatin1Char(' ');
        if (qstrcmp(method.typeName(), "void") != 0)
            line += QLatin1String(method.typeName()) + QLatin1Char(' ');
        lines << line + QString::fromLatin1(method.methodSignature());
    }
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i) {
        const QMetaProperty property = object.property(i);
        QString line = QStringLiteral("property ") + QLatin1String(property.typeName())
            + QLatin1Char(' ') + QLatin1String(property.name());
        line += QLatin1String(property.isReadable() ? " read" : "");
        line += QLatin1String(property.isWritable() ? " write" : "");
        line += QLatin1String(property.isConstant() ? " constant" : "");
        if (property.hasNotifySignal())
            line += QLatin1Char(' ') + QString::fromLatin1(property.notifySignal().name());
        lines << line;
    }
    for (int i = object.enumeratorOffset(); i < object.enumeratorCount(); ++i) {
        const QMetaEnum values = object.enumerator(i);
        QString line = QStringLiteral("enum ") + QLatin1String(values.name());
        for (int key = 0; key < values.keyCount(); ++key)
            line +=
                QStringLiteral(" %1=%2").arg(QLatin1String(values.key(key))).arg(values.value(key));
        lines << line;
    }
    return lines;
}

} // namespace TrivexTest
