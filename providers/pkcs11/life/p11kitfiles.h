// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Trivex {

/// Reads p11-kit's configuration files (pkcs11.conf(5)) by p11-kit's rules, because p11-kit itself
/// reads them once a process and reports no changes. Plain C++ and POSIX, because the thread that
/// reads them may still run while the process ends. For one thread.
class TRIVEX_TOKENS_EXPORT P11KitFiles {
public:
    using Options = std::map<std::string, std::string>;

    /// For whom p11-kit reads.
    struct Reader {
        bool isRoot = false;
        bool hasOthersRights = false; ///< a program with the rights of another user
        bool isForbidden = false; ///< the environment forbids a user's files

        static Reader ofThisProcess();
        bool readsUserFiles() const { return !isRoot && !hasOthersRights && !isForbidden; }
    };

    /// The paths of the files and of the directories with .module files.
    struct Places {
        std::string systemFile;
        std::string userFile;
        std::string userModules;
        std::string systemModules;
        std::string packageModules;
        /// p11-kit does not read them for everybody; see `Reader`.
        bool readsUserFiles = true;

        static Places ofThisProcess();
    };

    /// A module, from all its files. Where several set an option, the user's file wins, then the
    /// system's, then the package's.
    struct Module {
        std::vector<std::string> files;
        Options options;

        /// Empty when no file sets it.
        std::string option(const char *name) const;
        /// Whether "enable-in" and "disable-in" allow the module in `program`.
        bool isEnabledIn(const std::string &program) const;
    };
    using Modules = std::map<std::string, Module>;

    explicit P11KitFiles(Places places);

    /// The modules by their names. A file that can't be parsed, perhaps because it is half written,
    /// keeps its earlier contents.
    Modules read();

private:
    enum class UserConfig { None, Merge, Only };

    std::optional<Options> parsed(const std::string &path);
    std::optional<UserConfig> userConfig();
    void add(const std::string &directory, Modules *modules);

    Places m_places;
    std::map<std::string, Options> m_known; ///< files by their paths, as last understood
    Modules m_modules;
};

/// The options in the text of a file; nothing when p11-kit would refuse the text.
TRIVEX_TOKENS_EXPORT std::optional<P11KitFiles::Options> parseP11KitFile(const std::string &text);

} // namespace Trivex
