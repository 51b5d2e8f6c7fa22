// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificate.h"
#include "keystores/comboboxmodel.h"
#include "qca/base/savedrequest.h"
#include "qca/x509/infotypes.h"
#include "requests/keypairmaker.h"

#include <QPointer>
#include <QtCrypto>

class KeyStoreModel;
class QcaHandler;
namespace Trivex {
struct RequestSave;
}

/// A PKCS#10 certificate request: makes a key on a token, collects the subject, builds the request
/// and keeps it as a PEM file in the request directory.
///
///     CertificateRequest {
///         keyStoreModel: KeyStoreModel
///         Component.onCompleted: { init(); prKeyLocationIndex = 0; createKeyPair() }
///         onCreateKeyPairDone: { setCommonName("Ivanov"); createRequest() }
///         onRequestCreated: console.log(fileName)
///     }
///
/// Lives on the GUI thread. Keys are made in the background; signing a request may run a nested
/// event loop while a token works or asks for its PIN. The object, its models and their stores may
/// go meanwhile. An engine that is to go (`deleteLater()`) goes when the script's call has
/// returned; a host must not `delete` one while its script runs, here as anywhere.
class CertificateRequest : public Certificate, public Trivex::SavedRequest {
    Q_OBJECT
    Q_INTERFACES(Trivex::SavedRequest)
    /// The offered algorithms; empty until `init()`. Never notified.
    Q_PROPERTY(QAbstractListModel *prKeyAlgorithm READ prKeyAlgorithm NOTIFY prKeyAlgorithmChanged)
    /// The offered locations, the key store model's own list; null until `init()`. Never notified.
    Q_PROPERTY(QAbstractListModel *prKeyLocation READ prKeyLocation NOTIFY prKeyLocationChanged)
    /// A value of `KeyAlgorithm`; `init()` sets it to the first offered one without a signal. -1
    /// before that and where nothing is offered.
    Q_PROPERTY(int prKeyAlgorithmId READ prKeyAlgorithmId WRITE setPrKeyAlgorithmId NOTIFY
                   prKeyAlgorithmIdChanged)
    /// A row of `prKeyLocation`; -1 at first.
    Q_PROPERTY(int prKeyLocationIndex READ prKeyLocationIndex WRITE setPrKeyLocationIndex NOTIFY
                   prKeyLocationIndexChanged)
    /// The label of the key objects to make on the token.
    Q_PROPERTY(
        QString keyIdentifier READ keyIdentifier WRITE setKeyIdentifier NOTIFY keyIdentifierChanged)
    /// A free label; only kept and shown.
    Q_PROPERTY(QString keyMarker READ keyMarker WRITE setKeyMarker NOTIFY keyMarkerChanged)
    /// Where stores, locations and PIN answers come from. Null is ignored; every other value is
    /// notified, the same one too. Not owned.
    Q_PROPERTY(KeyStoreModel *keyStoreModel READ keyStoreModel WRITE setKeyStoreModel NOTIFY
                   keyStoreModelChanged)
    Q_PROPERTY(QString prKeyPin WRITE setPrKeyPin) ///< of the token on which the key is made
public:
    /// The size of the key, or of its curve, in bits.
    enum KeyAlgorithm {
        RSA2048 = 2048,
        RSA3072 = 3072,
        RSA4096 = 4096,
        EC384 = 384,
    };
    Q_ENUM(KeyAlgorithm)

    /// An empty request. Creates the request directory where it is missing.
    explicit CertificateRequest(QObject *parent = nullptr);
    /// The request saved in the file `path`, for showing and editing; empty when it can't be read.
    CertificateRequest(const QString &path, KeyStoreModel *model, QObject *parent = nullptr);
    ~CertificateRequest() override;

    QString issuer() const override { return info(Trivex::OrganizationInfo); }
    QString commonName() const override { return info(Trivex::CommonNameInfo); }
    QString subjectOrganization() const override { return info(Trivex::OrganizationInfo); }
    QString subjectOrganizationalUnit() const override;
    QString subjectLocality() const override { return info(Trivex::LocalityInfo); }
    QString subjectCountryCode() const override { return info(Trivex::CountryInfo); }
    QString subjectName() const override { return info(Trivex::CommonNameInfo); }
    QString subjectCountry() const override { return info(Trivex::StateInfo); }
    QString subjecAddress() const override { return {}; }
    QString subjectEmail() const override { return info(Trivex::EmailInfo); }
    QString publicKeyId() const override { return m_keyIdentifier; }
    QString publicKeyTypeAlgorithm() const override;
    QString publicKeyMarker() const override { return m_keyMarker; }
    QString privateKeyAvailability() const override;
    QString privateKeyLocation() const override;
    QString privateKeyManufacturer() const override { return subjectOrganization(); }
    QString fileName() const override { return m_fileName; }
    /// Writes the request into `directory` under `fileName()` and emits `fileExported()`.
    bool exportToFile(const QString &directory) override;
    /// The whole path of the file last written or loaded; empty before.
    virtual QString filePath() const { return m_path; }

    QAbstractListModel *prKeyAlgorithm() { return &m_algorithmModel; }
    QAbstractListModel *prKeyLocation() const { return m_locationModel; }
    int prKeyAlgorithmId() const { return m_prKeyAlgorithmId; }
    void setPrKeyAlgorithmId(int id);
    int prKeyLocationIndex() const { return m_prKeyLocationIndex; }
    QString keyIdentifier() const { return m_keyIdentifier; }
    void setKeyIdentifier(const QString &identifier);
    QString keyMarker() const { return m_keyMarker; }
    void setKeyMarker(const QString &marker);
    KeyStoreModel *keyStoreModel() const;
    void setKeyStoreModel(KeyStoreModel *model);
    void setPrKeyPin(const QString &pin);
    QByteArray encoding() const override;
    QString requestFile() const override { return m_path; }
    QByteArray requestKeyInfo() const override;
    Trivex::RequestedFields requestedFields() const override { return m_fields; }
    void setRequestedFields(const Trivex::RequestedFields &fields) override { m_fields = fields; }
    void restoreRequestedFields() override;
    Trivex::EditLoss editLoss() const override;
    bool hasRequestKey() const override;
    /// The public key that the request carries; null for an empty one.
    QCA::PublicKey requestPublicKey() const;

    Q_INVOKABLE void setPrKeyLocationIndex(int id); ///< assigns `prKeyLocationIndex`
    /// Fills the lists from `keyStoreModel`. A second call lists every algorithm twice.
    Q_INVOKABLE void init();
    /// Starts making a key of the chosen kind at the chosen location; `createKeyPairDone()`
    /// follows when it worked, nothing when not.
    Q_INVOKABLE void createKeyPair();
    /// Signs a request with the subject and key so far, and saves it.
    Q_INVOKABLE void createRequest();
    /// Writes the request into the request directory, in edit mode in place of the old file, which
    /// stays whole until the new one is; false, and nothing changed, where that fails.
    Q_INVOKABLE bool saveRequest();
    /// The kind of the chosen location, a `KeyStoreModel::Location`; 3 where none is chosen.
    Q_INVOKABLE int prKeyLocationId();
    /// Rejects the question that waits for a stored answer.
    Q_INVOKABLE void pinRejected();
    // Each call with a text adds a value; the last added is the one that getters show. A request
    // does not carry the fields whose setters do nothing; pages may call those all the same.
    Q_INVOKABLE void setCommonName(const QString &commonName); ///< CN
    Q_INVOKABLE void setCurname(const QString &curname) { Q_UNUSED(curname) } ///< does nothing
    Q_INVOKABLE void setName(const QString &name) { Q_UNUSED(name) } ///< does nothing
    /// Adds an e-mail address to the subject.
    Q_INVOKABLE void setEmail(const QString &email) { addInfo(QCA::Email, email); }
    Q_INVOKABLE void setCountryCode(const QString &code) { addInfo(QCA::Country, code); } ///< C
    /// Adds a state or province, not a country.
    Q_INVOKABLE void setCountry(const QString &country) { addInfo(QCA::State, country); }
    /// Adds a city or town (L).
    Q_INVOKABLE void setLocality(const QString &locality) { addInfo(QCA::Locality, locality); }
    Q_INVOKABLE void setAddress(const QString &address) { Q_UNUSED(address) } ///< does nothing
    Q_INVOKABLE void setOrganization(const QString &organization); ///< O
    Q_INVOKABLE void setDepartment(const QString &department); ///< OU
    Q_INVOKABLE void setPosition(const QString &position) { Q_UNUSED(position) } ///< does nothing
    Q_INVOKABLE void setSnils(const QString &snils) { Q_UNUSED(snils) } ///< does nothing
    Q_INVOKABLE void setPsrn(const QString &psrn) { Q_UNUSED(psrn) } ///< does nothing
    Q_INVOKABLE void setTin(const QString &tin) { Q_UNUSED(tin) } ///< does nothing
    /// Sets the mode and saves at once, whatever the mode.
    Q_INVOKABLE void setEditMode(bool status);
    /// The request directory, with a separator at its end.
    Q_INVOKABLE QString requestPath();

Q_SIGNALS:
    void prKeyAlgorithmChanged();
    void prKeyAlgorithmIdChanged();
    void prKeyLocationChanged();
    void prKeyLocationIndexChanged();
    void keyIdentifierChanged();
    void keyMarkerChanged();
    void createKeyPairDone(); ///< the key is on the token: `createRequest()` may follow
    void requestCreated(); ///< a request file was written
    void keyStoreModelChanged();
    void prKeyPinChanged();
    /// The request can't be signed, for its key is not found.
    void missingPrivateKey();

private Q_SLOTS:
    void keyGenFinished();

private:
    void load(const QString &path);
    QString info(int type) const;
    void addInfo(QCA::CertificateInfoTypeKnown type, const QString &value);
    ComboBoxModel::Row chosenLocation() const;
    QcaHandler *handler() const;
    bool resign(Trivex::RequestSave *save);
    QCA::PrivateKey findPrivateKey(const QCA::CertificateRequest &request) const;
    QList<QPointer<QCA::KeyStore>> locationStores() const;

    bool m_editMode = false;
    ComboBoxModel m_algorithmModel;
    QPointer<ComboBoxModel> m_locationModel;
    int m_prKeyAlgorithmId = -1;
    int m_prKeyLocationIndex = -1;
    QString m_keyIdentifier;
    QString m_keyMarker;
    QString m_fileName;
    QString m_path;
    QCA::PrivateKey m_privateKey;
    Trivex::RequestedFields m_fields;
    QCA::CertificateRequest m_request;
    QCA::CertificateOptions m_options;
    QPointer<KeyStoreModel> m_keyStoreModel;
    KeyPairMaker m_keyPairMaker;
};
