// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The program without its window, with a patience that depends on what has been seen, not on the
// clock. The first argument says how many tokens have to be read before it ends, or how many have
// to be there, read or not ("~1"), or that it never ends ("-"); those of the program follow. It
// says on standard error when QCA waits no longer.
#include "console/exitcode.h"
#include "console/work.h"
#include "qca/base/catalogues.h"
#include "qca/tokens/tokens.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QtCrypto>

#include <algorithm>
#include <cstdio>

using namespace Trivex;

namespace {

/// What has to be seen.
struct Sight {
    int tokens = -1; ///< -1: more than there are
    bool isRead = true; ///< what is on them, too
};

Sight sightOf(const QString &argument)
{
    if (argument == QLatin1String("-"))
        return {};
    const bool isRead = !argument.startsWith(QLatin1Char('~'));
    return {argument.midRef(isRead ? 0 : 1).toInt(), isRead};
}

/// Ends the patience while it lives.
class Watch : public QObject {
public:
    Watch(Sight sight, QObject *parent, std::function<void()> done)
        : QObject(parent)
        , m_sight(sight)
        , m_done(std::move(done))
    {
        const auto look = [this] { this->look(); };
        connect(&m_manager, &QCA::KeyStoreManager::busyFinished, this, look, Qt::QueuedConnection);
        connect(&m_manager, &QCA::KeyStoreManager::keyStoreAvailable, this, look,
                Qt::QueuedConnection);
        connect(&m_monitor, &TokenMonitor::changed, this, look, Qt::QueuedConnection);
        QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
    }

private:
    void look()
    {
        if (m_manager.isBusy())
            return;
        if (!m_hasTold)
            std::fputs("QCA waits no longer\n", stderr);
        m_hasTold = true;
        if (m_sight.tokens >= 0 && seenTokens() >= m_sight.tokens)
            m_done();
    }
    int seenTokens() const
    {
        const QStringList known = m_manager.keyStores();
        const QVector<TokenStatus> tokens = TokenMonitor::tokens();
        return int(std::count_if(tokens.begin(), tokens.end(), [&](const TokenStatus &one) {
            return (one.isRead || !m_sight.isRead) && known.contains(one.keyStoreId);
        }));
    }

    const Sight m_sight;
    const std::function<void()> m_done;
    QCA::KeyStoreManager m_manager;
    TokenMonitor m_monitor;
    bool m_hasTold = false;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication program(argc, argv);
    installCatalogues(QStringLiteral("trivex-app"), QCoreApplication::instance());
    QStringList arguments = QCoreApplication::arguments();
    const Sight sight = sightOf(arguments.takeAt(1));
    QCommandLineParser parser;
    describe(&parser);
    if (!parser.parse(arguments))
        return WrongUse;
    return carryOut(orderOf(parser), [sight](QObject *context, std::function<void()> done) {
        new Watch(sight, context, std::move(done));
    });
}
