// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/catalogues.h"

#include "qca/base/places.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace Trivex {

void installCatalogues(const QString &name, QObject *owner)
{
    if (owner->findChild<QTranslator *>(name, Qt::FindDirectChildrenOnly))
        return;
    const QString directory = catalogueDirectory(name + QStringLiteral("_en.qm"));
    auto *english = new QTranslator(owner);
    english->setObjectName(name);
    if (english->load(name + QStringLiteral("_en"), directory))
        QCoreApplication::installTranslator(english);
    // Qt asks the translator installed last first.
    auto *local = new QTranslator(owner);
    if (local->load(QLocale(), name, QStringLiteral("_"), directory))
        QCoreApplication::installTranslator(local);
}

} // namespace Trivex
