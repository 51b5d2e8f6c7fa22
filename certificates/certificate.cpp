// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"

#include "certificates/certificatetext.h"
#include "qca/adapter/certificateinfo.h"
#include "qca/adapter/filenames.h"
#include "qca/adapter/infotypes.h"
#include "qca/adapter/keys.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QUrl>

Certificate::Certificate(QObject *parent)
    : QObject(parent)
{
}

Certificate::Certificate(const QCA::Certificate &certificate, QObject *parent)
    : QObject(parent)
    , m_certificate(certificate)
{
}

Certificate::Certificate(const QCA::Certificate &certificate, const QCA::KeyBundle &keyBundle,
                         QObject *parent)
    : QObject(parent)
    , m_certificate(certificate)
    , m_keyBundle(keyBundle)
{
}

Certificate::Certificate(const QString &path, QObject *parent)
    : QObject(parent)
{
    loadFromFile(path);
}

Certificate::~Certificate() = default;

Certificate &Certificate::operator=(const Certificate &other)
{
    m_certificate = other.m_certificate;
    m_keyBundle = other.m_keyBundle;
    return *this;
}

QString Certificate::subjectValue(int type) const
{
    if (m_certificate.isNull())
        return {};
    return Trivex::infoValue(m_certificate.subjectInfo(), type);
}

QString Certificate::commonName() const
{
    return m_certificate.isNull() ? QString() : m_certificate.commonName();
}

QString Certificate::issuer() const
{
    if (m_certificate.isNull())
        return {};
    return Trivex::infoValue(m_certificate.issuerInfo(), CommonName);
}

QString Certificate::subjectEmail() const
{
    return subjectValue(Email);
}

QString Certificate::subjectOrganization() const
{
    return subjectValue(Organization);
}

QString Certificate::subjectOrganizationalUnit() const
{
    return subjectValue(OrganizationalUnit);
}

QString Certificate::subjectLocality() const
{
    return subjectValue(Locality);
}

QString Certificate::subjectCountryCode() const
{
    return subjectValue(Country);
}

QString Certificate::subjectName() const
{
    return subjectValue(CommonName);
}

QString Certificate::subjectCountry() const
{
    return subjectValue(State);
}

QString Certificate::subjectInn() const
{
    return subjectValue(INN);
}

QString Certificate::subjectSnils() const
{
    return subjectValue(SNILS);
}

QString Certificate::subjectOgrn() const
{
    return subjectValue(OGRN);
}

QString Certificate::subjectInnle() const
{
    return subjectValue(INNLE);
}

QString Certificate::subjectOgrnip() const
{
    return subjectValue(OGRNIP);
}

QString Certificate::subjectIdentificationKind() const
{
    return subjectValue(IdentificationKind);
}

QString Certificate::publicKeyMarker() const
{
    return subjectValue(Organization);
}

QString Certificate::subjecAddress() const
{
    if (m_certificate.isNull())
        return {};
    const auto street = Trivex::streetAddress(m_certificate.toDER());
    switch (street.presence) {
    case Trivex::StreetAddress::Present:
        return street.text;
    case Trivex::StreetAddress::Absent:
        return subjectLocality();
    case Trivex::StreetAddress::Unreadable:
        break;
    }
    return {};
}

QString Certificate::signatureAlgorithm() const
{
    if (m_certificate.isNull())
        return {};
    return Trivex::signatureAlgorithmText(Trivex::signatureAlgorithm(m_certificate));
}

QString Certificate::publicKeyId() const
{
    if (m_certificate.isNull())
        return {};
    return Trivex::hexColonText(m_certificate.subjectKeyId(), QLatin1Char(':'));
}

QString Certificate::publicKeyTypeAlgorithm() const
{
    if (m_certificate.isNull())
        return {};
    const QString known = Trivex::keyTypeText(Trivex::keyType(m_certificate.subjectPublicKey()));
    return known.isEmpty() ? Trivex::publicKeyAlgorithmName(m_certificate.toDER()) : known;
}

QString Certificate::privateKeyAvailability() const
{
    if (m_certificate.isNull())
        return {};
    const bool available = !m_keyBundle.isNull() && Trivex::isPrivateKey(m_keyBundle.privateKey());
    return available ? qtTrId("trivex-p-la-private_available")
                     : qtTrId("trivex-p-la-private_not_available");
}

QString Certificate::privateKeyLocation() const
{
    if (m_certificate.isNull() || m_keyBundle.isNull())
        return {};
    return qtTrId("trivex-me-softhsm");
}

QString Certificate::privateKeyManufacturer() const
{
    return m_keyBundle.isNull() ? QString() : subjectValue(Organization);
}

QString Certificate::fileName() const
{
    if (m_certificate.isNull())
        return {};
    if (!m_fileName.isEmpty())
        return m_fileName;
    // The common name is a stranger's text; as a file name it must not lead elsewhere.
    return Trivex::safeFileName(QStringLiteral("%1.%2").arg(commonName(), QStringLiteral("crt")));
}

bool Certificate::isNull() const
{
    return m_certificate.isNull();
}

bool Certificate::isRoot() const
{
    return !m_certificate.isNull() && !commonName().isEmpty() && !issuer().isEmpty()
        && commonName() == issuer() && m_certificate.isSelfSigned();
}

void Certificate::setFileName(const QString &fileName)
{
    if (!m_certificate.isNull())
        m_fileName = fileName;
}

bool Certificate::exportToFile(const QString &directory)
{
    if (m_certificate.isNull())
        return false;
    const QString path = directory + QDir::separator() + Trivex::safeFileName(fileName());
    if (!m_certificate.toPEMFile(path)) {
        qWarning() << "File: " << path << " not exported!";
        return false;
    }
    Q_EMIT fileExported();
    return true;
}

QString Certificate::serialNumber() const
{
    if (m_certificate.isNull())
        return {};
    return Trivex::hexColonText(m_certificate.serialNumber().toArray().toByteArray(),
                                QLatin1Char(':'));
}

QDateTime Certificate::notValidBefore() const
{
    return m_certificate.isNull() ? QDateTime() : m_certificate.notValidBefore();
}

QDateTime Certificate::notValidAfter() const
{
    return m_certificate.isNull() ? QDateTime() : m_certificate.notValidAfter();
}

QString Certificate::signatureType() const
{
    return m_certificate.isNull() ? QString() : QStringLiteral("Not qualified");
}

bool Certificate::loadFromFile(const QString &path)
{
    if (!QFile::exists(path))
        return false;
    const QCA::Certificate loaded = QCA::Certificate::fromPEMFile(path, nullptr, QString());
    if (loaded.isNull() || (!m_certificate.isNull() && loaded == m_certificate))
        return false;
    m_certificate = loaded;
    m_fileName = QUrl(path).fileName(QUrl::FullyDecoded);
    return true;
}
