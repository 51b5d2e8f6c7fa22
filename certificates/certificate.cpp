// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"

#include "certificates/certificatetext.h"
#include "qca/adapter/reading.h"
#include "qca/base/filenames.h"
#include "qca/base/regularfile.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificateinfo.h"
#include "qca/x509/infotypes.h"

#include <QDebug>
#include <QDir>
#include <QUrl>

namespace {

constexpr QLatin1Char Colon(':');

} // namespace

Certificate::Certificate(QObject *parent)
    : QObject(parent)
{
}

Certificate::Certificate(const QCA::Certificate &certificate, QObject *parent)
    : QObject(parent)
    , m_certificate(Trivex::ownCertificate(certificate))
{
}

Certificate::Certificate(const QCA::Certificate &certificate, const QCA::KeyBundle &keyBundle,
                         QObject *parent)
    : QObject(parent)
    , m_certificate(Trivex::ownCertificate(certificate))
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
        return QString();
    return Trivex::infoValue(m_certificate.subjectInfo(), type);
}

QString Certificate::issuer() const
{
    if (m_certificate.isNull())
        return QString();
    return Trivex::infoValue(m_certificate.issuerInfo(), CommonName);
}

QString Certificate::commonName() const
{
    return m_certificate.isNull() ? QString() : m_certificate.commonName();
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

QString Certificate::signatureAlgorithm() const
{
    if (m_certificate.isNull())
        return QString();
    return Trivex::signatureText(Trivex::signatureAlgorithm(m_certificate));
}

QString Certificate::subjectName() const
{
    return subjectValue(CommonName);
}

QString Certificate::subjectCountry() const
{
    return subjectValue(State);
}

QString Certificate::subjecAddress() const
{
    if (m_certificate.isNull())
        return QString();
    const auto street = Trivex::streetAddress(m_certificate);
    return street ? *street : subjectLocality();
}

QString Certificate::subjectEmail() const
{
    return subjectValue(Email);
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

QString Certificate::publicKeyId() const
{
    if (m_certificate.isNull())
        return QString();
    return Trivex::hexText(m_certificate.subjectKeyId(), Colon);
}

QString Certificate::publicKeyTypeAlgorithm() const
{
    if (m_certificate.isNull())
        return QString();
    const QString name = Trivex::keyTypeName(Trivex::keyType(m_certificate.subjectPublicKey()));
    return name.isEmpty() ? Trivex::publicKeyAlgorithmName(m_certificate) : name;
}

QString Certificate::publicKeyMarker() const
{
    return subjectValue(Organization);
}

QString Certificate::privateKeyAvailability() const
{
    if (m_certificate.isNull())
        return QString();
    if (!m_keyBundle.isNull() && Trivex::isPrivateKey(m_keyBundle.privateKey()))
        return qtTrId("trivex-p-la-private_available");
    return qtTrId("trivex-p-la-private_not_available");
}

QString Certificate::privateKeyLocation() const
{
    if (m_certificate.isNull() || m_keyBundle.isNull())
        return QString();
    return qtTrId("trivex-me-softhsm");
}

QString Certificate::privateKeyManufacturer() const
{
    return m_keyBundle.isNull() ? QString() : subjectValue(Organization);
}

QString Certificate::fileName() const
{
    if (m_certificate.isNull() || !m_fileName.isEmpty())
        return m_certificate.isNull() ? QString() : m_fileName;
    return Trivex::safeFileName(commonName(), QStringLiteral(".crt"),
                                QStringLiteral("certificate"));
}

bool Certificate::isNull() const
{
    return m_certificate.isNull();
}

bool Certificate::isRoot() const
{
    if (m_certificate.isNull())
        return false;
    const QString subject = commonName();
    if (subject.isEmpty())
        return false;
    const QString from = issuer();
    return !from.isEmpty() && subject == from && m_certificate.isSelfSigned();
}

void Certificate::setCertificate(const QCA::Certificate &certificate)
{
    m_certificate = Trivex::ownCertificate(certificate);
}

void Certificate::setFileName(const QString &fileName)
{
    if (!m_certificate.isNull())
        m_fileName = fileName;
}

QByteArray Certificate::encoding() const
{
    return m_certificate.isNull() ? QByteArray() : m_certificate.toDER();
}

bool Certificate::exportToFile(const QString &directory)
{
    if (m_certificate.isNull())
        return false;
    const QString path = directory + QDir::separator() + Trivex::safeFileName(fileName());
    if (!Trivex::writeFile(path, m_certificate.toPEM().toUtf8())) {
        qWarning() << "File: " << path << " not exported!";
        return false;
    }
    Q_EMIT fileExported();
    return true;
}

QString Certificate::serialNumber() const
{
    if (m_certificate.isNull())
        return QString();
    return Trivex::hexText(m_certificate.serialNumber().toArray().toByteArray(), Colon);
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
    const auto contents = Trivex::readRegularFile(path);
    if (!contents)
        return false;
    const QCA::Certificate loaded = Trivex::certificateFromPem(*contents);
    if (loaded.isNull() || loaded == m_certificate)
        return false;
    m_certificate = loaded;
    m_fileName = QUrl(path).fileName(QUrl::FullyDecoded);
    return true;
}
