// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/cms/cmsfixture.h"

#include "qca/adapter/keybundlefile.h"
#include "qca/cms/documentkey.h"
#include "qca/cms/messagecheck.h"

#include <QDebug>
#include <QFile>
#include <QProcess>

using namespace Trivex;

namespace TrivexTest {

CmsFixture::CmsFixture()
    : m_authority(std::make_unique<TestAuthority>())
{
}

CmsFixture::~CmsFixture() = default;

QStringList CmsFixture::keyArguments(const QString &kind)
{
    const QString option = kind.section(QLatin1Char(':'), 1, 1);
    const QString digest = kind.section(QLatin1Char(':'), 2);
    const QString algorithm = kind.section(QLatin1Char(':'), 0, 0);
    QStringList arguments = {QStringLiteral("-algorithm"), algorithm};
    if (algorithm.startsWith(QLatin1String("rsa")))
        arguments += {QStringLiteral("-pkeyopt"), QStringLiteral("rsa_keygen_bits:") + option};
    if (!digest.isEmpty())
        arguments += {QStringLiteral("-pkeyopt"), QStringLiteral("rsa_pss_keygen_md:") + digest};
    if (algorithm == QLatin1String("ec"))
        arguments += {QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:") + option};
    return arguments;
}

Signer CmsFixture::makeSigner(const QString &kind, const QString &subject)
{
    const QString path = m_authority->bundle(keyArguments(kind), subject, QStringLiteral("x"),
                                             QStringLiteral("signer"));
    const auto loaded = readKeyBundle(path, QCA::SecureArray("x"));
    if (!loaded || loaded->bundle.isNull())
        return {};
    return {loaded->bundle.privateKey(), signingChain(loaded->bundle)};
}

QString CmsFixture::write(const QString &name, const QByteArray &contents) const
{
    QFile target(file(name));
    const bool isWritten =
        target.open(QIODevice::WriteOnly) && target.write(contents) == contents.size();
    return isWritten ? target.fileName() : QString();
}

QByteArray CmsFixture::read(const QString &path)
{
    QFile source(path);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

DocumentSignature::Problem CmsFixture::sign(const Signer &signer,
                                            const DocumentSignature::Files &files, bool mayReplace)
{
    DocumentSignature signature(files, signer.chain.value(0), signer.chain);
    DocumentSignature::Problem problem = signature.digest(QDateTime::currentDateTimeUtc());
    if (problem != DocumentSignature::NoProblem)
        return problem;
    signature.setSignature(
        signForMessage(signer.key, signature.message().scheme(), signature.message().toBeSigned()));
    problem = signature.write();
    return problem == DocumentSignature::NoProblem ? signature.place(mayReplace) : problem;
}

MessageReport CmsFixture::check(const QString &message, const QString &document,
                                const QList<QByteArray> &known)
{
    LongWork work;
    const Content outside = document.isEmpty() ? Content() : wholeContent(openByteSource(document));
    return checkMessage(SignedMessage::read(openByteSource(message)), outside, known, work);
}

int CmsFixture::verdict(const QString &message, const QString &document)
{
    const MessageReport report = check(message, document);
    return report.signers.size() == 1 ? int(report.signers.first().verdict) : -1;
}

int CmsFixture::run(const QString &program, const QStringList &arguments, QByteArray *output) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(file(QString()));
    process.start(program, arguments);
    if (!process.waitForFinished(60000))
        return -1;
    const QByteArray text = process.readAll();
    if (output)
        *output = text;
    if (process.exitCode() != 0)
        qInfo() << program << arguments << text;
    return process.exitCode();
}

bool CmsFixture::opensslAccepts(const QString &message, const QString &document,
                                const QStringList &further) const
{
    QStringList arguments = {QStringLiteral("cms"),     QStringLiteral("-verify"),
                             QStringLiteral("-binary"), QStringLiteral("-cades"),
                             QStringLiteral("-inform"), QStringLiteral("DER"),
                             QStringLiteral("-in"),     message,
                             QStringLiteral("-CAfile"), m_authority->certificateFile(),
                             QStringLiteral("-out"),    file(QStringLiteral("verified"))};
    if (!document.isEmpty())
        arguments += {QStringLiteral("-content"), document};
    return run(QStringLiteral("openssl"), arguments + further) == 0;
}

} // namespace TrivexTest
