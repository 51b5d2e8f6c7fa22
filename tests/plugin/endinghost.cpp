// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/plugin/endinghost.h"

#include "qca/adapter/stores.h"
#include "tests/support/endingchild.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTimer>
#include <QtCrypto>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace TrivexTest {

const char *const StaticQca = "TRIVEX_TEST_STATIC_QCA";
const char *const BufferedText = "left in the buffer";

namespace {

constexpr int StillWithoutRows = 3;
constexpr int NoPage = 4;
constexpr int RowPatience = 60000; // ms
constexpr int ChildPatience = 5000; // ms

/// Before main, as a member of a host's global object would be.
const std::unique_ptr<QCA::Initializer> staticQca =
    qEnvironmentVariableIsSet(StaticQca) ? std::make_unique<QCA::Initializer>() : nullptr;

const char *const Page = R"(
import QtQml 2.15
import Trivex.Crypto 1.0
QtObject {
    property int rows: KeyStoreModel.rowCount()
    property Connections watch: Connections {
        target: KeyStoreModel
        function onRowsInserted() { rows = KeyStoreModel.rowCount() }
    }
    Component.onCompleted: guest.loaded()
})";

/// What the host shows its page.
class Guest : public QObject {
    Q_OBJECT
public:
    std::function<void()> whenLoaded;

    Q_INVOKABLE void loaded()
    {
        if (whenLoaded)
            whenLoaded();
    }
};

/// What uses the key stores: an engine with its page, or the stores themselves.
class User {
public:
    explicit User(const QString &kind, const std::function<void()> &whenLoaded = {});
    ~User();

    bool isValid() const { return m_page || m_manager; }
    bool hasRows() const;

private:
    void openPage();
    void follow(const QString &id);

    Guest m_guest;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QObject> m_page;
    std::unique_ptr<QCA::KeyStoreManager> m_manager;
    int m_rows = 0;
};

User::User(const QString &kind, const std::function<void()> &whenLoaded)
{
    m_guest.whenLoaded = whenLoaded;
    if (kind == QLatin1String("qml")) {
        openPage();
        return;
    }
    if (kind == QLatin1String("library"))
        Trivex::startStores();
    else
        QCA::KeyStoreManager::start();
    m_manager = std::make_unique<QCA::KeyStoreManager>();
    QObject::connect(m_manager.get(), &QCA::KeyStoreManager::keyStoreAvailable, &m_guest,
                     [this](const QString &id) { follow(id); });
    const QStringList known = m_manager->keyStores();
    for (const QString &id : known)
        follow(id);
    m_guest.loaded();
}

// The page goes first, as in any host.
User::~User()
{
    m_page.reset();
}

void User::openPage()
{
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(QStringLiteral(TRIVEX_TEST_QML_DIR));
    m_engine->rootContext()->setContextProperty(QStringLiteral("guest"), &m_guest);
    QQmlComponent component(m_engine.get());
    component.setData(Page, QUrl());
    m_page.reset(component.create());
    if (!m_page)
        std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
}

void User::follow(const QString &id)
{
    auto *store = new QCA::KeyStore(id, m_manager.get());
    QObject::connect(store, &QCA::KeyStore::updated, &m_guest,
                     [this, store] { m_rows += store->entryList().size(); });
    store->startAsynchronousMode();
}

bool User::hasRows() const
{
    return m_page ? m_page->property("rows").toInt() > 0 : m_rows > 0;
}

void sayBuffered()
{
    sayEnding();
    std::puts(BufferedText);
}

[[noreturn]] void leave()
{
    sayBuffered();
    std::exit(ToldStatus);
}

void leaveOnOtherThread()
{
    sayBuffered();
    std::thread([] { std::exit(ToldStatus); }).join();
}

[[noreturn]] void leaveQuickly()
{
    sayEnding();
    std::quick_exit(ToldStatus);
}

/// A child that calls `exit`, while its parent goes on; its status is the parent's.
void leaveAfterFork()
{
    sayBuffered();
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0)
        std::exit(ToldStatus);
    QElapsedTimer clock;
    clock.start();
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (clock.elapsed() > ChildPatience)
            kill(child, SIGKILL);
        usleep(1000);
    }
    QCoreApplication::exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

/// The parts of a host, for those who end them in an order of their own.
struct Parts {
    std::unique_ptr<QCA::Initializer> before;
    std::unique_ptr<QGuiApplication> application;
    std::unique_ptr<QCA::Initializer> after;
    std::unique_ptr<User> user;

    Parts(int &argc, char *argv[], const EndingHost &host)
    {
        if (host.initialiser == QLatin1String("before"))
            before = std::make_unique<QCA::Initializer>();
        application = std::make_unique<QGuiApplication>(argc, argv);
        if (host.initialiser == QLatin1String("after"))
            after = std::make_unique<QCA::Initializer>();
    }
};

struct Way {
    const char *name;
    void (*inPage)(); ///< while the page is made
    void (*inLoop)(); ///< after the delay; null: `exit` of the event loop
    void (*afterLoop)(Parts *parts); ///< null: `main` returns, and all parts are let go alive
};

void destroy(Parts *parts)
{
    sayBuffered();
    parts->user.reset();
    parts->after.reset();
    parts->application.reset();
    parts->before.reset();
}

void destroyApplicationFirst(Parts *parts)
{
    sayBuffered();
    parts->application.reset();
    parts->user.reset();
    parts->after.reset();
    parts->before.reset();
}

void destroyApplicationAlone(Parts *parts)
{
    sayBuffered();
    parts->application.reset();
    parts->before.reset();
}

void quitLater()
{
    QTimer::singleShot(0, [] { QCoreApplication::exit(ToldStatus); });
}

const Way Ways[] = {
    {"exit", nullptr, &leave, nullptr},
    {"exit on another thread", nullptr, &leaveOnOtherThread, nullptr},
    {"quick_exit", nullptr, &leaveQuickly, nullptr},
    {"fork", nullptr, &leaveAfterFork, &destroy},
    {"page exits", &leave, nullptr, nullptr},
    {"page quits", &quitLater, nullptr, &destroy},
    {"return", nullptr, nullptr, nullptr},
    {"in order", nullptr, nullptr, &destroy},
    {"application first", nullptr, nullptr, &destroyApplicationFirst},
    {"application alone", nullptr, nullptr, &destroyApplicationAlone},
};

const Way *wayOf(const QString &name)
{
    for (const Way &way : Ways) {
        if (name == QLatin1String(way.name))
            return &way;
    }
    qFatal("there is no way %s", qPrintable(name));
}

int runLoop(const Way &way, int delay)
{
    QTimer::singleShot(delay, [&way] {
        if (way.inLoop)
            way.inLoop();
        else
            QCoreApplication::exit(ToldStatus);
    });
    return QCoreApplication::exec();
}

/// The parts as static objects of main, which `exit` destroys.
int runStatic(int argc, char *argv[], const EndingHost &host)
{
    static Parts parts(argc, argv, host);
    static User user(host.kind);
    return runLoop(*wayOf(QStringLiteral("exit")), host.delay);
}

/// A static object that uses the stores in its destructor: it asks them itself, and it deletes one
/// whose operation has just begun.
struct Asker {
    std::unique_ptr<QCA::KeyStoreManager> manager;
    QStringList ids;

    ~Asker()
    {
        for (const QString &id : qAsConst(ids)) {
            QCA::KeyStore asked(id, manager.get());
            static_cast<void>(asked.entryList());
            QCA::KeyStore deleted(id, manager.get());
            deleted.startAsynchronousMode();
        }
    }
};

int runAsking(int argc, char *argv[], const EndingHost &host)
{
    static Parts parts(argc, argv, host);
    static User user(host.kind);
    static Asker asker;
    asker.manager = std::make_unique<QCA::KeyStoreManager>();
    asker.manager->waitForBusyFinished();
    asker.ids = asker.manager->keyStores();
    if (asker.ids.isEmpty())
        return NoPage;
    return runLoop(*wayOf(QStringLiteral("exit")), host.delay);
}

/// Two rounds of everything in one process, the first with `host.delay`, the second until there are
/// rows. With `isKept` the user of the first round lives on.
int runTwice(int argc, char *argv[], const EndingHost &host, bool isKept)
{
    for (int round = 0; round < 2; ++round) {
        Parts parts(argc, argv, host);
        parts.user = std::make_unique<User>(host.kind);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < (round == 0 ? host.delay : RowPatience)
               && !(round == 1 && parts.user->hasRows()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents,
                                            10);
        if (round == 1 && !parts.user->hasRows()) {
            sayEnding();
            return StillWithoutRows;
        }
        if (round == 1)
            destroy(&parts);
        else if (isKept)
            static_cast<void>(parts.user.release());
        else
            parts.user.reset();
    }
    return ToldStatus;
}

} // namespace

int runEndingHost(int argc, char *argv[], const EndingHost &host)
{
    if (host.way == QLatin1String("static"))
        return runStatic(argc, argv, host);
    if (host.way == QLatin1String("static, asking"))
        return runAsking(argc, argv, host);
    if (host.way.startsWith(QLatin1String("twice")))
        return runTwice(argc, argv, host, host.way.endsWith(QLatin1String("kept")));
    const Way &way = *wayOf(host.way);
    auto parts = std::make_unique<Parts>(argc, argv, host);
    parts->user = std::make_unique<User>(host.kind, way.inPage);
    if (!parts->user->isValid())
        return NoPage;
    const int status = runLoop(way, host.delay);
    if (way.afterLoop) {
        way.afterLoop(parts.get());
    } else {
        sayBuffered();
        static_cast<void>(parts.release());
    }
    if (way.afterLoop == &destroyApplicationAlone)
        static_cast<void>(parts->user.release());
    return status;
}

} // namespace TrivexTest

#include "endinghost.moc"
