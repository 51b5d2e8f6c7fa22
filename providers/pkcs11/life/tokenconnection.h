// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/calls/session.h"
#include "providers/pkcs11/calls/tokensexport.h"
#include "providers/pkcs11/contents/tokencontents.h"
#include "providers/pkcs11/contents/tokenidentity.h"
#include "providers/pkcs11/contents/tokenreader.h"
#include "providers/pkcs11/life/remaking.h"
#include "providers/pkcs11/life/tokenflags.h"
#include "qca/questions/operation.h"

#include <atomic>
#include <optional>

namespace Trivex {

/// The session with one token, used on that token's thread alone. One session is kept open as the
/// anchor of the login, which lasts as long as it (PKCS#11 2.40, 5.6). Everything throws
/// `Pkcs11::Error` on failure.
class TRIVEX_TOKENS_EXPORT TokenConnection {
public:
    TokenConnection(Pkcs11::ModulePtr module, CK_SLOT_ID slot, TokenIdentity identity,
                    const QCA::KeyStoreInfo &store, CertificateChoice choice);

    const TokenIdentity &identity() const { return m_identity; }
    const QCA::KeyStoreInfo &store() const { return m_store; }
    const Pkcs11::Module &module() const { return *m_module; }
    CK_SLOT_ID slot() const { return m_slot; }

    /// A session which shares the login of the anchor, that is opened anew when it has died. Throws
    /// as `checkLogin` does.
    Pkcs11::Session open(Pkcs11::Session::Mode mode);
    /// A session that writes, to undo what the operation has done. If the login that the operation
    /// relied on has ended, it asks for the login once more, and does without it if nobody answers.
    Pkcs11::Session openToUndo(Operation &operation);
    /// Whether somebody is logged in. Throws when the login or the anchor has ended since `login`,
    /// because objects that hide without a login would count as absent. Call it before you conclude
    /// anything from the absence of an object.
    bool checkLogin();
    /// A number that changes when handles of objects may have changed: all of them change with the
    /// anchor, and those of private objects with the login.
    int handleSeries() const { return m_handleSeries; }
    /// Whether the handles in `contents` are still good. Those of keys are, after `login`.
    bool certificatesHold() const { return m_certificatesRead == m_anchors; }
    bool keysHold() const { return m_keysRead == m_anchors; }

    TokenFlags flags() const;
    /// Thread-safe.
    Remaking &remaking() { return m_remaking; }
    /// Closes the anchor, and with it the login, because the token wants no other session. The next
    /// operation opens a new one.
    void leave() noexcept { m_anchor.reset(); }
    /// A session of its own, whether or not there is an anchor and somebody is logged in.
    Pkcs11::Session openPlain(Pkcs11::Session::Mode mode) const;
    /// Whether the token has the mechanism with all of `uses`, flags of CK_MECHANISM_INFO.
    bool supports(CK_MECHANISM_TYPE mechanism, CK_FLAGS uses = 0) const;

    enum class Ability { Lacking, Untold, Known };
    /// Whether the token says by itself that it has such a mechanism for `use`. One that can't tell
    /// of its mechanisms, even because its device fails, may have it: whatever is tried then tells
    /// what is wrong. Throws for a token that has gone.
    Ability ability(CK_MECHANISM_TYPE mechanism, CK_FLAGS use) const;
    bool lacks(CK_MECHANISM_TYPE mechanism, CK_FLAGS use) const
    {
        return ability(mechanism, use) == Ability::Lacking;
    }

    /// The purpose of a login. Private keys may hide on a token whose flags say nothing of a login.
    enum class LoginFor { Objects, PrivateKeys };
    /// Logs in, unless somebody is logged in or no login is needed, and asks once through
    /// `operation`. From then on the running operation relies on that login, or on the anchor if
    /// there is no login.
    void login(Operation &operation, LoginFor purpose = LoginFor::Objects);
    /// The login that a key with CKA_ALWAYS_AUTHENTICATE wants between C_SignInit and C_Sign.
    void loginForUse(const Pkcs11::Session &session, Operation &operation,
                     const QCA::KeyStoreEntry &entry = QCA::KeyStoreEntry());
    void logout();
    /// True when `error` shows for the first time that the token wants a login although its flags
    /// do not say so: from then on `login` asks, and what failed is worth another try.
    bool learnsLoginFrom(const Pkcs11::Error &error);
    /// Throws when nothing can be written, before anybody is asked for a PIN.
    void checkWritable() const;
    /// Closes the anchor and lets the module go: the last job of the token's thread. Either call
    /// may take as long as the module likes.
    void end() noexcept;

    /// Receives what can be shown while the token is read.
    using PartHandler = std::function<void(const TokenContentsPtr &)>;
    /// Reads the token anew. While it takes its time and `contents` has no entries, `showPart` gets
    /// the first ones.
    void read(const PartHandler &showPart = {});
    /// Reads its keys anew, which change with the login.
    void readKeysAgain();
    /// Take a written or removed object into `contents`. Of all keys only the two new objects are
    /// read, because a token may hold many.
    void noteWritten(const Pkcs11::Session &session, CK_OBJECT_HANDLE publicKey,
                     CK_OBJECT_HANDLE privateKey);
    void noteWritten(const std::vector<TokenCertificate> &certificates);
    void noteRemoved(const TokenCertificate &certificate);
    void noteRemoved(const TokenKey &key);
    const TokenContentsPtr &contents() const { return m_contents; }
    /// What the searches have brought of which `contents` was made.
    const TokenObjects &objects() const { return m_objects; }
    /// Somebody was logged in, here or elsewhere in the process, at some time since it came, as far
    /// as the token tells of logins.
    bool hasSeenLogin() const { return m_hasLoggedIn || m_tellsLogin; }

    /// The token holds what `contents` does not list, since a reading failed: the next look at the
    /// token reads it again. Thread-safe, both.
    void noteUnlisted() noexcept { m_isUnlisted = true; }
    bool isUnlisted() const noexcept { return m_isUnlisted; }

    /// Called after every error: closes the anchor when the error has ended it.
    void noteError(const Pkcs11::Error &error) noexcept;
    /// Called once after every operation and reading that went well.
    void noteSuccess() noexcept;
    /// Called once after every other: the module's faults are counted by operations, however often
    /// each of them tries and undoes something.
    void noteFailure(const Pkcs11::Error &error) noexcept;

    /// The state that an operation relies on between its calls.
    enum class Reliance { Nothing, Anchor, Login };

    /// While it lives, the operation with this cancellation works on the connection. A null one
    /// stands for work that nobody may cancel, such as undoing. It relies on nothing at first.
    class Scope {
    public:
        Scope(TokenConnection &connection, CancellationPtr cancellation);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        TokenConnection &m_connection;
        CancellationPtr m_previous;
        Reliance m_previousReliance;
    };

    /// Throws when the end of the operation has been asked for. To be called before each step that
    /// somebody could notice.
    void checkCancelled() const;

private:
    /// The state of the anchor, opened anew when it has died. Throws when the operation relies on
    /// the one that died.
    CK_STATE anchorState();
    /// Completes keys that were just read, and remembers them for when they hide. `wasLoggedIn`:
    /// somebody was logged in when their reading began.
    void settleKeys(TokenObjects *read, bool wasLoggedIn);
    /// Of what was read in the time of that anchor.
    void takeObjects(TokenObjects read, int anchor);
    void assemble();
    TokenContentsPtr partOf(TokenObjects read, size_t found, bool isLoggedIn) const;
    /// True when the device itself does something that changes nothing; false, too, for one that
    /// has no random numbers.
    bool deviceAnswers() const noexcept;
    /// Whether there may be private keys that show themselves only after a login.
    bool mayHideKeys(const TokenObjects &read) const;
    bool wantsLogin() const { return m_hiddenLogin || flags().needsLogin; }
    void authenticate(const Pkcs11::Session &session, CK_USER_TYPE user, Operation &operation,
                      const QCA::KeyStoreEntry &entry);
    /// One login, with one question at most. False for a wrong PIN of somebody who is ready to be
    /// asked again; every other failure is thrown.
    bool tryLogin(const Pkcs11::Session &session, CK_USER_TYPE user, Operation &operation,
                  const QCA::KeyStoreEntry &entry, bool wasWrong);

    Pkcs11::ModulePtr m_module;
    CK_SLOT_ID m_slot;
    TokenIdentity m_identity;
    QCA::KeyStoreInfo m_store;
    CertificateChoice m_choice;
    std::optional<Pkcs11::Session> m_anchor;
    int m_anchors = 0; ///< so many were opened
    int m_handleSeries = 0;
    Reliance m_reliance = Reliance::Nothing;
    TokenObjects m_objects;
    int m_certificatesRead = 0; ///< the anchor in whose time they were read
    int m_keysRead = 0;
    /// The keys as a login has shown them last.
    std::optional<TokenObjects> m_shown;
    TokenContentsPtr m_contents;
    std::atomic<bool> m_isUnlisted = false;
    bool m_hiddenLogin = false;
    /// True once nobody gave the login for the undo of this operation.
    bool m_isUndoRefused = false;
    Remaking m_remaking;
    /// A login has worked, whatever the flags say of the PIN.
    bool m_hasLoggedIn = false;
    /// The states of its sessions say when somebody is logged in.
    bool m_tellsLogin = false;
    CancellationPtr m_cancellation;
};

} // namespace Trivex
