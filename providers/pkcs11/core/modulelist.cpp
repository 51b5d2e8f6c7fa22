// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/modulelist.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <p11-kit/p11-kit.h>

#include <cstdlib>
#include <memory>

namespace Trivex {

using Pkcs11::ModuleSource;

namespace {

struct FreeText {
    void operator()(char *text) const noexcept { std::free(text); }
};

QString taken(char *text)
{
    const std::unique_ptr<char, FreeText> owner(text);
    return QString::fromLocal8Bit(text);
}

QString userConfigDir()
{
    const QString xdg = qEnvironmentVariable("XDG_CONFIG_HOME");
    return xdg.isEmpty() ? QDir::homePath() + QLatin1String("/.config") : xdg;
}

QStringList configDirs()
{
    return {userConfigDir() + QLatin1String("/pkcs11/modules"),
            QStringLiteral("/etc/pkcs11/modules"), QStringLiteral(TRIVEX_P11_MODULE_CONFIGS)};
}

/// .module files by their path.
QStringList configFiles()
{
    QStringList files;
    for (const QString &path : configDirs()) {
        const QDir dir(path);
        const auto names = dir.entryList({QStringLiteral("*.module")}, QDir::Files);
        for (const QString &name : names)
            files.append(dir.filePath(name));
    }
    return files;
}

QString fileOf(const QString &moduleName, const QStringList &files)
{
    for (const QString &file : files) {
        if (QFileInfo(file).completeBaseName() == moduleName)
            return file;
    }
    return {};
}

QString libraryPath(const QString &path)
{
    if (path.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    return QStringLiteral(TRIVEX_P11_MODULE_PATH "/") + path;
}

bool isPresent(const ModuleSource &source)
{
    const auto isThere = [](const QString &path) { return path.isEmpty() || QFile::exists(path); };
    return isThere(source.library) && isThere(source.configFile);
}

bool isTrustLibrary(const QString &path)
{
    return QFileInfo(path).fileName().startsWith(QLatin1String("p11-kit-trust"));
}

QHash<QString, QString> readOptions(const QString &path)
{
    QHash<QString, QString> options;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return options;
    const auto lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const int colon = line.indexOf(':');
        if (colon > 0 && !line.trimmed().startsWith('#'))
            options.insert(QString::fromUtf8(line.left(colon)).trimmed(),
                           QString::fromUtf8(line.mid(colon + 1)).trimmed());
    }
    return options;
}

bool namesThisProgram(const QString &list)
{
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    const auto names = list.split(QLatin1Char(','));
    for (const QString &name : names) {
        if (name.trimmed() == program)
            return true;
    }
    return false;
}

bool isEnabled(const QHash<QString, QString> &options)
{
    const auto enabled = options.constFind(QStringLiteral("enable-in"));
    if (enabled != options.constEnd())
        return namesThisProgram(*enabled);
    return !namesThisProgram(options.value(QStringLiteral("disable-in")));
}

/// A source without a library when the file does not name one for this program.
ModuleSource sourceFromFile(const QString &path)
{
    const auto options = readOptions(path);
    ModuleSource source;
    source.key = path;
    source.configFile = path;
    if (!isEnabled(options))
        return source;
    source.library = libraryPath(options.value(QStringLiteral("module")));
    source.parameters = options.value(QStringLiteral("x-init-reserved")).toUtf8();
    source.isTrust = options.value(QStringLiteral("trust-policy")) == QLatin1String("yes");
    if (source.library.isEmpty() && options.contains(QStringLiteral("remote")))
        qWarning("PKCS#11 module %s: a remote module is found at the next start only",
                 qUtf8Printable(path));
    return source;
}

ModuleSource sourceOf(CK_FUNCTION_LIST *module, const QStringList &files)
{
    ModuleSource source;
    source.key = taken(p11_kit_module_get_name(module));
    source.library = libraryPath(taken(p11_kit_module_get_filename(module)));
    source.configFile = fileOf(source.key, files);
    source.isTrust = p11_kit_module_get_flags(module) & P11_KIT_MODULE_TRUSTED;
    source.loaded = module;
    return source;
}

} // namespace

void ModuleConfiguration::load()
{
    const QStringList files = configFiles();
    m_seen = QSet<QString>(files.begin(), files.end());
    // Kept for the life of the process, like every module.
    m_modules = p11_kit_modules_load(nullptr, 0);
    for (CK_FUNCTION_LIST **at = m_modules; at && *at; ++at)
        m_loaded.append(sourceOf(*at, files));
    m_isLoaded = true;
}

QVector<ModuleSource> ModuleConfiguration::present()
{
    if (!m_isLoaded)
        load();
    QVector<ModuleSource> sources;
    for (const ModuleSource &source : qAsConst(m_loaded)) {
        if (isPresent(source))
            sources.append(source);
    }
    addNewFiles(&sources);
    return sources;
}

void ModuleConfiguration::addNewFiles(QVector<ModuleSource> *sources)
{
    const QStringList files = configFiles();
    for (const QString &file : files) {
        if (m_seen.contains(file))
            continue;
        if (!m_later.contains(file))
            m_later.insert(file, sourceFromFile(file));
        const ModuleSource &source = m_later[file];
        if (!source.library.isEmpty() && isPresent(source))
            sources->append(source);
    }
    // Read again when it comes back, perhaps with other contents.
    for (auto at = m_later.begin(); at != m_later.end();)
        at = files.contains(at.key()) ? std::next(at) : m_later.erase(at);
}

QVector<ModuleSource> presentModules(const QString &list)
{
    QVector<ModuleSource> sources;
    const auto items = list.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString &item : items) {
        ModuleSource source;
        source.key = item.trimmed();
        source.library = source.key.section(QLatin1Char('|'), 0, 0).trimmed();
        source.parameters = source.key.section(QLatin1Char('|'), 1).trimmed().toUtf8();
        source.isTrust = isTrustLibrary(source.library);
        if (isPresent(source))
            sources.append(source);
    }
    return sources;
}

} // namespace Trivex
