// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The program without its window, with a patience that depends on what has been seen, not on the
// clock. The first argument says how many tokens have to be read before it ends, or that it never
// does ("-"); those of the program follow. It says on standard error when QCA waits no longer.
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

/// Ends the patience while it lives.
class Watch : public QObject {
public:
    Watch(int tokens, QObject *parent, std::function<void()> done)
        : QObject(parent)
        , m_tokens(tokens)
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
        if (m_tokens >= 0 && readTokens() >= m_tokens)
            m_done();
    }
    int readTokens() const
    {
        const QStringList known = m_manager.keyStores();
        const QVector<TokenStatus> tokens = TokenMonitor::tokens();
        return int(std::count_if(tokens.begin(), tokens.end(), [&](const TokenStatus &one) {
            return one.isRead && known.contains(one.keyStoreId);
        }));
    }

    const int m_tokens; ///< -1: any number
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
    const QString count = arguments.takeAt(1);
    QCommandLineParser parser;
    describe(&parser);
    if (!parser.parse(arguments))
        return WrongUse;
    const int tokens = count == QLatin1String("-") ? -1 : count.toInt();
    return carryOut(orderOf(parser), [tokens](QObject *context, std::function<void()> done) {
        new Watch(tokens, context, std::move(done));
    });
}
