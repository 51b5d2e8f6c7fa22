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
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("openssl"), arguments);
    process.waitForFinished();
    return process.readAll();
}
