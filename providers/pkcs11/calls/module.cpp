// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/module.h"

#include "providers/pkcs11/calls/error.h"

#include <QFile>
#include <QHash>

#include <p11-kit/p11-kit.h>

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

namespace Trivex::Pkcs11 {

namespace {

/// CK_C_INITIALIZE_ARGS for modules that take parameters in pReserved, with the room behind it
/// that NSS reads as its own pReserved.
struct InitializeArguments {
    CK_C_INITIALIZE_ARGS standard;
    void *mustBeNull;
};

/// Which file a path names at the moment: a library that is replaced is another module.
QString fileIdentity(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return path;
    return QStringLiteral("%1|%2|%3|%4")
        .arg(path)
        .arg(quint64(status.st_dev))
        .arg(quint64(status.st_ino))
        .arg(qint64(status.st_mtime));
}

/// Modules by their file, each loaded once a process and kept.
class LoadedModules {
public:
    CK_FUNCTION_LIST *load(const QString &path, int flags)
    {
        const std::lock_guard lock(m_mutex);
        CK_FUNCTION_LIST *&module = m_modules[fileIdentity(path)];
        if (!module) {
            const ForeignCall call;
            module = p11_kit_module_load(QFile::encodeName(path).constData(), flags);
            ProcessEnd::renew();
        }
        return module;
    }

    static LoadedModules &instance()
    {
        static auto *modules = new LoadedModules;
        return *modules;
    }

private:
    std::mutex m_mutex;
    QHash<QString, CK_FUNCTION_LIST *> m_modules;
};

CK_FUNCTION_LIST *load(const ModuleSource &source)
{
    if (source.loaded)
        return source.loaded;
    // p11-kit's own instance of a module can't be given parameters.
    const int flags = source.parameters.isEmpty() ? 0 : P11_KIT_MODULE_UNMANAGED;
    return LoadedModules::instance().load(source.library, flags);
}

bool isSameLibrary(const QString &library, const QString &file, const ModuleSource &source)
{
    return (!library.isEmpty() && library == source.library)
        || (!file.isEmpty() && file == source.file);
}

CK_RV initialize(const CK_FUNCTION_LIST &functions, const QByteArray &parameters)
{
    const ForeignCall call;
    if (parameters.isEmpty())
        return functions.C_Initialize(nullptr);
    QByteArray writable = parameters;
    InitializeArguments arguments = {};
    arguments.standard.flags = CKF_OS_LOCKING_OK;
    arguments.standard.pReserved = writable.data();
    return functions.C_Initialize(&arguments);
}

} // namespace

/// The modules that are initialised, or on their way there or back. Never deleted, because a thread
/// may come back late from a module.
class OpenModules {
public:
    static OpenModules &instance()
    {
        static auto *modules = new OpenModules;
        return *modules;
    }

    ModulePtr open(CK_FUNCTION_LIST *functions, const ModuleSource &source)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (isLeft(source))
                return nullptr;
            const auto known = m_modules.find(functions);
            if (known != m_modules.end()) {
                Entry &entry = known->second;
                entry.isShared = entry.isShared || entry.key != source.key;
                entry.isLeft = false;
                // Null while it is being initialised or finalised.
                ModulePtr module = entry.module.lock();
                return module && !module->isGivenUp() ? module : nullptr;
            }
            m_modules[functions] = {{}, source.key, source.library, source.file};
        }
        const CK_RV result = initialize(*functions, source.parameters);
        ProcessEnd::renew();
        // Initialised by somebody else in this process, who will also finalise it.
        const bool isForeign = result == CKR_CRYPTOKI_ALREADY_INITIALIZED;
        if (result != CKR_OK && !isForeign) {
            forget(functions);
            throw Error(result, "C_Initialize");
        }
        const ModulePtr module(new Module(functions, !isForeign));
        const std::lock_guard lock(m_mutex);
        m_modules[functions].module = module;
        return module;
    }

    void leave(const ModuleSource &source)
    {
        const std::lock_guard lock(m_mutex);
        m_leaving.push_back({source.key, source.library, source.file});
        for (auto &[functions, entry] : m_modules)
            entry.isLeft = entry.isLeft || (entry.key == source.key && !entry.isShared);
    }

    void hasLeft(const ModuleSource &source)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(m_leaving.begin(), m_leaving.end(),
                                        [&](const Leaving &one) { return one.key == source.key; });
        if (found != m_leaving.end())
            m_leaving.erase(found);
    }

    void forget(CK_FUNCTION_LIST *functions)
    {
        const std::lock_guard lock(m_mutex);
        m_modules.erase(functions);
    }

private:
    struct Entry {
        std::weak_ptr<Module> module;
        QString key;
        QString library;
        QString file;
        bool isShared = false; ///< opened for more than one source
        bool isLeft = false;
    };

    /// A source whose users may still be on their way to its module.
    struct Leaving {
        QString key;
        QString library;
        QString file;
    };

    /// Whether another source has left the same library and not finalised it yet.
    bool isLeft(const ModuleSource &source) const
    {
        const auto isOther = [&](const Leaving &one) {
            return one.key != source.key && isSameLibrary(one.library, one.file, source);
        };
        return std::any_of(m_leaving.begin(), m_leaving.end(), isOther)
            || std::any_of(m_modules.begin(), m_modules.end(), [&](const auto &one) {
                   const Entry &entry = one.second;
                   return entry.isLeft && entry.key != source.key
                       && isSameLibrary(entry.library, entry.file, source);
               });
    }

    std::mutex m_mutex;
    std::map<CK_FUNCTION_LIST *, Entry> m_modules;
    std::vector<Leaving> m_leaving;
};

std::shared_ptr<Module> Module::open(const ModuleSource &source)
{
    CK_FUNCTION_LIST *functions = load(source);
    if (!functions)
        throw Error(CKR_GENERAL_ERROR, "p11_kit_module_load");
    return OpenModules::instance().open(functions, source);
}

void Module::leave(const ModuleSource &source)
{
    OpenModules::instance().leave(source);
}

void Module::hasLeft(const ModuleSource &source)
{
    OpenModules::instance().hasLeft(source);
}

Module::Module(CK_FUNCTION_LIST *functions, bool finalize)
    : m_functions(functions)
    , m_finalize(finalize)
{
}

Module::~Module()
{
    if (m_finalize) {
        const ForeignCall call;
        m_functions->C_Finalize(nullptr);
    }
    OpenModules::instance().forget(m_functions);
}

} // namespace Trivex::Pkcs11
