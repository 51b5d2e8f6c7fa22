// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/chains/opensslverify.h"

#include "tests/chains/madechain.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Trivex;

namespace {

/// The files of one run.
class Folder {
public:
    QString write(const char *name, const QByteArray &text) const
    {
        QFile file(m_folder.filePath(QString::fromUtf8(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("Could not write %s", name);
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAll();
}

} // namespace

QByteArray verifiedByOpenssl(const ChainInput &input)
{
    const Folder folder;
    QByteArray anchors;
    QByteArray others;
    QByteArray lists;
    for (const ChainCandidate &one : input.candidates)
        (one.isAnchor ? anchors : others) += MadeChain::certificatePem(one.der);
    for (const QByteArray &one : input.lists)
        lists += MadeChain::listPem(one);
    QStringList arguments =
        QStringLiteral("verify -auth_level 2 -no-CApath -no-CAstore").split(QLatin1Char(' '));
    if (anchors.isEmpty())
        arguments << QStringLiteral("-no-CAfile");
    else
        arguments << QStringLiteral("-CAfile") << folder.write("anchors", anchors);
    if (!others.isEmpty())
        arguments << QStringLiteral("-untrusted") << folder.write("others", others);
    if (!lists.isEmpty())
        arguments << QStringLiteral("-crl_check") << QStringLiteral("-CRLfile")
                  << folder.write("lists", lists);
    if (input.date.isValid())
        arguments << QStringLiteral("-attime") << QString::number(input.date.toSecsSinceEpoch());
    if (input.purpose == ChainPurpose::WebServer)
        arguments << QStringLiteral("-purpose") << QStringLiteral("sslserver");
    arguments << folder.write("leaf", MadeChain::certificatePem(input.certificate));
    return outputOf(QStringLiteral("openssl"), arguments);
}

QByteArray verifiedByCerttool(const ChainInput &input)
{
    const Folder folder;
    QByteArray anchors;
    QByteArray path = MadeChain::certificatePem(input.certificate);
    QByteArray lists;
    for (const ChainCandidate &one : input.candidates)
        (one.isAnchor ? anchors : path) += MadeChain::certificatePem(one.der);
    for (const QByteArray &one : input.lists)
        lists += MadeChain::listPem(one);
    QStringList arguments = {QStringLiteral("--verify"), QStringLiteral("--load-ca-certificate"),
                             folder.write("anchors", anchors), QStringLiteral("--infile"),
                             folder.write("path", path)};
    if (!lists.isEmpty())
        arguments << QStringLiteral("--load-crl") << folder.write("lists", lists);
    return outputOf(QStringLiteral("certtool"), arguments);
}
