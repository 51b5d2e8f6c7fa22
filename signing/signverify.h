// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/eventhandler.h"
#include "qca/tokens/tokenworker.h"
#include "signing/keptpin.h"
#include "signing/pinquestions.h"

#include <QObject>
#include <QPointer>
#include <QtCrypto>

#include <deque>
#include <functional>

class Certificate;
class KeyStoreEntry;

/// Signs data with the RSA key of a key store entry, and checks such signatures. The signature
/// file holds the bytes of a PKCS#1 v1.5 signature (RFC 8017, 8.2, without DigestInfo) over the
/// lower-case hexadecimal text of the data's SHA-256 digest, and nothing else.
///
///     SignVerify {
///         onGetPin: pinDialog.open() // then pinAccepted(text) or pinRejected()
///         onSignSuccess: console.log("signed")
///         onErrorChanged: console.log("failed", error)
///     }
///
/// Results arrive by signal. Lives on the GUI thread, whose event loop runs on while a token works
/// or a question is open; the object and the entry may be destroyed meanwhile.
class SignVerify : public QObject, public Trivex::TokenWorker {
    Q_OBJECT
    Q_INTERFACES(Trivex::TokenWorker)
    /// The certificate of the entry of the last good verification; a null certificate before.
    /// Owned.
    Q_PROPERTY(Certificate *ceritficate READ ceritficate NOTIFY ceritficateChanged)
    /// A value of `Error`. Nothing but `setError()` sets it back.
    Q_PROPERTY(int error READ error NOTIFY errorChanged)
public:
    enum Error {
        NoError = 0,
        ErrorFileNotOpened = 1, ///< never set
        ErrorNotFoundCmsFile = 2, ///< the signature file can't be read
        ErrorSign = 3,
        ErrorVerify = 4, ///< also: the digest of the data can't be made
    };
    Q_ENUM(Error)
    enum Mode {
        SignMode = 0,
        VerifyMode = 1,
    };
    Q_ENUM(Mode)

    explicit SignVerify(QObject *parent = nullptr);
    ~SignVerify() override;

    Certificate *ceritficate() const;
    int error() const { return m_error; }
    /// The signature that is being made, or was made last.
    Trivex::CancellationPtr tokenTask() const override { return m_task; }

Q_SIGNALS:
    /// The signature is in its file.
    void signSuccess();
    /// The signature is good; `ceritficate` is the one that it was checked with.
    void verifySuccess();
    /// A PIN is needed; to be answered with `pinAccepted()` or `pinRejected()`. Questions that
    /// overlap come one after the other, the next one when this one is over. Without a listener
    /// questions of our own providers are rejected.
    void getPin();
    void errorChanged();
    void ceritficateChanged();

public Q_SLOTS:
    /// Assigns `error`; hosts reset it to `NoError` before the next call.
    void setError(int error);
    /// Takes ownership; the one before is deleted.
    void setCeritficate(Certificate *ceritficate);

private Q_SLOTS:
    void eventReady(int id, QCA::Event e);

public:
    /// Signs in 3000 ms. A signature file that can't be written is logged only.
    Q_INVOKABLE void sign(const QByteArray &rawDataFile, const QString &filePathSig,
                          KeyStoreEntry *key);
    /// Verifies in 1000 ms, with the public half of the entry's private key.
    Q_INVOKABLE void verify(const QByteArray &rawDataFile, const QString &filePathSig,
                            KeyStoreEntry *key);
    /// Rejects the question that `getPin()` announced; ignored when there is none.
    Q_INVOKABLE void pinRejected();
    /// Answers that question in 1000 ms. The PIN of a signature is kept for this object's later
    /// signatures with the same token, and for the questions of other providers, until a signature
    /// fails, a PIN was wrong, or the token is taken out or has one try left. With no question
    /// open, the PIN is kept for the next signature.
    Q_INVOKABLE void pinAccepted(const QString &pin);

private:
    struct Job {
        QByteArray data;
        QString path;
        QPointer<KeyStoreEntry> key;
    };

    void schedule(int milliseconds, Qt::TimerType type, std::function<void()> work);
    static Job takeFirst(std::deque<Job> &jobs);
    void startSigning();
    void signQueued();
    /// Makes the text that a signature of `data` covers. False after an error, and when a listener
    /// has deleted this object.
    bool prepare(const QCA::PrivateKey &key, const QByteArray &data, const char *activity,
                 QByteArray *text);
    void runSign(const Job &job);
    void finishSigning(const QString &path, const QByteArray &signature);
    void runVerify(const Job &job);
    void finishVerifying(bool valid, const QCA::CertificateChain &chain);
    void askForPin(const std::optional<Trivex::QuestionInfo> &question);
    void putToPerson(const std::optional<Trivex::QuestionInfo> &question);

    Trivex::EventHandler m_eventHandler;
    Trivex::PinQuestions m_questions{&m_eventHandler};
    Trivex::KeptPin m_keptPin{&m_eventHandler};
    int m_error = NoError;
    QPointer<Certificate> m_ceritficate;
    std::deque<Job> m_toSign; ///< called for, their delay not over yet
    std::deque<Job> m_toVerify;
    std::deque<Job> m_signQueue; ///< due
    Trivex::CancellationPtr m_task;
    bool m_signing = false;
};
