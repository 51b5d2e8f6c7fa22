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

struct PurposeName {
    ChainPurpose purpose;
    const char *name;
};

constexpr PurposeName PurposeNames[] = {
    {ChainPurpose::WebServer, "sslserver"},  {ChainPurpose::WebClient, "sslclient"},
    {ChainPurpose::Email, "smimesign"},      {ChainPurpose::TimeStamps, "timestampsign"},
#ifdef X509_PURPOSE_CODE_SIGN
    {ChainPurpose::CodeSigning, "codesign"},
#endif
};

/// Empty for one that the program does not know.
QString purposeName(ChainPurpose purpose)
{
    for (const PurposeName &one : PurposeNames) {
        if (one.purpose == purpose)
            return QString::fromLatin1(one.name);
    }
    return {};
}

} // namespace

bool knowsPurpose(ChainPurpose purpose)
{
    return purpose == ChainPurpose::Any || !purposeName(purpose).isEmpty();
}

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
    const QString purpose = purposeName(input.purpose);
    if (!purpose.isEmpty())
        arguments << QStringLiteral("-purpose") << purpose;
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
