// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/gostopenssl.h"

#include "qca/base/descriptor.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace Faulty {
namespace {

using namespace std::string_literals;

const std::string Russia2001 = "\x2a\x85\x03\x02\x02"s; // 1.2.643.2.2
const std::string Tc26 = "\x2a\x85\x03\x07\x01"s; // 1.2.643.7.1

std::string der(char tag, const std::string &content)
{
    std::string encoded(1, tag);
    if (content.size() >= 0x80)
        encoded += '\x81';
    return encoded + char(content.size()) + content;
}

std::string oid(const std::string &arc, const std::string &rest)
{
    return der(0x06, arc + rest);
}

const GostSet sets[] = {
    {oid(Russia2001, "\x23\x01"s), "A", 32},     {oid(Russia2001, "\x23\x02"s), "B", 32},
    {oid(Russia2001, "\x23\x03"s), "C", 32},     {oid(Russia2001, "\x24\x00"s), "XA", 32},
    {oid(Russia2001, "\x24\x01"s), "XB", 32},    {oid(Tc26, "\x02\x01\x01\x01"s), "TCA", 32},
    {oid(Tc26, "\x02\x01\x01\x02"s), "TCB", 32}, {oid(Tc26, "\x02\x01\x01\x03"s), "TCC", 32},
    {oid(Tc26, "\x02\x01\x01\x04"s), "TCD", 32}, {oid(Tc26, "\x02\x01\x02\x01"s), "A", 64},
    {oid(Tc26, "\x02\x01\x02\x02"s), "B", 64},   {oid(Tc26, "\x02\x01\x02\x03"s), "C", 64},
};

const GostKind kinds[] = {
    {oid(Russia2001, "\x1e\x01"s), oid(Russia2001, "\x13"s), "gost2001", "md_gost94", 32},
    {oid(Tc26, "\x01\x02\x02"s), oid(Tc26, "\x01\x01\x01"s), "gost2012_256", "md_gost12_256", 32},
    {oid(Tc26, "\x01\x02\x03"s), oid(Tc26, "\x01\x01\x02"s), "gost2012_512", "md_gost12_512", 64},
};

//! PrivateKeyInfo (RFC 5208) as the engine reads it.
std::string privateInfo(const GostKind &kind, const GostSet &set, const std::string &number)
{
    const std::string parameters = der(0x30, set.oid + kind.digestOid);
    return der(0x30,
               "\x02\x01\x00"s + der(0x30, kind.algorithmOid + parameters) + der(0x04, number));
}

//! A file that only its owner reads, for the time of a call.
class PrivateFile {
public:
    PrivateFile(const std::string &directory, const std::string &content)
    {
        static std::atomic<unsigned> number = 0;
        m_path = directory + "/call-" + std::to_string(::getpid()) + '-' + std::to_string(++number);
        ::close(::open(m_path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~PrivateFile() { std::remove(m_path.c_str()); }
    PrivateFile(const PrivateFile &) = delete;
    PrivateFile &operator=(const PrivateFile &) = delete;

    const std::string &path() const { return m_path; }

private:
    std::string m_path;
};

//! This process's own, but for what would instrument the program.
std::vector<char *> childEnvironment()
{
    std::vector<char *> variables;
    for (char **variable = environ; *variable; ++variable) {
        if (std::strncmp(*variable, "LD_PRELOAD=", 11) != 0)
            variables.push_back(*variable);
    }
    variables.push_back(nullptr);
    return variables;
}

pid_t start(std::vector<std::string> *arguments, int output)
{
    std::vector<char *> pointers;
    for (std::string &argument : *arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, 1);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = -1;
    if (::posix_spawnp(&child, pointers.front(), &actions, nullptr, pointers.data(),
                       childEnvironment().data())
        != 0)
        child = -1;
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

std::string readAll(int descriptor)
{
    std::string all;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::read(descriptor, buffer, sizeof buffer)) > 0)
        all.append(buffer, size_t(count));
    return all;
}

std::string last(const std::string &text, size_t count)
{
    return text.size() < count ? std::string() : text.substr(text.size() - count);
}

} // namespace

const GostSet *gostSet(const std::string &oid, size_t size)
{
    for (const GostSet &set : sets) {
        if (set.oid == oid && set.size == size)
            return &set;
    }
    return nullptr;
}

const GostKind *gostKind(const std::string &digestOid)
{
    for (const GostKind &kind : kinds) {
        if (kind.digestOid == digestOid)
            return &kind;
    }
    return nullptr;
}

GostOpenssl::GostOpenssl(std::string directory)
    : m_directory(std::move(directory))
{
    ::mkdir(m_directory.c_str(), 0700);
}

std::string GostOpenssl::run(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "openssl");
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    const Trivex::Descriptor reader(ends[0]);
    Trivex::Descriptor writer(ends[1]);
    const pid_t child = start(&arguments, writer.get());
    writer.reset();
    const std::string output = readAll(reader.get());
    int status = -1;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0)
        return {};
    return output;
}

std::string GostOpenssl::generate(const GostKind &kind, const GostSet &set) const
{
    // The number is the last field of PrivateKeyInfo.
    return last(run({"genpkey", "-engine", "gost", "-algorithm", kind.algorithm, "-pkeyopt",
                     "paramset:"s + set.name, "-outform", "DER"}),
                set.size);
}

std::string GostOpenssl::publicPoint(const GostKind &kind, const GostSet &set,
                                     const std::string &number) const
{
    const PrivateFile key(m_directory, privateInfo(kind, set, number));
    return last(run({"pkey", "-engine", "gost", "-inform", "DER", "-in", key.path(), "-pubout",
                     "-outform", "DER"}),
                2 * set.size);
}

std::string GostOpenssl::digest(const char *name, const std::string &message) const
{
    const PrivateFile input(m_directory, message);
    return run({"dgst", "-engine", "gost", "-"s + name, "-binary", input.path()});
}

std::string GostOpenssl::sign(const GostKind &kind, const GostSet &set, const std::string &number,
                              const std::string &digest) const
{
    const PrivateFile key(m_directory, privateInfo(kind, set, number));
    const PrivateFile input(m_directory, digest);
    return run({"pkeyutl", "-sign", "-engine", "gost", "-keyform", "DER", "-inkey", key.path(),
                "-in", input.path()});
}

} // namespace Faulty
