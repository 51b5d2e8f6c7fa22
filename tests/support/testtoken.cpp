// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/testtoken.h"

#include "tests/support/needtokens.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace TrivexTest {

namespace {

QString temporaryTemplate()
{
    const QString shared = QStringLiteral("/dev/shm");
    const QString parent = QFileInfo(shared).isWritable() ? shared : QDir::tempPath();
    return parent + QStringLiteral("/trivex-token-XXXXXX");
}

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

/// Standard output of a program that succeeded; a null array otherwise.
QByteArray run(const QString &program, const QStringList &arguments, const QString &configuration)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SOFTHSM2_CONF"), configuration);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // The tools are not instrumented; a preloaded runtime would only disturb them.
    environment.remove(QStringLiteral("LD_PRELOAD"));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qWarning() << program << "failed:" << process.readAllStandardError();
        return {};
    }
    const QByteArray output = process.readAllStandardOutput();
    return output.isNull() ? QByteArray("") : output;
}

/// SubjectPublicKeyInfo from what pkcs11-tool lists of an EC key: reading such an object fails in
/// the tool itself. P-256 and P-384 only.
QByteArray ecPublicKeyInfo(const QByteArray &listing)
{
    const int at = listing.indexOf("EC_POINT:") + int(qstrlen("EC_POINT:"));
    const QByteArray octets = QByteArray::fromHex(listing.mid(at, listing.indexOf('\n', at) - at));
    const QByteArray point = octets.mid(octets.indexOf('\x04', 2)); // behind the OCTET STRING
    if (point.size() == 65)
        return QByteArray::fromHex("3059301306072a8648ce3d020106082a8648ce3d030107034200") + point;
    if (point.size() == 97)
        return QByteArray::fromHex("3076301006072a8648ce3d020106052b81040022036200") + point;
    return {};
}

/// The part of a listing that is about the public key with `id`: the tool lists all objects.
QByteArray objectWithId(const QByteArray &listing, const QString &id)
{
    const QByteArray marker("Public Key Object;");
    for (int at = listing.indexOf(marker); at >= 0;) {
        const int next = listing.indexOf(marker, at + 1);
        const QByteArray object = listing.mid(at, next < 0 ? -1 : next - at);
        const int idAt = object.indexOf("ID:");
        const QByteArray line = object.mid(idAt + 3, object.indexOf('\n', idAt) - idAt - 3);
        if (idAt >= 0 && line.trimmed() == id.toLatin1())
            return object;
        at = next;
    }
    return {};
}

} // namespace

TestToken::TestToken(const QString &label)
    : m_label(label)
    , m_directory(std::make_unique<QTemporaryDir>(temporaryTemplate()))
{
    initialise();
}

QString missingTokenTools()
{
    if (!QFile::exists(TestToken::softHsmLibrary())
        || QStandardPaths::findExecutable(QStringLiteral("softhsm2-util")).isEmpty())
        return QStringLiteral("SoftHSM is not installed");
    if (QStandardPaths::findExecutable(QStringLiteral("pkcs11-tool")).isEmpty())
        return QStringLiteral("pkcs11-tool is not installed");
    return {};
}

QString TestToken::softHsmLibrary()
{
    return QStringLiteral(TRIVEX_SOFTHSM_MODULE);
}

QString TestToken::configurationFile() const
{
    return m_directory->filePath(QStringLiteral("softhsm2.conf"));
}

QString TestToken::modulePath() const
{
    return m_directory->filePath(QStringLiteral("modules/libtoken.so"));
}

void TestToken::initialise()
{
    const QDir directory(m_directory->path());
    if (!m_directory->isValid() || !directory.mkpath(QStringLiteral("tokens"))
        || !directory.mkpath(QStringLiteral("modules"))) {
        m_problem = QStringLiteral("no temporary directory");
        return;
    }
    m_problem = missingTokenTools();
    if (!m_problem.isEmpty())
        return;
    const QByteArray configuration =
        "directories.tokendir = " + directory.filePath(QStringLiteral("tokens")).toUtf8()
        + "\nobjectstore.backend = file\nlog.level = ERROR\nslots.removable = true\n";
    if (!writeFile(configurationFile(), configuration) || !initToken(m_label)) {
        m_problem = QStringLiteral("SoftHSM could not make a token");
        return;
    }
    restoreModule();
}

bool TestToken::initToken(const QString &label)
{
    return !run(QStringLiteral("softhsm2-util"),
                {QStringLiteral("--init-token"), QStringLiteral("--free"),
                 QStringLiteral("--label"), label, QStringLiteral("--pin"),
                 QString::fromLatin1(pin()), QStringLiteral("--so-pin"),
                 QString::fromLatin1(soPin())},
                configurationFile())
                .isNull();
}

bool TestToken::addToken(const QString &label)
{
    return initToken(label);
}

bool TestToken::addTokenWithoutUserPin(const QString &label)
{
    // SoftHSM's free slot is always its last.
    const QByteArray slots =
        run(QStringLiteral("pkcs11-tool"),
            {QStringLiteral("--module"), softHsmLibrary(), QStringLiteral("--list-token-slots")},
            configurationFile());
    const int last = slots.count("\nSlot ") + (slots.startsWith("Slot ") ? 1 : 0) - 1;
    return last >= 0
        && !run(QStringLiteral("pkcs11-tool"),
                {QStringLiteral("--module"), softHsmLibrary(), QStringLiteral("--init-token"),
                 QStringLiteral("--slot-index"), QString::number(last), QStringLiteral("--label"),
                 label, QStringLiteral("--so-pin"), QString::fromLatin1(soPin())},
                configurationFile())
                .isNull();
}

void TestToken::removeModule()
{
    QFile::remove(modulePath());
}

void TestToken::restoreModule()
{
    QFile::copy(softHsmLibrary(), modulePath());
}

void TestToken::useInThisProcess() const
{
    qputenv("SOFTHSM2_CONF", QFile::encodeName(configurationFile()));
    qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(modulePath()));
}

QByteArray TestToken::tool(const QStringList &arguments, bool login) const
{
    QStringList all = {QStringLiteral("--module"), softHsmLibrary(),
                       QStringLiteral("--token-label"), m_label};
    if (login)
        all += {QStringLiteral("--login"), QStringLiteral("--pin"), QString::fromLatin1(pin())};
    return run(QStringLiteral("pkcs11-tool"), all + arguments, configurationFile());
}

bool TestToken::generateKeyPair(const QString &keyType, const QString &id,
                                const QString &label) const
{
    return !tool({QStringLiteral("--keypairgen"), QStringLiteral("--key-type"), keyType,
                  QStringLiteral("--id"), id, QStringLiteral("--label"), label})
                .isNull();
}

bool TestToken::writeObject(const QString &type, const QByteArray &der, const QString &id,
                            const QString &label) const
{
    const QString file = m_directory->filePath(QStringLiteral("object.der"));
    return writeFile(file, der)
        && !tool({QStringLiteral("--write-object"), file, QStringLiteral("--type"), type,
                  QStringLiteral("--id"), id, QStringLiteral("--label"), label})
                .isNull();
}

bool TestToken::removeObject(const QString &type, const QString &id) const
{
    return !tool({QStringLiteral("--delete-object"), QStringLiteral("--type"), type,
                  QStringLiteral("--id"), id})
                .isNull();
}

QByteArray TestToken::publicKey(const QString &id) const
{
    const QByteArray listing =
        objectWithId(tool({QStringLiteral("--list-objects"), QStringLiteral("--type"),
                           QStringLiteral("pubkey")}),
                     id);
    if (listing.contains("EC_POINT:"))
        return ecPublicKeyInfo(listing);
    const QString file = m_directory->filePath(QStringLiteral("public.der"));
    const QByteArray output =
        tool({QStringLiteral("--read-object"), QStringLiteral("--type"), QStringLiteral("pubkey"),
              QStringLiteral("--id"), id, QStringLiteral("--output-file"), file});
    QFile result(file);
    return !output.isNull() && result.open(QIODevice::ReadOnly) ? result.readAll() : QByteArray();
}

int TestToken::objectCount() const
{
    return tool({QStringLiteral("--list-objects")}).count(" Object;");
}

} // namespace TrivexTest
