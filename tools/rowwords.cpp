// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowwords.h"

#include "qca/adapter/entries.h"
#include "qca/base/searchtext.h"
#include "tools/texts.h"

#include <QSet>

namespace Trivex {

namespace {

QString shared(const QString &text)
{
    static QSet<QString> texts; // names of stores, and so few
    return *texts.insert(text);
}

QString storeName(const QCA::KeyStoreEntry &entry, bool isSystem)
{
    if (isSystem)
        return qtTrId("trivex-app-category-system");
    const QString name = entryStoreName(entry);
    return name == QLatin1String("USER") ? qtTrId("trivex-app-category-users") : name;
}

} // namespace

QString searchTextOf(const QObject &certificate)
{
    static const char *const fields[] = {"commonName",   "issuer",       "subjectOrganization",
                                         "subjectEmail", "subjectInn",   "subjectSnils",
                                         "subjectOgrn",  "subjectInnle", "subjectOgrnip"};
    QStringList parts;
    for (const char *field : fields) {
        const QString text = certificate.property(field).toString();
        if (!text.isEmpty())
            parts += text;
    }
    // With and without its colons, as people copy it from either kind of program.
    const QString serial = Texts::plainHex(certificate.property("serialNumber").toString());
    parts << serial << QString(serial).remove(QLatin1Char(':'));
    return foldedText(parts.join(QLatin1Char('\n')));
}

QString shownStoreName(const QCA::KeyStoreEntry &entry, bool isSystem)
{
    return shared(storeName(entry, isSystem));
}

QString initialOf(const QString &name)
{
    for (const QChar c : name) {
        if (c.isLetterOrNumber())
            return QString(c.toUpper());
    }
    return QStringLiteral("?");
}

} // namespace Trivex
