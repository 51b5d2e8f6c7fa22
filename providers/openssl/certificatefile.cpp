// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/certificatefile.h"

#include "qca/adapter/infotypes.h"
#include "qca/engine/x509/makecertificate.h"
#include "qca/engine/x509/pem.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

namespace Trivex {

namespace {

constexpr qint64 LargestFile = 16 * 1024 * 1024;
constexpr int DigestLength = 16; // digits; 64 bits tell the certificates of one file apart
constexpr int LongestName = 180; // octets; file systems take 255, and a suffix is to follow

bool isCertificate(const PemBlock &block)
{
    return block.label == "CERTIFICATE" || block.label == "X509 CERTIFICATE"
        || block.label == "TRUSTED CERTIFICATE";
}

QString idOf(const QString &path, const QCA::Certificate &certificate)
{
    const QByteArray digest =
        QCryptographicHash::hash(certificate.toDER(), QCryptographicHash::Sha256).toHex();
    return QFileInfo(path).fileName() + QLatin1Char('#')
        + QString::fromLatin1(digest.left(DigestLength));
}

QString nameOf(const QString &path, const QCA::Certificate &certificate)
{
    QString name = certificate.commonName();
    if (name.isEmpty())
        name = infoValue(certificate.subjectInfo(), OrganizationInfo);
    return name.isEmpty() ? QFileInfo(path).fileName() : name;
}

bool readAll(const QString &path, QByteArray *text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return false;
    *text = file.read(LargestFile);
    return file.error() == QFileDevice::NoError;
}

bool writeAll(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

QString freePath(const QDir &directory, const QString &name)
{
    QString path = directory.filePath(name + QLatin1String(".pem"));
    for (int number = 2; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number)
        path = directory.filePath(QStringLiteral("%1 (%2).pem").arg(name).arg(number));
    return path;
}

} // namespace

bool FileStamp::operator==(const FileStamp &other) const
{
    return seconds == other.seconds && nanoseconds == other.nanoseconds && size == other.size
        && inode == other.inode;
}

FileStamp stampOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size, status.st_ino};
}

QList<StoredCertificate> readCertificateFile(const QString &path, QString *error)
{
    QList<StoredCertificate> certificates;
    QByteArray text;
    if (!readAll(path, &text)) {
        *error = QStringLiteral("can't be read");
        return certificates;
    }
    int broken = 0;
    QSet<QString> seen;
    const QList<PemBlock> blocks = readPem(text, &broken);
    for (const PemBlock &block : blocks) {
        if (!isCertificate(block))
            continue;
        const QCA::Certificate certificate = makeCertificate(block.data);
        if (certificate.isNull()) {
            ++broken;
            continue;
        }
        const QString id = idOf(path, certificate);
        if (!seen.contains(id))
            certificates += {id, nameOf(path, certificate), certificate};
        seen += id;
    }
    if (broken > 0)
        *error = QStringLiteral("has a broken certificate");
    else if (certificates.isEmpty())
        *error = QStringLiteral("has no certificate");
    return certificates;
}

bool removeFromFile(const QString &path, const QString &id)
{
    QByteArray text;
    if (!readAll(path, &text))
        return false;
    int left = 0;
    bool removed = false;
    QList<PemBlock> blocks = readPem(text);
    // From the end, so that the positions of the earlier blocks hold.
    while (!blocks.isEmpty()) {
        const PemBlock block = blocks.takeLast();
        const QCA::Certificate certificate =
            isCertificate(block) ? makeCertificate(block.data) : QCA::Certificate();
        if (!certificate.isNull() && idOf(path, certificate) == id) {
            text.remove(block.begin, block.end - block.begin);
            removed = true;
        } else {
            ++left;
        }
    }
    if (!removed)
        return false;
    return left == 0 ? QFile::remove(path) : writeAll(path, text);
}

QString writeCertificateFile(const QString &directory, const QCA::Certificate &certificate)
{
    if (!QDir().mkpath(directory))
        return {};
    const QString name = safeFileName(nameOf(QStringLiteral("certificate"), certificate));
    const QString path = freePath(QDir(directory), name);
    if (!writeAll(path, writePem("CERTIFICATE", certificate.toDER())))
        return {};
    return idOf(path, certificate);
}

QString safeFileName(const QString &text)
{
    QString name;
    for (const QChar c : text.trimmed()) {
        const bool isUnsafe = c == QLatin1Char('/') || c == QLatin1Char('\\')
            || c.category() == QChar::Other_Control || c.unicode() == 0;
        name += isUnsafe ? QLatin1Char('_') : c;
    }
    if (name.startsWith(QLatin1Char('.')))
        name[0] = QLatin1Char('_');
    while (QFile::encodeName(name).size() > LongestName)
        name.chop(name.size() > 1 && name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name.isEmpty() ? QStringLiteral("certificate") : name;
}

} // namespace Trivex
