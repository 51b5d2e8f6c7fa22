// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/certificatefile.h"

#include "qca/asn1/pem.h"
#include "qca/base/atomicfile.h"
#include "qca/base/filenames.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/regularfile.h"
#include "qca/x509/infotypes.h"
#include "qca/x509/makecertificate.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

namespace Trivex {

namespace {

constexpr int DigestLength = 16; // digits; 64 bits tell the certificates of one file apart
constexpr int WriteAttempts = 100; // each time another program was quicker

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

/// Replaces what the file holds. A link to it stays one, and its permissions stay.
bool writeAll(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    // Flushed first: `commit` does not look at what went wrong with the bytes in its buffer.
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush()
        && file.commit();
}

/// The first free name for a certificate with that `name`.
QString freePath(const QDir &directory, const QString &name)
{
    // When certificates are taken out of the file, QSaveFile writes under a longer name at first.
    const QString temporary = QStringLiteral(".XXXXXX");
    const auto pathWith = [&](const QString &end) {
        QString file = safeFileName(name, end + temporary, QStringLiteral("certificate"));
        file.chop(temporary.size());
        return directory.filePath(file);
    };
    QString path = pathWith(QStringLiteral(".pem"));
    for (int number = 2; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number)
        path = pathWith(QStringLiteral(" (%1).pem").arg(number));
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
    FileProblem problem = FileProblem::None;
    const auto text = readRegularFile(path, &problem);
    if (!text) {
        *error = problem == FileProblem::TooLarge ? QStringLiteral("has more than 16 MiB")
                                                  : QStringLiteral("can't be read");
        return certificates;
    }
    int broken = 0;
    QSet<QString> seen;
    const QList<PemBlock> blocks = readPem(*text, &broken);
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
            certificates += {id, nameOf(path, certificate), certificate.toDER()};
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
    const auto text = readRegularFile(path);
    if (!text)
        return false;
    QByteArray kept;
    int keptUpTo = 0;
    // A block that can't be read here may be somebody's key, so it keeps the file alive.
    int left = 0;
    const QList<PemBlock> blocks = readPem(*text, &left);
    for (const PemBlock &block : blocks) {
        const QCA::Certificate certificate =
            isCertificate(block) ? makeCertificate(block.data) : QCA::Certificate();
        if (!certificate.isNull() && idOf(path, certificate) == id) {
            kept += text->mid(keptUpTo, block.begin - keptUpTo);
            keptUpTo = block.end;
        } else {
            ++left;
        }
    }
    if (keptUpTo == 0)
        return false;
    kept += text->mid(keptUpTo);
    return left == 0 ? QFile::remove(path) : writeAll(path, kept);
}

QString writeCertificateFile(const QString &directory, const QCA::Certificate &certificate)
{
    if (!makePrivateDirectory(directory))
        return {};
    const QString name = nameOf(QString(), certificate).trimmed();
    const QByteArray text = writePem("CERTIFICATE", certificate.toDER());
    // Another program may take the name in between.
    for (int i = 0; i < WriteAttempts; ++i) {
        const QString path = freePath(QDir(directory), name);
        const WriteResult result = writeAtomically(path, text, false);
        if (result != WriteResult::Exists)
            return result == WriteResult::Written ? idOf(path, certificate) : QString();
    }
    return {};
}

} // namespace Trivex
