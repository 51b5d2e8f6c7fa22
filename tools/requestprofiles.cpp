// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requestprofiles.h"

#include "qca/base/atomicfile.h"
#include "qca/base/filenames.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/regularfile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>

namespace Trivex {

namespace {

constexpr char Extension[] = ".json";

/// Types and usages are separated by blanks.
struct BuiltIn {
    const char *name;
    const char *title; ///< identifier of its text
    const char *names;
    const char *alternativeNames;
    const char *keyUsages;
    const char *purposes;
};

constexpr BuiltIn BuiltIns[] = {
    //% "Simple"
    {"simple", QT_TRID_NOOP("trivex-app-profile-simple"), "commonName organization email country",
     "", "", ""},
    //% "Web server"
    {"web-server", QT_TRID_NOOP("trivex-app-profile-server"),
     "commonName organization organizationalUnit locality state country", "dns dns ip",
     "digitalSignature keyEncipherment", "serverAuth"},
    //% "Protected e-mail"
    {"email", QT_TRID_NOOP("trivex-app-profile-mail"), "commonName email organization country",
     "email", "digitalSignature nonRepudiation keyEncipherment", "emailProtection clientAuth"},
    //% "Person (Russia)"
    {"russian-person", QT_TRID_NOOP("trivex-app-profile-person"),
     "commonName surname givenName inn snils email country state locality", "",
     "digitalSignature nonRepudiation keyEncipherment", "clientAuth emailProtection"},
    //% "Company (Russia)"
    {"russian-company", QT_TRID_NOOP("trivex-app-profile-company"),
     "commonName surname givenName title organization organizationalUnit ogrn innle inn snils "
     "email country state locality street",
     "", "digitalSignature nonRepudiation keyEncipherment", "clientAuth emailProtection"},
};

const BuiltIn *findBuiltIn(const QString &name)
{
    const auto *const found =
        std::find_if(std::begin(BuiltIns), std::end(BuiltIns),
                     [&name](const BuiltIn &one) { return name == QLatin1String(one.name); });
    return found == std::end(BuiltIns) ? nullptr : found;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QList<RequestValue> emptyValues(const char *types)
{
    QList<RequestValue> values;
    for (const QString &type : words(types)) {
        const bool isRussia =
            type == QLatin1String("country") && QLatin1String(types).contains(QLatin1String("inn"));
        values.append({type, isRussia ? QStringLiteral("RU") : QString()});
    }
    return values;
}

QString pathOf(const QString &name)
{
    return RequestProfiles::directory() + safeFileName(name, QLatin1String(Extension));
}

bool isTooMany(const RequestContents &contents)
{
    return contents.names.size() + contents.alternativeNames.size() > RequestProfiles::MostValues
        || contents.keyUsages.size() + contents.purposes.size() > RequestProfiles::MostValues;
}

/// Nothing for more than a profile may have, which is not read.
std::optional<QByteArray> readSmallFile(const QString &path)
{
    QFile file;
    if (!openRegularFile(path, &file) || file.size() > RequestProfiles::MostBytes)
        return std::nullopt;
    // A file that grows meanwhile is read no further.
    const QByteArray text = file.read(RequestProfiles::MostBytes + 1);
    return text.size() > RequestProfiles::MostBytes ? std::nullopt : std::make_optional(text);
}

} // namespace

RequestProfiles::RequestProfiles(QObject *parent)
    : QObject(parent)
{
}

QString RequestProfiles::directory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1String("/trivex/request-profiles/");
}

QStringList RequestProfiles::names() const
{
    QStringList names;
    for (const BuiltIn &one : BuiltIns)
        names.append(QString::fromLatin1(one.name));
    const QStringList files =
        QDir(directory())
            .entryList({QLatin1Char('*') + QLatin1String(Extension)}, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        const QString name = file.chopped(int(sizeof Extension) - 1);
        if (!findBuiltIn(name))
            names.append(name);
    }
    return names;
}

QString RequestProfiles::title(const QString &name) const
{
    const BuiltIn *builtIn = findBuiltIn(name);
    return builtIn ? qtTrId(builtIn->title) : name;
}

bool RequestProfiles::isBuiltIn(const QString &name) const
{
    return findBuiltIn(name);
}

bool RequestProfiles::remove(const QString &name)
{
    if (name.isEmpty() || isBuiltIn(name) || !QFile::exists(pathOf(name))
        || !removeFile(pathOf(name)))
        return false;
    Q_EMIT namesChanged();
    return true;
}

std::optional<RequestContents> RequestProfiles::load(const QString &name) const
{
    if (const BuiltIn *builtIn = findBuiltIn(name)) {
        return RequestContents{emptyValues(builtIn->names), emptyValues(builtIn->alternativeNames),
                               words(builtIn->keyUsages), words(builtIn->purposes)};
    }
    const auto text = name.isEmpty() ? std::nullopt : readSmallFile(pathOf(name));
    const QJsonDocument document = text ? QJsonDocument::fromJson(*text) : QJsonDocument();
    if (!document.isObject())
        return std::nullopt;
    const RequestContents contents = RequestContents::fromJson(document.object());
    return isTooMany(contents) ? std::nullopt : std::make_optional(contents);
}

QString RequestProfiles::listedName(const QString &name)
{
    return safeFileName(name, QLatin1String(Extension)).chopped(int(sizeof Extension) - 1);
}

bool RequestProfiles::exists(const QString &name) const
{
    return !name.trimmed().isEmpty() && !isBuiltIn(listedName(name))
        && QFileInfo::exists(pathOf(name));
}

RequestProfiles::SaveResult RequestProfiles::save(const QString &name,
                                                  const RequestContents &contents, bool mayReplace)
{
    if (name.trimmed().isEmpty() || isBuiltIn(listedName(name))
        || !makePrivateDirectory(directory()))
        return NotSaved;
    const QByteArray text = QJsonDocument(contents.toJson()).toJson();
    if (text.size() > MostBytes || isTooMany(contents))
        return TooLarge;
    const WriteResult result = writeAtomically(pathOf(name), text, mayReplace);
    if (result == WriteResult::Exists)
        return Exists;
    if (result != WriteResult::Written)
        return NotSaved;
    Q_EMIT namesChanged();
    return Saved;
}

} // namespace Trivex
