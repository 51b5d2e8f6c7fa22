// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/core/module.h"

#include <QHash>
#include <QSet>
#include <QVector>

namespace Trivex {

/// The modules of p11-kit's configuration (pkcs11.conf(5)). p11-kit reads it once; what comes and
/// goes afterwards is told from the files: a module whose .module file or library vanishes is gone
/// until it is back, and a new .module file is read here. A new "remote:" module needs a restart,
/// because only p11-kit itself can start one.
class ModuleConfiguration {
public:
    /// The modules that are present now. The first call loads them all.
    QVector<Pkcs11::ModuleSource> present();

private:
    void load();
    void addNewFiles(QVector<Pkcs11::ModuleSource> *sources);

    bool m_isLoaded = false;
    /// p11-kit's own list, never given back: releasing it would end the modules.
    CK_FUNCTION_LIST **m_modules = nullptr;
    /// What p11-kit has loaded.
    QVector<Pkcs11::ModuleSource> m_loaded;
    /// The files it has seen.
    QSet<QString> m_seen;
    /// The files that came later.
    QHash<QString, Pkcs11::ModuleSource> m_later;
};

/// The modules in `list` (see TokenSettings::modules) whose library is there.
QVector<Pkcs11::ModuleSource> presentModules(const QString &list);

} // namespace Trivex
