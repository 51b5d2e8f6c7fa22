// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/questions/cancellation.h"
#include "qca/questions/question.h"
#include "qca/tokens/tokenfacts.h"

#include <QObject>
#include <QVector>

namespace Trivex {

/// Why an operation on a token failed, in terms that callers can branch on. The text for people is
/// made from it where it is shown.
struct TokenError {
    enum Kind {
        NoError,
        WrongPin,
        PinLocked,
        PinMissing, ///< nobody gave one, or the question was left
        TokenRemoved,
        TokenFull,
        ReadOnly,
        NotSupported, ///< mechanism, key kind or size that the token does not know
        NotFound,
        Cancelled,
        PinNotSet, ///< the token has no user PIN yet
        PinExpired, ///< the PIN has to be changed before it can be used
        NotLoggedIn, ///< the token wants a login that it does not offer
        TokenInUse, ///< another program, or another user of the token, stands in the way
        DataRefused, ///< what was to be signed or decrypted
        NoKey, ///< the login showed no private key for the certificate
        KeyAmbiguous, ///< several keys have the same name and id, and which is meant can't be told
        WrongKeyKind, ///< the key is of a kind that can't do what was asked of it
        KeyStays, ///< a private key that its token gives to nobody
        NewPinRefused, ///< a PIN that was to be set breaks the token's rules
        LastTry, ///< a wrong PIN would lock the token, and nobody has agreed to that
        DeviceFailure, ///< everything else; `returnValue` says what
    };
    Kind kind = NoError;
    QString keyStoreId;
    Purpose purpose = Purpose::Sign;
    QString function; ///< the PKCS#11 call that failed, for a report
    unsigned long returnValue = 0; ///< CK_RV
    QString returnName; ///< the same as PKCS#11 names it; empty when no call failed
};

/// The state of one token, for display.
struct TokenStatus {
    QString keyStoreId;
    QString name; ///< as its key store is named
    QString manufacturer;
    QString model;
    QString serial;
    bool present = false;
    bool readOnly = false;
    /// The trusted certificates of a trust module, which are everybody's: no token of a person.
    bool isTrust = false;
    bool hasPinPad = false;
    bool busy = false;
    Purpose busyWith = Purpose::Sign; ///< only meaningful while `busy`
    bool loading = false; ///< its objects are being read
    bool isRead = false; ///< what is on it is known; until then at most what is remembered
    TokenError readError; ///< why its last reading has failed
    /// It shows no public keys: whether it has those of its certificates is known after a login.
    bool keysPresumed = false;
    /// Some of its private keys may be shown by a login only.
    bool keysHidden = false;
    PinState pinState = PinState::Normal;
    PinState officerPinState = PinState::Normal; ///< of the PIN of the token's administrator
    bool pinToBeChanged = false; ///< the PIN is a first one, which its user has to change
    bool pinMayBeEmpty = false; ///< no PIN at all may be the right one
    // In bytes, for both PINs; 0 where the token does not say.
    int shortestPin = 0;
    int longestPin = 0;
    TokenFacts facts;
    int certificates = 0; ///< so many are on it
    bool isWhole = true; ///< false where there are more, which the module failed to read
    QVector<TokenKeyFacts> keyFacts; ///< of the keys that are seen
};

/// Live view of the tokens of the process. Make one per user; signals arrive on its thread.
class TRIVEX_QCA_EXPORT TokenMonitor : public QObject {
    Q_OBJECT
public:
    explicit TokenMonitor(QObject *parent = nullptr);
    ~TokenMonitor() override;

    /// A copy of what is known now.
    static QVector<TokenStatus> tokens();
    static TokenStatus token(const QString &keyStoreId);
    /// The modules that have not listed their tokens yet, by name: those tokens are missing above.
    static QStringList silentModules();
    /// The findings of `takeLook` since the token was inserted.
    static TokenLook look(const QString &keyStoreId);

    /// Reads what a token can do and what else is on it, without a PIN; `changed` follows.
    static void takeLook(const QString &keyStoreId);
    /// Asks all operations on that token to end, whoever has started them: the running one and
    /// those that wait for their turn. Their outcome comes the usual way.
    static void cancel(const QString &keyStoreId);

Q_SIGNALS:
    void changed(const QString &keyStoreId);
    /// The token was taken out, even when it is back by the time this arrives. Before `changed`.
    void removed(const QString &keyStoreId);
    /// A PIN of the token was changed, or the token was made anew.
    void pinChanged(const QString &keyStoreId);
    void failed(const Trivex::TokenError &error);
    /// `silentModules` may have become shorter.
    void moduleAnswered();
};

/// Asks the operations of one task to end, and no other: those that wait for their turn are
/// dropped, and a signature or a generation that runs is not waited for. A change of the token that
/// runs is, because its outcome has to be known. Operations that the task starts later never begin.
/// The task is the one of a `CancellationScope`, or was returned by `startTokenAdministration`;
/// null is ignored. Thread-safe.
TRIVEX_QCA_EXPORT void cancelTokenTask(const CancellationPtr &task);

/// The token's private key for `publicKey`, with or without a certificate; see
/// `TokenBackend::findPrivateKey`. Null when there is none or no token provider is loaded.
TRIVEX_QCA_EXPORT QCA::PrivateKey findTokenKey(const QString &keyStoreId,
                                               const QCA::PublicKey &publicKey);

/// The private key of this id (`TokenKeyFacts::id`) in store `keyStoreId`; null when it is not
/// there, when its public half is not known, and when no token provider is loaded. Asks for
/// nothing.
TRIVEX_QCA_EXPORT QCA::PrivateKey tokenKeyOfId(const QString &keyStoreId, const QString &keyId);

/// Publishes through `TokenMonitor::failed` that `key`, of a token or not, is of a kind that can't
/// do what was asked of it. No token has been asked. Any thread.
TRIVEX_QCA_EXPORT void reportWrongKeyKind(const QCA::PKey &key);

} // namespace Trivex

Q_DECLARE_METATYPE(Trivex::TokenError)
