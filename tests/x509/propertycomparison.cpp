// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/propertycomparison.h"

#include "certificates/certificate.h"

#include <QMetaProperty>

QVariantMap propertiesOf(const QCA::Certificate &wrapped)
{
    const Certificate certificate(wrapped);
    const QMetaObject *meta = certificate.metaObject();
    QVariantMap values;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        values.insert(QString::fromLatin1(meta->property(i).name()),
                      meta->property(i).read(&certificate));
    return values;
}

QString describedProperty(const QVariant &value)
{
    if (value.type() == QVariant::DateTime)
        return value.toDateTime().toString(Qt::ISODate);
    return value.toString();
}

QString propertyDifference(const QVariantMap &actual, const QVariantMap &expected)
{
    QString lines;
    if (actual.keys() != expected.keys())
        return QStringLiteral("other properties than expected: ") + actual.keys().join(u' ');
    for (auto value = actual.begin(); value != actual.end(); ++value) {
        const QString want = describedProperty(expected.value(value.key()));
        const QString have = describedProperty(value.value());
        if (have != want)
            lines += QStringLiteral("\n%1: \"%2\" instead of \"%3\"")
                         .arg(value.key(), have.left(200), want.left(200));
    }
    return lines;
}
