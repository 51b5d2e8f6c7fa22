// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/modulelist.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <p11-kit/p11-kit.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

namespace Trivex {

using Pkcs11::ModuleSource;

namespace {

struct FreeText {
    void operator()(char *text) const noexcept { std::free(text); }
};

std::string taken(char *text)
{
    const std::unique_ptr<char, FreeText> owner(text);
    return text ? text : std::string();
}

QString libraryPath(const QString &path)
{
    if (path.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    return QStringLiteral(TRIVEX_P11_MODULE_PATH "/") + path;
}

bool isPresent(const ModuleSource &source)
{
    return source.library.isEmpty() || QFile::exists(source.library);
}

bool isTrustLibrary(const QString &path)
{
    return QFileInfo(path).fileName().startsWith(QLatin1String("p11-kit-trust"));
}

ModuleSource sourceOf(CK_FUNCTION_LIST *module, const std::string &name)
{
    ModuleSource source;
    source.key = QString::fromStdString(name);
    source.library =
        libraryPath(QString::fromStdString(taken(p11_kit_module_get_filename(module))));
    source.isTrust = p11_kit_module_get_flags(module) & P11_KIT_MODULE_TRUSTED;
    source.loaded = module;
    return source;
}

} // namespace

ModuleConfiguration::ModuleConfiguration()
    : m_files(P11KitFiles::Places::ofThisProcess())
    , m_program(program_invocation_short_name)
{
}

void ModuleConfiguration::load(const P11KitFiles::Modules &configured)
{
    m_atStart = configured;
    {
        const ForeignCall call;
        // Kept for the life of the process, like every module.
        m_modules = p11_kit_modules_load(nullptr, 0);
        ProcessEnd::renew();
    }
    for (CK_FUNCTION_LIST **at = m_modules; at && *at; ++at) {
        const std::string name = taken(p11_kit_module_get_name(*at));
        m_loaded[name] = sourceOf(*at, name);
    }
    m_isLoaded = true;
}

/// p11-kit's instance stands for what the files said when it was loaded.
bool ModuleConfiguration::isAsLoaded(const std::string &name,
                                     const P11KitFiles::Module &module) const
{
    const auto before = m_atStart.find(name);
    if (before == m_atStart.end())
        return false;
    const auto isSame = [&](const char *option) {
        return before->second.option(option) == module.option(option);
    };
    return isSame("module") && isSame("remote") && isSame("x-init-reserved")
        && isSame("trust-policy");
}

QVector<ModuleSource> ModuleConfiguration::present()
{
    const P11KitFiles::Modules configured = m_files.read();
    if (!m_isLoaded)
        load(configured);
    QVector<ModuleSource> sources;
    for (const auto &[name, module] : configured) {
        if (!module.isEnabledIn(m_program))
            continue;
        const auto loaded = m_loaded.find(name);
        if (!isAsLoaded(name, module))
            sources.append(later(name, module));
        else if (loaded != m_loaded.end())
            sources.append(loaded->second);
    }
    const auto isMissing = [](const ModuleSource &source) {
        const bool isNamed = source.loaded || !source.library.isEmpty();
        return !isNamed || !isPresent(source);
    };
    sources.erase(std::remove_if(sources.begin(), sources.end(), isMissing), sources.end());
    return sources;
}

/// A source without a library when that can't be loaded here.
ModuleSource ModuleConfiguration::later(const std::string &name, const P11KitFiles::Module &module)
{
    ModuleSource source;
    if (!module.option("remote").empty()) {
        if (m_complained.insert(name).second)
            qWarning("PKCS#11 module %s: a remote module is found at the next start only",
                     name.c_str());
        return source;
    }
    source.library = libraryPath(QString::fromStdString(module.option("module")));
    source.parameters = QByteArray::fromStdString(module.option("x-init-reserved"));
    source.isTrust = module.option("trust-policy") == "yes";
    // Another host when the file comes to say something else.
    source.key = QStringLiteral("%1: %2 %3")
                     .arg(QString::fromStdString(name), source.library,
                          QString::fromUtf8(source.parameters));
    return source;
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
