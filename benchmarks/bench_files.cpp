// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Files: opening with type detection, and the digest, against OpenSSL's own and known tools.
#include "benchmarks/measure.h"
#include "signing/filedigest.h"
#include "signing/loaderfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QtCrypto>

#include <openssl/evp.h>

#include <cstdio>
#include <sys/resource.h>

namespace {

constexpr int Rounds = 5;
constexpr qint64 Mebibyte = 1 << 20;
const QVector<qint64> sizes = {Mebibyte, 64 * Mebibyte, 1024 * Mebibyte};

bool makeFile(const QString &path, qint64 size)
{
    QFile file(path);
    const QByteArray block("Lorem ipsum dolor sit amet, consectetur adipisici elit.\n");
    const QByteArray piece = block.repeated(int(Mebibyte) / block.size() + 1).left(int(Mebibyte));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (qint64 written = 0; written < size; written += piece.size()) {
        if (file.write(piece) != piece.size())
            return false;
    }
    return true;
}

//! The digest with nothing but OpenSSL over a mapping of the file.
QByteArray plainDigest(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    const uchar *bytes = file.map(0, file.size());
    QByteArray digest(EVP_MAX_MD_SIZE, 0);
    unsigned int length = 0;
    EVP_Digest(bytes, static_cast<size_t>(file.size()), reinterpret_cast<uchar *>(digest.data()),
               &length, EVP_sha256(), nullptr);
    return digest.left(static_cast<int>(length)).toHex();
}

QByteArray toolDigest(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput().left(64);
}

void benchDigest(const QStringList &files)
{
    Measure::Table plain(QStringLiteral("SHA-256 of a file"),
                         QStringLiteral("OpenSSL's EVP over a mapping of the file"));
    for (const QString &path : files) {
        const qint64 size = QFileInfo(path).size();
        QByteArray wanted;
        const double base = Measure::median(Rounds, [&] { wanted = plainDigest(path); });
        const auto compare = [&](const QString &what, const std::function<QByteArray()> &digest) {
            QByteArray seen;
            const double time = Measure::median(Rounds, [&] { seen = digest(); });
            plain.add(what, size / Mebibyte, time, base);
            if (seen != wanted)
                plain.note(what + QStringLiteral(": a WRONG digest"));
        };
        compare(QStringLiteral("ours"), [&] {
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            return Trivex::fileDigests(&file, size, {QStringLiteral("sha256")}).value(0).toHex();
        });
        compare(QStringLiteral("openssl dgst"), [&] {
            return toolDigest(
                QStringLiteral("openssl"),
                {QStringLiteral("dgst"), QStringLiteral("-sha256"), QStringLiteral("-r"), path});
        });
        compare(QStringLiteral("sha256sum"),
                [&] { return toolDigest(QStringLiteral("sha256sum"), {path}); });
    }
    plain.note(QStringLiteral("Sizes in MiB; all three results are compared with the baseline's."));
}

void benchOpening(const QStringList &files)
{
    Measure::Table table(QStringLiteral("Opening a file, its type found"),
                         QStringLiteral("opening the smallest one"));
    double smallest = 0;
    for (const QString &path : files) {
        const double time = Measure::median(101, [&] {
            LoaderFile loader;
            loader.setHashType(QString()); // the digest is measured below
            loader.setFilePath(path);
            if (loader.status() != LoaderFile::Ready)
                std::fprintf(stderr, "not loaded\n");
        });
        if (smallest == 0)
            smallest = time;
        table.add(QStringLiteral("LoaderFile"), QFileInfo(path).size() / Mebibyte, time, smallest);
    }
}

long peakKibibytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    const QString shared = QStringLiteral("/dev/shm");
    const QString parent = QFileInfo(shared).isWritable() ? shared : QDir::tempPath();
    const QTemporaryDir directory(parent + QStringLiteral("/trivex-bench-XXXXXX"));
    QStringList files;
    for (const qint64 size : sizes) {
        files.append(directory.filePath(QStringLiteral("%1.txt").arg(size)));
        if (!makeFile(files.constLast(), size)) {
            std::fprintf(stderr, "no room for %lld bytes\n", size);
            return 1;
        }
    }
    benchOpening(files);
    const long before = peakKibibytes();
    QFile largest(files.constLast());
    largest.open(QIODevice::ReadOnly);
    Trivex::fileDigests(&largest, largest.size(), {QStringLiteral("sha256")});
    const long after = peakKibibytes();
    benchDigest(files);
    std::printf("\nThe digest of 1 GiB raised the peak memory by %ld KiB (%ld to %ld).\n",
                after - before, before, after);
    return 0;
}
