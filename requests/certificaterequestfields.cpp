// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The fields of a request: the subject and its setters, and what is shown of the keys.
#include "requests/certificaterequest.h"

#include "qca/adapter/entries.h"
#include "qca/base/infotypes.h"
#include "qca/keys/keys.h"

QString CertificateRequest::info(int type) const
{
    return Trivex::infoValue(m_subjectInfo, type);
}

void CertificateRequest::addInfo(QCA::CertificateInfoTypeKnown type, const QString &value)
{
    if (!value.isEmpty())
        m_subjectInfo.insert(QCA::CertificateInfoType(type), value);
}

QString CertificateRequest::issuer() const
{
    return info(Trivex::OrganizationInfo);
}

QString CertificateRequest::commonName() const
{
    return info(Trivex::CommonNameInfo);
}

QString CertificateRequest::subjectOrganization() const
{
    return info(Trivex::OrganizationInfo);
}

QString CertificateRequest::subjectOrganizationalUnit() const
{
    return info(Trivex::OrganizationalUnitInfo);
}

QString CertificateRequest::subjectLocality() const
{
    return info(Trivex::LocalityInfo);
}

QString CertificateRequest::subjectCountryCode() const
{
    return info(Trivex::CountryInfo);
}

QString CertificateRequest::subjectName() const
{
    return info(Trivex::CommonNameInfo);
}

QString CertificateRequest::subjectCountry() const
{
    return info(Trivex::StateInfo);
}

QString CertificateRequest::subjecAddress() const
{
    return {};
}

QString CertificateRequest::subjectEmail() const
{
    return info(Trivex::EmailInfo);
}

QString CertificateRequest::publicKeyId() const
{
    return m_keyIdentifier;
}

QString CertificateRequest::publicKeyMarker() const
{
    return m_keyMarker;
}

QString CertificateRequest::publicKeyTypeAlgorithm() const
{
    int type = Trivex::keyType(m_privateKey);
    if (Trivex::publicKeyOf(m_privateKey).isNull())
        type = Trivex::keyType(requestPublicKey());
    return Trivex::keyTypeName(type);
}

QString CertificateRequest::privateKeyAvailability() const
{
    if (m_privateKey.isNull())
        return {};
    return Trivex::isPrivateKey(m_privateKey) ? qtTrId("trivex-p-la-private_available")
                                              : qtTrId("trivex-p-la-private_not_available");
}

QString CertificateRequest::privateKeyManufacturer() const
{
    return subjectOrganization();
}

QString CertificateRequest::fileName() const
{
    return m_fileName;
}

QString CertificateRequest::filePath() const
{
    return m_path;
}

QCA::PublicKey CertificateRequest::requestPublicKey() const
{
    return Trivex::requestPublicKey(m_request);
}

void CertificateRequest::setCommonName(const QString &commonName)
{
    addInfo(QCA::CommonName, commonName);
}

void CertificateRequest::setEmail(const QString &email)
{
    addInfo(QCA::Email, email);
}

void CertificateRequest::setCountryCode(const QString &code)
{
    addInfo(QCA::Country, code);
}

void CertificateRequest::setCountry(const QString &country)
{
    addInfo(QCA::State, country);
}

void CertificateRequest::setLocality(const QString &locality)
{
    addInfo(QCA::Locality, locality);
}

void CertificateRequest::setOrganization(const QString &organization)
{
    addInfo(QCA::Organization, organization);
}

void CertificateRequest::setDepartment(const QString &department)
{
    addInfo(QCA::OrganizationalUnit, department);
}

// Pages may call the following; a request does not carry these fields.

void CertificateRequest::setCurname(const QString &curname)
{
    Q_UNUSED(curname)
}

void CertificateRequest::setName(const QString &name)
{
    Q_UNUSED(name)
}

void CertificateRequest::setAddress(const QString &address)
{
    Q_UNUSED(address)
}

void CertificateRequest::setPosition(const QString &position)
{
    Q_UNUSED(position)
}

void CertificateRequest::setSnils(const QString &snils)
{
    Q_UNUSED(snils)
}

void CertificateRequest::setPsrn(const QString &psrn)
{
    Q_UNUSED(psrn)
}

void CertificateRequest::setTin(const QString &tin)
{
    Q_UNUSED(tin)
}
