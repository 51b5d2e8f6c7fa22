// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Trivex {

/// p11-kit's configuration files (pkcs11.conf(5)), read as p11-kit itself reads them: it does so
/// once in a process and does not tell what has changed since. Plain C++ and POSIX, because the
/// thread that reads them may run on while the process ends. Of one thread.
class TRIVEX_TOKENS_EXPORT P11KitFiles {
public:
    using Options = std::map<std::string, std::string>;

    /// Where they are.
    struct Places {
        std::string systemFile;
        std::string userFile;
        std::string userModules;
        std::string systemModules;
        std::string packageModules;
        /// False for root, for programs with the rights of another user, and where the environment
        /// says so: p11-kit never reads a user's files there.
        bool readsUserFiles = true;

        static Places ofThisProcess();
    };

    /// What all files of one name say of a module; of an option that several give, the user's
    /// counts, then the system's, then the package's.
    struct Module {
        std::vector<std::string> files;
        Options options;

        std::string option(const char *name) const;
        /// By "enable-in" and "disable-in".
        bool isEnabledIn(const std::string &program) const;
    };
    using Modules = std::map<std::string, Module>;

    explicit P11KitFiles(Places places);

    /// The modules by their names. A file that can't be understood, half written perhaps, counts
    /// with what it said before.
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

/// The options of a file's text; nothing when p11-kit would refuse it.
TRIVEX_TOKENS_EXPORT std::optional<P11KitFiles::Options> parseP11KitFile(const std::string &text);

} // namespace Trivex
