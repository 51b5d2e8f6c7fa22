// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/singleinstance.h"

#include "qca/base/privatedirectory.h"

#include <QDataStream>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

namespace Trivex {

namespace {
constexpr int ConnectMs = 500;
constexpr qint64 LargestMessage = 1 << 20;
} // namespace

SingleInstance::SingleInstance(const QString &name, QObject *parent)
    : QObject(parent)
{
    // The runtime directory is the user's own; the fall-back in the home directory is as private.
    QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (directory.isEmpty())
        directory = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    makePrivateDirectory(directory);
    m_socket = QDir(directory).filePath(name + QStringLiteral(".socket"));
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

bool SingleInstance::handOver(const QStringList &files)
{
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    if (socket.waitForConnected(ConnectMs)) {
        QDataStream stream(&socket);
        stream << files;
        socket.waitForBytesWritten(ConnectMs);
        socket.disconnectFromServer();
        return true;
    }
    // Nobody answers there: what a crashed instance left would be in the way.
    QLocalServer::removeServer(m_socket);
    m_server.listen(m_socket);
    return false;
}

void SingleInstance::receive()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            QStringList files;
            QDataStream stream(socket);
            if (socket->bytesAvailable() <= LargestMessage)
                stream >> files;
            socket->deleteLater();
            Q_EMIT started(files);
        });
    }
}

} // namespace Trivex
