// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/module.h"
#include "providers/pkcs11/life/p11kitfiles.h"

#include <QVector>

#include <map>
#include <set>
#include <string>

namespace Trivex {

/// The modules of p11-kit's configuration (pkcs11.conf(5)). p11-kit reads it once a process, so
/// this class reads the files again, by p11-kit's rules, to see later changes. A module is gone
/// while its .module file or its library is missing, and a new .module file adds a module. A new
/// "remote:" module needs a restart, because only p11-kit can start one. For one thread.
class ModuleConfiguration {
public:
    ModuleConfiguration();

    /// The modules that are present now. The first call makes p11-kit load all of them.
    QVector<Pkcs11::ModuleSource> present();

private:
    void load(const P11KitFiles::Modules &configured);
    bool isAsLoaded(const std::string &name, const P11KitFiles::Module &module) const;
    Pkcs11::ModuleSource later(const std::string &name, const P11KitFiles::Module &module);

    P11KitFiles m_files;
    std::string m_program;
    bool m_isLoaded = false;
    /// p11-kit's own list, never given back: releasing it would end the modules.
    CK_FUNCTION_LIST **m_modules = nullptr;
    /// The modules that p11-kit has loaded, by its names, and the files' contents at that time.
    std::map<std::string, Pkcs11::ModuleSource> m_loaded;
    P11KitFiles::Modules m_atStart;
    std::set<std::string> m_complained;
};

/// The modules in `list` (see `TokenSettings::modules`) whose library exists.
QVector<Pkcs11::ModuleSource> presentModules(const QString &list);

} // namespace Trivex
