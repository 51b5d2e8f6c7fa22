// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/encodedobject.h"

#include <QDateTime>
#include <QObject>
#include <QtCrypto>

/// One X.509 certificate as QML sees it, with its key bundle if it came in one.
///
/// Every value is computed from the certificate at each read. A null certificate gives empty
/// texts, invalid dates and `false`. GUI thread only. The value getters are virtual so that a
/// request without a certificate can answer the same properties.
class Certificate : public QObject, public Trivex::EncodedObject {
    Q_OBJECT
    Q_INTERFACES(Trivex::EncodedObject)
    /// The subject's common name (CN); of several the first.
    Q_PROPERTY(QString commonName READ commonName CONSTANT)
    /// Bytes of the serial number in hex, joined by colons; see `Trivex::hexText()`.
    Q_PROPERTY(QString serialNumber READ serialNumber CONSTANT)
    /// When it becomes valid. An invalid date where that can't be read.
    Q_PROPERTY(QDateTime notValidBefore READ notValidBefore CONSTANT)
    /// When it ends. An invalid date where that can't be read.
    Q_PROPERTY(QDateTime notValidAfter READ notValidAfter CONSTANT)
    /// The common name of the issuer.
    Q_PROPERTY(QString issuer READ issuer CONSTANT)
    /// "Not qualified" for every certificate.
    Q_PROPERTY(QString signatureType READ signatureType CONSTANT)
    /// The subject's organization (O).
    Q_PROPERTY(QString subjectOrganization READ subjectOrganization CONSTANT)
    /// The subject's department (OU).
    Q_PROPERTY(QString subjectOrganizationalUnit READ subjectOrganizationalUnit CONSTANT)
    /// The subject's city or town (L).
    Q_PROPERTY(QString subjectLocality READ subjectLocality CONSTANT)
    /// The subject's country, two letters (C).
    Q_PROPERTY(QString subjectCountryCode READ subjectCountryCode CONSTANT)
    /// How the issuer signed it, as QCA names it: "SHA256, with EMSA3".
    Q_PROPERTY(QString signatureAlgorithm READ signatureAlgorithm CONSTANT)
    /// The same as `commonName`, for views that show the subject beside the issuer.
    Q_PROPERTY(QString subjectName READ subjectName CONSTANT)
    /// The state or region, not the country.
    Q_PROPERTY(QString subjectCountry READ subjectCountry CONSTANT)
    /// The street, or the locality where no street is given. The spelling is interface.
    Q_PROPERTY(QString subjecAddress READ subjecAddress CONSTANT)
    Q_PROPERTY(QString subjectEmail READ subjectEmail CONSTANT) ///< the subject's e-mail address
    /// The taxpayer number of a person, 12 digits (1.2.643.3.131.1.1).
    Q_PROPERTY(QString subjectInn READ subjectInn CONSTANT)
    /// The personal insurance number, 11 digits (1.2.643.100.3).
    Q_PROPERTY(QString subjectSnils READ subjectSnils CONSTANT)
    /// The registration number of a company, 13 digits (1.2.643.100.1).
    Q_PROPERTY(QString subjectOgrn READ subjectOgrn CONSTANT)
    /// The taxpayer number of a company, 10 digits (1.2.643.100.4).
    Q_PROPERTY(QString subjectInnle READ subjectInnle CONSTANT)
    /// The registration number of a sole proprietor, 15 digits (1.2.643.100.5).
    Q_PROPERTY(QString subjectOgrnip READ subjectOgrnip CONSTANT)
    /// How the authority made sure of the subject, a digit (1.2.643.100.114).
    Q_PROPERTY(QString subjectIdentificationKind READ subjectIdentificationKind CONSTANT)
    /// Bytes of the subject key identifier, written as the serial number is.
    Q_PROPERTY(QString publicKeyId READ publicKeyId CONSTANT)
    Q_PROPERTY(QString publicKeyTypeAlgorithm READ publicKeyTypeAlgorithm CONSTANT) ///< "RSA"
    /// The subject's organization.
    Q_PROPERTY(QString publicKeyMarker READ publicKeyMarker CONSTANT)
    /// Whether the private key is there, in a word; a certificate alone has none.
    Q_PROPERTY(QString privateKeyAvailability READ privateKeyAvailability CONSTANT)
    /// The software token, for keys of every store; empty without a key bundle.
    Q_PROPERTY(QString privateKeyLocation READ privateKeyLocation CONSTANT)
    /// The subject's organization; empty without a key bundle.
    Q_PROPERTY(QString privateKeyManufacturer READ privateKeyManufacturer CONSTANT)
    /// The name of the file that the certificate came from; else "<common name>.crt", made safe
    /// ("certificate.crt" where there is no name).
    Q_PROPERTY(QString fileName READ fileName CONSTANT)
    /// True for a self-signed certificate whose subject and issuer have the same common name.
    Q_PROPERTY(bool isRoot READ isRoot CONSTANT)
    /// True for a certificate that could not be read, which has no values.
    Q_PROPERTY(bool isNull READ isNull CONSTANT)

public:
    enum CertificateRequestFormat {
        PKCS10 = 0,
        SPKAC = 1,
    };
    Q_ENUM(CertificateRequestFormat)

    /// Numbers of the subject's attributes, as `Trivex::InfoType`.
    enum CertificateInfoTypeKnown {
        CommonName = 0,
        Email = 1,
        EmailLegacy = 2,
        Organization = 3,
        OrganizationalUnit = 4,
        Locality = 5,
        IncorporationLocality = 6,
        State = 7,
        IncorporationState = 8,
        Country = 9,
        IncorporationCountry = 10,
        URI = 11,
        DNS = 12,
        IPAddress = 13,
        XMPP = 14,
        INN = 15,
        OGRN = 16,
        SNILS = 17,
        INNLE = 18,
        OGRNIP = 19,
        IdentificationKind = 20,
    };
    Q_ENUM(CertificateInfoTypeKnown)

    /// As `QCA::Validity`.
    enum Validity {
        ValidityGood = 0,
        ErrorRejected = 1,
        ErrorUntrusted = 2,
        ErrorSignatureFailed = 3,
        ErrorInvalidCA = 4,
        ErrorInvalidPurpose = 5,
        ErrorSelfSigned = 6,
        ErrorRevoked = 7,
        ErrorPathLengthExceeded = 8,
        ErrorExpired = 9,
        ErrorExpiredCA = 10,
        ErrorValidityUnknown = 64,
    };
    Q_ENUM(Validity)

    explicit Certificate(QObject *parent = nullptr);
    explicit Certificate(const QCA::Certificate &certificate, QObject *parent = nullptr);
    Certificate(const QCA::Certificate &certificate, const QCA::KeyBundle &keyBundle,
                QObject *parent = nullptr);
    /// Empty when the file can't be read; see `loadFromFile()`.
    explicit Certificate(const QString &path, QObject *parent = nullptr);
    ~Certificate() override;

    Certificate(const Certificate &) = delete;
    /// Replaces certificate and key bundle; the file name stays.
    Certificate &operator=(const Certificate &other);

    virtual QString issuer() const;
    virtual QString commonName() const;
    virtual QString subjectOrganization() const;
    virtual QString subjectOrganizationalUnit() const;
    virtual QString subjectLocality() const;
    virtual QString subjectCountryCode() const;
    virtual QString signatureAlgorithm() const;
    virtual QString subjectName() const;
    virtual QString subjectCountry() const;
    virtual QString subjecAddress() const;
    virtual QString subjectEmail() const;
    virtual QString subjectInn() const;
    virtual QString subjectSnils() const;
    virtual QString subjectOgrn() const;
    virtual QString subjectInnle() const;
    virtual QString subjectOgrnip() const;
    virtual QString subjectIdentificationKind() const;
    virtual QString publicKeyId() const;
    virtual QString publicKeyTypeAlgorithm() const;
    virtual QString publicKeyMarker() const;
    virtual QString privateKeyAvailability() const;
    virtual QString privateKeyLocation() const;
    virtual QString privateKeyManufacturer() const;
    virtual QString fileName() const;
    virtual bool isNull() const;
    virtual bool isRoot() const;
    /// Ignored on a null certificate.
    virtual void setFileName(const QString &fileName);
    /// Writes the certificate as PEM into `directory` and replaces a file of the same name. False
    /// for a null certificate, and with a warning when the file can't be written.
    Q_INVOKABLE virtual bool exportToFile(const QString &directory);

    QString serialNumber() const;
    QDateTime notValidBefore() const;
    QDateTime notValidAfter() const;
    QString signatureType() const;

    /// Reads the PEM file `path`. Returns false and changes nothing when there is no such file, or
    /// when it holds no certificate or the current one. The key bundle stays as it was.
    bool loadFromFile(const QString &path);

    QByteArray encoding() const override;

    /// As our own decoder reads it, whatever provider decoded the original.
    QCA::Certificate certificate() const { return m_certificate; }
    QCA::KeyBundle keyBundle() const { return m_keyBundle; }
    void setCertificate(const QCA::Certificate &certificate);
    void setKeyBundle(const QCA::KeyBundle &keyBundle) { m_keyBundle = keyBundle; }

Q_SIGNALS:
    /// A file was written by `exportToFile()`.
    void fileExported();

private:
    QString subjectValue(int type) const;

    QCA::Certificate m_certificate;
    QCA::KeyBundle m_keyBundle;
    QString m_fileName;
};
