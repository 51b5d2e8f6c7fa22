// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/qml/backstage.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace TrivexTest {

Backstage::Backstage()
{
    const QByteArray home = QFile::encodeName(m_home.path());
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/.config");
    qputenv("XDG_DATA_HOME", home + "/.local/share");
    qputenv("XDG_CACHE_HOME", home + "/.cache");
    m_token.useInThisProcess();
    addKey(QStringLiteral("Ivanov"), QStringLiteral("01"));
    addKey(QStringLiteral("Petrova"), QStringLiteral("02"));
}

QString Backstage::requestDirectory() const
{
    return directory() + QStringLiteral("/CertificateRequest/");
}

void Backstage::addKey(const QString &commonName, const QString &id)
{
    if (!m_token.isValid() || !m_token.generateKeyPair(QStringLiteral("rsa:2048"), id, commonName))
        return;
    const QByteArray certificate =
        m_authority.issue(m_token.publicKey(id), QStringLiteral("/CN=%1").arg(commonName));
    m_token.writeObject(QStringLiteral("cert"), certificate, id, commonName);
}

QString Backstage::issue(const QString &requestFile)
{
    const QByteArray certificate = m_authority.issueForRequest(requestFile);
    const QString path =
        m_home.filePath(QFileInfo(requestFile).completeBaseName() + QStringLiteral(".crt"));
    QFile file(path);
    if (certificate.isEmpty() || !file.open(QIODevice::WriteOnly))
        return {};
    file.write("-----BEGIN CERTIFICATE-----\n");
    const QByteArray text = certificate.toBase64();
    for (int i = 0; i < text.size(); i += 64)
        file.write(text.mid(i, 64) + '\n');
    file.write("-----END CERTIFICATE-----\n");
    return path;
}

QString Backstage::makeBundle(const QString &commonName, const QString &password)
{
    return m_authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                              QStringLiteral("/CN=%1").arg(commonName), password, commonName);
}

QString Backstage::requestSubject(const QString &requestFile) const
{
    return QString::fromUtf8(m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-verify"), QStringLiteral("-noout"),
         QStringLiteral("-subject"), QStringLiteral("-nameopt"),
         QStringLiteral("utf8,sep_comma_plus"), QStringLiteral("-in"), requestFile}));
}

QVariant Backstage::value(QAbstractItemModel *model, int row, const QString &role) const
{
    return model->index(row, 0).data(model->roleNames().key(role.toUtf8(), -1));
}

QString Backstage::writeFile(const QString &name, const QString &text) const
{
    QFile file(m_home.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 ? file.fileName()
                                                                             : QString();
}

bool Backstage::exists(const QString &path) const
{
    return QFile::exists(path);
}

int Backstage::fileSize(const QString &path) const
{
    return int(QFileInfo(path).size());
}

QStringList Backstage::filesIn(const QString &path) const
{
    return QDir(path).entryList(QDir::Files, QDir::Name);
}

QString Backstage::sha256(const QString &text) const
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex());
}

} // namespace TrivexTest
