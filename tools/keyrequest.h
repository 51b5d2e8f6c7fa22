// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/keygenerator.h"
#include "qca/questions/cancellation.h"
#include "qca/questions/storedanswers.h"
#include "tools/requestvalues.h"

#include <QObject>
#include <QtCrypto>

namespace Trivex {

/// Makes a certification request with everything that an authority may want: any attribute of a
/// name, other names, usages, for a new key or one that is there. The request is saved beside those
/// that `CertificateRequest` makes, and is listed, edited and removed as they are.
///
///     KeyRequest {
///         id: request
///         onFinished: error === KeyRequest.NoError ? show(path) : tell(message)
///     }
///     ...
///     request.addName("commonName", "www.example.org")
///     request.addAlternativeName("dns", "www.example.org")
///     request.keyUsages = ["digitalSignature"]
///     request.makeKey(token.storeId, KeyRequest.P256, "web server")
///
/// A token asks for its PIN through `PinPrompt`. GUI thread. Signing may run a nested event loop
/// while the token works; this object may go at any time.
class KeyRequest : public QObject {
    Q_OBJECT
    /// True from a call that makes a request until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// How the last run ended; what is wrong with a value is `problem`, with its type in `field`.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// The same as a sentence with the next step; empty when all is well.
    Q_PROPERTY(QString message READ message NOTIFY finished)
    /// The type of the value that `message` is about; empty for another trouble.
    Q_PROPERTY(QString field READ field NOTIFY finished)
    /// The file of the request that was saved last, and its PEM text; empty before.
    Q_PROPERTY(QString path READ path NOTIFY finished)
    /// The PEM text of the request that was saved last; empty before.
    Q_PROPERTY(QString pem READ pem NOTIFY finished)
    /// The last run made a key, or found one: `signAgain()` makes a request for it.
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY finished)
    /// What is typed of the subject, and of its other names; for forms.
    Q_PROPERTY(Trivex::RequestValues *names READ names CONSTANT)
    Q_PROPERTY(Trivex::RequestValues *alternativeNames READ alternativeNames CONSTANT)
    /// Some name of the subject is filled in, without which nobody is asked for a certificate.
    Q_PROPERTY(bool named READ isNamed NOTIFY contentsChanged)
    /// Names of RFC 5280, 4.2.1.3: "digitalSignature".
    Q_PROPERTY(QStringList keyUsages READ keyUsages WRITE setKeyUsages NOTIFY contentsChanged)
    /// Names of RFC 5280, 4.2.1.12 ("serverAuth"), or dotted OIDs.
    Q_PROPERTY(QStringList purposes READ purposes WRITE setPurposes NOTIFY contentsChanged)
public:
    enum KeyKind { Rsa2048, Rsa3072, Rsa4096, P256, P384, P521, Ed25519, Gost256, Gost512 };
    Q_ENUM(KeyKind)
    enum Error {
        NoError,
        WrongContents, ///< nothing was done
        NoKey, ///< no private key is there for what was given
        KeyNotMade, ///< the token refused, or was stopped; `TokenErrors` knows why
        NotSigned, ///< the key is there and stays; `signAgain()` goes on from here
        NotSaved,
    };
    Q_ENUM(Error)

    explicit KeyRequest(QObject *parent = nullptr);
    ~KeyRequest() override;

    bool isRunning() const { return m_isRunning; }
    int error() const { return m_error; }
    QString message() const;
    QString field() const { return m_finding.type; }
    QString path() const { return m_path; }
    QString pem() const { return m_pem; }
    bool hasKey() const;
    bool isNamed() const { return !contents().title().isEmpty(); }
    RequestValues *names() { return &m_names; }
    RequestValues *alternativeNames() { return &m_alternativeNames; }
    QStringList keyUsages() const { return m_keyUsages; }
    void setKeyUsages(const QStringList &usages);
    QStringList purposes() const { return m_purposes; }
    void setPurposes(const QStringList &purposes);
    RequestContents contents() const;
    void setContents(const RequestContents &contents);

    /// Every attribute that has a name of its own; any other goes by its dotted OID.
    Q_INVOKABLE static QStringList nameTypes();
    /// Adds a value of a name's attribute, behind the others. Empty ones are left out in the end.
    Q_INVOKABLE void addName(const QString &type, const QString &value);
    /// The same for another name of the subject: "dns", "email", "ip", "uri".
    Q_INVOKABLE void addAlternativeName(const QString &type, const QString &value);
    /// Forgets all names and usages.
    Q_INVOKABLE void clear();
    /// What is wrong with such a value, as a sentence; empty for a good or empty one.
    Q_INVOKABLE static QString problemOfName(const QString &type, const QString &value);
    /// The same for another name of the subject, by its type.
    Q_INVOKABLE static QString problemOfAlternativeName(const QString &type, const QString &value);

    /// Every key usage and purpose that has a name.
    Q_INVOKABLE static QStringList knownKeyUsages();
    /// Every purpose (extended key usage) that has a name.
    Q_INVOKABLE static QStringList knownPurposes();
    /// What people call an attribute, a usage or a purpose.
    Q_INVOKABLE static QString title(const QString &name);
    /// The directory that requests are saved in.
    Q_INVOKABLE static QString folder();

    /// Takes names and usages from a profile; false for one that is not there. What was typed stays
    /// where the profile leaves a value open, and behind its own where it has no such field.
    Q_INVOKABLE bool loadProfile(const QString &name);
    /// Keeps names and usages as a profile of that name; a `RequestProfiles.SaveResult`.
    Q_INVOKABLE int saveProfile(const QString &name, bool mayReplace = false) const;

    // Each of these makes a request and ends with `finished()`, at once or later. Ignored while one
    // runs.
    /// For a new key on the token `storeId`, a `KeyKind`, labelled `label`.
    Q_INVOKABLE void makeKey(const QString &storeId, int kind, const QString &label);
    /// Makes the key alone, whatever the names are like; `signAgain()` goes on from there. `pin`
    /// answers the token's question, once; without it somebody is asked.
    Q_INVOKABLE void prepareKey(const QString &storeId, int kind, const QString &label,
                                const QString &pin = QString());
    /// Takes a key that is on the token, by its id (`KeyChoiceModel`), and ends as `prepareKey`
    /// does.
    Q_INVOKABLE void takeKey(const QString &storeId, const QString &keyId);
    /// For the key of a bundle, by the object of its row ("keyStoreEntry").
    Q_INVOKABLE void useEntry(QObject *keyStoreEntry);
    /// For the key of a saved request, which needs no certificate yet.
    Q_INVOKABLE void useKeyOfRequest(QObject *request);
    /// For the key of the last run.
    Q_INVOKABLE void signAgain();
    void useKey(const QCA::PrivateKey &key);
    /// Asks the token to stop what it does for this object; `finished()` follows.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void runningChanged();
    /// Names, usages or purposes have changed.
    void contentsChanged();
    /// The run has ended: `error` and `message` say how.
    void finished();

private:
    bool begin();
    bool check();
    void generate(const QString &storeId, int kind, const QString &label);
    void goOn();
    void sign();
    void save(const QCA::CertificateRequest &request);
    void end(Error error);

    RequestValues m_names;
    RequestValues m_alternativeNames;
    // What the last profile brought, as far as it was not typed already.
    QList<RequestValue> m_prefilled;
    QList<RequestValue> m_prefilledOthers;
    QStringList m_keyUsages;
    QStringList m_purposes;
    KeyGenerator m_generator;
    StoredAnswers m_answers;
    QCA::PrivateKey m_key;
    CancellationPtr m_task; ///< what tokens do for the run
    bool m_isRunning = false;
    bool m_isKeyAlone = false;
    Error m_error = NoError;
    RequestContents::Finding m_finding;
    QString m_path;
    QString m_pem;
};

} // namespace Trivex
