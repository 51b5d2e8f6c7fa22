// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowentry.h"

#include <QMetaProperty>

namespace Trivex {

// Read past QVariant, which knows the pointer only under the one name that the module registers.
const QCA::KeyStoreEntry *wrappedEntry(QObject *object)
{
    const int index = object ? object->metaObject()->indexOfProperty("data") : -1;
    if (index < 0)
        return nullptr;
    const QByteArray type = object->metaObject()->property(index).typeName();
    if (type != "QCA::KeyStoreEntry*" && type != "QCA_KeyStoreEntry*")
        return nullptr;
    QCA::KeyStoreEntry *entry = nullptr;
    void *arguments[] = {&entry};
    QMetaObject::metacall(object, QMetaObject::ReadProperty, index, arguments);
    return entry;
}

} // namespace Trivex
