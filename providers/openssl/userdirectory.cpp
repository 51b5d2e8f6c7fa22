// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/userdirectory.h"

#include "qca/base/privatedirectory.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSet>

#include <algorithm>

namespace Trivex {

namespace {

constexpr int EventDelay = 150; // ms: files come in swarms, and are announced before they are full
constexpr int RetryInterval = 2000; // ms, while there is no directory to watch
constexpr int SliceTime = 20; // ms of reading at a stretch
constexpr int SmallestBatch = 500;
constexpr int LargestBatch = 1500;

// Each announcement makes every reader go through the list again, so batches grow with it; but
// not so far that taking one into a model is felt.
int batchAfter(int count)
{
    return std::clamp(count / 2, SmallestBatch, LargestBatch);
}

} // namespace

UserDirectory::UserDirectory(const QString &path)
    : m_path(path)
    , m_watch(this)
    , m_delay(this)
    , m_retry(this)
    , m_slice(this)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(EventDelay);
    m_retry.setInterval(RetryInterval);
    m_slice.setInterval(0);
    connect(&m_delay, &QTimer::timeout, this, &UserDirectory::scan);
    connect(&m_retry, &QTimer::timeout, this, &UserDirectory::watchAgain);
    connect(&m_slice, &QTimer::timeout, this, &UserDirectory::readSome);
    connect(&m_watch, &DirectoryWatch::lost, &m_retry, qOverload<>(&QTimer::start));
    connect(&m_watch, &DirectoryWatch::changed, this, [this] {
        if (!m_delay.isActive())
            m_delay.start();
    });
}

void UserDirectory::start()
{
    // Made at once, so that there is something to watch and a place to put files.
    if (!makePrivateDirectory(m_path) || !m_watch.watch(m_path))
        m_retry.start();
    scan();
}

void UserDirectory::watchAgain()
{
    if (!m_watch.isWatching() && !m_watch.watch(m_path))
        return;
    m_retry.stop();
    scan();
}

void UserDirectory::scan()
{
    if (m_slice.isActive()) {
        m_scanAgain = true;
        return;
    }
    const QStringList filters = {QStringLiteral("*.pem"), QStringLiteral("*.crt"),
                                 QStringLiteral("*.cer")};
    m_pending = QDir(m_path).entryList(filters, QDir::Files | QDir::Readable, QDir::Name);
    forgetMissing();
    m_slice.start();
}

void UserDirectory::forgetMissing()
{
    const QSet<QString> present(m_pending.cbegin(), m_pending.cend());
    for (auto file = m_files.begin(); file != m_files.end();) {
        if (present.contains(file.key())) {
            ++file;
            continue;
        }
        m_count -= file->certificates.size();
        m_dirty = true;
        file = m_files.erase(file);
    }
}

void UserDirectory::readSome()
{
    QElapsedTimer timer;
    timer.start();
    while (!m_pending.isEmpty() && timer.elapsed() < SliceTime)
        readFile(m_pending.takeFirst());
    if (m_pending.isEmpty())
        finishScan();
    else if (m_count >= m_announced + batchAfter(m_announced))
        announce();
}

void UserDirectory::readFile(const QString &name)
{
    const QString path = pathOf(name);
    const FileStamp stamp = stampOf(path);
    File &file = m_files[name];
    if (!stamp.isValid() || file.stamp == stamp)
        return;
    QString error;
    m_count -= file.certificates.size();
    file.certificates = readCertificateFile(path, &error);
    file.stamp = stamp;
    m_count += file.certificates.size();
    m_dirty = true;
    if (!error.isEmpty())
        qWarning("Certificate file %s %s", qUtf8Printable(path), qUtf8Printable(error));
}

void UserDirectory::finishScan()
{
    m_slice.stop();
    if (m_dirty)
        announce();
    if (!m_ready) {
        m_ready = true;
        Q_EMIT ready();
    }
    if (m_scanAgain) {
        m_scanAgain = false;
        m_delay.start();
    }
}

void UserDirectory::announce()
{
    QStringList names = m_files.keys();
    names.sort();
    const auto snapshot = std::make_shared<QVector<StoredCertificate>>();
    snapshot->reserve(m_count);
    for (const QString &name : qAsConst(names)) {
        for (const StoredCertificate &certificate : qAsConst(m_files[name].certificates))
            snapshot->append(certificate);
    }
    m_announced = m_count;
    m_dirty = false;
    Q_EMIT changed(snapshot);
}

QString UserDirectory::pathOf(const QString &name) const
{
    return m_path + QLatin1Char('/') + name;
}

QString UserDirectory::write(const QCA::Certificate &certificate)
{
    const QByteArray der = certificate.toDER();
    for (const File &file : qAsConst(m_files)) {
        for (const StoredCertificate &stored : file.certificates) {
            if (stored.der == der)
                return stored.id;
        }
    }
    const QString id = writeCertificateFile(m_path, certificate);
    if (id.isEmpty())
        return {};
    readFile(id.section(QLatin1Char('#'), 0, -2));
    announce();
    return id;
}

bool UserDirectory::remove(const QString &id)
{
    const QString name = id.section(QLatin1Char('#'), 0, -2);
    if (!m_files.contains(name) || !removeFromFile(pathOf(name), id))
        return false;
    if (stampOf(pathOf(name)).isValid()) {
        readFile(name);
    } else {
        m_count -= m_files.take(name).certificates.size();
        m_pending.removeAll(name);
    }
    announce();
    return true;
}

} // namespace Trivex
