// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/testcertificates.h"

#include <QDebug>
#include <QFile>
#include <QProcess>

namespace TrivexTest {

namespace {

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

bool hasGostEngine()
{
    QProcess process;
    process.start(QStringLiteral("openssl"),
                  {QStringLiteral("genpkey"), QStringLiteral("-engine"), QStringLiteral("gost"),
                   QStringLiteral("-algorithm"), QStringLiteral("gost2012_256"),
                   QStringLiteral("-pkeyopt"), QStringLiteral("paramset:A")});
    const bool has = process.waitForFinished(10000) && process.exitCode() == 0;
    if (!has)
        qInfo("SKIP GOST: the openssl engine gost (libengine-gost-openssl) is not installed");
    return has;
}

TestAuthority::TestAuthority(const QString &commonName)
{
    const QString key = file(QStringLiteral("ca.key"));
    openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
             QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-keyout"), key,
             QStringLiteral("-utf8"), QStringLiteral("-days"), QStringLiteral("3650"),
             QStringLiteral("-subj"), QStringLiteral("/CN=") + commonName,
             QStringLiteral("-addext"), QStringLiteral("keyUsage=critical,keyCertSign,cRLSign"),
             QStringLiteral("-out"), certificateFile()});
    m_certificate = openssl({QStringLiteral("x509"), QStringLiteral("-in"), certificateFile(),
                             QStringLiteral("-outform"), QStringLiteral("DER")});
}

QByteArray TestAuthority::openssl(const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LD_PRELOAD"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_directory.path());
    process.start(QStringLiteral("openssl"), arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qWarning() << "openssl" << arguments << "failed:" << process.readAllStandardError();
        return {};
    }
    const QByteArray output = process.readAllStandardOutput();
    return output.isNull() ? QByteArray("") : output;
}

QByteArray TestAuthority::issue(const QByteArray &publicKeyInfo, const QString &subject) const
{
    const QString key = file(QStringLiteral("subject-key.der"));
    const QString pem = file(QStringLiteral("subject-key.pem"));
    if (!writeFile(key, publicKeyInfo)
        || openssl({QStringLiteral("pkey"), QStringLiteral("-pubin"), QStringLiteral("-inform"),
                    QStringLiteral("DER"), QStringLiteral("-in"), key, QStringLiteral("-out"), pem})
               .isNull())
        return {};
    // Only `openssl req` takes the subject as UTF-8; the request's own key is replaced.
    const QString request = file(QStringLiteral("subject.csr"));
    if (openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-utf8"),
                 QStringLiteral("-key"), file(QStringLiteral("ca.key")), QStringLiteral("-subj"),
                 subject, QStringLiteral("-out"), request})
            .isNull())
        return {};
    return openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"), request,
                    QStringLiteral("-force_pubkey"), pem, QStringLiteral("-CA"), certificateFile(),
                    QStringLiteral("-CAkey"), file(QStringLiteral("ca.key")),
                    QStringLiteral("-CAcreateserial"), QStringLiteral("-days"),
                    QStringLiteral("365"), QStringLiteral("-outform"), QStringLiteral("DER")});
}

QByteArray TestAuthority::issueForRequest(const QString &requestFile) const
{
    return openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"),
                    requestFile, QStringLiteral("-CA"), certificateFile(), QStringLiteral("-CAkey"),
                    file(QStringLiteral("ca.key")), QStringLiteral("-CAcreateserial"),
                    QStringLiteral("-days"), QStringLiteral("365"), QStringLiteral("-outform"),
                    QStringLiteral("DER")});
}

QString TestAuthority::bundle(const QStringList &keyArguments, const QString &subject,
                              const QString &password, const QString &friendlyName,
                              const QStringList &further) const
{
    const QString key = file(QStringLiteral("bundle.key"));
    const QString certificate = file(QStringLiteral("bundle.der"));
    const QString certificatePem = file(QStringLiteral("bundle.pem"));
    const QString result = file(QStringLiteral("bundle.p12"));
    QStringList genpkey = {QStringLiteral("genpkey"), QStringLiteral("-out"), key};
    if (openssl(genpkey + keyArguments).isNull())
        return {};
    const QByteArray publicKey =
        openssl({QStringLiteral("pkey"), QStringLiteral("-in"), key, QStringLiteral("-pubout"),
                 QStringLiteral("-outform"), QStringLiteral("DER")});
    const QByteArray issued = issue(publicKey, subject);
    if (issued.isEmpty() || !writeFile(certificate, issued)
        || openssl({QStringLiteral("x509"), QStringLiteral("-inform"), QStringLiteral("DER"),
                    QStringLiteral("-in"), certificate, QStringLiteral("-out"), certificatePem})
               .isNull())
        return {};
    const QStringList pkcs12 = {QStringLiteral("pkcs12"),    QStringLiteral("-export"),
                                QStringLiteral("-inkey"),    key,
                                QStringLiteral("-in"),       certificatePem,
                                QStringLiteral("-certfile"), certificateFile(),
                                QStringLiteral("-name"),     friendlyName,
                                QStringLiteral("-passout"),  QStringLiteral("pass:") + password,
                                QStringLiteral("-out"),      result};
    return openssl(pkcs12 + further).isNull() ? QString() : result;
}

} // namespace TrivexTest
