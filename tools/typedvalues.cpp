// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/typedvalues.h"

#include "tools/subjectattributes.h"

#include <algorithm>

namespace Trivex {

namespace {

/// A name has most of its attributes once; these it may have for each level or part.
bool mayRepeat(const QString &type)
{
    constexpr const char *Repeated[] = {"organizationalUnit", "domainComponent"};
    return std::any_of(std::begin(Repeated), std::end(Repeated), [&type](const char *one) {
        return subjectAttributeOid(type) == subjectAttributeOid(QLatin1String(one));
    });
}

/// How many values of that type there are, under whichever of its names.
int countOf(const QString &type, const QList<RequestValue> &values)
{
    const QString oid = subjectAttributeOid(type);
    return int(std::count_if(values.cbegin(), values.cend(), [&oid](const RequestValue &value) {
        return !oid.isEmpty() && subjectAttributeOid(value.type) == oid;
    }));
}

} // namespace

QList<RequestValue> filled(QList<RequestValue> wanted, const QList<RequestValue> &typed)
{
    for (const RequestValue &value : typed) {
        if (value.value.trimmed().isEmpty() || wanted.contains(value))
            continue;
        auto place = std::find(wanted.begin(), wanted.end(), RequestValue{value.type, {}});
        if (place == wanted.end() && !mayRepeat(value.type) && countOf(value.type, wanted) == 1
            && countOf(value.type, typed) == 1) {
            place = std::find_if(wanted.begin(), wanted.end(), [&value](const RequestValue &one) {
                return subjectAttributeOid(one.type) == subjectAttributeOid(value.type);
            });
        }
        if (place != wanted.end())
            place->value = value.value;
        else
            wanted.append(value);
    }
    return wanted;
}

QList<RequestValue> without(QList<RequestValue> values, const QList<RequestValue> &others)
{
    for (const RequestValue &other : others)
        values.removeOne(other);
    return values;
}

} // namespace Trivex
