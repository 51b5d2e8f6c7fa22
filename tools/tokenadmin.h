// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenadministration.h"
#include "tools/arrival.h"

namespace Trivex {

/// Sets the PINs of a token and makes it anew.
///
///     TokenAdmin {
///         id: admin
///         storeId: token.storeId
///         onFinished: error === TokenAdmin.NoError ? close() : tell(message)
///     }
///     ...
///     admin.changePin(before.text, after.text)
///
/// One task at a time. Each PIN goes to the token once, and is wiped when the task ends; where the
/// reader has its own keypad (`pinPad`), PINs are typed there and those given here go nowhere. This
/// object may go at any time: a task that runs ends on the token, and nobody is told. GUI thread.
class TokenAdmin : public QObject {
    Q_OBJECT
    /// The token's key store. Not to be changed while a task runs.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// True from a call that starts a task until `finished()`.
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// How the last task ended.
    Q_PROPERTY(int error READ error NOTIFY finished)
    /// The same as a sentence with the next step; empty when all is well.
    Q_PROPERTY(QString message READ message NOTIFY finished)
    /// The last task has emptied the token, whether it succeeded afterwards or not.
    Q_PROPERTY(bool emptied READ isEmptied NOTIFY finished)

    // What the token says now.
    /// The label of the token.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    /// The token's own name; `name` may have a number to it, where two are named alike.
    Q_PROPERTY(QString label READ label NOTIFY changed)
    /// The token is there.
    Q_PROPERTY(bool present READ isPresent NOTIFY changed)
    /// Nothing can be written to the token.
    Q_PROPERTY(bool readOnly READ isReadOnly NOTIFY changed)
    /// PINs are typed at the reader's keys: those that are given here are not used.
    Q_PROPERTY(bool pinPad READ hasPinPad NOTIFY changed)
    /// False while its user has no PIN yet.
    Q_PROPERTY(bool pinSet READ isPinSet NOTIFY changed)
    /// Its user gets in without a PIN: an empty one is what a new one takes the place of.
    Q_PROPERTY(bool pinEmpty READ isPinEmpty NOTIFY changed)
    /// The PIN of the user is locked.
    Q_PROPERTY(bool locked READ isLocked NOTIFY changed)
    /// One more wrong PIN locks it: a task needs `mayBeLastTry` then.
    Q_PROPERTY(bool lastTry READ isLastTry NOTIFY changed)
    /// The PIN of the administrator is locked.
    Q_PROPERTY(bool officerLocked READ isOfficerLocked NOTIFY changed)
    /// Its administrator may have no PIN: the user's first one can be set with an empty one.
    Q_PROPERTY(bool officerPinEmpty READ isOfficerPinEmpty NOTIFY changed)
    /// Another wrong PIN of the administrator locks it.
    Q_PROPERTY(bool officerLastTry READ isOfficerLastTry NOTIFY changed)
    /// What the token says of the tries of its administrator's PIN, as a sentence; empty when all
    /// is well. Of its user's PIN `TokenInfo.pinText` tells.
    Q_PROPERTY(QString officerText READ officerText NOTIFY changed)
    /// How long a PIN may be, as a sentence; empty where the token does not say.
    Q_PROPERTY(QString lengthText READ lengthText NOTIFY changed)
    /// What would be lost with the token's contents, as a sentence.
    Q_PROPERTY(QString lossText READ lossText NOTIFY changed)
public:
    enum Error {
        NoError,
        WrongPin,
        NewPinRefused, ///< the new PIN breaks the token's rules; the old one holds
        Locked,
        LastTry, ///< only one try is left, and nobody has agreed to it; nothing was tried
        PinMissing,
        NoPinYet, ///< there is no PIN that could be changed
        TokenGone,
        InUse,
        ReadOnly,
        NotSupported,
        Stopped,
        Failed, ///< everything else
    };
    Q_ENUM(Error)

    static Error errorOf(TokenError::Kind kind);
    /// `byOfficer`: the PIN that was tried is the administrator's.
    static QString messageOf(const TokenError &error, bool byOfficer);

    explicit TokenAdmin(QObject *parent = nullptr);
    ~TokenAdmin() override;

    QString storeId() const;
    void setStoreId(const QString &storeId);
    bool isRunning() const;
    int error() const;
    QString message() const;
    bool isEmptied() const;
    QString name() const;
    QString label() const;
    bool isPresent() const;
    bool isReadOnly() const;
    bool hasPinPad() const;
    bool isPinSet() const;
    bool isPinEmpty() const;
    bool isOfficerPinEmpty() const;
    bool isLocked() const;
    bool isLastTry() const;
    bool isOfficerLocked() const;
    bool isOfficerLastTry() const;
    QString officerText() const;
    QString lengthText() const;
    QString lossText() const;

    /// Whether a PIN of that length can be one of this token; true where it does not say.
    Q_INVOKABLE bool fits(const QString &pin) const;
    /// Whether that can be the name of a token: up to 32 bytes, without spaces around it.
    Q_INVOKABLE static bool isName(const QString &name);

    /// The user's PIN.
    Q_INVOKABLE void changePin(const QString &pin, const QString &newPin,
                               bool mayBeLastTry = false);
    /// The administrator's own PIN.
    Q_INVOKABLE void changeOfficerPin(const QString &pin, const QString &newPin,
                                      bool mayBeLastTry = false);
    /// The user's PIN by the administrator's: a locked one is open again, a missing one is there.
    Q_INVOKABLE void setPin(const QString &officerPin, const QString &newPin,
                            bool mayBeLastTry = false);
    /// Deletes everything on the token and gives it that name and that PIN of its user. It is
    /// another token afterwards, with another `storeId`.
    Q_INVOKABLE void initialise(const QString &name, const QString &officerPin,
                                const QString &newPin, bool mayBeLastTry = false);
    /// Drops the task, if it waits for its turn. One that the token works at ends by itself; what
    /// others do on the token goes on.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void storeIdChanged();
    void runningChanged();
    /// The task has ended: `error` and `message` say how.
    void finished();
    /// What is known of the token has changed.
    void changed();

private:
    void refresh(const QString &storeId);
    void start(TokenAdministration::Kind kind, const QString &pin, const QString &newPin,
               bool mayBeLastTry, const QString &name = {});
    void end(const TokenAdministrationResult &result);

    QString m_storeId;
    TokenStatus m_status;
    TokenMonitor m_monitor;
    TokenAdministration::Kind m_kind = TokenAdministration::ChangePin;
    TokenAdministrationResult m_result;
    bool m_isRunning = false;
    CancellationPtr m_task; ///< the one that runs, or ran last
    const std::shared_ptr<Arrival> m_arrival = std::make_shared<Arrival>();
};

} // namespace Trivex
