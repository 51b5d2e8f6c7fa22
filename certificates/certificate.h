// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>
#include <QtCrypto>

/// One X.509 certificate for QML, with the key bundle that it came with and its file name. Every
/// property is read from the certificate anew and is empty for a null certificate.
///
///     Label { text: certificate.commonName + ", " + certificate.subjectInn }
///
/// Never created by QML; whoever made it owns it. GUI thread only.
class Certificate : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString commonName READ commonName CONSTANT)
    /// Bytes as signed hexadecimal numbers between colons.
    Q_PROPERTY(QString serialNumber READ serialNumber CONSTANT)
    Q_PROPERTY(QDateTime notValidBefore READ notValidBefore CONSTANT)
    Q_PROPERTY(QDateTime notValidAfter READ notValidAfter CONSTANT)
    Q_PROPERTY(QString issuer READ issuer CONSTANT)
    /// A fixed text.
    Q_PROPERTY(QString signatureType READ signatureType CONSTANT)
    Q_PROPERTY(QString subjectOrganization READ subjectOrganization CONSTANT)
    Q_PROPERTY(QString subjectOrganizationalUnit READ subjectOrganizationalUnit CONSTANT)
    Q_PROPERTY(QString subjectLocality READ subjectLocality CONSTANT)
    /// The country.
    Q_PROPERTY(QString subjectCountryCode READ subjectCountryCode CONSTANT)
    Q_PROPERTY(QString signatureAlgorithm READ signatureAlgorithm CONSTANT)
    Q_PROPERTY(QString subjectName READ subjectName CONSTANT)
    /// The state or province, on purpose.
    Q_PROPERTY(QString subjectCountry READ subjectCountry CONSTANT)
    /// The street, or the locality where there is none. The spelling is part of the interface.
    Q_PROPERTY(QString subjecAddress READ subjecAddress CONSTANT)
    Q_PROPERTY(QString subjectEmail READ subjectEmail CONSTANT)
    Q_PROPERTY(QString subjectInn READ subjectInn CONSTANT)
    Q_PROPERTY(QString subjectSnils READ subjectSnils CONSTANT)
    Q_PROPERTY(QString subjectOgrn READ subjectOgrn CONSTANT)
    Q_PROPERTY(QString subjectInnle READ subjectInnle CONSTANT)
    Q_PROPERTY(QString subjectOgrnip READ subjectOgrnip CONSTANT)
    Q_PROPERTY(QString subjectIdentificationKind READ subjectIdentificationKind CONSTANT)
    /// The subject key identifier, written like the serial number.
    Q_PROPERTY(QString publicKeyId READ publicKeyId CONSTANT)
    Q_PROPERTY(QString publicKeyTypeAlgorithm READ publicKeyTypeAlgorithm CONSTANT)
    /// The organization, on purpose.
    Q_PROPERTY(QString publicKeyMarker READ publicKeyMarker CONSTANT)
    Q_PROPERTY(QString privateKeyAvailability READ privateKeyAvailability CONSTANT)
    /// Empty without a key bundle.
    Q_PROPERTY(QString privateKeyLocation READ privateKeyLocation CONSTANT)
    /// The organization, on purpose; empty without a key bundle.
    Q_PROPERTY(QString privateKeyManufacturer READ privateKeyManufacturer CONSTANT)
    /// The file that it came from, else the common name with the suffix crt.
    Q_PROPERTY(QString fileName READ fileName CONSTANT)
    /// Self-signed, with the same non-empty subject and issuer name.
    Q_PROPERTY(bool isRoot READ isRoot CONSTANT)
    Q_PROPERTY(bool isNull READ isNull CONSTANT)
public:
    enum CertificateRequestFormat { PKCS10 = 0, SPKAC = 1 };
    Q_ENUM(CertificateRequestFormat)

    /// Subject attributes; 0 to 14 as `QCA::CertificateInfoTypeKnown`.
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
    /// As `loadFromFile(path)`.
    explicit Certificate(const QString &path, QObject *parent = nullptr);
    ~Certificate() override;

    /// Takes over certificate and key bundle; the file name stays.
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
    /// Ignored while there is no certificate.
    virtual void setFileName(const QString &fileName);
    /// Writes the certificate in PEM form into `directory` under its `fileName`, over a file of
    /// that name, and emits `fileExported()`. False on failure; a null certificate fails silently.
    Q_INVOKABLE virtual bool exportToFile(const QString &directory);

    QString serialNumber() const;
    QDateTime notValidBefore() const;
    QDateTime notValidAfter() const;
    QString signatureType() const;

    QCA::Certificate certificate() const { return m_certificate; }
    QCA::KeyBundle keyBundle() const { return m_keyBundle; }
    void setCertificate(const QCA::Certificate &certificate) { m_certificate = certificate; }
    void setKeyBundle(const QCA::KeyBundle &keyBundle) { m_keyBundle = keyBundle; }
    /// Reads the PEM file `path`; the key bundle stays. False, and nothing changed, when there is
    /// no certificate in it or it is the one already held.
    bool loadFromFile(const QString &path);

Q_SIGNALS:
    void fileExported();

private:
    QString subjectValue(int type) const;

    QCA::Certificate m_certificate;
    QCA::KeyBundle m_keyBundle;
    QString m_fileName;
};
