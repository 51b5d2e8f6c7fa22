// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/p11kitfiles.h"

#include "qca/base/descriptor.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include <pwd.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr char Spaces[] = " \t\n\v\f\r";
constexpr char Delimiters[] = ", \t\n\v\f\r";
const char Suffix[] = ".module";
constexpr size_t SuffixSize = sizeof Suffix - 1;
/// More than any of these files needs.
constexpr off_t LargestFile = 1024 * 1024;

std::string trimmed(const std::string &text)
{
    const size_t first = text.find_first_not_of(Spaces);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Spaces) - first + 1);
}

bool isAlphanumeric(char letter)
{
    return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z')
        || (letter >= 'a' && letter <= 'z');
}

/// The module's name; empty when the file is named otherwise than a module's.
std::string moduleName(const std::string &file)
{
    const bool isNamedSo =
        file.size() > SuffixSize && file.compare(file.size() - SuffixSize, SuffixSize, Suffix) == 0
        && isAlphanumeric(file.front()) && std::all_of(file.begin(), file.end(), [](char letter) {
               return isAlphanumeric(letter) || letter == '_' || letter == '-' || letter == '.';
           });
    return isNamedSo ? file.substr(0, file.size() - SuffixSize) : std::string();
}

bool isPlainFile(const std::string &path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
        && status.st_size <= LargestFile;
}

std::vector<std::string> filesIn(const std::string &directory)
{
    std::vector<std::string> names;
    const DirectoryStream stream(opendir(directory.c_str()));
    if (!stream)
        return names;
    while (const dirent *entry = readdir(stream.get()))
        names.emplace_back(entry->d_name);
    std::sort(names.begin(), names.end());
    return names;
}

const char *environment(const char *name)
{
    const char *value = std::getenv(name);
    return value && *value ? value : nullptr;
}

std::string homeDirectory()
{
    if (const char *home = environment("HOME"))
        return home;
    std::vector<char> buffer(16 * 1024);
    passwd entry = {};
    passwd *found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found && found->pw_dir ? found->pw_dir : std::string();
}

std::string userDirectory()
{
    const char *xdg = environment("XDG_CONFIG_HOME");
    return (xdg ? std::string(xdg) : homeDirectory() + "/.config") + "/pkcs11";
}

bool listNames(const std::string &list, const std::string &program)
{
    for (size_t start = list.find_first_not_of(Delimiters); start != std::string::npos;) {
        const size_t end = list.find_first_of(Delimiters, start);
        if (list.compare(start, end - start, program) == 0)
            return true;
        start = list.find_first_not_of(Delimiters, end);
    }
    return false;
}

} // namespace

std::optional<P11KitFiles::Options> parseP11KitFile(const std::string &text)
{
    P11KitFiles::Options options;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        line = trimmed(line);
        if (line.empty() || line.front() == '#')
            continue;
        const size_t colon = line.find(':');
        if (line.front() == '[' || colon == std::string::npos)
            return std::nullopt;
        options[trimmed(line.substr(0, colon))] = trimmed(line.substr(colon + 1));
    }
    return options;
}

P11KitFiles::Reader P11KitFiles::Reader::ofThisProcess()
{
    Reader reader;
    reader.isRoot = getuid() == 0;
    reader.hasOthersRights = getauxval(AT_SECURE) != 0;
    reader.isForbidden = std::getenv("P11_KIT_NO_USER_CONFIG") != nullptr;
    return reader;
}

P11KitFiles::Places P11KitFiles::Places::ofThisProcess()
{
    Places places;
    places.systemFile = "/etc/pkcs11/pkcs11.conf";
    places.systemModules = "/etc/pkcs11/modules";
    places.packageModules = TRIVEX_P11_MODULE_CONFIGS;
    const std::string user = userDirectory();
    places.userFile = user + "/pkcs11.conf";
    places.userModules = user + "/modules";
    places.readsUserFiles = Reader::ofThisProcess().readsUserFiles();
    return places;
}

std::string P11KitFiles::Module::option(const char *name) const
{
    const auto found = options.find(name);
    return found == options.end() ? std::string() : found->second;
}

bool P11KitFiles::Module::isEnabledIn(const std::string &program) const
{
    if (options.count("enable-in") > 0)
        return listNames(option("enable-in"), program);
    return !listNames(option("disable-in"), program);
}

P11KitFiles::P11KitFiles(Places places)
    : m_places(std::move(places))
{
}

P11KitFiles::Modules P11KitFiles::read()
{
    // The modules stay as before when p11-kit would refuse to read on.
    const std::optional<UserConfig> users = userConfig();
    if (!users)
        return m_modules;
    Modules modules;
    if (*users != UserConfig::None)
        add(m_places.userModules, &modules);
    if (*users != UserConfig::Only) {
        add(m_places.systemModules, &modules);
        add(m_places.packageModules, &modules);
    }
    m_modules = modules;
    return modules;
}

/// The options of a file; nothing when it is missing or was never parsed.
std::optional<P11KitFiles::Options> P11KitFiles::parsed(const std::string &path)
{
    if (!isPlainFile(path)) {
        m_known.erase(path);
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::optional<Options> options = file ? parseP11KitFile(text) : std::nullopt;
    if (options)
        m_known[path] = *options;
    const auto known = m_known.find(path);
    return known == m_known.end() ? std::nullopt : std::make_optional(known->second);
}

std::optional<P11KitFiles::UserConfig> P11KitFiles::userConfig()
{
    static const struct {
        const char *name;
        UserConfig meaning;
    } values[] = {{"none", UserConfig::None},
                  {"merge", UserConfig::Merge},
                  {"only", UserConfig::Only},
                  {"override", UserConfig::Only}};
    const auto meaningIn = [&](const Options &options,
                               UserConfig otherwise) -> std::optional<UserConfig> {
        const auto found = options.find("user-config");
        if (found == options.end())
            return otherwise;
        for (const auto &value : values) {
            if (found->second == value.name)
                return value.meaning;
        }
        return std::nullopt;
    };
    auto mode = meaningIn(parsed(m_places.systemFile).value_or(Options()), UserConfig::Merge);
    if (!mode)
        return std::nullopt;
    if (*mode == UserConfig::None || !m_places.readsUserFiles)
        return UserConfig::None;
    return meaningIn(parsed(m_places.userFile).value_or(Options()), *mode);
}

void P11KitFiles::add(const std::string &directory, Modules *modules)
{
    const auto files = filesIn(directory);
    for (const std::string &file : files) {
        const std::string name = moduleName(file);
        const std::string path = directory + '/' + file;
        const std::optional<Options> options = name.empty() ? std::nullopt : parsed(path);
        if (!options)
            continue;
        Module &module = (*modules)[name];
        module.files.push_back(path);
        // An option that an earlier file has set wins.
        module.options.insert(options->begin(), options->end());
    }
}

} // namespace Trivex
