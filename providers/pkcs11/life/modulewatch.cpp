// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/modulewatch.h"

#include "providers/pkcs11/life/modulelist.h"

#include <QFile>
#include <QHash>

#include <algorithm>

#include <sys/stat.h>

namespace Trivex {

namespace {

constexpr Worker::Milliseconds LookInterval{500};
/// What is waited for until the modules themselves are known; people read it as the name of one.
constexpr QLatin1String FirstLook("p11-kit");

QVector<Pkcs11::ModuleSource> modulesFor(const TokenSettings &settings)
{
    const QString fromEnvironment = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
    const QString list = fromEnvironment.isEmpty() ? settings.modules : fromEnvironment;
    if (!list.isEmpty())
        return presentModules(list);
    // One for the process: p11-kit, too, reads its configuration once.
    static std::mutex mutex;
    static auto *configuration = new ModuleConfiguration;
    const std::lock_guard lock(mutex);
    return configuration->present();
}

/// Links lead to the same one. Empty for a module in another process.
QString fileOf(const QString &library)
{
    struct stat status = {};
    if (library.isEmpty() || stat(QFile::encodeName(library).constData(), &status) != 0)
        return {};
    return QStringLiteral("%1:%2").arg(quint64(status.st_dev)).arg(quint64(status.st_ino));
}

} // namespace

struct ModuleWatch::State {
    State(const TokenSettings &settings, TokenTable &tokens, FirstScan &scan)
        : tokens(tokens)
        , scan(scan)
        , settings(settings)
    {
    }

    TokenTable &tokens;
    FirstScan &scan;
    std::mutex mutex;
    TokenSettings settings;
    bool stopped = false;
    std::map<QString, std::unique_ptr<ModuleHost>> hosts;

    TokenSettings currentSettings()
    {
        const std::lock_guard lock(mutex);
        return settings;
    }

    /// Of the names of one library only one, or its tokens would be looked for twice, and either
    /// would end the module of the other. The one that runs already, else the first.
    void keepOneOfEach(QVector<Pkcs11::ModuleSource> *sources)
    {
        // Before the lock: a file system may take long to answer.
        for (Pkcs11::ModuleSource &source : *sources)
            source.file = fileOf(source.library);
        const std::lock_guard lock(mutex);
        QHash<QString, QString> keys;
        for (const Pkcs11::ModuleSource &source : qAsConst(*sources)) {
            const auto known = keys.constFind(source.file);
            if (known == keys.cend() || (hosts.count(source.key) > 0 && hosts.count(*known) == 0))
                keys.insert(source.file, source.key);
        }
        const auto isOther = [&](const Pkcs11::ModuleSource &source) {
            return !source.file.isEmpty() && keys.value(source.file) != source.key;
        };
        sources->erase(std::remove_if(sources->begin(), sources->end(), isOther), sources->end());
    }

    void removeAllBut(const QVector<Pkcs11::ModuleSource> &sources)
    {
        const auto isListed = [&](const QString &key) {
            return std::any_of(sources.begin(), sources.end(),
                               [&](const auto &source) { return source.key == key; });
        };
        std::vector<std::unique_ptr<ModuleHost>> gone;
        const std::lock_guard lock(mutex);
        for (auto at = hosts.begin(); at != hosts.end();) {
            if (isListed(at->first)) {
                ++at;
                continue;
            }
            gone.push_back(std::move(at->second));
            at = hosts.erase(at);
        }
    }

    void add(const Pkcs11::ModuleSource &source)
    {
        const std::lock_guard lock(mutex);
        if (stopped)
            return;
        auto &host = hosts[source.key];
        if (host)
            return;
        host = std::make_unique<ModuleHost>(source, tokens, scan);
        host->start();
    }
};

ModuleWatch::ModuleWatch(const TokenSettings &settings, TokenTable &tokens, FirstScan &scan)
    : m_state(std::make_shared<State>(settings, tokens, scan))
{
}

ModuleWatch::~ModuleWatch()
{
    stop();
}

void ModuleWatch::start()
{
    m_state->scan.expect(FirstLook);
    m_worker.start(LookInterval, [state = m_state] { look(*state); });
    m_worker.post([state = m_state] {
        look(*state);
        state->scan.fulfil(FirstLook);
        // Of tokens that come no more, and where nothing is remembered any longer.
        state->tokens.rows().removeOld();
    });
}

void ModuleWatch::configure(const TokenSettings &settings)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->settings = settings;
}

void ModuleWatch::look(State &state)
{
    const TokenSettings settings = state.currentSettings();
    QVector<Pkcs11::ModuleSource> sources = modulesFor(settings);
    const auto isUnwanted = [&](const auto &source) {
        return source.isTrust && !settings.allowRootCa;
    };
    sources.erase(std::remove_if(sources.begin(), sources.end(), isUnwanted), sources.end());
    state.keepOneOfEach(&sources);
    state.removeAllBut(sources);
    for (const Pkcs11::ModuleSource &source : qAsConst(sources))
        state.add(source);
    state.scan.checkPatience();
}

void ModuleWatch::stop()
{
    m_worker.stop();
    std::map<QString, std::unique_ptr<ModuleHost>> hosts;
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->stopped = true;
        hosts.swap(m_state->hosts);
    }
    for (const auto &[key, host] : hosts)
        host->close();
}

} // namespace Trivex
