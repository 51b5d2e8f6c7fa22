// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/secretsearch.h"

#include <QDirIterator>
#include <QFile>
#include <QMetaProperty>
#include <QQuickItem>
#include <QSet>
#include <QStandardPaths>

#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TrivexTest {

namespace {

constexpr size_t Piece = 1 << 20;
constexpr size_t Longest = 1024; ///< of a secret as it is looked for, bytes

/// Where this process looks at its own memory: a place of its own, which is left out.
struct Workplace {
    char wanted[Longest];
    char piece[Piece + Longest];
};

Workplace &workplace()
{
    static void *place = mmap(nullptr, sizeof(Workplace), PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    Q_ASSERT(place != MAP_FAILED);
    return *static_cast<Workplace *>(place);
}

struct Range {
    quint64 begin;
    quint64 end;
};

/// What this process can write to, but for the place of the search itself.
std::vector<Range> writableMemory()
{
    std::vector<Range> ranges;
    const auto own = quint64(&workplace());
    FILE *maps = fopen("/proc/self/maps", "r");
    char line[512];
    while (maps && fgets(line, sizeof line, maps)) {
        unsigned long long begin = 0;
        unsigned long long end = 0;
        char access[5] = {};
        if (sscanf(line, "%llx-%llx %4s", &begin, &end, access) != 3
            || strncmp(access, "rw", 2) != 0 || strstr(line, "/dev/"))
            continue;
        // Neighbours of one kind stand in one line.
        if (begin <= own && own < end) {
            if (begin < own)
                ranges.push_back({begin, own});
            begin = (own + sizeof(Workplace) + 4095) & ~quint64(4095);
        }
        if (begin < end)
            ranges.push_back({begin, end});
    }
    if (maps)
        fclose(maps);
    return ranges;
}

bool isHere(const char *at, const char *wanted, int letters, int step)
{
    for (int i = 0; i < letters; ++i) {
        if (at[i * step] != wanted[i * step] || (step > 1 && at[i * step + 1] != 0))
            return false;
    }
    return true;
}

int countIn(const char *piece, size_t size, const char *wanted, int letters, int step)
{
    const size_t length = size_t(letters - 1) * size_t(step) + (step > 1 ? 2 : 1);
    int found = 0;
    for (const char *at = piece; size_t(piece + size - at) >= length; ++at) {
        at = static_cast<const char *>(
            memchr(at, wanted[0], size - length + 1 - size_t(at - piece)));
        if (!at)
            break;
        if (isHere(at, wanted, letters, step))
            ++found;
    }
    return found;
}

} // namespace

int SecretSearch::count(int step, int letters) const
{
    Workplace &place = workplace();
    for (int i = 0; i < letters; ++i)
        place.wanted[i * step] = char(m_masked.at(i) ^ Mask);
    const size_t length = size_t(letters - 1) * size_t(step) + (step > 1 ? 2 : 1);
    const int memory = open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
    int found = 0;
    for (const Range &range : writableMemory()) {
        for (quint64 at = range.begin; at < range.end; at += Piece) {
            const size_t size = size_t(qMin<quint64>(Piece + length - 1, range.end - at));
            const ssize_t got = pread(memory, place.piece, size, off_t(at));
            const int here =
                got > 0 ? countIn(place.piece, size_t(got), place.wanted, letters, step) : 0;
            if (here > 0)
                fprintf(stderr, "%d of %d letters, %d bytes apart, in %llx+%zx\n", here, letters,
                        step, static_cast<unsigned long long>(at), size);
            found += here;
        }
    }
    close(memory);
    memset(&place, 0, sizeof place);
    return found;
}

int SecretSearch::inMemory() const
{
    return count(1, size() - 2) + count(int(sizeof(QChar)), size() - 2);
}

int SecretSearch::inHistories() const
{
    return count(16, size() - 2);
}

bool SecretSearch::isIn(const QByteArray &bytes) const
{
    for (const int step : {1, 2}) {
        const int length = (size() - 1) * step + 1;
        for (int at = 0; at + length <= bytes.size(); ++at) {
            int same = 0;
            while (same < size() && bytes.at(at + same * step) == char(m_masked.at(same) ^ Mask))
                ++same;
            if (same == size())
                return true;
        }
    }
    return false;
}

bool SecretSearch::isIn(const QString &text) const
{
    return isIn(QByteArray::fromRawData(reinterpret_cast<const char *>(text.constData()),
                                        text.size() * int(sizeof(QChar))));
}

QStringList SecretSearch::inFiles(const QString &folder) const
{
    QStringList found;
    QDirIterator all(folder, QDir::Files | QDir::Hidden | QDir::System,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        QFile file(all.next());
        if (all.fileInfo().isFile() && file.open(QIODevice::ReadOnly) && isIn(file.readAll()))
            found += file.fileName();
    }
    return found;
}

QStringList SecretSearch::inProperties(const QObject *root) const
{
    QStringList found;
    QSet<const QObject *> seen;
    QList<const QObject *> open{root};
    while (!open.isEmpty()) {
        const QObject *object = open.takeLast();
        if (seen.contains(object))
            continue;
        seen.insert(object);
        for (const QObject *child : object->children())
            open += child;
        if (const auto *item = qobject_cast<const QQuickItem *>(object)) {
            for (const QQuickItem *child : item->childItems())
                open += child;
        }
        const QMetaObject *type = object->metaObject();
        for (int i = 0; i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            const bool isText = property.userType() == QMetaType::QString
                || property.userType() == QMetaType::QVariant;
            if (isText && isIn(property.read(object).toString()))
                found += QLatin1String(type->className()) + QLatin1Char('.')
                    + QLatin1String(property.name());
        }
    }
    return found;
}

bool SecretSearch::run(const QString &program, const QStringList &arguments) const
{
    const QByteArray path = QStandardPaths::findExecutable(program).toLocal8Bit();
    QList<QByteArray> words{path};
    for (const QString &argument : arguments)
        words += argument.toLocal8Bit();
    std::vector<const char *> plain;
    for (const QByteArray &word : words)
        plain.push_back(word.constData());
    plain.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        // Only what is allowed between fork and exec where there are other threads.
        static char room[64][256];
        for (size_t i = 1; i + 1 < plain.size() && i < 64; ++i) {
            size_t at = 0;
            for (const char *c = plain[i]; *c && at + size_t(size()) + 1 < sizeof room[i]; ++c) {
                if (*c != '@') {
                    room[i][at++] = *c;
                    continue;
                }
                for (int k = 0; k < size(); ++k)
                    room[i][at++] = char(m_masked.constData()[k] ^ Mask);
            }
            plain[i] = room[i];
        }
        execv(plain[0], const_cast<char *const *>(plain.data()));
        _exit(127);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)
        && WEXITSTATUS(status) == 0;
}

} // namespace TrivexTest
