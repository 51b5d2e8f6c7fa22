// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// usage: replay_TARGET DAMAGES FOLDER...
// Hands a target the files of the folders, and each of them cut and damaged in DAMAGES ways that
// are the same in every run. The input that ends the process is left in the file "finding".
#include "fuzz/process.h"
#include "fuzz/target.h"

#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

QByteArray current;

/// Only what may be called in a handler of signals.
extern "C" void leaveFinding(int signal)
{
    const int file = open("finding", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file >= 0) {
        (void)!write(file, current.constData(), size_t(current.size()));
        close(file);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void hand(const QByteArray &input)
{
    current = input;
    TrivexFuzz::take(input);
}

constexpr int MostBytes = 65536; // as the fuzzer has it

QByteArray damaged(const QByteArray &whole, QRandomGenerator *random)
{
    QByteArray bytes = whole;
    const int place = random->bounded(bytes.size());
    switch (random->bounded(5)) {
    case 0:
        bytes.truncate(place);
        break;
    case 1:
        bytes[place] = char(bytes.at(place) ^ (1 << random->bounded(8)));
        break;
    case 2:
        bytes[place] = char(random->bounded(256));
        break;
    case 3: // again what was there, as lists and names may come twice
        bytes.insert(place, whole.mid(random->bounded(whole.size()), random->bounded(200)));
        break;
    default:
        bytes.remove(place, random->bounded(20));
        break;
    }
    return bytes;
}

int replay(const QString &path, int damages)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > MostBytes)
        return 0;
    const QByteArray whole = file.readAll();
    hand(whole);
    if (whole.isEmpty())
        return 1;
    QRandomGenerator random(quint32(whole.size()));
    for (int i = 0; i < damages; ++i)
        hand(damaged(whole, &random));
    return 1 + damages;
}

} // namespace

int main(int argc, char *argv[])
{
    TrivexFuzz::prepareProcess();
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, leaveFinding);
    const int damages = argc > 1 ? QByteArray(argv[1]).toInt() : 0;
    int inputs = 0;
    for (int i = 2; i < argc; ++i) {
        QDirIterator files(QFile::decodeName(argv[i]), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            inputs += replay(files.next(), damages);
    }
    std::printf("%d inputs\n", inputs);
    // A target that is never called proves nothing.
    return inputs > 0 ? 0 : 1;
}
